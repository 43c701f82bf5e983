#include "sim/pty_target.h"

#include "sim/terminal_speed.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

namespace sim {

namespace {

constexpr std::int32_t first_speed = 9600; // until the other program sets one

bool is_symbolic_link(const std::string& path)
{
    struct stat found { };
    return lstat(path.c_str(), &found) == 0 && S_ISLNK(found.st_mode);
}

} // namespace

PtyTarget::PtyTarget(PosixLoop& loop, Target& target)
    : loop_(&loop)
    , target_(&target)
    , wire_(loop, Wire::Waking::each_run)
{
    wire_.on_wake = [this] { follow_speed(); };
    wire_.on_tool_bytes = [this](std::span<const std::uint8_t> bytes) { deliver(bytes); };
    wire_.attach(target);
}

PtyTarget::~PtyTarget()
{
    if (!link_.empty() && is_symbolic_link(link_))
        unlink(link_.c_str());
    if (master_ >= 0) {
        loop_->unwatch(master_);
        close(master_);
    }
    if (slave_ >= 0)
        close(slave_);
}

bool PtyTarget::make_terminal()
{
    master_ = posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    std::array<char, 128> name{};
    if (master_ < 0 || grantpt(master_) != 0 || unlockpt(master_) != 0 ||
        ptsname_r(master_, name.data(), name.size()) != 0)
        return false;
    path_ = name.data();
    slave_ = ::open(path_.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    return slave_ >= 0 && make_terminal_raw(slave_, first_speed);
}

bool PtyTarget::make_link(const std::string& link)
{
    if (is_symbolic_link(link))
        unlink(link.c_str());
    if (symlink(path_.c_str(), link.c_str()) != 0)
        return false;
    link_ = link;
    return true;
}

bool PtyTarget::open(const std::string& link)
{
    if (!make_terminal()) {
        fault_ = std::string("pseudo terminal: ") + std::strerror(errno);
        return false;
    }
    if (!link.empty() && !make_link(link)) {
        fault_ = link + ": " + std::strerror(errno);
        return false;
    }
    wire_.tool_open({first_speed, target_->line().parity, 8, 1});
    loop_->watch(master_, [this] { readable(); });
    return true;
}

// The kernel tells nobody that a speed has changed, so it is looked up whenever it matters: before bytes go either way.
void PtyTarget::follow_speed()
{
    if (master_ < 0)
        return;
    vrk::LineSettings line = target_->line(); // parity and the rest as the target has them
    const std::int32_t speed = terminal_speed(master_);
    if (speed > 0)
        line.baud = speed;
    wire_.tool_line_was(line);
}

void PtyTarget::readable()
{
    std::array<std::uint8_t, 4096> bytes{};
    const ssize_t count = read(master_, bytes.data(), bytes.size());
    if (count <= 0)
        return;
    follow_speed();
    wire_.tool_write(std::span(bytes).first(static_cast<std::size_t>(count)));
}

// A terminal that nobody reads fills up; what does not fit is lost, as in a port whose buffer runs over.
void PtyTarget::deliver(std::span<const std::uint8_t> bytes)
{
    while (!bytes.empty()) {
        const ssize_t count = write(master_, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return;
        bytes = bytes.subspan(static_cast<std::size_t>(count));
    }
}

} // namespace sim
