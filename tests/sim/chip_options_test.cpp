// Option bytes in the forms of the series, and the whole road of a download.
#include "sim/ready_chips.h"

#include <gtest/gtest.h>

namespace sim::test {
namespace {

Bytes options_of_16_rows(const std::array<std::uint8_t, 17>& rows, std::uint32_t clock)
{
    Bytes frame{0x8D};
    frame.insert(frame.end(), rows.begin(), rows.begin() + 16);
    for (const unsigned shift : {24U, 16U, 8U, 0U})
        frame.push_back(static_cast<std::uint8_t>(clock >> shift));
    return frame;
}

struct WrittenJuniper : Juniper {
    WrittenJuniper()
    {
        erase();
        ask(block(0x00, 0, {1}), 50);
    }
};

TEST(ChipOptions, NewerSeriesTakeSixteenRowsOnceTheCodeHasEnded)
{
    WrittenJuniper tool;
    std::array<std::uint8_t, 17> rows = tool.chip.options();
    rows[2] = 0xDF;
    EXPECT_EQ(tool.ask(options_of_16_rows(rows, 11'059'743), 200), Bytes{});
    EXPECT_EQ(tool.chip.violations(), "frame 8D (options): out of place, the loader is in state \"writing\"");

    EXPECT_EQ(code_of(tool.ask(model_frame(0x69, 7, 0xD1, 0x7E), 200)), 0x8D);
    EXPECT_EQ(code_of(tool.ask(options_of_16_rows(rows, 11'059'743), 200)), 0x81);
    EXPECT_EQ(tool.chip.options()[2], 0xDF);
    EXPECT_EQ(rx(tool.ask({0x50}), 14), 0xDF);
}

TEST(ChipOptions, BitsWithoutACellStayAsTheyLeftTheFactory)
{
    WrittenJuniper tool;
    tool.ask(model_frame(0x69, 7, 0xD1, 0x7E), 200);
    std::array<std::uint8_t, 17> rows = tool.chip.options();
    rows[1] = 0x00;
    tool.ask(options_of_16_rows(rows, 11'059'200), 200);
    EXPECT_EQ(tool.chip.options()[1], 0x08);
}

TEST(ChipOptions, ClockInTheFrameMustBeTheOneThatWasCounted)
{
    WrittenJuniper tool;
    tool.ask(model_frame(0x69, 7, 0xD1, 0x7E), 200);
    EXPECT_EQ(tool.ask(options_of_16_rows(tool.chip.options(), 12'000'000), 200), Bytes{});
    EXPECT_EQ(tool.chip.violations(), "frame 8D: clock 12000000 Hz at byte 22, counted 11059200 Hz");
}

TEST(ChipOptions, BusyChipSaysNotYetAndRefusingOneSaysWellAndDoesNothing)
{
    WrittenJuniper tool;
    tool.ask(model_frame(0x69, 7, 0xD1, 0x7E), 200);
    std::array<std::uint8_t, 17> rows = tool.chip.options();
    rows[0] = 0xFE;
    tool.chip.faults.busy_options = 1;
    tool.chip.faults.refused_options = 1;
    EXPECT_EQ(code_of(tool.ask(options_of_16_rows(rows, 11'059'200), 200)), 0x50);
    EXPECT_EQ(code_of(tool.ask(options_of_16_rows(rows, 11'059'200), 200)), 0x81);
    EXPECT_EQ(tool.chip.options()[0], 0xFF);
    EXPECT_EQ(code_of(tool.ask(options_of_16_rows(rows, 11'059'200), 200)), 0x81);
    EXPECT_EQ(tool.chip.options()[0], 0xFE);
}

TEST(ChipOptions, OlderSeriesTakeTwoRowsAndTheReload)
{
    Birch tool;
    tool.ask(birch_erase, 3000);
    tool.ask(block(0x00, 0, {1}), 50);
    EXPECT_EQ(tool.ask({0x8D, 0xFC, 0xFF, 0xF0, 0xFD}, 200), Bytes{});
    EXPECT_EQ(tool.chip.violations(), "frame 8D: reload of 16 steps, in force are 3");
    EXPECT_EQ(code_of(tool.ask({0x8D, 0xFC, 0xFF, 0xFA, 0xFD}, 200)), 0x80);
    EXPECT_EQ(tool.chip.options()[1], 0xFC);
    EXPECT_EQ(tool.chip.options()[8], 0xFD);
    EXPECT_TRUE(at_double_speed(tool.chip.setup()));
}

TEST(ChipOptions, ParameterCountIsTheOneOfTheSeries)
{
    Birch tool;
    tool.ask(birch_erase, 3000);
    tool.ask(block(0x00, 0, {1}), 50);
    EXPECT_EQ(tool.ask({0x8D, 0xFF}, 200), Bytes{});
    EXPECT_EQ(tool.chip.violations(), "frame 8D: 1 parameters, wanted 4");
}

// Series 3 to 6: rows told twice, the clock twice, three fillers. Cedar-4, at 115200.
ChipModel cedar_4() { return {"Cedar-4", 3, "F204", "", 0x0FFF, 0x1000, 0x13FF, 0x1400, false, false, false, false}; }

Bytes options_told_twice(const std::array<std::uint8_t, 17>& rows, std::uint8_t fifth)
{
    const Bytes clock{0x00, 0xA8, 0xC0, 0x00};
    Bytes frame{0x8D, rows[2], rows[3], rows[8], rows[10], fifth};
    frame.insert(frame.end(), clock.begin(), clock.end());
    frame.insert(frame.end(), rows.begin(), rows.begin() + 16);
    frame.insert(frame.end(), clock.begin(), clock.end());
    frame.insert(frame.end(), 3, 0xFF);
    return frame;
}

struct Cedar : HandTool {
    Cedar()
        : HandTool(cedar_4())
    {
        call_up();
        offer({0x8F, 192, 250, 63, 12, 45, 0x83});
        turn_to(2400);
        offer({0x8E, 192, 250, 63, 12, 45});
        ask({0x84, 255, 0, 0x10, 0x01, 0, 0x10, 0x01}, 3000);
        ask(block(0x00, 0, {1}), 50);
    }
    void offer(const Bytes& frame)
    {
        write(command(frame, false));
        pass_ms(100);
        turn_to(115200);
        pass_ms(900);
    }
};

TEST(ChipOptions, Series3To6AreToldTheirRowsTwice)
{
    Cedar tool;
    std::array<std::uint8_t, 17> rows = tool.chip.options();
    rows[0] = 0xBF;
    rows[3] = 0xFA;
    EXPECT_EQ(code_of(tool.ask(options_told_twice(rows, rows[11]), 200)), 0x80);
    EXPECT_EQ(tool.chip.options()[0], 0xBF);
    EXPECT_EQ(tool.chip.options()[3], 0xFA);
    EXPECT_EQ(tool.chip.violations(), "");
    EXPECT_EQ(tool.ask(options_told_twice(rows, 0x00), 200), Bytes{});
    EXPECT_EQ(tool.chip.violations(), "frame 8D: byte 10 (option row, told twice) is 00, wanted FF");
}

// ---- the whole road, twice ----

TEST(ChipDownload, TwoRunsOfTheSameRoadHaveTheSameEventLog)
{
    const auto run = [] {
        WrittenJuniper tool;
        tool.ask(model_frame(0x69, 7, 0xD1, 0x7E), 200);
        tool.ask({0x82}, 100);
        EXPECT_EQ(tool.chip.violations(), "");
        return tool.loop.log.hash();
    };
    EXPECT_EQ(run(), run());
}

} // namespace
} // namespace sim::test
