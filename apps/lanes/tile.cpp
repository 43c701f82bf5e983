#include "lanes/tile.h"

#include "lanes/places.h"
#include "lanes/texts.h"
#include "window/colors.h"
#include "window/verdict_look.h"

#include <QPainter>
#include <QVBoxLayout>

#include <algorithm>

namespace vrk::lanes {

namespace {

constexpr int inset = 10;
constexpr qreal word_part = 0.5; // of the tile's height
constexpr qreal smallest_word = 3.5; // times the height of other text
constexpr qreal line_size = 1.35; // what stands below it

constexpr VerdictState shown_states[] = {VerdictState::ready, VerdictState::waiting, VerdictState::working,
    VerdictState::good, VerdictState::bad, VerdictState::stopped, VerdictState::not_done};

QFont sized(QFont font, qreal pixels, bool bold)
{
    font.setPixelSize(std::max(8, static_cast<int>(pixels)));
    font.setBold(bold);
    return font;
}

bool judged(VerdictState state) { return state == VerdictState::good || state == VerdictState::bad; }

} // namespace

Tile::Tile(const LineTerms& terms, int number)
    : terms_(terms)
    , process_(terms, number)
    , ports_(new QComboBox)
    , button_(new QPushButton)
{
    setObjectName("lane" + QString::number(number));
    auto* controls = new QHBoxLayout;
    controls->addWidget(ports_, 1);
    controls->addWidget(button_);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(inset, inset, inset, inset);
    layout->addStretch(1);
    layout->addLayout(controls);
    setPalette(readable_when_disabled(palette()));
    ports_->setMinimumContentsLength(12);
    ports_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    ports_->setAccessibleName(said(terms_.english, port_name_text).arg(number));
    ports_->setFocusPolicy(Qt::TabFocus); // the wheel is for nobody: a port must not change by accident
    button_->setObjectName("startStop");
    offer_ports({});
    connect(ports_, &QComboBox::activated, this, [this] {
        if (on_port_chosen)
            on_port_chosen();
    });
    connect(button_, &QPushButton::clicked, this, [this] { toggle(); });
    process_.on_change = [this] { show_lane(); };
    show_lane();
}

void Tile::offer_ports(const std::vector<PortInfo>& ports)
{
    const QString chosen = port();
    ports_->clear();
    ports_->addItem(said(terms_.english, no_port_text), QString());
    for (const PortInfo& info : ports)
        ports_->addItem(QString::fromStdString(info.caption), place_of(QString::fromStdString(info.path)));
    choose_port(chosen);
}

void Tile::choose_port(const QString& place)
{
    int index = ports_->findData(place);
    if (index < 0) {
        ports_->addItem(place, place);
        index = ports_->count() - 1;
    }
    ports_->setCurrentIndex(index);
    ports_->setToolTip(place);
}

QString Tile::port() const { return ports_->currentData().toString(); }

void Tile::toggle()
{
    if (lane().runs)
        stop();
    else if (on_start_wanted)
        on_start_wanted();
}

void Tile::start()
{
    if (!port().isEmpty())
        process_.start(port());
}

void Tile::stop() { process_.stop(); }

void Tile::show_lane()
{
    const Lane& now = lane();
    if (judged(now.state) && now.all() != shown_.all() && on_verdict)
        on_verdict(now.state == VerdictState::good);
    shown_ = now;
    button_->setText(
        QString::number(process_.number()) + "  " + said(terms_.english, now.runs ? stop_text : start_text));
    ports_->setEnabled(!now.runs);
    setToolTip(QString::fromStdString(now.advice)); // whole, where the tile is small
    setAccessibleName(
        QString::number(process_.number()) + ": " + said(terms_.english, word_of(now.state)) + ". " + line_below());
    update();
    if (on_change)
        on_change();
}

QSize Tile::sizeHint() const { return {16 * fontMetrics().height(), 11 * fontMetrics().height()}; }

// The one thing that matters most below the word.
QString Tile::line_below() const
{
    const bool english = terms_.english;
    if (port().isEmpty() && !shown_.runs)
        return said(english, choose_port_text);
    if (shown_.state == VerdictState::working && shown_.seconds_left >= 0)
        return said(english, seconds_text).arg(shown_.percent).arg(shown_.seconds_left);
    QString line;
    if (shown_.last != VerdictState::ready)
        line = said(english, last_chip) + said(english, word_of(shown_.last));
    if (!shown_.number.empty())
        line += (line.isEmpty() ? "" : "   ") + said(english, number_text).arg(QString::fromStdString(shown_.number));
    return line;
}

// The shape with the lane's number beside it, and the word below, as large as the longest word allows.
void Tile::draw_word(QPainter& painter, const QRect& place, const QColor& ink) const
{
    const int above = place.height() * 9 / 20;
    paint_verdict_shape(painter, QRectF(place.left(), place.top(), above, above), shown_.state, ink);
    painter.setPen(ink);
    painter.setFont(sized(font(), above * 0.8, false));
    painter.drawText(QRect(place.left(), place.top(), place.width(), above), Qt::AlignRight | Qt::AlignVCenter,
        QString::number(process_.number()));

    const QRect below(place.left(), place.top() + above, place.width(), place.height() - above);
    QFont large = sized(font(), below.height() * 0.8, true);
    int longest = 1;
    for (const VerdictState state : shown_states)
        longest = std::max(longest, QFontMetrics(large).horizontalAdvance(said(terms_.english, word_of(state))));
    if (longest > below.width())
        large = sized(large, double(large.pixelSize()) * below.width() / longest, true);
    painter.setFont(large);
    painter.drawText(below, Qt::AlignLeft | Qt::AlignVCenter, said(terms_.english, word_of(shown_.state)));
}

void Tile::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const QColor ink = paint_verdict_ground(painter, QRectF(rect()), shown_.state, palette());
    const int text = fontMetrics().height();
    const int room = height() - 2 * inset - ports_->height();
    const int word = std::max(static_cast<int>(room * word_part), static_cast<int>(text * smallest_word));
    QRect place = rect().adjusted(inset, inset, -inset, -inset);
    place.setHeight(word);
    draw_word(painter, place, ink);

    const QFont large = sized(font(), text * line_size * 0.8, false);
    const int row = QFontMetrics(large).height();
    place.moveTop(place.bottom() + 2);
    place.setHeight(row);
    painter.setFont(large);
    if (shown_.state == VerdictState::working) {
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(place.adjusted(0, 2, -1, -2));
        painter.fillRect(place.adjusted(2, 4, -3 - (place.width() - 5) * (100 - shown_.percent) / 100, -4), ink);
        place.moveTop(place.bottom() + 2);
    }
    const QString below = line_below();
    if (below.isEmpty())
        place.moveBottom(place.top() - 1);
    else
        painter.drawText(place, Qt::AlignLeft | Qt::AlignVCenter,
            QFontMetrics(large).elidedText(below, Qt::ElideMiddle, place.width()));

    QString counts = said(terms_.english, counts_text).arg(shown_.good).arg(shown_.bad);
    if (shown_.all() > 0)
        counts += said(terms_.english, yield_text).arg(shown_.yield_percent(), 0, 'f', 1);
    QRect bottom = rect().adjusted(inset, 0, -inset, 0);
    bottom.setTop(ports_->geometry().top() - row - 2);
    bottom.setHeight(row);
    painter.drawText(bottom, Qt::AlignLeft | Qt::AlignVCenter, counts);

    const QRect between(place.left(), place.bottom() + 2, place.width(), bottom.top() - place.bottom() - 4);
    const QString advice = QString::fromStdString(shown_.advice);
    constexpr int how = Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap;
    const bool fits = QFontMetrics(large).boundingRect(between, how, advice).height() <= between.height();
    painter.setFont(fits ? large : font());
    painter.drawText(between, how, advice);
}

} // namespace vrk::lanes
