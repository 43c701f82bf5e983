// What the four kinds of frames look like in their lists.
#include "monitor/monitor.h"

#include "monitor/monitor_frame.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace vrk {
namespace {

struct ListsTest : testing::Test {
    ListsTest() { monitor.clear(4); }
    std::string line_of(const std::string& name) const
    {
        for (const std::string& line : monitor.registers.lines) {
            if (line.ends_with("  " + name))
                return line;
        }
        return "no register " + name;
    }
    static long count_changed(const MonitorList& list)
    {
        return std::count(list.changed.begin(), list.changed.end(), true);
    }

    Monitor monitor;
};

const std::string indent(13, ' ');

} // namespace

TEST_F(ListsTest, AreBlankBeforeAFrameHasCome)
{
    EXPECT_EQ(monitor.registers.lines.size(), 67U);
    EXPECT_EQ(monitor.registers.lines.front(), indent + "E0H       ACC");
    ASSERT_EQ(monitor.ram.lines.size(), 32U);
    EXPECT_EQ(monitor.ram.lines[1], "08" + std::string(26, ' '));
    ASSERT_EQ(monitor.external_ram.lines.size(), 128U);
    EXPECT_EQ(monitor.external_ram.lines.back(), "03F8" + std::string(24, ' '));
    ASSERT_EQ(monitor.data_flash.lines.size(), 64U);
    EXPECT_EQ(monitor.data_flash.lines.back(), "01F8" + std::string(24, ' '));
    EXPECT_EQ(count_changed(monitor.registers) + count_changed(monitor.ram), 0);
}

TEST_F(ListsTest, ShowTheRegistersAtTheirAddresses)
{
    monitor.show(monitor_frame(0, 0x0080, counted_up(128, 0x80))); // each holds its own address
    EXPECT_EQ(line_of("B"), indent + "F0H  F0H  B");
    EXPECT_EQ(line_of("P0"), indent + "80H  80H  P0");
    EXPECT_EQ(line_of("CCAP1H"), indent + "FBH  FBH  CCAP1H");
}

// The routine that sends the dump works with these nine itself: what it tells apart is the program's own.
TEST_F(ListsTest, ShowTheNineRegistersThatAreToldApartOverTheDump)
{
    monitor.show(monitor_frame(0, 0x0080, Bytes(128, 0xEE), {0x11, 0x22, 0x33, 0x44, 0x55, 0x66, 0x77, 0x88, 0x99}));
    EXPECT_EQ(line_of("PSW"), indent + "D0H  11H  PSW");
    EXPECT_EQ(line_of("ACC"), indent + "E0H  22H  ACC");
    EXPECT_EQ(line_of("TCON"), indent + "88H  33H  TCON");
    EXPECT_EQ(line_of("CCON"), indent + "D8H  55H  CCON");
    EXPECT_EQ(line_of("IE"), indent + "A8H  66H  IE");
    EXPECT_EQ(line_of("SP"), indent + "81H  77H  SP");
    EXPECT_EQ(line_of("TMOD"), indent + "89H  EEH  TMOD");
    monitor.clear(2);
    monitor.show(monitor_frame(0, 0, {}, {0x11, 0x22, 0x33, 0x44, 0x55, 0x66, 0x77, 0x88, 0x99}));
    EXPECT_EQ(line_of("T2CON"), indent + "C8H  44H  T2CON");
}

TEST_F(ListsTest, LeaveRegistersBlankThatNoFrameHasTold)
{
    monitor.show(monitor_frame(0, 0x0080, counted_up(128, 0x80)));
    monitor.show(monitor_frame(0, 0x0090, {0x12, 0x34}));
    EXPECT_EQ(line_of("P1"), indent + "90H  12H  P1");
    EXPECT_EQ(line_of("P1M0"), indent + "91H  34H  P1M0");
    EXPECT_EQ(line_of("P1M1"), indent + "92H       P1M1");
    EXPECT_EQ(line_of("P0"), indent + "80H       P0");
}

TEST_F(ListsTest, LeaveADumpAloneBehindTheLastAddress)
{
    monitor.show(monitor_frame(0, 0x00FC, {0xA1, 0xA2, 0xA3, 0xA4, 0xA5, 0xA6, 0xA7}));
    EXPECT_EQ(line_of("CCAP2H"), indent + "FCH  A1H  CCAP2H");
    EXPECT_EQ(line_of("P0"), indent + "80H       P0");
}

TEST_F(ListsTest, ShowRamInLinesOfEightWithTheTwoRegistersThatAreToldApart)
{
    monitor.show(monitor_frame(1, 0, Bytes(256, 0xCC), {0, 0, 0, 0, 0, 0, 0, 0x5B, 0x5A}));
    ASSERT_EQ(monitor.ram.lines.size(), 32U);
    EXPECT_EQ(monitor.ram.lines[0], "00   5A 5B CC CC CC CC CC CC");
    EXPECT_EQ(monitor.ram.lines[31], "F8   CC CC CC CC CC CC CC CC");
}

TEST_F(ListsTest, ShowEachByteInItsOwnColumn)
{
    monitor.show(monitor_frame(1, 0, counted_up(256)));
    EXPECT_EQ(monitor.ram.lines[2], "10   10 11 12 13 14 15 16 17");
    monitor.show(monitor_frame(2, 0, counted_up(1024, 1)));
    ASSERT_EQ(monitor.external_ram.lines.size(), 128U);
    EXPECT_EQ(monitor.external_ram.lines[0], "0000 01 02 03 04 05 06 07 08");
    EXPECT_EQ(monitor.external_ram.lines[127], "03F8 F9 FA FB FC FD FE FF 00");
}

TEST_F(ListsTest, LeaveMemoryBlankBehindTheEndOfAFrame)
{
    monitor.show(monitor_frame(2, 0, counted_up(10)));
    EXPECT_EQ(monitor.external_ram.lines[1], "0008 08 09                  ");
    EXPECT_EQ(monitor.external_ram.lines[2], "0010" + std::string(24, ' '));
    monitor.show(monitor_frame(1, 0, {0, 0, 0xC2}, {0, 0, 0, 0, 0, 0, 0, 0x01, 0x02}));
    EXPECT_EQ(monitor.ram.lines[0], "00   02 01 C2               ");
}

TEST_F(ListsTest, LeaveOutWhatIsLongerThanTheirMemory)
{
    monitor.show(monitor_frame(2, 0, Bytes(1082, 0x77)));
    EXPECT_EQ(monitor.external_ram.lines.size(), 128U);
    monitor.show(monitor_frame(1, 0, Bytes(300, 0x77)));
    EXPECT_EQ(monitor.ram.lines.size(), 32U);
    monitor.show(monitor_frame(3, 0, Bytes(600, 0x77)));
    EXPECT_EQ(monitor.data_flash.lines.size(), 64U);
}

TEST_F(ListsTest, ShowDataFlashFromTheAddressOfTheFrame)
{
    monitor.show(monitor_frame(3, 0x2400, counted_up(512, 0x10)));
    EXPECT_EQ(monitor.data_flash.lines[0], "2400 10 11 12 13 14 15 16 17");
    EXPECT_EQ(monitor.data_flash.lines[63], "25F8 08 09 0A 0B 0C 0D 0E 0F");
    monitor.show(monitor_frame(3, 0x2600, {0x99}));
    EXPECT_EQ(monitor.data_flash.lines[0], "2600 99                     ");
    EXPECT_EQ(monitor.data_flash.lines[1], "2608" + std::string(24, ' '));
}

TEST_F(ListsTest, LeaveAFrameOfAnUnknownTypeAlone)
{
    const Monitor before = monitor;
    monitor.show(monitor_frame(4, 0, counted_up(16)));
    monitor.show(monitor_frame(0xFF, 0, counted_up(16)));
    EXPECT_EQ(monitor.registers.lines, before.registers.lines);
    EXPECT_EQ(monitor.ram.lines, before.ram.lines);
    EXPECT_EQ(monitor.external_ram.lines, before.external_ram.lines);
    EXPECT_EQ(monitor.data_flash.lines, before.data_flash.lines);
}

TEST_F(ListsTest, KnowWhichLinesHaveChanged)
{
    Bytes memory = counted_up(256);
    monitor.show(monitor_frame(1, 0, memory));
    EXPECT_EQ(count_changed(monitor.ram), 32);
    monitor.show(monitor_frame(1, 0, memory));
    EXPECT_EQ(count_changed(monitor.ram), 0);
    memory[0x43] = 0x99;
    monitor.show(monitor_frame(1, 0, memory));
    EXPECT_EQ(count_changed(monitor.ram), 1);
    EXPECT_TRUE(monitor.ram.changed[8]);
}

TEST_F(ListsTest, AreBlankAgainWhenTheyAreCleared)
{
    const Monitor fresh = monitor;
    for (const std::uint8_t type : {std::uint8_t{0}, std::uint8_t{1}, std::uint8_t{2}, std::uint8_t{3}})
        monitor.show(monitor_frame(type, 0x0080, counted_up(128)));
    monitor.clear(4);
    EXPECT_EQ(monitor.registers.lines, fresh.registers.lines);
    EXPECT_EQ(monitor.ram.lines, fresh.ram.lines);
    EXPECT_EQ(monitor.external_ram.lines, fresh.external_ram.lines);
    EXPECT_EQ(monitor.data_flash.lines, fresh.data_flash.lines);
    EXPECT_EQ(count_changed(monitor.registers) + count_changed(monitor.ram) + count_changed(monitor.external_ram) +
            count_changed(monitor.data_flash),
        0);
}

TEST(RegisterTables, HaveTheRowsOfTheirSeries)
{
    EXPECT_EQ(registers_of(0).size(), 0U);
    EXPECT_EQ(registers_of(1).size(), 0U);
    EXPECT_EQ(registers_of(2).size(), 41U);
    EXPECT_EQ(registers_of(3).size(), 52U);
    for (int series = 4; series <= 16; ++series)
        EXPECT_EQ(registers_of(series).size(), 67U) << series;
}

TEST(RegisterTables, NameEachRegisterAndAddressOnce)
{
    for (const int series : {2, 3, 4}) {
        std::set<std::uint8_t> addresses;
        std::set<std::string_view> names;
        for (const Register& row : registers_of(series)) {
            EXPECT_GE(row.address, 0x80) << row.name;
            EXPECT_TRUE(addresses.insert(row.address).second) << row.name;
            EXPECT_TRUE(names.insert(row.name).second) << row.name;
        }
    }
}

// Typed from the data sheets: first and last, and the rows in which the series differ.
TEST(RegisterTables, AreInTheOrderOfTheirList)
{
    const auto row = [](int series, std::size_t index) {
        const Register& found = registers_of(series)[index];
        return std::pair{int{found.address}, std::string{found.name}};
    };
    EXPECT_EQ(row(2, 0), (std::pair{0xE0, std::string{"ACC"}}));
    EXPECT_EQ(row(2, 10), (std::pair{0xE8, std::string{"P4"}}));
    EXPECT_EQ(row(2, 23), (std::pair{0xC8, std::string{"T2CON"}}));
    EXPECT_EQ(row(2, 40), (std::pair{0xB9, std::string{"SADEN"}}));
    EXPECT_EQ(row(3, 6), (std::pair{0x90, std::string{"P1"}}));
    EXPECT_EQ(row(3, 29), (std::pair{0xC7, std::string{"IDLE_CLK"}}));
    EXPECT_EQ(row(3, 51), (std::pair{0xF3, std::string{"PCA_PWM1"}}));
    EXPECT_EQ(row(12, 35), (std::pair{0xC7, std::string{"CLK_DIV"}}));
    EXPECT_EQ(row(12, 46), (std::pair{0xBE, std::string{"ADC_LOW2"}}));
    EXPECT_EQ(row(12, 66), (std::pair{0xF5, std::string{"PCA_PWM3"}}));
}

TEST(MonitorCommands, EndWithTheirSum)
{
    using Command = std::array<std::uint8_t, 4>;
    EXPECT_EQ(monitor_command_bytes(monitor_command::received), (Command{0xFE, 0xAA, 0x50, 0xFA}));
    EXPECT_EQ(monitor_command_bytes(monitor_command::repeat), (Command{0xFE, 0xAA, 0x52, 0xFC}));
    EXPECT_EQ(monitor_command_bytes(monitor_command::go_on), (Command{0xFE, 0xAA, 0x54, 0xFE}));
}

} // namespace vrk
