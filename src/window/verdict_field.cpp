#include "window/verdict_field.h"

#include "form/named_controls.h"
#include "window/colors.h"

#include <QPainter>
#include <QPainterPath>

namespace vrk {

namespace {

constexpr qreal word_size = 2.6; // times the height of other text: 10 mm on the usual screen, read from two metres
constexpr int inset = 8;
constexpr qreal round = 5; // the corners

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
        for (const qreal x : {0.12, 0.5, 0.88})
            path.addEllipse(QPointF(x, 0.5), 0.05, 0.05);
        break;
    case '!':
        path.moveTo(0.5, 0.1);
        path.lineTo(0.5, 0.6);
        path.addEllipse(QPointF(0.5, 0.86), 0.04, 0.04);
        break;
    default:
        path.addEllipse(QPointF(0.5, 0.5), 0.32, 0.32);
    }
    return path;
}

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
    const Look& look = look_of(state_);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const bool colored = look.ground != 0;
    const QColor ground = colored ? QColor(look.ground) : palette().color(QPalette::Base);
    const QColor ink = colored ? QColor(Qt::white) : palette().color(QPalette::Active, QPalette::Text);
    painter.setPen(colored ? ground : note_color(palette()));
    painter.setBrush(ground);
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), round, round);

    const QFont large = word_font(font());
    const int word_height = QFontMetrics(large).height();
    const qreal side = word_height * 0.72;
    painter.save();
    painter.translate(inset * 1.5, inset / 2.0 + (word_height - side) / 2);
    painter.scale(side, side);
    painter.setPen(QPen(ink, 0.16, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(shape_path(look.shape));
    painter.restore();

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
