#include "window/path_label.h"

#include <QEvent>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>

namespace vrk {

namespace {

constexpr int most_asked_for = 24; // average characters

} // namespace

PathLabel::PathLabel() { setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed); }

QSize PathLabel::sizeHint() const
{
    const QSize whole = QLabel::sizeHint();
    return {std::min(whole.width(), most_asked_for * fontMetrics().averageCharWidth()), whole.height()};
}

QString PathLabel::shortened() const { return fontMetrics().elidedText(text(), Qt::ElideMiddle, width()); }

bool PathLabel::event(QEvent* event)
{
    if (event->type() != QEvent::ToolTip)
        return QLabel::event(event);
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), shortened() == text() ? QString{} : text(), this);
    return true;
}

void PathLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    painter.drawText(rect(), Qt::AlignLeft | Qt::AlignVCenter, shortened());
}

} // namespace vrk
