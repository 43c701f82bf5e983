#include "window/dump_pane.h"

#include "image/dump.h"
#include "window/colors.h"

#include <QGlyphRun>
#include <QPaintEvent>
#include <QPainter>
#include <QRawFont>
#include <QTextBlock>
#include <QTextLayout>

#include <algorithm>

namespace vrk {

namespace {

constexpr int hex_end = dump_data_column + bytes_per_line * dump_byte_size; // with the blank behind the last byte
constexpr int characters_column = hex_end + 1;

constexpr char first_plain = ' ';
constexpr char last_plain = '~';

QString plain_characters()
{
    QString all;
    for (char character = first_plain; character <= last_plain; ++character)
        all += QLatin1Char(character);
    return all;
}

} // namespace

void DumpPane::set_marks(const AddressRange& written, const AddressRange& number)
{
    if (written == written_ && number == number_)
        return;
    written_ = written;
    number_ = number;
    viewport()->update();
}

bool DumpPane::shows_characters() const
{
    return viewport()->width() >=
        2 * document()->documentMargin() + digit_width() * (characters_column + bytes_per_line);
}

qreal DumpPane::digit_width() const { return QFontMetricsF(font()).horizontalAdvance('0'); }

void DumpPane::paintEvent(QPaintEvent* event)
{
    QPlainTextEdit::paintEvent(event);
    const std::vector<Line> lines = lines_in(event->rect());
    QPainter painter(viewport());
    if (shows_characters())
        paint_characters(painter, lines);
    for (const Line& line : lines) {
        cover(painter, line, number_, number_veil(palette()));
        const QColor left_out = left_out_veil(palette());
        if (written_.first > written_.last) {
            cover(painter, line, {line.address, line.address + bytes_per_line}, left_out);
        } else {
            cover(painter, line, {line.address, written_.first - 1}, left_out);
            cover(painter, line, {written_.last + 1, line.address + bytes_per_line}, left_out);
        }
    }
}

std::vector<DumpPane::Line> DumpPane::lines_in(const QRect& area) const
{
    std::vector<Line> lines;
    for (QTextBlock block = firstVisibleBlock(); block.isValid(); block = block.next()) {
        const QRectF place = blockBoundingGeometry(block).translated(contentOffset());
        if (place.top() > area.bottom())
            break;
        std::string text = block.text().toStdString();
        const auto address = dump_line_address(text);
        if (place.bottom() < area.top() || !address || block.layout()->lineCount() == 0)
            continue;
        const QTextLine line = block.layout()->lineAt(0);
        const QPointF start = place.topLeft() + line.position();
        lines.push_back({*address, start, line.height(), start.y() + line.ascent(), dump_characters(text)});
    }
    return lines;
}

// All of them in one run of glyphs: to lay out line by line would cost as much as the dump itself.
void DumpPane::paint_characters(QPainter& painter, const std::vector<Line>& lines) const
{
    const QRawFont raw_font = QRawFont::fromFont(font());
    const QList<quint32> glyphs = raw_font.glyphIndexesForString(plain_characters());
    const qreal digit = digit_width();
    QList<quint32> indexes;
    QList<QPointF> places;
    for (const Line& line : lines) {
        QPointF place(line.start.x() + digit * characters_column, line.base);
        for (const char character : line.characters) {
            indexes.push_back(glyphs[character - first_plain]);
            places.push_back(place);
            place.rx() += digit;
        }
    }
    QGlyphRun run;
    run.setRawFont(raw_font);
    run.setGlyphIndexes(indexes);
    run.setPositions(places);
    painter.setPen(palette().color(QPalette::Text));
    painter.drawGlyphRun({}, run);
}

void DumpPane::cover(QPainter& painter, const Line& line, const AddressRange& stretch, const QColor& color) const
{
    const int first = std::max(stretch.first - line.address, 0);
    const int last = std::min(stretch.last - line.address, bytes_per_line - 1);
    if (first > last)
        return;
    const auto part = [&](int column, int count) {
        const QRectF place(line.start + QPointF(digit_width() * column, 0), QSizeF(digit_width() * count, line.height));
        painter.fillRect(place.toAlignedRect(), color);
    };
    const int count = last - first + 1;
    part(dump_data_column + first * dump_byte_size, count * dump_byte_size - 1);
    if (shows_characters())
        part(characters_column + first, count);
}

} // namespace vrk
