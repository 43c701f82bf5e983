// Fir: 52 models = 13 sizes x 2 variants x 2 supplies. Chips of the Elm line with the newer protocol.
#include "catalog/families.h"

namespace vrk {
namespace {

using enum VoltageClass;
using enum ModelClass;
using enum DataFlash;

constexpr std::int32_t own = right_above_code;

// clang-format off
constexpr Size fir_sizes[] = {
//  KB    id bits  ap_last  data flash      boot area       flags
  { "1",  0x01,    0x03FF,  0x1000, 0x6FFF, 0x7000, 0x7DFF, "11111000" },
  { "2",  0x02,    0x07FF,  0x1000, 0x6FFF, 0x7000, 0x7DFF, "11111000" },
  { "3",  0x03,    0x0BFF,  0x1000, 0x6FFF, 0x7000, 0x7DFF, "11111000" },
  { "4",  0x04,    0x0FFF,  0x1000, 0x6FFF, 0x7000, 0x7DFF, "11111000" },
  { "5",  0x05,    0x13FF,  0x2000, 0x6FFF, 0x7000, 0x7DFF, "11111000" },
  { "6",  0x06,    0x17FF,  0x2000, 0x6FFF, 0x7000, 0x7DFF, "11111000" },
  { "8",  0x08,    0x1FFF,  0x2000, 0x6FFF, 0x7000, 0x7DFF, "11111000" },
  { "12", 0x0C,    0x2FFF,  own,    0x6FFF, 0x7000, 0x7DFF, "11111000" },
  { "16", 0x10,    0x3FFF,  own,    0x6FFF, 0x7000, 0x7DFF, "11111000" },
  { "20", 0x14,    0x4FFF,  own,    0x6FFF, 0x7000, 0x7DFF, "11111000" },
  { "24", 0x18,    0x5FFE,  0x6000, 0x6FFF, 0x7000, 0x7DFF, "11111000" },   // one byte below the size rule, as in Elm: meant
  { "28", 0x1C,    0x6FFF,  own,    0x6FFF, 0x7000, 0x7DFF, "11111001" },
  { "30", 0x1E,    0x77FF,  own,    0x77FF, 0x7800, 0x7FFF, "11111111" },
};

constexpr ModelLine fir_lines[] = {
//  supply class  var  mark  id      data flash  sizes
  { V5,    fixed, "",  "",   0xE600, as_sized,   fir_sizes },
  { V5,    fixed, "R", "",   0xE660, as_sized,   fir_sizes },
  { V3,    fixed, "",  "",   0xE680, as_sized,   fir_sizes },
  { V3,    fixed, "R", "",   0xE6E0, as_sized,   fir_sizes },
};
// clang-format on

} // namespace

constinit const Family fir = {5, "FamilyFir", "Fir series", InTree::yes, "Fir", 4, 52, fir_lines};

} // namespace vrk
