#include "window/scroll_bar.h"

#include <QStyleOptionSlider>

#include <utility>

namespace vrk {

SliderScrollBar::SliderScrollBar()
    : QScrollBar(Qt::Vertical)
{
}

void SliderScrollBar::sliderChange(SliderChange change)
{
    const bool was_at_end = std::exchange(is_at_end_, value() == minimum() || value() == maximum());
    const QRect was_at = std::exchange(slider_, place_of_slider());
    if (change != SliderValueChange || was_at_end || is_at_end_ || was_at.size() != slider_.size()) {
        QScrollBar::sliderChange(change);
        return;
    }
    update(was_at);
    update(slider_);
}

void SliderScrollBar::resizeEvent(QResizeEvent* event)
{
    slider_ = {}; // it has moved, and all is painted anyway
    QScrollBar::resizeEvent(event);
}

QRect SliderScrollBar::place_of_slider() const
{
    constexpr int shade = 1; // around it
    QStyleOptionSlider option;
    initStyleOption(&option);
    return style()
        ->subControlRect(QStyle::CC_ScrollBar, &option, QStyle::SC_ScrollBarSlider, this)
        .adjusted(-shade, -shade, shade, shade);
}

} // namespace vrk
