// The system's calls on the files below one folder, made to fail. Nothing in the program knows: its streams and its
// writes go by the C library, and a test program that has this in it stands in front of that.
#pragma once

#include <cerrno>
#include <functional>
#include <string>

namespace vrk {

// While it lives, every call that opens, reads, writes, flushes, closes or renames a file below the folder is asked
// for; true: it fails with the system's error given and does nothing. One at a time.
class FailingFiles {
public:
    FailingFiles(const std::string& folder, std::function<bool(const char* call)> fails, int error = EIO);
    ~FailingFiles();
    FailingFiles(const FailingFiles&) = delete;
    FailingFiles& operator=(const FailingFiles&) = delete;
};

} // namespace vrk
