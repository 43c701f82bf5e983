// The terminal's display: grows at its end, follows the end unless the user has scrolled up, and sends the keys that
// are typed into it.
#pragma once

#include "window/binder.h"

namespace vrk {

class TerminalView final : public QPlainTextEdit {
public:
    TerminalView(Binder& binder, TextBox& control);

    // The next place behind the one that is selected, from the top again behind the last; shown and selected. False:
    // the text is nowhere.
    bool find_next(const QString& text);

    void keyPressEvent(QKeyEvent* event) override;

private:
    void show_control();
    void append(std::string_view text);

    Binder& binder_;
    TextBox& control_;
    int version_ = -1; // of the text that is shown
    std::size_t shown_ = 0; // bytes of it
    bool after_carriage_return_ = false; // a line feed behind it belongs to it
    int column_ = 0; // characters of the last line
};

} // namespace vrk
