// A lane on the screen, to be read from three metres: a colour, a shape and a word; below it the last chip, what to do,
// and the counts. Its number is the key that starts and stops it.
#pragma once

#include "lanes/lane_process.h"
#include "platform/serial_port.h"

#include <QComboBox>
#include <QPushButton>
#include <QWidget>

#include <functional>
#include <vector>

namespace vrk::lanes {

class Tile final : public QWidget {
public:
    Tile(const LineTerms& terms, int number);

    void offer_ports(const std::vector<PortInfo>& ports); // what is chosen stays, even where it is gone
    void choose_port(const QString& place);
    QString port() const; // its place; empty: none
    void toggle();
    void start();
    void stop();
    const Lane& lane() const { return process_.lane(); }
    LaneProcess& process() { return process_; }

    std::function<void()> on_change; // of what the lane says
    std::function<void()> on_port_chosen;
    std::function<void()> on_start_wanted; // who hears it looks at the job first
    std::function<void(bool good)> on_verdict; // a chip has been judged

    QSize sizeHint() const override;

private:
    void paintEvent(QPaintEvent* event) override;
    void show_lane();
    void draw_word(QPainter& painter, const QRect& place, const QColor& ink) const;
    QString line_below() const;

    const LineTerms& terms_;
    LaneProcess process_;
    Lane shown_;
    QComboBox* ports_;
    QPushButton* button_;
};

} // namespace vrk::lanes
