// Willow: 74 models = (6 sizes x 5 variants + 7 IAP sizes of R) x 2 supplies. Its place in the tree is for unreleased
// models.
#include "catalog/families.h"

namespace vrk {
namespace {

using enum VoltageClass;
using enum ModelClass;
using enum DataFlash;

constexpr std::int32_t own = right_above_code;

// clang-format off
constexpr Size iap_sizes[] = {
//  KB    id bits  ap_last  data flash   boot area       flags
  { "2",  0x02,    0x07FF,  own, 0x33FF, 0x3400, 0x3FFF, "11111000" },
  { "4",  0x04,    0x0FFF,  own, 0x33FF, 0x3400, 0x3FFF, "11111000" },
  { "6",  0x06,    0x17FF,  own, 0x33FF, 0x3400, 0x3FFF, "11111000" },
  { "8",  0x08,    0x1FFF,  own, 0x33FF, 0x3400, 0x3FFF, "11111000" },
  { "10", 0x0A,    0x27FF,  own, 0x33FF, 0x3400, 0x3FFF, "11111000" },
  { "12", 0x0C,    0x2FFF,  own, 0x33FF, 0x3400, 0x3FFF, "11111000" },
  { "14", 0x0E,    0x37FF,  own, 0x37FF, 0x3800, 0x3FFF, "11111111" },
};
constexpr std::span<const Size> sizes = std::span(iap_sizes).first<6>();   // 14 KB is for the IAP class alone

constexpr ModelLine willow_lines[] = {
//  supply class  var  mark  id      data flash  sizes
  { V5,    fixed, "",  "",   0xD400, as_sized,   sizes },
  { V5,    fixed, "R", "",   0xD440, as_sized,   sizes },
  { V5,    fixed, "S", "",   0xD410, as_sized,   sizes },
  { V5,    fixed, "T", "",   0xD430, as_sized,   sizes },
  { V5,    fixed, "V", "",   0xD420, as_sized,   sizes },
  { V5,    iap,   "R", "",   0xD450, as_sized,   iap_sizes },
  { V3,    fixed, "",  "",   0xD480, as_sized,   sizes },
  { V3,    fixed, "R", "",   0xD4C0, as_sized,   sizes },
  { V3,    fixed, "S", "",   0xD490, as_sized,   sizes },
  { V3,    fixed, "T", "",   0xD4B0, as_sized,   sizes },
  { V3,    fixed, "V", "",   0xD4A0, as_sized,   sizes },
  { V3,    iap,   "R", "",   0xD4D0, as_sized,   iap_sizes },
};
// clang-format on

} // namespace

constinit const Family willow = {
    17, "FamilyWillow", "Willow series", InTree::unreleased_only, "Willow", 4, 74, willow_lines};

} // namespace vrk
