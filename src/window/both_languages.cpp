#include "window/both_languages.h"

#include "shell/captions.h"
#include "window/binder.h"

#include <QAbstractButton>
#include <QLabel>

namespace vrk {

namespace {

constexpr const char* of_chinese = "中"; // its font makes a line higher, whatever else is written in it

template <typename Widget> void keep_room(Widget& widget, const Text* caption)
{
    const QString shown = widget.text();
    const QSize least = widget.minimumSize();
    widget.setText(shown + of_chinese);
    QSize room(0, widget.sizeHint().height());
    if (caption != nullptr) {
        for (const std::string_view text : {caption->zh, caption->en}) {
            widget.setText(to_qt(text));
            room = room.expandedTo(widget.sizeHint());
        }
    }
    widget.setText(shown);
    widget.setMinimumSize(least.expandedTo(room).boundedTo(widget.maximumSize())); // a narrow button stays narrow
}

} // namespace

void keep_room_for_both(const Shell& shell, const QWidget& part)
{
    for (QWidget* widget : part.findChildren<QWidget*>()) {
        const Control* control = shell.controls.find_full(from_qt(widget->objectName()));
        const Text* caption = control != nullptr ? caption_of(shell, *control) : nullptr;
        if (auto* label = qobject_cast<QLabel*>(widget))
            keep_room(*label, caption);
        else if (auto* button = qobject_cast<QAbstractButton*>(widget))
            keep_room(*button, caption);
    }
}

} // namespace vrk
