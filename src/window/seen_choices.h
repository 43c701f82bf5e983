// Boxes to tick and choices with a rim that is seen on a dark ground too: a style takes it darker than the ground, and
// what is not chosen then vanishes.
#pragma once

#include <QProxyStyle>

namespace vrk {

class SeenChoices final : public QProxyStyle {
public:
    using QProxyStyle::QProxyStyle; // on the style of this name

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
        const QWidget* widget = nullptr) const override;
};

} // namespace vrk
