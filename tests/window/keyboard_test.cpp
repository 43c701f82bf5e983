// The window without a mouse, and without a screen that one can read.
#include "window_bench.h"

#include "shell/device.h"
#include "shell/events.h"

#include <QAccessible>

#include <QTreeWidget>

#include <algorithm>
#include <map>
#include <set>

using namespace vrk;

namespace {

struct KeyBench : WindowBench {
    explicit KeyBench(const QString& port = "/dev/null", bool english = true)
        : WindowBench(port, english)
    {
    }
    void settle() { QTest::qWait(120); } // two redraws
    void choose(const char* model)
    {
        form.text_box("txtDevice").set_text(model);
        ASSERT_TRUE(apply_selected_device(shell));
        settle();
    }
    // Keys that belong to the whole window need it in front; behind a dialog a window manager sees to that.
    void come_to_the_front()
    {
        window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    }
    std::string count() const { return form.text_box("txtWrite_OK_Count").text(); }
    void press(Qt::Key key) { QTest::keyClick(focus(), key); }
    void tab_to(const QString& name)
    {
        for (int stop = 0; focus() == nullptr || focus()->objectName() != name; ++stop) {
            ASSERT_LT(stop, 200) << name.toStdString() << " is not reached";
            QTest::keyClick(focus() != nullptr ? focus() : window.get(), Qt::Key_Tab);
        }
    }
    QWidget* focus() const { return window->focusWidget(); }
    // Once around with the Tab key, from the model's box.
    std::vector<QWidget*> stops()
    {
        find<QLineEdit>("txtDevice")->setFocus();
        std::vector<QWidget*> all;
        do {
            all.push_back(focus());
            QTest::keyClick(focus(), Qt::Key_Tab);
        } while (focus() != all.front() && all.size() < 500);
        return all;
    }
    // A page of each strip at a time, until all have been seen.
    template <typename Look> void for_all_pages(Look look)
    {
        for (const char* name : {"TabStrip1", "TabStrip2"}) {
            TabStrip& strip = form.tabs(name);
            for (int tab = 0; tab < static_cast<int>(strip.tabs().size()); ++tab) {
                choose_tab(shell, strip, tab);
                settle();
                look(strip.tabs()[static_cast<std::size_t>(tab)].key);
            }
        }
    }
};

QAccessible::Role role_of(const Control& control, const QWidget& widget)
{
    switch (control.kind) {
    case ControlKind::TextBox:
        return QAccessible::EditableText;
    case ControlKind::CheckBox:
        return QAccessible::CheckBox;
    case ControlKind::OptionButton:
        return QAccessible::RadioButton;
    case ControlKind::ComboBox:
        return QAccessible::ComboBox;
    case ControlKind::Button:
        return QAccessible::Button;
    case ControlKind::TabStrip:
        return QAccessible::PageTabList;
    case ControlKind::ListBox:
        return QAccessible::List;
    default:
        ADD_FAILURE() << widget.objectName().toStdString() << " is no place to go to";
        return QAccessible::NoRole;
    }
}

// A list is named by what is chosen in it: what it is for stands in its label or its description.
bool says_what_it_is_for(const QWidget& widget, const QAccessibleInterface& spoken)
{
    if (!widget.accessibleName().isEmpty() || !widget.accessibleDescription().isEmpty())
        return true;
    for (const auto& [label, relation] : spoken.relations()) {
        if (relation.testFlag(QAccessible::Label) && qobject_cast<QLabel*>(label->object()) != nullptr)
            return !label->text(QAccessible::Name).isEmpty();
    }
    return !widget.property("text").toString().isEmpty() && qobject_cast<const QLineEdit*>(&widget) == nullptr;
}

void expect_named(KeyBench& bench, QWidget& widget)
{
    const std::string name = widget.objectName().toStdString();
    QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(&widget);
    ASSERT_NE(spoken, nullptr) << name;
    EXPECT_FALSE(spoken->text(QAccessible::Name).trimmed().isEmpty()) << name;
    EXPECT_TRUE(says_what_it_is_for(widget, *spoken)) << name;
    const Control* control = bench.shell.controls.find_full(name);
    if (control == nullptr)
        return; // something to scroll through and read
    EXPECT_EQ(spoken->role(), role_of(*control, widget)) << name;
    if (control->kind == ControlKind::OptionButton && control->name.starts_with("Option")) {
        EXPECT_FALSE(spoken->text(QAccessible::Description).isEmpty()) << name << ": yes or no to what?";
    }
}

void expect_every_stop_named(bool english)
{
    KeyBench bench("/dev/null", english);
    bench.choose("Juniper-60Q");
    bench.for_all_pages([&](const std::string&) {
        for (QWidget* stop : bench.stops())
            expect_named(bench, *stop);
    });
}

// Of what the hand uses; the rest is there to be looked at.
bool is_for_the_hand(const Control& control)
{
    switch (control.kind) {
    case ControlKind::TextBox:
        return control.name != "txtBufferAddress"; // heads of the dumps
    case ControlKind::CheckBox:
    case ControlKind::OptionButton:
    case ControlKind::ComboBox:
    case ControlKind::Button:
    case ControlKind::TabStrip:
    case ControlKind::ListBox:
        return true;
    default:
        return false;
    }
}

// A group of choices is one stop; the arrows do the rest.
bool is_reached(const Control& control, const std::set<std::string>& stops)
{
    const auto* option = dynamic_cast<const OptionButton*>(&control);
    if (option == nullptr || option->group.empty())
        return stops.contains(control.full_name());
    return std::any_of(option->group.begin(), option->group.end(),
        [&](const OptionButton* one) { return stops.contains(one->full_name()); });
}

} // namespace

TEST(Keyboard, TheTabKeyReachesEverythingThatCanBeUsedOnEveryPage)
{
    KeyBench bench;
    bench.choose("Juniper-60Q");
    bench.for_all_pages([&](const std::string& page) {
        std::set<std::string> stops;
        for (const QWidget* stop : bench.stops())
            stops.insert(stop->objectName().toStdString());
        for (const Control* control : bench.shell.controls.all()) {
            const auto* widget = bench.window->findChild<QWidget*>(to_qt(control->full_name()));
            if (widget != nullptr && widget->isVisible() && widget->isEnabled() && is_for_the_hand(*control)) {
                EXPECT_TRUE(is_reached(*control, stops)) << control->full_name() << " with " << page;
            }
        }
    });
}

TEST(Keyboard, TheTabKeyGoesDownTheStepsAndThenDownTheRightSide)
{
    KeyBench bench;
    bench.choose("Juniper-60Q");
    std::string names;
    for (const QWidget* stop : bench.stops())
        names += stop->objectName().toStdString() + " ";
    const std::string wanted =
        "txtDevice Command3 txtAP_FileStart cheClearAP_Buffer comLoadFile txtDataFileStart "
        "cheClearDataBuffer comLoadDataFile combCommPort comOtherPort cobBaudMax cobBaudMin cheTL "
        "Option0(1) Option1(1) Option2(0) Option3(0) Option4(0) Option5(1) comDownload(0) "
        "comDownload(1) textMsg txtWrite_OK_Count txtWrite_Bad_Count comClear_OK_Count "
        "comMastWindow TabStrip2 txtBuffer2 texDumpAddress(0) texDumpFind(0) txtFileCheckSum TabStrip1 Option8(1) "
        "Option10(1) "
        "Option11(1) Option12(0) comWDT_Prescalar(0) optBeepYes comDalay_ReDownLoad cekReloadFile "
        "cekReloadFileWhileFileChange ";
    EXPECT_EQ(names, wanted);
}

// A list used to be called by what was chosen in it, a field by the title of its step, and a choice was a box to tick.
TEST(ScreenReader, IsToldWhatEveryStopIsInEnglish) { expect_every_stop_named(true); }
TEST(ScreenReader, IsToldWhatEveryStopIsInChinese) { expect_every_stop_named(false); }

TEST(ScreenReader, HearsTheQuestionOfTheModelWithEachOfItsChoices)
{
    KeyBench bench;
    bench.choose("Juniper-60Q");
    auto* choice = bench.find<QRadioButton>("Option0(1)");
    EXPECT_EQ(choice->accessibleDescription(), "MCU Clock:");
    bench.choose("Alder-64");
    EXPECT_EQ(choice->accessibleDescription(), bench.find<QLabel>("LabOption(0)")->text());
    EXPECT_NE(choice->accessibleDescription(), "MCU Clock:");
}

TEST(Keyboard, AltAndADigitGoToAStepOrAStrip)
{
    KeyBench bench;
    bench.choose("Juniper-60Q");
    bench.come_to_the_front();
    const std::map<int, QString> places = {{Qt::Key_3, "combCommPort"}, {Qt::Key_1, "txtDevice"},
        {Qt::Key_2, "txtAP_FileStart"}, {Qt::Key_4, "Option0(1)"}, {Qt::Key_5, "comDownload(0)"},
        {Qt::Key_6, "TabStrip2"}, {Qt::Key_7, "TabStrip1"}};
    for (const auto& [key, place] : places) {
        QTest::keyClick(bench.focus(), static_cast<Qt::Key>(key), Qt::AltModifier);
        EXPECT_EQ(bench.focus()->objectName(), place);
    }
}

TEST(Keyboard, AloneOpensAFileAndPutsItIntoAChipAndThenIntoThreeMore)
{
    TargetProcess target({"Juniper-60Q", "--at-once"});
    KeyBench bench(target.link());
    QTemporaryDir folder;
    const QByteArray program(0x400, 'k');
    QFile code(folder.filePath("code.bin"));
    ASSERT_TRUE(code.open(QIODevice::WriteOnly));
    code.write(program);
    code.close();

    bench.tab_to("txtDevice");
    bench.press(Qt::Key_Down);
    auto* tree = bench.find<QTreeWidget>("TreeViewDevice");
    ASSERT_TRUE(QTest::qWaitFor([&] { return tree->isVisible(); }));
    QTest::keyClicks(tree, "Juniper-60Q");
    bench.press(Qt::Key_Return);
    bench.settle();
    ASSERT_EQ(bench.form.text_box("txtDevice").text(), "Juniper-60Q");
    bench.type_into_next_dialog(code.fileName());
    bench.tab_to("comLoadFile");
    bench.press(Qt::Key_Space);
    bench.come_to_the_front();
    bench.tab_to("combCommPort");
    bench.press(Qt::Key_Home);

    bench.power_up_when_called(target);
    bench.tab_to("comDownload(0)");
    bench.press(Qt::Key_Space); // comes back when the chip is done
    ASSERT_EQ(bench.count(), "1");

    bench.tab_to("comDalay_ReDownLoad");
    bench.press(Qt::Key_End); // the shortest
    for (const char* done : {"1", "2", "3"})
        bench.power_up_when_called(target, [&, done] { return bench.count() == done; });
    bench.when([&] { return bench.count() == "4" && bench.calling(); },
        [&] { QTest::keyClick(bench.focus(), Qt::Key_Escape); });
    QTest::keyClick(bench.focus(), Qt::Key_F6);
    EXPECT_EQ(bench.count(), "4");
    EXPECT_EQ(bench.focus()->objectName(), "comDownload(1)");
    EXPECT_TRUE(target.quit().contains("violations: none"));
    EXPECT_EQ(target.flash().left(program.size()), program);
}
