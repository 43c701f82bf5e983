// Ties controls to widgets: makes the widget of a control, shows its state, and passes what the user does to the events
// of the shell. Widgets are named as their controls ("comDownload(0)"), so that tools and tests find them.
#pragma once

#include "shell/gate.h"
#include "window/number_field.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QElapsedTimer>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QTabBar>
#include <QTimer>
#include <QVBoxLayout>

#include <functional>
#include <unordered_map>

namespace vrk {

class Binder final : public QObject {
public:
    explicit Binder(Shell& shell);
    ~Binder() override;

    QLabel* label(Label& control);
    QLabel* path(Label& control); // may be longer than its place
    QLabel* lamp(Image& control, const QString& text, const QString& color);
    QPushButton* button(Button& control);
    QLineEdit* line(TextBox& control);
    QLineEdit* number(TextBox& control, NumberField field);
    QPlainTextEdit* pane(TextBox& control); // several lines, fixed-width, read-only
    QPlainTextEdit* bind_pane(TextBox& control, QPlainTextEdit* widget); // one that paints more than the text
    QPlainTextEdit* report(TextBox& control); // the same, with the tones of what was said
    QCheckBox* check(CheckBox& control);
    QRadioButton* option(OptionButton& control);
    QComboBox* list(ComboBox& control);
    QGroupBox* frame(Frame& control); // its caption is the title; a click in it is the frame's click
    QWidget* page(Frame& control); // no border: a page of a tab strip
    QWidget* page(Frame& control, QLabel*& caption); // the same, with its caption for a line on top
    QTabBar* tabs(TabStrip& control);
    QProgressBar* progress(ProgressBar& control);
    QScrollBar* scroll(ScrollBar& control);

    void refresh(); // shows all changes now; by itself it does so a moment after they were made

    // A widget of one's own: `show` puts the control's state on it, now and after each change.
    void bind(Control& control, QWidget* widget, std::function<void()> show);

    // More that hangs on a control which has its widget: `show` runs now and behind each showing of the control.
    void follow(const Control& control, std::function<void()> show);

    // Where the focus waits while the button that had it cannot be pressed; no key does anything there.
    void set_resting_place(QWidget* widget) { resting_place_ = widget; }

    Shell& shell() { return shell_; }

private:
    void changed();
    void after(const Control& control, Touch touch); // a hand: what was refused shows the control as it is
    void press(Button& control, QPushButton& widget);
    QButtonGroup* group_of(OptionButton& control);
    void arrow(const OptionButton& control, int step);
    bool eventFilter(QObject* watched, QEvent* event) override;

    Shell& shell_;
    std::unordered_map<const Control*, std::function<void()>> shows_;
    std::unordered_map<const OptionButton*, QRadioButton*> options_;
    std::unordered_map<const OptionButton*, QButtonGroup*> groups_; // by the first of each
    QWidget* resting_place_ = nullptr;
    QTimer refresh_timer_;
    QElapsedTimer since_refresh_;
    bool refresh_is_next_ = false; // in the next turn of the loop
};

QString to_qt(std::string_view text);
std::string from_qt(const QString& text);

int pixels(float in_units); // of a place in the window, see WindowPlace
float units(int in_pixels);

QHBoxLayout* row_of(std::initializer_list<QWidget*> widgets); // side by side
QVBoxLayout* stack_on(QWidget* page, QLabel* head); // on the whole page, beginning with its head

} // namespace vrk
