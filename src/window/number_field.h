// Fields that take nothing but a number: another character does not go in, and a hint says what would.
#pragma once

#include <QLineEdit>

namespace vrk {

enum class NumberField { hexadecimal, whole, signed_whole };

void take_only(QLineEdit& line, NumberField field, bool english);

} // namespace vrk
