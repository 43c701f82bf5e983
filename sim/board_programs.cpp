#include "sim/board_programs.h"

#include <algorithm>
#include <bit>
#include <cstdlib>
#include <string>

namespace sim {

namespace {

using Bytes = Board::Bytes;

constexpr std::size_t header = 0xEC00;
constexpr std::size_t first_area = 0x4000; // the target's address 0
constexpr std::size_t first_area_size = 0xAC00;
constexpr std::size_t second_area = 0x2000;
constexpr std::size_t second_area_size = 0x2000;
constexpr std::size_t second_bank_size = 0x4C00;
constexpr std::size_t crc_table = 0xF000;
constexpr std::size_t crc_block = 128;
constexpr std::size_t thousands = 0xED00;
constexpr std::size_t thousands_size = 0x40;
constexpr std::size_t rest = 0xEE00;
constexpr std::size_t rest_size = 0x100;
constexpr int chips_a_thousand = 2048;

unsigned crc_of(const std::uint8_t* bytes, std::size_t count)
{
    unsigned crc = 0xFFFF;
    for (; count > 0; --count) {
        crc ^= *bytes++;
        for (int i = 0; i < 8; ++i)
            crc = (crc & 1U) != 0 ? (crc >> 1U) ^ 0xA001U : crc >> 1U;
    }
    return crc;
}

// A header at hand: numbers by their offset.
class Header {
public:
    explicit Header(const Bytes& memory)
        : memory_(memory)
    {
    }
    std::size_t number(std::size_t offset, std::size_t size) const
    {
        std::size_t value = 0;
        for (std::size_t i = 0; i < size; ++i)
            value = value * 256 + memory_[header + offset + i];
        return value;
    }
    std::uint8_t byte(std::size_t offset) const { return memory_[header + offset]; }
    bool is_good() const
    {
        const unsigned crc = crc_of(&memory_[header], 0xFE);
        return byte(0xFE) == (crc & 0xFFU) && byte(0xFF) == crc >> 8U && byte(0x78) == 0xF3;
    }

private:
    const Bytes& memory_;
};

// The target's memory, put together again from where the tool has put it.
Bytes target_memory(const Board& board)
{
    const auto at = [](const Bytes& bytes, std::size_t first, std::size_t count) {
        return Bytes(bytes.begin() + static_cast<std::ptrdiff_t>(first),
            bytes.begin() + static_cast<std::ptrdiff_t>(first + count));
    };
    Bytes target = at(board.memory(), first_area, first_area_size);
    const Bytes more = board.setup().single_area ? at(board.second_bank(), first_area, second_bank_size)
                                                 : at(board.memory(), second_area, second_area_size);
    target.insert(target.end(), more.begin(), more.end());
    return target;
}

bool blocks_are_good(const Board& board, const Bytes& target, std::size_t end)
{
    for (std::size_t at = 0; at < end; at += crc_block) {
        const unsigned crc = crc_of(&target[at], crc_block);
        const std::size_t entry = crc_table + at / crc_block * 2;
        if (board.memory()[entry] != (crc & 0xFFU) || board.memory()[entry + 1] != crc >> 8U)
            return false;
    }
    return true;
}

int bits_in(const Bytes& memory, std::size_t first, std::size_t count)
{
    int bits = 0;
    for (std::size_t i = first; i < first + count; ++i)
        bits += std::popcount(memory[i]);
    return bits;
}

void clear_one(Bytes& memory, std::size_t first)
{
    while (memory[first] == 0)
        ++first;
    memory[first] = static_cast<std::uint8_t>(memory[first] & (memory[first] - 1));
}

// One chip off: of the row of single ones, and when that is empty a thousand is broken into 2048 of them, which this
// board counts in its head.
bool take_one(Board& board, int& broken)
{
    Bytes& memory = board.memory();
    if (bits_in(memory, rest, rest_size) > 0) {
        clear_one(memory, rest);
        return true;
    }
    if (broken == 0) {
        if (bits_in(memory, thousands, thousands_size) == 0)
            return false;
        clear_one(memory, thousands);
        broken = chips_a_thousand;
    }
    --broken;
    return true;
}

// The digits of a number, the last two for the highest address.
std::string digits_of(std::uint64_t value, std::uint8_t format, std::size_t count)
{
    std::string digits;
    if (format == 0) {
        for (std::size_t i = 0; i < 2 * count; ++i, value /= 16)
            digits.insert(digits.begin(), "0123456789ABCDEF"[value % 16]);
        return digits;
    }
    const std::size_t wanted = format == 1 ? 2 * count : count;
    for (std::size_t i = 0; i < wanted; ++i, value /= 10)
        digits.insert(digits.begin(), static_cast<char>('0' + value % 10));
    return digits;
}

// `block`: offset of a number's place in the header, `next`: of its first value; `index`: how many chips came before.
void stamp(const Header& head, std::size_t block, std::size_t next, int index, Bytes& target)
{
    const std::uint8_t format = head.byte(block + 10);
    if (head.byte(block) == 0 || format == 0xFF)
        return;
    const std::size_t count = head.byte(block + 4) + std::size_t{head.byte(block + 8)};
    const std::uint64_t value = head.number(next, 4) + static_cast<std::uint64_t>(index) * head.byte(block + 9);
    const std::string digits = digits_of(value, format, count);
    Bytes bytes;
    for (std::size_t i = 0; i < count; ++i) {
        if (format == 2) // letters read backwards down the memory: the first digit lies highest
            bytes.push_back(static_cast<std::uint8_t>(digits[count - 1 - i]));
        else
            bytes.push_back(static_cast<std::uint8_t>(std::strtoul(digits.substr(2 * i, 2).c_str(), nullptr, 16)));
    }
    const auto first_count = static_cast<std::ptrdiff_t>(head.byte(block + 4));
    std::copy(bytes.begin(), bytes.begin() + first_count,
        target.begin() + static_cast<std::ptrdiff_t>(head.number(block + 1, 3)));
    if (head.byte(block + 8) != 0)
        std::copy(bytes.begin() + first_count, bytes.end(),
            target.begin() + static_cast<std::ptrdiff_t>(head.number(block + 5, 3)));
}

bool is_for(const Header& head, const ChipModel& model)
{
    const auto id = std::strtoul(model.id.c_str(), nullptr, 16);
    return head.number(0x20, 2) == (model.id.size() == 2 ? id * 0x101 : id);
}

// Offset among the sixteen option bytes, and the row of the chip that it stands for.
struct OptionByte {
    std::size_t offset;
    std::size_t row;
};
std::vector<OptionByte> options_of(int series)
{
    if (series == 2 || in_rc_group(series))
        return {{1, 1}};
    if (series >= 3 && series <= 6)
        return {{0, 2}, {1, 3}, {2, 8}, {3, 10}, {4, 11}, {5, 0}};
    if (series >= 7)
        return {{0, 0}, {1, 1}, {2, 2}, {3, 3}, {8, 8}, {9, 9}};
    return {};
}

} // namespace

int chips_left(const Board& board)
{
    return bits_in(board.memory(), rest, rest_size) + board.chips_left_of_a_thousand +
        bits_in(board.memory(), thousands, thousands_size) * chips_a_thousand;
}

BoardRun program_chip(Board& board, Chip& chip)
{
    const Header head(board.memory());
    Bytes target = target_memory(board);
    const std::size_t end = head.number(0x70, 3) + 1;
    if (!head.is_good() || end > target.size() || !blocks_are_good(board, target, end))
        return BoardRun::self_check_error;
    if (!is_for(head, chip.setup().model))
        return BoardRun::wrong_model;
    if (!take_one(board, board.chips_left_of_a_thousand))
        return BoardRun::used_up;
    stamp(head, 0x80, 0x90, board.chips_programmed, target);
    stamp(head, 0xDC, 0xEC, board.chips_programmed, target);
    ++board.chips_programmed;
    chip.preset_flash(0, std::span{target}.first(end));
    for (const OptionByte& option : options_of(chip.setup().model.series))
        chip.preset_option(option.row, head.byte(0x30 + option.offset));
    return BoardRun::programmed;
}

} // namespace sim
