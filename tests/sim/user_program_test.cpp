// The programs that a terminal talks to, each on its wire.
#include "sim/user_program.h"

#include "sim/monitor_program.h"
#include "sim/sim_port.h"
#include "sim/virtual_loop.h"

#include <gtest/gtest.h>

#include <numeric>

namespace sim {
namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr vrk::LineSettings line{115200, vrk::Parity::none, 8, 1};

// A port on the wire of one program, opened with its settings.
struct Far {
    explicit Far(UserProgram& program)
        : target(program)
    {
        wire.attach(program);
        driver.add("line", wire);
        port = driver.make("line");
        port->open(program.line());
    }
    Bytes received()
    {
        Bytes bytes(port->bytes_available());
        port->read(bytes);
        return bytes;
    }
    Bytes received_after_ms(std::int64_t ms)
    {
        loop.run_for_ms(ms);
        return received();
    }

    UserProgram& target;
    VirtualLoop loop;
    Wire wire{loop};
    SimPortDriver driver{loop};
    std::unique_ptr<vrk::SerialPort> port;
};

Bytes stream(std::uint64_t first, std::size_t count)
{
    Bytes bytes(count);
    for (std::size_t i = 0; i < count; ++i)
        bytes[i] = StreamProgram::byte_at(first + i);
    return bytes;
}

Bytes command(std::uint8_t code) { return {0xFE, 0xAA, code, static_cast<std::uint8_t>(0xAA + code)}; }

} // namespace

TEST(EchoProgram, RepeatsWhatItHearsWhileItHasPower)
{
    EchoProgram echo(line);
    Far far(echo);
    far.port->write(Bytes{1, 2});
    EXPECT_EQ(far.received_after_ms(10), Bytes{});
    echo.power(true);
    far.port->write(Bytes{'A', 0x00, 0xFF});
    EXPECT_EQ(far.received_after_ms(10), (Bytes{'A', 0x00, 0xFF}));
    echo.power(false);
    far.port->write(Bytes{'B'});
    EXPECT_EQ(far.received_after_ms(10), Bytes{});
    EXPECT_EQ(echo.heard(), (Bytes{'A', 0x00, 0xFF}));
}

TEST(StreamProgram, SendsNumberedLinesAtItsRate)
{
    StreamProgram talker(line, 1000);
    Far far(talker);
    EXPECT_EQ(far.received_after_ms(100), Bytes{});
    talker.power(true);
    const Bytes second = far.received_after_ms(1000);
    EXPECT_NEAR(static_cast<double>(second.size()), 1000, 15);
    EXPECT_EQ(second, stream(0, second.size()));
    const std::string text(second.begin(), second.begin() + 64);
    EXPECT_EQ(text, "0000000 abcdefghijklmnopqrstuv\r\n0000001 abcdefghijklmnopqrstuv\r\n");
}

TEST(StreamProgram, FillsTheLineWhereItHasNoRate)
{
    StreamProgram talker({256000, vrk::Parity::none, 8, 1}, 0);
    Far far(talker);
    talker.power(true);
    const Bytes second = far.received_after_ms(1000);
    EXPECT_NEAR(static_cast<double>(second.size()), 25600, 30);
    EXPECT_EQ(second, stream(0, second.size()));
}

TEST(StreamProgram, BeginsAnewWithEachPowerUp)
{
    StreamProgram talker(line, 5000);
    Far far(talker);
    talker.power(true);
    far.received_after_ms(100);
    talker.power(false);
    EXPECT_LE(far.received_after_ms(100).size(), 60U); // what was on its way
    EXPECT_EQ(far.received_after_ms(100), Bytes{});
    talker.stop_after(70);
    talker.power(true);
    EXPECT_EQ(far.received_after_ms(500), stream(0, 70));
}

TEST(DumpProgram, GivesOutItsCodeWhenItHearsAByte)
{
    Bytes code(3000);
    std::iota(code.begin(), code.end(), std::uint8_t{0});
    DumpProgram dump(line, code);
    Far far(dump);
    dump.power(true);
    EXPECT_EQ(far.received_after_ms(100), Bytes{});
    far.port->write(Bytes{'d', 'd', 'd'}); // the second and the third are overheard
    EXPECT_EQ(far.received_after_ms(1000), code);
    far.port->write(Bytes{0});
    EXPECT_EQ(far.received_after_ms(1000), code);
}

TEST(MonitorProgram, TellsItsFramesOneByOneAndWaits)
{
    MonitorProgram monitor(line);
    Far far(monitor);
    monitor.power(true);
    const Bytes registers = far.received_after_ms(100);
    ASSERT_EQ(registers.size(), 2U + 16 + 128 + 1);
    EXPECT_EQ(
        Bytes(registers.begin(), registers.begin() + 9), (Bytes{0xA5, 0x5A, 0x00, 0x00, 145, 0x00, 0x00, 0x00, 0x80}));
    EXPECT_EQ(registers[9], 0xD0); // the program status, at its address
    EXPECT_EQ(
        registers.back(), static_cast<std::uint8_t>(std::accumulate(registers.begin() + 2, registers.end() - 1, 0U)));
    EXPECT_EQ(far.received_after_ms(5000), Bytes{});

    const std::size_t dumps[] = {256, 1024, 512};
    for (const std::size_t dump : dumps) {
        far.port->write(command(0x50));
        EXPECT_EQ(far.received_after_ms(500).size(), 2 + 16 + dump + 1);
    }
    far.port->write(command(0x50));
    EXPECT_EQ(far.received_after_ms(5000), Bytes{});
    EXPECT_TRUE(monitor.waits());
    EXPECT_EQ(monitor.times_run_on(), 0);

    far.port->write(command(0x54));
    EXPECT_EQ(far.received_after_ms(400), Bytes{});
    EXPECT_EQ(far.received_after_ms(300), registers);
    EXPECT_EQ(monitor.times_run_on(), 1);
    EXPECT_EQ(monitor.ram[MonitorProgram::counter_at], 1);
    EXPECT_EQ(monitor.complaints(), "");
}

TEST(MonitorProgram, SendsAFrameAgainWhenItIsAsked)
{
    MonitorProgram monitor(line);
    monitor.stop = {MonitorProgram::Frame::data_flash};
    monitor.damaged = 1;
    monitor.cut_off = 0;
    Far far(monitor);
    monitor.power(true);
    Bytes damaged = far.received_after_ms(100);
    monitor.cut_off = 1;
    far.port->write(command(0x52));
    const Bytes half = far.received_after_ms(100);
    far.port->write(command(0x52));
    const Bytes whole = far.received_after_ms(100);
    damaged.back() ^= 1;
    EXPECT_EQ(damaged, whole);
    EXPECT_EQ(half, Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(whole.size() / 2)));
    EXPECT_EQ(monitor.sendings().size(), 3U);
}

TEST(MonitorProgram, ComplainsOfWordsThatItDoesNotKnow)
{
    MonitorProgram monitor(line);
    Far far(monitor);
    monitor.power(true);
    far.received_after_ms(100);
    far.port->write(Bytes{0xFE, 0xFE, 0xAA, 0x50, 0xFB, 'x', 0xFE, 0xAA, 0x51, 0xFB});
    EXPECT_EQ(far.received_after_ms(500), Bytes{});
    EXPECT_EQ(monitor.complaints(), "no command: FE AA 50 FB\nno command: FE AA 51 FB\n");
    far.port->write(command(0x54));
    far.port->write(command(0x50));
    far.received_after_ms(100);
    EXPECT_TRUE(monitor.complaints().ends_with("not waiting for 50\n"));
    EXPECT_EQ(monitor.times_run_on(), 1);
}

} // namespace sim
