#include "platform/comm_control.h"

#include <charconv>

namespace vrk {

namespace {

std::string_view take_field(std::string_view& rest)
{
    const std::size_t comma = rest.find(',');
    const std::string_view field = rest.substr(0, comma);
    rest = comma == std::string_view::npos ? std::string_view{} : rest.substr(comma + 1);
    return field;
}

std::optional<int> whole_number(std::string_view text)
{
    int value = 0;
    const auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (fault != std::errc{} || end != text.data() + text.size())
        return std::nullopt;
    return value;
}

std::optional<Parity> parity_of(std::string_view letter)
{
    if (letter == "n" || letter == "N")
        return Parity::none;
    if (letter == "e" || letter == "E")
        return Parity::even;
    if (letter == "o" || letter == "O")
        return Parity::odd;
    if (letter == "m" || letter == "M")
        return Parity::mark;
    if (letter == "s" || letter == "S")
        return Parity::space;
    return std::nullopt;
}

} // namespace

std::optional<LineSettings> parse_line_settings(std::string_view text)
{
    const auto baud = whole_number(take_field(text));
    const auto parity = parity_of(take_field(text));
    const auto data_bits = whole_number(take_field(text));
    const auto stop_bits = whole_number(take_field(text));
    if (!baud || !parity || !data_bits || !stop_bits || *baud <= 0)
        return std::nullopt;
    return LineSettings{*baud, *parity, *data_bits, *stop_bits};
}

bool CommControl::set_Settings(const std::string& text)
{
    const auto line = parse_line_settings(text);
    if (!line)
        return false;
    if (PortOpen() && *line != line_ && !port_->set_line(*line))
        return false;
    line_ = *line;
    settings_text_ = text;
    return true;
}

bool CommControl::open()
{
    close();
    const auto index = static_cast<std::size_t>(CommPort - 1);
    if (CommPort < 1 || index >= port_paths.size())
        return false;
    if (port_ == nullptr || port_path_ != port_paths[index]) {
        port_ = driver_->make(port_paths[index]);
        port_path_ = port_paths[index];
    }
    if (port_ == nullptr || !port_->open(line_))
        return false;
    port_->on_receive = [this] { received(); };
    return true;
}

void CommControl::close()
{
    if (PortOpen())
        port_->close();
}

void CommControl::clear_InBuffer()
{
    if (PortOpen())
        port_->discard_input();
}

void CommControl::clear_OutBuffer()
{
    if (PortOpen())
        port_->discard_output();
}

std::span<const std::uint8_t> CommControl::Input()
{
    std::size_t count = InBufferCount();
    if (InputLen > 0 && count > static_cast<std::size_t>(InputLen))
        count = static_cast<std::size_t>(InputLen);
    input_.resize(count);
    if (count > 0)
        input_.resize(port_->read(input_));
    return input_;
}

bool CommControl::Output(std::span<const std::uint8_t> bytes)
{
    if (!PortOpen())
        return false;
    port_->write(bytes);
    return true;
}

void CommControl::received()
{
    if (RThreshold <= 0 || InBufferCount() < static_cast<std::size_t>(RThreshold) || !on_comm)
        return;
    CommEvent = event_receive;
    on_comm();
}

} // namespace vrk
