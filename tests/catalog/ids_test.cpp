// Ids typed by hand: of the first model of every line, and of all sizes of one line a family.
#include "tests/catalog/loaded_table.h"

#include <gtest/gtest.h>

#include <string_view>

namespace {

using namespace catalog_test;

struct NamedId {
    std::string_view name;
    std::string_view id;
};

// clang-format off
constexpr NamedId first_of_each_line[] = {
  { "Birch-4",    "F001" }, { "Birch-16",   "F104" }, { "Birch-4L",   "F001" }, { "Birch-16L",  "F104" },
  { "Rowan-4",    "F021" }, { "Rowan-4M",   "F121" }, { "Rowan-4L",   "F041" }, { "Rowan-4ML",  "F141" },
  { "Rowan-61",   "F130" }, { "Rowan-61L",  "F150" },
  { "Spruce-4",   "F161" }, { "Spruce-4L",  "F181" }, { "Spruce-61",  "F170" }, { "Spruce-61L", "F190" },
  { "Cedar-1",    "F201" }, { "Cedar-1R",   "F211" }, { "Cedar-1L",   "F221" }, { "Cedar-1RL",  "F231" },
  { "Elm-1",      "E001" }, { "Elm-1R",     "E061" }, { "Elm-1L",     "E081" }, { "Elm-1RL",    "E0E1" },
  { "Elm-1M",     "F301" }, { "Elm-1RM",    "F311" }, { "Elm-1ML",    "F321" }, { "Elm-1RML",   "F331" },
  { "Fir-1",      "E601" }, { "Fir-1R",     "E661" }, { "Fir-1L",     "E681" }, { "Fir-1RL",    "E6E1" },
  { "Hazel-1",    "E101" }, { "Hazel-1R",   "E161" }, { "Hazel-1T",   "E121" },
  { "Hazel-1L",   "E181" }, { "Hazel-1RL",  "E1E1" }, { "Hazel-1TL",  "E1A1" },
  { "Maple-1",    "E201" }, { "Maple-1S",   "E221" }, { "Maple-I1",   "E231" },
  { "Maple-1L",   "E281" }, { "Maple-1SL",  "E2A1" }, { "Maple-I1L",  "E2B1" },
  { "Juniper-8",  "D104" }, { "Juniper-8Q", "D164" }, { "Juniper-8R", "D144" }, { "Juniper-8T", "D124" },
  { "Juniper-I8", "D103" }, { "Juniper-I8Q", "D163" }, { "Juniper-I8R", "D143" }, { "Juniper-I8T", "D123" },
  { "Juniper-8L", "D184" }, { "Juniper-8QL", "D1E4" }, { "Juniper-8RL", "D1C4" }, { "Juniper-8TL", "D1A4" },
  { "Juniper-I8L", "D183" }, { "Juniper-I8QL", "D1E3" }, { "Juniper-I8RL", "D1C3" }, { "Juniper-I8TL", "D1A3" },
  { "Oak-8",      "D304" }, { "Oak-8V",     "D364" }, { "Oak-8W",     "D344" },
  { "Oak-I8",     "D303" }, { "Oak-I8V",    "D363" }, { "Oak-I8W",    "D343" },
  { "Oak-8L",     "D384" }, { "Oak-8VL",    "D3E4" }, { "Oak-8WL",    "D3C4" },
  { "Oak-I8L",    "D383" }, { "Oak-I8VL",   "D3E3" }, { "Oak-I8WL",   "D3C3" },
  { "Larch-2",    "D202" }, { "Larch-2V",   "D262" }, { "Larch-2W",   "D242" }, { "Larch-I2",   "D232" }, { "Larch-I2V",  "D272" },
  { "Larch-2L",   "D282" }, { "Larch-2VL",  "D2E2" }, { "Larch-2WL",  "D2C2" }, { "Larch-I2L",  "D2B2" }, { "Larch-I2VL", "D2F2" },
  { "Willow-2",   "D402" }, { "Willow-2R",  "D442" }, { "Willow-2S",  "D412" }, { "Willow-2T",  "D432" },
  { "Willow-2V",  "D422" }, { "Willow-I2R", "D452" },
  { "Willow-2L",  "D482" }, { "Willow-2RL", "D4C2" }, { "Willow-2SL", "D492" }, { "Willow-2TL", "D4B2" },
  { "Willow-2VL", "D4A2" }, { "Willow-I2RL", "D4D2" },
  { "Poplar-1",   "F301" }, { "Poplar-1S",  "F311" }, { "Poplar-I1",  "F331" },
  { "Poplar-1L",  "F341" }, { "Poplar-1SL", "F351" }, { "Poplar-I1L", "F371" },
  { "Holly-1",    "F381" }, { "Holly-1S",   "F391" }, { "Holly-I1",   "F3B1" },
  { "Holly-1L",   "F3C1" }, { "Holly-1SL",  "F3D1" }, { "Holly-I1L",  "F3F1" },
};
// clang-format on

std::string wrong_ids()
{
    std::string text;
    for (const NamedId& wanted : first_of_each_line) {
        const std::string found = record(wanted.name).mcu_id;
        text += found == wanted.id
            ? ""
            : std::string(wanted.name) + " mcu_id: found " + found + ", wanted " + std::string(wanted.id) + "\n";
    }
    return text;
}

std::string ids(int series, int row_first, int row_last)
{
    std::string text;
    for (int row = row_first; row <= row_last; ++row) {
        text += (text.empty() ? "" : " ") + table().cell(series, row, vrk::McuColumn::mcu_id);
    }
    return text;
}

TEST(Ids, TellTheLine) { EXPECT_EQ(wrong_ids(), ""); }

TEST(Ids, TellTheSize)
{
    EXPECT_EQ(ids(2, 0, 6), "F001 F006 F007 F002 F00A F00C F004"); // 4, 6, 7, 8, 10, 12, 14 KB
    EXPECT_EQ(ids(2, 7, 16), "F101 F102 F104 F105 F108 F10A F10C F10D F10E F110");
    EXPECT_EQ(ids(3, 0, 5), "F200 F201 F202 F203 F204 F205");
    EXPECT_EQ(ids(4, 0, 10), "E001 E002 E004 E006 E008 E00A E00C E010 E014 E018 E01C");
    EXPECT_EQ(ids(5, 0, 12), "E601 E602 E603 E604 E605 E606 E608 E60C E610 E614 E618 E61C E61E");
    EXPECT_EQ(ids(6, 0, 5), "E101 E102 E103 E104 E105 E106");
    EXPECT_EQ(ids(7, 0, 7), "D104 D108 D110 D114 D118 D11A D11C D11E");
    EXPECT_EQ(ids(7, 32, 40), "D103 D107 D10F D113 D117 D119 D11B D11D D11F");
    EXPECT_EQ(ids(8, 18, 24), "D232 D234 D236 D238 D23A D23C D23E");
    EXPECT_EQ(ids(9, 10, 15), "E231 E232 E233 E234 E275 E276");
    EXPECT_EQ(ids(9, 16, 20), "E281 E282 E283 E284 E2C5");
    EXPECT_EQ(ids(10, 0, 8), "D304 D308 D30A D310 D314 D318 D31A D31C D31E");
    EXPECT_EQ(ids(10, 27, 36), "D303 D307 D309 D30F D313 D317 D319 D31B D31D D31F");
    EXPECT_EQ(ids(12, 0, 6), "F021 F026 F027 F022 F02A F02C F024");
    EXPECT_EQ(ids(12, 7, 16), "F121 F122 F124 F125 F128 F12A F12C F12D F12E F130");
    EXPECT_EQ(ids(13, 0, 9), "F161 F162 F164 F165 F168 F16A F16C F16D F16E F170");
    EXPECT_EQ(ids(15, 0, 5), "F301 F302 F303 F304 F305 F306");
    EXPECT_EQ(ids(17, 30, 36), "D452 D454 D456 D458 D45A D45C D45E");
}

TEST(Ids, OfPineStandTwiceEach)
{
    EXPECT_EQ(
        ids(11, 0, 17), "F401 F401 F402 F402 F404 F404 F408 F408 F40A F40A F40C F40C F40D F40D F40E F40E F410 F410");
}

} // namespace
