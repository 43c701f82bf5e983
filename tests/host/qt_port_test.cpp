// A port of the system whose far end goes: on a pseudo terminal, which hangs up as a device does that is pulled out.
#include "host/qt_loop.h"
#include "host/qt_port.h"

#include "platform/deadline.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <stdlib.h>
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
