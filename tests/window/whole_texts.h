// What stands on the screen without room for all of it. What lies in a scrolled area is reached by scrolling; the
// arrows of a strip of tabs are no texts.
#pragma once

#include <QAbstractButton>
#include <QLabel>
#include <QTabBar>

#include <string>

namespace vrk {

inline std::string cut_off(const QWidget& window)
{
    std::string found;
    for (const QWidget* widget : window.findChildren<QWidget*>()) {
        const bool has_text =
            qobject_cast<const QLabel*>(widget) != nullptr || qobject_cast<const QAbstractButton*>(widget) != nullptr;
        const bool is_arrow = qobject_cast<const QTabBar*>(widget->parentWidget()) != nullptr;
        if (widget->isVisible() && has_text && !is_arrow && widget->width() < widget->sizeHint().width())
            found += widget->objectName().toStdString() + " " + std::to_string(widget->width()) + " of " +
                std::to_string(widget->sizeHint().width()) + "\n";
    }
    return found;
}

inline std::string outside(const QWidget& window)
{
    std::string found;
    for (const QWidget* widget : window.findChildren<QWidget*>()) {
        const QWidget* parent = widget->parentWidget();
        if (!widget->isVisible() || widget->isWindow() || widget->objectName().isEmpty() ||
            widget->objectName().startsWith("qt_") || parent->objectName() == "qt_scrollarea_viewport")
            continue;
        if (!parent->rect().contains(widget->geometry()))
            found += widget->objectName().toStdString() + "\n";
    }
    return found;
}

} // namespace vrk
