// Aspen: 5 models = 4 sizes, and a marked twin of the largest, whose code ends at the boot area. Two-digit ids.
// The data flash cells repeat the last code address.
#include "catalog/families.h"

namespace vrk {
namespace {

using enum VoltageClass;
using enum ModelClass;
using enum DataFlash;

// clang-format off
constexpr Size aspen_top[] = {
//  KB    id bits  ap_last  data flash      boot area       flags
  { "63", 0x06,    0xFBFF,  0xFBFF, 0xFBFF, 0xE000, 0xFFFF, "10000000" },
};
constexpr Size aspen_sizes[] = {     // the one family that counts down
  { "32", 0x08,    0x7FFF,  0x7FFF, 0x7FFF, 0xE000, 0xFFFF, "10000000" },
  { "16", 0x04,    0x3FFF,  0x3FFF, 0x3FFF, 0xE000, 0xFFFF, "10000000" },
  { "8",  0x02,    0x1FFF,  0x1FFF, 0x1FFF, 0xE000, 0xFFFF, "10000000" },
};

constexpr ModelLine aspen_lines[] = {
//  supply class  var mark  id    data flash  sizes        code ends              twins
  { V5,    fixed, "", "",   0x50, as_sized,   aspen_top,   CodeEnd::at_boot_area, Twins::marked },
  { V5,    fixed, "", "",   0x50, as_sized,   aspen_sizes },
};
// clang-format on

} // namespace

constinit const Family aspen = {1, "FamilyAspen", "Aspen series", InTree::yes, "Aspen", 2, 5, aspen_lines};

} // namespace vrk
