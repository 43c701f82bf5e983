// Alder: 4 models = 2 sizes, each with a marked twin. The oldest family: one id, FF, for all of them, so that the chip
// on the wire cannot be told by it, and a boot ROM image that comes with the tool. The larger has its boot area above
// 64 KB.
#include "catalog/families.h"

namespace vrk {
namespace {

using enum VoltageClass;
using enum ModelClass;
using enum DataFlash;

// clang-format off
constexpr Size alder_sizes[] = {
//  KB    id bits  ap_last  data flash      boot area         flags       alt         ROM image
  { "64", 0x00,    0xFFFF,  0xFFFF, 0xFFFF, 0x10000, 0x11FFF, "10000000", not_filled, "BOOTB_2003.ROM" },
  { "32", 0x00,    0x7FFF,  0x7FFF, 0x7FFF, 0xE000,  0xFFFF,  "10000000", not_filled, "BOOTC_2003.ROM" },
};

constexpr ModelLine alder_lines[] = {
//  supply class  var mark  id    data flash  sizes        code ends         twins
  { V5,    fixed, "", "",   0xFF, as_sized,   alder_sizes, CodeEnd::by_size, Twins::marked },
};
// clang-format on

} // namespace

constinit const Family alder = {0, "FamilyAlder", "Alder series", InTree::yes, "Alder", 2, 4, alder_lines};

} // namespace vrk
