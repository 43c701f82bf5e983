// The pane of a dump. Beside its text it paints the same bytes as characters, where there is room for them; a serial
// number is marked, and what a download leaves out stands back.
#pragma once

#include "image/range_rules.h"

#include <QPlainTextEdit>

#include <string>
#include <vector>

namespace vrk {

class DumpPane final : public QPlainTextEdit {
public:
    void set_marks(const AddressRange& written, const AddressRange& number); // addresses; empty: none
    bool shows_characters() const;

private:
    struct Line { // on the screen
        std::int32_t address;
        QPointF start;
        qreal height;
        qreal base; // of its characters
        std::string characters;
    };

    qreal digit_width() const;
    std::vector<Line> lines_in(const QRect& area) const;
    void paintEvent(QPaintEvent* event) override;
    void paint_characters(QPainter& painter, const std::vector<Line>& lines) const;
    void cover(QPainter& painter, const Line& line, const AddressRange& stretch, const QColor& color) const;

    AddressRange written_;
    AddressRange number_;
};

} // namespace vrk
