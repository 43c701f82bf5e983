#include "sim/user_code.h"

#include <algorithm>

namespace sim {

void UserCode::connect(Surroundings& surroundings)
{
    surroundings_ = &surroundings;
    next_.connect(surroundings);
}

void UserCode::power(bool on)
{
    ++epoch_;
    waiting_ = false;
    heard_.clear();
    powered_ = on;
    run_again();
    if (!on)
        surroundings_->stop_listening();
}

void UserCode::run_again()
{
    if (jumped_)
        next_.power(false);
    jumped_ = false;
    surroundings_->set_line(line_, false);
}

void UserCode::receive(const Arrival& arrival)
{
    if (jumped_)
        return next_.receive(arrival);
    if (!powered_ || waiting_ || arrival.parity_error || arrival.framing_error)
        return;
    heard_.push_back(arrival.value);
    if (heard_.size() < command_.size() || !std::equal(command_.rbegin(), command_.rend(), heard_.rbegin()))
        return;
    ++commands_heard_;
    heard_.clear();
    waiting_ = true;
    surroundings_->call_at(surroundings_->now_ns() + delay_ms * 1'000'000, [this, epoch = epoch_] {
        if (epoch != epoch_)
            return;
        waiting_ = false;
        jumped_ = true;
        surroundings_->stop_listening();
        next_.power(true);
    });
}

} // namespace sim
