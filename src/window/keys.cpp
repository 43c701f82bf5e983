#include "window/keys.h"

#include <QAbstractButton>
#include <QEvent>
#include <QShortcut>

namespace vrk {

namespace {

struct Key {
    const char* key;
    const char* control;
};

constexpr Key keys[] = {
    {"F5", "comDownload(0)"},
    {"F6", "comDownload(1)"},
    {"Esc", "comStop_Download"},
    {"Ctrl+O", "comLoadFile"},
    {"Ctrl+E", "comLoadDataFile"},
    {"Ctrl+P", "comOpenBatchFile"},
    {"Ctrl+S", "comSaveBatchFile"},
};

// From anywhere to the first control of a step, or to a strip of pages. The steps bear their digit in every language.
constexpr Key places[] = {
    {"Alt+1", "FrameX(0)"},
    {"Alt+2", "FrameX(1)"},
    {"Alt+3", "FrameX(2)"},
    {"Alt+4", "FrameX(3)"},
    {"Alt+5", "FrameX(4)"},
    {"Alt+6", "TabStrip2"},
    {"Alt+7", "TabStrip1"},
};

bool can_be_gone_to(const QWidget& widget)
{
    return widget.isVisible() && widget.isEnabled() && (widget.focusPolicy() & Qt::TabFocus) != 0;
}

void go_to(QWidget& place)
{
    QWidget* stop = &place;
    while (!can_be_gone_to(*stop) || !(stop == &place || place.isAncestorOf(stop))) {
        stop = stop->nextInFocusChain();
        if (stop == &place)
            return; // nothing can be used now
    }
    stop->setFocus(Qt::ShortcutFocusReason);
}

// A shortcut that takes part only while its button can be pressed: otherwise the key belongs to whoever else wants it,
// as Escape does to an open tree.
class ButtonKey final : public QShortcut {
public:
    ButtonKey(const char* key, QAbstractButton& button, QWidget& window)
        : QShortcut(QKeySequence(key), &window)
        , button_(button)
    {
        setAutoRepeat(false); // a key that is leant on starts one chip
        setEnabled(button.isEnabled());
        button.installEventFilter(this);
        connect(this, &QShortcut::activated, this, [this] { press(); });
    }

private:
    // The focus goes along, so that it is found where the hand has acted.
    void press()
    {
        if (button_.isVisible())
            button_.setFocus(Qt::ShortcutFocusReason);
        button_.click();
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::EnabledChange)
            setEnabled(button_.isEnabled());
        return QShortcut::eventFilter(watched, event);
    }

    QAbstractButton& button_;
};

} // namespace

void tie_keys(QWidget& window)
{
    for (const Key& key : keys) {
        auto* button = window.findChild<QAbstractButton*>(key.control);
        new ButtonKey(key.key, *button, window); // the window's own
        button->setToolTip(QKeySequence(key.key).toString(QKeySequence::NativeText));
    }
    for (const Key& key : places) {
        auto* place = window.findChild<QWidget*>(key.control);
        auto* shortcut = new QShortcut(QKeySequence(key.key), &window);
        QObject::connect(shortcut, &QShortcut::activated, place, [place] { go_to(*place); });
    }
}

} // namespace vrk
