#include "options/pins.h"
#include "options/rc_setting.h"

#include <gtest/gtest.h>

using namespace vrk;

namespace {

// The bytes of a series, all bits set before the setting goes in.
OptionImage image_of(std::int32_t series, const RcChoice& choice)
{
    OptionImage image;
    for (auto& row : image.bytes)
        row[0] = 0xFF;
    write_rc_bytes(image, series, choice);
    return image;
}

McuRecord model(std::int16_t series, const char* name)
{
    McuRecord record;
    record.series = series;
    record.mcu_name = name;
    return record;
}

} // namespace

TEST(RcLists, HoldTheFrequenciesAsStored)
{
    const auto wanted = rc_wanted_items();
    ASSERT_EQ(wanted.size(), 58U);
    EXPECT_EQ(wanted.front(), "2.4576 ");
    EXPECT_EQ(wanted.back(), "30.0000 ");
    const auto aimed_at = rc_test_items();
    ASSERT_EQ(aimed_at.size(), 51U);
    EXPECT_EQ(aimed_at[21], "13.5600");
    EXPECT_EQ(aimed_at[23], "13.5600");
    EXPECT_EQ(aimed_at.back(), "40.0000");
    EXPECT_EQ(rc_band_items(), (std::vector<std::string>{"5.50", "11.0592", "22.1184", "33.0"}));
    EXPECT_EQ(rc_voltage_items(), (std::vector<std::string>{"10", "11", "12", "13", "14", "15"}));
}

TEST(RcLists, OfPlacesHoldTheRangesUsed)
{
    EXPECT_EQ(rc_trim_items().size(), 64U);
    EXPECT_EQ(rc_trim_items().back(), "63");
    EXPECT_EQ(rc_divider_items().size(), 5U);
}

TEST(RcSetting, DividerFollowsTheBand)
{
    EXPECT_EQ(rc_divider_of_band(-1), 3);
    EXPECT_EQ(rc_divider_of_band(1), 3);
    EXPECT_EQ(rc_divider_of_band(2), 4);
    EXPECT_EQ(rc_divider_of_band(3), 4);
}

TEST(RcSetting, GoesIntoBytes1And3And4)
{
    const OptionImage image = image_of(15, {2, 5, 0, 77});
    EXPECT_EQ(image.bytes[3][0], 2 * 64 + 48 + 5);
    EXPECT_EQ(image.bytes[4][0], 77);
    EXPECT_EQ(image.bytes[1][0], 0xFF);
    EXPECT_EQ(image_of(16, {2, 5, 6, 77}).bytes[1][0], 0xF9);
    EXPECT_EQ(image_of(16, {2, 5, 7, 77}).bytes[1][0], 0xF8);
}

TEST(RcSetting, NoLowVoltageChosenIsFive)
{
    EXPECT_EQ(image_of(15, {0, 0, -1, 0}).bytes[1][0], 0xFD);
    EXPECT_EQ(image_of(15, {0, 0, 8, 0}).bytes[1][0], 0xFD);
}

TEST(RcSetting, WithoutAChoiceCountsAsTheFirstItem)
{
    EXPECT_EQ(image_of(17, {}).bytes[3][0], 0x30);
    EXPECT_EQ(image_of(17, {}).bytes[4][0], 0);
}

TEST(RcSetting, OfSeries17LeavesByte1Alone) { EXPECT_EQ(image_of(17, {1, 1, 0, 0}).bytes[1][0], 0xFF); }

TEST(RcSetting, NumberWantedIsHeldToAByte)
{
    EXPECT_EQ(rc_wanted_byte("77"), 77);
    EXPECT_EQ(rc_wanted_byte("76.5"), 76);
    EXPECT_EQ(rc_wanted_byte("300"), 255);
    EXPECT_EQ(rc_wanted_byte("-1"), 0);
    EXPECT_EQ(rc_wanted_byte("not a number"), 0);
}

TEST(RcSetting, TouchesNoByteOfOtherFamilies)
{
    const OptionImage image = image_of(8, {0, 0, 0, 0});
    EXPECT_EQ(image.bytes[1][0], 0xFF);
    EXPECT_EQ(image.bytes[3][0], 0xFF);
    EXPECT_EQ(image.bytes[4][0], 0xFF);
}

TEST(LowVoltageList, GoesByTheSupply)
{
    EXPECT_EQ(low_voltage_items(model(16, "Holly-1")),
        (std::vector<std::string>{"4.64", "4.32", "4.05", "3.82", "3.61", "3.43", "3.28", "3.14"}));
    EXPECT_EQ(low_voltage_items(model(16, "Holly-1L")),
        (std::vector<std::string>{"3.08", "2.82", "2.61", "2.42", "2.26", "2.12", "2.00", "1.89"}));
    EXPECT_TRUE(low_voltage_items(model(8, "Larch-8")).empty());
}

TEST(OptionPins, OfferNoP3_6)
{
    const auto pins = option_pin_items();
    ASSERT_EQ(pins.size(), 15U);
    EXPECT_EQ(pins[13], "P3.5");
    EXPECT_EQ(pins[14], "P3.7");
}
