#include "sim/uart.h"

#include "sim/task_queue.h"

#include <algorithm>

namespace sim {

void Sender::push(std::span<const std::uint8_t> bytes, std::int64_t not_before_ns)
{
    for (const std::uint8_t byte : bytes)
        queue_.push_back({byte, not_before_ns, line});
}

void Sender::requeue_at(const vrk::LineSettings& new_line)
{
    line = new_line;
    for (Waiting& waiting : queue_)
        waiting.line = new_line;
}

void Sender::break_off(std::int64_t now_ns)
{
    wave.cut(now_ns);
    on_line_.reset();
}

void Sender::cut(std::int64_t now_ns)
{
    queue_.clear();
    break_off(now_ns);
}

std::int64_t Sender::next_event_ns() const
{
    if (on_line_)
        return *on_line_;
    return queue_.empty() ? TaskQueue::never : queue_.front().not_before_ns;
}

std::int64_t Sender::run_end_ns() const
{
    if (!busy())
        return TaskQueue::never;
    std::int64_t end = on_line_ ? *on_line_ : queue_.front().not_before_ns;
    for (const Waiting& waiting : queue_) {
        if (waiting.not_before_ns > end)
            break;
        end += byte_time_ns(waiting.line);
    }
    return end;
}

bool Sender::advance(std::int64_t now_ns)
{
    if (on_line_ && *on_line_ <= now_ns)
        on_line_.reset();
    if (on_line_ || queue_.empty() || queue_.front().not_before_ns > now_ns)
        return false;
    const Symbol symbol = make_symbol(queue_.front().byte, queue_.front().line, now_ns);
    queue_.pop_front();
    wave.add(symbol);
    on_line_ = symbol.end_ns();
    return true;
}

void Listener::set_line(const vrk::LineSettings& line, bool measures, std::int64_t now_ns)
{
    line_ = line;
    measures_ = measures;
    enabled_ = true;
    begun_.reset();
    look_from_ns_ = now_ns;
}

void Listener::resample_as(const vrk::LineSettings& line)
{
    line_ = line;
    if (begun_)
        begun_ = Begun{begun_->start_ns, bit_time_ns(line.baud), line};
}

std::int64_t Listener::next_event_ns() const
{
    return begun_ ? begun_->start_ns + begun_->bit_ns * vrk::bits_per_byte(begun_->line) : TaskQueue::never;
}

void Listener::look(const Waveform& wave)
{
    if (!enabled_ || begun_)
        return;
    std::optional<std::int64_t> edge = wave.falling_edge(look_from_ns_);
    const Symbol* symbol = edge && measures_ ? wave.symbol_at(*edge) : nullptr;
    // Who measures the line tells a start bit from a fall inside a byte by what goes before it. A plain listener that
    // wakes up in mid-byte takes any fall for a start, and may stay out of step as long as the sender does not pause.
    while (symbol != nullptr && *edge != symbol->start_ns) {
        look_from_ns_ = symbol->end_ns();
        edge = wave.falling_edge(look_from_ns_);
        symbol = edge ? wave.symbol_at(*edge) : nullptr;
    }
    if (!edge)
        return;
    begun_ =
        symbol != nullptr ? Begun{*edge, symbol->bit_ns, symbol->line} : Begun{*edge, bit_time_ns(line_.baud), line_};
}

std::optional<Arrival> Listener::finish(Waveform& wave)
{
    const Begun byte = *begun_;
    begun_.reset();
    const auto sample_time = [&byte](int bit) { return byte.start_ns + byte.bit_ns * bit + byte.bit_ns / 2; };
    if (wave.level(sample_time(0))) { // no start bit lasts that short
        look_from_ns_ = sample_time(0);
        return std::nullopt;
    }
    std::uint8_t value = 0;
    for (int bit = 0; bit < byte.line.data_bits; ++bit)
        if (wave.level(sample_time(1 + bit)))
            value = static_cast<std::uint8_t>(value | 1U << bit);
    const bool has_parity = byte.line.parity != vrk::Parity::none;
    const int stop_bit = 1 + byte.line.data_bits + (has_parity ? 1 : 0);
    Arrival arrival;
    arrival.value = value;
    arrival.parity_error = has_parity && wave.level(sample_time(stop_bit - 1)) != parity_bit(value, byte.line.parity);
    arrival.framing_error = !wave.level(sample_time(stop_bit));
    arrival.sampled_as = byte.line;
    look_from_ns_ = sample_time(stop_bit);
    wave.forget_before(look_from_ns_);
    return arrival;
}

} // namespace sim
