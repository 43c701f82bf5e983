#include "target/user_programs.h"

#include "platform/text_number.h"
#include "sim/monitor_program.h"

#include <fstream>
#include <iterator>
#include <optional>

namespace vrk {

namespace {

constexpr int slowest_baud = 300;
constexpr int fastest_baud = 1'000'000;
constexpr int most = 1'000'000'000;

// A whole number from `first` to `last`; nothing where the text is none.
std::optional<int> whole_number(const std::string& text, int first, int last)
{
    const bool digits = !text.empty() && text.find_first_not_of("0123456789") == std::string::npos;
    const double number = number_in(text);
    if (!digits || number < first || number > last)
        return std::nullopt;
    return static_cast<int>(number);
}

} // namespace

std::optional<LineSettings> line_of_program(const std::string& baud, std::string& fault)
{
    LineSettings line{115200, Parity::none, 8, 1};
    if (baud.empty())
        return line;
    const auto number = whole_number(baud, slowest_baud, fastest_baud);
    if (!number) {
        fault = "a baud from 300 to 1000000, not '" + baud + "'";
        return std::nullopt;
    }
    line.baud = *number;
    return line;
}

namespace {

std::unique_ptr<sim::UserProgram> make_stream(const LineSettings& line, const std::string& rate, std::string& fault)
{
    const auto number = whole_number(rate, 0, most);
    if (number)
        return std::make_unique<sim::StreamProgram>(line, *number);
    fault = "a rate in whole bytes a second, not '" + rate + "'";
    return nullptr;
}

std::unique_ptr<sim::UserProgram> make_dump(const LineSettings& line, const std::string& path, std::string& fault)
{
    std::ifstream file(path, std::ios::binary);
    std::vector<std::uint8_t> code{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    if (file && !code.empty())
        return std::make_unique<sim::DumpProgram>(line, std::move(code));
    fault = "there is nothing to read in '" + path + "'";
    return nullptr;
}

std::unique_ptr<sim::UserProgram> make_monitor(const LineSettings& line, const ProgramWords& words, std::string& fault)
{
    const auto damaged = whole_number(words.damaged.empty() ? "0" : words.damaged, 0, most);
    const auto cut_off = whole_number(words.cut_off.empty() ? "0" : words.cut_off, 0, most);
    if (!damaged || !cut_off) {
        fault = "a whole number of frames behind --damaged and --cut-off";
        return nullptr;
    }
    auto monitor = std::make_unique<sim::MonitorProgram>(line);
    monitor->damaged = *damaged;
    monitor->cut_off = *cut_off;
    return monitor;
}

} // namespace

bool takes_argument(std::string_view program) { return program == "stream" || program == "dump"; }

std::unique_ptr<sim::UserProgram> make_user_program(const ProgramWords& words, std::string& fault)
{
    const auto line = line_of_program(words.baud, fault);
    if (!line)
        return nullptr;
    if (words.program == "echo")
        return std::make_unique<sim::EchoProgram>(*line);
    if (words.program == "stream")
        return make_stream(*line, words.argument, fault);
    if (words.program == "dump")
        return make_dump(*line, words.argument, fault);
    if (words.program == "monitor")
        return make_monitor(*line, words, fault);
    fault = "echo, stream, dump or monitor, not '" + words.program + "'";
    return nullptr;
}

} // namespace vrk
