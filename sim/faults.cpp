#include "sim/faults.h"

#include <algorithm>

namespace sim {

void ReplyFaults::damage(int n, std::size_t byte_index, std::uint8_t xor_with)
{
    change(n).damaged_byte = byte_index;
    change(n).xor_with = xor_with;
}

void ReplyFaults::split(int n, std::size_t after_bytes, std::int64_t gap_us)
{
    change(n).split_after = after_bytes;
    change(n).split_gap_us = gap_us;
}

std::vector<ReplyFaults::Piece> ReplyFaults::apply(std::span<const std::uint8_t> reply)
{
    Piece whole{0, {reply.begin(), reply.end()}, false};
    const auto found = changes_.find(++seen_);
    if (found == changes_.end())
        return {whole};
    const Change change = found->second;
    changes_.erase(found);
    if (change.lost)
        return {};

    whole.tampered = true;
    whole.gap_us = change.delay_us;
    if (change.xor_with != 0 && !whole.bytes.empty()) {
        std::uint8_t& byte = whole.bytes[std::min(change.damaged_byte, whole.bytes.size() - 1)];
        byte = static_cast<std::uint8_t>(byte ^ change.xor_with);
    }
    whole.bytes.insert(whole.bytes.begin(), change.noise.begin(), change.noise.end());
    std::vector<Piece> pieces{whole};
    if (change.split_after > 0 && change.split_after < whole.bytes.size()) {
        const auto middle = whole.bytes.begin() + static_cast<std::ptrdiff_t>(change.split_after);
        pieces = {{whole.gap_us, {whole.bytes.begin(), middle}, true},
            {change.split_gap_us, {middle, whole.bytes.end()}, true}};
    }
    if (change.twice)
        pieces.push_back({0, whole.bytes, true});
    return pieces;
}

void ByteFaults::at_random(const FaultRates& rates, std::uint64_t seed)
{
    rates_ = rates;
    random_ = seed;
    by_chance_ = rates.lose + rates.damage + rates.duplicate > 0;
}

// splitmix64
std::uint64_t ByteFaults::next_random()
{
    random_ += 0x9E3779B97F4A7C15U;
    std::uint64_t word = random_;
    word = (word ^ word >> 30U) * 0xBF58476D1CE4E5B9U;
    word = (word ^ word >> 27U) * 0x94D049BB133111EBU;
    return word ^ word >> 31U;
}

int ByteFaults::apply(Arrival& arrival)
{
    ++seen_;
    if (changes_.empty() && !by_chance_ && !lost_one_)
        return 1;
    Change change;
    if (const auto found = changes_.find(seen_); found != changes_.end()) {
        change = found->second;
        changes_.erase(found);
    }
    if (by_chance_ && seen_ >= spared_until_) {
        change.lost |= next_random() % 1'000'000 < rates_.lose;
        change.twice |= next_random() % 1'000'000 < rates_.duplicate;
        const std::uint64_t word = next_random();
        if (word % 1'000'000 < rates_.damage)
            change.xor_with = static_cast<std::uint8_t>(1U << (word >> 61U));
        if (change.lost || change.twice || change.xor_with != 0)
            spared_until_ = seen_ + 1 + rates_.apart;
    }
    arrival.value = static_cast<std::uint8_t>(arrival.value ^ change.xor_with);
    arrival.tampered |= change.xor_with != 0 || change.twice || lost_one_;
    lost_one_ = change.lost;
    return change.lost ? 0 : change.twice ? 2 : 1;
}

} // namespace sim
