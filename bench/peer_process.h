// The far end of a pseudo terminal in a process of its own, so that its work is not taken for the program's.
#pragma once

#include <functional>
#include <string>

namespace bench {

class PeerProcess {
public:
    // In the process `serve` makes its terminal, tells the path and talks on it until it is killed.
    using Tell = std::function<void(const std::string& path)>;
    explicit PeerProcess(const std::function<void(const Tell& tell)>& serve);
    ~PeerProcess();
    PeerProcess(const PeerProcess&) = delete;
    PeerProcess& operator=(const PeerProcess&) = delete;

    const std::string& path() const { return path_; }

private:
    std::string path_;
    int process_ = -1;
};

} // namespace bench
