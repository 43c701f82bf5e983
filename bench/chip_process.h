// A simulated chip that answers at once, on a pseudo terminal, in a process of its own: powered, and listening until it
// is called.
#pragma once

#include <string>

namespace bench {

class ChipProcess {
public:
    explicit ChipProcess(const char* model);
    ~ChipProcess();
    ChipProcess(const ChipProcess&) = delete;
    ChipProcess& operator=(const ChipProcess&) = delete;

    const std::string& path() const { return path_; }

private:
    std::string path_;
    int process_ = -1;
};

} // namespace bench
