// Elm: 11 sizes x 2 variants x 2 supplies, and one more model a supply, named after the series, that stands for
// whatever chip of the family reports the id E01E.
//
// There are two sets of rows. The one in use has 74: the sizes above 12 KB are not listed, and the models up to 12 KB
// come a second time under their older ids, unlisted and without any flag. The set for unreleased models lists all
// sizes, knows the older ids only as second ids and has no buffer for the data flash at 28 KB, where there is none.
// It declares 73 rows, of which 46 hold a model.
#include "catalog/families.h"

namespace vrk {
namespace {

using enum VoltageClass;
using enum ModelClass;
using enum DataFlash;

constexpr std::int32_t own = right_above_code;

// clang-format off
constexpr Size small[] = {
//  KB    id bits  ap_last  data flash   boot area       flags
  { "1",  0x01,    0x03FF,  own, 0x59FF, 0x7000, 0x7DFF, "10000000" },
  { "2",  0x02,    0x07FF,  own, 0x59FF, 0x7000, 0x7DFF, "10000000" },
  { "4",  0x04,    0x0FFF,  own, 0x59FF, 0x7000, 0x7DFF, "10000000" },
  { "6",  0x06,    0x17FF,  own, 0x49FF, 0x7000, 0x7DFF, "10000000" },
  { "8",  0x08,    0x1FFF,  own, 0x49FF, 0x7000, 0x7DFF, "10000000" },
  { "10", 0x0A,    0x27FF,  own, 0x39FF, 0x7000, 0x7DFF, "10000000" },
  { "12", 0x0C,    0x2FFF,  own, 0x5DFF, 0x7000, 0x7DFF, "10000000" },
};
constexpr Size small_by_older_id[] = {
  { "1",  0x01,    0x03FF,  own, 0x59FF, 0x7000, 0x7DFF, "00000000" },
  { "2",  0x02,    0x07FF,  own, 0x59FF, 0x7000, 0x7DFF, "00000000" },
  { "4",  0x04,    0x0FFF,  own, 0x59FF, 0x7000, 0x7DFF, "00000000" },
  { "6",  0x06,    0x17FF,  own, 0x49FF, 0x7000, 0x7DFF, "00000000" },
  { "8",  0x08,    0x1FFF,  own, 0x49FF, 0x7000, 0x7DFF, "00000000" },
  { "10", 0x0A,    0x27FF,  own, 0x39FF, 0x7000, 0x7DFF, "00000000" },
  { "12", 0x0C,    0x2FFF,  own, 0x5DFF, 0x7000, 0x7DFF, "00000000" },
};
// The 24 KB models end one byte below the size rule, and meant: do not "correct" it. That byte belongs to no area.
constexpr Size large[] = {
  { "16", 0x10,    0x3FFF,  own,    0x6FFF, 0x7000, 0x7DFF, "00000000" },
  { "20", 0x14,    0x4FFF,  own,    0x6FFF, 0x7000, 0x7DFF, "00000000" },
  { "24", 0x18,    0x5FFE,  0x6000, 0x6FFF, 0x7000, 0x7DFF, "00000000" },
  { "28", 0x1C,    0x6FFF,  own,    0x6FFF, 0x7000, 0x7DFF, "00000000" },
};
constexpr Size large_unreleased[] = {
  { "16", 0x10,    0x3FFF,  own,    0x6FFF, 0x7000, 0x7DFF, "10000000" },
  { "20", 0x14,    0x4FFF,  own,    0x6FFF, 0x7000, 0x7DFF, "10000000" },
  { "24", 0x18,    0x5FFE,  0x6000, 0x6FFF, 0x7000, 0x7DFF, "10000000" },
  { "28", 0x1C,    0x6FFF,  own,    0x6FFF, 0x7000, 0x7DFF, "10000001" },
};
constexpr Size whole_series[] = {
  { "28", 0x1E,    0x6FFF,  own,    0x6FFF, 0x7000, 0x7DFF, "10000000" },
};

constexpr CodeEnd sized = CodeEnd::by_size;
constexpr CodeEnd at_boot = CodeEnd::at_boot_area;
constexpr Twins alone = Twins::none;

constexpr ModelLine elm_lines[] = {
//  supply class  var  mark  id      data flash  sizes              code ends twins  older   whole name
  { V5,    fixed, "",  "",   0xE000, as_sized,   small,             at_boot,  alone, 0xF300 },
  { V5,    fixed, "",  "",   0xE000, as_sized,   large,             at_boot },
  { V5,    fixed, "R", "",   0xE060, as_sized,   small,             at_boot,  alone, 0xF310 },
  { V5,    fixed, "R", "",   0xE060, as_sized,   large,             at_boot },
  { V3,    fixed, "",  "",   0xE080, as_sized,   small,             sized,    alone, 0xF320 },
  { V3,    fixed, "",  "",   0xE080, as_sized,   large },
  { V3,    fixed, "R", "",   0xE0E0, as_sized,   small,             sized,    alone, 0xF330 },
  { V3,    fixed, "R", "",   0xE0E0, as_sized,   large },
  { V5,    fixed, "",  "",   0xE000, as_sized,   whole_series,      sized,    alone, 0,      "Elm-Series" },
  { V3,    fixed, "",  "",   0xE000, as_sized,   whole_series,      sized,    alone, 0,      "ElmL-Series" },
  { V5,    fixed, "",  "M",  0xF300, as_sized,   small_by_older_id },
  { V5,    fixed, "R", "M",  0xF310, as_sized,   small_by_older_id },
  { V3,    fixed, "",  "M",  0xF320, as_sized,   small_by_older_id },
  { V3,    fixed, "R", "M",  0xF330, as_sized,   small_by_older_id },
};

constexpr ModelLine elm_unreleased_lines[] = {
//  supply class  var  mark  id      data flash  sizes              code ends twins  older   whole name
  { V5,    fixed, "",  "",   0xE000, as_sized,   small,             at_boot,  alone, 0xF300 },
  { V5,    fixed, "",  "",   0xE000, as_sized,   large_unreleased,  at_boot },
  { V5,    fixed, "R", "",   0xE060, as_sized,   small,             at_boot,  alone, 0xF310 },
  { V5,    fixed, "R", "",   0xE060, as_sized,   large_unreleased,  at_boot },
  { V3,    fixed, "",  "",   0xE080, as_sized,   small,             sized,    alone, 0xF320 },
  { V3,    fixed, "",  "",   0xE080, as_sized,   large_unreleased },
  { V3,    fixed, "R", "",   0xE0E0, as_sized,   small,             sized,    alone, 0xF330 },
  { V3,    fixed, "R", "",   0xE0E0, as_sized,   large_unreleased },
  { V5,    fixed, "",  "",   0xE000, as_sized,   whole_series,      sized,    alone, 0,      "Elm-Series" },
  { V3,    fixed, "",  "",   0xE000, as_sized,   whole_series,      sized,    alone, 0,      "ElmL-Series" },
};
// clang-format on

} // namespace

constinit const Family elm = {4, "FamilyElm", "Elm series", InTree::yes, "Elm", 4, 74, elm_lines};
constinit const Family elm_unreleased = {4, "FamilyElm", "Elm series", InTree::yes, "Elm", 4, 73, elm_unreleased_lines};

} // namespace vrk
