#include "window/terminal_view.h"

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
    binder.bind(control, this, [this] { show_control(); });
}

void TerminalView::show_control()
{
    if (version_ != control_.version()) {
        clear();
        version_ = control_.version();
        shown_ = 0;
        column_ = 0;
        after_carriage_return_ = false;
    }
    if (shown_ == control_.text().size())
        return;
    const int stands_at = verticalScrollBar()->value();
    const bool follows = stands_at >= verticalScrollBar()->maximum();
    append(std::string_view{control_.text()}.substr(shown_));
    shown_ = control_.text().size();
    verticalScrollBar()->setValue(follows ? verticalScrollBar()->maximum() : stands_at);
}

void TerminalView::append(std::string_view text)
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
    QTextCursor end(document());
    end.movePosition(QTextCursor::End);
    end.insertText(lines);
}

bool TerminalView::find_next(const QString& text)
{
    if (text.isEmpty())
        return false;
    if (find(text))
        return true;
    const QTextCursor stood = textCursor();
    moveCursor(QTextCursor::Start);
    if (find(text))
        return true;
    setTextCursor(stood);
    return false;
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
