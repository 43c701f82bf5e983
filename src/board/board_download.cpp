#include "board/board_download.h"

#include "board/board_image.h"
#include "board/board_link.h"
#include "board/board_write.h"
#include "board/quantity.h"

#include "session/shared_texts.h"

#include <algorithm>
#include <utility>

namespace vrk {

namespace {

constexpr std::int32_t area_first = 0x4000;
constexpr std::int32_t area_last = 0xF7FF;
constexpr std::int32_t older_area_last = 0xF3FF; // below version 17
constexpr std::int32_t second_area_first = 0x2000;
constexpr std::int32_t second_area_last = 0x3FFF;
constexpr std::int32_t service_last = 0xFFFF;

constexpr Text connected = {"Connect OK. / 连接成功。", "Connect OK."};
constexpr Text processing = {"正在处理数据，请稍候...", "we are  processing data, please wait..."};
constexpr Text erasing = {"正在擦除全片内容...", "We are erasing MCU flash ..."};
constexpr Text erase_failed = {"擦除失败", "Erasing MCU failed."};
constexpr Text programming = {"正在下载 ...", "We are programming ..."};
constexpr Text write_failed = {"下载失败。", "Program failure!"};
constexpr Text all_in_one_area = {"Download OK. / 下载成功。", "Download OK. / 下载成功。", Tone::good};
constexpr Text second_erase_failed = {"下载失败。", "Erasing MCU failed."};
constexpr Text silent_behind_erasure = {"下载失败。", "Program failed."};
constexpr Text good = {"下载成功。", "Program OK.", Tone::good};
constexpr Text service_good = {"Program OK", "Program OK", Tone::good};

// The whole image fits the area that is written first.
bool is_done_with_first_area(const BoardFacts& board)
{
    return (board.version() >= 17 || board.version() == 15) && !board.single_area;
}

Result erase_and_write(Session& session, Report& report, const BoardImage& image, std::int32_t first, std::int32_t last)
{
    report.say(erasing);
    if (!erase_board(session))
        return board_failed(session, report, 0, erase_failed, Result::erase_failed);
    report.enter(Stage::writing);
    report.say(programming);
    if (!write_board_range(session, report, image, first, last))
        return board_failed(session, report, 3, write_failed, Result::programming_failed);
    return Result::good;
}

Result write_second_area(
    Session& session, Report& report, const BoardFacts& board, const BoardSource& source, BoardImage image)
{
    if (!erase_second_area(session))
        return board_failed(session, report, 0, second_erase_failed, Result::erase_failed);
    if (!call_board_again(session))
        return board_failed(session, report, 0, silent_behind_erasure, Result::no_answer);
    if (board.single_area)
        put_second_bank(source, image);
    const std::int32_t first = board.single_area ? second_bank_first : second_area_first;
    const std::int32_t last = board.single_area ? second_bank_last : second_area_last;
    if (!write_board_range(session, report, image, first, last))
        return board_failed(session, report, 3, write_failed, Result::programming_failed);
    return Result::good;
}

Result program_board(
    Session& session, Report& report, const BoardFacts& board, const BoardSource& source, const BoardImage& image)
{
    const std::int32_t last = board.version() >= 17 ? area_last : older_area_last;
    if (const Result written = erase_and_write(session, report, image, area_first, last); written != Result::good)
        return written;
    if (is_done_with_first_area(board)) {
        report.say(all_in_one_area);
        return Result::good;
    }
    if (const Result written = write_second_area(session, report, board, source, image); written != Result::good)
        return written;
    report.say(good);
    return Result::good;
}

// The numbers that the board will count have to stay in their range, and in what it will program.
Result look_at_numbers(const BoardJob& job, Report& report, const BoardFit& fit)
{
    if (const NumberGrowth growth = number_growth(job); growth != NumberGrowth::fits) {
        report.show_box(growth_text(growth));
        return Result::refused;
    }
    if (!numbers_lie_below(job, fit.code_end)) {
        report.show_box(number_outside);
        return Result::number_outside;
    }
    return Result::good;
}

Result connect_and_say(Session& session, const BoardJob& job, Report& report, BoardFacts& board)
{
    report.enter(Stage::calling);
    const Result result = connect_board(session, job, report, board);
    if (result == Result::good)
        report.say(connected);
    return result;
}

BoardOutcome tell_download(Session& session, const BoardJob& job, Report& report)
{
    if (const QuantityFault fault = quantity_fault(job); fault != QuantityFault::none) {
        report.show_box(quantity_text(fault));
        return {Result::refused, {}};
    }
    BoardFacts board;
    if (const Result reached = connect_and_say(session, job, report, board); reached != Result::good)
        return {reached, {}};

    BoardSource source = build_board_source(job);
    const BoardFit fit = board_fit(job.model, board.capacity, source.last);
    if (const Result looked = look_at_numbers(job, report, fit); looked != Result::good)
        return {looked, {}};
    leave_numbers_open(job, source);
    if (fit.cut)
        report.show_box(cut_text(fit));
    report.say(processing);
    const BoardImage image = build_board_image(job, source, fit);
    const Result programmed = session.is_over()
        ? board_failed(session, report, 3, write_failed, Result::programming_failed)
        : program_board(session, report, board, source, image);
    if (!job.code_number.in_use)
        return {programmed, {}};
    return {programmed, std::move(source.bytes)};
}

// Port, bar and the form of frames as they were, on every way out.
void tidy_up(Session& session, Report& report)
{
    report.enter(Stage::settling);
    session.board_mode = false;
    session.close();
    report.port_is_open(false);
}

} // namespace

BoardOutcome download_to_board(Session& session, const BoardJob& job, Report& report)
{
    BoardOutcome outcome = tell_download(session, job, report);
    tidy_up(session, report);
    return outcome;
}

Result write_service_image(Session& session, const BoardJob& job, Report& report)
{
    BoardFacts board;
    Result result = connect_and_say(session, job, report, board);
    if (result == Result::good)
        result =
            erase_and_write(session, report, stamped_source(job, build_board_source(job)), area_first, service_last);
    if (result == Result::good)
        report.say(service_good);
    tidy_up(session, report);
    return result;
}

} // namespace vrk
