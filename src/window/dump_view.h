// A buffer page: its bytes as lines of hexadecimal digits, only as many as fit, with the scroll bar beside them. Keys,
// clicks and stretches drawn over go to the shell; what is highlighted comes back from the box.
#pragma once

#include "window/binder.h"

#include <QPlainTextEdit>
#include <QWidget>

#include <string>

namespace vrk {

class DumpView final : public QWidget {
public:
    // index: 0 the code buffer, 1 the EEPROM buffer
    DumpView(Binder& binder, int index);

private:
    void show_dump();
    void fit_lines();
    void click_at(const QPoint& point);
    void take_selection();
    bool take_key(const QKeyEvent& key);
    void scroll_by_wheel(const QWheelEvent& wheel);
    bool eventFilter(QObject* watched, QEvent* event) override;

    Shell& shell_;
    int index_;
    TextBox& box_;
    QPlainTextEdit* pane_;
    std::string shown_; // the text of the box that stands in the pane
    int wheel_rest_ = 0; // of a notch, in eighths of a degree
};

// The line that tells how to edit; it keeps its place while it is hidden.
QLabel* make_edit_hint(Binder& binder);

} // namespace vrk
