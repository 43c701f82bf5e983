// The terminal's display: grows at its end, follows the end unless the user has scrolled up, and sends the keys that
// are typed into it.
#pragma once

#include "window/binder.h"
#include "window/paced.h"

namespace vrk {

class TerminalView final : public QPlainTextEdit {
public:
    TerminalView(Binder& binder, TextBox& control);

    void keyPressEvent(QKeyEvent* event) override;

private:
    // Text as lines for the document. A carriage return, a line feed or both end a line.
    class Lines {
    public:
        QString take(std::string_view text);

    private:
        bool after_carriage_return_ = false; // a line feed behind it belongs to it
        int column_ = 0; // characters of the last line
    };

    void show_when_due();
    void show_control();
    void append(std::string_view text);
    void show_selection();

    Binder& binder_;
    TextBox& control_;
    int version_ = -1; // of the text that is shown
    std::size_t shown_ = 0; // bytes of it
    Lines lines_;
    Paced picture_{[this] { show_control(); }};
};

} // namespace vrk
