#include "window/keys.h"

#include <QAbstractButton>
#include <QEvent>
#include <QShortcut>

namespace vrk {

namespace {

struct Key {
    const char* key;
    const char* button;
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
        auto* button = window.findChild<QAbstractButton*>(key.button);
        new ButtonKey(key.key, *button, window); // the window's own
        button->setToolTip(QKeySequence(key.key).toString(QKeySequence::NativeText));
    }
}

} // namespace vrk
