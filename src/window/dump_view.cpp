#include "window/dump_view.h"

#include "form/main_form.h"

#include "image/dump.h"
#include "shell/buffer_view.h"
#include "shell/events.h"
#include "shell/written_range.h"

#include <QEvent>
#include <QGridLayout>
#include <QKeyEvent>
#include <QScrollBar>
#include <QShortcut>
#include <QSignalBlocker>
#include <QTextBlock>
#include <QWheelEvent>

#include <algorithm>
#include <span>

namespace vrk {

namespace {

constexpr int lines_per_notch = 3; // of the wheel
constexpr int notch = 120;

struct KeyRow {
    int key;
    const char* name;
};
constexpr KeyRow key_rows[] = {
    {Qt::Key_PageUp, "PageUp"},
    {Qt::Key_PageDown, "PageDown"},
    {Qt::Key_Up, "Up"},
    {Qt::Key_Down, "Down"},
    {Qt::Key_Left, "Left"},
    {Qt::Key_Right, "Right"},
    {Qt::Key_Home, "Home"},
    {Qt::Key_End, "End"},
};
constexpr KeyRow control_key_rows[] = {
    {Qt::Key_Home, "CtrlHome"},
    {Qt::Key_End, "CtrlEnd"},
    {Qt::Key_Z, "CtrlZ"},
    {Qt::Key_Y, "CtrlY"},
};

// Null: the key has no name of its own.
const char* name_of(const QKeyEvent& key)
{
    const bool control = key.modifiers().testFlag(Qt::ControlModifier);
    if (control && key.key() == Qt::Key_Z && key.modifiers().testFlag(Qt::ShiftModifier))
        return "CtrlY";
    const auto rows = control ? std::span<const KeyRow>{control_key_rows} : std::span<const KeyRow>{key_rows};
    const auto found = std::ranges::find(rows, key.key(), &KeyRow::key);
    return found == rows.end() ? nullptr : found->name;
}

// The box ends its lines with CR LF, the pane has one place for both.
int place_in_pane(const std::string& text, int position)
{
    const auto end = text.begin() + std::min<std::ptrdiff_t>(position, static_cast<std::ptrdiff_t>(text.size()));
    return position - static_cast<int>(std::count(text.begin(), end, '\r'));
}
int place_in_box(const QPlainTextEdit& pane, int position)
{
    return position + pane.document()->findBlock(position).blockNumber();
}

void remove_lines(QTextDocument& document, int first)
{
    QTextCursor cursor(&document);
    cursor.setPosition(document.findBlockByNumber(first).position(), QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
}

void cut_behind(QTextDocument& document, int lines)
{
    if (document.blockCount() <= lines)
        return;
    QTextCursor cursor(&document);
    cursor.setPosition(document.findBlockByNumber(lines).position() - 1);
    cursor.movePosition(QTextCursor::End, QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
}

void insert_on_top(QTextDocument& document, const QStringList& lines)
{
    QTextCursor(&document).insertText(lines.join('\n') + '\n');
}

void replace_line(QTextDocument& document, int number, const QString& line)
{
    const QTextBlock block = document.findBlockByNumber(number);
    if (block.text() == line)
        return;
    QTextCursor cursor(block);
    cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
    cursor.insertText(line);
}

void append_lines(QTextDocument& document, const QStringList& lines)
{
    if (lines.isEmpty())
        return;
    QTextCursor cursor(&document);
    cursor.movePosition(QTextCursor::End);
    cursor.insertText('\n' + lines.join('\n'));
}

// A line that stays is only moved: to lay it out anew costs as much as to paint it. Each edit is one of its own, since
// of several in one Qt lays out all that stands between the first and the last.
void show_lines(QPlainTextEdit& pane, const QStringList& lines)
{
    QTextDocument& document = *pane.document();
    const QStringList shown = pane.toPlainText().split('\n');
    const auto gone_on_top = static_cast<int>(shown.indexOf(lines.front()));
    const auto new_on_top = static_cast<int>(lines.indexOf(shown.front()));
    if (gone_on_top < 0 && new_on_top < 0) {
        pane.setPlainText(lines.join('\n'));
        return;
    }
    const auto count = static_cast<int>(lines.size());
    if (gone_on_top > 0) {
        remove_lines(document, gone_on_top);
    } else if (new_on_top > 0) {
        cut_behind(document, count - new_on_top); // first, so that there are never more lines than fit
        insert_on_top(document, lines.first(new_on_top));
    }
    cut_behind(document, count);
    for (int number = 0; number < document.blockCount(); ++number)
        replace_line(document, number, lines[number]);
    append_lines(document, lines.sliced(document.blockCount()));
}

} // namespace

DumpView::DumpView(Binder& binder, int index)
    : shell_(binder.shell())
    , index_(index)
    , box_(index == 0 ? shell_.form.txtBuffer2 : shell_.form.tetDataFlash2)
    , pane_(new DumpPane)
{
    binder.bind_pane(box_, pane_);
    auto* address = binder.line(shell_.form.txtBufferAddress[index == 0 ? 0 : 2]);
    auto* columns = binder.line(shell_.form.txtBufferAddress[index == 0 ? 1 : 3]);
    for (QLineEdit* head : {address, columns}) {
        head->setReadOnly(true);
        head->setFrame(false);
        head->setFocusPolicy(Qt::NoFocus);
        head->setFont(pane_->font());
        head->setStyleSheet("background: transparent");
    }
    const int digit = pane_->fontMetrics().horizontalAdvance('0');
    address->setFixedWidth(digit * 9 - 2);
    pane_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    pane_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    const int margins = 2 * (static_cast<int>(pane_->document()->documentMargin()) + pane_->frameWidth());
    pane_->setMinimumWidth(digit * dump_line_size + margins);

    // A stamped number stands out wherever the keyboard is at the moment.
    QPalette palette = pane_->palette();
    for (const auto role : {QPalette::Highlight, QPalette::HighlightedText})
        palette.setColor(QPalette::Inactive, role, palette.color(QPalette::Active, role));
    pane_->setPalette(palette);
    pane_->setUndoRedoEnabled(false); // the buffer is edited, not the text
    pane_->installEventFilter(this);
    pane_->viewport()->installEventFilter(this);
    connect(pane_, &QPlainTextEdit::selectionChanged, this, [this] { take_selection(); });
    binder.bind(box_, pane_, [this] { show_dump(); });

    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(address, 0, 0);
    layout->addWidget(columns, 0, 1);
    layout->addWidget(pane_, 1, 0, 1, 2);
    layout->addWidget(binder.scroll(shell_.form.vscFile[index]), 1, 2);
    layout->setColumnStretch(1, 1);
    layout->setRowStretch(1, 1);
}

// The last line end is left out: an empty line below the others would be one more than fits.
void DumpView::show_dump()
{
    pane_->setToolTip(to_qt(box_.hint()));
    if (box_.text() != shown_) {
        shown_ = box_.text();
        QString text = to_qt(shown_).remove('\r');
        if (text.endsWith('\n'))
            text.chop(1);
        show_lines(*pane_, text.split('\n'));
    }
    show_marks();
    const int end = pane_->document()->characterCount() - 1;
    const int first = std::min(place_in_pane(shown_, box_.sel_start()), end);
    const int last = std::min(place_in_pane(shown_, box_.sel_start() + box_.sel_length()), end);
    QTextCursor cursor = pane_->textCursor();
    if (cursor.selectionStart() == first && cursor.selectionEnd() == last)
        return;
    // The caret stands in front of what is highlighted.
    cursor.setPosition(last);
    cursor.setPosition(first, QTextCursor::KeepAnchor);
    pane_->setTextCursor(cursor);
}

void DumpView::show_marks()
{
    const BufferKind kind = static_cast<BufferKind>(index_);
    const FileBuffer& code = shell_.code_buffer;
    const FileBuffer& eeprom = shell_.data_buffer;
    const MarkedFor now{shell_.selected.mcu_name, code.low, code.high, eeprom.high, eeprom.loaded};
    if (now != marked_for_) {
        marked_for_ = now;
        written_ = written_range(shell_, kind);
    }
    const AutoIncrease& record = increase_of(shell_, kind);
    const AddressRange number{record.address + 1 - record.bytes, record.address};
    pane_->set_marks(written_, record.valid ? number : AddressRange{});
}

void DumpView::fit_lines()
{
    int& shown_lines = shell_.view_lines[index_];
    const int margins = 2 * static_cast<int>(pane_->document()->documentMargin());
    const int lines = std::max((pane_->viewport()->height() - margins) / pane_->fontMetrics().lineSpacing(), 1);
    if (lines == shown_lines)
        return;
    shown_lines = lines;
    vscFile_Change(shell_, index_);
}

// The character under the pointer, not the gap nearest to it: a digit is hit on its right half too.
void DumpView::click_at(const QPoint& point)
{
    if (pane_->textCursor().hasSelection())
        return;
    QTextCursor cursor = pane_->cursorForPosition(point);
    if (pane_->cursorRect(cursor).left() > point.x() && !cursor.atBlockStart())
        cursor.movePosition(QTextCursor::PreviousCharacter);
    put_caret(shell_, box_, place_in_box(*pane_, cursor.position()));
    const QSignalBlocker quiet(pane_);
    show_dump();
}

void DumpView::take_selection()
{
    const QTextCursor cursor = pane_->textCursor();
    if (!cursor.hasSelection())
        return;
    const int first = place_in_box(*pane_, cursor.selectionStart());
    put_caret(shell_, box_, first, place_in_box(*pane_, cursor.selectionEnd()) - first);
}

bool DumpView::take_key(const QKeyEvent& key)
{
    const char* name = name_of(key);
    const bool others = (key.modifiers() & (Qt::AltModifier | Qt::MetaModifier)) != 0 ||
        (key.modifiers().testFlag(Qt::ControlModifier) && name == nullptr);
    if (others || key.key() == Qt::Key_Tab || key.key() == Qt::Key_Backtab)
        return false;
    if (name != nullptr)
        press_key(shell_, box_, name);
    else if (key.text().size() == 1)
        press_key(shell_, box_, from_qt(key.text()));
    return true;
}

void DumpView::scroll_by_wheel(const QWheelEvent& wheel)
{
    wheel_rest_ += wheel.angleDelta().y() * lines_per_notch;
    const int lines = wheel_rest_ / notch;
    wheel_rest_ -= lines * notch;
    ScrollBar& bar = shell_.form.vscFile[index_];
    if (lines != 0)
        scroll_to(shell_, bar, bar.value() - lines);
}

bool DumpView::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::Resize:
        fit_lines();
        break;
    case QEvent::Wheel:
        scroll_by_wheel(*static_cast<QWheelEvent*>(event));
        return true;
    case QEvent::KeyPress:
        if (watched == pane_ && take_key(*static_cast<QKeyEvent*>(event)))
            return true;
        break;
    case QEvent::MouseButtonRelease:
        if (watched == pane_->viewport()) // the pane comes first: only then is it known what was drawn over
            QTimer::singleShot(0, this, [this, point = static_cast<QMouseEvent*>(event)->pos()] { click_at(point); });
        break;
    default:
        break;
    }
    return QWidget::eventFilter(watched, event);
}

// The keys are those of the page that is in view.
QWidget* make_search_row(Binder& binder, int index)
{
    MainForm& form = binder.shell().form;
    auto* row = new QWidget;
    QLineEdit* address = binder.number(form.texDumpAddress[index], NumberField::hexadecimal);
    QLineEdit* what = binder.line(form.texDumpFind[index]);
    address->setFixedWidth(9 * address->fontMetrics().averageCharWidth());
    what->setMaximumWidth(24 * what->fontMetrics().averageCharWidth());
    auto* layout = row_of({binder.label(form.LabDumpAddress[index]), address, binder.label(form.LabDumpFind[index]),
        what, binder.path(form.labDumpFound[index])});
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setStretch(3, 1);
    layout->setStretch(4, 1);
    row->setLayout(layout);

    const std::pair<QLineEdit*, TextBox*> fields[] = {
        {address, &form.texDumpAddress[index]}, {what, &form.texDumpFind[index]}};
    for (const auto& [field, box] : fields) {
        field->setToolTip(to_qt(box->hint()));
        QObject::connect(field, &QLineEdit::returnPressed, row,
            [&binder, text = box] { press_key(binder.shell(), *text, "Enter"); });
    }
    const auto go_to = [row](const QKeySequence& key, QLineEdit* field) {
        QObject::connect(new QShortcut(key, row), &QShortcut::activated, field, [field] {
            field->setFocus(Qt::ShortcutFocusReason);
            field->selectAll();
        });
    };
    go_to(QKeySequence("Ctrl+G"), address);
    go_to(QKeySequence("Ctrl+F"), what);
    QObject::connect(new QShortcut(QKeySequence("F3"), row), &QShortcut::activated, row,
        [&binder, box = &form.texDumpFind[index]] { press_key(binder.shell(), *box, "Enter"); });
    return row;
}

QLabel* make_edit_hint(Binder& binder)
{
    QLabel* hint = binder.path(binder.shell().form.LabEdit_Clew);
    QSizePolicy keeps_place = hint->sizePolicy();
    keeps_place.setRetainSizeWhenHidden(true);
    hint->setSizePolicy(keeps_place);
    return hint;
}

} // namespace vrk
