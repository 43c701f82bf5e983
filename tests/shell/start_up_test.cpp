// How the window comes up, which pages it shows for which model, how it shrinks, and how it goes.
#include "bench.h"
#include "form/main_form.h"

#include "shell/about.h"
#include "shell/language.h"
#include "shell/start_up.h"

#include <gmock/gmock.h>

using namespace vrk;
using ::testing::ElementsAre;

namespace {

// The window as a first user finds it: no settings, nobody has touched it.
struct FirstStart : ::testing::TestWithParam<bool> {
    MemoryStore settings;
    Rehearsal bench{setup_of("Juniper-60Q"), &settings, GetParam()};
    MainForm& form = bench.shell.form;
    bool english = GetParam();

    std::string in(const char* chinese, const char* in_english) const { return english ? in_english : chinese; }
    std::vector<std::string> captions(const TabStrip& strip) const
    {
        std::vector<std::string> all;
        for (const TabStrip::Tab& tab : strip.tabs())
            all.push_back(tab.key + ": " + tab.caption);
        return all;
    }
    // By its name: not every model has a node in both trees.
    void choose_model(const char* model)
    {
        form.txtDevice.set_text(model);
        ASSERT_TRUE(apply_selected_device(bench.shell));
    }
    std::string caption(const TabStrip& strip, const char* key) const
    {
        return strip.tabs().at(static_cast<std::size_t>(strip.find(key))).caption;
    }
    // The frames of a strip's pages that are in view.
    std::vector<std::string> in_view(std::initializer_list<const Frame*> frames) const
    {
        std::vector<std::string> names;
        for (const Frame* frame : frames) {
            if (frame->visible())
                names.push_back(frame->name);
        }
        return names;
    }
    std::vector<std::string> left_in_view() const
    {
        return in_view({&form.fraAuto_Increase, &form.Frame9, &form.Frame12, &form.Frame8, &form.fraAboutHardWare,
            &form.Frame4, &form.Frame11, &form.Frame18});
    }
    std::vector<std::string> right_in_view() const
    {
        return in_view(
            {&form.Frame7, &form.frmDataFlash, &form.fraDebug, &form.Frame21, &form.Frame22, &form.fra_Batch_quantity});
    }
    void select(TabStrip& strip, const char* key)
    {
        ASSERT_EQ(choose_tab(bench.shell, strip, strip.find(key)), Touch::taken);
    }
};

INSTANTIATE_TEST_SUITE_P(Both, FirstStart, ::testing::Bool(),
    [](const auto& test) { return std::string{test.param ? "English" : "Chinese"}; });

} // namespace

TEST_P(FirstStart, StandsOnTheFirstModelWithEmptyBuffersAndTheDownloadFree)
{
    EXPECT_EQ(form.txtDevice.text(), "Hazel-1");
    EXPECT_EQ(form.TreeViewDevice.selected_key(), "Hazel-1");
    EXPECT_TRUE(form.comDownload[0].enabled());
    EXPECT_FALSE(form.comStop_Download.enabled());
    EXPECT_EQ(form.labKbyte.caption(), "");
    EXPECT_EQ(form.textMsg.text(), "");
    EXPECT_FALSE(bench.shell.file_loaded);
    EXPECT_THAT(
        std::vector<std::uint8_t>(bench.shell.code_buffer.data.begin(), bench.shell.code_buffer.data.begin() + 1024),
        ::testing::Each(0));
}

TEST_P(FirstStart, HidesTheControlsOfAProductionLine)
{
    EXPECT_FALSE(form.labTJXZ[3].visible());
    EXPECT_FALSE(form.combPins.visible());
    EXPECT_FALSE(form.comComp.visible());
    for (const CheckBox& box : form.che_staple)
        EXPECT_FALSE(box.visible()) << box.full_name();
    EXPECT_TRUE(form.labTJXZ[0].visible());
    EXPECT_TRUE(form.labTJXZ[1].visible());
    EXPECT_EQ(form.combPins.index_chosen(), 9);
}

TEST_P(FirstStart, HasItsListsAndStepsWhereTheyBelong)
{
    EXPECT_EQ(form.cobBaudMax.index_chosen(), 0);
    EXPECT_EQ(form.comWDT_Prescalar[0].index_chosen(), 7);
    for (const ScrollBar& bar : form.vscFile) {
        EXPECT_EQ(bar.large_step, 16);
        EXPECT_EQ(bar.small_step, 1);
    }
    EXPECT_EQ(form.window.width, 12000);
    EXPECT_EQ(form.window.height, 9045);
    EXPECT_EQ(form.window.frame24_width, 2000);
}

TEST_P(FirstStart, TakesNoMoreThan999CharactersIntoTheBoxForStrayKeys)
{
    EXPECT_EQ(form.Text1.max_length, 999);
    EXPECT_EQ(type_text(bench.shell, form.Text1, std::string(1200, 'x')), Touch::taken);
    EXPECT_EQ(form.Text1.length(), 999);
}

TEST_P(FirstStart, NamesItsTabs)
{
    choose_model("Juniper-8");
    EXPECT_EQ(caption(form.TabStrip1, "ISP_DEMO"), "ISP DEMO");
    EXPECT_EQ(caption(form.TabStrip1, "TJXZ"), in("脱机下载", "Off-Line-ISP"));
    EXPECT_EQ(caption(form.TabStrip2, "Debug1"), "Debug_SFR");
    EXPECT_EQ(caption(form.TabStrip2, "Debug2"), "Debug_xdata");
    EXPECT_EQ(caption(form.TabStrip2, "Debug_COM"), in("串口助手", "COM Tool"));
    EXPECT_EQ(caption(form.TabStrip2, "EEPROM_File"), "_no_") << "the model has no EEPROM of its own";
    choose_model("Fir-1");
    EXPECT_EQ(caption(form.TabStrip2, "EEPROM_File"), in("EEPROM 文件", "EEPROM File Buffer"));
}

TEST_P(FirstStart, HidesTheTabsOfNewerToolsForTheOldestFamily)
{
    choose_model("Alder-64");
    ASSERT_EQ(bench.shell.selected.series, 0);
    for (const char* key : {"ISP_DEMO", "TJXZ"})
        EXPECT_EQ(caption(form.TabStrip1, key), "_no_");
    for (const char* key : {"Debug1", "Debug2"})
        EXPECT_EQ(caption(form.TabStrip2, key), "_no_");
}

TEST_P(FirstStart, ShowsThePageOfEachLeftTabAlone)
{
    choose_model("Juniper-60Q");
    // clang-format off
    constexpr std::pair<const char*, const char*> pages[] = {
        { "options", "Frame12" }, { "user_code", "Frame8" }, { "TJXZ", "Frame18" }, { "CheckMCUoption", "Frame4" },
        { "AUTO_INCREASE", "fraAuto_Increase" }, { "ISP_DEMO", "Frame11" }, { "store_buffer", "Frame9" },
        { "Hardware_Help", "fraAboutHardWare" },
    };
    // clang-format on
    ASSERT_EQ(form.TabStrip1.tabs().size(), std::size(pages));
    for (const auto& [key, frame] : pages) {
        select(form.TabStrip1, key);
        EXPECT_THAT(left_in_view(), ElementsAre(frame)) << key;
        EXPECT_TRUE(form.Frame16.visible()) << "beep and repeat stand under each of them";
    }
}

TEST_P(FirstStart, ShowsThePageOfEachRightTabAlone)
{
    choose_model("Fir-1");
    // clang-format off
    constexpr std::pair<const char*, const char*> pages[] = {
        { "tab_file", "Frame7" }, { "EEPROM_File", "frmDataFlash" }, { "Debug_COM", "fraDebug" },
        { "Debug1", "Frame21" }, { "Debug2", "Frame22" }, { "Batch_quantity", "fra_Batch_quantity" },
    };
    // clang-format on
    ASSERT_EQ(form.TabStrip2.tabs().size(), std::size(pages));
    for (const auto& [key, frame] : pages) {
        select(form.TabStrip2, key);
        EXPECT_THAT(right_in_view(), ElementsAre(frame)) << key;
    }
}

TEST_P(FirstStart, SelectsAnotherTabInPlaceOfAHiddenOne)
{
    choose_model("Alder-64");
    select(form.TabStrip1, "TJXZ");
    EXPECT_NE(form.TabStrip1.selected_key(), "TJXZ");
    EXPECT_THAT(left_in_view(), ElementsAre("Frame12"));
    select(form.TabStrip2, "Debug1");
    EXPECT_NE(form.TabStrip2.selected_key(), "Debug1");
    EXPECT_THAT(right_in_view(), ElementsAre("Frame7"));
}

TEST_P(FirstStart, LeavesAPageThatTheNextModelDoesNotHave)
{
    choose_model("Fir-1");
    select(form.TabStrip1, "ISP_DEMO");
    select(form.TabStrip2, "EEPROM_File");
    choose_model("Alder-64");
    EXPECT_THAT(left_in_view(), ElementsAre("Frame12"));
    EXPECT_THAT(right_in_view(), ElementsAre("Frame7"));
}

TEST_P(FirstStart, ShrinksToTheDownloadGroupAndBack)
{
    EXPECT_EQ(form.comMastWindow.caption(), in("收缩主窗体", "Shrink"));
    click(bench.shell, form.comMastWindow);
    EXPECT_EQ(form.comMastWindow.caption(), in("恢复主窗体", "Resume"));
    EXPECT_THAT(left_in_view(), ElementsAre());
    EXPECT_THAT(right_in_view(), ElementsAre());
    EXPECT_THAT(
        in_view({&form.FrameX[0], &form.FrameX[1], &form.FrameX[2], &form.FrameX[3], &form.Frame16}), ElementsAre());
    EXPECT_FALSE(form.TabStrip1.visible());
    EXPECT_FALSE(form.TabStrip2.visible());
    EXPECT_TRUE(form.FrameX[4].visible());
    EXPECT_TRUE(form.comClear_OK_Count.visible());
    EXPECT_TRUE(form.txtWrite_OK_Count.visible());

    click(bench.shell, form.comMastWindow);
    EXPECT_EQ(form.comMastWindow.caption(), in("收缩主窗体", "Shrink"));
    EXPECT_THAT(left_in_view(), ElementsAre("Frame12"));
    EXPECT_THAT(right_in_view(), ElementsAre("Frame7"));
    EXPECT_TRUE(form.FrameX[0].visible());
    EXPECT_TRUE(form.Frame16.visible());
}

TEST_P(FirstStart, StaysShrunkWhenATabOrAModelChangesUnderneath)
{
    click(bench.shell, form.comMastWindow);
    select(form.TabStrip1, "AUTO_INCREASE");
    choose_model("Fir-1");
    EXPECT_THAT(left_in_view(), ElementsAre());
    EXPECT_THAT(right_in_view(), ElementsAre());
    click(bench.shell, form.comMastWindow);
    EXPECT_THAT(left_in_view(), ElementsAre("fraAuto_Increase"));
}

TEST_P(FirstStart, AsksBeforeTheCountIsCleared)
{
    form.txtWrite_OK_Count.set_text("12");
    click(bench.shell, form.comClear_OK_Count); // its default is no
    EXPECT_EQ(form.txtWrite_OK_Count.text(), "12");
    bench.dialogs.replies.push_back(Reply::yes);
    click(bench.shell, form.comClear_OK_Count);
    EXPECT_EQ(form.txtWrite_OK_Count.text(), "0");
    EXPECT_EQ(settings.get("Settings", "Write_OK_Count", ""), "0");
    EXPECT_EQ(bench.dialogs.shown[1].box.text,
        in("您要把下载成功计数清0吗(Y/N)? ", "Do you want to clear the number of success programs to 0 (Y/N)?"));
    EXPECT_EQ(bench.dialogs.shown[1].box.icon, BoxIcon::question);
}

namespace {

struct Leaving : ::testing::Test {
    Bench bench{"Juniper-60Q"};

    // Lets the program go on until it has ended.
    void wind_down()
    {
        while (!bench.shell.unloaded)
            bench.loop.yield();
    }
};

} // namespace

TEST_F(Leaving, TakesItsTimeAndThenHasClosedThePortAndStoppedItsTimers)
{
    const std::int64_t asked_us = bench.loop.now_us();
    close_request(bench.shell);
    EXPECT_FALSE(bench.shell.unloaded) << "what runs is let wind down first";
    EXPECT_TRUE(bench.shell.TimerUnload.enabled());
    wind_down();
    EXPECT_EQ(bench.loop.now_us() - asked_us, 500'000);
    EXPECT_FALSE(bench.shell.port.is_open());
    EXPECT_FALSE(bench.shell.TimerUnload.enabled());
    EXPECT_FALSE(bench.shell.Timer3.enabled());
    EXPECT_FALSE(bench.shell.Timer12.enabled());
}

TEST_F(Leaving, StopsADownloadFirst)
{
    bench.open_code(Bench::pattern(8000));
    bench.power_up_after_ms(300);
    bool written_to = false;
    bench.after_ms(2000, [&] {
        written_to = bench.shell.running;
        close_request(bench.shell);
    });
    click(bench.shell, bench.form.button("comDownload", 0));
    EXPECT_TRUE(written_to);
    wind_down();
    EXPECT_FALSE(bench.shell.running);
    EXPECT_FALSE(bench.shell.port.is_open());
    EXPECT_FALSE(bench.shell.succeeded);
    EXPECT_THAT(bench.form.text_box("textMsg").text(), ::testing::HasSubstr("Operation stopped"));
}

TEST_F(Leaving, StoresWhereTheWindowStands)
{
    bench.shell.form.window.left = 4500;
    close_request(bench.shell);
    wind_down();
    EXPECT_EQ(bench.own_settings.get("Settings", "MainLeft", ""), "4500");
}

TEST_F(Leaving, StoresWhatWasChangedInTheLastMoment)
{
    choose_item(bench.shell, bench.shell.form.cobBaudMin, 3);
    close_request(bench.shell);
    wind_down();
    EXPECT_EQ(bench.own_settings.get("Settings", "BaudMin", ""), "3");
}

TEST(StoredPlace, IsUsedAsItStands)
{
    MemoryStore settings;
    settings.set("Settings", "MainLeft", "60000");
    settings.set("Settings", "MainTop", "-30000");
    settings.set("Settings", "Frame24_Width", "100");
    Rehearsal bench(setup_of("Juniper-60Q"), &settings);
    EXPECT_EQ(bench.shell.form.window.left, 60000);
    EXPECT_EQ(bench.shell.form.window.top, -30000);
    EXPECT_EQ(bench.shell.form.window.frame24_width, 300) << "the terminal's right pane keeps that much";
}

TEST(WindowTitle, NamesProgramFileModelAndPort)
{
    Bench bench("Juniper-60Q");
    const std::string program = "VRK-ISP V" + std::string{program_version()};
    EXPECT_EQ(window_title(bench.shell), program + " - Juniper-60Q - simulated");
    bench.open_code(Bench::pattern(100));
    EXPECT_THAT(
        window_title(bench.shell), ::testing::MatchesRegex(program + " - [0-9]*code.bin - Juniper-60Q - simulated"));
}

TEST(WindowTitle, MarksABufferThatAHandHasChangedUntilAFileIsOpenedAgain)
{
    Bench bench("Juniper-60Q");
    bench.open_code(Bench::pattern(100));
    bench.dialogs.replies.push_back(Reply::yes);
    TextBox& dump = bench.form.text_box("txtBuffer2");
    put_caret(bench.shell, dump, 9);
    press_key(bench.shell, dump, "A");
    EXPECT_THAT(window_title(bench.shell), ::testing::HasSubstr("code.bin* - "));
    bench.open_code(Bench::pattern(100));
    EXPECT_THAT(window_title(bench.shell), ::testing::HasSubstr("code.bin - "));
}
