// The tree of models: what stands in it, and all that a pick does.
#include "bench.h"

#include "options/codec.h"

using namespace vrk;

namespace {

std::vector<std::string> family_texts(const NamedControls& form)
{
    std::vector<std::string> texts;
    for (const Tree::Node& node : form.tree("TreeViewDevice").nodes()) {
        if (node.parent.empty())
            texts.push_back(node.text);
    }
    return texts;
}

std::string device_shown(const Rehearsal& bench)
{
    return NamedControls(bench.shell.controls).text_box("txtDevice").text();
}

std::string tab(const NamedControls& form, const char* key)
{
    const int found = form.tabs("TabStrip2").find(key);
    return form.tabs("TabStrip2").tabs()[static_cast<std::size_t>(found)].caption;
}

struct Picked : Bench {
    explicit Picked(bool english = true)
        : Bench("Juniper-60Q", english)
    {
    }
    void open() { click(shell, form.text_box("txtDevice")); }
    void pick(const char* key) { EXPECT_EQ(choose_node(shell, form.tree("TreeViewDevice"), key), Touch::taken); }
};

} // namespace

TEST(DeviceTree, HasItsFamiliesInOrder)
{
    EXPECT_EQ(family_texts(Picked(false).form),
        (std::vector<std::string>{"Larch series", "Maple series", "Oak series", "Juniper series", "Hazel series",
            "Fir series", "Cedar series", "Elm series", "Birch series", "Rowan series", "Spruce series", "Alder series",
            "Aspen series"}));
}

TEST(DeviceTree, OfEnglishUsersHasTheSmallerSet)
{
    EXPECT_EQ(family_texts(Picked(true).form),
        (std::vector<std::string>{"Larch series", "Maple series", "Oak series", "Juniper series", "Hazel series",
            "Fir series", "Rowan series", "Spruce series"}));
}

TEST(DeviceTree, ListsTheModelsOfAFamilyInTheOrderOfTheCatalogue)
{
    const Picked bench;
    std::vector<std::string> listed;
    for (const Tree::Node& node : bench.form.tree("TreeViewDevice").nodes()) {
        if (node.parent == "FamilyMaple")
            listed.push_back(node.key);
    }
    std::vector<std::string> rows;
    for (int row = 0; row < McuTable::row_count; ++row) {
        if (bench.shell.mcu_table.cell(9, row, 13) == "1")
            rows.push_back(bench.shell.mcu_table.cell(9, row, 9));
    }
    EXPECT_EQ(listed, rows);
    EXPECT_EQ(listed.front(), "Maple-1");
}

TEST(DeviceTree, OffersNoModelOfAFamilyThatIsOnlyIdentified)
{
    const Picked bench(false);
    EXPECT_EQ(bench.form.tree("TreeViewDevice").find("Poplar-4L"), nullptr);
    EXPECT_EQ(bench.form.tree("TreeViewDevice").find("Holly-4"), nullptr);
    EXPECT_EQ(bench.form.tree("TreeViewDevice").find("Pine-32"), nullptr);
    EXPECT_EQ(bench.form.tree("TreeViewDevice").find("Willow-12R"), nullptr);
}

TEST(DeviceTree, DropsDownAndLocksTheBoxMeanwhile)
{
    Picked bench;
    bench.open();
    EXPECT_TRUE(bench.form.tree("TreeViewDevice").visible());
    EXPECT_FALSE(bench.form.text_box("txtDevice").enabled());
    bench.pick("Maple-4S");
    EXPECT_FALSE(bench.form.tree("TreeViewDevice").visible());
    EXPECT_TRUE(bench.form.text_box("txtDevice").enabled());
}

TEST(DeviceTree, ClickOnAFamilyChangesNothing)
{
    Picked bench;
    bench.open_code(Bench::pattern(64));
    bench.open();
    bench.pick("FamilyMaple");
    EXPECT_EQ(bench.form.text_box("txtDevice").text(), "Juniper-60Q");
    EXPECT_TRUE(bench.form.tree("TreeViewDevice").visible());
    EXPECT_TRUE(bench.shell.file_loaded);
    EXPECT_EQ(bench.shell.selected.mcu_name, "Juniper-60Q");
}

TEST(DeviceTree, EscClosesItWithoutAChange)
{
    Picked bench;
    bench.open();
    press_key(bench.shell, bench.form.tree("TreeViewDevice"), "Esc");
    EXPECT_FALSE(bench.form.tree("TreeViewDevice").visible());
    EXPECT_EQ(bench.form.text_box("txtDevice").text(), "Juniper-60Q");
}

TEST(DeviceTree, ClickInItsFrameClosesIt)
{
    Picked bench;
    bench.open();
    click(bench.shell, bench.form.frame("FrameX", 0));
    EXPECT_FALSE(bench.form.tree("TreeViewDevice").visible());
    EXPECT_TRUE(bench.form.text_box("txtDevice").enabled());
}

TEST(DevicePick, StartsWithEmptyBuffersAndTheModelsOwnPanel)
{
    Picked bench;
    bench.open_code(Bench::pattern(64));
    bench.open_data(Bench::pattern(64));
    bench.shell.last_talk.chip.target_ok = true;
    bench.pick("Maple-4S");
    EXPECT_EQ(bench.form.text_box("txtDevice").text(), "Maple-4S");
    EXPECT_EQ(bench.shell.selected.mcu_name, "Maple-4S");
    EXPECT_EQ(bench.shell.selected.series, 9);
    EXPECT_EQ(bench.code(0, 63), std::vector<std::uint8_t>(64, 0));
    EXPECT_FALSE(bench.shell.file_loaded);
    EXPECT_FALSE(bench.shell.data_buffer.loaded);
    EXPECT_FALSE(bench.shell.talk().chip.target_ok);
    EXPECT_TRUE(bench.form.list("comWDT_Prescalar", 1).visible()) << "the wait after wake-up is Maple's";
    EXPECT_TRUE(bench.shell.Timer3.enabled()) << "the pick is a setting";
}

TEST(DevicePick, ShowsTheDataTabByTheModelsDataFlash)
{
    Picked bench;
    EXPECT_EQ(tab(bench.form, "EEPROM_File"), "EEPROM File Buffer");
    bench.pick("Rowan-8");
    EXPECT_EQ(tab(bench.form, "EEPROM_File"), "_no_");
    EXPECT_FALSE(bench.form.button("comLoadDataFile").enabled());
    bench.pick("Maple-4S");
    EXPECT_EQ(tab(bench.form, "EEPROM_File"), "EEPROM File Buffer");
    EXPECT_TRUE(bench.form.button("comLoadDataFile").enabled());
}

TEST(DevicePick, ShowsTheOscillatorOfTheFamiliesThatHaveOne)
{
    Picked bench;
    bench.select("Holly-4");
    EXPECT_TRUE(bench.form.list("com_RC_frequency", 0).visible());
    bench.pick("Rowan-8");
    EXPECT_FALSE(bench.form.list("com_RC_frequency", 0).visible());
    EXPECT_EQ(bench.shell.selected.series, 12);
    EXPECT_FALSE(bench.shell.selected.cap_parity_even);
}

TEST(DevicePick, ClearsTheCheckPage)
{
    Picked bench;
    bench.form.label("LabLock", 2).set_caption("of the chip before");
    bench.pick("Maple-4S");
    EXPECT_EQ(bench.form.label("LabLock", 2).caption(), "");
    EXPECT_TRUE(bench.form.label("LabLock", 0).visible());
}

TEST(DevicePick, GivesElmSeriesTheOtherLowVoltageDefault)
{
    Picked bench(false);
    bench.pick("Elm-4R");
    EXPECT_TRUE(bench.form.option("Option8", 1).value());
    bench.pick("Elm-Series");
    EXPECT_TRUE(bench.form.option("Option8", 0).value());
    bench.pick("ElmL-Series");
    EXPECT_TRUE(bench.form.option("Option8", 0).value());
    bench.pick("Fir-8R");
    EXPECT_TRUE(bench.form.option("Option8", 0).value()) << "series 5 has it whatever the name";
}

TEST(DevicePick, OfAnUnknownNameTellsItAndKeepsTheRecord)
{
    Picked bench;
    bench.form.text_box("txtDevice").set_text("Nowhere-1");
    EXPECT_FALSE(apply_selected_device(bench.shell));
    EXPECT_EQ(bench.shell.selected.mcu_name, "Juniper-60Q");
    bench.dialogs.shown.clear();
}

TEST(DevicePick, DoesNothingWhileADownloadHoldsTheBox)
{
    Picked bench;
    bench.open_code(Bench::pattern(64));
    Touch touch = Touch::taken;
    bench.after_ms(200, [&] { touch = click(bench.shell, bench.form.text_box("txtDevice")); });
    bench.download();
    EXPECT_EQ(touch, Touch::busy);
    EXPECT_EQ(bench.form.text_box("txtDevice").text(), "Juniper-60Q");
}

TEST(StoredModel, IsChosenAtStart)
{
    sim::ChipSetup setup = setup_of("Juniper-60Q");
    MemoryStore store;
    store.set("Settings", "DeviceProducts", "Maple-4S");
    Rehearsal bench(setup, &store, true);
    EXPECT_EQ(device_shown(bench), "Maple-4S");
    EXPECT_EQ(bench.shell.selected.series, 9);
}

TEST(StoredModel, OfAChineseFamilyFallsBackForAnEnglishUser)
{
    MemoryStore store;
    store.set("Settings", "DeviceProducts", "Elm-4R");
    Rehearsal english(setup_of("Juniper-60Q"), &store, true);
    EXPECT_EQ(device_shown(english), "Hazel-1");
    EXPECT_EQ(english.shell.selected.mcu_name, "Hazel-1");
    Rehearsal chinese(setup_of("Juniper-60Q"), &store, false);
    EXPECT_EQ(device_shown(chinese), "Elm-4R");
}

// A look at the program in English used to cost a user the model.
TEST(StoredModel, OfAnotherLanguageStaysStoredUntilAnotherIsChosen)
{
    MemoryStore store;
    store.set("Settings", "DeviceProducts", "Elm-4R");
    Rehearsal english(setup_of("Juniper-60Q"), &store, true);
    english.loop.run_for_ms(1000); // the save that follows each start
    EXPECT_EQ(store.get("Settings", "DeviceProducts", ""), "Elm-4R");
    EXPECT_EQ(store.get("Settings", "BaudMin", ""), "8") << "everything else is saved";

    choose_node(english.shell, NamedControls{english.shell.controls}.tree("TreeViewDevice"), "Hazel-1");
    english.loop.run_for_ms(1000);
    EXPECT_EQ(store.get("Settings", "DeviceProducts", ""), "Hazel-1") << "the one that stood there, chosen by hand";
}

TEST(StoredModel, ThatNobodyKnowsFallsBack)
{
    MemoryStore store;
    store.set("Settings", "DeviceProducts", "FamilyMaple");
    Rehearsal bench(setup_of("Juniper-60Q"), &store, true);
    EXPECT_EQ(device_shown(bench), "Hazel-1");
}
