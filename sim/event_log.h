// What happened on the virtual bench, as a running 64-bit hash and, where wanted, as text: two runs that are the same
// have the same hash, and where they are not, the texts show the first line that differs.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace sim {

class EventLog {
public:
    bool keep_text = false;

    void add(std::int64_t time, std::string_view what, std::uint64_t value = 0);

    std::uint64_t hash() const { return hash_; }
    std::uint64_t count() const { return count_; }
    const std::string& text() const { return text_; } // lines of "time what value", the value in hexadecimal

private:
    void mix(std::uint64_t word);

    std::uint64_t hash_ = 0xCBF29CE484222325U;
    std::uint64_t count_ = 0;
    std::string text_;
};

} // namespace sim
