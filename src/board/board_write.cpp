#include "board/board_write.h"

#include "session/frame.h"

#include <algorithm>

namespace vrk {

namespace {

constexpr std::int32_t block = 512;
constexpr std::int32_t chunk = 128;
constexpr int block_tries = 6;
constexpr int last_block_tries = 3;
constexpr int answer_ms = 600;
constexpr std::uint8_t taken = 0x80;

// The answer names neither address nor sum, so it counts only on a line that was silent before.
bool write_frame(Session& session, std::int32_t address, std::span<const std::uint8_t> data, bool again)
{
    const std::uint8_t code = again ? command::write_block_again : command::write_block;
    const DataFrame frame = build_data_frame(code, static_cast<std::uint32_t>(address), data, session.check());
    if (!session.make_way(frame.bytes.size(), again))
        return false;
    session.flush();
    session.rx.reply_bad = false;
    session.port.send(frame.bytes);
    const Deadline end(session.loop, answer_ms);
    return session.wait_answer(end) && session.rx.code() == taken;
}

bool write_span(
    Session& session, std::span<const std::uint8_t> image, std::int32_t first, std::int32_t last, bool again)
{
    for (std::int32_t at = first; at <= last; at += chunk) {
        const auto count = static_cast<std::size_t>(std::min(chunk, last - at + 1));
        if (!write_frame(session, at, image.subspan(static_cast<std::size_t>(at), count), again))
            return false;
    }
    return true;
}

bool write_block(
    Session& session, std::span<const std::uint8_t> image, std::int32_t first, std::int32_t last, int tries)
{
    for (int attempt = 0; attempt < tries && !session.is_over(); ++attempt) {
        if (write_span(session, image, first, last, attempt > 0))
            return true;
    }
    return false;
}

} // namespace

bool write_board_range(
    Session& session, Report& report, std::span<const std::uint8_t> image, std::int32_t first, std::int32_t last)
{
    first -= first % block;
    report.progress({first, last, first - 1});
    for (std::int32_t at = first; at <= last; at += block) {
        const bool is_last = at + block > last;
        const std::int32_t end = is_last ? last : at + block - 1;
        if (!write_block(session, image, at, end, is_last ? last_block_tries : block_tries))
            return false;
        report.progress({first, last, end});
    }
    return true;
}

} // namespace vrk
