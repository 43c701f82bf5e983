// The whole list of controls, held against the registry: kind, words in both languages, what can be used when.
#include "checklist.h"

#include "rehearsal/chip_of_model.h"
#include "rehearsal/rehearsal.h"

#include "catalog/ranges.h"
#include "form/main_form.h"
#include "shell/events.h"
#include "shell/panel_state.h"

#include <gtest/gtest.h>

using namespace vrk;

namespace {

sim::ChipSetup chip_of_the_list()
{
    McuTable table;
    load_mcu_tables(table, false);
    return chip_setup_of(table, std::string{checklist_model}).value();
}

struct ListedPanel : Rehearsal {
    explicit ListedPanel(bool english)
        : Rehearsal(chip_of_the_list(), nullptr, english)
    {
        choose_node(shell, shell.form.TreeViewDevice, std::string{checklist_model});
    }
    void put_into_state(std::size_t state)
    {
        shell.running = (state & 1U) != 0;
        set_locked(shell, (state & 2U) != 0);
    }
};

class EachLanguage : public ::testing::TestWithParam<bool> { };

INSTANTIATE_TEST_SUITE_P(Checklist, EachLanguage, ::testing::Bool(),
    [](const auto& test) { return std::string{test.param ? "English" : "Chinese"}; });

} // namespace

TEST(Checklist, EveryControlIsInTheRegistryAsWhatItIs)
{
    const ListedPanel panel(true);
    for_all_of_checklist([&](const ChecklistRow& row, const std::string& name) {
        const Control* control = panel.shell.controls.find_full(name);
        ASSERT_NE(control, nullptr) << name;
        EXPECT_EQ(kind_name(control->kind), kind_name(row.kind)) << name;
    });
}

TEST_P(EachLanguage, HasTheWordsOfEveryControl)
{
    const ListedPanel panel(GetParam());
    for_all_of_checklist([&](const ChecklistRow& row, const std::string& name) {
        const std::string_view wanted = in_language(GetParam(), row.caption);
        if (wanted.empty())
            return;
        const auto* control = dynamic_cast<const CaptionControl*>(panel.shell.controls.find_full(name));
        ASSERT_NE(control, nullptr) << name;
        EXPECT_EQ(control->caption(), wanted) << name;
    });
}

TEST(Checklist, EveryControlCanBeUsedInItsStatesOfThePanelAndInNoOther)
{
    ListedPanel panel(true);
    for (std::size_t state = 0; state < 4; ++state) {
        panel.put_into_state(state);
        for_all_of_checklist([&](const ChecklistRow& row, const std::string& name) {
            const Control* control = panel.shell.controls.find_full(name);
            ASSERT_NE(control, nullptr) << name;
            EXPECT_EQ(control->enabled(), row.enabled[state] == '1') << name << " in state " << state;
        });
    }
    panel.put_into_state(0);
}

// A script and a stored table know the button as a row of its own; it used to be found by its bare name alone.
TEST(Checklist, TheProjectsButtonIsFoundByItsRowToo)
{
    const ListedPanel panel(true);
    EXPECT_EQ(panel.shell.controls.find("comOpenBatchFile", 0), panel.shell.controls.find("comOpenBatchFile"));
}

TEST(Checklist, TheArrowBesideTheModelDropsTheTreeAndTakesItBack)
{
    ListedPanel panel(true);
    click(panel.shell, panel.form.button("Command3"));
    EXPECT_TRUE(panel.form.tree("TreeViewDevice").visible());
    EXPECT_FALSE(panel.form.text_box("txtDevice").enabled());
    click(panel.shell, panel.form.button("Command3"));
    EXPECT_FALSE(panel.form.tree("TreeViewDevice").visible());
    EXPECT_TRUE(panel.form.text_box("txtDevice").enabled());
}
