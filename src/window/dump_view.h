// A buffer page: its bytes as lines of hexadecimal digits, only as many as fit, with the scroll bar beside them. Keys,
// clicks and stretches drawn over go to the shell; what is highlighted comes back from the box.
#pragma once

#include "window/binder.h"
#include "window/dump_pane.h"

#include <QWidget>

#include <string>
#include <tuple>

namespace vrk {

class DumpView final : public QWidget {
public:
    // index: 0 the code buffer, 1 the EEPROM buffer
    DumpView(Binder& binder, int index);

    void show_marks(); // after a change of what goes into the chip

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
    DumpPane* pane_;
    // What the range of a download goes by: the model, and what is loaded for it.
    using MarkedFor = std::tuple<std::string, std::int32_t, std::int32_t, std::int32_t, bool>;
    MarkedFor marked_for_;
    AddressRange written_;
    std::string shown_; // the text of the box that stands in the pane
    int wheel_rest_ = 0; // of a notch, in eighths of a degree
};

// The line below a dump: an address to go to, what to look for, and what came of it.
QWidget* make_search_row(Binder& binder, int index);

// The line that tells how to edit; it keeps its place while it is hidden.
QLabel* make_edit_hint(Binder& binder);

} // namespace vrk
