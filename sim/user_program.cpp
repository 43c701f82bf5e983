#include "sim/user_program.h"

#include <algorithm>
#include <utility>

namespace sim {

namespace {

constexpr std::int64_t second_ns = 1'000'000'000;
constexpr std::int64_t turn_ns = 10'000'000; // of a program that talks: the bytes of this time in one piece

} // namespace

void UserProgram::connect(Surroundings& surroundings)
{
    surroundings_ = &surroundings;
    surroundings.set_line(line_, false);
    surroundings.stop_listening();
}

void UserProgram::power(bool on)
{
    if (on == has_power_)
        return;
    has_power_ = on;
    if (!on) {
        surroundings_->stop_sending();
        surroundings_->stop_listening();
        return;
    }
    ++power_ups_;
    heard_.clear();
    surroundings_->set_line(line_, false);
    begin();
}

void UserProgram::receive(const Arrival& arrival)
{
    if (!has_power_ || arrival.framing_error || arrival.parity_error)
        return;
    heard_.push_back(arrival.value);
    hear(arrival.value);
}

void UserProgram::call_at(std::int64_t at_ns, std::function<void()> act)
{
    surroundings_->call_at(at_ns, [this, act = std::move(act), power_up = power_ups_] {
        if (has_power_ && power_up == power_ups_)
            act();
    });
}

std::uint8_t StreamProgram::byte_at(std::uint64_t place)
{
    constexpr std::size_t digits = 7;
    const std::size_t column = place % line_size;
    std::uint64_t number = place / line_size;
    if (column < digits) {
        for (std::size_t i = column + 1; i < digits; ++i)
            number /= 10;
        return static_cast<std::uint8_t>('0' + number % 10);
    }
    if (column >= line_size - 2)
        return column == line_size - 2 ? '\r' : '\n';
    return column == digits ? ' ' : static_cast<std::uint8_t>('a' + column - digits - 1);
}

void StreamProgram::begin()
{
    sent_ = 0;
    began_ns_ = now_ns();
    send_some();
}

// So much that the line is busy until the next turn. A rate that the line does not carry ends at the line's own.
void StreamProgram::send_some()
{
    const std::int64_t byte_ns = bits_per_byte(line()) * second_ns / line().baud;
    const std::int64_t rate = bytes_per_second_ > 0 ? bytes_per_second_ : second_ns / byte_ns + 1;
    const std::int64_t until = now_ns() + turn_ns - began_ns_;
    const auto due = static_cast<std::uint64_t>(static_cast<double>(rate) * static_cast<double>(until) / second_ns);
    const std::uint64_t most = static_cast<std::uint64_t>(turn_ns / byte_ns + 1);
    const std::uint64_t end = std::min({due, sent_ + most, last_});
    std::vector<std::uint8_t> bytes;
    for (; sent_ < end; ++sent_)
        bytes.push_back(byte_at(sent_));
    const std::int64_t free_ns = bytes.empty() ? now_ns() : send(bytes);
    if (sent_ < last_)
        call_at(std::max(free_ns, now_ns() + turn_ns), [this] { send_some(); });
}

void DumpProgram::hear(std::uint8_t)
{
    if (std::exchange(busy_, true))
        return;
    call_at(send(code_), [this] { busy_ = false; });
}

} // namespace sim
