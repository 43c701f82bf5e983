// Checks over all rows. What leaves a rule is named in a table here; a name that keeps the rule has no place in it.
#include "catalog/families.h"
#include "catalog/isp_start.h"
#include "tests/catalog/loaded_table.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <set>
#include <span>
#include <vector>

namespace {

using namespace catalog_test;
using vrk::McuColumn;
using vrk::McuRecord;

struct PlacedRecord {
    int row;
    McuRecord record;
};

std::vector<PlacedRecord> models_of_table(const vrk::McuTable& found)
{
    std::vector<PlacedRecord> models;
    for (int series = 0; series < vrk::McuTable::page_count; ++series) {
        for (int row = 0; row < vrk::McuTable::row_count; ++row) {
            if (!found.cell(series, row, McuColumn::mcu_name).empty()) {
                models.push_back({row, vrk::read_mcu_row(found, series, row)});
            }
        }
    }
    return models;
}

// One line for each model of which the check says something.
std::string findings(const vrk::McuTable& found, const std::function<std::string(const McuRecord&)>& check)
{
    std::string text;
    for (const auto& [row, record] : models_of_table(found)) {
        const std::string finding = check(record);
        text += finding.empty() ? "" : place(record.series, row) + " (" + record.mcu_name + ") " + finding + "\n";
    }
    return text;
}

bool contains(std::span<const std::string_view> names, std::string_view name)
{
    return std::find(names.begin(), names.end(), name) != names.end();
}

std::string hex(std::int32_t value) { return vrk::hex_text(value); }

// Counts.

struct FamilyCount {
    int series;
    const char* key;
    int rows;
    int declared;
};

// clang-format off
constexpr FamilyCount family_counts[] = {
//  series  key             rows  declared
  {  0,     "FamilyAlder",    4,    4 },
  {  1,     "FamilyAspen",    5,    5 },
  {  2,     "FamilyBirch",   34,   34 },
  {  3,     "FamilyCedar",   24,   24 },
  {  4,     "FamilyElm",     74,   74 },
  {  5,     "FamilyFir",     52,   52 },
  {  6,     "FamilyHazel",   36,   36 },
  {  7,     "FamilyJuniper", 136, 136 },
  {  8,     "FamilyLarch",   64,   64 },
  {  9,     "FamilyMaple",   32,   32 },
  { 10,     "FamilyOak",    112,  113 },
  { 11,     "FamilyPine",    18,   18 },
  { 12,     "FamilyRowan",   34,   34 },
  { 13,     "FamilySpruce",  20,   20 },
  { 15,     "FamilyPoplar",  36,   74 },
  { 16,     "FamilyHolly",   36,   74 },
  { 17,     "FamilyWillow",  74,   74 },
  { 18,     "FamilyTeak",    32,   32 },
};
// clang-format on

std::string count_findings()
{
    std::string text;
    for (const FamilyCount& wanted : family_counts) {
        const int rows = count_rows(table(), wanted.series, McuColumn::series);
        const vrk::Family& family = *vrk::family_of_series(wanted.series);
        const std::string found =
            std::string(family.key) + " " + std::to_string(rows) + " of " + std::to_string(family.declared_rows);
        const std::string ought =
            std::string(wanted.key) + " " + std::to_string(wanted.rows) + " of " + std::to_string(wanted.declared);
        text += found == ought ? "" : "found " + found + ", wanted " + ought + "\n";
    }
    return text;
}

int all_rows()
{
    int rows = 0;
    for (int series = 0; series < vrk::McuTable::page_count; ++series) {
        rows += count_rows(table(), series, McuColumn::series);
    }
    return rows;
}

TEST(WholeTable, EveryFamilyHasItsRows) { EXPECT_EQ(count_findings(), ""); }

TEST(WholeTable, HoldsEightHundredAndTwentyThreeRows) { EXPECT_EQ(all_rows(), 823); }

TEST(WholeTable, ReservedSeriesStayEmpty)
{
    EXPECT_EQ(count_rows(table(), 14, McuColumn::series), 0);
    EXPECT_EQ(count_rows(table(), 19, McuColumn::series), 0);
    EXPECT_EQ(count_rows(table(), 20, McuColumn::series), 0);
}

TEST(WholeTable, UnreleasedElmFillsFortySixRows)
{
    EXPECT_EQ(count_rows(unreleased_table(), 4, McuColumn::mcu_name), 46);
    EXPECT_EQ(count_rows(unreleased_table(), 4, McuColumn::series), 46);
}

// Names and ids.

std::string repeated_names(const vrk::McuTable& found)
{
    std::set<std::string> seen;
    return findings(found, [&seen](const McuRecord& record) {
        return seen.insert(record.mcu_name).second ? std::string() : std::string("mcu_name: found twice, wanted once");
    });
}

TEST(WholeTable, NoNameStandsTwice)
{
    EXPECT_EQ(repeated_names(table()), "");
    EXPECT_EQ(repeated_names(unreleased_table()), "");
}

// Where the id of a model leads to another: the first hit wins. Empty: to none.
struct LeadsElsewhere {
    std::string_view name;
    std::string_view found;
};

// clang-format off
constexpr LeadsElsewhere ids_that_lead_elsewhere[] = {
  // Series 0 is never searched.
  { "Alder-64",   "" }, { "Alder-64M",  "" }, { "Alder-32",   "" }, { "Alder-32M",  "" },
  // A marked twin has the id of its model.
  { "Aspen-63M",  "Aspen-63" },
  { "Pine-4M",    "Pine-4"   }, { "Pine-8M",    "Pine-8"   }, { "Pine-16M",   "Pine-16"  },
  { "Pine-32M",   "Pine-32"  }, { "Pine-40M",   "Pine-40"  }, { "Pine-48M",   "Pine-48"  },
  { "Pine-52M",   "Pine-52"  }, { "Pine-56M",   "Pine-56"  }, { "Pine-61M",   "Pine-61"  },
  { "ElmL-Series", "Elm-Series" },
  // Both supplies of Birch share the id.
  { "Birch-4L",   "Birch-4"  }, { "Birch-6L",   "Birch-6"  }, { "Birch-7L",   "Birch-7"  }, { "Birch-8L",   "Birch-8"  },
  { "Birch-10L",  "Birch-10" }, { "Birch-12L",  "Birch-12" }, { "Birch-14L",  "Birch-14" },
  { "Birch-4ML",  "Birch-4M" }, { "Birch-8ML",  "Birch-8M" }, { "Birch-16L",  "Birch-16" }, { "Birch-20L",  "Birch-20" },
  { "Birch-32L",  "Birch-32" }, { "Birch-40L",  "Birch-40" }, { "Birch-48L",  "Birch-48" }, { "Birch-52L",  "Birch-52" },
  { "Birch-56L",  "Birch-56" }, { "Birch-62L",  "Birch-62" },
  // The older ids of Elm are second ids of rows that come before.
  { "Elm-1M",     "Elm-1"    }, { "Elm-2M",     "Elm-2"    }, { "Elm-4M",     "Elm-4"    }, { "Elm-6M",     "Elm-6"    },
  { "Elm-8M",     "Elm-8"    }, { "Elm-10M",    "Elm-10"   }, { "Elm-12M",    "Elm-12"   },
  { "Elm-1RM",    "Elm-1R"   }, { "Elm-2RM",    "Elm-2R"   }, { "Elm-4RM",    "Elm-4R"   }, { "Elm-6RM",    "Elm-6R"   },
  { "Elm-8RM",    "Elm-8R"   }, { "Elm-10RM",   "Elm-10R"  }, { "Elm-12RM",   "Elm-12R"  },
  { "Elm-1ML",    "Elm-1L"   }, { "Elm-2ML",    "Elm-2L"   }, { "Elm-4ML",    "Elm-4L"   }, { "Elm-6ML",    "Elm-6L"   },
  { "Elm-8ML",    "Elm-8L"   }, { "Elm-10ML",   "Elm-10L"  }, { "Elm-12ML",   "Elm-12L"  },
  { "Elm-1RML",   "Elm-1RL"  }, { "Elm-2RML",   "Elm-2RL"  }, { "Elm-4RML",   "Elm-4RL"  }, { "Elm-6RML",   "Elm-6RL"  },
  { "Elm-8RML",   "Elm-8RL"  }, { "Elm-10RML",  "Elm-10RL" }, { "Elm-12RML",  "Elm-12RL" },
  // These ids of Poplar are older ids of Elm, and Elm comes first.
  { "Poplar-1",   "Elm-1"    }, { "Poplar-2",   "Elm-2"    }, { "Poplar-4",   "Elm-4"    }, { "Poplar-6",   "Elm-6"    },
  { "Poplar-1S",  "Elm-1R"   }, { "Poplar-2S",  "Elm-2R"   }, { "Poplar-4S",  "Elm-4R"   }, { "Poplar-6S",  "Elm-6R"   },
  { "Poplar-I1",  "Elm-1RL"  }, { "Poplar-I2",  "Elm-2RL"  }, { "Poplar-I4",  "Elm-4RL"  }, { "Poplar-I6",  "Elm-6RL"  },
};
// clang-format on

std::string_view wanted_by_id(std::string_view name)
{
    const auto* const end = std::end(ids_that_lead_elsewhere);
    const auto* const entry = std::find_if(
        std::begin(ids_that_lead_elsewhere), end, [name](const LeadsElsewhere& one) { return one.name == name; });
    return entry == end ? name : entry->found;
}

std::string not_found_by_id(const McuRecord& record)
{
    const std::string found = vrk::find_mcu_by_id(table(), record.mcu_id).name;
    const std::string_view wanted = wanted_by_id(record.mcu_name);
    return found == wanted
        ? std::string()
        : "by id " + record.mcu_id + ": found \"" + found + "\", wanted \"" + std::string(wanted) + "\"";
}

std::string not_found_by_alt_id(const McuRecord& record)
{
    const bool found = record.alt_id.empty() || vrk::find_mcu_by_id(table(), record.alt_id).name == record.mcu_name;
    return found ? "" : "by alt_id " + record.alt_id + ": found another, wanted this one";
}

std::string exceptions_that_are_none()
{
    std::string text;
    for (const LeadsElsewhere& one : ids_that_lead_elsewhere) {
        const bool real = record(one.name).mcu_name == one.name && one.name != one.found;
        text += real ? "" : std::string(one.name) + " is no exception\n";
    }
    return text;
}

TEST(WholeTable, EveryModelIsFoundByItsIdOrWhereTheFirstHitLeads)
{
    EXPECT_EQ(findings(table(), not_found_by_id), "");
    EXPECT_EQ(exceptions_that_are_none(), "");
}

TEST(WholeTable, EverySecondIdLeadsToItsModel) { EXPECT_EQ(findings(table(), not_found_by_alt_id), ""); }

std::string not_found_by_name()
{
    std::string text;
    for (const auto& [row, record] : models_of_table(table())) {
        const auto found = vrk::locate_mcu_by_name(table(), record.mcu_name);
        const bool same =
            found && found->series == record.series && found->row == row && found->name == record.mcu_name;
        text += same ? "" : place(record.series, row) + " (" + record.mcu_name + ") not found by its name\n";
    }
    return text;
}

TEST(WholeTable, EveryModelIsFoundByItsName) { EXPECT_EQ(not_found_by_name(), ""); }

// Form of the cells.

std::string id_of_wrong_form(const McuRecord& record)
{
    const std::size_t digits = record.series <= 1 ? 2 : 4;
    const bool good =
        record.mcu_id.size() == digits && record.mcu_id.find_first_not_of("0123456789ABCDEF") == std::string::npos;
    return good ? "" : "mcu_id: found " + record.mcu_id + ", wanted " + std::to_string(digits) + " digits";
}

TEST(WholeTable, IdsAreUpperCaseHexadecimalOfTwoOrFourDigits) { EXPECT_EQ(findings(table(), id_of_wrong_form), ""); }

std::string cells_with_blanks()
{
    std::string text;
    for (int series = 0; series < vrk::McuTable::page_count; ++series) {
        for (int row = 0; row < vrk::McuTable::row_count; ++row) {
            for (int column = 0; column < vrk::McuTable::column_count; ++column) {
                const std::string& cell = table().cell(series, row, column);
                text += cell == vrk::trimmed(cell) ? "" : place(series, row) + ": \"" + cell + "\"\n";
            }
        }
    }
    return text;
}

TEST(WholeTable, NoCellHasBlanksAtItsEnds) { EXPECT_EQ(cells_with_blanks(), ""); }

// Ranges.

constexpr std::string_view code_end_exceptions[] = {
    "Elm-24", "Elm-24R", "Elm-24L", "Elm-24RL", // one byte below the size rule
    "Fir-24", "Fir-24R", "Fir-24L", "Fir-24RL", "Elm-Series", "ElmL-Series", // no size in the name
};

std::int32_t code_bytes_by_name(const std::string& name)
{
    const std::size_t dash = name.find('-');
    const std::size_t digits = name[dash + 1] == 'I' ? dash + 2 : dash + 1;
    return static_cast<std::int32_t>(vrk::number_in(std::string_view(name).substr(digits)) * 1024);
}

std::string code_end_off_the_size(const McuRecord& record)
{
    const std::int32_t wanted = code_bytes_by_name(record.mcu_name) - 1;
    const bool excepted = contains(code_end_exceptions, record.mcu_name);
    if (record.ap_last == wanted) {
        return excepted ? "is named an exception and keeps the rule" : "";
    }
    return excepted ? "" : "ap_last: found " + hex(record.ap_last) + ", wanted " + hex(wanted);
}

TEST(WholeTable, CodeEndsWhereTheSizeInTheNameSays) { EXPECT_EQ(findings(table(), code_end_off_the_size), ""); }

// Their code area of 6 KB reaches into the boot area as tabulated.
constexpr std::string_view code_in_boot_area[] = {
    "Poplar-6",
    "Poplar-6S",
    "Poplar-I6",
    "Poplar-6L",
    "Poplar-6SL",
    "Poplar-I6L",
    "Holly-6",
    "Holly-6S",
    "Holly-I6",
    "Holly-6L",
    "Holly-6SL",
    "Holly-I6L",
};

std::string range_outside_the_flash(const McuRecord& record)
{
    const std::int32_t boot = std::max(record.isp_first, record.isp_start);
    std::string text;
    text += record.ap_first == 0 ? "" : "ap_first: found " + hex(record.ap_first) + ", wanted 0; ";
    text += record.isp_first < record.isp_last ? "" : "isp_last: below isp_first; ";
    text += record.isp_last <= 0x11FFF ? "" : "isp_last: above 11FFF; ";
    text +=
        (record.ap_last < boot) != contains(code_in_boot_area, record.mcu_name) ? "" : "ap_last: in the boot area; ";
    text += record.eeprom_last < boot ? "" : "eeprom_last: in the boot area; ";
    text += record.eeprom_first >= record.ap_last ? "" : "eeprom_first: in the code area; ";
    return text;
}

TEST(WholeTable, CodeDataAndBootAreaLieApartInsideTheFlash)
{
    EXPECT_EQ(findings(table(), range_outside_the_flash), "");
}

// Flags.

std::string parity_without_protocol(const McuRecord& record)
{
    const bool newer = record.cap_new_protocol;
    const bool alike = record.cap_parity == newer && record.cap_parity_even == newer && record.cap_long_frame == newer;
    return alike ? "" : "flags 14 to 17: found different, wanted alike";
}

TEST(WholeTable, ParityAndLongFramesComeWithTheNewProtocol)
{
    EXPECT_EQ(findings(table(), parity_without_protocol), "");
}

constexpr std::string_view abutting[] = {"Aspen-63", "Aspen-63M", "Pine-61", "Pine-61M"};

std::string wrong_code_end(const McuRecord& record)
{
    const bool elm_5v =
        record.series == 4 && record.mcu_id.starts_with("E0") && record.mcu_id < "E080" && record.mcu_id != "E01E";
    const bool wanted = elm_5v || contains(abutting, record.mcu_name);
    return record.ap_abuts_isp == wanted ? "" : "ap_abuts_isp: found otherwise";
}

TEST(WholeTable, CodeAbutsTheBootAreaInTheNamedRowsOnly) { EXPECT_EQ(findings(table(), wrong_code_end), ""); }

// ap_last_alt.

struct OtherAlt {
    std::string_view id;
    std::int32_t value;
};
constexpr OtherAlt other_alts[] = {
    {"F004", 0x33FF}, {"F024", 0x33FF}, {"F044", 0x33FF}, // 14 KB
    {"F105", 0x7FFF}, {"F125", 0x7FFF}, {"F145", 0x7FFF}, {"F165", 0x7FFF}, {"F185", 0x7FFF}, // 20 KB
    {"F110", 0xF3FF}, // 62 KB
};

std::string wrong_alt(const McuRecord& record)
{
    const bool filled = record.series == 2 || (record.series >= 11 && record.series <= 13);
    std::int32_t wanted = filled ? record.ap_last : 0;
    for (const OtherAlt& other : other_alts) {
        wanted = record.mcu_id == other.id ? other.value : wanted;
    }
    return record.ap_last_alt == wanted ? ""
                                        : "ap_last_alt: found " + hex(record.ap_last_alt) + ", wanted " + hex(wanted);
}

TEST(WholeTable, SecondCodeEndFollowsTheFirstButForNamedIds)
{
    EXPECT_EQ(findings(table(), wrong_alt), "");
    EXPECT_EQ(table().cell(7, 0, McuColumn::ap_last_alt), "");
}

} // namespace
