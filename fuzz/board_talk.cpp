// What a board, or anything else on its line, answers to a whole job, or to a reading of its serial memory:
//   0     bit 0: the reading
//   1..   an answer to each frame that goes out: a byte with the length of its payload (bits 0 to 5; 63: a page, of one
//         byte over and over) and how it comes (bits 6 and 7): not at all, as raw bytes, as a good frame, as a good
//         frame in two pieces. A frame's code follows, then the payload. Behind the last answer the user stops.
#include "fuzz/target.h"

#include "board/board_download.h"
#include "board/memory_reader.h"
#include "tests/session/hand_port.h"
#include "tests/written_report.h"

#include <vector>

namespace fuzz {

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::int64_t answer_us = 1000;
constexpr std::int64_t piece_us = 3000;
constexpr std::size_t longest_payload = 63;
constexpr std::size_t page = 2 + 128; // behind its address
constexpr int write_frames = (0xF400 - 0x4000) / 128; // of the smallest job

Bytes frame_with(std::uint8_t code, const Bytes& payload)
{
    const auto length = static_cast<std::uint8_t>(payload.size() + 7);
    Bytes frame = {0x68, 0x00, length, code};
    frame.insert(frame.end(), payload.begin(), payload.end());
    unsigned crc = 0xFFFF;
    for (const std::uint8_t byte : frame) {
        crc ^= byte;
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc & 1U) != 0 ? crc / 2 ^ 0xA001U : crc / 2;
    }
    frame.insert(frame.end(), {static_cast<std::uint8_t>(crc % 256), static_cast<std::uint8_t>(crc / 256), 0x16});
    frame.insert(frame.begin(), {0x46, 0xB9});
    return frame;
}

const vrk::BoardJob& job()
{
    static const vrk::BoardJob made = [] {
        vrk::BoardJob job;
        job.model.series = 7;
        job.model.mcu_id = "D17E";
        job.model.ap_last = 0xEFFF;
        job.model.eeprom_last = -1;
        job.line.port_path = "hand";
        job.code.bytes.resize(0x12001, 0x5A);
        job.code.high = 0x2FFF;
        job.code.loaded = true;
        job.data.bytes.resize(0x10001);
        return job;
    }();
    return made;
}

class Talk {
public:
    explicit Talk(Input input)
        : input_(input)
    {
        link.ports.made->on_write = [this](std::size_t count) {
            if (count > 1) // the byte that wakes a board is no frame
                answer();
        };
    }

    HandLink link;
    vrk::WrittenReport report;
    int frames_taken = 0; // good answers that may confirm a block

private:
    void answer()
    {
        if (input_.empty()) {
            link.session.stop_requested = true;
            return;
        }
        const std::uint8_t head = take_byte(input_);
        const std::size_t length = head & longest_payload;
        switch (head >> 6) {
        case 0:
            return;
        case 1: {
            const Input raw = take_bytes(input_, length);
            return come_in({raw.begin(), raw.end()}, answer_us);
        }
        default:
            break;
        }
        const std::uint8_t code = take_byte(input_);
        frames_taken += code == 0x80 ? 1 : 0;
        const Bytes frame =
            frame_with(code, length == longest_payload ? Bytes(page, take_byte(input_)) : taken(length));
        const std::size_t first = head >> 6 == 3 ? frame.size() / 2 : frame.size();
        come_in({frame.begin(), frame.begin() + static_cast<std::ptrdiff_t>(first)}, answer_us);
        come_in({frame.begin() + static_cast<std::ptrdiff_t>(first), frame.end()}, piece_us);
    }
    Bytes taken(std::size_t length)
    {
        const Input bytes = take_bytes(input_, length);
        return {bytes.begin(), bytes.end()};
    }
    void come_in(Bytes bytes, std::int64_t behind_us)
    {
        if (bytes.empty())
            return;
        link.loop.call_at(link.loop.now_us() + behind_us, [this, bytes = std::move(bytes)] {
            if (!link.port.is_open())
                return;
            HandPort& port = *link.ports.made;
            port.in.insert(port.in.end(), bytes.begin(), bytes.end());
            port.on_receive();
        });
    }

    Input input_;
};

std::string complaint_of_reading(Talk& talk)
{
    const vrk::MemoryRead read = vrk::read_board_memory(talk.link.session, job(), talk.report);
    const bool whole = read.pages.size() == 0x10000;
    if (read.pages.size() > 0x10000 || (read.result == vrk::Result::good) != whole)
        return "a reading that ended with " + std::to_string(read.pages.size()) + " bytes";
    return {};
}

std::string complaint_of_job(Talk& talk)
{
    const vrk::BoardOutcome outcome = vrk::download_to_board(talk.link.session, job(), talk.report);
    if (outcome.image.size() != 0x10001)
        return "an image of " + std::to_string(outcome.image.size()) + " bytes";
    if (outcome.result == vrk::Result::good && talk.frames_taken < write_frames)
        return "called good with " + std::to_string(talk.frames_taken) + " answers";
    return {};
}

} // namespace

std::string fuzz_board_talk(Input input)
{
    const bool reads = (take_byte(input) & 1) != 0;
    Talk talk(input);
    const std::string complaint = reads ? complaint_of_reading(talk) : complaint_of_job(talk);
    if (!complaint.empty())
        return complaint;
    return talk.link.port.is_open() ? "the port is still open" : "";
}

} // namespace fuzz
