// The whole list of controls, held against the window: each has its widget, of its kind, with its words, as it stands.
#include "checklist.h"
#include "window_bench.h"

#include "shell/device.h"
#include "shell/panel_state.h"

#include <QListWidget>
#include <QProgressBar>
#include <QScrollBar>
#include <QTabBar>
#include <QTreeWidget>

using namespace vrk;

namespace {

template <typename Widget> bool is(const QWidget& widget) { return qobject_cast<const Widget*>(&widget) != nullptr; }

bool is_of_kind(const QWidget& widget, ControlKind kind)
{
    switch (kind) {
    case ControlKind::TextBox:
        return is<QLineEdit>(widget) || is<QPlainTextEdit>(widget);
    case ControlKind::CheckBox:
        return is<QCheckBox>(widget);
    case ControlKind::OptionButton:
        return is<QRadioButton>(widget);
    case ControlKind::ComboBox:
        return is<QComboBox>(widget);
    case ControlKind::Label:
    case ControlKind::Image:
        return is<QLabel>(widget);
    case ControlKind::Button:
        return is<QPushButton>(widget);
    case ControlKind::Frame: // with a border and a title, or a page with its caption on top
        return is<QGroupBox>(widget) || widget.layout() != nullptr;
    case ControlKind::TabStrip:
        return is<QTabBar>(widget);
    case ControlKind::Tree:
        return is<QTreeWidget>(widget);
    case ControlKind::ProgressBar:
        return is<QProgressBar>(widget);
    case ControlKind::ScrollBar:
        return is<QScrollBar>(widget);
    case ControlKind::ListBox:
        return is<QListWidget>(widget);
    }
    return false;
}

// Of what bears its words itself; a page's stand in a line of its own.
QString words_of(const QWidget& widget)
{
    const char* property = is<QGroupBox>(widget) ? "title" : "text";
    return widget.property(property).toString();
}

struct ListedWindow : WindowBench {
    explicit ListedWindow(bool english)
        : WindowBench("/dev/null", english)
    {
        form.text_box("txtDevice").set_text(checklist_model);
        EXPECT_TRUE(apply_selected_device(shell));
        settle();
    }
    void settle() { QTest::qWait(120); } // two redraws
    // Calls `look` with the widget of each control that the window shows.
    template <typename Look> void for_all_widgets(Look look)
    {
        for_all_of_checklist([&](const ChecklistRow& row, const std::string& name) {
            const Control* control = shell.controls.find_full(name);
            ASSERT_NE(control, nullptr) << name;
            const auto* widget = window->findChild<QWidget*>(to_qt(control->full_name()));
            ASSERT_EQ(widget != nullptr, row.shown) << name;
            if (widget != nullptr)
                look(row, name, *widget);
        });
    }
};

void expect_the_words(bool english)
{
    ListedWindow bench(english);
    bench.for_all_widgets([&](const ChecklistRow& row, const std::string& name, const QWidget& widget) {
        const std::string_view wanted = in_language(english, row.caption);
        const bool words_beside_it = row.kind == ControlKind::Frame && !is<QGroupBox>(widget);
        if (!wanted.empty() && !words_beside_it) {
            EXPECT_EQ(words_of(widget).toStdString(), wanted) << name;
        }
    });
}

} // namespace

TEST(ChecklistInTheWindow, EveryControlHasAWidgetOfItsKind)
{
    ListedWindow bench(true);
    bench.for_all_widgets([](const ChecklistRow& row, const std::string& name, const QWidget& widget) {
        EXPECT_TRUE(is_of_kind(widget, row.kind)) << name << " is a " << widget.metaObject()->className();
    });
}

TEST(ChecklistInTheWindow, ShowsTheEnglishWordsLetterByLetter) { expect_the_words(true); }
TEST(ChecklistInTheWindow, ShowsTheChineseWordsLetterByLetter) { expect_the_words(false); }

TEST(ChecklistInTheWindow, WhatCanBeUsedFollowsThePanel)
{
    ListedWindow bench(true);
    for (std::size_t state = 0; state < 4; ++state) {
        bench.shell.running = (state & 1U) != 0;
        set_locked(bench.shell, (state & 2U) != 0);
        bench.settle();
        bench.for_all_widgets([&](const ChecklistRow& row, const std::string& name, const QWidget& widget) {
            EXPECT_EQ(widget.isEnabled(), row.enabled[state] == '1') << name << " in state " << state;
        });
    }
    bench.shell.running = false;
    set_locked(bench.shell, false);
}
