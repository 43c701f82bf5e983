// The words that depend on a model: the voltages of the low-voltage rows.
#include "options/codec.h"
#include "options/option_tables.h"
#include "options/voltage_texts.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace vrk;

namespace {

// The page of a series in one language, with the texts of a model; an L at the end of the name is the 3 V class.
struct PageOfModel {
    OptionTable table;
    McuRecord record;
    int page;
    bool english;

    PageOfModel(std::int16_t series, const char* name, bool in_english = true)
        : page(option_page_of_series(series).page)
        , english(in_english)
    {
        load_option_tables(table, english);
        record.series = series;
        record.mcu_name = name;
    }
    PageOfModel& for_panel()
    {
        write_panel_voltages(table, page, record, english);
        return *this;
    }
    PageOfModel& for_report(char letter)
    {
        write_report_voltages(table, page, letter, record, english);
        return *this;
    }
    std::string cell(std::string_view key, OptionColumn column) const
    {
        return table.cell(page, find_key(table, page, key), column);
    }
    // Captions of the two buttons.
    std::string captions() const
    {
        return cell("LowU_Reset_YES_Clew", OptionColumn::value) + " | " +
            cell("LowU_Reset_NO_Clew", OptionColumn::value);
    }
    // What is said of them.
    std::string reports() const
    {
        return cell("LowU_Reset_YES", OptionColumn::report) + " | " + cell("LowU_Reset_NO", OptionColumn::report);
    }
    std::string label() const { return cell("Low_Voltage_Reset_Clew", OptionColumn::value); }
};

std::string captions(std::int16_t series, const char* name, bool english = true)
{
    return PageOfModel(series, name, english).for_panel().captions();
}

} // namespace

TEST(LowVoltageTexts, OfThePanelGoByFamilyAndSupply)
{
    EXPECT_EQ(captions(4, "Elm-8"), "< 3.7V | < 3.3V");
    EXPECT_EQ(captions(4, "Elm-8L"), "< 2.4V | < 2.0V");
    EXPECT_EQ(captions(8, "Larch-8"), "< 3.8V | < 3.3V");
    EXPECT_EQ(captions(8, "Larch-8L"), "< 2.4V | < 2.0V");
    EXPECT_EQ(captions(9, "Maple-1"), "< 4.1V | < 3.5V");
    EXPECT_EQ(captions(9, "Maple-1L"), "< 2.4V | < 2.1V");
    EXPECT_EQ(captions(10, "Oak-8"), "< 4.1V | < 3.7V");
    EXPECT_EQ(captions(10, "Oak-8L"), "< 2.4V | < 2.1V");
    EXPECT_EQ(captions(17, "Willow-2", false), "4.3V 以下 | 3.8V 以下");
    EXPECT_EQ(captions(17, "Willow-2L", false), "2.5V 以下 | 2.2V 以下");
}

TEST(LowVoltageTexts, OfWillowStayAsThePageHasThemInEnglish)
{
    EXPECT_EQ(captions(17, "Willow-2"), "< 3.8V | < 3.3V");
    EXPECT_EQ(captions(17, "Willow-2L"), "< 3.8V | < 3.3V");
}

TEST(LowVoltageTexts, OfTheOldestFamiliesAreShorterInChinese)
{
    EXPECT_EQ(PageOfModel(3, "Cedar-8", false).for_panel().reports(), "3.7V 以下复位 | 3.3V 以下复位");
    EXPECT_EQ(
        PageOfModel(8, "Larch-8", false).for_panel().reports(), "电源电压低于 3.8V 复位 | 电源电压低于 3.3V 复位");
    EXPECT_EQ(PageOfModel(3, "Cedar-8").for_panel().reports(),
        "Low Voltage Reset, when MCU-VCC < 3.7V | Low Voltage Reset, when MCU-VCC < 3.3V");
}

TEST(LowVoltageTexts, OfTheOldestFamiliesNameTheFirmware)
{
    EXPECT_EQ(PageOfModel(3, "Cedar-8", false).for_panel().label(), "低压复位电压(固件版本>5.4有效)");
    EXPECT_EQ(PageOfModel(5, "Fir-8", false).for_panel().label(), "低压复位电压(固件版本>5.7有效)");
    EXPECT_EQ(PageOfModel(5, "Fir-8").for_panel().label(), "Low Voltage Reset, when MCU-VCC");
}

TEST(LowVoltageTexts, OfTheResetPinFamiliesTellPinAndThreshold)
{
    const PageOfModel hazel = PageOfModel(6, "Hazel-1").for_panel();
    EXPECT_EQ(hazel.label(), "P1.2/RESET2:");
    EXPECT_EQ(hazel.captions(), "<1.33V Voltage Reset | Used as P1.2/LVD");
    EXPECT_EQ(hazel.cell("LowU_Reset_YES", OptionColumn::report), "P1.2/RESET2 pin voltage <1.33V Reset");
    const PageOfModel juniper = PageOfModel(7, "Juniper-8L", false).for_panel();
    EXPECT_EQ(juniper.label(), "P4.6/RESET2脚低于1.31V复位,固件>V6.0有效");
    EXPECT_EQ(juniper.captions(), "YES | NO");
    EXPECT_EQ(juniper.cell("LowU_Reset_YES", OptionColumn::report), "P4.6/RESET2 脚低于 1.31V 复位");
}

TEST(LowVoltageTexts, OfAReportGoByLetterAndSupply)
{
    EXPECT_EQ(PageOfModel(8, "Larch-8").for_report('J').captions(), "< 3.8V | < 3.3V");
    EXPECT_EQ(PageOfModel(17, "Willow-2").for_report('J').captions(), "< 4.3V | < 3.8V");
    EXPECT_EQ(PageOfModel(17, "Willow-2L", false).for_report('R').captions(), "2.5V 以下 | 2.2V 以下");
    EXPECT_EQ(PageOfModel(10, "Oak-8L").for_report('L').captions(), "< 2.4V | < 2.1V");
    EXPECT_EQ(PageOfModel(4, "Elm-8L").for_report('G').captions(), "< 2.4V | < 2.0V");
}

TEST(LowVoltageTexts, OfLettersWithoutVoltagesStay)
{
    EXPECT_EQ(PageOfModel(7, "Juniper-8L").for_report('I').captions(), "<1.33V Voltage Reset | Used as P4.6/LVD");
    EXPECT_EQ(PageOfModel(6, "Hazel-1L").for_report('H').captions(), "<1.33V Voltage Reset | Used as P1.2/LVD");
}
