// The tools' pages in both languages. With VRK_PICTURES set to a folder, each is left there as a picture.
#include "whole_texts.h"
#include "window_bench.h"

#include "shell/events.h"

#include <QMenu>
#include <QMenuBar>

using namespace vrk;

namespace {

class ToolPage : public ::testing::TestWithParam<std::pair<const char*, bool>> { };

} // namespace

TEST_P(ToolPage, ShowsAllItsTextsWhole)
{
    const auto [key, english] = GetParam();
    WindowBench bench("/dev/null", english);
    choose_node(bench.shell, bench.form.tree("TreeViewDevice"), "Juniper-60Q");
    set_checked(bench.shell, bench.form.check_box("mnuProduction"), true);
    auto* strip = bench.find<QTabBar>("TabStrip1");
    QTest::mouseClick(strip, Qt::LeftButton, {}, strip->tabRect(bench.form.tabs("TabStrip1").find(key)).center());
    QTest::qWait(150);
    EXPECT_EQ(cut_off(*bench.window), "");
    const QString folder = qEnvironmentVariable("VRK_PICTURES");
    if (folder.isEmpty())
        return;
    EXPECT_TRUE(bench.window->grab().save(folder + "/" + key + (english ? "_en.png" : "_zh.png")));
}

INSTANTIATE_TEST_SUITE_P(BothLanguages, ToolPage,
    ::testing::Values(std::pair{"user_code", true}, std::pair{"user_code", false}, std::pair{"TJXZ", true},
        std::pair{"TJXZ", false}, std::pair{"ISP_DEMO", true}, std::pair{"ISP_DEMO", false}),
    [](const auto& test) { return std::string{test.param.first} + (test.param.second ? "InEnglish" : "InChinese"); });

TEST(ToolsMenu, ShowsTheControlsOfAProductionLine)
{
    WindowBench bench("/dev/null");
    EXPECT_FALSE(bench.form.list("combPins").visible());
    auto* action = bench.window->findChild<QAction*>("mnuProduction");
    ASSERT_NE(action, nullptr);
    EXPECT_EQ(action->text(), "Production controls");
    action->trigger();
    EXPECT_TRUE(bench.form.list("combPins").visible());
    EXPECT_TRUE(bench.form.button("comComp").visible());
    action->trigger();
    EXPECT_FALSE(bench.form.check_box("che_staple", 0).visible());
}
