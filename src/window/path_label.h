// A line that may be longer than its place, as paths are: shortened in the middle, the whole of it as a hint.
#pragma once

#include <QLabel>

namespace vrk {

class PathLabel final : public QLabel {
public:
    PathLabel();

    QSize sizeHint() const override; // of a short line; a longer one asks for no more
    QSize minimumSizeHint() const override { return sizeHint(); }

private:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    QString shortened() const;
};

} // namespace vrk
