#include "vrk/plain_teller.h"

#include <array>
#include <cstdio>
#include <numeric>

namespace vrk {

namespace {

// clang-format off
constexpr Text chip_word    = { "芯片 ",       "chip " };
constexpr Text number_word  = { "，编号 ",     ", number " };
constexpr Text answer_word[] = { { " - 否 (--yes 表示是)", " - no (--yes says yes)" }, { " - 是", " - yes" } };
constexpr Text good_word    = { "合格: ",      "good: " };
constexpr Text bad_word     = { "，不合格: ",  ", bad: " };
constexpr Text left_word    = { " 剩余",       " left" };
// clang-format on

constexpr const char* clear_line = "\r\x1b[K";

std::string seconds_text(double seconds)
{
    std::array<char, 32> text{};
    const int size = std::snprintf(text.data(), text.size(), "%.1f s", seconds);
    return {text.data(), static_cast<std::size_t>(size)};
}

} // namespace

void PlainTeller::write(const std::string& text)
{
    if (is_drawn_)
        out_ << clear_line;
    is_drawn_ = false;
    out_ << text << std::endl;
}

void PlainTeller::draw(const std::string& text)
{
    if (manner_ != Manner::drawn)
        return;
    out_ << clear_line << text << std::flush;
    is_drawn_ = true;
}

void PlainTeller::begin(const RunBegin& run)
{
    if (manner_ != Manner::quiet)
        write(run.model + "  " + run.file + "  " + run.port);
}

void PlainTeller::end_of_chip(const ChipEnd& chip, const RunEnd& so_far)
{
    const bool good = chip.result == Result::good;
    if (good && manner_ == Manner::quiet)
        return;
    const ResultClass& row = class_of(chip.result);
    std::string text;
    if (chip.index > 0)
        text += std::string{in_language(english(), chip_word)} + std::to_string(chip.index) + ": ";
    text += row.word;
    if (!good) {
        text += "  " + std::string{in_language(english(), row.next)};
    } else {
        if (!chip.number.empty())
            text += std::string{in_language(english(), number_word)} + chip.number;
        const double all = std::accumulate(chip.seconds.begin(), chip.seconds.end(), 0.0,
            [](double sum, const auto& stage) { return sum + stage.second; });
        text += ", " + seconds_text(all);
    }
    if (so_far.good + so_far.bad > 1)
        text += "  (" + std::string{in_language(english(), good_word)} + std::to_string(so_far.good) +
            std::string{in_language(english(), bad_word)} + std::to_string(so_far.bad) + ")";
    write(text);
}

void PlainTeller::end(const RunEnd& /*run*/)
{
    if (is_drawn_)
        out_ << clear_line << std::flush;
    is_drawn_ = false;
}

void PlainTeller::show_box(const Line& text, const Line& /*title*/) { write(text.in(english())); }

void PlainTeller::say(const Line& line)
{
    if (line.is_in(english()) && (manner_ != Manner::quiet || line.tone == Tone::bad))
        write(line.in(english()));
}

void PlainTeller::tell_chip(int index)
{
    if (index > 1 && manner_ != Manner::quiet)
        write(std::string{in_language(english(), chip_word)} + std::to_string(index));
}

void PlainTeller::tell_stage(Stage stage) { draw(std::string{word_of(stage)}); }

void PlainTeller::tell_pace(const PaceFigures& figures)
{
    std::array<char, 96> text{};
    const int size = std::snprintf(text.data(), text.size(), "writing %3d %%  %.1f/%.1f KB", figures.percent,
        static_cast<double>(figures.bytes) / 1024, static_cast<double>(figures.of) / 1024);
    std::string line{text.data(), static_cast<std::size_t>(size)};
    if (figures.seconds_left) {
        std::snprintf(text.data(), text.size(), "  %d:%02d", *figures.seconds_left / 60, *figures.seconds_left % 60);
        line += std::string{text.data()} + std::string{in_language(english(), left_word)};
    }
    draw(line);
}

void PlainTeller::tell_question(const std::string& text, bool answer)
{
    write(text + std::string{in_language(english(), answer_word[answer ? 1 : 0])});
}

void PlainTeller::tell_options(const std::vector<std::string>& lines, const ChipStatus& /*status*/)
{
    for (const std::string& line : lines)
        say(line);
}

} // namespace vrk
