#include "terminal/terminal.h"

#include <utility>

namespace vrk {

void Terminal::receive(std::span<const std::uint8_t> bytes)
{
    rx_count =
        static_cast<std::int32_t>(static_cast<std::uint32_t>(rx_count) + bytes.size()); // runs over, as counters do
    to_show.push(bytes);
    to_compare.push(bytes);
}

void Terminal::use(CodePage new_page)
{
    page = new_page;
    broken_off += decoder.end();
    decoder = TextDecoder{new_page};
}

std::string Terminal::take_text(bool as_hex)
{
    const auto bytes = to_show.take();
    const std::string text = as_hex ? decoder.end() + hex_pairs_text(bytes) : decoder.decode(bytes);
    return std::exchange(broken_off, {}) + text;
}

std::string Terminal::take_timed_text(std::string_view time) { return times.stamp(take_text(false), time); }

} // namespace vrk
