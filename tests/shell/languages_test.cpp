// Every control in both languages: none without words, none in the wrong language. Some captions carry both languages
// in one; they stand in a list.
#include "rehearsal/chip_of_model.h"
#include "rehearsal/rehearsal.h"

#include "catalog/ranges.h"
#include "form/main_form.h"
#include "shell/events.h"
#include "shell/language.h"
#include "shell/start_up.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

using namespace vrk;

namespace {

// Chinese characters, and the punctuation that goes with them.
bool has_chinese(std::string_view text)
{
    for (std::size_t i = 0; i + 2 < text.size(); ++i) {
        const auto first = static_cast<unsigned char>(text[i]);
        const auto second = static_cast<unsigned char>(text[i + 1]);
        const bool ideograph = first >= 0xE4 && first <= 0xE9;
        const bool punctuation =
            (first == 0xE3 && second == 0x80) || (first == 0xEF && (second == 0xBC || second == 0xBD));
        if (ideograph || punctuation)
            return true;
    }
    return false;
}

bool has_latin_word(std::string_view text)
{
    int letters = 0;
    for (const char c : text) {
        letters = std::isalpha(static_cast<unsigned char>(c)) != 0 ? letters + 1 : 0;
        if (letters == 2)
            return true;
    }
    return false;
}

// Both languages in one, in either edition.
const std::set<std::string> mixed = {
    "comDownload(0)", "comDownload(1)", "comStop_Download", "mnuTitle(1)", "mnuLanguage(0)", "mnuLanguage(1)"};

// Latin in the Chinese edition too: names, and what every user of these tools says in English.
const std::set<std::string> latin_in_chinese = {"comClear_OK_Count", "Frame7", "frmDataFlash", "Read24C512",
    "LabEdit_Clew", "labDebugPort", "LabISP_reange(0)", "LabISP_reange(1)", "Frame21", "Frame22", "Label23(3)",
    "che_DebugDTR", "che_DebugRTS", "txtBuffer2.hint"};

// And so are the words of some options.
const std::set<std::string> latin_options = {
    "YES", "NO", "High", "Low", "1/2 gain", "full gain", "RESET pin", "ALE pin"};

// Nothing is told yet, or nothing belongs there.
const std::set<std::string> empty_at_first = {"labKbyte", "labTimeLeft", "labLastVerdict", "labDebugFound",
    "labDebugLines", "labDebugPort", "labEditedCheckSum(0)", "labEditedCheckSum(1)", "labDumpFound(0)",
    "labDumpFound(1)", "LabUserCode(5)", "Label2(6)", "Frame12", "Frame15", "Frame20", "Frame23", "Label20",
    "fraAuto_Increase", "comDebugContinue(0)"};

bool may_be_empty(const Control& control)
{
    const bool told_by_a_chip = control.name == "LabLock" && control.index >= 1 && control.index <= 14;
    const bool of_other_models = control.name.starts_with("LabOption") || control.name.starts_with("Option") ||
        control.name.starts_with("Picture") || control.name.starts_with("Label8");
    const bool of_files = control.name == "mnuRecentFile" || control.name == "mnuRecentProject";
    const bool ticks_beside_a_field = control.name == "cheSpreadHex" || control.name == "optFillbyte";
    return told_by_a_chip || of_other_models || of_files || ticks_beside_a_field ||
        empty_at_first.contains(control.full_name());
}

struct Words {
    std::string place; // the control, or a part of it
    std::string text;
};

// What a control says in its edition; not what a user has typed or chosen.
std::vector<Words> words_of(const Control& control)
{
    std::vector<Words> words;
    if (const auto* captioned = dynamic_cast<const CaptionControl*>(&control))
        words.push_back({control.full_name(), captioned->caption()});
    if (const auto* box = dynamic_cast<const TextBox*>(&control); box != nullptr && !box->hint().empty())
        words.push_back({control.full_name() + ".hint", box->hint()});
    if (const auto* strip = dynamic_cast<const TabStrip*>(&control)) {
        for (const TabStrip::Tab& tab : strip->tabs())
            words.push_back({control.full_name() + "(" + tab.key + ")", tab.caption});
    }
    return words;
}

// One model of each family stands for its panel.
std::vector<std::string> a_model_of_each_family(const Shell& shell)
{
    std::vector<std::string> models;
    std::set<std::string> families;
    for (const Tree::Node& node : shell.form.TreeViewDevice.nodes()) {
        if (!node.parent.empty() && families.insert(node.parent).second)
            models.push_back(node.key);
    }
    return models;
}

sim::ChipSetup any_chip()
{
    McuTable table;
    load_mcu_tables(table, false);
    return chip_setup_of(table, "Juniper-60Q").value();
}

class Languages : public ::testing::TestWithParam<bool> {
protected:
    // Calls `look` with the words of each control, for a model of each family.
    template <typename Look> void for_all_words(Look look)
    {
        for (const std::string& model : a_model_of_each_family(bench.shell)) {
            ASSERT_EQ(choose_node(bench.shell, bench.shell.form.TreeViewDevice, model), Touch::taken);
            for (const Control* control : bench.shell.controls.all()) {
                for (const Words& words : words_of(*control))
                    look(*control, words);
            }
        }
    }

    Rehearsal bench{any_chip(), nullptr, GetParam()};
};

INSTANTIATE_TEST_SUITE_P(Both, Languages, ::testing::Bool(),
    [](const auto& test) { return std::string{test.param ? "English" : "Chinese"}; });

} // namespace

TEST_P(Languages, LeaveNoControlWithoutWords)
{
    std::set<std::string> empty;
    for_all_words([&](const Control& control, const Words& words) {
        if (words.text.empty() && !may_be_empty(control))
            empty.insert(words.place);
    });
    EXPECT_THAT(empty, ::testing::IsEmpty());
}

TEST_P(Languages, StandInNoControlOfTheOther)
{
    std::set<std::string> wrong;
    for_all_words([&](const Control&, const Words& words) {
        if (mixed.contains(words.place) || words.text == TabStrip::hidden_caption)
            return;
        const bool plain_name = latin_in_chinese.contains(words.place) || latin_options.contains(words.text) ||
            words.place.starts_with("TabStrip");
        const bool other = GetParam() ? has_chinese(words.text)
                                      : has_latin_word(words.text) && !has_chinese(words.text) && !plain_name;
        if (other)
            wrong.insert(words.place + ": " + words.text);
    });
    EXPECT_THAT(wrong, ::testing::IsEmpty());
}

TEST_P(Languages, HeadTheDumpsInTheirOwnWords)
{
    const std::string head = GetParam() ? "Address" : "地 址";
    EXPECT_EQ(bench.shell.form.txtBufferAddress[0].text(), head);
    EXPECT_EQ(bench.shell.form.txtBufferAddress[2].text(), head);
    EXPECT_EQ(bench.shell.form.txtBufferAddress[3].text(), " 00 01 02 03 04 05 06 07 08 09 0A 0B 0C 0D 0E 0F ");
}

TEST_P(Languages, HaveTheirWordsForTheButtonsWithTwoStates)
{
    MainForm& form = bench.shell.form;
    const bool english = GetParam();
    EXPECT_EQ(form.comSpreadAutoSend.caption(), english ? "Round Send" : "自动循环发送");
    EXPECT_EQ(form.comAutoSend.caption(), english ? "Repeat Send" : "自动发送");
    EXPECT_EQ(form.comOpenCOM[0].caption(), english ? "Open COM" : "打开串口");
    EXPECT_EQ(form.comMastWindow.caption(), english ? "Shrink" : "收缩主窗体");
}

namespace {

struct StoredLanguage : ::testing::Test {
    MemoryStore settings;
    Rehearsal bench{any_chip(), &settings, false};

    void choose(int language) { click(bench.shell, bench.shell.form.mnuLanguage[language]); }
};

} // namespace

TEST_F(StoredLanguage, IsChineseUntilAnotherIsChosen)
{
    EXPECT_FALSE(starts_in_english(settings, ""));
    EXPECT_TRUE(bench.shell.form.mnuLanguage[0].value());
    EXPECT_FALSE(settings.values.contains({"Settings", "Language"})) << "it is stored when it is chosen";
}

TEST_F(StoredLanguage, ComesIntoForceAtTheNextStart)
{
    choose(1);
    EXPECT_EQ(settings.get("Settings", "Language", ""), "en");
    ASSERT_EQ(bench.dialogs.shown.size(), 1U);
    EXPECT_THAT(bench.dialogs.shown[0].box.text, ::testing::HasSubstr("from its next start on"));
    EXPECT_EQ(bench.shell.form.mnuTitle[0].caption(), "工具") << "this run goes on as it began";
    EXPECT_TRUE(starts_in_english(settings, ""));

    Rehearsal next{any_chip(), &settings, starts_in_english(settings, "")};
    EXPECT_EQ(next.shell.form.mnuTitle[0].caption(), "Tools");
    EXPECT_TRUE(next.shell.form.mnuLanguage[1].value());
}

TEST_F(StoredLanguage, SaysNothingWhereItStaysAsItIs)
{
    choose(0);
    EXPECT_EQ(settings.get("Settings", "Language", ""), "zh");
    EXPECT_TRUE(bench.dialogs.shown.empty());
}

TEST_F(StoredLanguage, GivesWayToAWordForOneRunAndIsNotChangedByIt)
{
    choose(1);
    EXPECT_FALSE(starts_in_english(settings, "zh"));
    EXPECT_TRUE(starts_in_english(settings, "fr")) << "a word of neither is none";
    EXPECT_EQ(settings.get("Settings", "Language", ""), "en");
}

TEST_F(StoredLanguage, CannotBeChosenWhileASequenceRuns)
{
    bench.shell.running = true;
    EXPECT_EQ(click(bench.shell, bench.shell.form.mnuLanguage[1]), Touch::busy);
    bench.shell.running = false;
}
