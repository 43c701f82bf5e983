// A port of the system whose far end goes: on a pseudo terminal, which hangs up as a device does that is pulled out.
#include "host/qt_loop.h"
#include "host/qt_port.h"

#include "platform/deadline.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <stdlib.h>
#include <sys/stat.h>
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
