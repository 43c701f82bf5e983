#include "sim/core_8052.h"

#include "sim/hex_text.h"

#include <algorithm>
#include <bit>
#include <cstdlib>

namespace sim {

namespace {

constexpr std::uint8_t SP = 0x81, PCON = 0x87, TCON = 0x88, TMOD = 0x89, TL0 = 0x8A, TH0 = 0x8C, TH1 = 0x8D,
                       SCON = 0x98, SBUF = 0x99, IE = 0xA8;
constexpr std::uint8_t RI = 0x01, TI = 0x02, REN = 0x10, EA = 0x80;
constexpr std::int64_t turn_ns = 100'000; // a tenth of a byte at 9600 baud

} // namespace

bool Core8052::load(const std::string& hex)
{
    std::vector<std::uint8_t> code(0x10000, 0xFF);
    bool ended = false;
    for (std::size_t at = 0; at < hex.size() && !ended;) {
        const std::size_t end = std::min(hex.find('\n', at), hex.size());
        const std::string line = hex.substr(at, end - at);
        at = end + 1;
        if (line.size() < 11 || line[0] != ':')
            return false;
        const auto byte_at = [&line](std::size_t i) {
            return static_cast<unsigned>(std::strtoul(line.substr(1 + 2 * i, 2).c_str(), nullptr, 16));
        };
        const unsigned count = byte_at(0);
        const unsigned first = byte_at(1) << 8 | byte_at(2);
        if (line.size() < 11 + 2 * count || first + count > code.size())
            return false;
        ended = byte_at(3) == 1;
        for (unsigned i = 0; !ended && i < count; ++i)
            code[first + i] = low(byte_at(4 + i));
    }
    if (ended)
        code_ = code;
    return ended;
}

void Core8052::connect(Surroundings& surroundings) { surroundings_ = &surroundings; }

vrk::LineSettings Core8052::line() const
{
    const int reload = 256 - sfr(TH1);
    const int halves = (sfr(PCON) & 0x80U) != 0 ? 16 : 32;
    return {static_cast<std::int32_t>(crystal_hz / clocks_of_a_cycle / halves / reload), vrk::Parity::none, 8, 1};
}

void Core8052::power(bool on)
{
    ++power_ups_;
    powered_ = on;
    pc_ = 0;
    cycles_ = 0;
    sent_at_ns_ = -1;
    listens_with_ = 0;
    sfr_ = {};
    sfr_[SP - 0x80] = 7;
    for (const unsigned port : {0x80U, 0x90U, 0xA0U, 0xB0U})
        sfr_[port - 0x80U] = 0xFF;
    if (surroundings_ == nullptr)
        return;
    surroundings_->stop_sending();
    surroundings_->stop_listening();
    power_at_ns_ = surroundings_->now_ns();
    if (on)
        take_turns();
}

std::int64_t Core8052::ns_of(std::int64_t cycle) const
{
    return power_at_ns_ + cycle * clocks_of_a_cycle * 1'000'000'000 / crystal_hz;
}

void Core8052::run_to(std::int64_t at_ns)
{
    while (powered_ && ns_of(cycles_) < at_ns)
        step();
}

void Core8052::take_turns()
{
    run_to(surroundings_->now_ns());
    surroundings_->call_at(surroundings_->now_ns() + turn_ns, [this, epoch = power_ups_] {
        if (epoch == power_ups_)
            take_turns();
    });
}

void Core8052::receive(const Arrival& arrival)
{
    run_to(surroundings_->now_ns());
    if (!powered_ || (sfr(SCON) & REN) == 0 || arrival.framing_error)
        return;
    if ((sfr(SCON) & RI) != 0)
        complaints_.push_back("byte " + hex(heard_, 2) + " is overrun");
    heard_ = arrival.value;
    sfr_[SCON - 0x80] |= RI;
}

void Core8052::send(std::uint8_t value)
{
    if (sent_at_ns_ >= 0)
        complaints_.push_back("byte " + hex(value, 2) + " is sent into another");
    constexpr std::int64_t bits = 10;
    sent_at_ns_ = surroundings_ != nullptr ? surroundings_->send(std::span(&value, 1))
                                           : ns_of(cycles_) + bits * 1'000'000'000 / line().baud;
}

void Core8052::run_timer(unsigned n, unsigned cycles)
{
    const unsigned run_bit = n == 0 ? 0x10U : 0x40U;
    const unsigned overflow_bit = n == 0 ? 0x20U : 0x80U;
    if ((sfr(TCON) & run_bit) == 0)
        return;
    const unsigned mode = unsigned{sfr(TMOD)} >> (4 * n) & 3U;
    std::uint8_t& tl = sfr_[TL0 + n - 0x80U];
    std::uint8_t& th = sfr_[TH0 + n - 0x80U];
    for (unsigned i = 0; i < cycles; ++i) {
        ++tl;
        if (tl != 0)
            continue;
        if (mode == 2)
            tl = th;
        else if (++th != 0)
            continue;
        sfr_[TCON - 0x80] |= low(overflow_bit);
    }
}

void Core8052::step()
{
    const std::uint8_t opcode = fetch();
    const unsigned cycles = execute(opcode);
    psw() = static_cast<std::uint8_t>((psw() & 0xFEU) | (static_cast<unsigned>(std::popcount(a())) & 1U));
    run_timer(0, cycles);
    run_timer(1, cycles);
    cycles_ += cycles;
    if (sent_at_ns_ >= 0 && ns_of(cycles_) >= sent_at_ns_) {
        sent_at_ns_ = -1;
        sfr_[SCON - 0x80] |= TI;
    }
}

std::uint8_t Core8052::read(std::uint8_t address) { return address == SBUF ? heard_ : direct(address); }

void Core8052::write(std::uint8_t address, std::uint8_t value)
{
    if (address < 0x80) {
        ram_[address] = value;
        return;
    }
    sfr_[address - 0x80U] = value;
    if (address == SBUF)
        send(value);
    if (address == IE && (value & EA) != 0)
        complaints_.emplace_back("interrupts are let in, and this core has none");
    if (address == TH1 || address == SCON || address == PCON)
        listen();
    if (on_sfr_written)
        on_sfr_written(address, value);
}

void Core8052::listen()
{
    if (surroundings_ == nullptr || (sfr(SCON) & REN) == 0 || listens_with_ == line().baud)
        return;
    listens_with_ = line().baud;
    surroundings_->set_line(line(), false);
}

bool Core8052::bit(std::uint8_t address)
{
    const std::uint8_t byte = address < 0x80 ? low(0x20U + address / 8U) : low(address & 0xF8U);
    return (unsigned{direct(byte)} >> (address & 7U) & 1U) != 0;
}

void Core8052::set_bit(std::uint8_t address, bool on)
{
    const std::uint8_t byte = address < 0x80 ? low(0x20U + address / 8U) : low(address & 0xF8U);
    const unsigned mask = 1U << (address & 7U);
    write(byte, low(on ? rmw(byte) | mask : rmw(byte) & ~mask));
}

void Core8052::push(std::uint8_t value) { ram_[++sfr_[SP - 0x80]] = value; }
std::uint8_t Core8052::pop() { return ram_[sfr_[SP - 0x80]--]; }

} // namespace sim
