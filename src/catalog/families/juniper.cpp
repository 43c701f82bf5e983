// Juniper: 136 models = (8 sizes + 9 IAP sizes) x 4 variants x 2 supplies. The plain models have no data flash.
// Size bits are KB / 2, and one less for the IAP class, but for its top size, which has them all.
#include "catalog/families.h"

namespace vrk {
namespace {

using enum VoltageClass;
using enum ModelClass;
using enum DataFlash;

constexpr std::int32_t own = right_above_code;

// clang-format off
constexpr Size sizes[] = {
//  KB    id bits  ap_last  data flash   boot area       flags
  { "8",  0x04,    0x1FFF,  own, 0xF3FF, 0xF400, 0xFFFF, "11111000" },
  { "16", 0x08,    0x3FFF,  own, 0xF3FF, 0xF400, 0xFFFF, "11111000" },
  { "32", 0x10,    0x7FFF,  own, 0xF3FF, 0xF400, 0xFFFF, "11111000" },
  { "40", 0x14,    0x9FFF,  own, 0xF3FF, 0xF400, 0xFFFF, "11111000" },
  { "48", 0x18,    0xBFFF,  own, 0xF3FF, 0xF400, 0xFFFF, "11111000" },
  { "52", 0x1A,    0xCFFF,  own, 0xF3FF, 0xF400, 0xFFFF, "11111000" },
  { "56", 0x1C,    0xDFFF,  own, 0xF3FF, 0xF400, 0xFFFF, "11111000" },
  { "60", 0x1E,    0xEFFF,  own, 0xF3FF, 0xF400, 0xFFFF, "11111000" },
};
constexpr Size iap_sizes[] = {
  { "8",  0x03,    0x1FFF,  own, 0xF3FF, 0xF400, 0xFFFF, "11111001" },
  { "16", 0x07,    0x3FFF,  own, 0xF3FF, 0xF400, 0xFFFF, "11111001" },
  { "32", 0x0F,    0x7FFF,  own, 0xF3FF, 0xF400, 0xFFFF, "11111001" },
  { "40", 0x13,    0x9FFF,  own, 0xF3FF, 0xF400, 0xFFFF, "11111001" },
  { "48", 0x17,    0xBFFF,  own, 0xF3FF, 0xF400, 0xFFFF, "11111001" },
  { "52", 0x19,    0xCFFF,  own, 0xF3FF, 0xF400, 0xFFFF, "11111001" },
  { "56", 0x1B,    0xDFFF,  own, 0xF3FF, 0xF400, 0xFFFF, "11111001" },
  { "60", 0x1D,    0xEFFF,  own, 0xF3FF, 0xF400, 0xFFFF, "11111001" },
  { "62", 0x1F,    0xF7FF,  own, 0xF7FF, 0xF800, 0xFFFF, "11111111" },
};

constexpr ModelLine juniper_lines[] = {
//  supply class  var  mark  id      data flash  sizes
  { V5,    fixed, "",  "",   0xD100, none,       sizes },
  { V5,    fixed, "Q", "",   0xD160, as_sized,   sizes },
  { V5,    fixed, "R", "",   0xD140, as_sized,   sizes },
  { V5,    fixed, "T", "",   0xD120, as_sized,   sizes },
  { V5,    iap,   "",  "",   0xD100, none,       iap_sizes },
  { V5,    iap,   "Q", "",   0xD160, as_sized,   iap_sizes },
  { V5,    iap,   "R", "",   0xD140, as_sized,   iap_sizes },
  { V5,    iap,   "T", "",   0xD120, as_sized,   iap_sizes },
  { V3,    fixed, "",  "",   0xD180, none,       sizes },
  { V3,    fixed, "Q", "",   0xD1E0, as_sized,   sizes },
  { V3,    fixed, "R", "",   0xD1C0, as_sized,   sizes },
  { V3,    fixed, "T", "",   0xD1A0, as_sized,   sizes },
  { V3,    iap,   "",  "",   0xD180, none,       iap_sizes },
  { V3,    iap,   "Q", "",   0xD1E0, as_sized,   iap_sizes },
  { V3,    iap,   "R", "",   0xD1C0, as_sized,   iap_sizes },
  { V3,    iap,   "T", "",   0xD1A0, as_sized,   iap_sizes },
};
// clang-format on

} // namespace

constinit const Family juniper = {7, "FamilyJuniper", "Juniper series", InTree::yes, "Juniper", 4, 136, juniper_lines};

} // namespace vrk
