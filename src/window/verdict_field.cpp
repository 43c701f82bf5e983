#include "window/verdict_field.h"

#include "form/named_controls.h"
#include "window/verdict_look.h"

#include <QPainter>

namespace vrk {

namespace {

constexpr qreal word_size = 2.6; // times the height of other text: 10 mm on the usual screen, read from two metres
constexpr int inset = 8;

QFont word_font(const QFont& font)
{
    QFont large = font;
    large.setPixelSize(static_cast<int>(QFontMetrics(font).height() * word_size * 0.8));
    large.setBold(true);
    return large;
}

} // namespace

VerdictField::VerdictField(Binder& binder)
    : shell_(binder.shell())
{
    binder.bind(NamedControls{shell_.controls}.label("labVerdict"), this, [this] { show_verdict(); });
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void VerdictField::show_verdict()
{
    state_ = shell_.verdict.now;
    const NamedControls form{shell_.controls};
    word_ = to_qt(form.label("labVerdict").caption());
    last_ = to_qt(form.label("labLastVerdict").caption());
    setAccessibleName(last_.isEmpty() ? word_ : word_ + ". " + last_);
    update();
}

QSize VerdictField::sizeHint() const
{
    const QFontMetrics large(word_font(font()));
    return {20 * fontMetrics().height(), large.height() + fontMetrics().height() + inset};
}

QSize VerdictField::minimumSizeHint() const { return {10 * fontMetrics().height(), sizeHint().height()}; }

void VerdictField::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const QColor ink = paint_verdict_ground(painter, QRectF(rect()), state_, palette());
    const QFont large = word_font(font());
    const int word_height = QFontMetrics(large).height();
    const qreal side = word_height * 0.72;
    paint_verdict_shape(painter, QRectF(inset * 1.5, inset / 2.0 + (word_height - side) / 2, side, side), state_, ink);

    painter.setPen(ink);
    painter.setFont(large);
    const int left = static_cast<int>(side) + 3 * inset;
    painter.drawText(
        QRect(left, inset / 2, width() - left - inset, word_height), Qt::AlignLeft | Qt::AlignVCenter, word_);
    painter.setFont(font());
    painter.drawText(QRect(left, inset / 2 + word_height, width() - left - inset, fontMetrics().height()),
        Qt::AlignLeft | Qt::AlignVCenter, fontMetrics().elidedText(last_, Qt::ElideRight, width() - left - inset));
}

} // namespace vrk
