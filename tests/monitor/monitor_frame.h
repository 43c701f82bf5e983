// Frames as the monitor's routines send them, typed together byte by byte.
#pragma once

#include <cstddef>
#include <cstdint>
#include <numeric>
#include <vector>

namespace vrk {

using Bytes = std::vector<std::uint8_t>;

// From the byte behind the header to the check. `told`: PSW, ACC, TCON, T2CON, CCON, IE, SP, R1, R0.
inline Bytes monitor_frame(
    std::uint8_t type, std::uint16_t address, const Bytes& dump, const Bytes& told = {1, 2, 3, 4, 5, 6, 7, 8, 9})
{
    const std::size_t length = 16 + dump.size() + 1;
    Bytes frame{0xC3, static_cast<std::uint8_t>(length / 256), static_cast<std::uint8_t>(length % 256), type, 0x3C,
        static_cast<std::uint8_t>(address / 256), static_cast<std::uint8_t>(address % 256)};
    frame.insert(frame.end(), told.begin(), told.end());
    frame.insert(frame.end(), dump.begin(), dump.end());
    frame.push_back(static_cast<std::uint8_t>(std::accumulate(frame.begin(), frame.end(), 0U)));
    return frame;
}

inline Bytes with_header(Bytes frame)
{
    frame.insert(frame.begin(), {0xA5, 0x5A});
    return frame;
}

inline Bytes counted_up(std::size_t count, unsigned from = 0)
{
    Bytes bytes(count);
    std::iota(bytes.begin(), bytes.end(), static_cast<std::uint8_t>(from));
    return bytes;
}

inline Bytes joined(std::initializer_list<Bytes> parts)
{
    Bytes all;
    for (const Bytes& part : parts)
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

} // namespace vrk
