#include "window/terminal_view.h"

#include "platform/text_number.h"
#include "shell/events.h"

#include <QFontDatabase>
#include <QKeyEvent>
#include <QScrollBar>

namespace vrk {

namespace {

// A target may send for ever without a line end, and a line is laid out as a whole each time it grows.
constexpr int longest_line = 2000;

} // namespace

TerminalView::TerminalView(Binder& binder, TextBox& control)
    : binder_(binder)
    , control_(control)
{
    setReadOnly(true);
    setUndoRedoEnabled(false);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    setWordWrapMode(QTextOption::WrapAnywhere);
    binder.bind(control, this, [this] { show_when_due(); });
}

// A stream at its pace; what the user's own hand has done, at once.
void TerminalView::show_when_due()
{
    if (version_ == control_.version() && control_.sel_length() == 0)
        picture_.changed();
    else
        picture_.draw_now();
}

QString TerminalView::Lines::take(std::string_view text)
{
    QString lines;
    for (const QChar c : to_qt(text)) {
        const bool second_of_pair = after_carriage_return_ && c == '\n';
        after_carriage_return_ = c == '\r';
        if (second_of_pair)
            continue;
        const bool ends_line = c == '\r' || c == '\n';
        if (!ends_line)
            lines += c;
        column_ = ends_line ? 0 : column_ + 1;
        if (ends_line || column_ == longest_line) {
            lines += '\n';
            column_ = 0;
        }
    }
    return lines;
}

void TerminalView::show_control()
{
    if (version_ != control_.version()) {
        clear();
        version_ = control_.version();
        shown_ = 0;
        lines_ = {};
    }
    if (shown_ != control_.text().size()) {
        const int stands_at = verticalScrollBar()->value();
        const bool follows = stands_at >= verticalScrollBar()->maximum();
        append(std::string_view{control_.text()}.substr(shown_));
        shown_ = control_.text().size();
        verticalScrollBar()->setValue(follows ? verticalScrollBar()->maximum() : stands_at);
    }
    if (control_.sel_length() > 0)
        show_selection();
}

void TerminalView::append(std::string_view text)
{
    QTextCursor end(document());
    end.movePosition(QTextCursor::End);
    end.insertText(lines_.take(text));
}

void TerminalView::show_selection()
{
    const auto position_of = [this](int character) {
        return static_cast<int>(Lines{}.take(first_characters(control_.text(), character)).size());
    };
    QTextCursor selection(document());
    selection.setPosition(position_of(control_.sel_start()));
    selection.setPosition(position_of(control_.sel_start() + control_.sel_length()), QTextCursor::KeepAnchor);
    setTextCursor(selection);
}

// What is no character of the keyboard moves in the text, or copies from it.
void TerminalView::keyPressEvent(QKeyEvent* event)
{
    const std::string key = event->text().toStdString();
    if (key.size() == 1 && key[0] >= ' ' && key[0] <= '~')
        press_key(binder_.shell(), control_, key);
    else
        QPlainTextEdit::keyPressEvent(event);
}

} // namespace vrk
