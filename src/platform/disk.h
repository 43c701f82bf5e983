// The steps by which a file comes to the disk, one call each, since each can fail on its own.
#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace vrk {

// Every call answers what went wrong in the system's words; empty: it is done.
class Disk {
public:
    virtual ~Disk() = default;

    // Makes a file that was not there and writes it. When this returns its bytes survive a power cut.
    virtual std::string write_new(const std::string& path, std::span<const std::uint8_t> bytes) = 0;
    // Gives a file its place, in one step: whoever looks finds the old one or this one.
    virtual std::string put_in_place(const std::string& from, const std::string& to) = 0;
    // What has been put in place in the folder survives a power cut too.
    virtual std::string flush_folder(const std::string& folder) = 0;
};

Disk& system_disk();

} // namespace vrk
