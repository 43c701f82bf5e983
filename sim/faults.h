// Faults to inject, all on purpose and all repeatable. Counts start from 1 and mean "the n-th from now on".
#pragma once

#include "sim/target.h"

#include <cstdint>
#include <map>
#include <span>
#include <vector>

namespace sim {

// Faults of whole replies, that is of all the bytes that a target sends at once.
class ReplyFaults {
public:
    struct Piece {
        std::int64_t gap_us = 0; // silence in front of it
        std::vector<std::uint8_t> bytes;
        bool tampered = false;
    };

    void lose(int n) { change(n).lost = true; }
    void damage(int n, std::size_t byte_index, std::uint8_t xor_with);
    void delay(int n, std::int64_t us) { change(n).delay_us = us; }
    void duplicate(int n) { change(n).twice = true; }
    void split(int n, std::size_t after_bytes, std::int64_t gap_us);
    void precede(int n, std::vector<std::uint8_t> noise) { change(n).noise = std::move(noise); }

    // What becomes of the next reply; no pieces if it is lost.
    std::vector<Piece> apply(std::span<const std::uint8_t> reply);
    int replies_seen() const { return seen_; }

private:
    struct Change {
        bool lost = false;
        bool twice = false;
        std::int64_t delay_us = 0;
        std::size_t damaged_byte = 0;
        std::uint8_t xor_with = 0;
        std::size_t split_after = 0;
        std::int64_t split_gap_us = 0;
        std::vector<std::uint8_t> noise;
    };
    Change& change(int n) { return changes_[seen_ + n]; }

    std::map<int, Change> changes_;
    int seen_ = 0;
};

// Rates in faults per million bytes.
struct FaultRates {
    std::uint32_t lose = 0;
    std::uint32_t damage = 0;
    std::uint32_t duplicate = 0;
    int apart = 0; // bytes that are spared behind a fault: a sum cannot see two that cancel each other in one frame
};

// Faults of single bytes in one direction.
class ByteFaults {
public:
    void lose(int n) { change(n).lost = true; }
    void damage(int n, std::uint8_t xor_with) { change(n).xor_with = xor_with; }
    void duplicate(int n) { change(n).twice = true; }
    // Faults by chance, the same chance for the same seed.
    void at_random(const FaultRates& rates, std::uint64_t seed);

    int apply(Arrival& arrival); // how often the byte arrives: 0, 1 or 2

private:
    struct Change {
        bool lost = false;
        bool twice = false;
        std::uint8_t xor_with = 0;
    };
    Change& change(int n) { return changes_[seen_ + n]; }
    std::uint64_t next_random();

    std::map<int, Change> changes_;
    FaultRates rates_;
    std::uint64_t random_ = 0;
    bool by_chance_ = false;
    bool lost_one_ = false;
    int seen_ = 0;
    int spared_until_ = 0; // count of bytes
};

} // namespace sim
