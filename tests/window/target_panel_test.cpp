// The simulated target beside the window: its panel is there while it is the chosen port.
#include "isp/target_panel.h"
#include "window_bench.h"

#include "shell/events.h"

using namespace vrk;

namespace {

struct PanelBench {
    explicit PanelBench(bool english = true)
        : ports(loop, {"/dev/null", "/dev/zero"})
        , shell(Platform{loop, ports, dialogs, settings})
    {
        shell.language_is_english = english;
        start_up(shell);
        window = std::make_unique<MainWindow>(shell);
        panel = new TargetPanel(*window, ports, "Juniper-60Q");
        window->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(window.get()));
        list = window->findChild<QComboBox*>("combCommPort");
    }
    // As a hand does: to an end of the list, by its key.
    void press(Qt::Key key)
    {
        list->setFocus();
        QTest::keyClick(list, key);
        QTest::qWait(60);
    }

    QtLoop loop;
    PortsWithTarget ports;
    QtDialogs dialogs;
    MemoryStore settings;
    Shell shell;
    const NamedControls form{shell.controls};
    std::unique_ptr<MainWindow> window;
    TargetPanel* panel;
    QComboBox* list;
};

} // namespace

// It was always one step behind: the panel came when another port was chosen, and the switch was out of reach.
TEST(TargetPanel, IsThereWithItsSwitchWhileTheSimulatedTargetIsChosen)
{
    PanelBench bench;
    bench.press(Qt::Key_Home);
    ASSERT_EQ(bench.list->currentText(), "/dev/null");
    EXPECT_FALSE(bench.panel->isVisible());
    bench.press(Qt::Key_End);
    ASSERT_EQ(bench.list->currentText(), PortsWithTarget::path);
    EXPECT_TRUE(bench.panel->isVisible());
    EXPECT_TRUE(bench.window->findChild<QPushButton*>("simulatedPower")->isVisible());
    if (const QString folder = qEnvironmentVariable("VRK_PICTURES"); !folder.isEmpty())
        bench.window->grab().save(folder + "/simulated_target.png");
    bench.press(Qt::Key_Up);
    EXPECT_FALSE(bench.panel->isVisible());
}

TEST(TargetPanel, FollowsAPortThatTheProgramChooses)
{
    PanelBench bench;
    const auto last = static_cast<int>(bench.form.list("combCommPort").items().size()) - 1;
    bench.form.list("combCommPort").choose(last);
    EXPECT_TRUE(QTest::qWaitFor([&] { return bench.panel->isVisible(); }));
    bench.form.list("combCommPort").choose(0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !bench.panel->isVisible(); }));
}

// The newcomer's first failure was a chip of another model than the one just chosen.
TEST(TargetPanel, FollowsTheModelUntilAnotherChipIsPicked)
{
    PanelBench bench;
    auto* chip = bench.window->findChild<QComboBox*>("simulatedModel");
    choose_node(bench.shell, bench.form.tree("TreeViewDevice"), "Oak-8");
    bench.window->binder().refresh();
    EXPECT_EQ(chip->currentText(), "Oak-8");
    EXPECT_EQ(bench.ports.chip().setup().model.name, "Oak-8");

    chip->setCurrentText("Fir-1");
    emit chip->activated(chip->currentIndex());
    EXPECT_EQ(bench.ports.chip().setup().model.name, "Fir-1");
    choose_node(bench.shell, bench.form.tree("TreeViewDevice"), "Maple-1");
    bench.window->binder().refresh();
    EXPECT_EQ(bench.ports.chip().setup().model.name, "Fir-1") << "it was picked by hand";
}

TEST(TargetPanel, KeepsItsChipUnderPower)
{
    PanelBench bench;
    auto* power = bench.window->findChild<QPushButton*>("simulatedPower");
    auto* chip = bench.window->findChild<QComboBox*>("simulatedModel");
    const std::string before = bench.ports.chip().setup().model.name;
    power->setChecked(true);
    EXPECT_FALSE(chip->isEnabled());
    choose_node(bench.shell, bench.form.tree("TreeViewDevice"), "Oak-8");
    bench.window->binder().refresh();
    EXPECT_EQ(bench.ports.chip().setup().model.name, before);
    power->setChecked(false);
    EXPECT_TRUE(chip->isEnabled());
}

TEST(TargetPanel, SpeaksTheLanguageOfTheWindow)
{
    PanelBench english;
    EXPECT_EQ(english.panel->title(), "Simulated target");
    EXPECT_EQ(english.window->findChild<QPushButton*>("simulatedPower")->text(), "Power: off");
    PanelBench chinese(false);
    EXPECT_EQ(chinese.panel->title(), "模拟目标板");
    EXPECT_EQ(chinese.window->findChild<QPushButton*>("simulatedPower")->text(), "电源: 关");
    for (const QLabel* label : chinese.panel->findChildren<QLabel*>())
        EXPECT_FALSE(label->text().contains("of")) << label->text().toStdString();
}
