// What stands on the screen without room for all of it. What lies in a scrolled area is reached by scrolling; the
// arrows of a strip of tabs are no texts.
#pragma once

#include <QAbstractButton>
#include <QLabel>
#include <QScrollArea>
#include <QTabBar>

#include <string>

namespace vrk {

// A button with a sign or two may be narrower than its style would have it.
inline bool has_room_for_its_signs(const QWidget& widget)
{
    constexpr int frame = 4; // on either side
    const auto* button = qobject_cast<const QAbstractButton*>(&widget);
    return button != nullptr && button->text().size() <= 2 &&
        button->width() >= button->fontMetrics().horizontalAdvance(button->text()) + 2 * frame;
}

inline std::string cut_off(const QWidget& window)
{
    std::string found;
    for (const QWidget* widget : window.findChildren<QWidget*>()) {
        const auto* label = qobject_cast<const QLabel*>(widget);
        const bool has_text =
            label != nullptr ? !label->wordWrap() : qobject_cast<const QAbstractButton*>(widget) != nullptr;
        const bool is_arrow = qobject_cast<const QTabBar*>(widget->parentWidget()) != nullptr;
        if (widget->isVisible() && has_text && !is_arrow && !has_room_for_its_signs(*widget) &&
            widget->width() < widget->sizeHint().width())
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

// What has to be scrolled sideways to be seen. The meanings of the lamps are such a table of their own.
inline std::string wider_than_its_place(const QWidget& window)
{
    std::string found;
    for (const QScrollArea* area : window.findChildren<QScrollArea*>()) {
        const int wanted = area->widget()->minimumSizeHint().width();
        if (area->isVisible() && area->objectName() != "lampTable" && wanted > area->viewport()->width())
            found += area->widget()->objectName().toStdString() + " " + std::to_string(wanted) + " in " +
                std::to_string(area->viewport()->width()) + "\n";
    }
    return found;
}

} // namespace vrk
