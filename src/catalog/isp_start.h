// Where the boot area of a chip really begins, and the last code address that the user is shown.
#pragma once

#include "catalog/mcu_record.h"

#include <cstdint>
#include <string>

namespace vrk {

struct IspStart {
    std::int32_t isp_start = 0;
    std::int32_t shown_last = 0; // last application address; ap_last, but where the code reaches up to the boot area
};

// The tabulated boot area of the older families is the largest one that the chip can have. The boot loader itself fills
// its last 1 KB, 2 KB in the wide-boot models. The newer families have one fixed start each.
// A series without a rule (18) keeps the isp_start that the record has.
IspStart derive_isp_start(const McuRecord& record);

// Exactly four upper-case digits. Of larger values the low four are shown: 10000 reads "0000".
std::string four_hex_digits(std::int32_t value);

} // namespace vrk
