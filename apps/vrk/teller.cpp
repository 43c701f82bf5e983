#include "vrk/teller.h"

#include "options/option_report.h"
#include "options/option_tables.h"

namespace vrk {

void ChipEnd::take_facts(const Session& session)
{
    const ChipFacts& chip = session.chip;
    firmware = chip.fw_version.empty() ? std::string{} : chip.fw_version + chip.fw_letter;
    factory_number = chip.serial_number;
    clock_mhz = static_cast<double>(chip.mcu_clock_hz) / 1e6;
    baud = session.identified ? session.port.line().baud : 0;
}

void Teller::begin_chip(int index)
{
    answered_ = false;
    in_stage_ = false;
    last_percent_ = -1;
    seconds_.clear();
    tell_chip(index);
}

std::vector<std::pair<std::string_view, double>> Teller::seconds()
{
    close_stage();
    return seconds_;
}

void Teller::close_stage()
{
    if (in_stage_)
        seconds_.emplace_back(word_of(stage_), static_cast<double>(loop_.now_us() - stage_since_us_) / 1e6);
    in_stage_ = false;
}

bool Teller::ask(const Line& question, const Line& /*title*/)
{
    tell_question(question.in(english_), says_yes_);
    return says_yes_;
}

void Teller::options_read(const ChipStatus& status)
{
    OptionTable table;
    load_option_tables(table, english_);
    const std::vector<std::string> lines = option_lines(table, status, english_);
    if (!lines.empty())
        tell_options(lines, status);
}

void Teller::enter(Stage stage)
{
    close_stage();
    in_stage_ = true;
    stage_ = stage;
    stage_since_us_ = loop_.now_us();
    answered_ = answered_ || stage != Stage::calling;
    tell_stage(stage);
}

void Teller::progress(const Progress& progress)
{
    const auto figures = pace_.figures(progress, loop_.now_us());
    if (!figures || figures->percent == last_percent_)
        return;
    last_percent_ = figures->percent;
    tell_pace(*figures);
}

} // namespace vrk
