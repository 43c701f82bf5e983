// A real window on a real event loop, used by mouse and keyboard, and a simulated target in a process of its own on a
// pseudo terminal.
#pragma once

#include "form/named_controls.h"
#include "host/qt_dialogs.h"
#include "host/qt_loop.h"
#include "host/qt_ports.h"
#include "shell/start_up.h"
#include "window/main_window.h"
#include "window/target_process.h"

#include <QApplication>
#include <QFile>
#include <QFileDialog>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <functional>

namespace vrk {

struct WindowBench {
    explicit WindowBench(const QString& port, bool english = true)
        : WindowBench(std::vector<std::string>{port.toStdString()}, nullptr, english)
    {
    }
    // Several ports, and settings that outlive the program.
    WindowBench(std::vector<std::string> paths, SettingsStore* its_settings, bool english = true)
        : ports(std::move(paths))
        , shell(Platform{loop, ports, dialogs, its_settings != nullptr ? *its_settings : settings})
    {
        shell.language_is_english = english;
        start_up(shell);
        window = std::make_unique<MainWindow>(shell);
        dialogs.parent = window.get();
        window->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    }

    template <typename Widget> Widget* find(const char* name)
    {
        auto* widget = window->findChild<Widget*>(name);
        EXPECT_NE(widget, nullptr) << name;
        return widget;
    }
    void click(const char* name) { QTest::mouseClick(find<QWidget>(name), Qt::LeftButton); }

    // By mouse: opens the tree, opens the family, picks the model.
    void choose_model(const QString& family, const QString& model)
    {
        click("txtDevice");
        auto* tree = find<QTreeWidget>("TreeViewDevice");
        ASSERT_TRUE(QTest::qWaitFor([&] { return tree->isVisible(); }));
        click_item(tree, family);
        click_item(tree, model);
        wait_for_model(model);
    }

    // Acts once, as soon as the moment has come: a fixed time would be too early on a busy machine.
    void when(std::function<bool()> moment, std::function<void()> act)
    {
        auto* watch = new QTimer(window.get());
        QObject::connect(watch, &QTimer::timeout, window.get(), [watch, moment, act] {
            if (!moment())
                return;
            watch->stop();
            watch->deleteLater();
            act();
        });
        watch->start(50);
    }
    // A sequence sends its sync pairs and nobody has answered.
    bool calling() const { return shell.running && shell.port.is_open() && shell.talk().chip.fw_letter.empty(); }
    // The hand at the switch: once the tool calls, and again every few seconds if the chip's short time to listen went
    // by unheard.
    void power_up_when_called(
        TargetProcess& target, std::function<bool()> wanted = [] { return true; })
    {
        const auto called = [this, wanted = std::move(wanted)] { return wanted() && calling(); };
        when(called, [this, called, &target] {
            target.power_cycle();
            auto* again = new QTimer(window.get());
            QObject::connect(again, &QTimer::timeout, window.get(), [called, again, &target] {
                if (called())
                    return target.power_cycle();
                again->stop();
                again->deleteLater();
            });
            again->start(4000);
        });
    }

    void answer_close_question(QMessageBox::StandardButton button)
    {
        auto* box = window->findChild<QMessageBox*>("closeQuestion");
        ASSERT_NE(box, nullptr);
        box->button(button)->click();
    }

    // Until the box shows it: a redraw may be late on a busy machine.
    void wait_for_model(const QString& model)
    {
        auto* box = find<QLineEdit>("txtDevice");
        EXPECT_TRUE(QTest::qWaitFor([&] { return box->text() == model; }, 2000)) << box->text().toStdString();
        QTest::qWait(50); // what hangs on the model
    }

    // By keyboard: opens the tree, types the name, takes the model.
    void type_model(const QString& model)
    {
        auto* box = find<QLineEdit>("txtDevice");
        box->setFocus();
        QTest::keyClick(box, Qt::Key_Down);
        auto* tree = find<QTreeWidget>("TreeViewDevice");
        ASSERT_TRUE(QTest::qWaitFor([&] { return tree->isVisible(); }));
        QTest::keyClicks(tree, model);
        QTest::keyClick(tree, Qt::Key_Return);
        wait_for_model(model);
    }

    // Answers the next file dialog by typing the path. The list of completions that may drop down takes the first
    // Return for itself, so that it is pressed until the dialog has gone.
    void type_into_next_dialog(const QString& path)
    {
        in_next_modal<QFileDialog>([path](QFileDialog* dialog) {
            auto* line = dialog->findChild<QLineEdit*>("fileNameEdit");
            line->setCompleter(nullptr); // its list, when it comes up in time, would take the Return for itself
            line->clear();
            QTest::keyClicks(line, path);
            auto* again = new QTimer(dialog);
            QObject::connect(again, &QTimer::timeout, dialog, [dialog, line, path] {
                if (!dialog->isVisible())
                    return;
                line->setText(path);
                QTest::keyClick(line, Qt::Key_Return);
            });
            again->start(200);
            QTest::keyClick(line, Qt::Key_Return);
        });
    }

    template <typename Box> void in_next_modal(std::function<void(Box*)> act)
    {
        auto* watch = new QTimer(window.get());
        QObject::connect(watch, &QTimer::timeout, window.get(), [watch, act] {
            if (auto* box = qobject_cast<Box*>(QApplication::activeModalWidget())) {
                watch->stop();
                watch->deleteLater();
                act(box);
            }
        });
        watch->start(20);
    }

    QtLoop loop;
    QtPorts ports;
    QtDialogs dialogs;
    MemoryStore settings;
    Shell shell;
    const NamedControls form{shell.controls};
    std::unique_ptr<MainWindow> window;

private:
    static void click_item(QTreeWidget* tree, const QString& text)
    {
        const auto found = tree->findItems(text, Qt::MatchExactly | Qt::MatchRecursive);
        ASSERT_EQ(found.size(), 1) << text.toStdString();
        tree->scrollToItem(found[0]);
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualItemRect(found[0]).center());
    }
};

} // namespace vrk
