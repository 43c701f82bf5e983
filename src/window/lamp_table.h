// The states of the off-line board's lamps, drawn: seven lamps a line and what they mean.
#pragma once

#include <QWidget>

namespace vrk {

class LampTable final : public QWidget {
public:
    explicit LampTable(bool english);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

private:
    void paintEvent(QPaintEvent* event) override;
    int line_height() const;
    int lamps_width() const;

    bool english_;
};

} // namespace vrk
