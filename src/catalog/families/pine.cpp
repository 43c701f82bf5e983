// Pine: 18 models = 9 sizes, each with a marked twin of the same id. The code of the top size ends at the boot area.
#include "catalog/families.h"

namespace vrk {
namespace {

using enum VoltageClass;
using enum ModelClass;
using enum DataFlash;

constexpr std::int32_t own = right_above_code;

// clang-format off
constexpr Size pine_sizes[] = {
//  KB    id bits  ap_last  data flash      boot area       flags       alt
  { "4",  0x01,    0x0FFF,  own,    0xF3FF, 0xEC00, 0xFBFF, "11111000", 0x0FFF },
  { "8",  0x02,    0x1FFF,  own,    0xF3FF, 0xEC00, 0xFBFF, "11111000", 0x1FFF },
  { "16", 0x04,    0x3FFF,  own,    0xF3FF, 0xEC00, 0xFBFF, "11111000", 0x3FFF },
  { "32", 0x08,    0x7FFF,  own,    0xF3FF, 0xEC00, 0xFBFF, "11111000", 0x7FFF },
  { "40", 0x0A,    0x9FFF,  own,    0xF3FF, 0xEC00, 0xFBFF, "11111000", 0x9FFF },
  { "48", 0x0C,    0xBFFF,  own,    0xF3FF, 0xEC00, 0xFBFF, "11111000", 0xBFFF },
  { "52", 0x0D,    0xCFFF,  own,    0xF3FF, 0xEC00, 0xFBFF, "11111000", 0xCFFF },
  { "56", 0x0E,    0xDFFF,  own,    0xF3FF, 0xEC00, 0xFBFF, "11111000", 0xDFFF },
};
constexpr Size pine_top[] = {
  { "61", 0x10,    0xF3FF,  0xF800, 0xF3FF, 0xEC00, 0xFBFF, "11111000", 0xF3FF },
};

constexpr ModelLine pine_lines[] = {
//  supply class  var mark  id      data flash  sizes       code ends              twins
  { V5,    fixed, "", "",   0xF400, as_sized,   pine_sizes, CodeEnd::by_size,      Twins::marked },
  { V5,    fixed, "", "",   0xF400, as_sized,   pine_top,   CodeEnd::at_boot_area, Twins::marked },
};
// clang-format on

} // namespace

constinit const Family pine = {11, "FamilyPine", "", InTree::no, "Pine", 4, 18, pine_lines};

} // namespace vrk
