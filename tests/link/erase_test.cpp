#include "link/erase.h"
#include "session/image_writes.h"
#include "session/write_range.h"

#include <gtest/gtest.h>

using namespace vrk;

namespace {

DownloadPlan plan_of(std::int32_t data_from, std::int32_t data_to)
{
    DownloadPlan plan;
    plan.data_from = data_from;
    plan.data_to = data_to;
    plan.spill_from = data_to + 1;
    plan.spill_to = data_to + 1;
    plan.rest_from = data_from;
    plan.rest_to = data_to;
    return plan;
}

McuRecord model(std::int16_t series, const char* id, std::int32_t ap_last)
{
    McuRecord record;
    record.series = series;
    record.mcu_id = id;
    record.ap_last = ap_last;
    return record;
}

} // namespace

TEST(EraseRange, IsNotToldToFirmwareBelowLetterD)
{
    const EraseRange range = erase_range(plan_of(0x1000, 0x13FF), McuRecord{}, "C", false);
    EXPECT_EQ(range.first, 0x10000);
    EXPECT_EQ(range.last, 0x10000);
}

TEST(EraseRange, CoversTheRestOfTheDataFlashWhereTheChipDoesNotKeepIt)
{
    const EraseRange range = erase_range(plan_of(0xF000, 0xF3FF), McuRecord{}, "I", false);
    EXPECT_EQ(range.first, 0xF001);
    EXPECT_EQ(range.last, 0xF3FF);
}

TEST(EraseRange, IsASingleAddressWhereTheChipKeepsItsData)
{
    const EraseRange range = erase_range(plan_of(0xF000, 0xF3FF), McuRecord{}, "I", true);
    EXPECT_EQ(range.first, 0xF001);
    EXPECT_EQ(range.last, 0xF001);
}

TEST(EraseRange, BeginsWhereTheFileSpillsIntoTheDataFlash)
{
    DownloadPlan plan = plan_of(0x1000, 0x13FF);
    plan.spill = true;
    plan.spill_from = 0x1000;
    plan.spill_to = 0x11FF;
    const EraseRange range = erase_range(plan, McuRecord{}, "D", false);
    EXPECT_EQ(range.first, 0x1000);
    EXPECT_EQ(range.last, 0x13FF);
}

TEST(EraseRange, OfAModelWithoutDataFlashLiesJustAboveWhereItWouldEnd)
{
    const EraseRange range = erase_range(plan_of(0xF400, 0xF3FF), McuRecord{}, "I", false);
    EXPECT_EQ(range.first, 0xF400);
    EXPECT_EQ(range.last, 0xF400);
}

TEST(EraseRange, EndsWithTheApplicationWhereItFillsTheFlash)
{
    McuRecord record;
    record.cap_all_flash_ap = true;
    record.ap_last = 0xF7FF;
    const EraseRange range = erase_range(plan_of(0xF800, 0xF7FF), record, "I", false);
    EXPECT_EQ(range.first, 0xF800);
    EXPECT_EQ(range.last, 0xF800);
}

TEST(EraseSectors, OfTheOldestFirmwareFollowTheModel)
{
    EXPECT_EQ(erase_sector_count(model(1, "56", 0xFBFF), "B", "4.0"), 124);
    EXPECT_EQ(erase_sector_count(model(1, "58", 0x7FFF), "B", "4.0"), 64);
    EXPECT_EQ(erase_sector_count(model(1, "54", 0x3FFF), "B", "4.0"), 32);
    EXPECT_EQ(erase_sector_count(model(1, "52", 0x1FFF), "A", "4.0"), 16);
    EXPECT_EQ(erase_sector_count(model(0, "FF", 0xFFFF), "A", "4.0"), 255);
}

TEST(EraseSectors, OfLetterCFollowTheLineUpTo27AndTheSizeFrom28On)
{
    EXPECT_EQ(erase_sector_count(model(2, "F002", 0x1FFF), "C", "2.7"), 30);
    EXPECT_EQ(erase_sector_count(model(2, "F102", 0x1FFF), "C", "2.7"), 126);
    EXPECT_EQ(erase_sector_count(model(2, "F102", 0x1FFF), "C", "2.8"), 16);
    EXPECT_EQ(erase_sector_count(model(12, "F122", 0x1FFF), "C", "2.7"), 255);
}

TEST(EraseSectors, AreAllFromLetterDOn) { EXPECT_EQ(erase_sector_count(model(7, "D17E", 0xEFFF), "I", "6.3"), 255); }

TEST(CodeLimit, FollowsTheSeriesAboveVersionFive)
{
    EXPECT_EQ(code_limit(model(3, "F214", 0x0FFF), 5.1), 0x5DFF);
    EXPECT_EQ(code_limit(model(4, "E06C", 0x2FFF), 5.1), 0x5DFF);
    EXPECT_EQ(code_limit(model(4, "E070", 0x3FFF), 5.1), 0x6FFF);
    EXPECT_EQ(code_limit(model(5, "E678", 0x5FFE), 5.1), 0x6FFF);
    EXPECT_EQ(code_limit(model(6, "E161", 0x03FF), 5.1), 0x13FF);
    EXPECT_EQ(code_limit(model(7, "D11E", 0xEFFF), 5.1), 0xF3FF);
    EXPECT_EQ(code_limit(model(8, "D20C", 0x2FFF), 5.1), 0x33FF);
}

TEST(CodeLimit, IsHigherWhereTheApplicationFillsTheFlash)
{
    McuRecord record = model(7, "D11F", 0xF7FF);
    record.cap_all_flash_ap = true;
    EXPECT_EQ(code_limit(record, 5.1), 0xF7FF);
    record.series = 5;
    EXPECT_EQ(code_limit(record, 5.1), 0x77FF);
    record.series = 17;
    EXPECT_EQ(code_limit(record, 5.1), 0x37FF);
}

TEST(CodeLimit, UpToVersionFiveIsThatOfTheFirstFirmware)
{
    EXPECT_EQ(code_limit(model(3, "F214", 0x0FFF), 5.0), 0x13FF);
    EXPECT_EQ(code_limit(model(7, "D11E", 0xEFFF), 5.0), 0x2FFF);
}
