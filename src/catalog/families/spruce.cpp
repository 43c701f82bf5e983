// Spruce: 20 models = 10 sizes x 2 supplies.
#include "catalog/families.h"

namespace vrk {
namespace {

using enum VoltageClass;
using enum ModelClass;
using enum DataFlash;

constexpr std::int32_t own = right_above_code;

// clang-format off
constexpr Size spruce_sizes[] = {
//  KB    id bits  ap_last  data flash      boot area       flags       alt
  { "4",  0x01,    0x0FFF,  own,    0xF3FF, 0xEC00, 0xFBFF, "10000000", 0x0FFF },
  { "8",  0x02,    0x1FFF,  own,    0xF3FF, 0xEC00, 0xFBFF, "10000000", 0x1FFF },
  { "16", 0x04,    0x3FFF,  own,    0xF3FF, 0xEC00, 0xFBFF, "10000000", 0x3FFF },
  { "20", 0x05,    0x4FFF,  own,    0xF3FF, 0xEC00, 0xFBFF, "10000000", 0x7FFF },
  { "32", 0x08,    0x7FFF,  own,    0xF3FF, 0xEC00, 0xFBFF, "10000000", 0x7FFF },
  { "40", 0x0A,    0x9FFF,  own,    0xF3FF, 0xEC00, 0xFBFF, "10000000", 0x9FFF },
  { "48", 0x0C,    0xBFFF,  own,    0xF3FF, 0xEC00, 0xFBFF, "10000000", 0xBFFF },
  { "52", 0x0D,    0xCFFF,  own,    0xF3FF, 0xEC00, 0xFBFF, "10000000", 0xCFFF },
  { "56", 0x0E,    0xDFFF,  own,    0xF3FF, 0xEC00, 0xFBFF, "10000000", 0xDFFF },
  { "61", 0x10,    0xF3FF,  0xF800, 0xF3FF, 0xEC00, 0xFBFF, "10000000", 0xF3FF },
};

constexpr ModelLine spruce_lines[] = {
//  supply class  var mark  id      data flash  sizes
  { V5,    fixed, "", "",   0xF160, as_sized,   spruce_sizes },
  { V3,    fixed, "", "",   0xF180, as_sized,   spruce_sizes },
};
// clang-format on

} // namespace

constinit const Family spruce = {13, "FamilySpruce", "Spruce series", InTree::yes, "Spruce", 4, 20, spruce_lines};

} // namespace vrk
