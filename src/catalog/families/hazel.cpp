// Hazel: 36 models = 6 sizes x 3 variants x 2 supplies. The plain models have no data flash.
#include "catalog/families.h"

namespace vrk {
namespace {

using enum VoltageClass;
using enum ModelClass;
using enum DataFlash;

constexpr std::int32_t own = right_above_code;

// clang-format off
constexpr Size hazel_sizes[] = {
//  KB   id bits  ap_last  data flash   boot area       flags
  { "1", 0x01,    0x03FF,  own, 0x13FF, 0x1400, 0x1FFF, "11111000" },
  { "2", 0x02,    0x07FF,  own, 0x13FF, 0x1400, 0x1FFF, "11111000" },
  { "3", 0x03,    0x0BFF,  own, 0x13FF, 0x1400, 0x1FFF, "11111000" },
  { "4", 0x04,    0x0FFF,  own, 0x13FF, 0x1400, 0x1FFF, "11111000" },
  { "5", 0x05,    0x13FF,  own, 0x17FF, 0x1800, 0x1FFF, "11111110" },
  { "6", 0x06,    0x17FF,  own, 0x17FF, 0x1800, 0x1FFF, "11111111" },
};

constexpr ModelLine hazel_lines[] = {
//  supply class  var  mark  id      data flash  sizes
  { V5,    fixed, "",  "",   0xE100, none,       hazel_sizes },
  { V5,    fixed, "R", "",   0xE160, as_sized,   hazel_sizes },
  { V5,    fixed, "T", "",   0xE120, as_sized,   hazel_sizes },
  { V3,    fixed, "",  "",   0xE180, none,       hazel_sizes },
  { V3,    fixed, "R", "",   0xE1E0, as_sized,   hazel_sizes },
  { V3,    fixed, "T", "",   0xE1A0, as_sized,   hazel_sizes },
};
// clang-format on

} // namespace

constinit const Family hazel = {6, "FamilyHazel", "Hazel series", InTree::yes, "Hazel", 4, 36, hazel_lines};

} // namespace vrk
