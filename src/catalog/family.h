// A family of the catalogue as its data sheet has it: sizes, and the lines of models that come in these sizes. All rows
// of the table follow from the two. The families themselves stand in families/, one file a family.
//
// The order of the lines, and of the sizes within a line, is the order of the rows. It is the same everywhere: 5 V
// before 3 V, then models whose code is fixed before those of the IAP class, then no variant letter before the letters
// in alphabetical order, then small before large.
//
// Addresses are inclusive. A data flash whose last lies below its first means "has none".
#pragma once

#include "catalog/mcu_record.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vrk {

enum class ModelClass : std::uint8_t {
    fixed, // user code cannot rewrite the flash that it runs from
    iap, // it can: `I` in the name
};

enum class DataFlash : std::uint8_t {
    as_sized, // as the size says
    none, // empty, right above where it would end
    none_above_code, // empty, right above the code area
};

enum class CodeEnd : std::uint8_t {
    by_size,
    at_boot_area, // the code area ends right below the boot area: ap_abuts_isp
};

enum class Twins : std::uint8_t {
    none,
    marked, // each model is followed by a twin of the same id with the mark M
};

inline constexpr std::int32_t right_above_code = -1; // data_first = ap_last + 1
inline constexpr std::int32_t not_filled = -1; // the cell stays empty

struct Size {
    std::string_view kb; // as it stands in the name
    std::uint16_t id_bits; // added to the id of the line
    std::int32_t ap_last;
    std::int32_t data_first;
    std::int32_t data_last;
    std::int32_t isp_first;
    std::int32_t isp_last;
    std::string_view flags; // columns 13 to 20, '1' or '0' each; a column with no digit stays empty
    std::int32_t ap_last_alt = not_filled;
    std::string_view rom_image{};
};

struct ModelLine {
    VoltageClass supply; // V3 puts the mark L behind the name
    ModelClass model_class;
    std::string_view variant;
    std::string_view mark; // before the voltage mark
    std::uint16_t id;
    DataFlash data_flash;
    std::span<const Size> sizes;
    CodeEnd code_end = CodeEnd::by_size;
    Twins twins = Twins::none;
    std::uint16_t older_id = 0; // of alt_id, size bits added likewise; 0: has none
    std::string_view whole_name{}; // stands for the name that the rule would give
};

enum class InTree : std::uint8_t { no, yes, unreleased_only };

struct Family {
    std::int16_t series;
    std::string_view key;
    std::string_view label; // of the tree; empty: has none
    InTree in_tree;
    std::string_view word; // of its models' names
    int id_digits;
    std::int16_t declared_rows; // may exceed the models; the rows above them stay empty
    std::span<const ModelLine> lines;
};

// One row of a family, before it is text.
struct Model {
    const ModelLine* line;
    const Size* size;
    bool is_twin;
};

std::vector<Model> models_of(const Family& family); // in row order
std::string name_of(const Family& family, const Model& model);
std::string cell_text(const Family& family, const Model& model, int column); // column 0..20, others empty

} // namespace vrk
