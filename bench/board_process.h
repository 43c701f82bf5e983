// A board that talks without a pause, in a process of its own behind a pseudo terminal.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace bench {

class BoardProcess {
public:
    // Numbered lines at the pace of a line of this baud, 8 data bits without parity; `baud` 0: as fast as the terminal
    // takes them, the first `bytes` of them.
    explicit BoardProcess(std::int32_t baud, std::uint64_t bytes = 0);
    ~BoardProcess();
    BoardProcess(const BoardProcess&) = delete;
    BoardProcess& operator=(const BoardProcess&) = delete;

    const std::string& path() const { return path_; }
    void begin(); // from now on it talks

private:
    void start(const std::function<void(int tell_path, int begin)>& serve);

    std::string path_;
    int process_ = -1;
    int begin_ = -1;
};

} // namespace bench
