#include "options/panel_bench.h"

#include "options/option_report.h"

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
    std::vector<int> bits(OptionState::rows, 0);
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
    OptionState options;
    choose_rows(table, page, chosen);
    reset_option_bytes(options, *option_group(series));
    write_chosen_bits(options, table, page);
    for (std::size_t i = 0; i < OptionState::rows; ++i) {
        if (((options.option_bytes[i][0] ^ options.option_bytes[i][1]) & ~touched[i]) != 0)
            return "byte " + std::to_string(i) + " has changed beside the bits of its rows";
        options.status_bytes[i] = options.option_bytes[i][0];
    }
    decode_option_bytes(table, page, options);
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
    OptionState options;
    choose_rows(table, option_page_of_series(0), {2});
    reset_option_bytes(options, OptionGroup::A);
    write_chosen_bits(options, table, option_page_of_series(0));
    for (const auto& row : options.option_bytes)
        EXPECT_EQ(row[0], 255);
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
    OptionState options;
    reset_option_bytes(options, OptionGroup::B);
    EXPECT_EQ(options.option_bytes[1][0], 253);
    EXPECT_EQ(options.option_bytes[8][0], 255);
    reset_option_bytes(options, OptionGroup::C);
    EXPECT_EQ(options.option_bytes[1][0], 255);
    EXPECT_EQ(options.option_bytes[8][0], 247);
    EXPECT_EQ(options.option_bytes[3][2], 80);
    reset_option_bytes(options, OptionGroup::D);
    EXPECT_EQ(options.option_bytes[8][0], 247);
    EXPECT_EQ(options.option_bytes[2][2], 53);
    reset_option_bytes(options, OptionGroup::I);
    EXPECT_EQ(options.option_bytes[0][0], 255);
    EXPECT_EQ(options.option_bytes[0][2], 111);
}

TEST(OptionCodec, Family14HasNoTableAndChangesNothing)
{
    PanelBench bench;
    bench.select_series(14);
    bench.shell.options.option_bytes[1][0] = 0x5A;
    build_option_bytes(bench.shell);
    EXPECT_EQ(bench.byte(1), 0x5A);
    EXPECT_EQ(find_key(bench.shell, "Clew"), -1);
}

TEST(OptionCodec, PanelAsItComesUpGivesItsDefaults)
{
    PanelBench bench("Juniper-60Q");
    build_option_bytes(bench.shell);
    EXPECT_EQ(bench.byte(0), 0xFF);
    EXPECT_EQ(bench.byte(1), 0x7F); // the extra reset delay
    EXPECT_EQ(bench.byte(2), 0xF7); // stops in idle; divider 256
    EXPECT_EQ(bench.byte(8), 0xFF);
    EXPECT_EQ(bench.byte(16), 0xFF);
}

TEST(OptionCodec, ChosenButtonsOfThePanelGoIntoTheirBits)
{
    PanelBench bench("Hazel-1");
    bench.choose("Option3", 1);
    bench.choose("Option4", 0);
    bench.choose("Option11", 0);
    build_option_bytes(bench.shell);
    EXPECT_EQ(bench.byte(8), 0xF7 & ~3); // pins must be 0/0, data flash cleared
    EXPECT_EQ(bench.byte(3), 0xFF & ~0x28); // runs at power-up, stops in idle
    EXPECT_TRUE(is_chosen(bench.shell, "Power_On_Run_WDT_YES"));
    EXPECT_FALSE(is_chosen(bench.shell, "Power_On_Run_WDT_NO"));
}

TEST(OptionCodec, SpeedChoiceOfTheOlderFamiliesIsASnapshot)
{
    PanelBench bench("Rowan-4", true);
    build_option_bytes(bench.shell);
    EXPECT_FALSE(is_chosen(bench.shell, "Double_speed_YES"));
    bench.choose("Option0", 0);
    build_option_bytes(bench.shell);
    EXPECT_TRUE(is_chosen(bench.shell, "Double_speed_YES"));
    EXPECT_EQ(bench.byte(1), 0xFC);
}

TEST(OptionCodec, AllChoicesOfPage2LieInByte1)
{
    PanelBench bench("Rowan-4", false);
    for (const char* button : {"Option0", "Option1", "Option4", "Option5", "Option10", "Option11"})
        bench.choose(button, 0);
    bench.choose("Option3", 1);
    build_option_bytes(bench.shell);
    EXPECT_EQ(bench.byte(1), 0x00);
    EXPECT_EQ(bench.byte(8), 0xFF);
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
    PanelBench bench("Larch-8");
    bench.form.comWDT_Prescalar[0].set_text("8");
    build_option_bytes(bench.shell);
    EXPECT_EQ(bench.byte(2) & 7, 2);
    EXPECT_EQ(watchdog_divider(static_cast<std::int16_t>(bench.byte(2))), 8);
}

TEST(OptionCodec, WakeUpDividerIsAFieldOfByte3)
{
    PanelBench bench("Maple-5");
    build_option_bytes(bench.shell);
    EXPECT_EQ(bench.byte(3), 0xFF);
    bench.form.comWDT_Prescalar[1].set_text("4096");
    build_option_bytes(bench.shell);
    EXPECT_EQ(bench.byte(3), 0xCF);
    EXPECT_EQ(rc30k_code("8192"), 1);
    EXPECT_EQ(rc30k_code("anything"), 3);
}

TEST(OptionCodec, Row16MovesAwayInTheSixteenByteFamilies)
{
    PanelBench bench("Willow-2");
    build_option_bytes(bench.shell);
    EXPECT_EQ(bench.byte(16), 255);
    EXPECT_EQ(bench.shell.options.spare_row_16, 255);
}

TEST(OptionCodec, BuildForgetsTheBuildBefore)
{
    PanelBench bench("Elm-8");
    bench.choose("Option4", 0);
    build_option_bytes(bench.shell);
    EXPECT_EQ(bench.byte(16), 0xFE);
    bench.choose("Option4", 1);
    build_option_bytes(bench.shell);
    EXPECT_EQ(bench.byte(16), 0xFF);
}

TEST(OptionCodec, RowsThatOnlyHoldAPlaceHaveNoSnapshotAndNoEffect)
{
    PanelBench bench("Elm-8");
    bench.form.Option3[0].set_value(true);
    snapshot_controls(bench.shell);
    const int note = bench.row("Clear_EEPROM_Spite") + 1;
    EXPECT_EQ(bench.shell.option_table.cell(4, note + 2, OptionColumn::key), "Clew");
    EXPECT_EQ(bench.shell.option_table.cell(4, note + 2, OptionColumn::snapshot), "");
}

TEST(OptionCodec, TeaksThreeWaysUseTwoBits)
{
    OptionTable table;
    load_teak_table(table, false);
    OptionState options;
    const OptionPage page{6, 52};
    reset_option_bytes(options, OptionGroup::J);
    choose_rows(table, page, {find_key(table, 6, "Clear_EEPROM_00H")});
    write_chosen_bits(options, table, page);
    EXPECT_EQ(options.option_bytes[8][0], 0xEF);
    reset_option_bytes(options, OptionGroup::J);
    choose_rows(table, page, {find_key(table, 6, "Clear_EEPROM_FFH")});
    write_chosen_bits(options, table, page);
    EXPECT_EQ(options.option_bytes[8][0], 0xFD);
    choose_rows(table, page, {find_key(table, 6, "Clear_EEPROM_Spite")});
    options.option_bytes[8][0] = 0;
    write_chosen_bits(options, table, page);
    EXPECT_EQ(options.option_bytes[8][0], 0x10);
}
