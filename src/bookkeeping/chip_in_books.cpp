#include "bookkeeping/chip_in_books.h"

#include "books/sha256.h"
#include "platform/text_number.h"
#include "report/stage_word.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace vrk {

namespace {

constexpr Text nothing_begun = {"未开始编程。", "No chip was begun.", Tone::bad};
constexpr Text no_books = {"本程序没有台账。", "This program has no ledger.", Tone::bad};
constexpr Text no_order = {"请输入订单名称。", "The numbers need the name of their order.", Tone::bad};
constexpr Text done_before = {"本板已按此任务编程成功: ", "This board was good for this job already: ", Tone::advice};
constexpr Text kept_beside = {"本片已另存于台账旁, 台账恢复后补记; 此前不再开始新的芯片。",
    "This chip is kept in a file beside the ledger and is taken in later. No chip is begun before.", Tone::bad};
constexpr Text kept_nowhere = {"本片未能记入台账, 也未能另存, 编号待定, 请手工记下: ",
    "This chip stands in no book and in no file. Write its number down, it is unsure until it is settled: ", Tone::bad};

std::string two(int number)
{
    const std::string digits = std::to_string(number);
    return digits.size() < 2 ? "0" + digits : digits;
}

std::string time_text(const WallTime& time)
{
    return std::to_string(time.year) + "-" + two(time.month) + "-" + two(time.day) + " " + clock_text(time);
}

std::string seconds_text(std::int64_t us)
{
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.3f", static_cast<double>(us) / 1e6);
    return text.data();
}

std::string last_line_of(std::string_view text)
{
    text = trimmed(text);
    return std::string{text.substr(text.rfind('\n') + 1)}; // nothing found: from the start
}

std::string written_text(const OptionBytes& bytes)
{
    std::string text;
    for (const std::uint8_t byte : bytes)
        text += (text.empty() ? "" : " ") + hex_text(byte, 2);
    return text;
}

// "--" for a row that the chip has not told.
std::string read_text(const SessionFacts& talk)
{
    std::string text;
    for (std::size_t row = 0; row < talk.status_bytes.size(); ++row)
        text += (row == 0 ? "" : " ") + (talk.told.test(row) ? hex_text(talk.status_bytes[row] & 0xFF, 2) : "--");
    return talk.told.any() ? text : "";
}

} // namespace

std::string image_sha256(const JobImage& image, const std::vector<StampedNumber>& numbers, std::int32_t offset)
{
    const std::int32_t end = std::min(image.high + 1, static_cast<std::int32_t>(image.bytes.size()));
    if (!image.loaded || image.low < 0 || image.low >= end)
        return {};
    std::vector<std::uint8_t> bytes(image.bytes.begin() + image.low, image.bytes.begin() + end);
    for (const StampedNumber& number : numbers) {
        for (std::size_t i = 0; i < number.bytes.size(); ++i) {
            const std::int64_t at = number.flash_address + static_cast<std::int64_t>(i) - offset - image.low;
            if (at >= 0 && at < static_cast<std::int64_t>(bytes.size()))
                bytes[static_cast<std::size_t>(at)] = 0;
        }
    }
    return sha256(bytes);
}

ChipInBooks::ChipInBooks(Books* books, LineWishes wishes, EventLoop& loop, Report& shown)
    : books_(books)
    , wishes_(std::move(wishes))
    , loop_(loop)
    , shown_(shown)
{
}

ChipInBooks::~ChipInBooks()
{
    if (!ended_ && !numbers_.empty())
        books_->end_chip({numbers_, false, {}});
}

// Always false: for what cannot go on.
bool ChipInBooks::refuse(const BooksFault& fault)
{
    say(fault_text(fault));
    say(nothing_begun);
    return false;
}

bool ChipInBooks::begin(std::span<AutoIncrease* const> records)
{
    if (!wishes_.any())
        return true;
    if (books_ == nullptr || (wishes_.numbers && trimmed(wishes_.order).empty())) {
        say(books_ == nullptr ? no_books : no_order);
        say(nothing_begun);
        return false;
    }
    if (const auto fault = books_->open())
        return refuse(*fault);
    for (AutoIncrease* record : records) {
        if (!record->valid)
            continue;
        if (wishes_.numbers) {
            const auto given = books_->reserve({wishes_.order, *record});
            if (given.fault)
                return refuse(*given.fault);
            numbers_.push_back(given.value);
        }
        (record->kind == BufferKind::code ? values_.first : values_.second) =
            wishes_.numbers ? numbers_.back().value : record->next_value;
    }
    for (AutoIncrease* record : records) {
        if (record->valid)
            record->next_value = record->kind == BufferKind::code ? values_.first : values_.second;
    }
    return true;
}

void ChipInBooks::say(const Line& line)
{
    if (line.is_in(wishes_.english)) {
        if (const std::string last = last_line_of(line.in(wishes_.english)); !last.empty())
            last_line_ = last;
    }
    shown_.say(line);
}

void ChipInBooks::close_stage()
{
    if (!stage_.empty())
        stages_ += (stages_.empty() ? "" : " ") + stage_ + " " + seconds_text(loop_.now_us() - stage_since_us_);
    stage_.clear();
}

void ChipInBooks::enter(Stage stage)
{
    close_stage();
    stage_ = word_of(stage);
    stage_since_us_ = loop_.now_us();
    answered_ = answered_ || stage != Stage::calling;
    shown_.enter(stage);
    if (stage == Stage::writing && wishes_.record)
        name_same_board();
}

void ChipInBooks::seal(const Job& job, const Session& talk)
{
    job_ = &job;
    talk_ = &talk;
}

// A chip tells its factory number with the answer to its erase, so this is the first moment at which it is known, and
// going on the only way to leave a good board behind.
void ChipInBooks::name_same_board()
{
    const ChipRecord self = record_of(Result::good);
    const auto earlier = books_->earlier_good(self);
    if (!earlier.value)
        return;
    const ChipRecord& before = *earlier.value;
    const std::string number = before.number.empty() ? "" : "  " + before.number;
    say((Line{done_before} + (before.factory_number + "  " + before.at + number)).as(Tone::advice));
}

bool ChipInBooks::may_erase()
{
    if (numbers_.empty())
        return true;
    const auto fault = books_->begin_work(numbers_);
    return !fault || refuse(*fault);
}

ChipRecord ChipInBooks::record_of(Result result) const
{
    const Session& talk = *talk_;
    ChipRecord record;
    record.at = time_text(loop_.wall_time());
    record.station = wishes_.station;
    record.port = talk.line.port_path;
    record.job = wishes_.job;
    record.code_sha256 = image_sha256(job_->code, job_->numbers, 0);
    record.data_sha256 = image_sha256(job_->data, job_->numbers, job_->model.eeprom_first);
    record.model = talk.chip.target_name.empty() ? job_->model_name : talk.chip.target_name;
    record.firmware = talk.chip.fw_version + talk.chip.fw_letter;
    record.factory_number = talk.chip.serial_number;
    record.clock_hz = talk.chip.mcu_clock_hz > 0 ? number_text(round_half_even(talk.chip.mcu_clock_hz)) : "";
    record.baud = std::to_string(talk.port.line().baud);
    record.options_written = talk.options_done ? written_text(job_->options.wanted()) : "";
    record.options_read = read_text(talk);
    record.order = wishes_.numbers && !numbers_.empty() ? wishes_.order : "";
    record.number = values_.first;
    record.data_number = values_.second;
    record.result = word_of(result);
    record.last_line = last_line_;
    record.stages = stages_;
    return record;
}

bool ChipInBooks::end(Result result)
{
    ended_ = true;
    close_stage();
    ClosedChip end{numbers_, result == Result::good, {}};
    if (wishes_.record && answered_)
        end.record = record_of(result);
    if (books_ == nullptr || (end.numbers.empty() && !end.record))
        return true;
    kept_ = books_->end_chip(end);
    return !kept_.fault;
}

void ChipInBooks::tell_books()
{
    if (!kept_.fault)
        return;
    say(fault_text(*kept_.fault));
    if (kept_.place == EndKept::Place::beside)
        say(kept_beside);
    if (kept_.place == EndKept::Place::nowhere)
        say((Line{kept_nowhere} + (values_.first + " " + values_.second + " (" + kept_.beside_reason + ")"))
                .as(Tone::bad));
}

} // namespace vrk
