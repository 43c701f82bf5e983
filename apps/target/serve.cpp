#include "target/serve.h"

#include "platform/text_number.h"
#include "sim/pty_target.h"

#include <csignal>
#include <fstream>
#include <iostream>
#include <unistd.h>

namespace vrk {

namespace {

volatile std::sig_atomic_t interrupted = 0;

// The target's supply, switched by the commands that come in.
class Supply {
public:
    Supply(sim::PosixLoop& loop, sim::Target& target, const Serving& serving)
        : loop_(loop)
        , target_(target)
        , serving_(serving)
    {
        loop_.watch(STDIN_FILENO, [this] { read_commands(); });
    }
    bool quit = false;

private:
    void read_commands()
    {
        char bytes[256];
        const ssize_t count = ::read(STDIN_FILENO, bytes, sizeof bytes);
        if (count <= 0) {
            loop_.unwatch(STDIN_FILENO);
            return;
        }
        pending_.append(bytes, static_cast<std::size_t>(count));
        for (std::size_t end = pending_.find('\n'); end != std::string::npos; end = pending_.find('\n')) {
            obey(std::string{trimmed(pending_.substr(0, end))});
            pending_.erase(0, end + 1);
        }
    }
    void obey(const std::string& command)
    {
        if (command == "on") {
            target_.power(true);
            std::cout << "power: on" << std::endl;
        } else if (command == "off") {
            target_.power(false);
        } else if (command == "cycle") {
            target_.power(false);
            loop_.call_at(loop_.now_us() + 100'000, [this] { target_.power(true); });
        } else if (command == "quit") {
            quit = true;
        } else if (!command.empty() && !(serving_.own_command && serving_.own_command(command))) {
            std::cerr << "vrk-target: no command '" << command << "'" << std::endl;
        }
    }

    sim::PosixLoop& loop_;
    sim::Target& target_;
    const Serving& serving_;
    std::string pending_;
};

} // namespace

void end_on_interrupts()
{
    std::signal(SIGINT, [](int) { interrupted = 1; });
    std::signal(SIGTERM, [](int) { interrupted = 1; });
}

bool serve(sim::PosixLoop& loop, sim::Target& target, const Serving& serving)
{
    sim::PtyTarget terminal(loop, target);
    if (!terminal.open(serving.link)) {
        std::cerr << "vrk-target: " << terminal.fault() << std::endl;
        return false;
    }
    Supply supply(loop, target, serving);
    std::cout << "terminal: " << terminal.path() << std::endl;
    if (serving.power_at_once)
        target.power(true);
    while (!supply.quit && interrupted == 0)
        loop.yield();
    return true;
}

bool save(const std::string& path, const std::vector<std::uint8_t>& bytes)
{
    if (path.empty())
        return true;
    std::ofstream file(path, std::ios::binary);
    file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    if (file)
        return true;
    std::cerr << "vrk-target: cannot write '" << path << "'" << std::endl;
    return false;
}

} // namespace vrk
