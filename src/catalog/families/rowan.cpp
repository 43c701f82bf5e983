// Rowan: 34 models = (7 sizes of the first line + 10 of the second) x 2 supplies. Built as Birch, but with an id of its
// own for each supply, less data flash and a top size of 61 KB. The second line's repeated sizes carry the mark M.
#include "catalog/families.h"

namespace vrk {
namespace {

using enum VoltageClass;
using enum ModelClass;
using enum DataFlash;

constexpr std::int32_t own = right_above_code;

// clang-format off
constexpr Size rowan_first_line[] = {
//  KB    id bits  ap_last  data flash      boot area       flags       alt
  { "4",  0x01,    0x0FFF,  own,    0x33FF, 0x2C00, 0x3BFF, "10000000", 0x0FFF },
  { "6",  0x06,    0x17FF,  own,    0x33FF, 0x2C00, 0x3BFF, "10000000", 0x17FF },
  { "7",  0x07,    0x1BFF,  own,    0x33FF, 0x2C00, 0x3BFF, "10000000", 0x1BFF },
  { "8",  0x02,    0x1FFF,  own,    0x33FF, 0x2C00, 0x3BFF, "10000000", 0x1FFF },
  { "10", 0x0A,    0x27FF,  own,    0x33FF, 0x2C00, 0x3BFF, "10000000", 0x27FF },
  { "12", 0x0C,    0x2FFF,  own,    0x33FF, 0x2C00, 0x3BFF, "10000000", 0x2FFF },
  { "14", 0x04,    0x37FF,  own,    0x33FF, 0x2C00, 0x3BFF, "10000000", 0x33FF },
};
constexpr Size rowan_second_line_again[] = {
  { "4",  0x01,    0x0FFF,  own,    0xF3FF, 0xEC00, 0xFBFF, "10000000", 0x0FFF },
  { "8",  0x02,    0x1FFF,  own,    0xF3FF, 0xEC00, 0xFBFF, "10000000", 0x1FFF },
};
constexpr Size rowan_second_line[] = {
  { "16", 0x04,    0x3FFF,  own,    0xF3FF, 0xEC00, 0xFBFF, "10000000", 0x3FFF },
  { "20", 0x05,    0x4FFF,  own,    0xF3FF, 0xEC00, 0xFBFF, "10000000", 0x7FFF },
  { "32", 0x08,    0x7FFF,  own,    0xF3FF, 0xEC00, 0xFBFF, "10000000", 0x7FFF },
  { "40", 0x0A,    0x9FFF,  own,    0xF3FF, 0xEC00, 0xFBFF, "10000000", 0x9FFF },
  { "48", 0x0C,    0xBFFF,  own,    0xF3FF, 0xEC00, 0xFBFF, "10000000", 0xBFFF },
  { "52", 0x0D,    0xCFFF,  own,    0xF3FF, 0xEC00, 0xFBFF, "10000000", 0xCFFF },
  { "56", 0x0E,    0xDFFF,  own,    0xF3FF, 0xEC00, 0xFBFF, "10000000", 0xDFFF },
  { "61", 0x10,    0xF3FF,  0xF800, 0xF3FF, 0xEC00, 0xFBFF, "10000000", 0xF3FF },
};

constexpr ModelLine rowan_lines[] = {
//  supply class  var mark  id      data flash  sizes
  { V5,    fixed, "", "",   0xF020, as_sized,   rowan_first_line },
  { V5,    fixed, "", "M",  0xF120, as_sized,   rowan_second_line_again },
  { V5,    fixed, "", "",   0xF120, as_sized,   rowan_second_line },
  { V3,    fixed, "", "",   0xF040, as_sized,   rowan_first_line },
  { V3,    fixed, "", "M",  0xF140, as_sized,   rowan_second_line_again },
  { V3,    fixed, "", "",   0xF140, as_sized,   rowan_second_line },
};
// clang-format on

} // namespace

constinit const Family rowan = {12, "FamilyRowan", "Rowan series", InTree::yes, "Rowan", 4, 34, rowan_lines};

} // namespace vrk
