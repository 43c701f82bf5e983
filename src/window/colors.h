// The few colours that mean something, for light and for dark palettes; all others are the palette's own.
#pragma once

#include "report/tone.h"

#include <QColor>
#include <QPalette>

namespace vrk {

bool is_dark(const QPalette& palette);

QColor tone_color(Tone tone, const QPalette& palette); // of text on the palette's base
QColor number_veil(const QPalette& palette); // over text: a serial number
QColor left_out_veil(const QPalette& palette); // over text: it then has the colour of a note
QColor note_color(const QPalette& palette); // text that stands back, and is still read: contrast 4.5 to 1 at least
// What cannot be used now must still be readable: a locked panel is looked at all day.
QPalette readable_when_disabled(QPalette palette);

} // namespace vrk
