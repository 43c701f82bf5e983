#include "window/lamp_table.h"

#include "shell/board_lamps.h"
#include "window/binder.h"

#include <QPainter>

#include <algorithm>

namespace vrk {

namespace {

constexpr int lamps = 7;
const QColor lit("#d23b2f");

// Lit is a disc, flashing a disc in rays, dark a ring: colour alone would not do.
void draw_lamp(QPainter& painter, char state, const QRectF& place)
{
    const qreal margin = place.width() / 5;
    const QRectF disc = place.adjusted(margin, margin, -margin, -margin);
    painter.setPen(QPen(painter.pen().color(), 1));
    painter.setBrush(state == '.' ? QBrush(Qt::NoBrush) : QBrush(lit));
    painter.drawEllipse(disc);
    if (state != '*')
        return;
    const QPointF centre = place.center();
    for (const QPointF ray : {QPointF(1, 1), QPointF(-1, 1), QPointF(1, -1), QPointF(-1, -1)})
        painter.drawLine(centre + ray * disc.width() * 0.42, centre + ray * place.width() * 0.48);
}

} // namespace

LampTable::LampTable(bool english)
    : english_(english)
{
}

int LampTable::line_height() const { return fontMetrics().height() + 2; }

int LampTable::lamps_width() const { return lamps * line_height() + line_height() / 2; }

QSize LampTable::sizeHint() const
{
    int widest = 0;
    for (const LampState& state : board_lamp_states())
        widest = std::max(widest, fontMetrics().horizontalAdvance(to_qt(in_language(english_, state.meaning))));
    return {lamps_width() + widest + 2, static_cast<int>(board_lamp_states().size()) * line_height()};
}

void LampTable::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const int height = line_height();
    int top = 0;
    for (const LampState& state : board_lamp_states()) {
        painter.setPen(palette().color(QPalette::WindowText));
        for (int lamp = 0; lamp < lamps; ++lamp)
            draw_lamp(painter, state.lamps[static_cast<std::size_t>(lamp)], QRectF(lamp * height, top, height, height));
        painter.setPen(palette().color(QPalette::WindowText));
        painter.drawText(QRect(lamps_width(), top, width() - lamps_width(), height), Qt::AlignVCenter,
            to_qt(in_language(english_, state.meaning)));
        top += height;
    }
}

} // namespace vrk
