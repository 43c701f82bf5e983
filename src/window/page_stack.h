// Pages of which one shows at a time, in a place that keeps its size: nothing beside it moves when a page, a model or a
// language changes. A page that needs more room than there is scrolls.
#pragma once

#include <QScrollArea>

namespace vrk {

// Room for contents that may be larger. Its wishes are its own, whatever it holds.
class PageArea final : public QScrollArea {
public:
    // `wanted` and `least` in lines of text for the height, in average characters for the width.
    PageArea(QWidget* contents, QSize wanted, QSize least);

    QSize sizeHint() const override { return pixels_of(wanted_); }
    QSize minimumSizeHint() const override { return pixels_of(least_); }

private:
    QSize pixels_of(QSize in_text) const;

    QSize wanted_;
    QSize least_;
};

class PageStack final : public QWidget {
public:
    PageStack(QSize wanted, QSize least); // as for PageArea

    void add(QWidget* page); // shown and hidden as it likes

private:
    bool eventFilter(QObject* watched, QEvent* event) override;

    QSize wanted_;
    QSize least_;
};

} // namespace vrk
