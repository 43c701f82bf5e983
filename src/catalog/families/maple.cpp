// Maple: 32 models = (5 sizes x 2 variants + 6 IAP sizes) x 2 supplies. The plain models have no data flash.
// From 5 KB on, where the boot area begins higher, bit 6 of the id is set as well.
#include "catalog/families.h"

namespace vrk {
namespace {

using enum VoltageClass;
using enum ModelClass;
using enum DataFlash;

constexpr std::int32_t own = right_above_code;

// clang-format off
constexpr Size sizes[] = {
//  KB   id bits  ap_last  data flash   boot area       flags
  { "1", 0x01,    0x03FF,  own, 0x13FF, 0x1400, 0x1FFF, "11111000" },
  { "2", 0x02,    0x07FF,  own, 0x13FF, 0x1400, 0x1FFF, "11111000" },
  { "3", 0x03,    0x0BFF,  own, 0x13FF, 0x1400, 0x1FFF, "11111000" },
  { "4", 0x04,    0x0FFF,  own, 0x13FF, 0x1400, 0x1FFF, "11111000" },
  { "5", 0x45,    0x13FF,  own, 0x17FF, 0x1800, 0x1FFF, "11111110" },
};
constexpr Size iap_sizes[] = {
  { "1", 0x01,    0x03FF,  own, 0x13FF, 0x1400, 0x1FFF, "11111001" },
  { "2", 0x02,    0x07FF,  own, 0x13FF, 0x1400, 0x1FFF, "11111001" },
  { "3", 0x03,    0x0BFF,  own, 0x13FF, 0x1400, 0x1FFF, "11111001" },
  { "4", 0x04,    0x0FFF,  own, 0x13FF, 0x1400, 0x1FFF, "11111001" },
  { "5", 0x45,    0x13FF,  own, 0x17FF, 0x1800, 0x1FFF, "11111111" },
  { "6", 0x46,    0x17FF,  own, 0x17FF, 0x1800, 0x1FFF, "11111111" },
};

constexpr ModelLine maple_lines[] = {
//  supply class  var  mark  id      data flash  sizes
  { V5,    fixed, "",  "",   0xE200, none,       sizes },
  { V5,    fixed, "S", "",   0xE220, as_sized,   sizes },
  { V5,    iap,   "",  "",   0xE230, as_sized,   iap_sizes },
  { V3,    fixed, "",  "",   0xE280, none,       sizes },
  { V3,    fixed, "S", "",   0xE2A0, as_sized,   sizes },
  { V3,    iap,   "",  "",   0xE2B0, as_sized,   iap_sizes },
};
// clang-format on

} // namespace

constinit const Family maple = {9, "FamilyMaple", "Maple series", InTree::yes, "Maple", 4, 32, maple_lines};

} // namespace vrk
