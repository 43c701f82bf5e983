#include "window/verdict_look.h"

#include "window/colors.h"

#include <QPainterPath>

namespace vrk {

namespace {

constexpr qreal round = 5; // the corners
constexpr qreal point = 0.001; // a line so short that its round ends make a point of it

struct Look {
    VerdictState state;
    QRgb ground; // 0: the palette's own
    char shape; // see draw_shape
};

// White on each of these grounds has a contrast of more than 4.5 to 1.
// clang-format off
constexpr Look looks[] = {
    { VerdictState::ready,    0,        'o' },
    { VerdictState::waiting,  0,        '.' },
    { VerdictState::working,  0x1d5fa8, '>' },
    { VerdictState::good,     0x14753a, 'v' },
    { VerdictState::bad,      0xb3201a, 'x' },
    { VerdictState::stopped,  0x5a5a5a, '#' },
    { VerdictState::done,     0x1d5fa8, 'v' },
    { VerdictState::not_done, 0x8a4b00, '!' },
};
// clang-format on

const Look& look_of(VerdictState state)
{
    for (const Look& look : looks) {
        if (look.state == state)
            return look;
    }
    return looks[0];
}

// Inside a square of side 1, in lines: a tick, a cross, a square, an arrow, three dots, a mark, a ring.
QPainterPath shape_path(char shape)
{
    QPainterPath path;
    switch (shape) {
    case 'v':
        path.moveTo(0.12, 0.55);
        path.lineTo(0.40, 0.85);
        path.lineTo(0.90, 0.18);
        break;
    case 'x':
        path.moveTo(0.15, 0.15);
        path.lineTo(0.85, 0.85);
        path.moveTo(0.85, 0.15);
        path.lineTo(0.15, 0.85);
        break;
    case '#':
        path.addRect(0.2, 0.2, 0.6, 0.6);
        break;
    case '>':
        path.moveTo(0.25, 0.12);
        path.lineTo(0.75, 0.5);
        path.lineTo(0.25, 0.88);
        break;
    case '.':
        for (const qreal x : {0.12, 0.5, 0.88}) {
            path.moveTo(x, 0.5);
            path.lineTo(x + point, 0.5);
        }
        break;
    case '!':
        path.moveTo(0.5, 0.1);
        path.lineTo(0.5, 0.6);
        path.moveTo(0.5, 0.86);
        path.lineTo(0.5, 0.86 + point);
        break;
    default:
        path.addEllipse(QPointF(0.5, 0.5), 0.32, 0.32);
    }
    return path;
}

} // namespace

QColor paint_verdict_ground(QPainter& painter, const QRectF& place, VerdictState state, const QPalette& palette)
{
    const Look& look = look_of(state);
    const bool colored = look.ground != 0;
    const QColor ground = colored ? QColor(look.ground) : palette.color(QPalette::Base);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(colored ? ground : note_color(palette));
    painter.setBrush(ground);
    painter.drawRoundedRect(place.adjusted(0.5, 0.5, -0.5, -0.5), round, round);
    return colored ? QColor(Qt::white) : palette.color(QPalette::Active, QPalette::Text);
}

void paint_verdict_shape(QPainter& painter, const QRectF& place, VerdictState state, const QColor& ink)
{
    painter.save();
    painter.translate(place.topLeft());
    painter.scale(place.width(), place.height());
    painter.setPen(QPen(ink, 0.16, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(shape_path(look_of(state).shape));
    painter.restore();
}

} // namespace vrk
