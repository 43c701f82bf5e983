#include "window/binder.h"

#include "form/main_form.h"

#include "shell/events.h"
#include "window/path_label.h"
#include "window/report_pane.h"
#include "window/scroll_bar.h"

#include <QAbstractItemView>
#include <QEvent>
#include <QFontDatabase>
#include <QKeyEvent>
#include <QProxyStyle>
#include <QSignalBlocker>
#include <QStyledItemDelegate>
#include <QToolButton>

#include <algorithm>
#include <cmath>

namespace vrk {

namespace {

// Redrawing more often than the eye can follow would take time from a running download. And what a reply has changed is
// best drawn in the next turn of the loop, which comes when the next frame has left: drawn at a moment of its own, it
// would now and then hold up the answer to a reply. So a change draws when the first time is over, and the timer is
// there for those that no other follows.
constexpr int refresh_spacing_ms = 25;
constexpr int longest_wait_ms = 30; // two frames at 115200 and their replies take 29

// A widget that has no place yet must not be shown: it would be a window of its own for a moment.
void show_in_place(QWidget& widget, bool visible)
{
    if (!visible || widget.parentWidget() != nullptr)
        widget.setVisible(visible);
}

// Keeps what stands in the pane where the new text only continues it: the report grows line by line.
void show_text(QPlainTextEdit& pane, const TextBox& control)
{
    const QString text = to_qt(control.text());
    const QString shown = pane.toPlainText();
    if (text != shown) {
        if (!shown.isEmpty() && text.startsWith(shown)) {
            QTextCursor end(pane.document());
            end.movePosition(QTextCursor::End);
            end.insertText(text.mid(shown.size()));
        } else {
            pane.setPlainText(text);
        }
    }
    QTextCursor cursor(pane.document());
    const int length = static_cast<int>(pane.toPlainText().size());
    cursor.setPosition(std::min(control.sel_start(), length));
    cursor.setPosition(std::min(control.sel_start() + control.sel_length(), length), QTextCursor::KeepAnchor);
    pane.setTextCursor(cursor);
}

// An item with what it is behind it, in the list that has dropped down; the closed box shows the item alone.
class NotedItems final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

private:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        if (const QString note = index.data(Qt::ToolTipRole).toString(); !note.isEmpty())
            option->text += "    " + note;
    }
};

void show_notes(QComboBox& box, const std::vector<std::string>& notes)
{
    for (int i = 0; i < box.count(); ++i) {
        const auto item = static_cast<std::size_t>(i);
        box.setItemData(i, item < notes.size() ? to_qt(notes[item]) : QString{}, Qt::ToolTipRole);
    }
    box.view()->setMinimumWidth(box.view()->sizeHintForColumn(0));
}

void show_items(QComboBox& box, const ComboBox& control)
{
    QStringList items;
    for (const std::string& item : control.items())
        items << to_qt(item);
    QStringList shown;
    for (int i = 0; i < box.count(); ++i)
        shown << box.itemText(i);
    if (items != shown) {
        box.clear();
        box.addItems(items);
    }
    if (!control.notes().empty())
        show_notes(box, control.notes());
    box.setCurrentIndex(control.index_chosen());
    if (control.editable)
        box.setEditText(to_qt(control.text()));
}

void show_tabs(QTabBar& bar, const TabStrip& control)
{
    while (bar.count() < static_cast<int>(control.tabs().size()))
        bar.addTab("");
    for (int i = 0; i < bar.count(); ++i) {
        const TabStrip::Tab& tab = control.tabs()[static_cast<std::size_t>(i)];
        bar.setTabText(i, to_qt(tab.caption));
        bar.setTabVisible(i, tab.caption != TabStrip::hidden_caption);
    }
    bar.setCurrentIndex(control.selected());
}

// Little room beside the words of a tab: a screen of 1366 pixels then shows all of a strip.
class CloseTabs final : public QProxyStyle {
    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override
    {
        constexpr int beside = 4; // on either side
        return metric == PM_TabBarTabHSpace ? 2 * beside : QProxyStyle::pixelMetric(metric, option, widget);
    }
};

// In its window, which need not be the one in front: a worker may look at another for a moment.
bool has_focus(const QWidget& widget) { return widget.window()->focusWidget() == &widget; }

// A group of choices is one stop of the Tab key: the one that is chosen, or the first if none is.
bool is_stop_of_its_group(const OptionButton& control)
{
    const auto chosen = [](const OptionButton* one) { return one->value(); };
    if (std::any_of(control.group.begin(), control.group.end(), chosen))
        return control.value();
    return control.group.empty() || control.group.front() == &control;
}

int step_of(int key)
{
    switch (key) {
    case Qt::Key_Left:
    case Qt::Key_Up:
        return -1;
    case Qt::Key_Right:
    case Qt::Key_Down:
        return 1;
    default:
        return 0;
    }
}

} // namespace

QString to_qt(std::string_view text) { return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())); }

std::string from_qt(const QString& text) { return text.toStdString(); }

int pixels(float in_units) { return static_cast<int>(std::lround(in_units / WindowPlace::units_per_pixel)); }

float units(int in_pixels) { return static_cast<float>(in_pixels) * WindowPlace::units_per_pixel; }

QHBoxLayout* row_of(std::initializer_list<QWidget*> widgets)
{
    auto* row = new QHBoxLayout;
    for (QWidget* widget : widgets)
        row->addWidget(widget);
    return row;
}

QVBoxLayout* stack_on(QWidget* page, QLabel* head)
{
    auto* stack = new QVBoxLayout(page);
    stack->setContentsMargins(0, 0, 0, 0);
    stack->addWidget(head);
    return stack;
}

Binder::Binder(Shell& shell)
    : shell_(shell)
{
    since_refresh_.start();
    refresh_timer_.setSingleShot(true);
    connect(&refresh_timer_, &QTimer::timeout, this, [this] { refresh(); });
    shell_.form.controls.changes.take(); // widgets show the present state when they are made
    shell_.form.controls.changes.on_change = [this] { changed(); };
}

Binder::~Binder() { shell_.form.controls.changes.on_change = nullptr; }

void Binder::bind(Control& control, QWidget* widget, std::function<void()> show)
{
    widget->setObjectName(to_qt(control.full_name()));
    auto show_all = [this, &control, widget, show = std::move(show)] {
        const QSignalBlocker quiet(widget);
        show();
        if (!control.enabled() && has_focus(*widget) && resting_place_ != nullptr)
            resting_place_->setFocus(Qt::OtherFocusReason);
        widget->setEnabled(control.enabled());
        show_in_place(*widget, control.visible());
    };
    show_all();
    shows_[&control] = std::move(show_all);
}

void Binder::follow(const Control& control, std::function<void()> show)
{
    show();
    shows_[&control] = [before = std::move(shows_[&control]), show = std::move(show)] {
        before();
        show();
    };
}

void Binder::changed()
{
    const qint64 elapsed = since_refresh_.elapsed();
    if (elapsed >= refresh_spacing_ms) {
        if (!refresh_is_next_)
            refresh_timer_.start(0);
        refresh_is_next_ = true;
    } else if (!refresh_timer_.isActive()) {
        refresh_timer_.start(static_cast<int>(longest_wait_ms - elapsed));
    }
}

void Binder::refresh()
{
    since_refresh_.restart();
    refresh_timer_.stop();
    refresh_is_next_ = false;
    // What can be used comes first: a widget that is switched off hands its focus on, and is to find the others as they
    // are now, in whatever order they have changed.
    std::vector<Control*> changed = shell_.form.controls.changes.take();
    std::stable_partition(changed.begin(), changed.end(), [](const Control* control) { return control->enabled(); });
    for (const Control* control : changed) {
        const auto found = shows_.find(control);
        if (found != shows_.end())
            found->second();
    }
}

void Binder::after(const Control& control, Touch touch)
{
    const auto found = shows_.find(&control);
    if (touch != Touch::taken && found != shows_.end())
        found->second(); // the hand has moved the widget, and the gate has refused it
}

QLabel* Binder::label(Label& control)
{
    auto* widget = new QLabel;
    bind(control, widget, [&control, widget] { widget->setText(to_qt(control.caption())); });
    return widget;
}

QLabel* Binder::path(Label& control)
{
    auto* widget = new PathLabel;
    bind(control, widget, [&control, widget] { widget->setText(to_qt(control.caption())); });
    return widget;
}

QLabel* Binder::lamp(Image& control, const QString& text, const QString& color)
{
    auto* widget = new QLabel(text);
    widget->setStyleSheet("color: " + color);
    bind(control, widget, [] {});
    return widget;
}

QPushButton* Binder::button(Button& control)
{
    auto* widget = new QPushButton;
    widget->setAutoDefault(true); // Enter presses it too
    widget->installEventFilter(this);
    connect(widget, &QPushButton::clicked, this, [this, &control, widget] { press(control, *widget); });
    bind(control, widget, [&control, widget] { widget->setText(to_qt(control.caption())); });
    return widget;
}

// A button that starts a sequence cannot be pressed until that has ended; then the focus is back on it, and Enter or
// Space starts the next one.
void Binder::press(Button& control, QPushButton& widget)
{
    const bool had_focus = has_focus(widget);
    after(control, click(shell_, control));
    refresh();
    if (had_focus && resting_place_ != nullptr && has_focus(*resting_place_))
        widget.setFocus(Qt::OtherFocusReason);
}

QLineEdit* Binder::number(TextBox& control, NumberField field)
{
    QLineEdit* widget = line(control);
    take_only(*widget, field, shell_.language_is_english);
    return widget;
}

QLineEdit* Binder::line(TextBox& control)
{
    auto* widget = new QLineEdit;
    connect(widget, &QLineEdit::textEdited, this,
        [this, &control](const QString& text) { after(control, type_text(shell_, control, from_qt(text))); });
    bind(control, widget, [&control, widget] {
        const QString text = to_qt(control.text());
        if (widget->text() != text)
            widget->setText(text);
    });
    return widget;
}

QPlainTextEdit* Binder::pane(TextBox& control) { return bind_pane(control, new QPlainTextEdit); }

QPlainTextEdit* Binder::report(TextBox& control) { return bind_pane(control, new ReportPane(control)); }

QPlainTextEdit* Binder::bind_pane(TextBox& control, QPlainTextEdit* widget)
{
    widget->setReadOnly(true);
    widget->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    widget->setLineWrapMode(QPlainTextEdit::NoWrap);
    widget->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    widget->setTabChangesFocus(true);
    bind(control, widget, [&control, widget] { show_text(*widget, control); });
    return widget;
}

QCheckBox* Binder::check(CheckBox& control)
{
    auto* widget = new QCheckBox;
    connect(widget, &QCheckBox::clicked, this,
        [this, &control](bool value) { after(control, set_checked(shell_, control, value)); });
    bind(control, widget, [&control, widget] {
        widget->setText(to_qt(control.caption()));
        widget->setChecked(control.value());
    });
    return widget;
}

// The control's group knows which one is chosen. Without a group of its own a widget would take its neighbours for one,
// and by itself a screen reader would take it for a box to tick.
QButtonGroup* Binder::group_of(OptionButton& control)
{
    QButtonGroup*& group = groups_[control.group.empty() ? &control : control.group.front()];
    if (group == nullptr) {
        group = new QButtonGroup(this);
        group->setExclusive(false);
    }
    return group;
}

QRadioButton* Binder::option(OptionButton& control)
{
    auto* widget = new QRadioButton;
    group_of(control)->addButton(widget);
    connect(widget, &QRadioButton::clicked, this, [this, &control, widget] {
        after(control, choose_option(shell_, control));
        widget->setChecked(control.value());
    });
    options_[&control] = widget;
    widget->installEventFilter(this);
    bind(control, widget, [&control, widget] {
        widget->setText(to_qt(control.caption()));
        widget->setChecked(control.value());
        widget->setFocusPolicy(is_stop_of_its_group(control) ? Qt::StrongFocus : Qt::ClickFocus);
    });
    return widget;
}

// From one choice of a group to the next that can be made, round and round.
void Binder::arrow(const OptionButton& control, int step)
{
    const std::vector<OptionButton*>& group = control.group;
    const auto size = static_cast<int>(group.size());
    const auto at = static_cast<int>(std::find(group.begin(), group.end(), &control) - group.begin());
    for (int i = 1; i < size; ++i) {
        OptionButton& other = *group[static_cast<std::size_t>((at + size + i * step % size) % size)];
        const auto found = options_.find(&other);
        if (!other.enabled() || !other.visible() || found == options_.end())
            continue;
        after(other, choose_option(shell_, other));
        refresh();
        if (other.value())
            found->second->setFocus(Qt::TabFocusReason);
        return;
    }
}

QComboBox* Binder::list(ComboBox& control)
{
    auto* widget = new QComboBox;
    widget->setEditable(control.editable);
    widget->installEventFilter(this);
    widget->setItemDelegate(new NotedItems(widget));
    connect(widget, &QComboBox::activated, this,
        [this, &control](int item) { after(control, choose_item(shell_, control, item)); });
    if (control.editable) {
        connect(widget->lineEdit(), &QLineEdit::textEdited, this,
            [this, &control](const QString& text) { after(control, type_text(shell_, control, from_qt(text))); });
    }
    bind(control, widget, [&control, widget] { show_items(*widget, control); });
    return widget;
}

QGroupBox* Binder::frame(Frame& control)
{
    auto* widget = new QGroupBox;
    widget->installEventFilter(this);
    bind(control, widget, [&control, widget] { widget->setTitle(to_qt(control.caption())); });
    return widget;
}

QWidget* Binder::page(Frame& control)
{
    auto* widget = new QWidget;
    bind(control, widget, [] {});
    return widget;
}

QWidget* Binder::page(Frame& control, QLabel*& caption)
{
    auto* widget = new QWidget;
    caption = new PathLabel;
    bind(control, widget, [&control, widget, text = caption] {
        text->setText(to_qt(control.caption()));
        show_in_place(*text, !control.caption().empty());
    });
    return widget;
}

QTabBar* Binder::tabs(TabStrip& control)
{
    auto* widget = new QTabBar;
    auto* style = new CloseTabs;
    style->setParent(widget);
    widget->setStyle(style);
    widget->setExpanding(false);
    widget->setElideMode(Qt::ElideNone); // where the strip is too narrow for all, it scrolls
    widget->setDrawBase(true);
    for (QToolButton* scroll : widget->findChildren<QToolButton*>())
        scroll->setFocusPolicy(Qt::NoFocus); // the arrow keys bring each tab into view
    connect(widget, &QTabBar::currentChanged, this,
        [this, &control](int tab) { after(control, choose_tab(shell_, control, tab)); });
    bind(control, widget, [&control, widget] { show_tabs(*widget, control); });
    return widget;
}

QProgressBar* Binder::progress(ProgressBar& control)
{
    auto* widget = new QProgressBar;
    widget->setTextVisible(false);
    QSizePolicy keeps_place = widget->sizePolicy();
    keeps_place.setRetainSizeWhenHidden(true);
    widget->setSizePolicy(keeps_place);
    bind(control, widget, [&control, widget] {
        widget->setRange(control.min(), control.max());
        widget->setValue(control.value());
    });
    return widget;
}

QScrollBar* Binder::scroll(ScrollBar& control)
{
    auto* widget = new SliderScrollBar;
    connect(widget, &QScrollBar::valueChanged, this,
        [this, &control](int value) { after(control, scroll_to(shell_, control, value)); });
    bind(control, widget, [&control, widget] {
        widget->setRange(control.min(), control.max());
        widget->setSingleStep(control.small_step);
        widget->setPageStep(control.large_step);
        widget->setValue(control.value());
    });
    return widget;
}

bool Binder::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Wheel && qobject_cast<QComboBox*>(watched) != nullptr) {
        event->ignore(); // a closed list is not changed by a wheel that passes over it; what it stands in may scroll
        return true;
    }
    if (event->type() == QEvent::KeyPress && qobject_cast<QPushButton*>(watched) != nullptr &&
        static_cast<QKeyEvent*>(event)->isAutoRepeat())
        return true; // a hand that leans on a key has meant one chip
    if (event->type() == QEvent::KeyPress && qobject_cast<QRadioButton*>(watched) != nullptr) {
        const int step = step_of(static_cast<QKeyEvent*>(event)->key());
        const auto* control =
            static_cast<const OptionButton*>(shell_.form.controls.find_full(from_qt(watched->objectName())));
        if (step != 0 && control != nullptr)
            arrow(*control, step);
        return step != 0;
    }
    if (event->type() == QEvent::MouseButtonPress && qobject_cast<QGroupBox*>(watched) != nullptr) {
        if (Control* control = shell_.form.controls.find_full(from_qt(watched->objectName())))
            click(shell_, *control);
    }
    return QObject::eventFilter(watched, event);
}

} // namespace vrk
