#include "session/write_range.h"

#include "session/image_writes.h"

#include "catalog/attributes.h"
#include "options/status_frame.h"

#include <algorithm>
#include <array>
#include <vector>

namespace vrk {

namespace {

constexpr int block_tries = 4;
constexpr std::uint8_t block_taken = 0x80;
constexpr int none = -1; // where an address is looked for

// The boot block of these chips can be larger than its smallest form, and code must not reach into it.
void cut_at_boot_block(Session& session, Report& report, WriteRange& range)
{
    const McuRecord& record = session.model();
    ChipFacts& chip = session.chip;
    if (record.series != 0 && !chip.boot_size_known) {
        const std::int16_t size = boot_size_by_version(version_times_ten(chip.fw_version));
        if (size != 0)
            chip.boot_size = size;
    }
    const std::int32_t most = record.isp_last + 0x400 - chip.boot_size;
    if (chip.boot_size <= 0x400 || session.demo_mode || range.last <= most)
        return;
    report.beep(2);
    range.last = most;
    const std::string kilobytes = std::to_string((range.last + 0x1FF) / 1024);
    Line cut;
    cut.zh = "Chinese:此版本固件最多可编程 " + kilobytes + "K, 您的文件已超长，\n        超长部分不下载。";
    cut.en = "Enable " + kilobytes + "K file size for this Version firmware.\n" + "Enable " + kilobytes +
        "K file size for this Version firmware(program " + kilobytes + "K only).";
    report.say(cut);
}

// The bytes of a chunk; what lies past the end of the image is 00.
std::span<const std::uint8_t> chunk_of(std::span<const std::uint8_t> image, std::int32_t address, std::int32_t count,
    std::array<std::uint8_t, 128>& filled)
{
    const auto at = static_cast<std::size_t>(address);
    const auto size = static_cast<std::size_t>(count);
    if (at + size <= image.size())
        return image.subspan(at, size);
    filled.fill(0);
    if (at < image.size())
        std::copy(image.begin() + static_cast<std::ptrdiff_t>(at), image.end(), filled.begin());
    return std::span<const std::uint8_t>{filled}.first(size);
}

bool block_reply_good(std::span<const std::uint8_t> reply, bool new_protocol, std::uint16_t data_sum)
{
    if (reply.size() < 5)
        return false;
    const bool sum_good = reply[4] == low(data_sum);
    if (new_protocol)
        return reply[3] == 0 && sum_good;
    const bool short_answer = reply[1] == 0 && reply[2] == 6; // taken, and too old to send the sum
    return reply[3] == block_taken && (short_answer || sum_good);
}

// One range on its way into the chip. Between an answer and the next frame the line stands still, so what need not be
// done in between waits until that frame is out: a good block is told, and the frame behind it is built, while the chip
// writes.
class RangeWriter {
public:
    RangeWriter(Session& session, Report& report, const WriteRange& range, std::span<const std::uint8_t> image)
        : session_(session)
        , report_(report)
        , range_(range)
        , image_(image)
        , block_size_(block_bytes(session.model()))
        , end_(block_end(range.last))
    {
    }
    bool write();

private:
    struct Piece { // what one frame carries
        std::int32_t first;
        std::int32_t count;
    };

    std::int32_t block_end(std::int32_t address) const { return (address / block_size_ + 1) * block_size_ - 1; }
    Piece piece_at(std::int32_t address) const;
    std::int32_t behind(const Piece& piece) const;
    DataFrame build(const Piece& piece, bool again) const;

    bool write_block(std::int32_t first, std::int32_t last);
    bool try_block(std::int32_t first, std::int32_t last, bool again);
    bool write_piece(const Piece& piece, bool again);
    bool reply_comes(const DataFrame& frame);
    bool demo_reply_comes(const DataFrame& frame);

    void work_ahead(const Piece& sent);
    void tell_progress(std::int32_t written_to);
    void tell_good_blocks();

    Session& session_;
    Report& report_;
    WriteRange range_;
    std::span<const std::uint8_t> image_;
    std::int32_t block_size_;
    std::int32_t end_; // of the last block

    std::int32_t untold_first_ = none; // of the good block that is not told yet
    std::int32_t untold_last_ = none;
    std::int32_t built_for_ = none; // where the frame that is built ahead goes
    DataFrame built_;
};

RangeWriter::Piece RangeWriter::piece_at(std::int32_t address) const
{
    const std::int32_t left = block_end(address) - address + 1;
    return {address, range_.as_chunks ? std::min<std::int32_t>(write_chunk, left) : left};
}

// Frames stand on multiples of their size, whatever address the range began at.
std::int32_t RangeWriter::behind(const Piece& piece) const
{
    const std::int32_t next_block = block_end(piece.first) + 1;
    if (!range_.as_chunks)
        return next_block;
    return std::min((piece.first / write_chunk + 1) * write_chunk, next_block);
}

DataFrame RangeWriter::build(const Piece& piece, bool again) const
{
    std::array<std::uint8_t, 128> filled{};
    const auto data = chunk_of(image_, piece.first, piece.count, filled);
    const auto address = static_cast<std::uint32_t>(piece.first);
    if (session_.demo_mode)
        return build_demo_data_frame(again ? command::demo_write_again : command::demo_write, address, data);
    return build_data_frame(again ? command::write_block_again : command::write_block, address, data, session_.check());
}

bool RangeWriter::write()
{
    tell_progress(range_.first - 1);
    bool good = true;
    for (std::int32_t first = range_.first; good && first <= end_; first = block_end(first) + 1) {
        good = write_block(first, block_end(first)); // the first is shorter where the range begins inside a block
        if (good) {
            untold_first_ = first;
            untold_last_ = block_end(first);
        }
    }
    tell_good_blocks();
    return good;
}

bool RangeWriter::write_block(std::int32_t first, std::int32_t last)
{
    for (int attempt = 0; attempt < block_tries; ++attempt) {
        const bool good = try_block(first, last, attempt > 0);
        if (session_.is_over())
            return false;
        if (good)
            return true;
    }
    return false;
}

bool RangeWriter::try_block(std::int32_t first, std::int32_t last, bool again)
{
    for (std::int32_t address = first; address <= last;) {
        const Piece piece = piece_at(address);
        if (!write_piece(piece, again) || session_.is_over())
            return false;
        address = behind(piece);
    }
    return true;
}

bool RangeWriter::write_piece(const Piece& piece, bool again)
{
    const DataFrame frame = again || built_for_ != piece.first ? build(piece, again) : std::move(built_);
    built_for_ = none;
    session_.data_sum = frame.data_sum;
    if (!session_.make_way(frame.bytes.size(), again))
        return false;
    session_.flush();
    session_.rx.demo_reply_ok = false;
    session_.port.send(frame.bytes);
    work_ahead(piece);
    return session_.demo_mode ? demo_reply_comes(frame) : reply_comes(frame);
}

bool RangeWriter::reply_comes(const DataFrame& frame)
{
    if (!session_.wait_reply(
            reply_timeout_ms(static_cast<double>(session_.chip.mcu_clock_hz), session_.port.line().baud)))
        return false;
    return block_reply_good(session_.frame(), session_.model().cap_new_protocol, frame.data_sum);
}

bool RangeWriter::demo_reply_comes(const DataFrame& frame)
{
    if (!session_.wait_demo_reply(
            reply_timeout_ms(static_cast<double>(session_.chip.mcu_clock_hz), session_.port.line().baud)))
        return false;
    session_.rx.reply_ok = true;
    const auto reply = session_.frame();
    return reply.size() > 6 && reply[5] * 256 + reply[6] == frame.data_sum;
}

void RangeWriter::work_ahead(const Piece& sent)
{
    tell_good_blocks();
    const std::int32_t next = behind(sent);
    if (next > end_)
        return;
    built_ = build(piece_at(next), false);
    built_for_ = next;
}

void RangeWriter::tell_progress(std::int32_t written_to)
{
    report_.progress({range_.first, range_.last, written_to, Progress::Unit::byte, range_.before, range_.behind});
}

void RangeWriter::tell_good_blocks()
{
    if (untold_last_ == none)
        return;
    put_bytes(session_.programmed, untold_first_, untold_last_, image_);
    tell_progress(untold_last_);
    untold_last_ = none;
}

} // namespace

bool write_range(
    Session& session, Report& report, const WriteRange& range, std::span<const std::uint8_t> image, bool check_boot)
{
    const McuRecord& record = session.model();
    WriteRange whole = range;
    whole.last = range_end(range, record);
    if (is_aspen_top(record) || (record.series == 2 && check_boot))
        cut_at_boot_block(session, report, whole);
    return RangeWriter(session, report, whole, image).write();
}

std::int16_t boot_size_by_version(int version_times_ten)
{
    if (version_times_ten < 0 || version_times_ten > 39)
        return 0;
    const bool small = (version_times_ten >= 19 && version_times_ten <= 24) || version_times_ten == 26;
    return small ? 1024 : 2048;
}

int reply_timeout_ms(double clock_hz, std::int32_t baud)
{
    struct Row {
        double below;
        int ms;
    };
    constexpr Row by_clock[] = {{3000000, 4000}, {4000000, 3000}, {6000000, 2000}, {8000000, 1500}, {12000000, 1200}};
    constexpr Row by_baud[] = {{1200, 5000}, {2400, 3000}, {4800, 2000}, {9600, 1500}}; // up to this baud at least
    int ms = 1000;
    for (const Row& row : by_clock) {
        if (clock_hz < row.below) {
            ms = row.ms;
            break;
        }
    }
    for (const Row& row : by_baud) {
        if (baud <= row.below)
            return std::max(ms, row.ms);
    }
    return ms;
}

} // namespace vrk
