// How the companion library is found, opened and bound at run time.
//
// One library serves the whole process. While isLoaded is 1, every function address below points
// into the open library or to one of our fallback functions; before that, none of them may be
// called.
#pragma once

#include <cstdint>
#include <pthread.h>

namespace orvex::companion {

// The address of an object inside the library; 0 means no object.
using Handle = std::uint64_t;

// Texts exchanged with the library: one byte n, then n characters.
using ObjectFunction = void (*)(Handle* handle);
using SetTextFunction = void (*)(Handle handle, const unsigned char* text);
using GetTextFunction = void (*)(Handle handle, unsigned char* text);

// Called for each call of a fallback function, with the number of such calls and the message. It
// must not set another callback. If it returns non-zero, the process ends.
using ErrorCallback = std::int32_t (*)(std::int32_t* count, const char* message,
                                       std::int32_t length);

// The open library, or null.
extern void* hLibGlobal;
// 1 while the library is open and bound.
extern std::int32_t isLoaded;
// Objects created and not yet freed.
extern std::int32_t objectCount;
// Stores the new object's handle, 0 on failure.
extern ObjectFunction palXCreate;
// Destroys the object.
extern ObjectFunction palXFree;
// Registers the name of the calling system.
extern SetTextFunction palSetSystemName;
// Fills a text of up to 255 characters.
extern GetTextFunction palGetAuditLine;
// Guards objectCount and the decision to unload.
extern pthread_mutex_t objMutex;

// Opens the library `dir`/`name` and binds its functions. Without `dir` the system's own search
// finds the file; without `name` the default name is used. Returns 1 if the library is bound,
// including when it already was, else 0. `message` is null or has room for `length` bytes: it is
// left empty on success and otherwise holds, cut and terminated, the library's reason for refusing
// the interface version, or the message library-missing or library-function-missing of
// docs/messages.md. The last is also printed on standard output. A library that was opened but
// could not be bound stays open.
int libloader(const char* dir, const char* name, char* message, int length);

// Address of the symbol `name` (up to 255 characters), or null. Six spellings are tried: as given,
// lower_, UPPER_, as given with "_", lower, UPPER. `error` is the system's text about the last try,
// or null on success.
void* loadSym(void* handle, const char* name, const char*& error);

// The three ways to name the library: by the system's search, by its directory, by its full path.
// An empty file name means the default one. Results and messages are those of libloader().
int palGetReady(char* message, int length);
int palGetReadyD(const char* dir, char* message, int length);
int palGetReadyL(const char* path, char* message, int length);

// Nothing is locked before the first of these has run, nor after the second: a single-threaded
// process needs neither. The first returns 0 or the system's first error number.
int palF90InitMutexes();
void palF90FiniMutexes();
void lock(pthread_mutex_t& mutex);
void unlock(pthread_mutex_t& mutex);

// What a fallback function does: counts the call, prints "FIX ME in C glu: " and the message on
// standard output, calls the callback and ends the process with status 123. Each of the last three
// happens only if enabled.
void errorHandling(const char* message);

// Whether errorHandling() ends the process and whether it prints (both initially on); its callback
// (initially null); and how often it was called.
std::int32_t getExitIndicator();
void setExitIndicator(std::int32_t indicator);
std::int32_t getScreenIndicator();
void setScreenIndicator(std::int32_t indicator);
void setErrorCallback(ErrorCallback callback);
std::int32_t getAPIErrorCount();

}  // namespace orvex::companion
