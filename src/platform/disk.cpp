#include "platform/disk.h"

#include <cerrno>
#include <cstdio>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

namespace vrk {

namespace {

std::string reason_of(int error) { return std::generic_category().message(error); }

// An open file or folder, closed at the end. What the system has refused is kept as the reason.
class Opened {
public:
    Opened(const std::string& path, int flags)
        : handle_(::open(path.c_str(), flags | O_CLOEXEC, 0666))
    {
        note(handle_ >= 0);
    }
    ~Opened() { close(); }
    Opened(const Opened&) = delete;
    Opened& operator=(const Opened&) = delete;

    void write(std::span<const std::uint8_t> bytes)
    {
        while (reason_.empty() && !bytes.empty()) {
            const ssize_t taken = ::write(handle_, bytes.data(), bytes.size());
            if (taken > 0)
                bytes = bytes.subspan(static_cast<std::size_t>(taken));
            else if (taken == 0)
                reason_ = reason_of(EIO);
            else if (errno != EINTR)
                note(false);
        }
    }
    // EINVAL: the file system keeps nothing that would have to be flushed.
    void flush()
    {
        if (reason_.empty())
            note(::fsync(handle_) == 0 || errno == EINVAL);
    }
    void close()
    {
        if (handle_ >= 0)
            note(::close(handle_) == 0);
        handle_ = -1;
    }
    const std::string& reason() const { return reason_; }

private:
    void note(bool done)
    {
        if (!done && reason_.empty())
            reason_ = reason_of(errno);
    }

    int handle_;
    std::string reason_;
};

class SystemDisk final : public Disk {
public:
    std::string write_new(const std::string& path, std::span<const std::uint8_t> bytes) override
    {
        Opened file(path, O_WRONLY | O_CREAT | O_EXCL);
        file.write(bytes);
        file.flush();
        file.close();
        return file.reason();
    }
    std::string put_in_place(const std::string& from, const std::string& to) override
    {
        return std::rename(from.c_str(), to.c_str()) == 0 ? "" : reason_of(errno);
    }
    std::string flush_folder(const std::string& folder) override
    {
        Opened opened(folder, O_RDONLY | O_DIRECTORY);
        opened.flush();
        return opened.reason();
    }
};

} // namespace

Disk& system_disk()
{
    static SystemDisk disk;
    return disk;
}

} // namespace vrk
