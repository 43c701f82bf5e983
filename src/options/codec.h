// Option bytes and choices: what the panel says becomes the bytes wanted in the chip, what the chip tells becomes marks
// on the rows of the option table. Nothing is coded an option: the rows carry their bits.
#pragma once

#include "form/shell.h"

#include <cstdint>
#include <optional>
#include <string_view>

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

// Families by the start values of their bytes.
enum class OptionGroup { A, B, C, D, E, F, G, H, I, J };
std::optional<OptionGroup> option_group(int series);

int find_key(const OptionTable& table, int page, std::string_view key); // row; -1: no such row

// ---- on bytes and rows
// ------------------------------------------------------------------------------------------------

void clear_snapshot(OptionTable& table, int page);
void reset_option_bytes(OptionState& options, OptionGroup group);
// The bits of the rows whose snapshot is "True".
void write_chosen_bits(OptionState& options, const OptionTable& table, OptionPage page);
// Snapshot "1" on the rows that hold in status_bytes, "0" on the others that have a code.
void decode_option_bytes(OptionTable& table, OptionPage page, const OptionState& options);

std::uint8_t watchdog_code(std::string_view divider); // 0 for "2" to 7 for "256" and everything else
int watchdog_byte(int page); // row of option_bytes that holds it; -1: none
int watchdog_divider(std::int16_t status_byte); // 2 to 256
std::uint8_t rc30k_code(std::string_view divider); // 0 for "4096" to 3 for "32768" and everything else

// ---- on the shell, for the selected model
// --------------------------------------------------------------------------------

void fill_divider_lists(Shell& shell); // once, before anything is chosen
int find_key(const Shell& shell, std::string_view key);
void clear_snapshot(Shell& shell);
void snapshot_controls(Shell& shell); // the panel as it stands
void build_option_bytes(Shell& shell); // takes a snapshot; then column 0 is what the chip shall hold
void decode_option_bytes(Shell& shell, OptionPage page);

// After a snapshot: its button is the chosen one. After a decode: it holds in the chip.
bool is_chosen(const Shell& shell, std::string_view key);

} // namespace vrk
