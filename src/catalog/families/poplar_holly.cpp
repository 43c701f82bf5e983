// Poplar and Holly: 36 models each = 6 sizes x (plain, S, IAP) x 2 supplies; 74 rows are declared. The two differ by
// bit 7 of the id alone. Both can only come from the chip on the wire: the device tree has neither.
// Some ids of Poplar are older ids of Elm as well; a look-up by id finds Elm first.
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
  { "5", 0x05,    0x13FF,  own, 0x13FF, 0x1400, 0x1FFF, "11111000" },
  { "6", 0x06,    0x17FF,  own, 0x13FF, 0x1400, 0x1FFF, "11111000" },   // reaches into the boot area as tabulated
};

constexpr ModelLine poplar_lines[] = {
//  supply class  var  mark  id      data flash  sizes
  { V5,    fixed, "",  "",   0xF300, as_sized,   sizes },
  { V5,    fixed, "S", "",   0xF310, as_sized,   sizes },
  { V5,    iap,   "",  "",   0xF330, as_sized,   sizes },
  { V3,    fixed, "",  "",   0xF340, as_sized,   sizes },
  { V3,    fixed, "S", "",   0xF350, as_sized,   sizes },
  { V3,    iap,   "",  "",   0xF370, as_sized,   sizes },
};
constexpr ModelLine holly_lines[] = {
  { V5,    fixed, "",  "",   0xF380, as_sized,   sizes },
  { V5,    fixed, "S", "",   0xF390, as_sized,   sizes },
  { V5,    iap,   "",  "",   0xF3B0, as_sized,   sizes },
  { V3,    fixed, "",  "",   0xF3C0, as_sized,   sizes },
  { V3,    fixed, "S", "",   0xF3D0, as_sized,   sizes },
  { V3,    iap,   "",  "",   0xF3F0, as_sized,   sizes },
};
// clang-format on

} // namespace

constinit const Family poplar = {15, "FamilyPoplar", "", InTree::no, "Poplar", 4, 74, poplar_lines};
constinit const Family holly = {16, "FamilyHolly", "", InTree::no, "Holly", 4, 74, holly_lines};

} // namespace vrk
