#include "failing_files.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/types.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <set>
#include <string_view>
#include <utility>

namespace {

struct Watch {
    std::string folder;
    std::function<bool(const char* call)> fails;
    std::set<int> handles; // of the folder's files
    int error = EIO;
};
Watch* watch = nullptr;

// Whoever is asked may use files himself: his calls are his own.
bool refused(const char* call)
{
    Watch* asked = std::exchange(watch, nullptr);
    const bool fails = asked->fails(call);
    watch = asked;
    if (fails)
        errno = asked->error;
    return fails;
}

bool is_watched(const char* path) { return watch != nullptr && std::string_view{path}.starts_with(watch->folder); }
bool is_watched(int handle) { return watch != nullptr && watch->handles.contains(handle); }

void note(int handle, bool watched)
{
    if (watch == nullptr)
        return;
    watch->handles.erase(handle); // a stream closes past this place
    if (watched && handle >= 0)
        watch->handles.insert(handle);
}

template <typename Function> Function in_library(const char* name)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

int open_file(const char* name, const char* path, int flags, mode_t mode)
{
    const auto library = in_library<int (*)(const char*, int, ...)>(name);
    const bool watched = is_watched(path);
    if (watched && refused("open"))
        return -1;
    const int handle = library(path, flags, mode);
    note(handle, watched);
    return handle;
}

FILE* open_stream(const char* name, const char* path, const char* mode)
{
    const auto library = in_library<FILE* (*)(const char*, const char*)>(name);
    const bool watched = is_watched(path);
    if (watched && refused("open"))
        return nullptr;
    FILE* stream = library(path, mode);
    if (stream != nullptr)
        note(fileno(stream), watched);
    return stream;
}

template <typename Result, typename... Arguments> Result on_handle(const char* name, int handle, Arguments... arguments)
{
    const auto library = in_library<Result (*)(int, Arguments...)>(name);
    return is_watched(handle) && refused(name) ? Result{-1} : library(handle, arguments...);
}

mode_t mode_of(int flags, std::va_list& arguments) { return (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0; }

} // namespace

namespace vrk {

FailingFiles::FailingFiles(const std::string& folder, std::function<bool(const char* call)> fails, int error)
{
    watch = new Watch{folder, std::move(fails), {}, error};
}

FailingFiles::~FailingFiles() { delete std::exchange(watch, nullptr); }

} // namespace vrk

extern "C" {

int open(const char* path, int flags, ...)
{
    std::va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = mode_of(flags, arguments);
    va_end(arguments);
    return open_file("open", path, flags, mode);
}
int open64(const char* path, int flags, ...)
{
    std::va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = mode_of(flags, arguments);
    va_end(arguments);
    return open_file("open64", path, flags, mode);
}
FILE* fopen(const char* path, const char* mode) { return open_stream("fopen", path, mode); }
FILE* fopen64(const char* path, const char* mode) { return open_stream("fopen64", path, mode); }
ssize_t read(int handle, void* into, size_t size) { return on_handle<ssize_t>("read", handle, into, size); }
ssize_t write(int handle, const void* from, size_t size) { return on_handle<ssize_t>("write", handle, from, size); }
ssize_t pread64(int handle, void* into, size_t size, off64_t at)
{
    return on_handle<ssize_t>("pread64", handle, into, size, at);
}
ssize_t pwrite64(int handle, const void* from, size_t size, off64_t at)
{
    return on_handle<ssize_t>("pwrite64", handle, from, size, at);
}
int ftruncate64(int handle, off64_t size) noexcept { return on_handle<int>("ftruncate64", handle, size); }
int fdatasync(int handle) { return on_handle<int>("fdatasync", handle); }
int fsync(int handle) { return on_handle<int>("fsync", handle); }
int close(int handle) // it is closed all the same: what fails is the last of the writing
{
    const bool fails = is_watched(handle) && refused("close");
    if (watch != nullptr)
        watch->handles.erase(handle); // its number comes again, also for what is no file
    const int done = in_library<int (*)(int)>("close")(handle);
    if (fails)
        errno = EIO;
    return fails ? -1 : done;
}
int rename(const char* from, const char* to) noexcept
{
    const auto library = in_library<int (*)(const char*, const char*)>("rename");
    return is_watched(to) && refused("rename") ? -1 : library(from, to);
}
}
