// What the program says, in its two languages. Constant texts stand in tables as Text; what is made while it runs is a
// Line. Who shows it picks the language.
#pragma once

#include "report/tone.h"

#include <string>
#include <string_view>
#include <utility>

namespace vrk {

// A constant text in both languages, side by side.
struct Text {
    std::string_view zh;
    std::string_view en;
    Tone tone = Tone::plain;
};

constexpr std::string_view in_language(bool english, const Text& text) { return english ? text.en : text.zh; }

// A line or several, parted by "\n", in both languages. A line can belong to one language alone; the other then shows
// nothing, not even an empty line.
struct Line {
    std::string zh;
    std::string en;
    bool in_chinese = true;
    bool in_english = true;
    Tone tone = Tone::plain;

    Line() = default;
    Line(const Text& text) // NOLINT: a constant text is a line
        : zh(text.zh)
        , en(text.en)
        , tone(text.tone)
    {
    }
    Line(std::string both) // NOLINT: and so is a text that is the same in both
        : zh(both)
        , en(std::move(both))
    {
    }
    Line(const char* both) // NOLINT
        : Line(std::string{both})
    {
    }

    static Line only_chinese(std::string text)
    {
        Line line{std::move(text)};
        line.in_english = false;
        return line;
    }
    static Line only_english(std::string text)
    {
        Line line{std::move(text)};
        line.in_chinese = false;
        return line;
    }

    // The same line, meant so.
    Line as(Tone its_tone) const
    {
        Line line = *this;
        line.tone = its_tone;
        return line;
    }

    bool is_in(bool english) const { return english ? in_english : in_chinese; }
    const std::string& in(bool english) const { return english ? en : zh; }
};

inline Line operator+(Line line, const Line& behind)
{
    line.zh += behind.zh;
    line.en += behind.en;
    return line;
}

} // namespace vrk
