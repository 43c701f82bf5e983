// A port of the system whose far end goes: on a pseudo terminal, which hangs up as a device does that is pulled out.
#include "host/line_driver.h"
#include "host/qt_loop.h"
#include "host/qt_port.h"

#include "platform/deadline.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <optional>
#include <string>

#include <fcntl.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

using namespace vrk;

namespace {

struct Terminal {
    int master = posix_openpt(O_RDWR | O_NOCTTY);
    std::string slave;

    Terminal()
    {
        if (master >= 0 && grantpt(master) == 0 && unlockpt(master) == 0)
            slave = ptsname(master);
    }
    ~Terminal() { hang_up(); }
    void hang_up()
    {
        if (master >= 0)
            close(master);
        master = -1;
    }
};

struct QtPorts : testing::Test {
    int argc = 1;
    char name[5] = "test";
    char* argv[2] = {name, nullptr};
    QCoreApplication application{argc, argv};
    QtLoop loop;
    Terminal terminal;
    QtPort port{terminal.slave};

    // How often the loop woke in that time.
    int turns_in_ms(int ms)
    {
        int turns = 0;
        for (const Deadline end(loop, ms); !end.passed(); ++turns)
            loop.yield();
        return turns;
    }
};

} // namespace

TEST_F(QtPorts, APortThatHungUpSaysSoAndIsClosed)
{
    ASSERT_TRUE(port.open({9600}));
    EXPECT_FALSE(port.gone());
    terminal.hang_up();
    turns_in_ms(100);
    EXPECT_TRUE(port.gone());
    EXPECT_FALSE(port.is_open());
}

// It used to keep the loop awake, tens of thousands of turns of it, until somebody closed the port.
TEST_F(QtPorts, APortThatHungUpLetsTheLoopSleep)
{
    ASSERT_TRUE(port.open({9600}));
    terminal.hang_up();
    EXPECT_LT(turns_in_ms(300), 50);
}

// Below 4800 baud a receiver waits inside the event for the rest of a frame.
TEST_F(QtPorts, APortThatHangsUpUnderAReceiverIsClosedBehindIt)
{
    ASSERT_TRUE(port.open({2400}));
    bool open_to_its_end = false;
    port.on_receive = [&] {
        terminal.hang_up();
        wait_ms(loop, 30);
        std::array<std::uint8_t, 8> bytes{};
        open_to_its_end = port.read(bytes) == 1;
    };
    ASSERT_EQ(write(terminal.master, "h", 1), 1);
    turns_in_ms(200);
    EXPECT_TRUE(open_to_its_end);
    EXPECT_TRUE(port.gone());
    EXPECT_FALSE(port.is_open());
}

TEST_F(QtPorts, APortThatIsNotThereIsGoneAndComesBack)
{
    QtPort nowhere("/dev/there-is-no-such-port");
    EXPECT_FALSE(nowhere.open({9600}));
    EXPECT_TRUE(nowhere.gone());

    ASSERT_TRUE(port.open({9600}));
    port.close();
    EXPECT_FALSE(port.gone()) << "it was closed, and is there";
    ASSERT_TRUE(port.open({9600}));
    EXPECT_TRUE(port.is_open());
}

// The receiver below 4800 baud again: what comes while it waits is for itself to look for.
TEST_F(QtPorts, APortTellsOfBytesOnceWhileAReceiverWaits)
{
    ASSERT_TRUE(port.open({2400}));
    int depth = 0;
    int deepest = 0;
    std::string heard;
    port.on_receive = [&] {
        deepest = std::max(deepest, ++depth);
        const std::string_view meanwhile = heard.empty() ? "bc" : "";
        EXPECT_EQ(write(terminal.master, meanwhile.data(), meanwhile.size()), static_cast<ssize_t>(meanwhile.size()));
        wait_ms(loop, 30);
        std::array<std::uint8_t, 8> bytes{};
        heard.append(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(port.read(bytes)));
        --depth;
    };
    ASSERT_EQ(write(terminal.master, "a", 1), 1);
    turns_in_ms(200);
    EXPECT_EQ(heard, "abc");
    EXPECT_EQ(deepest, 1);
}

TEST_F(QtPorts, APortMayBeClosedAndOpenedAgainUnderItsReceiver)
{
    ASSERT_TRUE(port.open({115200}));
    std::string heard;
    port.on_receive = [&] {
        std::array<std::uint8_t, 8> bytes{};
        heard.append(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(port.read(bytes)));
        port.close();
        EXPECT_TRUE(port.open({9600}));
    };
    for (const char* byte : {"a", "b", "c"}) {
        ASSERT_EQ(write(terminal.master, byte, 1), 1);
        turns_in_ms(50);
    }
    EXPECT_EQ(heard, "abc");
    EXPECT_TRUE(port.is_open());
}

// No byte goes another way than through the port, whatever else looks at its descriptor.
TEST_F(QtPorts, EachByteOfAFloodComesInItsPlace)
{
    constexpr std::size_t flood_size = 200'000;
    ASSERT_TRUE(port.open({115200}));
    fcntl(terminal.master, F_SETFL, O_NONBLOCK);
    std::size_t sent = 0;
    std::size_t in_place = 0;
    bool in_order = true;
    port.on_receive = [&] {
        std::array<std::uint8_t, 1000> bytes{};
        while (const std::size_t count = port.read(bytes)) {
            for (std::size_t i = 0; i < count; ++i)
                in_order &= bytes[i] == static_cast<std::uint8_t>(in_place++ % 251);
        }
    };
    for (const Deadline end(loop, 10'000); in_place < flood_size && !end.passed();) {
        std::array<std::uint8_t, 700> bytes{};
        for (std::size_t i = 0; i < bytes.size(); ++i)
            bytes[i] = static_cast<std::uint8_t>((sent + i) % 251);
        const ssize_t taken = write(terminal.master, bytes.data(), std::min(bytes.size(), flood_size - sent));
        sent += taken > 0 ? static_cast<std::size_t>(taken) : 0;
        loop.run_due();
    }
    EXPECT_EQ(in_place, flood_size);
    EXPECT_TRUE(in_order);
}

TEST_F(QtPorts, WhatIsDroppedIsNotReadLater)
{
    ASSERT_TRUE(port.open({115200}));
    ASSERT_EQ(write(terminal.master, "old", 3), 3);
    turns_in_ms(50);
    ASSERT_EQ(port.bytes_available(), 3U);
    port.discard();
    EXPECT_EQ(port.bytes_available(), 0U);
    ASSERT_EQ(write(terminal.master, "older", 5), 5);
    turns_in_ms(50);
    port.close();
    ASSERT_TRUE(port.open({115200}));
    EXPECT_EQ(port.bytes_available(), 0U);
}

// A queue that was emptied between the wake-up and the look is no hang-up: the job would end with its port gone.
TEST(LineDriver, TakesAnEmptyQueueForNothingAndAnErrorForTheEnd)
{
    Terminal terminal;
    const int line = open(terminal.slave.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK);
    ASSERT_GE(line, 0);
    termios settings{};
    ASSERT_EQ(tcgetattr(line, &settings), 0);
    cfmakeraw(&settings);
    std::array<std::uint8_t, 8> bytes{};
    for (const cc_t least : {cc_t{0}, cc_t{1}}) { // the driver answers with nothing, or that it would have to wait
        settings.c_cc[VMIN] = least;
        settings.c_cc[VTIME] = 0;
        ASSERT_EQ(tcsetattr(line, TCSANOW, &settings), 0);
        EXPECT_EQ(read_now(line, bytes), std::optional<std::size_t>{0});
    }
    close(line);
    EXPECT_EQ(read_now(line, bytes), std::nullopt) << "it leads nowhere any more";
}

// The terminal's receiver: what comes byte by byte is told of now and then.
TEST_F(QtPorts, APortTellsOfFewBytesLaterWhereItMayLetThemGather)
{
    ASSERT_TRUE(port.open({9600}));
    port.let_gather(1000);
    int events = 0;
    std::string received;
    port.on_receive = [&] {
        ++events;
        std::array<std::uint8_t, 8> bytes{};
        const std::size_t count = port.read(bytes);
        received.append(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(count));
    };
    for (const char* byte : {"g", "a", "t", "h", "e", "r"}) {
        ASSERT_EQ(write(terminal.master, byte, 1), 1);
        turns_in_ms(10);
    }
    EXPECT_EQ(events, 1);
    EXPECT_EQ(received, "g");
    turns_in_ms(1200);
    EXPECT_EQ(events, 2);
    EXPECT_EQ(received, "gather");
}

TEST_F(QtPorts, APortThatLetsBytesGatherSaysThatItHungUp)
{
    ASSERT_TRUE(port.open({9600}));
    port.let_gather(60'000);
    port.on_receive = [this] {
        std::array<std::uint8_t, 8> bytes{};
        port.read(bytes);
    };
    ASSERT_EQ(write(terminal.master, "h", 1), 1);
    turns_in_ms(50);
    terminal.hang_up();
    turns_in_ms(100);
    EXPECT_TRUE(port.gone());
}

// A download takes the same port behind a terminal: its answers are told at once.
TEST_F(QtPorts, APortLetsNothingGatherWhenItIsOpenedAgain)
{
    ASSERT_TRUE(port.open({9600}));
    port.let_gather(60'000);
    std::size_t received = 0;
    port.on_receive = [&] {
        std::array<std::uint8_t, 8> bytes{};
        received += port.read(bytes);
    };
    ASSERT_EQ(write(terminal.master, "1", 1), 1);
    turns_in_ms(50);
    ASSERT_TRUE(port.open({9600}));
    for (const char* byte : {"2", "3"}) {
        ASSERT_EQ(write(terminal.master, byte, 1), 1);
        turns_in_ms(100);
    }
    EXPECT_EQ(received, 3U);
}

TEST_F(QtPorts, APortThatAnotherHoldsNamesItsHolder)
{
    ASSERT_TRUE(port.open({9600}));
    QtPort second(terminal.slave);
    ASSERT_FALSE(second.open({9600}));
    EXPECT_EQ(second.refusal().kind, PortRefusal::Kind::in_use);
    EXPECT_EQ(second.refusal().holder, "test_host (PID " + std::to_string(getpid()) + ")");
    port.close();
    EXPECT_TRUE(second.open({9600}));
    EXPECT_EQ(second.refusal().kind, PortRefusal::Kind::unknown);
}

TEST_F(QtPorts, APortThatMayNotBeOpenedNamesTheGroupThatMay)
{
    const bool is_root = geteuid() == 0; // whom no permission stops
    ASSERT_EQ(chmod(terminal.slave.c_str(), 0), 0);
    ASSERT_EQ(seteuid(is_root ? 65534 : geteuid()), 0);
    const bool opened = port.open({9600});
    ASSERT_EQ(seteuid(is_root ? 0 : geteuid()), 0);
    EXPECT_FALSE(opened);
    EXPECT_EQ(port.refusal().kind, PortRefusal::Kind::no_permission);
    EXPECT_FALSE(port.refusal().group.empty());
}
