#include "window/colors.h"

namespace vrk {

namespace {

constexpr int middle = 128; // of 255
constexpr qreal note_share = 0.68; // of the text's own colour; the rest is the ground's

QColor between(const QColor& near, const QColor& far, qreal share)
{
    const auto part = [share](qreal one, qreal other) { return one * share + other * (1 - share); };
    return QColor::fromRgbF(static_cast<float>(part(near.redF(), far.redF())),
        static_cast<float>(part(near.greenF(), far.greenF())), static_cast<float>(part(near.blueF(), far.blueF())));
}

} // namespace

bool is_dark(const QPalette& palette) { return palette.color(QPalette::Base).lightness() < middle; }

QColor tone_color(Tone tone, const QPalette& palette)
{
    const bool dark = is_dark(palette);
    switch (tone) {
    case Tone::good:
        return dark ? QColor(0x63, 0xd6, 0x8a) : QColor(0x0f, 0x6b, 0x2f);
    case Tone::bad:
        return dark ? QColor(0xff, 0x8f, 0x85) : QColor(0xb0, 0x1c, 0x14);
    case Tone::advice:
        return dark ? QColor(0xe3, 0xb9, 0x5c) : QColor(0x7a, 0x54, 0x00);
    case Tone::plain:
        break;
    }
    return palette.color(QPalette::Text);
}

QColor number_veil(const QPalette& palette)
{
    constexpr float share = 0.3F;
    QColor color = palette.color(QPalette::Active, QPalette::Highlight);
    color.setAlphaF(share);
    return color;
}

QColor left_out_veil(const QPalette& palette)
{
    QColor color = palette.color(QPalette::Base);
    color.setAlphaF(static_cast<float>(1 - note_share));
    return color;
}

QColor note_color(const QPalette& palette)
{
    return between(palette.color(QPalette::Active, QPalette::WindowText), palette.color(QPalette::Window), note_share);
}

QPalette readable_when_disabled(QPalette palette)
{
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, note_color(palette));
    return palette;
}

} // namespace vrk
