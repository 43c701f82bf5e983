// The terminal's own state: what it counts, and what it gives out to be shown.
#include "terminal/terminal.h"

#include <gtest/gtest.h>

#include <limits>

namespace vrk {
namespace {

using Bytes = std::vector<std::uint8_t>;

} // namespace

TEST(Terminal, ShowsTextOrPairs)
{
    Terminal terminal;
    terminal.receive(Bytes{'h', 'i', 0x00});
    EXPECT_EQ(terminal.take_text(false), "hi\u2400");
    terminal.receive(Bytes{'h', 'i', 0x00});
    EXPECT_EQ(terminal.take_text(true), "68 69 00 ");
    EXPECT_EQ(terminal.take_text(false), "");
    EXPECT_EQ(terminal.rx_count, 6);
}

TEST(Terminal, CountsBytesThatItsRingHadNoRoomFor)
{
    Terminal terminal;
    terminal.receive(Bytes(ByteRing::size + 5000, 'x'));
    EXPECT_EQ(terminal.rx_count, static_cast<std::int32_t>(ByteRing::size + 5000));
    EXPECT_EQ(terminal.take_text(false).size(), ByteRing::size - 1);
}

TEST(Terminal, CountsOnBelowZeroWhenTheCounterIsFull)
{
    Terminal terminal;
    terminal.rx_count = std::numeric_limits<std::int32_t>::max();
    terminal.receive(Bytes{'x'});
    EXPECT_EQ(terminal.rx_count, std::numeric_limits<std::int32_t>::min());
}

TEST(Terminal, ReadsInTheEncodingThatWasChosenLast)
{
    Terminal terminal;
    terminal.use(CodePage::gbk);
    terminal.receive(Bytes{0xCE, 0xC2});
    EXPECT_EQ(terminal.take_text(false), "温");
    terminal.use(CodePage::latin1);
    terminal.receive(Bytes{0xCE});
    EXPECT_EQ(terminal.take_text(false), "\u00CE");
}

// Half a character that waits for its rest is received all the same.
TEST(Terminal, LosesNoByteWhenTheWayOfShowingChanges)
{
    Terminal terminal;
    terminal.receive(Bytes{'a', 0xE4, 0xBD});
    EXPECT_EQ(terminal.take_text(false), "a");
    terminal.use(CodePage::latin1);
    terminal.receive(Bytes{'b'});
    EXPECT_EQ(terminal.take_text(false), "\uFFFD\uFFFDb");
    terminal.use(CodePage::utf8);
    terminal.receive(Bytes{0xE4});
    EXPECT_EQ(terminal.take_text(false), "");
    terminal.receive(Bytes{'c'});
    EXPECT_EQ(terminal.take_text(true), "\uFFFD63 ");
}

} // namespace vrk
