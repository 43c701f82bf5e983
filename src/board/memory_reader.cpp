#include "board/memory_reader.h"

#include "board/board_download.h"
#include "board/board_link.h"

#include "session/frame.h"
#include "session/shared_texts.h"

#include <array>

namespace vrk {

namespace {

constexpr std::uint8_t read_page = 0x53; // "S"
constexpr int page_count = 512;
constexpr std::size_t page_size = 128;
constexpr std::size_t data_index = 6; // of an answer
constexpr int page_tries = 3;
constexpr int answer_ms = 600;

// These lines are Chinese in both languages.
constexpr Text read_failed = {"读 24C512 失败", "读 24C512 失败"};
constexpr Text read_good = {"读 24C512 OK", "读 24C512 OK", Tone::good};
constexpr Text stopped = {"操作被停止.", "操作被停止."};
constexpr Text port_failed = {"Open COM port failed! / 打开串口失败!\n"
                              "The COM port is opened by another Program or the COM port does not exist.\n"
                              "Chinese:串口已被其它程序打开或该串口不存在。",
    "Open COM port failed!\nThe COM port is opened by another Program or the COM port does not exist."};

bool read_one(Session& session, int page, std::vector<std::uint8_t>& pages)
{
    const Bytes frame = build_page_request(page);
    for (int attempt = 0; attempt < page_tries && !session.is_over(); ++attempt) {
        if (!session.make_way(frame.size(), attempt > 0))
            return false;
        session.flush();
        session.rx.reply_bad = false;
        session.port.send(frame);
        const Deadline end(session.loop, answer_ms);
        if (!session.wait_answer(end) || session.rx.code() != read_page)
            continue;
        const auto answer = session.fields();
        if (answer.size() < data_index + page_size)
            continue;
        const auto data = answer.subspan(data_index, page_size);
        pages.insert(pages.end(), data.begin(), data.end());
        return true;
    }
    return false;
}

Result read_all(Session& session, Report& report, std::vector<std::uint8_t>& pages)
{
    const auto last = static_cast<std::int32_t>(page_count * page_size) - 1;
    for (int page = 0; page < page_count; ++page) {
        if (read_one(session, page, pages)) {
            report.progress({0, last, static_cast<std::int32_t>(pages.size()) - 1});
            continue;
        }
        if (session.stop_requested) {
            report.say(stopped);
            return Result::stopped;
        }
        report_failed(session, report, 0, read_failed);
        return session.port_gone() ? Result::port_gone : Result::no_answer;
    }
    report.say(read_good);
    return Result::good;
}

} // namespace

Bytes build_page_request(int page)
{
    const auto address = static_cast<std::uint32_t>(page * static_cast<int>(page_size));
    const std::array<std::uint8_t, 2> place = {high(address), low(address)};
    return build_command_frame(read_page, place, Check::crc16);
}

MemoryRead read_board_memory(Session& session, const BoardJob& job, Report& report)
{
    MemoryRead read;
    read.result = write_service_image(session, job, report);
    if (read.result != Result::good)
        return read;
    session.board_mode = true;
    if (open_board_line(session)) {
        report.port_is_open(true);
        session.rx.accept_frames = true;
        report.enter(Stage::writing);
        read.result = read_all(session, report, read.pages);
        report.enter(Stage::settling);
    } else {
        report_failed(session, report, 3, port_failed);
        report_refusal(session, report);
        read.result = session.port_gone() ? Result::port_gone : Result::no_port;
        read.line_lost = true;
    }
    session.board_mode = false;
    session.close();
    report.port_is_open(false);
    return read;
}

} // namespace vrk
