// Qt's own words in the language of the program, and the menu that chooses it. With VRK_PICTURES set to a folder, boxes
// and pages are left there as pictures.
#include "host/qt_words.h"
#include "whole_texts.h"
#include "window_bench.h"

#include "shell/events.h"

#include <QMenu>
#include <QMenuBar>

using namespace vrk;

namespace {

void expect_no_text_cut(const MainWindow& window)
{
    for (const QAbstractButton* button : window.findChildren<QAbstractButton*>()) {
        if (!button->isVisible() || button->text().isEmpty())
            continue;
        const QSize text = button->fontMetrics().size(Qt::TextShowMnemonic, button->text());
        EXPECT_GE(button->width(), text.width()) << from_qt(button->objectName());
        EXPECT_GE(button->height(), text.height()) << from_qt(button->objectName());
    }
    for (const QLabel* label : window.findChildren<QLabel*>()) {
        if (!label->isVisible() || label->wordWrap())
            continue;
        EXPECT_GE(label->width(), label->sizeHint().width()) << from_qt(label->objectName());
    }
}

class BothLanguages : public ::testing::TestWithParam<bool> {
protected:
    QString in(const char* chinese, const char* english) const { return GetParam() ? english : chinese; }
    void leave_picture(QWidget& widget, const QString& name) const
    {
        const QString folder = qEnvironmentVariable("VRK_PICTURES");
        if (folder.isEmpty())
            return;
        EXPECT_TRUE(widget.grab().save(folder + "/" + name + (GetParam() ? "_en.png" : "_zh.png")));
    }

    QtWords words{GetParam()};
    WindowBench bench{"/dev/null", GetParam()};
};

INSTANTIATE_TEST_SUITE_P(Window, BothLanguages, ::testing::Bool(),
    [](const auto& test) { return std::string{test.param ? "English" : "Chinese"}; });

} // namespace

// The text said "press 确定", and the button said "OK".
TEST_P(BothLanguages, NameTheButtonsOfABox)
{
    QString yes;
    QString no;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    bench.in_next_modal<QMessageBox>([&](QMessageBox* box) {
        yes = box->button(QMessageBox::Yes)->text();
        no = box->button(QMessageBox::No)->text();
        icon = box->icon();
        leave_picture(*box, "question");
        box->button(QMessageBox::No)->click();
    });
    bench.click("comClear_OK_Count");
    EXPECT_EQ(yes, in("是(&Y)", "&Yes"));
    EXPECT_EQ(no, in("否(&N)", "&No"));
    EXPECT_EQ(icon, QMessageBox::Question);
}

TEST_P(BothLanguages, NameTheEntriesOfTheMenu)
{
    const auto titles = [this] {
        QStringList all;
        for (const QAction* menu : bench.window->menuBar()->actions())
            all << menu->text();
        return all;
    }();
    EXPECT_EQ(titles,
        (QStringList{in("文件(&F)", "&File"), in("工具(&T)", "&Tools"), "&Language/语言", in("帮助(&H)", "&Help")}));
    auto* menu = bench.find<QMenu>("mnuTitle(1)");
    emit menu->aboutToShow();
    EXPECT_TRUE(bench.find<QAction>("mnuLanguage(0)")->isChecked()) << "nothing is stored";
    bench.in_next_modal<QMessageBox>([](QMessageBox* box) { box->button(QMessageBox::Ok)->click(); });
    bench.find<QAction>("mnuLanguage(1)")->trigger();
    EXPECT_EQ(bench.settings.get("Settings", "Language", ""), "en");
}

TEST_P(BothLanguages, LeaveNoHelpBoxLargerThanASmallScreen)
{
    for (const char* name : {"comHelp(0)", "comHelp(1)", "com_TJXZ_help", "comDebugHelp(0)", "comDebugHelp(1)",
             "comDebugHelp(2)", "Command1", "mnuAbout"}) {
        QSize size;
        bench.in_next_modal<QMessageBox>([&](QMessageBox* box) {
            size = box->frameGeometry().size();
            leave_picture(*box, QString(name).remove('(').remove(')'));
            box->button(QMessageBox::Ok)->click();
        });
        click(bench.shell, *bench.shell.controls.find_full(name));
        EXPECT_LE(size.width(), 1024) << name;
        EXPECT_LE(size.height(), 720) << name;
        EXPECT_GT(size.height(), 50) << name;
    }
}

// As the window opens on a screen of 1024 by 768, where a window manager puts a frame about it.
TEST_P(BothLanguages, FitIntoTheWidthOfASmallScreen)
{
    constexpr QSize small(1008, 724);
    set_checked(bench.shell, bench.form.check_box("mnuProduction"), true);
    choose_node(bench.shell, bench.form.tree("TreeViewDevice"), "Larch-12V");
    bench.window->resize(small);
    auto* buffers = bench.find<QTabBar>("TabStrip2");
    for (TabStrip* strip : {&bench.form.tabs("TabStrip1"), &bench.form.tabs("TabStrip2")}) {
        for (int tab = 0; tab < static_cast<int>(strip->tabs().size()); ++tab) {
            choose_tab(bench.shell, *strip, tab);
            bench.window->binder().refresh();
            QTest::qWait(50);
            const std::string_view page = strip->selected_key();
            EXPECT_EQ(bench.window->width(), small.width());
            EXPECT_EQ(wider_than_its_place(*bench.window), "") << page;
            EXPECT_EQ(cut_off(*bench.window), "") << page;
            EXPECT_LE(buffers->tabRect(buffers->count() - 1).right(), buffers->width()) << page;
            leave_picture(*bench.window, to_qt("small_" + std::string{page}));
        }
    }
}

TEST_P(BothLanguages, AreThoseOfEveryPage)
{
    set_checked(bench.shell, bench.form.check_box("mnuProduction"), true);
    choose_node(bench.shell, bench.form.tree("TreeViewDevice"), "Fir-1");
    for (TabStrip* strip : {&bench.form.tabs("TabStrip1"), &bench.form.tabs("TabStrip2")}) {
        for (int tab = 0; tab < static_cast<int>(strip->tabs().size()); ++tab) {
            choose_tab(bench.shell, *strip, tab);
            bench.window->binder().refresh();
            QTest::qWait(20);
            expect_no_text_cut(*bench.window);
            leave_picture(*bench.window, to_qt("page_" + std::string{strip->selected_key()}));
        }
    }
}
