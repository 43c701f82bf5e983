// How a verdict looks: a ground, a shape on it, and what can be read on both. The same in the window and on a line.
#pragma once

#include "shell/verdict.h"

#include <QPainter>
#include <QPalette>

namespace vrk {

// Fills the place, and gives the colour of what is written on it: a contrast of 4.5 to 1 at least.
QColor paint_verdict_ground(QPainter& painter, const QRectF& place, VerdictState state, const QPalette& palette);
// In a square.
void paint_verdict_shape(QPainter& painter, const QRectF& place, VerdictState state, const QColor& ink);

} // namespace vrk
