// Opens the companion library, checks that it implements our interface, and binds the functions we
// call.
//
// Invariant: isLoaded becomes 1 only after every function is bound. Whatever the library or the
// system reports reaches the caller's buffer through compose(), which cuts and terminates.
#include "companion/loader.h"

#include "text/text.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <initializer_list>
#include <span>

namespace orvex::companion {

// All state of this file belongs to the process and outlives a run. The library is closed with its
// last object; the error count, the indicators and the callback stay.
void* hLibGlobal = nullptr;
std::int32_t isLoaded = 0;
std::int32_t objectCount = 0;
ObjectFunction palXCreate = nullptr;
ObjectFunction palXFree = nullptr;
SetTextFunction palSetSystemName = nullptr;
GetTextFunction palGetAuditLine = nullptr;
pthread_mutex_t objMutex;

namespace {

using CheckFunction = std::int32_t (*)(const char* name, std::int32_t count,
                                       const std::int32_t* codes, char* message);
using VersionFunction = std::int32_t (*)(std::int32_t version, char* message, std::int32_t* status);

static_assert(RTLD_NOW == 2, "every symbol is bound when the library opens");

constexpr View default_name = "libkovadclib64.dylib";
constexpr std::size_t path_size = 512;
constexpr std::size_t longest_dir = 510;
constexpr std::size_t longest_symbol = 255;
constexpr std::int32_t interface_version = 8;
constexpr int broken_call_status = 123;

// The library is not told how much room there is for a message, so it gets more than any caller
// has.
constexpr std::size_t remark_size = 1024;

// A signature lists its result first, then its arguments without the object handle.
constexpr std::int32_t no_result = 0;
constexpr std::int32_t text_argument = 11;
constexpr std::int32_t text_result = 12;
constexpr std::int32_t set_name_signature[] = {no_result, text_argument};
constexpr std::int32_t audit_line_signature[] = {text_result};

// Does the library have this function with this signature?
CheckFunction palXCheck = nullptr;

// Guards the loading.
pthread_mutex_t libMutex;

// Guards the callback, even while it runs.
pthread_mutex_t exceptMutex;

std::int32_t MutexIsInitialized = 0;

std::int32_t APIErrorCount = 0;
ErrorCallback errorCallbackFort = nullptr;
std::int32_t exitIndicator = 1;
std::int32_t screenIndicator = 1;

View view_of(const char* text) { return text == nullptr ? View() : View(text); }

// Concatenates the pieces, cut to the size of the buffer and terminated.
void compose(std::span<char> buffer, std::initializer_list<View> pieces) {
    if (buffer.empty()) return;
    std::size_t used = 0;
    for (const View piece : pieces)
        used += piece.copy(buffer.data() + used, buffer.size() - 1 - used);
    buffer[used] = '\0';
}

// The rest of the program does not write through this buffer: flushing keeps the order.
void print_line(const char* prefix, const char* text) {
    std::fputs(prefix, stdout);
    std::puts(text);
    std::fflush(stdout);
}

void palSetSystemNameFallback(Handle /*handle*/, const unsigned char* /*text*/) {
    errorHandling("palSetSystemName could not be loaded or has wrong signature!");
}

void palGetAuditLineFallback(Handle /*handle*/, unsigned char* text) {
    text[0] = 0;
    errorHandling("palGetAuditLine could not be loaded or has wrong signature!");
}

bool open_library(View dir, View name, std::span<char> message) {
    char path[path_size];
    dir = dir.substr(0, longest_dir);
    compose(path, {dir, dir.empty() || dir.ends_with('/') ? View() : View("/"),
                   name.empty() ? default_name : name});
    dlerror();
    hLibGlobal = dlopen(path, RTLD_NOW);
    if (hLibGlobal != nullptr) return true;
    compose(message, {"Could not load shared library ", path, ": ", view_of(dlerror())});
    return false;
}

void report_unresolved(const char* name, const char* error, std::span<char> message) {
    char own[remark_size];
    const std::span<char> report = message.empty() ? std::span<char>(own) : message;
    compose(report, {"Could not load symbol '", name, "': ", view_of(error)});
    print_line("", report.data());
}

template <typename Function>
bool resolve(Function& function, const char* name, std::span<char> message) {
    const char* error = nullptr;
    void* const address = loadSym(hLibGlobal, name, error);
    if (address == nullptr) {
        report_unresolved(name, error, message);
        return false;
    }
    function = reinterpret_cast<Function>(address);
    return true;
}

bool accepts_version(VersionFunction version_check, std::span<char> message) {
    char reason[remark_size] = "";
    std::int32_t status = 0;
    if (version_check(interface_version, reason, &status) != 0) return true;
    reason[remark_size - 1] = '\0';
    compose(message, {reason});
    return false;
}

// A function with another signature is no reason to refuse the library: only calling it is an
// error.
template <typename Function>
bool resolve_checked(Function& function, const char* name, std::span<const std::int32_t> signature,
                     Function fallback, std::span<char> message) {
    char remark[remark_size] = "";
    const auto arguments = static_cast<std::int32_t>(signature.size() - 1);
    if (palXCheck(name, arguments, signature.data(), remark) != 0)
        return resolve(function, name, message);
    function = fallback;
    return true;
}

bool bind_functions(std::span<char> message) {
    VersionFunction version_check = nullptr;
    return resolve(palXCreate, "palXCreate", message) && resolve(palXFree, "palXFree", message) &&
           resolve(palXCheck, "CpalXCheck", message) &&
           resolve(version_check, "CpalXAPIVersion", message) &&
           accepts_version(version_check, message) &&
           resolve_checked(palSetSystemName, "palSetSystemName", set_name_signature,
                           palSetSystemNameFallback, message) &&
           resolve_checked(palGetAuditLine, "palGetAuditLine", audit_line_signature,
                           palGetAuditLineFallback, message);
}

int load_guarded(const char* dir, const char* name, char* message, int length) {
    lock(libMutex);
    const int loaded = libloader(dir, name, message, length);
    unlock(libMutex);
    return loaded;
}

char same_letter(char c) { return c; }

struct Spelling {
    char (*change)(char);
    const char* suffix;
};
constexpr Spelling spellings[] = {
    {same_letter, ""},  {lower_letter, "_"}, {upper_letter, "_"},
    {same_letter, "_"}, {lower_letter, ""},  {upper_letter, ""},
};

}  // namespace

int libloader(const char* dir, const char* name, char* message, int length) {
    const bool wanted = message != nullptr && length > 0;
    const std::span<char> buffer(message, wanted ? static_cast<std::size_t>(length) : 0);
    compose(buffer, {});
    if (isLoaded == 1) return 1;
    if (!open_library(view_of(dir), view_of(name), buffer)) return 0;
    if (!bind_functions(buffer)) return 0;
    isLoaded = 1;
    return 1;
}

void* loadSym(void* handle, const char* name, const char*& error) {
    const View given = View(name).substr(0, longest_symbol);
    for (const Spelling& spelling : spellings) {
        char spelt[longest_symbol + 2];
        compose(spelt, {given, spelling.suffix});
        std::transform(spelt, spelt + given.size(), spelt, spelling.change);
        dlerror();
        void* const address = dlsym(handle, spelt);
        error = dlerror();
        if (error == nullptr) return address;
    }
    return nullptr;
}

int palGetReady(char* message, int length) {
    return load_guarded(nullptr, nullptr, message, length);
}

int palGetReadyD(const char* dir, char* message, int length) {
    return load_guarded(dir, nullptr, message, length);
}

int palGetReadyL(const char* path, char* message, int length) {
    const View whole_path = view_of(path);
    const std::size_t slash = whole_path.rfind('/');
    if (slash == View::npos) return load_guarded(nullptr, path, message, length);
    char dir[path_size];
    compose(dir,
            {whole_path.substr(0, std::max<std::size_t>(slash, 1))});  // the root keeps its slash
    return load_guarded(dir, path + slash + 1, message, length);
}

int palF90InitMutexes() {
    if (MutexIsInitialized != 0) return 0;
    int result = 0;
    for (pthread_mutex_t* mutex : {&libMutex, &objMutex, &exceptMutex}) {
        const int error = pthread_mutex_init(mutex, nullptr);
        if (result == 0) result = error;
    }
    MutexIsInitialized = 1;
    return result;
}

void palF90FiniMutexes() {
    if (MutexIsInitialized == 0) return;
    for (pthread_mutex_t* mutex : {&libMutex, &objMutex, &exceptMutex}) {
        pthread_mutex_destroy(mutex);
        std::memset(mutex, 0, sizeof(pthread_mutex_t));
    }
    MutexIsInitialized = 0;
}

void lock(pthread_mutex_t& mutex) {
    if (MutexIsInitialized != 0) pthread_mutex_lock(&mutex);
}

void unlock(pthread_mutex_t& mutex) {
    if (MutexIsInitialized != 0) pthread_mutex_unlock(&mutex);
}

void errorHandling(const char* message) {
    ++APIErrorCount;
    if (screenIndicator != 0) print_line("FIX ME in C glu: ", message);
    bool ends = false;
    lock(exceptMutex);
    if (errorCallbackFort != nullptr) {
        std::int32_t count = APIErrorCount;
        const auto length = static_cast<std::int32_t>(View(message).size());
        ends = errorCallbackFort(&count, message, length) != 0;
    }
    unlock(exceptMutex);
    if (ends || exitIndicator != 0) std::exit(broken_call_status);
}

std::int32_t getExitIndicator() { return exitIndicator; }
void setExitIndicator(std::int32_t indicator) { exitIndicator = indicator; }
std::int32_t getScreenIndicator() { return screenIndicator; }
void setScreenIndicator(std::int32_t indicator) { screenIndicator = indicator; }
std::int32_t getAPIErrorCount() { return APIErrorCount; }

void setErrorCallback(ErrorCallback callback) {
    lock(exceptMutex);
    errorCallbackFort = callback;
    unlock(exceptMutex);
}

}  // namespace orvex::companion
