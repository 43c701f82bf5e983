#include "link/erase.h"
#include "link/negotiate.h"
#include "link/rc_test.h"
#include "session/frame.h"

#include <gtest/gtest.h>

using namespace vrk;

TEST(ShortFrame, OfCode95HasTheCheck05WithLength6)
{
    EXPECT_EQ(build_short_frame(0x95, Check::sum8),
        (Bytes{0xFE, 0xFE, 0xFE, 0xFE, 0x46, 0xB9, 0x6A, 0x00, 0x06, 0x95, 0x05, 0x16}));
}

TEST(ShortFrame, OfCode95HasTheCheck0106WithLength7InTheLongForm)
{
    EXPECT_EQ(build_short_frame(0x95, Check::sum16),
        (Bytes{0xFE, 0xFE, 0xFE, 0xFE, 0x46, 0xB9, 0x6A, 0x00, 0x07, 0x95, 0x01, 0x06, 0x16}));
}

TEST(ShortFrame, DoesNotExistForOtherCodes) { EXPECT_TRUE(build_short_frame(0x84, Check::sum8).empty()); }

TEST(CommandFrame, WithoutParametersIsEightBytesLong)
{
    EXPECT_EQ(build_command_frame(command::read_status, {}, Check::sum8),
        (Bytes{0x46, 0xB9, 0x6A, 0x00, 0x06, 0x50, 0xC0, 0x16}));
}

TEST(ModelFrame, NamesTheSeriesAndTheId)
{
    McuRecord model;
    model.series = 7;
    model.mcu_id = "D17E";
    EXPECT_EQ(build_model_frame(command::ready, 0, model, "D17E", Check::sum8),
        (Bytes{0x46, 0xB9, 0x6A, 0x00, 0x0C, 0x80, 0x07, 0x00, 0x36, 0x01, 0xD1, 0x7E, 0x83, 0x16}));
}

TEST(ModelFrame, IsOneByteLongerInTheLongForm)
{
    const Bytes frame = build_model_frame(command::ready, 0, McuRecord{}, "", Check::sum16);
    EXPECT_EQ(frame.size(), 15U);
    EXPECT_EQ(frame[4], 0x0D);
}

TEST(ModelFrame, FillsATwoDigitIdWithFF)
{
    McuRecord model;
    model.mcu_id = "56";
    EXPECT_EQ(model_id_bytes(model, "56"), (std::array<std::uint8_t, 2>{0x56, 0xFF}));
}

TEST(ModelFrame, TakesTheOlderIdWhereTheChipReportedThat)
{
    McuRecord model;
    model.mcu_id = "E064";
    model.alt_id = "F314";
    EXPECT_EQ(model_id_bytes(model, "F314"), (std::array<std::uint8_t, 2>{0xF3, 0x14}));
    EXPECT_EQ(model_id_bytes(model, "E064"), (std::array<std::uint8_t, 2>{0xE0, 0x64}));
    EXPECT_EQ(model_id_bytes(model, "D17E"), (std::array<std::uint8_t, 2>{0xE0, 0x64}));
}

TEST(DataFrame, CarriesAddressCountAndDataAndKeepsTheSumOfTheDataAlone)
{
    const std::uint8_t data[] = {0x80, 0x81, 0x02};
    const DataFrame frame = build_data_frame(command::write_block, 0x1E00, data, Check::sum8);
    EXPECT_EQ(frame.bytes,
        (Bytes{0x46, 0xB9, 0x6A, 0x00, 0x0F, 0x00, 0x00, 0x00, 0x1E, 0x00, 0x00, 0x03, 0x80, 0x81, 0x02, 0x9D, 0x16}));
    EXPECT_EQ(frame.data_sum, 0x03);
    EXPECT_EQ(build_data_frame(command::write_block, 0x1E00, data, Check::sum16).data_sum, 0x0103);
}

TEST(DataFrame, IsNeverCutTo8BitsInTheLongForm)
{
    const std::vector<std::uint8_t> data(128, 0xFF);
    const Bytes frame = build_data_frame(command::write_block_again, 0, data, Check::sum16).bytes;
    const std::uint32_t sum = 0x6A + 0x8D + 0x30 + 0x80 + 128 * 0xFF;
    EXPECT_EQ(frame[frame.size() - 3], sum >> 8);
    EXPECT_EQ(frame[frame.size() - 2], sum & 0xFF);
}

TEST(DemonstrationFrame, CountsTheWholeFrame)
{
    EXPECT_EQ(build_demo_frame(0xB0, {}), (Bytes{0x5A, 0xA5, 0x00, 0x08, 0xB0, 0x01, 0xB7, 0x16}));
    const std::uint8_t data[] = {0x11, 0x22};
    const DataFrame frame = build_demo_data_frame(command::demo_write, 0x200, data);
    EXPECT_EQ(frame.bytes.size(), 16U);
    EXPECT_EQ(frame.bytes[3], 16);
    EXPECT_EQ(frame.data_sum, 0x33);
}

TEST(EraseFrame, OfTheShortFormHolds33WhereTheFirmwareTakesNoRange)
{
    EXPECT_EQ(build_erase_frame(124, EraseRange{}, false, Check::sum8),
        (Bytes{0x46, 0xB9, 0x6A, 0x00, 0x0D, 0x84, 124, 0x33, 0x33, 0x33, 0x33, 0x33, 0x33,
            static_cast<std::uint8_t>(0x6A + 0x0D + 0x84 + 124 + 6 * 0x33), 0x16}));
}

TEST(EraseFrame, OfTheLongFormCountsDownFrom80)
{
    const Bytes frame = build_erase_frame(255, {0xF000, 0xF3FF}, true, Check::sum8);
    ASSERT_EQ(frame.size(), 141U);
    EXPECT_EQ(frame[4], 0x8B);
    EXPECT_EQ(frame[8], 0xF0);
    EXPECT_EQ(frame[11], 0xF3);
    EXPECT_EQ(frame[12], 0xFF);
    EXPECT_EQ(frame[13], 0x00);
    EXPECT_EQ(frame[23], 0x00);
    EXPECT_EQ(frame[24], 0x80);
    EXPECT_EQ(frame[25], 0x7F);
    EXPECT_EQ(frame[138], 0x0E);
    EXPECT_EQ(frame[140], 0x16);
    EXPECT_EQ(build_erase_frame(255, {0, 1}, true, Check::sum16)[4], 0x8C);
}

TEST(BaudFrames, RepeatTheirParametersAsComplementAndDouble)
{
    const Bytes test = build_test_baud_frame(192, 250, 120, 0x81, Check::sum8);
    EXPECT_EQ((Bytes{test.begin() + 4, test.begin() + 12}), (Bytes{0x0C, 0x8F, 192, 250, 63, 12, 120, 0x81}));
    const Bytes set = build_set_baud_frame(192, 250, 120, Check::sum8);
    EXPECT_EQ((Bytes{set.begin() + 4, set.begin() + 11}), (Bytes{0x0B, 0x8E, 192, 250, 63, 12, 120}));
}

TEST(BaudFrames, CapTheDoubleWhereItDoesNotFit)
{
    EXPECT_EQ(build_test_baud_frame(0, 0, 0, 0x80, Check::sum8)[9], 0xFE);
    EXPECT_EQ(build_set_baud_frame(0, 0, 0, Check::sum8)[9], 0xFF);
    EXPECT_EQ(build_set_baud_frame(0, 129, 0, Check::sum8)[9], 0xFE);
}

TEST(RcFrame, ListsItsPointsAndHasSixteenBitsOfSumInEveryFamily)
{
    const std::array<std::uint8_t, 6> saved = {1, 2, 3, 4, 5, 6};
    const BandTrim points[] = {{0x18, 0}, {0x58, 128}};
    const Bytes frame = build_rc_frame(saved, points);
    ASSERT_EQ(frame.size(), 4U * 2 + 20);
    EXPECT_EQ(frame[4], 4 * 2 + 18);
    EXPECT_EQ(frame[5], 0x65);
    EXPECT_EQ(frame[11], 6);
    EXPECT_EQ(frame[12], 0xFF);
    EXPECT_EQ(frame[16], 2);
    EXPECT_EQ(frame[21], 0x58);
    EXPECT_EQ(frame[22], 128);
    EXPECT_EQ(frame.back(), 0x16);
}

TEST(WatchdogPin, IsPortTimes16PlusBit)
{
    EXPECT_EQ(watchdog_pin_code("P1.3"), 0x13);
    EXPECT_EQ(watchdog_pin_code("P0.0"), 0x00);
    EXPECT_EQ(watchdog_pin_code(""), 0xFF);
    EXPECT_EQ(watchdog_pin_code("P1.30"), 0xFF);
}
