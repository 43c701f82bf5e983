#include "terminal/terminal.h"

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
    decoder = TextDecoder{new_page};
}

std::string Terminal::take_text(bool as_hex)
{
    const auto bytes = to_show.take();
    return as_hex ? hex_pairs_text(bytes) : decoder.decode(bytes);
}

std::string Terminal::take_timed_text(std::string_view time) { return times.stamp(take_text(false), time); }

} // namespace vrk
