#include "vrk/json_teller.h"

#include "vrk/json_line.h"

#include "options/chip_status.h"

#include <cmath>

namespace vrk {

namespace {

std::string_view tone_word(Tone tone)
{
    switch (tone) {
    case Tone::plain:
        return "plain";
    case Tone::good:
        return "good";
    case Tone::bad:
        return "bad";
    case Tone::advice:
        return "advice";
    }
    return {};
}

Json text_or_null(const std::string& text) { return text.empty() ? Json{} : Json(text); }

double milliseconds_of(double seconds) { return std::round(seconds * 1e3) / 1e3; } // more is not measured
Json hertz_of(double mhz) { return mhz > 0 ? Json(std::round(mhz * 1e6) / 1e6) : Json{}; }

} // namespace

void JsonTeller::begin(const RunBegin& run)
{
    write_json_line(out_,
        {{"event", "start"}, {"schema", schema}, {"tool", tool_}, {"port", run.port}, {"model", run.model},
            {"file", run.file}, {"sha256", run.sha256}, {"eeprom_sha256", text_or_null(run.eeprom_sha256)},
            {"station", text_or_null(run.station)}});
}

void JsonTeller::end_of_chip(const ChipEnd& chip, const RunEnd& so_far)
{
    const ResultClass& row = class_of(chip.result);
    Json seconds = Json::object();
    for (const auto& [stage, time] : chip.seconds)
        seconds[std::string{stage}] = milliseconds_of(time + seconds.value(std::string{stage}, 0.0));
    write_json_line(out_,
        {{"event", "result"}, {"index", chip.index}, {"result", row.word}, {"exit_code", row.exit_code},
            {"next", in_language(english(), row.next)}, {"number", text_or_null(chip.number)},
            {"firmware", text_or_null(chip.firmware)}, {"factory_number", text_or_null(chip.factory_number)},
            {"clock_mhz", hertz_of(chip.clock_mhz)}, {"baud", chip.baud > 0 ? Json(chip.baud) : Json{}},
            {"seconds", seconds}, {"good", so_far.good}, {"bad", so_far.bad}});
}

void JsonTeller::end(const RunEnd& run)
{
    write_json_line(out_, {{"event", "end"}, {"exit_code", run.exit_code}, {"good", run.good}, {"bad", run.bad}});
}

void JsonTeller::show_box(const Line& text, const Line& /*title*/)
{
    write_json_line(out_, {{"event", "box"}, {"text", text.in(english())}});
}

void JsonTeller::say(const Line& line)
{
    if (line.is_in(english()))
        write_json_line(out_, {{"event", "message"}, {"tone", tone_word(line.tone)}, {"text", line.in(english())}});
}

void JsonTeller::tell_chip(int index) { write_json_line(out_, {{"event", "chip"}, {"index", index}}); }

void JsonTeller::tell_stage(Stage stage) { write_json_line(out_, {{"event", "stage"}, {"stage", word_of(stage)}}); }

void JsonTeller::tell_pace(const PaceFigures& figures)
{
    const Json left = figures.seconds_left ? Json(*figures.seconds_left) : Json{};
    write_json_line(out_,
        {{"event", "progress"}, {"percent", figures.percent}, {"bytes", figures.bytes}, {"of", figures.of},
            {"seconds_left", left}});
}

void JsonTeller::tell_question(const std::string& text, bool answer)
{
    write_json_line(out_, {{"event", "question"}, {"text", text}, {"answer", answer}});
}

void JsonTeller::tell_options(const std::vector<std::string>& lines, const ChipStatus& status)
{
    write_json_line(out_, {{"event", "options"}, {"lines", lines}, {"bytes", status.status_bytes}});
}

} // namespace vrk
