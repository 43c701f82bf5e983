// Options by their words: every choice of every page has a name of its own there, and a wrong one is answered with what
// comes near.
#include "options/option_words.h"

#include "catalog/ranges.h"
#include "catalog/rows.h"
#include "options/option_pages.h"
#include "options/option_sheet.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

using namespace vrk;

namespace {

McuRecord record_of(std::string_view name)
{
    McuTable table;
    load_mcu_tables(table, false);
    const auto found = locate_mcu_by_name(table, name);
    EXPECT_TRUE(found) << name;
    return read_mcu_row(table, found->series, found->row);
}

std::string chosen(const OptionSheet& sheet, std::string_view name)
{
    for (const OfferedOption& one : sheet.offered()) {
        if (one.name == name)
            return one.chosen;
    }
    return "(not offered)";
}

} // namespace

TEST(OptionWords, NameEachPairOfEveryPageOnce)
{
    for (const bool english : {false, true}) {
        for (const Page& page : option_pages(english)) {
            std::set<std::string_view> names;
            for (const Strip& strip : strips_of(page)) {
                if (strip.pair == nullptr)
                    continue;
                const OptionWords* words = words_of(*strip.pair);
                ASSERT_NE(words, nullptr) << "page " << page.number << ", " << strip.pair->label_key;
                EXPECT_TRUE(names.insert(words->option).second) << "page " << page.number << ", " << words->option;
                EXPECT_NE(words->first, words->second) << words->option;
            }
        }
    }
}

TEST(OptionWords, ChooseWhatBelongsTogether)
{
    OptionSheet sheet(record_of("Juniper-60Q"), true);
    EXPECT_EQ(chosen(sheet, "clock-source"), "external");
    ASSERT_FALSE(sheet.choose("reset-pin", "port"));
    EXPECT_EQ(chosen(sheet, "reset-pin"), "port");
    ASSERT_FALSE(sheet.choose("Clock-Source", "INTERNAL"));
    EXPECT_EQ(chosen(sheet, "clock-source"), "internal");
    EXPECT_EQ(chosen(sheet, "reset-pin"), "reset");
}

TEST(OptionWords, AnswerAWrongNameWithThoseNearIt)
{
    OptionSheet sheet(record_of("Juniper-60Q"), true);
    const auto fault = sheet.choose("clok-source", "internal");
    ASSERT_TRUE(fault);
    EXPECT_EQ(fault->en, "Juniper-60Q has no option 'clok-source'; near it: clock-source");
    EXPECT_EQ(fault->zh, "Juniper-60Q 没有选项 'clok-source'；相近的有: clock-source");
    EXPECT_EQ(chosen(sheet, "clock-source"), "external");
}

TEST(OptionWords, AnswerAWrongChoiceWithThoseThereAre)
{
    OptionSheet sheet(record_of("Juniper-60Q"), true);
    EXPECT_EQ(sheet.choose("clock-source", "internl")->en, "clock-source has no choice 'internl'; near it: internal");
    EXPECT_EQ(sheet.choose("clock-source", "x")->en, "clock-source has no choice 'x'; there are: internal, external");
    EXPECT_EQ(sheet.choose("watchdog-divider", "999")->en,
        "watchdog-divider has no choice '999'; there are: 2, 4, 8, 16, 32, 64, 128, 256");
    EXPECT_EQ(chosen(sheet, "watchdog-divider"), "256");
}

TEST(OptionWords, LeaveOutWhatAModelHasNot)
{
    const OptionSheet small(record_of("Elm-8R"), true);
    EXPECT_EQ(chosen(small, "unused-code"), "(not offered)");
    EXPECT_EQ(chosen(OptionSheet(record_of("Elm-28R"), true), "unused-code"), "ff");
    EXPECT_EQ(chosen(small, "rc-target"), "(not offered)");
    EXPECT_EQ(chosen(OptionSheet(record_of("Holly-4"), true), "rc-target"), "11.059");
}

TEST(OptionWords, TakeAFrequencyOfTheOscillatorInItsRangeOnly)
{
    OptionSheet sheet(record_of("Holly-4"), true);
    EXPECT_FALSE(sheet.choose("rc-target", "12.5"));
    EXPECT_EQ(sheet.rc_target_mhz(), 12.5);
    EXPECT_EQ(sheet.choose("rc-target", "0.5")->en, "rc-target has no choice '0.5'; there are: 1..100");
    EXPECT_TRUE(sheet.choose("rc-byte", "256"));
    EXPECT_EQ(sheet.rc_target_mhz(), 12.5);
}
