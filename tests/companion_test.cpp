// The companion library: conversions and loading in this process, and start-up through the program.
#include "companion/glue.h"
#include "companion/palmf9def.h"

#include <array>
#include <cerrno>
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <string>
#include <tuple>

using namespace orvex;
using namespace orvex::companion;

namespace {

const std::string file_name = "libkovadclib64.dylib";
const std::string variants = VARIANTS_DIR;

std::string times(int count, char c) { return std::string(static_cast<std::size_t>(count), c); }
std::string padded(const std::string& text, int length) {
    return text + times(length - length_of(text), ' ');
}

struct Conversion {
    std::string text;
    int length;
    std::string expected;
};

TEST(Conversions, FromATextOfTheTranslator) {
    const Conversion rows[] = {
        {"ORVEX-Prep", 255, "ORVEX-Prep"},
        {"  a b   ", 255, "  a b"},
        {times(40, ' '), 255, ""},
        {"abcd", 3, "abc"},
        {times(300, 'n'), 255, times(255, 'n')},
    };
    for (const auto& [text, max, kept] : rows) {
        SCOPED_TRACE("'" + text + "' up to " + std::to_string(max));
        std::string counted = times(257, '#');
        convertF2PAS(text.data(), reinterpret_cast<unsigned char*>(counted.data()), length_of(text),
                     max);
        const std::string prefix(1, static_cast<char>(kept.size()));
        EXPECT_EQ(counted.substr(0, kept.size() + 2), prefix + kept + "#");

        std::string terminated = times(257, '#');
        convertF2C(text.data(), terminated.data(), length_of(text), max + 1);
        EXPECT_EQ(terminated.substr(0, kept.size() + 2), kept + '\0' + "#");
    }
}

TEST(Conversions, ToATextOfTheTranslator) {
    const Conversion rows[] = {
        {times(40, 'x'), 255, padded(times(40, 'x'), 255)},
        {times(255, 'x'), 255, times(255, 'x')},
        {"abcd", 3, "abc"},
        {"a ", 0, ""},
    };
    for (const auto& [text, length, expected] : rows) {
        SCOPED_TRACE("'" + text + "' to " + std::to_string(length));
        const std::string in = static_cast<char>(text.size()) + text;
        std::string out = times(length + 1, '#');
        convertPAS2F(reinterpret_cast<const unsigned char*>(in.data()), out.data(), length);
        EXPECT_EQ(out, expected + "#");
    }
    for (const auto& [used, total, expected] :
         {std::tuple(2, 5, "ab   f"), std::tuple(0, 6, "      "), std::tuple(3, 3, "abcdef"),
          std::tuple(4, 2, "abcdef")}) {
        std::string text = "abcdef";
        blankPad(text.data(), used, total);
        EXPECT_EQ(text, expected);
    }
}

// Leaves the process without a library, whatever a test did.
class Companion : public testing::Test {
  protected:
    void TearDown() override {
        palF90FiniMutexes();
        setErrorCallback(nullptr);
        setExitIndicator(1);
        setScreenIndicator(1);
        forget();
    }

    static void forget() {
        if (hLibGlobal != nullptr) dlclose(hLibGlobal);
        hLibGlobal = nullptr;
        isLoaded = 0;
        objectCount = 0;
    }

    std::string line_for(View name) const {
        Text<255> line;
        palsetsystemname(object, name);
        palgetauditline(line, object);
        return std::string(line.view());
    }

    Handle object = 0;
    Text<256> message = "stale";
};

TEST_F(Companion, PathOfTheLibrary) {
    struct Row {
        int (*load)(const char*, char*, int);
        std::string argument;
        std::string path;
    };
    const std::string deep = "/" + times(499, 'd');
    const Row rows[] = {
        {palGetReadyD, "/nowhere/lib", "/nowhere/lib/" + file_name},
        {palGetReadyD, "/nowhere/lib/", "/nowhere/lib/" + file_name},
        {palGetReadyD, deep + times(11, 'e'), deep + times(10, 'e') + "/"},
        {palGetReadyD, deep + times(9, 'e') + "/f", deep + times(9, 'e') + "/l"},
        {palGetReadyL, "/nowhere/x/liba.dylib", "/nowhere/x/liba.dylib"},
        {palGetReadyL, "/nowhere/x/", "/nowhere/x/" + file_name},
        {palGetReadyL, "/liba.dylib", "/liba.dylib"},
        {palGetReadyL, "/", "/" + file_name},
        {palGetReadyL, times(600, 'n'), times(511, 'n')},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.argument);
        std::array<char, 2000> text;
        EXPECT_EQ(row.load(row.argument.c_str(), text.data(), 2000), 0);
        EXPECT_TRUE(
            View(text.data()).starts_with("Could not load shared library " + row.path + ": "))
            << text.data();
        EXPECT_EQ(isLoaded, 0);
    }
}

TEST_F(Companion, MessageIsCutToTheBuffer) {
    const std::string path = "/" + times(400, 'p');
    const std::string full = "Could not load shared library " + path;
    for (const int length : {1, 31, 256}) {
        std::string text = times(300, '#');
        EXPECT_EQ(palGetReadyL(path.c_str(), text.data(), length), 0);
        const auto cut = static_cast<std::size_t>(length - 1);
        EXPECT_EQ(text.substr(0, cut + 2), full.substr(0, cut) + '\0' + "#");
    }
    // Without a buffer the symbol is only printed.
    testing::internal::CaptureStdout();
    EXPECT_EQ(palGetReadyL(path.c_str(), nullptr, 256), 0);
    EXPECT_EQ(palGetReadyD((variants + "/nosymbol").c_str(), nullptr, 0), 0);
    const std::string printed = testing::internal::GetCapturedStdout();
    EXPECT_TRUE(printed.starts_with("Could not load symbol 'palXFree': ")) << printed;
}

TEST_F(Companion, SpellingsOfASymbol) {
    void* const library = dlopen((variants + "/odd/" + file_name).c_str(), RTLD_NOW);
    ASSERT_NE(library, nullptr);
    const char* error = nullptr;
    for (const auto& [name, exported] : {std::pair("palGetAuditLine", "palGetAuditLine"),
                                         {"palXFree", "palxfree_"},
                                         {"palXCreate", "PALXCREATE_"},
                                         {"palSetSystemName", "palSetSystemName_"},
                                         {"CpalXAPIVersion", "cpalxapiversion"},
                                         {"CpalXCheck", "CPALXCHECK"}}) {
        error = "stale";
        void* const expected = dlsym(library, exported);
        EXPECT_NE(expected, nullptr) << exported;
        EXPECT_EQ(loadSym(library, name, error), expected) << name;
        EXPECT_EQ(error, nullptr) << name;
    }
    EXPECT_EQ(loadSym(library, "palAbsent", error), nullptr);
    EXPECT_NE(std::string(error).find("PALABSENT"), std::string::npos) << error;
    EXPECT_EQ(loadSym(library, times(300, 'x').c_str(), error), nullptr);
    EXPECT_EQ(std::string(error).find(times(256, 'X')), std::string::npos);
    dlclose(library);
}

TEST_F(Companion, LibraryLivesAsLongAsItsObjects) {
    for (int round = 0; round < 2; ++round) {
        Handle second = 0;
        EXPECT_EQ(palcreate(object, message), 1);
        EXPECT_TRUE(message.is_blank());
        EXPECT_EQ(objectCount, 1);

        // Once the library is loaded, another place is not even tried.
        char text[] = "stale";
        EXPECT_EQ(palGetReadyL("/nowhere/liba.dylib", text, sizeof text), 1);
        EXPECT_STREQ(text, "");
        EXPECT_EQ(palcreatel(second, "/nowhere/liba.dylib", message), 1);
        EXPECT_EQ(objectCount, 2);
        EXPECT_NE(object, second);

        EXPECT_EQ(palfree(object), 1);
        EXPECT_EQ(isLoaded, 1);
        EXPECT_EQ(palfree(second), 1);
        EXPECT_EQ(objectCount, 0);
        EXPECT_EQ(isLoaded, 0);
        EXPECT_EQ(dlopen(file_name.c_str(), RTLD_NOW | RTLD_NOLOAD), nullptr);
    }
}

TEST_F(Companion, NameAndAuditLine) {
    ASSERT_EQ(palcreate(object, message), 1);
    const std::string build = line_for("   ");
    EXPECT_TRUE(build.starts_with(" ")) << build;
    EXPECT_EQ(line_for("ORVEX-Prep"), "ORVEX-Prep" + build);
    EXPECT_EQ(line_for(times(300, 'n')), times(255, 'n'));
    palfree(object);

    ASSERT_EQ(palcreated(object, variants + "/longaudit  ", message), 1);
    EXPECT_EQ(line_for("L").substr(249), "012345");
}

TEST_F(Companion, EveryAttemptStartsAfresh) {
    EXPECT_EQ(palcreatel(object, variants + "/refuse/" + file_name + "   ", message), 0);
    EXPECT_EQ(message, "Interface version 8 is wanted, this library has 9");
    EXPECT_EQ(isLoaded, 0);
    forget();
    EXPECT_EQ(palcreated(object, variants + "/noaudit", message), 0);
    EXPECT_TRUE(message.view().starts_with("Could not load symbol 'palGetAuditLine': "));
    forget();
    EXPECT_EQ(palcreated(object, variants + "/noobject", message), 0);
    EXPECT_EQ(objectCount, 0);
    forget();
    EXPECT_EQ(palcreated(object, variants + "/odd/", message), 1);
    EXPECT_TRUE(message.is_blank());
    EXPECT_TRUE(line_for("X").starts_with("X "));
}

std::int32_t told_count;
std::string told;
std::int32_t callback_answer;
std::int32_t tell(std::int32_t* count, const char* text, std::int32_t length) {
    told_count = *count;
    told.assign(text, static_cast<std::size_t>(length));
    return callback_answer;
}

TEST_F(Companion, CallOfAFallback) {
    const std::string fault = "palGetAuditLine could not be loaded or has wrong signature!";
    ASSERT_EQ(palcreated(object, variants + "/badaudit", message), 1);
    EXPECT_TRUE(message.is_blank());
    const std::int32_t before = getAPIErrorCount();
    EXPECT_EQ(getExitIndicator(), 1);
    EXPECT_EQ(getScreenIndicator(), 1);
    setExitIndicator(0);
    callback_answer = 0;
    palF90InitMutexes();
    setErrorCallback(tell);  // a call hangs if its lock is not released
    for (const std::int32_t screen : {1, 0}) {
        setScreenIndicator(screen);
        testing::internal::CaptureStdout();
        EXPECT_EQ(line_for("X"), "");
        EXPECT_EQ(testing::internal::GetCapturedStdout(),
                  screen == 1 ? "FIX ME in C glu: " + fault + "\n" : "");
    }
    EXPECT_EQ(getAPIErrorCount(), before + 2);
    EXPECT_EQ(told_count, before + 2);
    EXPECT_EQ(told, fault);
    callback_answer = 7;
    EXPECT_EXIT(line_for("X"), testing::ExitedWithCode(123), "");
}

TEST_F(Companion, LocksOnlyWithMutexes) {
    for (const int held : {0, EBUSY}) {
        lock(objMutex);
        EXPECT_EQ(pthread_mutex_trylock(&objMutex), held);
        pthread_mutex_unlock(&objMutex);
        palF90InitMutexes();
    }
    EXPECT_EQ(palcreate(object, message), 1);  // hangs if a lock is not released
    palfree(object);
    EXPECT_EQ(pthread_mutex_trylock(&objMutex), 0);
}

}  // namespace
