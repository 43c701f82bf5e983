// Option bytes and choices: what the panel says becomes the bytes wanted in the chip, what the chip tells becomes marks
// on the rows of the option table. Nothing is coded an option: the rows carry their bits.
#pragma once

#include "options/option_bytes.h"
#include "options/option_table.h"
#include "options/rc_setting.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vrk {

// A page of the option table as the codec reads it.
struct OptionPage {
    static constexpr int none = -1;
    int page = none;
    int last_row = none;

    bool exists() const { return page != none; }
};
OptionPage option_page_of_series(int series); // 0 to 18; none for 14

// "BBbv": two digits for the byte, one for the bit, one for its value.
struct BitCode {
    int byte = 0; // 0 to 16
    int bit = 0; // 0 to 7
    bool value = false;
};
std::optional<BitCode> parse_bit_code(std::string_view code); // nothing for a code that is out of range

// A row of a page whose button is the chosen one. It goes by its bit: a page can have a key twice, with two bits.
struct ChosenRow {
    std::string key;
    BitCode bit;
};

// What the option panel says, as values.
struct OptionChoices {
    std::vector<ChosenRow> chosen; // in the order of the page
    std::optional<std::string> watchdog_divider; // text of the box; nothing where the page has none
    std::optional<std::string> rc30k_divider; // likewise
    RcChoice rc;

    bool holds(std::string_view key) const;
};

// What a chip of the series shall hold. All zero for the series without option bytes, 14.
OptionImage encode_options(std::int32_t series, const OptionChoices& choices);

// Snapshot "1" on the rows that hold in the bytes of a chip, "0" on the others that have a code.
void decode_option_bytes(OptionTable& table, OptionPage page, const StatusBytes& status);

// ---- the parts that these are made of

// Families by the start values of their bytes.
enum class OptionGroup { A, B, C, D, E, F, G, H, I, J };
std::optional<OptionGroup> option_group(int series);

int find_key(const OptionTable& table, int page, std::string_view key); // row; -1: no such row
void clear_snapshot(OptionTable& table, int page);
std::vector<ChosenRow> chosen_rows(const OptionTable& table, OptionPage page); // those whose snapshot is "True"

void reset_option_bytes(OptionImage& image, OptionGroup group);
void write_chosen_bits(OptionImage& image, std::span<const ChosenRow> chosen); // all other bits stay

std::vector<std::string> watchdog_divider_items(); // "2" to "256"; the place of an item is its code
std::uint8_t watchdog_code(std::string_view divider); // 0 for "2" to 7 for "256" and everything else
int watchdog_byte(int page); // row of the option bytes that holds it; -1: none
int watchdog_divider(std::int16_t status_byte); // 2 to 256
std::vector<std::string> rc30k_divider_items(); // "4096" to "32768"
std::uint8_t rc30k_code(std::string_view divider); // 0 for "4096" to 3 for "32768" and everything else

} // namespace vrk
