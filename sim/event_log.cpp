#include "sim/event_log.h"

#include "sim/hex_text.h"

namespace sim {

// One round of multiply and shift a word (the constants of FNV-1a and of splitmix64).
void EventLog::mix(std::uint64_t word)
{
    hash_ = (hash_ ^ word) * 0x100000001B3U;
    hash_ ^= hash_ >> 29U;
}

void EventLog::add(std::int64_t time, std::string_view what, std::uint64_t value)
{
    mix(static_cast<std::uint64_t>(time));
    for (const char letter : what)
        mix(static_cast<unsigned char>(letter));
    mix(value);
    ++count_;
    if (keep_text)
        text_ += std::to_string(time) + ' ' + std::string(what) + ' ' + hex(value, 2) + '\n';
}

} // namespace sim
