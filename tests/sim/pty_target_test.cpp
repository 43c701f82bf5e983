// A chip on a pseudo terminal, in real time, with everything made short. The other program is this test: plain open,
// write, read.
#include "sim/pty_target.h"

#include "sim/chip.h"
#include "sim/terminal_speed.h"

#include <gtest/gtest.h>

#include <array>
#include <fcntl.h>
#include <filesystem>
#include <unistd.h>

namespace sim {
namespace {

using Bytes = std::vector<std::uint8_t>;

class PtyTargetTest : public testing::Test {
protected:
    PtyTargetTest()
        : chip(quick_setup())
        , pty(loop, chip)
        , link(std::filesystem::path(testing::TempDir()) / ("chip-" + std::to_string(getpid())))
    {
    }
    ~PtyTargetTest() override
    {
        if (terminal >= 0)
            close(terminal);
    }

    static ChipSetup quick_setup()
    {
        ChipModel model;
        model.id = "F101";
        model.series = 2;
        model.parity = model.new_protocol = model.long_frame = false;
        ChipSetup setup = default_setup(model);
        setup.start_up_us = 1000;
        setup.answers_at_once();
        return setup;
    }
    void open_terminal(const std::string& path, std::int32_t baud)
    {
        terminal = open(path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK);
        ASSERT_GE(terminal, 0);
        ASSERT_TRUE(make_terminal_raw(terminal, baud));
    }
    void run_for_us(std::int64_t us)
    {
        bool over = false;
        loop.call_at(loop.now_us() + us, [&over] { over = true; });
        while (!over)
            loop.yield();
    }
    // Lets the loop run until so many bytes are there, or the time is over.
    Bytes wait_for(std::size_t count, std::int64_t within_us)
    {
        Bytes bytes;
        const std::int64_t end = loop.now_us() + within_us;
        loop.call_at(end, [] {});
        while (bytes.size() < count && loop.now_us() < end) {
            loop.yield();
            std::array<std::uint8_t, 256> chunk{};
            const ssize_t got = read(terminal, chunk.data(), chunk.size());
            bytes.insert(bytes.end(), chunk.begin(), chunk.begin() + std::max<ssize_t>(got, 0));
        }
        return bytes;
    }
    void send(const Bytes& bytes)
    {
        ASSERT_EQ(write(terminal, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
    }

    PosixLoop loop;
    Chip chip;
    PtyTarget pty;
    std::filesystem::path link;
    int terminal = -1;
};

TEST_F(PtyTargetTest, ChipIsCalledThroughALinkAndAnswersInTheTimeOfItsBytes)
{
    ASSERT_TRUE(pty.open(link.string())) << pty.fault();
    EXPECT_EQ(std::filesystem::read_symlink(link), pty.path());
    open_terminal(link.string(), 57600);
    chip.power_up();
    run_for_us(3000);

    const std::int64_t begin = loop.now_us();
    send(Bytes(8, 0x7F));
    const Bytes status = wait_for(30, 300'000);
    const std::int64_t took_us = loop.now_us() - begin;

    ASSERT_EQ(status.size(), 30U);
    EXPECT_EQ(status[0], 0x46);
    EXPECT_EQ(status[5], 0x50);
    EXPECT_EQ(status.back(), 0x16);
    EXPECT_GE(took_us, (8 + 30) * 10 * 1'000'000 / 57600); // never faster than the wire
    EXPECT_EQ(chip.handshake_baud(), 57600);
}

TEST_F(PtyTargetTest, SpeedsOutsideTheStandardOnesAreRead)
{
    ASSERT_TRUE(pty.open());
    open_terminal(pty.path(), 12800);
    EXPECT_EQ(terminal_speed(terminal), 12800);
    chip.power_up();
    run_for_us(3000);
    send(Bytes(8, 0x7F));
    EXPECT_EQ(wait_for(30, 300'000).size(), 30U);
    EXPECT_EQ(chip.line().baud, 12800);
}

TEST_F(PtyTargetTest, AnotherSpeedThanTheChipsDamagesWhatItSays)
{
    ASSERT_TRUE(pty.open());
    open_terminal(pty.path(), 57600);
    chip.power_up();
    run_for_us(3000);
    send(Bytes(8, 0x7F));
    ASSERT_EQ(wait_for(30, 300'000).size(), 30U);

    close(terminal);
    open_terminal(pty.path(), 19200);
    send({0x46, 0xB9, 0x6A, 0x00, 0x06, 0x50, 0xC0, 0x16}); // read status
    EXPECT_EQ(wait_for(1, 30'000), Bytes{});
    EXPECT_EQ(chip.frame_count(), 0);
}

TEST_F(PtyTargetTest, OtherProgramMayCloseAndComeBack)
{
    ASSERT_TRUE(pty.open());
    open_terminal(pty.path(), 115200);
    chip.power_up();
    run_for_us(3000);
    send(Bytes(8, 0x7F));
    ASSERT_EQ(wait_for(30, 300'000).size(), 30U);
    close(terminal);
    run_for_us(2000);

    open_terminal(pty.path(), 115200);
    send({0x46, 0xB9, 0x6A, 0x00, 0x06, 0x50, 0xC0, 0x16});
    const Bytes status = wait_for(17, 300'000);
    ASSERT_EQ(status.size(), 17U);
    EXPECT_EQ(status[5], 0x50);
    EXPECT_EQ(chip.violations(), "");
}

TEST_F(PtyTargetTest, LinkIsReplacedAndTakenAwayButAFileInItsPlaceIsNot)
{
    std::filesystem::create_symlink("/nowhere", link);
    {
        Chip other(quick_setup());
        PtyTarget served(loop, other);
        ASSERT_TRUE(served.open(link.string()));
        EXPECT_EQ(std::filesystem::read_symlink(link), served.path());
    }
    EXPECT_FALSE(std::filesystem::is_symlink(link));

    std::filesystem::create_directory(link);
    EXPECT_FALSE(pty.open(link.string()));
    EXPECT_NE(pty.fault().find("File exists"), std::string::npos);
    std::filesystem::remove(link);
}

TEST(PosixLoop, RunsTasksInTheirOrderAndNotBeforeTheirTime)
{
    PosixLoop loop;
    std::string ran;
    const std::int64_t begin = loop.now_us();
    loop.call_at(begin + 2000, [&] { ran += 'b'; });
    loop.call_at(begin + 1000, [&] { ran += 'a'; });
    const auto cancelled = loop.call_at(begin + 500, [&] { ran += 'x'; });
    loop.cancel(cancelled);
    while (ran.size() < 2)
        loop.yield();
    EXPECT_EQ(ran, "ab");
    EXPECT_GE(loop.now_us(), begin + 2000);
}

TEST(PosixLoop, HookIsAskedBeforeItSleeps)
{
    PosixLoop loop;
    int asked = 0;
    loop.before_sleep = [&] { return ++asked == 1; };
    loop.yield(); // would sleep for ever
    EXPECT_EQ(asked, 1);
}

} // namespace
} // namespace sim
