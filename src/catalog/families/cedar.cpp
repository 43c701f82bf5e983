// Cedar: 24 models = 6 sizes x 2 variants x 2 supplies.
#include "catalog/families.h"

namespace vrk {
namespace {

using enum VoltageClass;
using enum ModelClass;
using enum DataFlash;

constexpr std::int32_t own = right_above_code;

// clang-format off
constexpr Size cedar_sizes[] = {
//  KB     id bits  ap_last  data flash      boot area       flags
  { "0.5", 0x00,    0x01FF,  0x1000, 0x13FF, 0x1400, 0x1FFF, "0000000" },   // not listed, and its last column stays empty
  { "1",   0x01,    0x03FF,  0x1000, 0x13FF, 0x1400, 0x1FFF, "10000000" },
  { "2",   0x02,    0x07FF,  0x1000, 0x13FF, 0x1400, 0x1FFF, "10000000" },
  { "3",   0x03,    0x0BFF,  0x1000, 0x13FF, 0x1400, 0x1FFF, "10000000" },
  { "4",   0x04,    0x0FFF,  0x1000, 0x13FF, 0x1400, 0x1FFF, "10000000" },
  { "5",   0x05,    0x13FF,  own,    0x13FF, 0x1400, 0x1FFF, "10000000" },
};

constexpr ModelLine cedar_lines[] = {
//  supply class  var  mark  id      data flash  sizes
  { V5,    fixed, "",  "",   0xF200, as_sized,   cedar_sizes },
  { V5,    fixed, "R", "",   0xF210, as_sized,   cedar_sizes },
  { V3,    fixed, "",  "",   0xF220, as_sized,   cedar_sizes },
  { V3,    fixed, "R", "",   0xF230, as_sized,   cedar_sizes },
};
// clang-format on

} // namespace

constinit const Family cedar = {3, "FamilyCedar", "Cedar series", InTree::yes, "Cedar", 4, 24, cedar_lines};

} // namespace vrk
