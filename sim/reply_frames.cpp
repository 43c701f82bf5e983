#include "sim/reply_frames.h"

#include <algorithm>

namespace sim {

namespace {

constexpr std::size_t payload_at = 4; // index of the first payload byte
constexpr std::size_t window_at = 26;
constexpr std::size_t read_window_at = 12;
constexpr std::uint8_t status_code = 0x50;

// Bytes of a frame by their index, from 0x68 = 0 on. What nothing is put into reads FF.
class Sheet {
public:
    Sheet() { bytes_.fill(0xFF); }
    void put(std::size_t index, std::uint32_t value, std::size_t size = 1)
    {
        for (std::size_t i = size; i > 0; --i, value >>= 8U)
            bytes_[index + i - 1] = static_cast<std::uint8_t>(value);
    }
    std::span<const std::uint8_t> payload(std::size_t end) const
    {
        return std::span(bytes_).subspan(payload_at, end - payload_at);
    }

private:
    std::array<std::uint8_t, 64> bytes_{};
};

struct Cell {
    std::size_t offset; // from the begin of the window
    std::size_t row;
};

// clang-format off
constexpr Cell short_window[]   = { {0, 2}, {1, 3}, {2, 8}, {3, 10}, {4, 11}, {5, 0} };
constexpr Cell second_window[]  = { {6, 0}, {7, 1}, {8, 2}, {9, 3}, {10, 8}, {11, 9} }; // behind the short one
constexpr Cell newer_window[]   = { {0, 0}, {1, 1}, {2, 2}, {3, 3}, {4, 8}, {5, 9} };
// clang-format on

void put_cells(Sheet& sheet, std::size_t at, std::span<const Cell> cells, const ChipSetup& setup)
{
    for (const Cell& cell : cells)
        sheet.put(at + cell.offset, setup.options[cell.row]);
}

// Returns the index behind the last byte put.
std::size_t put_options(Sheet& sheet, std::size_t at, const ChipSetup& setup)
{
    if (has_16_option_rows(setup.model.series)) {
        for (std::size_t row = 0; row < 16; ++row)
            sheet.put(at + row, setup.options[row]);
        return at + 16;
    }
    if (setup.letter >= 'I') {
        put_cells(sheet, at, newer_window, setup);
        return at + 6;
    }
    if (setup.letter < 'D')
        return at;
    put_cells(sheet, at, short_window, setup);
    if (setup.letter != 'H')
        sheet.put(at + 5, 0xFF);
    if (!has_extended_options(setup))
        return at + 6;
    put_cells(sheet, at, second_window, setup);
    return at + 12;
}

std::uint8_t old_option_byte(const ChipSetup& setup)
{
    return setup.letter == 'C' ? setup.options[1] : setup.letter < 'C' ? setup.options[0] : 0xFF;
}

} // namespace

Bytes reply_frame(std::uint8_t code, std::span<const std::uint8_t> payload, bool long_frame)
{
    const std::size_t length = payload_at + payload.size() + (long_frame ? 3U : 2U);
    Bytes frame;
    frame.reserve(length + 2);
    for (const std::size_t byte : {std::size_t{0x46}, std::size_t{0xB9}, std::size_t{0x68}, std::size_t{0}, length})
        frame.push_back(static_cast<std::uint8_t>(byte));
    frame.push_back(code);
    frame.insert(frame.end(), payload.begin(), payload.end());
    unsigned sum = 0;
    for (std::size_t i = 2; i < frame.size(); ++i)
        sum += frame[i];
    if (long_frame)
        frame.push_back(static_cast<std::uint8_t>(sum >> 8U));
    frame.push_back(static_cast<std::uint8_t>(sum));
    frame.push_back(0x16);
    return frame;
}

Bytes status_frame(const ChipSetup& setup, const StatusFacts& facts, StatusLayout layout)
{
    Sheet sheet;
    for (std::size_t i = 0; i < facts.counts.size(); ++i)
        sheet.put(4 + 2 * i, facts.counts[i], 2);
    sheet.put(20, setup.version);
    sheet.put(21, static_cast<std::uint8_t>(setup.letter));
    sheet.put(22, old_option_byte(setup));
    sheet.put(23, facts.id_high);
    sheet.put(24, facts.id_low);
    sheet.put(25, (setup.new_boot_block ? 0x80U : 0U) | (setup.clock_doubled ? 0x20U : 0U) | setup.boot_size_code);
    put_options(sheet, window_at, setup);
    sheet.put(46, setup.rc_last_hz, 4);
    sheet.put(50, setup.rc_factory_hz, 4);
    if (has_rc_test(setup.model.series)) {
        for (std::size_t i = 0; i < setup.rc_saved.size(); ++i)
            sheet.put(54 + i, setup.rc_saved[i]);
    } else {
        sheet.put(54, 0);
        sheet.put(55, setup.long_id, 2);
    }
    if (facts.id_unreadable)
        sheet.put(54, 1);
    return reply_frame(status_code, sheet.payload(static_cast<std::size_t>(layout)), setup.model.long_frame);
}

Bytes read_status_frame(const ChipSetup& setup, bool with_options)
{
    Sheet sheet;
    for (std::size_t i = 0; i < setup.serial.size(); ++i)
        sheet.put(4 + i, setup.serial[i]);
    sheet.put(11, setup.version);
    if (!with_options)
        return reply_frame(status_code, sheet.payload(read_window_at), setup.model.long_frame);
    sheet.put(read_window_at, old_option_byte(setup));
    const std::size_t end = put_options(sheet, read_window_at, setup);
    return reply_frame(status_code, sheet.payload(std::max(end, read_window_at + 1)), setup.model.long_frame);
}

} // namespace sim
