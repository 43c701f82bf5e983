#include "sim/board.h"

#include "sim/hex_text.h"
#include "sim/waveform.h"

#include <algorithm>

namespace sim {

namespace {

constexpr std::uint8_t call = 0x80;
constexpr std::uint8_t wake_byte = 0xAA;
constexpr std::uint8_t taken = 0x80;
constexpr std::uint8_t refusal = 0x81;
constexpr std::size_t longest_frame = 0x90;
constexpr std::size_t write_overhead = 15; // of a write frame, beside its data
constexpr std::size_t page_size = 128;

constexpr std::uint8_t sorter_frame[] = {0x46, 0xB9, 0x6A, 0x00, 0x13, 0xF0, 0x01, 0x04, 0x00, 0x02, 0x03, 0x04, 0x05,
    0x06, 0x07, 0x08, 0x01, 0x95, 0x7F, 0x07, 0x16};

// Bit by bit: the tool has a table.
unsigned crc_of(std::span<const std::uint8_t> bytes)
{
    unsigned crc = 0xFFFF;
    for (const std::uint8_t byte : bytes) {
        crc ^= byte;
        for (int i = 0; i < 8; ++i)
            crc = (crc & 1U) != 0 ? (crc >> 1U) ^ 0xA001U : crc >> 1U;
    }
    return crc;
}

vrk::LineSettings board_line(bool even) { return {115200, even ? vrk::Parity::even : vrk::Parity::none, 8, 1}; }

} // namespace

Board::Board(BoardSetup setup)
    : setup_(std::move(setup))
    , line_(board_line(setup_.behind_sorter))
{
}

// What it holds stays.
void Board::power(bool on)
{
    if (on == powered_)
        return;
    switch_power(on);
    called_ = erased_ = second_erased_ = false;
    passed_sorter_ = !setup_.behind_sorter;
    if (on)
        later(setup_.start_up_us * 1000, [this] { listen(); });
}

void Board::listen()
{
    line_ = board_line(!passed_sorter_);
    surroundings_->set_line(line_, false);
}

void Board::heard(std::uint8_t byte)
{
    if (frame_.empty() && byte != 0x46) {
        wake_bytes_ += byte == wake_byte ? 1 : 0;
        if (byte != wake_byte && !harmed_)
            complain("byte " + hex(byte, 2) + " outside of a frame");
        return;
    }
    frame_.push_back(byte);
    if (frame_.size() < 5)
        return;
    const std::size_t length = frame_[3] * 256U + frame_[4];
    if (length < 9 || length + 2 > longest_frame) {
        if (!harmed_)
            complain("frame: length " + hex(length, 4));
        frame_.clear();
        return;
    }
    if (frame_.size() == length + 2)
        judge();
}

// All that holds for every frame; then it is taken by its code.
void Board::judge()
{
    if (!passed_sorter_) {
        passed_sorter_ = std::ranges::equal(frame_, sorter_frame);
        if (!passed_sorter_ && !harmed_)
            complain("sorter: " + hex_bytes(frame_));
        frame_.clear();
        later(500'000'000, [this] { listen(); });
        return;
    }
    const auto checked = std::span{frame_}.subspan(2, frame_.size() - 5);
    const unsigned crc = crc_of(checked);
    const std::size_t at = frame_.size() - 3;
    const bool good = frame_[1] == 0xB9 && frame_[2] == 0x6A && frame_[at] == (crc & 0xFFU) &&
        frame_[at + 1] == crc >> 8U && frame_.back() == 0x16;
    if (good)
        take();
    else if (!harmed_)
        complain("frame: " + hex_bytes(frame_));
    frame_.clear();
}

bool Board::names_the_model()
{
    const bool good = frame_.size() == 15 && frame_[6] == setup_.series && frame_[8] == 0x36 && frame_[9] == 0x01 &&
        frame_[10] == setup_.id[0] && frame_[11] == setup_.id[1];
    if (!good)
        complain("command: " + hex_bytes(frame_));
    return good;
}

void Board::take()
{
    const std::uint8_t code = frame_[5];
    if (!takes(code, code != call))
        return;
    if (code == 0x00 || code == 0x30)
        return take_write();
    if (code == 0x53)
        return take_page_request();
    if (!names_the_model())
        return;
    const std::uint8_t parameter = frame_[7];
    if (code != call && !called_)
        complain("command " + hex(code, 2) + " before a call");
    if (parameter != 0 && code != call)
        complain("command " + hex(code, 2) + ": parameter " + hex(parameter, 2));
    switch (code) {
    case call:
        if (parameter != 0xF3 && !(parameter == 0xF1 && second_erased_))
            complain("call for " + hex(parameter, 2));
        called_ = true;
        return answer(call, {}, 0);
    case 0x0C:
        return answer(code, {setup_.version}, 0);
    case 0x0E: {
        Bytes facts = {static_cast<std::uint8_t>(setup_.single_area ? 1 : 0), setup_.capacity_kb};
        if (setup_.type) // and letters, up to a length that tells that they are there
            facts.insert(facts.end(), {0, *setup_.type, 0, 'T', 'L', 0, 0, 0, 0, 0, 0, 0});
        return answer(code, facts, 0);
    }
    case 0x69:
        return answer(code, {}, 0);
    case 0x84:
        std::ranges::fill(memory_, std::uint8_t{0xFF});
        erased_ = true;
        second_erased_ = false;
        tried_.clear();
        return answer(code, {}, setup_.erase_us);
    case 0x86:
        if (!erased_)
            complain("second erasure before the first");
        std::ranges::fill(second_bank_, std::uint8_t{0xFF});
        if (!setup_.single_area)
            std::fill_n(memory_.begin() + 0x2000, 0x2000, std::uint8_t{0xFF});
        second_erased_ = true;
        tried_.clear();
        return answer(code, {}, setup_.erase_us / 3);
    default:
        complain("unknown command " + hex_bytes(frame_));
    }
}

// The repeat mark belongs to an address that a frame has gone to before, and to no other; one that was missed may have
// been its first.
void Board::take_write()
{
    const std::uint32_t address = frame_[8] * 256U + frame_[9];
    const std::size_t count = frame_[10] * 256U + frame_[11];
    if (frame_.size() != count + write_overhead || frame_[6] != 0 || frame_[7] != 0 || count == 0 ||
        count > page_size || address + count > size)
        return complain("write: " + hex_bytes(std::span{frame_}.first(12)));
    if (!erased_)
        complain("write to " + hex(address, 4) + " without an erasure");
    const bool first_time = tried_.insert(address).second;
    if (first_time && frame_[5] == 0x30 && !tried_.contains(address - address % 512) && !missed_a_frame_)
        complain("write to " + hex(address, 4) + " marked as a repeat");
    if (!first_time && frame_[5] == 0x00)
        complain("write to " + hex(address, 4) + " again without its mark");
    const auto found = refused.find(address);
    if (found != refused.end() && found->second > 0) {
        --found->second;
        return answer(refusal, {}, setup_.write_us);
    }
    Bytes& into = setup_.single_area && second_erased_ ? second_bank_ : memory_;
    for (std::size_t i = 0; i < count; ++i)
        into[address + i] &= frame_[12 + i]; // as flash does
    answer(answers_writes_with.value_or(taken), {}, setup_.write_us);
}

void Board::take_page_request()
{
    const std::uint32_t address = frame_[6] * 256U + frame_[7];
    if (frame_.size() != 11 || address % page_size != 0)
        return complain("page: " + hex_bytes(frame_));
    Bytes payload = {frame_[6], frame_[7]};
    const auto first = serial_memory.begin() + static_cast<std::ptrdiff_t>(address);
    payload.insert(payload.end(), first, first + static_cast<std::ptrdiff_t>(page_size));
    answer(answers_pages_with.value_or(0x53), payload, setup_.write_us);
}

void Board::answer(std::uint8_t code, Bytes payload, std::int64_t work_us)
{
    const std::size_t length = payload.size() + 7;
    Bytes frame = {0x46, 0xB9, 0x68, static_cast<std::uint8_t>(length >> 8U), static_cast<std::uint8_t>(length), code};
    frame.insert(frame.end(), payload.begin(), payload.end());
    const unsigned crc = crc_of(std::span{frame}.subspan(2));
    frame.insert(frame.end(), {static_cast<std::uint8_t>(crc), static_cast<std::uint8_t>(crc >> 8U), 0x16});
    send_after_us(setup_.answer_us + work_us, frame);
}

} // namespace sim
