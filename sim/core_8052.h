// A microcontroller that really runs its program: an 8052 core, true to the instruction and to the machine cycle, on
// the wire. What it has: all instructions, 256 bytes of RAM, 64 KB of code and of external RAM, timers 0 and 1 in modes
// 1 and 2, and the serial port in mode 1 with timer 1 as its clock. It has no interrupts: the programs that are run on
// it poll.
#pragma once

#include "sim/target.h"

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace sim {

class Core8052 : public Target {
public:
    static constexpr std::int64_t crystal_hz = 11'059'200;
    static constexpr std::int64_t clocks_of_a_cycle = 12;

    // A HEX file's text. False: it is none, and the core holds nothing of it.
    bool load(const std::string& hex);

    // Target
    void connect(Surroundings& surroundings) override;
    void receive(const Arrival& arrival) override;
    vrk::LineSettings line() const override;
    void power(bool on) override; // on: begins at address 0, with the registers as after a reset

    void step(); // one instruction

    // What it holds.
    std::uint16_t pc() const { return pc_; }
    std::int64_t cycles() const { return cycles_; } // machine cycles since power came
    std::uint8_t direct(std::uint8_t address) const { return address < 0x80 ? ram_[address] : sfr(address); }
    std::uint8_t sfr(std::uint8_t address) const { return sfr_[address - 0x80U]; } // 80H to FFH
    std::uint8_t ram(std::uint8_t address) const { return ram_[address]; }
    std::uint8_t xram(std::uint16_t address) const { return xram_[address]; }
    const std::vector<std::string>& complaints() const
    {
        return complaints_;
    } // what this core cannot do, or has missed

    std::function<void(std::uint8_t address, std::uint8_t value)> on_sfr_written;

private:
    static std::uint8_t low(unsigned value) { return static_cast<std::uint8_t>(value); }

    // Operands
    std::uint8_t fetch() { return code_[pc_++]; }
    std::uint8_t& r(unsigned n) { return ram_[(sfr(0xD0) & 0x18U) + n]; }
    std::uint8_t read(std::uint8_t address); // direct; ports and SBUF as they are read
    void write(std::uint8_t address, std::uint8_t value);
    std::uint8_t operand(unsigned low); // of an arithmetic instruction: 4 to F of its code
    bool bit(std::uint8_t address);
    void set_bit(std::uint8_t address, bool on);
    std::uint8_t& a() { return sfr_[0xE0 - 0x80]; }
    std::uint8_t& psw() { return sfr_[0xD0 - 0x80]; }
    bool carry() { return (psw() & 0x80U) != 0; }
    void set_carry(bool on) { psw() = static_cast<std::uint8_t>((psw() & 0x7FU) | (on ? 0x80U : 0)); }
    std::uint16_t dptr() const { return static_cast<std::uint16_t>(sfr(0x83) << 8 | sfr(0x82)); }
    void push(std::uint8_t value);
    std::uint8_t pop();
    void call(std::uint16_t address);
    void jump_if(bool condition); // relative, by the byte that comes

    // Instructions
    unsigned execute(std::uint8_t opcode); // gives its machine cycles
    void execute_column(std::uint8_t opcode); // those that work on @Ri and Rn
    void add(std::uint8_t value, bool with_carry);
    void subtract(std::uint8_t value);
    void decimal_adjust();
    void compare_and_jump(std::uint8_t one, std::uint8_t other);
    std::uint8_t rmw(std::uint8_t address) const { return direct(address); } // the latch, not the pin

    // What goes on beside them
    void run_timer(unsigned n, unsigned cycles);
    void listen(); // with the line that the registers now give
    void send(std::uint8_t value);
    void take_turns(); // keeps up with the wire
    void run_to(std::int64_t at_ns);
    std::int64_t ns_of(std::int64_t cycle) const;

    std::vector<std::uint8_t> code_ = std::vector<std::uint8_t>(0x10000, 0xFF);
    std::vector<std::uint8_t> xram_ = std::vector<std::uint8_t>(0x10000, 0);
    std::array<std::uint8_t, 256> ram_{};
    std::array<std::uint8_t, 128> sfr_{};
    std::uint16_t pc_ = 0;
    std::int64_t cycles_ = 0;
    std::uint8_t heard_ = 0; // what SBUF gives
    std::int32_t listens_with_ = 0; // baud; 0: it does not
    std::int64_t sent_at_ns_ = -1; // when the byte on the line is out; -1: there is none

    Surroundings* surroundings_ = nullptr;
    std::int64_t power_at_ns_ = 0;
    std::uint64_t power_ups_ = 0;
    bool powered_ = false;
    std::vector<std::string> complaints_;
};

} // namespace sim
