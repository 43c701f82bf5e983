// The program's own icon: a chip with an arrow into it, as packaging/vrk-isp.svg has it.
#pragma once

#include <QIcon>

namespace vrk {

QIcon program_icon();

} // namespace vrk
