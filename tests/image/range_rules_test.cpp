#include "image/range_rules.h"

#include "catalog/isp_start.h"
#include "image/bench.h"

using namespace vrk;
using image_test::model;

namespace {

using Findings = std::vector<Finding>;
using Ranges = std::vector<AddressRange>;

// A buffer of a model in which some bytes are set, as a loader leaves it.
struct Load {
    explicit Load(std::string_view name, BufferKind kind = BufferKind::code)
        : record(model(name))
        , shown_ap_last(derive_isp_start(record).shown_last & 0xFFFF)
        , buffer(kind)
        , image(static_cast<std::size_t>(kind == BufferKind::code ? FileBuffer::code_last : FileBuffer::data_last) + 1)
    {
    }
    Load& byte_at(std::size_t address)
    {
        image[address] = 0xEE;
        return *this;
    }
    RangeVerdict judged(FileKind file, std::int32_t high, std::int32_t low = 0) const
    {
        return range_rules({record, shown_ap_last, file, buffer, image, low, high});
    }
    RangeVerdict hex(std::int32_t high, std::int32_t low = 0) const { return judged(FileKind::hex, high, low); }
    RangeVerdict bin(std::int32_t high, std::int32_t low = 0) const { return judged(FileKind::bin, high, low); }

    McuRecord record;
    std::int32_t shown_ap_last;
    BufferKind buffer;
    std::vector<std::uint8_t> image;
};

// All findings of all boxes, in order.
Findings found(const RangeVerdict& verdict)
{
    Findings all;
    for (const RangeReport& report : verdict.reports)
        all.insert(all.end(), report.findings.begin(), report.findings.end());
    return all;
}

} // namespace

// Models whose EEPROM data comes from a file of its own.

TEST(SeparateEeprom, CodeIsCutToTheCodeAreaAndItsBytesStay)
{
    const RangeVerdict verdict = Load{"Juniper-60Q"}.hex(0xF123);
    EXPECT_EQ(verdict.high, 0xEFFF);
    EXPECT_EQ(found(verdict), Findings{Finding::cut});
    EXPECT_TRUE(verdict.to_clear.empty());
    EXPECT_FALSE(verdict.reports[0].without_data_flash);
    EXPECT_FALSE(verdict.boot_area_rule);
}

TEST(SeparateEeprom, CodeToTheLastByteIsNotCut)
{
    const RangeVerdict verdict = Load{"Juniper-60Q"}.bin(0xEFFF);
    EXPECT_EQ(verdict.high, 0xEFFF);
    EXPECT_TRUE(verdict.reports.empty());
}

TEST(SeparateEeprom, DataIsCutToTheLengthOfTheEeprom)
{
    EXPECT_EQ(Load("Juniper-60Q", BufferKind::data).hex(0x3FF).high, 0x3FF);
    const RangeVerdict verdict = Load("Juniper-60Q", BufferKind::data).hex(0x400);
    EXPECT_EQ(verdict.high, 0x3FF);
    EXPECT_EQ(found(verdict), Findings{Finding::cut});
}

TEST(SeparateEeprom, TheFirFamilyHasItFromItsDataFlashOf5000Bytes)
{
    EXPECT_EQ(Load{"Fir-4R"}.hex(0x1000).high, 0x0FFF);
}

// Models without a data flash.

TEST(NoDataFlash, AFlatModelIsCutToItsCodeAndTheGapIsCleared)
{
    const RangeVerdict verdict = Load{"Juniper-8"}.byte_at(0x2000).byte_at(0xF3FF).hex(0xF3FF);
    EXPECT_EQ(verdict.high, 0x1FFF);
    EXPECT_EQ(found(verdict), Findings{Finding::cut}) << "the gap was empty by the time it was looked at";
    ASSERT_EQ(verdict.reports.size(), 1U);
    EXPECT_TRUE(verdict.reports[0].without_data_flash);
    ASSERT_FALSE(verdict.to_clear.empty());
    EXPECT_EQ(verdict.to_clear[0], (AddressRange{0x2000, 0xF3FF}));
}

TEST(NoDataFlash, AFileThatEndsInTheCodeAreaIsNotCut)
{
    const RangeVerdict verdict = Load{"Juniper-8"}.hex(0x1FFF);
    EXPECT_EQ(verdict.high, 0x1FFF);
    EXPECT_TRUE(verdict.reports.empty());
}

TEST(NoDataFlash, WithoutACutOldBytesInTheGapAreReportedByTheFlatRule)
{
    const RangeVerdict verdict = Load{"Juniper-8"}.byte_at(0x3000).hex(0x1FFF);
    EXPECT_EQ(found(verdict), Findings{Finding::invalid_range});
    EXPECT_EQ(verdict.reports[0].invalid, (AddressRange{0x2000, 0xF3FF}));
}

TEST(NoDataFlash, TheOldestFamilyGoesOnWithTheBootAreaRule)
{
    const RangeVerdict verdict = Load{"Aspen-8"}.byte_at(0x2000).hex(0x2000);
    EXPECT_TRUE(verdict.boot_area_rule);
    EXPECT_EQ(found(verdict), (Findings{Finding::cut, Finding::over_range}))
        << "data_first - 1 lies below the code here, so that the cut clears nothing";
}

// One flat image, code and then data. Elm and Cedar have a data flash and no file of its own for it.

TEST(FlatImage, BytesInTheGapAreReportedAndTheGapIsCleared)
{
    const RangeVerdict verdict = Load{"Cedar-2R"}.byte_at(0x0900).hex(0x0900);
    EXPECT_EQ(found(verdict), Findings{Finding::invalid_range});
    EXPECT_EQ(verdict.reports[0].rule, RangeRule::flat);
    EXPECT_EQ(verdict.reports[0].invalid, (AddressRange{0x0800, 0x0FFF}));
    EXPECT_EQ(verdict.to_clear, (Ranges{{0x0800, 0x0FFF}}));
    EXPECT_EQ(verdict.high, 0x0900);
}

TEST(FlatImage, BothEndsOfTheGapBelongToIt)
{
    EXPECT_EQ(found(Load{"Cedar-2R"}.byte_at(0x0800).hex(0x800)), Findings{Finding::invalid_range});
    EXPECT_EQ(found(Load{"Cedar-2R"}.byte_at(0x0FFF).hex(0xFFF)), Findings{Finding::invalid_range});
    EXPECT_TRUE(found(Load{"Cedar-2R"}.byte_at(0x07FF).hex(0x7FF)).empty());
}

TEST(FlatImage, ZerosInTheGapAreNoFinding) { EXPECT_TRUE(Load{"Cedar-2R"}.hex(0x0FFF).reports.empty()); }

TEST(FlatImage, ModelsOfTheIapClassClearTheGapInSilence)
{
    const RangeVerdict verdict = Load{"Juniper-I8"}.byte_at(0x3000).hex(0x1FFF);
    EXPECT_TRUE(verdict.reports.empty());
    EXPECT_EQ(verdict.to_clear, (Ranges{{0x2000, 0xF3FF}}));
}

TEST(FlatImage, AnIapModelWithDataFlashTakesOneImageAndNotTwoFiles)
{
    const RangeVerdict verdict = Load{"Juniper-I60Q"}.byte_at(0xF100).hex(0xF100);
    EXPECT_EQ(found(verdict), Findings{Finding::data_memory});
    EXPECT_EQ(verdict.high, 0xF100);
}

TEST(FlatImage, HexFindsDataByItsBytes)
{
    EXPECT_EQ(found(Load{"Cedar-2R"}.byte_at(0x1000).hex(0x1000)), Findings{Finding::data_memory});
    EXPECT_EQ(found(Load{"Cedar-2R"}.byte_at(0x13FF).hex(0x13FF)), Findings{Finding::data_memory});
    EXPECT_TRUE(found(Load{"Cedar-2R"}.hex(0x13FF)).empty()) << "all bytes are zero";
}

TEST(FlatImage, BinaryFindsDataByTheEndOfTheFile)
{
    EXPECT_EQ(found(Load{"Cedar-2R"}.bin(0x1001)), Findings{Finding::data_memory});
    EXPECT_TRUE(found(Load{"Cedar-2R"}.byte_at(0x1000).bin(0x1000)).empty()) << "one byte of data does not count";
}

TEST(FlatImage, AnEndAboveTheDataFlashIsOverRangeAndHeldThere)
{
    const RangeVerdict verdict = Load{"Cedar-2R"}.hex(0x1400);
    EXPECT_EQ(found(verdict), Findings{Finding::over_range});
    EXPECT_EQ(verdict.high, 0x13FF);
}

TEST(FlatImage, AllThreeFindingsStandInOneReport)
{
    const RangeVerdict verdict = Load{"Cedar-2R"}.byte_at(0x0FFF).byte_at(0x1000).hex(0x2000);
    ASSERT_EQ(verdict.reports.size(), 1U);
    EXPECT_EQ(found(verdict), (Findings{Finding::invalid_range, Finding::data_memory, Finding::over_range}));
    EXPECT_FALSE(verdict.boot_area_rule);
}

TEST(FlatImage, TheOddByteOfElm24IsAGapOfOne)
{
    const RangeVerdict verdict = Load{"Elm-24R"}.byte_at(0x5FFF).hex(0x5FFF);
    EXPECT_EQ(found(verdict), Findings{Finding::invalid_range});
    EXPECT_EQ(verdict.to_clear, (Ranges{{0x5FFF, 0x5FFF}}));
}

// The boot area, families without data flash below it (Alder, Aspen). Aspen-16: code to 3FFF, boot loader from FC00.

TEST(BootArea, AnAspenWithAFullImageIsCutAndOverRange)
{
    const RangeVerdict verdict = Load{"Aspen-16"}.byte_at(0x3FFF).hex(0x3FFF);
    EXPECT_TRUE(verdict.reports.empty());
    EXPECT_EQ(verdict.high, 0x3FFF);
    EXPECT_TRUE(verdict.boot_area_rule);
}

TEST(BootArea, AByteBehindTheCodeIsOverRangeAndAllBelowItAreCleared)
{
    const RangeVerdict verdict = Load{"Aspen-16"}.byte_at(0x4100).byte_at(0x5000).hex(0x3FFF);
    EXPECT_EQ(found(verdict), Findings{Finding::over_range});
    EXPECT_EQ(verdict.to_clear, (Ranges{{0x4000, 0x4FFF}})) << "the scan runs downward; 5000, which it hits, stays";
    EXPECT_EQ(verdict.high, 0x3FFF) << "the last address that the family has";
}

TEST(BootArea, TheLowestByteBehindTheCodeClearsNothing)
{
    const RangeVerdict verdict = Load{"Aspen-16"}.byte_at(0x4000).hex(0x3FFF);
    EXPECT_EQ(found(verdict), Findings{Finding::over_range});
    EXPECT_TRUE(verdict.to_clear.empty());
}

TEST(BootArea, OnceOverRangeIsFoundByTheEndTheBytesAreNotScanned)
{
    Load load{"Aspen-16"};
    load.record.eeprom_last = load.record.eeprom_first + 1000; // so that no cut comes first
    const RangeVerdict verdict = load.byte_at(0x5000).hex(0x5000);
    EXPECT_EQ(found(verdict), Findings{Finding::over_range});
    EXPECT_TRUE(verdict.to_clear.empty());
    EXPECT_EQ(verdict.high, load.record.eeprom_last);
}

TEST(BootArea, WhereCodeAbutsTheBootLoaderOnlyItsStartCounts)
{
    Load load{"Aspen-63"}; // code to FBFF, boot loader from FC00
    load.record.eeprom_last = load.record.eeprom_first + 1000;
    EXPECT_TRUE(load.hex(0xFBFF).reports.empty());
    EXPECT_EQ(found(load.hex(0xFC00)), Findings{Finding::over_range});
}

TEST(BootArea, TheLargestAlderTakesAllOf64KB)
{
    const RangeVerdict verdict = Load{"Alder-64"}.byte_at(0xFFFF).hex(0xFFFF);
    EXPECT_TRUE(verdict.reports.empty());
    EXPECT_EQ(verdict.high, 0xFFFF);
}

// The boot area with data flash below it (Birch, Pine, Rowan, Spruce). Birch-16: code to 3FFF, boot loader from F800.

TEST(BootAreaWithData, AFileThatReachesBehindTheCodeHoldsDataAndKeepsItsEnd)
{
    const RangeVerdict verdict = Load{"Birch-16"}.hex(0x4000);
    EXPECT_EQ(found(verdict), Findings{Finding::data_memory});
    EXPECT_EQ(verdict.high, 0x4000);
    EXPECT_EQ(verdict.reports[0].rule, RangeRule::boot_area);
}

TEST(BootAreaWithData, OldBytesBehindTheCodeAreFoundToo)
{
    EXPECT_EQ(found(Load{"Birch-16"}.byte_at(0xF7FF).hex(0x1FF)), Findings{Finding::data_memory});
    EXPECT_TRUE(found(Load{"Birch-16"}.byte_at(0xF800).hex(0x1FF)).empty()) << "that is the boot loader's";
}

TEST(BootAreaWithData, FromTheBootLoaderOnItIsOverRangeAsWell)
{
    const RangeVerdict verdict = Load{"Birch-16"}.hex(0xF800);
    EXPECT_EQ(found(verdict), (Findings{Finding::over_range, Finding::data_memory}));
    EXPECT_EQ(verdict.high, 0xF7FF);
    EXPECT_TRUE(verdict.to_clear.empty());
}

TEST(BootAreaWithData, AfterOverRangeTheEndIsThatOfTheDataFlash)
{
    EXPECT_EQ(Load{"Spruce-16"}.hex(0xF800).high, 0xF3FF) << "its data flash ends below the boot loader";
}

TEST(BootAreaWithData, TheRcGroupBehavesTheSame)
{
    EXPECT_EQ(found(Load{"Rowan-16"}.hex(0x4000)), Findings{Finding::data_memory});
    EXPECT_EQ(found(Load{"Spruce-16"}.hex(0x4000)), Findings{Finding::data_memory});
    EXPECT_EQ(found(Load{"Pine-16"}.hex(0x4000)), Findings{Finding::data_memory});
}

// The two wide-boot models: code to 4FFF, a gap, data flash from 8000, boot loader from F400.

TEST(WideBoot, ABytePutIntoTheGapIsOverRangeAndTheGapIsCleared)
{
    const RangeVerdict verdict = Load{"Birch-20"}.byte_at(0x5000).hex(0x4FFF);
    EXPECT_EQ(found(verdict), Findings{Finding::over_range});
    EXPECT_EQ(verdict.to_clear, (Ranges{{0x5000, 0x7FFF}}));
    EXPECT_EQ(verdict.high, 0x4FFF) << "the end is left alone on these models";
}

TEST(WideBoot, AHexFileThatEndsInsideTheGapIsOverRange)
{
    const RangeVerdict verdict = Load{"Birch-20L"}.hex(0x6000);
    EXPECT_EQ(found(verdict), Findings{Finding::over_range});
    EXPECT_EQ(verdict.high, 0x6000);
}

TEST(WideBoot, AHexFileThatCrossesTheGapIsOverRangeAndHoldsData)
{
    EXPECT_EQ(found(Load{"Birch-20"}.hex(0x8000)), (Findings{Finding::over_range, Finding::data_memory}));
}

TEST(WideBoot, AHexFileThatBeginsAboveTheGapHoldsDataOnly)
{
    EXPECT_EQ(found(Load{"Birch-20"}.hex(0x8100, 0x8000)), Findings{Finding::data_memory});
}

TEST(WideBoot, OldBytesInTheDataFlashAreFound)
{
    EXPECT_EQ(found(Load{"Birch-20"}.byte_at(0xF3FF).hex(0x1FF)), Findings{Finding::data_memory});
    EXPECT_TRUE(found(Load{"Birch-20"}.byte_at(0xF400).hex(0x1FF)).empty());
}

TEST(WideBoot, HexFromTheBootLoaderOnIsHeldBelowIt)
{
    const RangeVerdict verdict = Load{"Birch-20"}.hex(0xF400, 0x8000);
    EXPECT_EQ(found(verdict), (Findings{Finding::over_range, Finding::data_memory}));
    EXPECT_EQ(verdict.high, 0xF3FF);
}

TEST(WideBoot, BinaryLooksAtAddressesNotAtBytes)
{
    EXPECT_TRUE(found(Load{"Birch-20"}.byte_at(0x5000).byte_at(0x9000).bin(0x4FFF)).empty());
    EXPECT_EQ(found(Load{"Birch-20"}.bin(0x5000)), Findings{Finding::over_range});
    EXPECT_EQ(found(Load{"Birch-20"}.bin(0x9000)), (Findings{Finding::over_range, Finding::data_memory}));
    EXPECT_EQ(found(Load{"Birch-20"}.bin(0x9000, 0x8000)), Findings{Finding::data_memory});
    EXPECT_EQ(found(Load{"Birch-20"}.bin(0x9000, 0x6000)), (Findings{Finding::over_range, Finding::data_memory}));
}

TEST(WideBoot, BinaryClearsTheGapInAnyCase)
{
    EXPECT_EQ(Load{"Birch-20"}.bin(0x1FF).to_clear, (Ranges{{0x5000, 0x7FFF}}));
}

// The binary loader's shorter road through the boot area.

TEST(BootAreaBinary, WithoutDataFlashTheEndIsCutAndAllUpToTheTabulatedBootAreaIsCleared)
{
    Load load{"Aspen-16"}; // tabulated boot area from E000
    load.record.eeprom_last = load.record.eeprom_first + 1000;
    const RangeVerdict verdict = load.bin(0x4000);
    EXPECT_EQ(found(verdict), Findings{Finding::over_range});
    EXPECT_EQ(verdict.high, 0x3FFF);
    EXPECT_EQ(verdict.to_clear, (Ranges{{0x4000, 0xDFFF}}));
}

TEST(BootAreaBinary, ItClearsWithoutLookingAlsoWhenNothingIsOverRange)
{
    const RangeVerdict verdict = Load{"Aspen-16"}.byte_at(0x5000).bin(0x3FFF);
    EXPECT_TRUE(verdict.reports.empty());
    EXPECT_EQ(verdict.to_clear, (Ranges{{0x4000, 0xDFFF}}));
}

TEST(BootAreaBinary, WithDataFlashOnlyTheEndIsLookedAt)
{
    EXPECT_TRUE(found(Load{"Birch-16"}.byte_at(0x5000).bin(0x3FFF)).empty());
    EXPECT_EQ(found(Load{"Birch-16"}.bin(0x4000)), Findings{Finding::data_memory});
    EXPECT_EQ(Load{"Birch-16"}.bin(0x4000).high, 0x4000);
}

TEST(BootAreaBinary, FromTheBootLoaderOnTheEndIsHeldBelowIt)
{
    const RangeVerdict verdict = Load{"Spruce-16"}.bin(0xF800);
    EXPECT_EQ(found(verdict), (Findings{Finding::over_range, Finding::data_memory}));
    EXPECT_EQ(verdict.high, 0xF7FF) << "not at the end of the data flash, as the HEX loader has it";
}

TEST(BootAreaBinary, WhereCodeAbutsTheBootLoaderTheEndIsCutToTheCode)
{
    Load load{"Aspen-63"};
    load.record.eeprom_last = load.record.eeprom_first + 1000;
    const RangeVerdict verdict = load.bin(0xFC00);
    EXPECT_EQ(found(verdict), Findings{Finding::over_range});
    EXPECT_EQ(verdict.high, 0xFBFF);
    EXPECT_TRUE(verdict.to_clear.empty());
}

TEST(ClearRanges, StayInsideTheImage)
{
    std::vector<std::uint8_t> image(16, 0xFF);
    clear_ranges(image, {{-5, 1}, {14, 100}, {9, 8}});
    EXPECT_EQ(image[0] + image[1] + image[14] + image[15], 0);
    EXPECT_EQ(image[2], 0xFF);
    EXPECT_EQ(image[8] & image[9] & image[13], 0xFF);
}
