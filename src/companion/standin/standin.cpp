// Takes the place of a real companion library: keeps the name of the calling system for each
// object, and reports who uses it.
//
// It is loaded by name at run time, so its exports are its whole contract. It needs only the C
// library. Its audit line depends only on the registered name and the build.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>

#ifndef ORVEX_VERSION
#define ORVEX_VERSION "0.0.0"
#endif

#if defined(__linux__)
#define STANDIN_SYSTEM "Linux"
#elif defined(__APPLE__)
#define STANDIN_SYSTEM "macOS"
#else
#define STANDIN_SYSTEM "unknown system"
#endif

#if defined(__x86_64__)
#define STANDIN_PROCESSOR "x86-64"
#elif defined(__aarch64__)
#define STANDIN_PROCESSOR "arm64"
#else
#define STANDIN_PROCESSOR "unknown processor"
#endif

// The names under which the functions are exported. A variant may use another spelling that the
// loader knows, or hide a function under a name that is never looked up.
#ifdef STANDIN_ODD_SPELLINGS
#define EXPORT_CREATE PALXCREATE_
#define EXPORT_FREE palxfree_
#define EXPORT_CHECK CPALXCHECK
#define EXPORT_VERSION cpalxapiversion
#define EXPORT_SET_NAME palSetSystemName_
#define EXPORT_AUDIT_LINE palGetAuditLine
#else
#define EXPORT_CREATE palXCreate
#ifdef STANDIN_MISSING_SYMBOL
#define EXPORT_FREE standinKeepsBackFree
#else
#define EXPORT_FREE palXFree
#endif
#define EXPORT_CHECK CpalXCheck
#define EXPORT_VERSION CpalXAPIVersion
#define EXPORT_SET_NAME palSetSystemName
#ifdef STANDIN_MISSING_AUDIT
#define EXPORT_AUDIT_LINE standinKeepsBackAuditLine
#else
#define EXPORT_AUDIT_LINE palGetAuditLine
#endif
#endif

namespace {

// What the other variants change: the interface version implemented, whether objects can be
// created, the length to which an audit line is filled, and the types of the two checked functions.
#ifdef STANDIN_REFUSE_VERSION
constexpr std::int32_t spoken_version = 9;
#else
constexpr std::int32_t spoken_version = 8;
#endif

#ifdef STANDIN_NO_OBJECT
constexpr bool grants_objects = false;
#else
constexpr bool grants_objects = true;
#endif

#ifdef STANDIN_LONG_AUDIT
constexpr int shortest_audit_line = 255;
#else
constexpr int shortest_audit_line = 0;
#endif

constexpr std::int32_t no_result = 0;
constexpr std::int32_t integer_argument = 3;
constexpr std::int32_t text_result = 12;

#ifdef STANDIN_BAD_SIGNATURE_NAME
constexpr std::int32_t name_argument = integer_argument;
#else
constexpr std::int32_t name_argument = 11;  // a text
#endif

#ifdef STANDIN_BAD_SIGNATURE_AUDIT
constexpr std::int32_t audit_line_arguments = 1;
#else
constexpr std::int32_t audit_line_arguments = 0;
#endif

// Result code first, then the codes of the arguments after the object handle.
struct Signature {
    const char* name;
    std::int32_t arguments;
    std::int32_t codes[2];
};
constexpr Signature signatures[] = {
    {"palSetSystemName", 1, {no_result, name_argument}},
    {"palGetAuditLine", audit_line_arguments, {text_result, integer_argument}},
};

constexpr std::size_t message_size = 256;
constexpr std::size_t longest_text = 255;

struct Object {
    bool in_use;
    unsigned char name[longest_text + 1];
};
Object objects[8];

std::uint64_t handle_of(const Object& object) { return reinterpret_cast<std::uintptr_t>(&object); }

Object* object_of(std::uint64_t handle) {
    for (Object& object : objects)
        if (object.in_use && handle_of(object) == handle) return &object;
    return nullptr;
}

// Appends the piece to a text, cut when the text is full.
void append(unsigned char* text, const void* piece, std::size_t length) {
    const std::size_t used = text[0];
    const std::size_t room = longest_text - used;
    const std::size_t kept = length < room ? length : room;
    std::memcpy(text + 1 + used, piece, kept);
    text[0] = static_cast<unsigned char>(used + kept);
}

}  // namespace

extern "C" {

std::int32_t EXPORT_VERSION(std::int32_t version, char* message, std::int32_t* status);
std::int32_t EXPORT_CHECK(const char* name, std::int32_t count, const std::int32_t* codes,
                          char* message);
void EXPORT_CREATE(std::uint64_t* handle);
void EXPORT_FREE(std::uint64_t* handle);
void EXPORT_SET_NAME(std::uint64_t handle, const unsigned char* text);
void EXPORT_AUDIT_LINE(std::uint64_t handle, unsigned char* text);

std::int32_t EXPORT_VERSION(std::int32_t version, char* message, std::int32_t* status) {
    *status = spoken_version;
    if (version == spoken_version) return 1;
    std::snprintf(message, message_size, "Interface version %d is wanted, this library has %d",
                  version, spoken_version);
    return 0;
}

std::int32_t EXPORT_CHECK(const char* name, std::int32_t count, const std::int32_t* codes,
                          char* message) {
    for (const Signature& known : signatures) {
        if (std::strcmp(name, known.name) != 0 || count != known.arguments) continue;
        const std::size_t compared = static_cast<std::size_t>(count + 1) * sizeof *codes;
        if (std::memcmp(codes, known.codes, compared) == 0) return 1;
    }
    std::snprintf(message, message_size, "There is no %s of this signature", name);
    return 0;
}

void EXPORT_CREATE(std::uint64_t* handle) {
    *handle = 0;
    for (Object& object : objects) {
        if (object.in_use || !grants_objects) continue;
        object = {true, {}};
        *handle = handle_of(object);
        return;
    }
}

void EXPORT_FREE(std::uint64_t* handle) {
    if (Object* object = object_of(*handle)) object->in_use = false;
    *handle = 0;
}

void EXPORT_SET_NAME(std::uint64_t handle, const unsigned char* text) {
    Object* object = object_of(handle);
    if (object != nullptr) std::memcpy(object->name, text, text[0] + std::size_t{1});
}

void EXPORT_AUDIT_LINE(std::uint64_t handle, unsigned char* text) {
    constexpr char build[] = " " ORVEX_VERSION " " STANDIN_SYSTEM " " STANDIN_PROCESSOR;
    text[0] = 0;
    const Object* object = object_of(handle);
    if (object == nullptr) return;
    append(text, object->name + 1, object->name[0]);
    append(text, build, sizeof build - 1);
    // Each position of a filled line shows that position's last digit.
    while (text[0] < shortest_audit_line) append(text, &"0123456789"[(text[0] + 1) % 10], 1);
}

}  // extern "C"
