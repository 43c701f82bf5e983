#include "image/download_plan.h"

#include "image/bench.h"

using namespace vrk;
using image_test::model;

namespace {

McuRecord chip(std::int32_t ap_last, std::int32_t eeprom_first, std::int32_t eeprom_last)
{
    McuRecord record;
    record.ap_last = ap_last;
    record.eeprom_first = eeprom_first;
    record.eeprom_last = eeprom_last;
    return record;
}

} // namespace

TEST(DownloadPlan, AShortFileLeavesTheDataFlashAlone)
{
    const auto [plan, overflows] = build_download_plan(0x1FFF, model("Juniper-60Q"), "G", 6.3, 5);
    EXPECT_EQ(plan.name, "AP_FILE");
    EXPECT_EQ(plan.ap_from, 0);
    EXPECT_EQ(plan.ap_to, 0xEFFF);
    EXPECT_EQ(plan.file_from, 0);
    EXPECT_EQ(plan.file_to, 0x1FFF);
    EXPECT_EQ(plan.data_from, 0xF000);
    EXPECT_EQ(plan.data_to, 0xF3FF);
    EXPECT_EQ(plan.erase_from, 0x2000);
    EXPECT_EQ(plan.erase_to, 0xEFFF);
    EXPECT_FALSE(plan.spill);
    EXPECT_EQ(plan.spill_from, 0xF400);
    EXPECT_EQ(plan.spill_to, 0xF400);
    EXPECT_EQ(plan.rest_from, 0xF000);
    EXPECT_EQ(plan.rest_to, 0xF3FF);
    EXPECT_FALSE(overflows);
}

TEST(DownloadPlan, AFileToTheLastCodeByteErasesFromBehindIt)
{
    const DownloadPlan plan = build_download_plan(0xEFFF, model("Juniper-60Q"), "G", 6.3, 5).plan;
    EXPECT_FALSE(plan.spill);
    EXPECT_EQ(plan.erase_from, 0xF000);
}

TEST(DownloadPlan, AFileThatReachesIntoTheDataFlashSpills)
{
    const auto [plan, overflows] = build_download_plan(0xF0FF, model("Juniper-60Q"), "G", 6.3, 5);
    EXPECT_TRUE(plan.spill);
    EXPECT_EQ(plan.erase_from, 0xF000);
    EXPECT_EQ(plan.spill_from, 0xF000);
    EXPECT_EQ(plan.spill_to, 0xF0FF);
    EXPECT_EQ(plan.rest_from, 0xF100);
    EXPECT_EQ(plan.rest_to, 0xF3FF);
    EXPECT_FALSE(overflows);
}

TEST(DownloadPlan, ASpillIsHeldAtTheEndOfTheDataFlash)
{
    const DownloadPlan plan = build_download_plan(0xFFFF, model("Juniper-60Q"), "G", 6.3, 5).plan;
    EXPECT_EQ(plan.spill_to, 0xF3FF);
    EXPECT_EQ(plan.rest_from, 0xF400);
    EXPECT_LT(plan.rest_to, plan.rest_from) << "nothing is left";
}

TEST(DownloadPlan, AnEmptyDataFlashHasAnEmptyRest)
{
    const DownloadPlan plan = build_download_plan(0x100, model("Hazel-1"), "G", 6.3, 5).plan;
    EXPECT_EQ(plan.rest_from, 0x1400);
    EXPECT_EQ(plan.rest_to, 0x13FF);
}

TEST(DownloadPlan, RestFromNeverLiesMoreThanOneAboveTheData)
{
    const DownloadPlan plan = build_download_plan(0x100, chip(0x1FFF, 0x9000, 0x8FF0), "G", 6.3, 5).plan;
    EXPECT_EQ(plan.rest_from, 0x8FF1);
}

TEST(DownloadPlan, LetterDEndsTheDataAt5119AndOverflowsAboveIt)
{
    EXPECT_EQ(build_download_plan(5119, model("Hazel-4R"), "D", 5.4, 0).plan.data_to, 5119);
    EXPECT_FALSE(build_download_plan(5119, model("Hazel-4R"), "D", 5.4, 0).overflows);
    EXPECT_TRUE(build_download_plan(5120, model("Hazel-4R"), "D", 5.4, 0).overflows);
}

TEST(DownloadPlan, LetterEUpToFivePointZeroEndsTheDataAt12287AndOverflowsAboveIt)
{
    const auto fits = build_download_plan(12287, model("Elm-8R"), "E", 5.0, 0);
    EXPECT_EQ(fits.plan.data_to, 12287);
    EXPECT_EQ(fits.plan.data_from, 0x2000);
    EXPECT_FALSE(fits.overflows);
    EXPECT_TRUE(build_download_plan(12288, model("Elm-8R"), "E", 5.0, 0).overflows);
}

TEST(DownloadPlan, LetterEAboveFivePointZeroPutsTheDataBehindTheCodeInSteps)
{
    EXPECT_EQ(build_download_plan(100, chip(4096, 0, 0), "E", 5.1, 0).plan.data_from, 4096);
    EXPECT_EQ(build_download_plan(100, chip(4097, 0, 0), "E", 5.1, 0).plan.data_from, 8192);
    EXPECT_EQ(build_download_plan(100, chip(8192, 0, 0), "E", 5.1, 0).plan.data_from, 8192);
    EXPECT_EQ(build_download_plan(100, chip(8193, 0, 0), "E", 5.1, 0).plan.data_from, 12288);
    EXPECT_EQ(build_download_plan(100, chip(12288, 0, 0), "E", 5.1, 0).plan.data_from, 12288);
    EXPECT_EQ(build_download_plan(100, chip(12289, 0, 0), "E", 5.1, 0).plan.data_from, 12290);
}

TEST(DownloadPlan, LetterEAboveFivePointZeroEndsTheDataAt28671AndNeverOverflows)
{
    const auto [plan, overflows] = build_download_plan(30000, chip(4095, 0, 0), "E", 5.1, 0);
    EXPECT_EQ(plan.data_to, 28671);
    EXPECT_FALSE(overflows);
}

TEST(DownloadPlan, FirmwareErasesFromLetterCUpOnALargeChipThatTheFileDoesNotFill)
{
    EXPECT_TRUE(build_download_plan(100, chip(14336, 0, 0), "C", 6.0, 5).plan.erase_by_firmware);
    EXPECT_TRUE(build_download_plan(100, model("Juniper-60Q"), "G", 6.3, 5).plan.erase_by_firmware);
}

TEST(DownloadPlan, FirmwareDoesNotEraseWhenAnyOfItsConditionsFails)
{
    EXPECT_FALSE(build_download_plan(100, chip(14336, 0, 0), "B", 6.0, 5).plan.erase_by_firmware) << "older letter";
    EXPECT_FALSE(build_download_plan(100, chip(14336, 0, 0), "", 6.0, 5).plan.erase_by_firmware) << "no letter";
    EXPECT_FALSE(build_download_plan(14336, chip(14336, 0, 0), "C", 6.0, 5).plan.erase_by_firmware) << "chip is full";
    EXPECT_FALSE(build_download_plan(100, chip(14335, 0, 0), "C", 6.0, 5).plan.erase_by_firmware) << "small chip";
    EXPECT_FALSE(build_download_plan(100, chip(14336, 0, 0), "C", 6.0, 0).plan.erase_by_firmware) << "older order";
}
