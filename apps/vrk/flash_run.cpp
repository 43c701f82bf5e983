#include "vrk/flash_run.h"

#include "link/handshake.h"
#include "link/sequencer.h"
#include "platform/deadline.h"
#include "session/image_writes.h"
#include "session/shared_texts.h"

#include <array>

namespace vrk {

namespace {

constexpr int second_ms = 1000;
constexpr int not_heard = 1; // exit code: what is told cannot be written any more

constexpr Text no_further_number = {
    "没有下一个可用的编号，运行结束。", "There is no further serial number: the run ends."};

// Another chip would end in the same way.
bool ends_every_run(Result result)
{
    return result == Result::stopped || result == Result::no_port || result == Result::port_gone ||
        result == Result::number_outside || result == Result::refused;
}

} // namespace

void FlashRun::stop()
{
    stop_requested_ = true;
    if (session_ != nullptr)
        session_->stop_requested = true;
}

// A chip that does not answer in time is as silent as one that never does.
Result FlashRun::talk(
    const Job& job, const FlashOrder& order, ChipEnd& end, Batch& batch, ChipInBooks& report, bool last)
{
    Session session(loop_, port_, catalogue_, job.model, job.line);
    session.stop_requested = stop_requested_;
    session_ = &session;
    bool too_late = false;
    EventLoop::CallId limit = 0;
    if (order.wait_s > 0) {
        limit = loop_.call_at(loop_.now_us() + std::int64_t{order.wait_s} * 1'000'000, [&] {
            too_late = !teller_.answered();
            session.stop_requested = session.stop_requested || too_late;
        });
    }
    report.seal(job, session);
    Result result = program_one_chip(session, job, report);
    loop_.cancel(limit);
    end.seconds = teller_.seconds();
    end.take_facts(session);
    if (result == Result::stopped && too_late && !stop_requested_)
        result = Result::no_answer;
    const bool in_books = report.end(result); // before anybody is told
    if (result == Result::good) {
        end.number = next_number(batch);
        const bool moved = move_numbers(batch);
        number_for_next_ = in_books && (moved || wishes_.numbers); // the ledger knows the next one better
    }
    if (result == Result::good || result == Result::off_frequency)
        report_success(session, job, teller_);
    report.tell_books();
    if (result == Result::good) {
        session.stop_requested = session.stop_requested || last;
        let_chip_go(session);
    }
    session_ = nullptr;
    return result;
}

ChipEnd FlashRun::flash_chip(Batch& batch, const FlashOrder& order, bool last)
{
    ChipEnd end;
    ChipInBooks report(books_, wishes_, loop_, teller_);
    if (!report.begin(std::array{&batch.code_number, &batch.data_number})) {
        end.result = Result::refused;
        return end;
    }
    const Job job = next_job(batch);
    if (!numbers_can_be_written(job)) {
        teller_.show_box(number_outside, {});
        end.result = Result::number_outside;
        return end;
    }
    end.result = talk(job, order, end, batch, report, last);
    port_.close();
    return end;
}

void FlashRun::pause(int seconds)
{
    Line line;
    line.zh = "请更换芯片，" + std::to_string(seconds) + " 秒后呼叫下一片。";
    line.en = "Change the chip: the next one is called in " + std::to_string(seconds) + " s.";
    if (seconds > 0)
        teller_.say(line);
    const Deadline end(loop_, seconds * second_ms);
    while (seconds > 0 && !stop_requested_ && !end.passed())
        loop_.yield();
}

RunEnd FlashRun::run(Batch& batch, const FlashOrder& order)
{
    so_far_ = {};
    for (int index = 1;; ++index) {
        teller_.begin_chip(index);
        if (on_chip_awaited)
            on_chip_awaited();
        ChipEnd chip = flash_chip(batch, order, order.chips == so_far_.good + 1);
        chip.index = index;
        const bool good = chip.result == Result::good;
        so_far_.good += good ? 1 : 0;
        so_far_.bad += !good && chip.result != Result::stopped && teller_.answered() ? 1 : 0;
        so_far_.exit_code = class_of(chip.result).exit_code;
        teller_.end_of_chip(chip, so_far_);

        const bool enough = order.chips > 0 && so_far_.good >= order.chips;
        if (enough || ends_every_run(chip.result) || (!good && !order.keep_going))
            break;
        if (!number_for_next_) {
            teller_.say(Line{no_further_number}.as(Tone::bad));
            so_far_.exit_code = class_of(Result::number_refused).exit_code;
            break;
        }
        if (!teller_.is_heard())
            break;
        if (!stop_requested_)
            pause(order.pause_s);
        if (stop_requested_) {
            report_stop(teller_); // below the report of the chip before
            so_far_.exit_code = class_of(Result::stopped).exit_code;
            break;
        }
    }
    teller_.end(so_far_);
    if (!teller_.is_heard())
        so_far_.exit_code = not_heard; // whoever relies on what he reads must not take silence for success
    return so_far_;
}

} // namespace vrk
