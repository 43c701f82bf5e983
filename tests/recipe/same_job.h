// Whether two jobs put the same into a chip, field by field.
#pragma once

#include "link/job.h"

#include <gtest/gtest.h>

namespace vrk {

inline void expect_same_image(const JobImage& one, const JobImage& other, const char* which)
{
    EXPECT_EQ(one.bytes, other.bytes) << which;
    EXPECT_EQ(one.low, other.low) << which;
    EXPECT_EQ(one.high, other.high) << which;
    EXPECT_EQ(one.view_high, other.view_high) << which;
    EXPECT_EQ(one.loaded, other.loaded) << which;
}

inline void expect_same_record(const McuRecord& one, const McuRecord& other)
{
    EXPECT_EQ(one.mcu_name, other.mcu_name);
    EXPECT_EQ(one.series, other.series);
    EXPECT_EQ(one.mcu_id, other.mcu_id);
    EXPECT_EQ(one.ap_last, other.ap_last);
    EXPECT_EQ(one.isp_start, other.isp_start);
    EXPECT_EQ(one.eeprom_first, other.eeprom_first);
    EXPECT_EQ(one.eeprom_last, other.eeprom_last);
    EXPECT_EQ(one.cap_no_option_write, other.cap_no_option_write);
}

inline void expect_same_job(const Job& one, const Job& other)
{
    expect_same_record(one.model, other.model);
    expect_same_image(one.code, other.code, "code");
    expect_same_image(one.data, other.data, "data");
    ASSERT_EQ(one.numbers.size(), other.numbers.size());
    for (std::size_t i = 0; i < one.numbers.size(); ++i) {
        EXPECT_EQ(one.numbers[i].flash_address, other.numbers[i].flash_address);
        EXPECT_EQ(one.numbers[i].bytes, other.numbers[i].bytes);
    }
    EXPECT_EQ(one.model_name, other.model_name);
    EXPECT_EQ(one.english, other.english);
    EXPECT_EQ(one.line.port_path, other.line.port_path);
    EXPECT_EQ(one.line.contact_baud, other.line.contact_baud);
    EXPECT_EQ(one.line.max_baud, other.line.max_baud);
    EXPECT_EQ(one.line.fixed_115200, other.line.fixed_115200);
    EXPECT_EQ(one.options.wanted(), other.options.wanted());
    EXPECT_EQ(one.options.spare_row_16, other.options.spare_row_16);
    EXPECT_EQ(one.double_speed, other.double_speed);
    EXPECT_EQ(one.guards_block_1, other.guards_block_1);
    EXPECT_EQ(one.watchdog_pin, other.watchdog_pin);
    EXPECT_EQ(one.calibrate_rc, other.calibrate_rc);
    EXPECT_EQ(one.rc_target_mhz, other.rc_target_mhz);
}

} // namespace vrk
