// Oak: 112 models = (9 sizes x 3 variants + 10 IAP sizes of two variants + 9 of V) x 2 supplies; one row more is
// declared. Only V has a data flash. Size bits are KB / 2, and one less for the IAP class, but for its top size.
#include "catalog/families.h"

namespace vrk {
namespace {

using enum VoltageClass;
using enum ModelClass;
using enum DataFlash;

constexpr std::int32_t own = right_above_code;

// clang-format off
constexpr Size sizes[] = {
//  KB    id bits  ap_last  data flash      boot area       flags
  { "8",  0x04,    0x1FFF,  own,    0xF3FF, 0xF400, 0xFFFF, "11111000" },
  { "16", 0x08,    0x3FFF,  own,    0xF3FF, 0xF400, 0xFFFF, "11111000" },
  { "20", 0x0A,    0x4FFF,  0x8000, 0xF3FF, 0xF400, 0xFFFF, "11111000" },   // a gap of 12 KB before the data flash
  { "32", 0x10,    0x7FFF,  own,    0xF3FF, 0xF400, 0xFFFF, "11111000" },
  { "40", 0x14,    0x9FFF,  own,    0xF3FF, 0xF400, 0xFFFF, "11111000" },
  { "48", 0x18,    0xBFFF,  own,    0xF3FF, 0xF400, 0xFFFF, "11111000" },
  { "52", 0x1A,    0xCFFF,  own,    0xF3FF, 0xF400, 0xFFFF, "11111000" },
  { "56", 0x1C,    0xDFFF,  own,    0xF3FF, 0xF400, 0xFFFF, "11111000" },
  { "60", 0x1E,    0xEFFF,  own,    0xF3FF, 0xF400, 0xFFFF, "11111000" },
};
constexpr Size iap_sizes[] = {
  { "8",  0x03,    0x1FFF,  own,    0xF3FF, 0xF400, 0xFFFF, "11111001" },
  { "16", 0x07,    0x3FFF,  own,    0xF3FF, 0xF400, 0xFFFF, "11111001" },
  { "20", 0x09,    0x4FFF,  0x8000, 0xF3FF, 0xF400, 0xFFFF, "11111001" },
  { "32", 0x0F,    0x7FFF,  own,    0xF3FF, 0xF400, 0xFFFF, "11111001" },
  { "40", 0x13,    0x9FFF,  own,    0xF3FF, 0xF400, 0xFFFF, "11111001" },
  { "48", 0x17,    0xBFFF,  own,    0xF3FF, 0xF400, 0xFFFF, "11111001" },
  { "52", 0x19,    0xCFFF,  own,    0xF3FF, 0xF400, 0xFFFF, "11111001" },
  { "56", 0x1B,    0xDFFF,  own,    0xF3FF, 0xF400, 0xFFFF, "11111001" },
  { "60", 0x1D,    0xEFFF,  own,    0xF3FF, 0xF400, 0xFFFF, "11111001" },
  { "62", 0x1F,    0xF7FF,  own,    0xF7FF, 0xF800, 0xFFFF, "11111111" },
};
constexpr std::span<const Size> iap_sizes_of_v = std::span(iap_sizes).first<9>();   // V has no 62 KB

constexpr ModelLine oak_lines[] = {
//  supply class  var  mark  id      data flash       sizes
  { V5,    fixed, "",  "",   0xD300, none,            sizes },
  { V5,    fixed, "V", "",   0xD360, as_sized,        sizes },
  { V5,    fixed, "W", "",   0xD340, none,            sizes },
  { V5,    iap,   "",  "",   0xD300, none_above_code, iap_sizes },   // empty elsewhere than at 3 V: meant
  { V5,    iap,   "V", "",   0xD360, as_sized,        iap_sizes_of_v },
  { V5,    iap,   "W", "",   0xD340, none_above_code, iap_sizes },
  { V3,    fixed, "",  "",   0xD380, none,            sizes },
  { V3,    fixed, "V", "",   0xD3E0, as_sized,        sizes },
  { V3,    fixed, "W", "",   0xD3C0, none,            sizes },
  { V3,    iap,   "",  "",   0xD380, none,            iap_sizes },
  { V3,    iap,   "V", "",   0xD3E0, as_sized,        iap_sizes_of_v },
  { V3,    iap,   "W", "",   0xD3C0, none,            iap_sizes },
};
// clang-format on

} // namespace

constinit const Family oak = {10, "FamilyOak", "Oak series", InTree::yes, "Oak", 4, 113, oak_lines};

} // namespace vrk
