#include "window/icon.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

namespace vrk {

namespace {

constexpr int side = 128; // of the drawing; each size is made from it

QPixmap drawn(int pixels)
{
    QPixmap picture(pixels, pixels);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(pixels / static_cast<qreal>(side), pixels / static_cast<qreal>(side));

    painter.setPen(QPen(QColor(0x8a, 0x93, 0x9c), 6, Qt::SolidLine, Qt::RoundCap));
    for (const int y : {40, 56, 72, 88}) {
        painter.drawLine(14, y, 28, y);
        painter.drawLine(100, y, 114, y);
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0x23, 0x30, 0x3d));
    painter.drawRoundedRect(26, 22, 76, 84, 8, 8);
    painter.setBrush(QColor(0xf4, 0xf6, 0xf8));
    painter.drawPie(54, 12, 20, 20, 180 * 16, 180 * 16);

    QPainterPath arrow(QPointF(64, 44));
    arrow.lineTo(64, 74);
    arrow.moveTo(50, 62);
    arrow.lineTo(64, 76);
    arrow.lineTo(78, 62);
    arrow.moveTo(46, 92);
    arrow.lineTo(82, 92);
    painter.setPen(QPen(QColor(0x4c, 0xc3, 0x8a), 9, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(arrow);
    return picture;
}

} // namespace

QIcon program_icon()
{
    QIcon icon;
    for (const int pixels : {16, 24, 32, 48, 64, 128})
        icon.addPixmap(drawn(pixels));
    return icon;
}

} // namespace vrk
