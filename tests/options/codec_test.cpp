#include "options/codec.h"
#include "options/option_tables.h"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <vector>

using namespace vrk;

namespace {

struct Family {
    const char* name;
    std::int16_t series;
};
constexpr Family one_of_each_page[] = {{"Alder", 0}, {"Birch", 2}, {"Rowan", 12}, {"Cedar", 3}, {"Elm", 4}, {"Fir", 5},
    {"Hazel", 6}, {"Juniper", 7}, {"Larch", 8}, {"Maple", 9}, {"Oak", 10}, {"Poplar", 15}, {"Willow", 17}};

OptionTable table_in(bool english)
{
    OptionTable table;
    load_option_tables(table, english);
    return table;
}

// Bits by byte that some row of the page writes.
std::vector<int> bits_of_rows(const OptionTable& table, OptionPage page)
{
    std::vector<int> bits(option_rows, 0);
    for (int row = 0; row <= page.last_row; ++row) {
        if (const auto code = parse_bit_code(table.cell(page.page, row, OptionColumn::bit_code)))
            bits[static_cast<std::size_t>(code->byte)] |= 1 << code->bit;
    }
    return bits;
}

std::vector<int> rows_with_code(const OptionTable& table, OptionPage page)
{
    std::vector<int> rows;
    for (int row = 0; row <= page.last_row; ++row) {
        if (!table.cell(page.page, row, OptionColumn::bit_code).empty())
            rows.push_back(row);
    }
    return rows;
}

void choose_rows(OptionTable& table, OptionPage page, const std::vector<int>& rows)
{
    clear_snapshot(table, page.page);
    for (const int row : rows)
        table.set_cell(page.page, row, OptionColumn::snapshot, "True");
}

// Builds from the rows chosen, gives the bytes to a chip, and tells what is wrong with what it reads back.
std::string round_trip_fault(OptionTable& table, std::int16_t series, const std::vector<int>& chosen)
{
    const OptionPage page = option_page_of_series(series);
    const std::vector<int> touched = bits_of_rows(table, page);
    OptionImage image;
    StatusBytes chip{};
    choose_rows(table, page, chosen);
    reset_option_bytes(image, *option_group(series));
    write_chosen_bits(image, chosen_rows(table, page));
    for (std::size_t i = 0; i < chip.size(); ++i) {
        if (((image.bytes[i][0] ^ image.bytes[i][1]) & ~touched[i]) != 0)
            return "byte " + std::to_string(i) + " has changed beside the bits of its rows";
        chip[i] = image.bytes[i][0];
    }
    decode_option_bytes(table, page, chip);
    for (const int row : chosen) {
        if (table.cell(page.page, row, OptionColumn::snapshot) != "1")
            return table.cell(page.page, row, OptionColumn::key) + " does not come back";
    }
    return "";
}

std::string fault_of_single_rows(bool english, const Family& family)
{
    OptionTable table = table_in(english);
    std::string faults;
    for (const int row : rows_with_code(table, option_page_of_series(family.series)))
        faults += round_trip_fault(table, family.series, {row});
    return faults;
}

// A choice of every pair at random, thousands of times.
std::string fault_of_random_choices(bool english, const Family& family, std::uint32_t seed)
{
    OptionTable table = table_in(english);
    const OptionPage page = option_page_of_series(family.series);
    std::map<std::string, std::vector<int>> rows_of_bit;
    for (const int row : rows_with_code(table, page))
        rows_of_bit[table.cell(page.page, row, OptionColumn::bit_code).substr(0, 3)].push_back(row);
    std::mt19937 random{seed};
    for (int run = 0; run < 2000; ++run) {
        std::vector<int> chosen;
        for (const auto& [bit, rows] : rows_of_bit)
            chosen.push_back(rows[random() % rows.size()]);
        const std::string fault = round_trip_fault(table, family.series, chosen);
        if (!fault.empty())
            return fault + " in run " + std::to_string(run) + " of seed " + std::to_string(seed);
    }
    return "";
}

OptionChoices choices_of(std::initializer_list<const char*> codes)
{
    OptionChoices choices;
    for (const char* code : codes)
        choices.chosen.push_back({"", *parse_bit_code(code)});
    return choices;
}

int byte_of(std::int32_t series, const OptionChoices& choices, int row)
{
    return encode_options(series, choices).bytes[row][0];
}

} // namespace

TEST(BitCodes, AreByteBitAndValue)
{
    const auto code = parse_bit_code("1601");
    ASSERT_TRUE(code);
    EXPECT_EQ(code->byte, 16);
    EXPECT_EQ(code->bit, 0);
    EXPECT_TRUE(code->value);
}

TEST(BitCodes, OutOfRangeArePassedOver)
{
    EXPECT_FALSE(parse_bit_code(""));
    EXPECT_FALSE(parse_bit_code("1700"));
    EXPECT_FALSE(parse_bit_code("0180"));
    EXPECT_FALSE(parse_bit_code("01x0"));
    EXPECT_FALSE(parse_bit_code("010"));
}

TEST(OptionCodec, BadCodeInATableChangesNoByte)
{
    OptionTable table = table_in(true);
    table.set_cell(0, 2, OptionColumn::bit_code, "1731");
    choose_rows(table, option_page_of_series(0), {2});
    OptionChoices choices;
    choices.chosen = chosen_rows(table, option_page_of_series(0));
    for (const std::uint8_t byte : encode_options(0, choices).wanted())
        EXPECT_EQ(byte, 255);
}

TEST(OptionCodec, EveryRowAloneComesBack)
{
    for (const Family& family : one_of_each_page) {
        EXPECT_EQ(fault_of_single_rows(true, family), "") << family.name << ", English";
        EXPECT_EQ(fault_of_single_rows(false, family), "") << family.name << ", Chinese";
    }
}

TEST(OptionCodec, ThousandsOfRandomChoicesComeBack)
{
    for (const Family& family : one_of_each_page) {
        EXPECT_EQ(fault_of_random_choices(true, family, 11), "") << family.name << ", English";
        EXPECT_EQ(fault_of_random_choices(false, family, 12), "") << family.name << ", Chinese";
    }
}

TEST(StartValues, Are255ButForOneByteOfTheOlderFamilies)
{
    OptionImage image;
    reset_option_bytes(image, OptionGroup::B);
    EXPECT_EQ(image.bytes[1][0], 253);
    EXPECT_EQ(image.bytes[8][0], 255);
    reset_option_bytes(image, OptionGroup::C);
    EXPECT_EQ(image.bytes[1][0], 255);
    EXPECT_EQ(image.bytes[8][0], 247);
    EXPECT_EQ(image.bytes[3][2], 80);
    reset_option_bytes(image, OptionGroup::D);
    EXPECT_EQ(image.bytes[8][0], 247);
    EXPECT_EQ(image.bytes[2][2], 53);
    reset_option_bytes(image, OptionGroup::I);
    EXPECT_EQ(image.bytes[0][0], 255);
    EXPECT_EQ(image.bytes[0][2], 111);
}

TEST(OptionCodec, Family14HasNoTableAndNoBytes)
{
    EXPECT_FALSE(option_page_of_series(14).exists());
    EXPECT_FALSE(option_group(14));
    for (const std::uint8_t byte : encode_options(14, choices_of({"0100"})).wanted())
        EXPECT_EQ(byte, 0);
}

TEST(OptionCodec, ChosenRowsGoIntoTheirBitsAndNoOther)
{
    const OptionChoices choices = choices_of({"0800", "0810", "0350", "0330"}); // of Hazel
    EXPECT_EQ(byte_of(6, choices, 8), 0xF7 & ~3);
    EXPECT_EQ(byte_of(6, choices, 3), 0xFF & ~0x28);
    EXPECT_EQ(byte_of(6, choices, 2), 0xFF);
}

TEST(OptionCodec, NothingChosenLeavesTheStartValues)
{
    EXPECT_EQ(byte_of(2, {}, 1), 253);
    EXPECT_EQ(byte_of(3, {}, 8), 247);
    EXPECT_EQ(byte_of(7, {}, 8), 255);
}

TEST(OptionCodec, ChoicesTellWhichKeysTheyHold)
{
    OptionTable table = table_in(true);
    const OptionPage page = option_page_of_series(12);
    choose_rows(table, page, {find_key(table, page.page, "Double_speed_YES")});
    OptionChoices choices;
    choices.chosen = chosen_rows(table, page);
    EXPECT_TRUE(choices.holds("Double_speed_YES"));
    EXPECT_FALSE(choices.holds("Double_speed_NO"));
    EXPECT_EQ(byte_of(12, choices, 1), 0xFC);
}

// The choices at low voltage stand under one pair of keys in two strips; by its key alone the second would be lost.
TEST(OptionCodec, KeyThatStandsTwiceWritesTheBitOfItsRow)
{
    OptionTable table = table_in(false);
    const OptionPage page = option_page_of_series(15);
    const int first_no = find_key(table, page.page, "LVD_Reset_NO");
    int second_yes = first_no + 1;
    for (int row = first_no; row <= page.last_row; ++row) {
        if (table.cell(page.page, row, OptionColumn::bit_code) == "0160")
            second_yes = row;
    }
    choose_rows(table, page, {first_no, second_yes});
    OptionChoices choices;
    choices.chosen = chosen_rows(table, page);
    ASSERT_EQ(choices.chosen.size(), 2U);
    EXPECT_EQ(byte_of(15, choices, 1), 0xBD); // bit 7 set, bit 6 clear; the low three bits are the low voltage's
}

TEST(OptionCodec, WatchdogDividerIsAFieldOfItsByte)
{
    EXPECT_EQ(watchdog_code("2"), 0);
    EXPECT_EQ(watchdog_code("64"), 5);
    EXPECT_EQ(watchdog_code("256"), 7);
    EXPECT_EQ(watchdog_code("300"), 7);
    EXPECT_EQ(watchdog_byte(4), 3);
    EXPECT_EQ(watchdog_byte(10), 2);
    EXPECT_EQ(watchdog_byte(15), 4);
    EXPECT_EQ(watchdog_byte(2), -1);
    OptionChoices choices;
    choices.watchdog_divider = "8";
    EXPECT_EQ(byte_of(8, choices, 2), 0xFA);
    EXPECT_EQ(watchdog_divider(0xFA), 8);
    EXPECT_EQ(byte_of(3, choices, 3), 0xFA);
    EXPECT_EQ(byte_of(2, choices, 3), 0xFF);
}

TEST(OptionCodec, WakeUpDividerIsAFieldOfByte3)
{
    EXPECT_EQ(rc30k_code("8192"), 1);
    EXPECT_EQ(rc30k_code("anything"), 3);
    OptionChoices choices;
    EXPECT_EQ(byte_of(9, choices, 3), 0xFF);
    choices.rc30k_divider = "4096";
    EXPECT_EQ(byte_of(9, choices, 3), 0xCF);
    choices.rc30k_divider = "16384";
    EXPECT_EQ(byte_of(9, choices, 3), 0xEF);
}

TEST(OptionCodec, DividersOfTheListsAreTheirCodes)
{
    const auto watchdog = watchdog_divider_items();
    ASSERT_EQ(watchdog.size(), 8U);
    EXPECT_EQ(watchdog_code(watchdog[0]), 0);
    EXPECT_EQ(watchdog_code(watchdog[7]), 7);
    EXPECT_EQ(watchdog.front(), "2");
    EXPECT_EQ(watchdog.back(), "256");
    const auto rc30k = rc30k_divider_items();
    ASSERT_EQ(rc30k.size(), 4U);
    EXPECT_EQ(rc30k_code(rc30k[2]), 2);
    EXPECT_EQ(rc30k.front(), "4096");
    EXPECT_EQ(rc30k.back(), "32768");
}

TEST(OptionCodec, Row16MovesAwayInTheSixteenByteFamilies)
{
    const OptionImage image = encode_options(17, choices_of({"1600"}));
    EXPECT_EQ(image.bytes[16][0], 255);
    EXPECT_EQ(image.spare_row_16, 254);
    EXPECT_EQ(byte_of(3, choices_of({"1600"}), 16), 254);
}

TEST(OptionCodec, RcSettingGoesIntoTheBytesOfItsFamilies)
{
    OptionChoices choices;
    choices.rc = {2, 5, 0, 77};
    EXPECT_EQ(byte_of(15, choices, 3), 2 * 64 + 48 + 5);
    EXPECT_EQ(byte_of(15, choices, 4), 77);
    EXPECT_EQ(byte_of(15, choices, 1), 0xFF);
    EXPECT_EQ(byte_of(8, choices, 4), 0xFF);
}

TEST(OptionCodec, TeaksThreeWaysUseTwoBits)
{
    OptionTable table;
    load_teak_table(table, false);
    OptionImage image;
    const OptionPage page{6, 52};
    reset_option_bytes(image, OptionGroup::J);
    choose_rows(table, page, {find_key(table, 6, "Clear_EEPROM_00H")});
    write_chosen_bits(image, chosen_rows(table, page));
    EXPECT_EQ(image.bytes[8][0], 0xEF);
    reset_option_bytes(image, OptionGroup::J);
    choose_rows(table, page, {find_key(table, 6, "Clear_EEPROM_FFH")});
    write_chosen_bits(image, chosen_rows(table, page));
    EXPECT_EQ(image.bytes[8][0], 0xFD);
    choose_rows(table, page, {find_key(table, 6, "Clear_EEPROM_Spite")});
    image.bytes[8][0] = 0;
    write_chosen_bits(image, chosen_rows(table, page));
    EXPECT_EQ(image.bytes[8][0], 0x10);
}
