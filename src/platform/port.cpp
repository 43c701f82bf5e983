#include "platform/port.h"

#include <algorithm>

namespace vrk {

namespace {

char parity_letter(Parity parity)
{
    switch (parity) {
    case Parity::even:
        return 'e';
    case Parity::odd:
        return 'o';
    case Parity::mark:
        return 'm';
    case Parity::space:
        return 's';
    case Parity::none:
        break;
    }
    return 'n';
}

} // namespace

std::string line_text(const LineSettings& line)
{
    return std::to_string(line.baud) + "," + parity_letter(line.parity) + "," + std::to_string(line.data_bits) + "," +
        std::to_string(line.stop_bits);
}

bool Port::set_line(const LineSettings& line)
{
    if (line.baud <= 0 || (is_open() && line != line_ && !port_->set_line(line)))
        return false;
    line_ = line;
    return true;
}

bool Port::open()
{
    close();
    if (path.empty())
        return false;
    if (port_ == nullptr || port_path_ != path) {
        port_ = driver_->make(path);
        port_path_ = path;
    }
    if (port_ == nullptr || !port_->open(line_))
        return false;
    port_->on_receive = [this] {
        if (waiting() > 0 && on_receive)
            on_receive();
    };
    return true;
}

void Port::close()
{
    if (is_open())
        port_->close();
}

void Port::drop()
{
    if (is_open())
        port_->discard();
}

void Port::set_outputs(bool dtr, bool rts)
{
    if (is_open())
        port_->set_outputs(dtr, rts);
}

void Port::let_gather(int ms)
{
    if (is_open())
        port_->let_gather(ms);
}

std::span<const std::uint8_t> Port::take(std::size_t at_most)
{
    input_.resize(std::min(waiting(), at_most));
    if (!input_.empty())
        input_.resize(port_->read(input_));
    return input_;
}

bool Port::send(std::span<const std::uint8_t> bytes)
{
    if (!is_open())
        return false;
    port_->write(bytes);
    return true;
}

} // namespace vrk
