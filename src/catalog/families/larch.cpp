// Larch: 64 models = (6 sizes x 3 variants + 7 IAP sizes x 2 variants) x 2 supplies. Only V has a data flash.
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
  { "2",  0x02,    0x07FF,  own, 0x33FF, 0x3400, 0x3FFF, "11111000" },
  { "4",  0x04,    0x0FFF,  own, 0x33FF, 0x3400, 0x3FFF, "11111000" },
  { "6",  0x06,    0x17FF,  own, 0x33FF, 0x3400, 0x3FFF, "11111000" },
  { "8",  0x08,    0x1FFF,  own, 0x33FF, 0x3400, 0x3FFF, "11111000" },
  { "10", 0x0A,    0x27FF,  own, 0x33FF, 0x3400, 0x3FFF, "11111000" },
  { "12", 0x0C,    0x2FFF,  own, 0x33FF, 0x3400, 0x3FFF, "11111000" },
};
constexpr Size iap_sizes[] = {
  { "2",  0x02,    0x07FF,  own, 0x33FF, 0x3400, 0x3FFF, "11111001" },
  { "4",  0x04,    0x0FFF,  own, 0x33FF, 0x3400, 0x3FFF, "11111001" },
  { "6",  0x06,    0x17FF,  own, 0x33FF, 0x3400, 0x3FFF, "11111001" },
  { "8",  0x08,    0x1FFF,  own, 0x33FF, 0x3400, 0x3FFF, "11111001" },
  { "10", 0x0A,    0x27FF,  own, 0x33FF, 0x3400, 0x3FFF, "11111001" },
  { "12", 0x0C,    0x2FFF,  own, 0x33FF, 0x3400, 0x3FFF, "11111001" },
  { "14", 0x0E,    0x37FF,  own, 0x37FF, 0x3800, 0x3FFF, "11111111" },
};

constexpr ModelLine larch_lines[] = {
//  supply class  var  mark  id      data flash  sizes
  { V5,    fixed, "",  "",   0xD200, none,       sizes },
  { V5,    fixed, "V", "",   0xD260, as_sized,   sizes },
  { V5,    fixed, "W", "",   0xD240, none,       sizes },
  { V5,    iap,   "",  "",   0xD230, none,       iap_sizes },
  { V5,    iap,   "V", "",   0xD270, as_sized,   iap_sizes },
  { V3,    fixed, "",  "",   0xD280, none,       sizes },
  { V3,    fixed, "V", "",   0xD2E0, as_sized,   sizes },
  { V3,    fixed, "W", "",   0xD2C0, none,       sizes },
  { V3,    iap,   "",  "",   0xD2B0, none,       iap_sizes },
  { V3,    iap,   "V", "",   0xD2F0, as_sized,   iap_sizes },
};
// clang-format on

} // namespace

constinit const Family larch = {8, "FamilyLarch", "Larch series", InTree::yes, "Larch", 4, 64, larch_lines};

} // namespace vrk
