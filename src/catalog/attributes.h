// What the tool asks of a model beyond its row. All of it is a pure function of the record, so that nobody else takes
// names or ids apart.
#pragma once

#include "catalog/mcu_record.h"

#include <cstdint>
#include <optional>

namespace vrk {

// User code may rewrite the flash that it runs from: `I` in the name. Series 7 to 10 and 15 to 17.
bool is_iap_class(const McuRecord& record);

VoltageClass voltage_class(const McuRecord& record); // supply; V5 where a family has only one

// The size in KB as a connected chip is compared by it, two digits. Elm, Fir, Hazel and Juniper have it, and every
// Cedar has 52 whatever its size. Nothing in the other families: a test on it then counts as failed.
std::optional<int> size_digits(const McuRecord& record);

bool is_wide_boot(const McuRecord& record); // boot block of 2048 bytes instead of 1024
bool is_aspen_top(const McuRecord& record); // the two models of 63 KB

bool series_is_rc_group(int series); // 11, 12, 13: the calibrated RC oscillator of the older families
bool is_newer_series(int series); // 3 and up without the RC group: one flat image, the later forms of the link
bool series_is_15_16_17(int series);
bool series_is_15_16(int series);

// The model has a data flash worth a file buffer of its own: above 100 bytes, and of a family that is written that way.
bool has_eeprom_buffer(const McuRecord& record);
bool has_separate_eeprom(const McuRecord& record); // the same question as the image rules ask it

std::int32_t block_bytes(const McuRecord& record); // that are programmed as one: 128 in series 0, else 512

std::int32_t option_family(int series); // 0 to 4: the generation of the option bytes

} // namespace vrk
