#include "window/menu.h"

#include "form/main_form.h"

#include "shell/events.h"
#include "window/binder.h"
#include "window/log_window.h"

#include <QActionGroup>
#include <QMenu>

#include <span>

namespace vrk {

namespace {

// The key that opens it, as it is shown in each language: a letter of the word, or one in brackets behind it.
QString with_key(const std::string& caption, QChar key)
{
    QString text = to_qt(caption);
    return text.startsWith(key) ? "&" + text : text + "(&" + key + ")";
}

QMenu* add_menu(QMenuBar& bar, const Label& title, QChar key)
{
    QMenu* menu = bar.addMenu(with_key(title.caption(), key));
    menu->setObjectName(to_qt(title.full_name()));
    return menu;
}

// An entry is shown as its control is at that moment, whoever has changed it.
QAction* add_entry(QMenu* menu, Shell& shell, CaptionControl& control)
{
    QAction* action = menu->addAction(to_qt(control.caption()));
    action->setObjectName(to_qt(control.full_name()));
    QObject::connect(menu, &QMenu::aboutToShow, action,
        [action, &shell, &control] { action->setEnabled(may_touch(shell, control) == Touch::taken); });
    return action;
}

void add_tick(QMenu* menu, Shell& shell, CheckBox& box)
{
    QAction* action = add_entry(menu, shell, box);
    action->setCheckable(true);
    QObject::connect(menu, &QMenu::aboutToShow, action, [action, &box] { action->setChecked(box.value()); });
    QObject::connect(action, &QAction::triggered, action, [&shell, &box](bool on) { set_checked(shell, box, on); });
}

template <std::size_t Count> void add_choice(QMenu* menu, Shell& shell, OptionButton (&buttons)[Count])
{
    auto* group = new QActionGroup(menu);
    for (OptionButton& button : buttons) {
        QAction* action = add_entry(menu, shell, button);
        action->setCheckable(true);
        group->addAction(action);
        QObject::connect(menu, &QMenu::aboutToShow, action, [action, &button] { action->setChecked(button.value()); });
        QObject::connect(action, &QAction::triggered, action, [&shell, &button] { choose_option(shell, button); });
    }
}

void add_command(QMenu* menu, Shell& shell, Button& button)
{
    QObject::connect(
        add_entry(menu, shell, button), &QAction::triggered, menu, [&shell, &button] { click(shell, button); });
}

// A path is not read as a key, and a long one keeps its ends.
void add_recent(QMenu* menu, Shell& shell, const Label& title, std::span<Button> entries)
{
    constexpr int widest = 60; // characters
    QMenu* list = menu->addMenu(to_qt(title.caption()));
    list->setObjectName(to_qt(title.full_name()));
    for (Button& entry : entries) {
        add_command(list, shell, entry);
        QAction* action = list->actions().constLast();
        QObject::connect(list, &QMenu::aboutToShow, action, [action, list, &entry] {
            const QFontMetrics metrics = list->fontMetrics();
            const int room = widest * metrics.averageCharWidth();
            action->setText(metrics.elidedText(to_qt(entry.caption()), Qt::ElideMiddle, room).replace("&", "&&"));
            action->setVisible(entry.visible());
        });
    }
    QObject::connect(menu, &QMenu::aboutToShow, list,
        [list, entries] { list->menuAction()->setEnabled(entries.front().visible()); });
}

} // namespace

void make_menus(QMenuBar& bar, Shell& shell)
{
    MainForm& form = shell.form;
    QMenu* files = add_menu(bar, form.mnuTitle[3], 'F');
    add_recent(files, shell, form.mnuRecentTitle[0], form.mnuRecentFile);
    add_recent(files, shell, form.mnuRecentTitle[1], form.mnuRecentProject);
    files->addSeparator();
    add_command(files, shell, form.mnuCopyCommandLine);
    QMenu* tools = add_menu(bar, form.mnuTitle[0], 'T');
    add_tick(tools, shell, form.mnuProduction);
    QObject::connect(add_entry(tools, shell, form.mnuLog), &QAction::triggered, &bar,
        [&bar, &shell] { show_log(shell, bar.window()); });
    add_choice(add_menu(bar, form.mnuTitle[1], 'L'), shell, form.mnuLanguage);
    add_command(add_menu(bar, form.mnuTitle[2], 'H'), shell, form.mnuAbout);
}

} // namespace vrk
