#include "window/seen_choices.h"

#include "window/colors.h"

#include <QPainter>
#include <QStyleOption>

namespace vrk {

void SeenChoices::drawPrimitive(
    PrimitiveElement element, const QStyleOption* option, QPainter* painter, const QWidget* widget) const
{
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    const bool round = element == PE_IndicatorRadioButton;
    if (!(round || element == PE_IndicatorCheckBox) || !is_dark(option->palette))
        return;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing, round);
    painter->setPen(note_color(option->palette));
    painter->setBrush(Qt::NoBrush);
    const QRect rim = option->rect.adjusted(0, 0, -1, -1);
    if (round)
        painter->drawEllipse(rim);
    else
        painter->drawRect(rim);
    painter->restore();
}

} // namespace vrk
