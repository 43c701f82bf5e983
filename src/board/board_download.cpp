#include "board/board_download.h"

#include "board/board_image.h"
#include "board/board_link.h"
#include "board/board_write.h"
#include "board/given_numbers.h"
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
// How far a chip's memory goes in over the one area, over both, over the two banks of a single one.
constexpr std::int32_t first_area_target_last = 0xABFF;
constexpr std::int32_t second_area_target_last = 0xCBFF;
constexpr std::int32_t second_bank_target_last = 0xF7FF;

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

constexpr Text data_left_out = {"脱机下载板无法下载该 MCU 的全部 EEPROM 数据，未写入。",
    "An off-line board would leave out the end of the EEPROM data of this MCU. Nothing was written."};

// A board of this kind is written in one go, and has been given all that it will get.
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

// What a board claims to hold may be more than a job ever writes into one of its kind.
std::int32_t last_written(const BoardFacts& board)
{
    if (board.single_area)
        return second_bank_target_last;
    return is_done_with_first_area(board) ? first_area_target_last : second_area_target_last;
}

Line too_much_text(std::int32_t last, std::int32_t wanted_last)
{
    const std::string most = std::to_string((last + 1) / 1024) + "K";
    const std::string wanted = std::to_string(wanted_last / 1024 + 1) + "K";
    Line text;
    text.zh = "此脱机下载板只能写入 " + most + " 程序和数据，本次需要 " + wanted + "，未写入。";
    text.en = "Only " + most + " of code and data can be written into this off-line board, " + wanted +
        " are needed. Nothing was written.";
    return text;
}

// The board would get less than its header says, and program chips with what it happens to hold.
Result look_at_size(Report& report, const BoardFacts& board, const BoardFit& fit)
{
    const std::int32_t last = last_written(board);
    if (fit.code_end <= last)
        return Result::good;
    report.show_box(too_much_text(last, fit.code_end));
    return Result::refused;
}

// The numbers that the board will count have to stay in their range, and in what it will program.
Result look_at_numbers(const BoardJob& job, Report& report, const BoardFit& fit)
{
    if (const auto refusal = why_numbers_are_refused(job)) {
        report.show_box(refusal->text, refusal->title);
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
        return {Result::refused, {}, {}};
    }
    BoardOutcome outcome;
    outcome.image = begin_board_image(job);
    BoardSource source = build_board_source(job);
    if (data_ends_behind(job, source)) {
        report.show_box(data_left_out);
        outcome.result = Result::refused;
        return outcome;
    }
    BoardFacts board;
    outcome.result = connect_and_say(session, job, report, board);
    if (outcome.result != Result::good)
        return outcome;

    const BoardFit fit = board_fit(job.model, board.capacity, source.last);
    outcome.result = look_at_numbers(job, report, fit);
    if (outcome.result == Result::good)
        outcome.result = look_at_size(report, board, fit);
    if (outcome.result != Result::good)
        return outcome;
    leave_numbers_open(job, source);
    if (fit.cut)
        report.show_box(cut_text(fit));
    report.say(processing);
    outcome.image = build_board_image(job, source, fit, [&report](int block) {
        report.progress({0, crc_blocks - 1, block, Progress::Unit::step});
    });
    outcome.result = session.is_over() ? board_failed(session, report, 3, write_failed, Result::programming_failed)
                                       : program_board(session, report, board, source, outcome.image);
    if (outcome.result == Result::good) {
        for (const Line& text : given_texts(job))
            report.say(text);
    }
    if (job.code_number.in_use)
        outcome.kept = std::move(source.bytes);
    return outcome;
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
