// What has come in, in arrays that are written round and round. One of them feeds the display and loses what comes
// while it is full; the other keeps the bytes for a comparison and loses the oldest.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace vrk {

class ByteRing {
public:
    static constexpr std::size_t size = 245000; // of the array; one place stays free, so that full and empty differ

    void push(std::span<const std::uint8_t> bytes); // what does not fit is lost
    std::size_t pending() const { return (write_ + size - read_) % size; }
    std::vector<std::uint8_t> take(); // all that waits, in order

private:
    std::vector<std::uint8_t> bytes_ = std::vector<std::uint8_t>(size);
    std::size_t write_ = 0;
    std::size_t read_ = 0;
};

class CompareRing {
public:
    static constexpr std::size_t size = ByteRing::size;
    static constexpr std::size_t thrown_away = 1000; // the oldest bytes, each time it is full

    void push(std::span<const std::uint8_t> bytes);
    bool empty() const { return write_ == read_; }
    // By place in the array, 0..size-1; the first byte after `clear` stands at 0. A place that was never written has 0.
    std::uint8_t at(std::size_t place) const { return bytes_[place]; }
    bool received(std::size_t place) const { return place < written_; } // since `clear`
    void clear();

private:
    std::vector<std::uint8_t> bytes_ = std::vector<std::uint8_t>(size);
    std::size_t write_ = 0;
    std::size_t read_ = 0;
    std::size_t written_ = 0; // places from 0 on that hold a byte of this reception
};

} // namespace vrk
