// Teak: 32 models = 8 sizes x 4 variants, declared and never reached: the loader of this family fills column 0 from
// here and all others from Poplar. Its rows have one cell less than those of other families.
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
  { "8",  0x02,    0x1FFF,  own, 0xEFFF, 0xF000, 0xFFFF, "1000000" },
  { "16", 0x04,    0x3FFF,  own, 0xEFFF, 0xF000, 0xFFFF, "1000000" },
  { "32", 0x08,    0x7FFF,  own, 0xEFFF, 0xF000, 0xFFFF, "1000000" },
  { "40", 0x0A,    0x9FFF,  own, 0xEFFF, 0xF000, 0xFFFF, "1000000" },
  { "48", 0x0C,    0xBFFF,  own, 0xEFFF, 0xF000, 0xFFFF, "1000000" },
  { "52", 0x0D,    0xCFFF,  own, 0xEFFF, 0xF000, 0xFFFF, "1000000" },
  { "56", 0x0E,    0xDFFF,  own, 0xEFFF, 0xF000, 0xFFFF, "1000000" },
  { "60", 0x0F,    0xEFFF,  own, 0xEFFF, 0xF000, 0xFFFF, "1000000" },
};

constexpr ModelLine teak_lines[] = {
//  supply class  var  mark  id      data flash  sizes
  { V5,    fixed, "",  "",   0xF400, as_sized,   sizes },
  { V5,    fixed, "Q", "",   0xF430, as_sized,   sizes },
  { V5,    fixed, "R", "",   0xF420, as_sized,   sizes },
  { V5,    fixed, "T", "",   0xF410, as_sized,   sizes },
};
// clang-format on

} // namespace

constinit const Family teak = {18, "FamilyTeak", "", InTree::no, "Teak", 4, 32, teak_lines};

} // namespace vrk
