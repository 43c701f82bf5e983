// What a board is to hold, byte by byte.
#include "board/board_bench.h"

#include "board/given_numbers.h"
#include "board/quantity.h"

#include <map>

using namespace vrk;

namespace {

BoardImage image_of(const BoardJob& job, std::int32_t capacity = 62 * 1024)
{
    BoardSource source = build_board_source(job);
    leave_numbers_open(job, source);
    return build_board_image(job, source, board_fit(job.model, capacity, source.last));
}

Bytes part(const BoardImage& image, std::size_t first, std::size_t count)
{
    return {
        image.begin() + static_cast<std::ptrdiff_t>(first), image.begin() + static_cast<std::ptrdiff_t>(first + count)};
}

bool is_all(const BoardImage& image, std::size_t first, std::size_t last, std::uint8_t value)
{
    return std::all_of(image.begin() + static_cast<std::ptrdiff_t>(first),
        image.begin() + static_cast<std::ptrdiff_t>(last) + 1, [value](std::uint8_t byte) { return byte == value; });
}

BoardImage image_for(double quantity)
{
    BoardJob job = job_for("Birch-16");
    job.quantity = quantity;
    return image_of(job);
}

BoardNumber number_at(std::int32_t address, std::int32_t bytes)
{
    BoardNumber number;
    number.in_use = true;
    number.address = address;
    number.bytes = bytes;
    number.next_value = 0x01020304;
    number.increment = 3;
    number.format = AutoIncrease::bcd;
    return number;
}

} // namespace

TEST(Quantity, OfOneChipIsOneBit)
{
    const BoardImage image = image_for(1);
    EXPECT_TRUE(is_all(image, 0xED00, 0xED3F, 0));
    EXPECT_EQ(image[0xEE00], 0x01);
    EXPECT_TRUE(is_all(image, 0xEE01, 0xEEFF, 0));
}

TEST(Quantity, Of2048ChipsIsOneBitOfTheThousands)
{
    const BoardImage image = image_for(2048);
    EXPECT_EQ(image[0xED00], 0x01);
    EXPECT_TRUE(is_all(image, 0xED01, 0xED3F, 0));
    EXPECT_TRUE(is_all(image, 0xEE00, 0xEEFF, 0));
}

TEST(Quantity, OfAMillionFillsSixtyOneAndSeventyTwoBytes)
{
    const BoardImage image = image_for(1000000);
    EXPECT_TRUE(is_all(image, 0xED00, 0xED3C, 0xFF));
    EXPECT_TRUE(is_all(image, 0xED3D, 0xED3F, 0));
    EXPECT_TRUE(is_all(image, 0xEE00, 0xEE47, 0xFF));
    EXPECT_TRUE(is_all(image, 0xEE48, 0xEEFF, 0));
}

TEST(Quantity, Of2047ChipsFillsTheWholeRow)
{
    const BoardImage image = image_for(2047);
    EXPECT_EQ(image[0xED00], 0);
    EXPECT_TRUE(is_all(image, 0xEE00, 0xEEFE, 0xFF));
    EXPECT_EQ(image[0xEEFF], 0x7F);
}

TEST(Quantity, IsRoundedBeforeItIsLookedAt)
{
    BoardJob job;
    job.quantity = 0.4;
    EXPECT_EQ(quantity_fault(job), QuantityFault::too_small);
    job.quantity = -1;
    EXPECT_EQ(quantity_fault(job), QuantityFault::too_small);
    job.quantity = 0.6;
    EXPECT_EQ(quantity_fault(job), QuantityFault::none);
    job.quantity = 1000000.4;
    EXPECT_EQ(quantity_fault(job), QuantityFault::none);
    job.quantity = 1000001;
    EXPECT_EQ(quantity_fault(job), QuantityFault::too_large);
}

TEST(NumberField, ThatCrossesABlockIsSplitThere)
{
    const NumberField field = number_field(number_at(0x0081, 4), 0);
    EXPECT_EQ(field.first, 0x007E);
    EXPECT_EQ(field.first_count, 2);
    EXPECT_EQ(field.second_first, 0x0080);
    EXPECT_EQ(field.second_count, 2);
}

TEST(NumberField, ThatEndsAtABlocksLastByteStaysInIt)
{
    const NumberField field = number_field(number_at(0x007F, 4), 0);
    EXPECT_EQ(field.first, 0x007C);
    EXPECT_EQ(field.first_count, 4);
    EXPECT_EQ(field.second_first, 0x007F);
    EXPECT_EQ(field.second_count, 0);
}

TEST(NumberField, OfTheDataLiesInTheDataFlash)
{
    const NumberField field = number_field(number_at(0x0081, 4), 0xF000);
    EXPECT_EQ(field.first, 0xF07E);
    EXPECT_EQ(field.second_first, 0xF080);
}

TEST(BoardImage, HoldsAnOpenFieldOnBothSidesOfABlocksEdge)
{
    BoardJob job = job_for("Birch-16");
    job.code_number = number_at(0x0081, 4);
    const BoardImage image = image_of(job);
    EXPECT_EQ(image[0x407D], job.code.bytes[0x7D]);
    EXPECT_TRUE(is_all(image, 0x407E, 0x4081, 0xFF));
    EXPECT_EQ(image[0x4082], job.code.bytes[0x82]);
    EXPECT_EQ(part(image, 0xEC80, 11), (Bytes{0x01, 0x00, 0x00, 0x7E, 0x02, 0x00, 0x00, 0x80, 0x02, 0x03, 0x01}));
    EXPECT_EQ(part(image, 0xEC90, 4), (Bytes{0x01, 0x02, 0x03, 0x04}));
    EXPECT_TRUE(is_all(image, 0xED40, 0xED5F, 0xFF));
    EXPECT_TRUE(is_all(image, 0xF400, 0xF5FF, 0xFF));
}

// Increment and length have one byte each.
TEST(BoardImage, KeepsTheLowByteOfALargeIncrement)
{
    BoardJob job = job_for("Birch-16");
    job.code_number = number_at(0x0041, 4);
    job.code_number.increment = 300;
    EXPECT_EQ(image_of(job)[0xEC89], 300 - 256);
}

TEST(BoardImage, ShowsThePlaceOfANumberThatIsNotInUseAndNothingElseOfIt)
{
    BoardJob job = job_for("Birch-16");
    job.code_number = number_at(0x0081, 4);
    job.code_number.in_use = false;
    const BoardImage image = image_of(job);
    EXPECT_EQ(part(image, 0xEC80, 11), (Bytes{0x00, 0x00, 0x00, 0x7E, 0x02, 0x00, 0x00, 0x80, 0x02, 0x03, 0xFF}));
    EXPECT_TRUE(is_all(image, 0xEC90, 0xEC93, 0));
    EXPECT_EQ(image[0x407E], job.code.bytes[0x7E]);
    EXPECT_TRUE(is_all(image, 0xED40, 0xED5F, 0));
    EXPECT_TRUE(is_all(image, 0xF400, 0xF5FF, 0));
}

TEST(BoardImage, HoldsTheCrcOfEachBlockOfTheTarget)
{
    const BoardJob job = job_for("Birch-16", 0x200);
    const BoardImage image = image_of(job);
    // 128 zeros, low byte first; and a block that holds code is not that.
    EXPECT_EQ(part(image, 0xF000 + 2 * 511, 2), (Bytes{0xFE, 0xFB}));
    EXPECT_NE(part(image, 0xF000, 2), (Bytes{0xFE, 0xFB}));
}

TEST(BoardImage, HasTheUpperPartOfTheTargetBelowItsLowerOne)
{
    const BoardJob job = job_for("Birch-62", 0xF000);
    const BoardImage image = image_of(job);
    EXPECT_EQ(part(image, 0x4000, 0xAC00), part(job.code.bytes, 0, 0xAC00));
    EXPECT_EQ(part(image, 0x2000, 0x2000), part(job.code.bytes, 0xAC00, 0x2000));
}

TEST(BoardSource, OfAShortFileIsStillAKilobyte)
{
    BoardJob job = job_for("Birch-16", 100);
    job.code.high = 99;
    job.code.bytes[1023] = 0x5A;
    const BoardSource source = build_board_source(job);
    EXPECT_EQ(source.last, 1023);
    EXPECT_EQ(source.bytes[1023], 0x5A);
}

TEST(BoardSource, EndsWhereTheFamilyEnds)
{
    struct Row {
        std::int16_t series;
        bool all_flash;
        std::int32_t ap_last;
        std::int32_t last;
    };
    constexpr Row rows[] = {{3, false, 0, 0x5DFF}, {4, false, 15360, 0x6FFF}, {4, false, 15359, 0x5DFF},
        {5, true, 0, 0x77FF}, {5, false, 0, 0x6FFF}, {6, true, 0, 0x17FF}, {6, false, 0, 0x13FF}, {9, true, 0, 0x17FF},
        {9, false, 0, 0x13FF}, {7, true, 0, 0xF7FF}, {7, false, 0, 0xF3FF}, {10, true, 0, 0xF7FF},
        {10, false, 0, 0xF3FF}, {8, true, 0, 0x37FF}, {8, false, 0, 0x33FF}, {15, false, 0, 0x33FF},
        {16, true, 0, 0x37FF}, {17, false, 0, 0x33FF}, {14, false, 0, 0}, {18, false, 0, 0}, {2, false, 0, 0xFFFE},
        {0, false, 0, 0xFFFE}, {12, false, 0, 0xFFFE}};
    for (const Row& row : rows) {
        BoardJob job = job_for("Birch-16", 0xFFFF);
        job.model.series = row.series;
        job.model.cap_all_flash_ap = row.all_flash;
        job.model.ap_last = row.ap_last;
        const BoardSource source = build_board_source(job);
        EXPECT_EQ(source.last, row.last) << "series " << row.series;
        EXPECT_EQ(source.bytes[static_cast<std::size_t>(row.last)], job.code.bytes[static_cast<std::size_t>(row.last)]);
        EXPECT_EQ(source.bytes[static_cast<std::size_t>(row.last) + 1], 0) << "series " << row.series;
    }
}

TEST(BoardSource, TakesAllOfTheDataBehindTheCode)
{
    BoardJob job = job_for("Juniper-32Q", 0x9000);
    job.data = image_with(pattern(0x500, 7), 0x10001);
    const BoardSource source = build_board_source(job);
    const auto data_first = static_cast<std::size_t>(job.model.eeprom_first);
    EXPECT_EQ(source.last, job.model.ap_last + 0x500);
    EXPECT_EQ(part(source.bytes, 0, 0x8000), part(job.code.bytes, 0, 0x8000));
    EXPECT_EQ(part(source.bytes, data_first, 0x500), part(job.data.bytes, 0, 0x500));
}

TEST(BoardSource, WithADataFileThatHoldsNothingIsTheCodeAlone)
{
    BoardJob job = job_for("Juniper-32Q", 0x500);
    job.data.loaded = true;
    job.data.high = -1;
    const BoardSource source = build_board_source(job);
    EXPECT_EQ(source.last, 0x4FF);
}

TEST(BoardSource, HasNoDataOfAnotherModelInOneWithoutADataFlash)
{
    BoardJob job = job_for("Juniper-32", 0x500);
    job.data = image_with(pattern(0x500, 7), 0x10001);
    const BoardSource source = build_board_source(job);
    EXPECT_EQ(source.last, 0x4FF);
    EXPECT_EQ(source.bytes[static_cast<std::size_t>(job.model.eeprom_first)], 0);
}

TEST(BoardFit, GoesByTheModelAndByTheBoard)
{
    struct Row {
        std::int16_t series;
        const char* id;
        bool all_flash;
        std::int32_t limit;
    };
    constexpr Row rows[] = {{1, "E1", false, 0xF800}, {2, "F001", false, 0xF400}, {11, "D1", false, 0xF400},
        {3, "C1", false, 0x1400}, {4, "", false, 0x7000}, {5, "", true, 0x7800}, {5, "", false, 0x7000},
        {6, "", true, 0x1800}, {6, "", false, 0x1400}, {9, "", false, 0x1400}, {7, "", true, 0xF800},
        {7, "", false, 0xF400}, {10, "", true, 0xF800}, {8, "", true, 0x3800}, {15, "", false, 0x3400},
        {16, "", false, 0x3400}, {17, "", true, 0x3800}, {12, "F101", false, 0xF400}, {12, "F001", false, 0x3400},
        {13, "", false, 0xF400}, {18, "", false, 0xF000}, {0, "", false, 0}, {14, "", false, 0}};
    for (const Row& row : rows) {
        McuRecord model;
        model.series = row.series;
        model.mcu_id = row.id;
        model.cap_all_flash_ap = row.all_flash;
        EXPECT_EQ(board_fit(model, 64 * 1024, 0).limit, row.limit) << "series " << row.series;
        EXPECT_EQ(board_fit(model, 64 * 1024, 0).capacity, row.limit) << "series " << row.series;
    }
}

TEST(BoardFit, CutsASourceThatIsAsLongAsTheBoardIsLarge)
{
    const McuRecord model = catalog_test::record("Juniper-60");
    EXPECT_FALSE(board_fit(model, 16 * 1024, 0x3FFF).cut);
    const BoardFit fit = board_fit(model, 16 * 1024, 0x4000);
    EXPECT_TRUE(fit.cut);
    EXPECT_EQ(fit.code_end, 0x3FFF);
    EXPECT_EQ(cut_text(fit).en,
        "The maximum size of downloading code and data is 16K, The exceeding part won't be downloaded.");
    EXPECT_EQ(cut_text(fit).zh,
        "此脱机下载板版本或该型号的 MCU 最多下载16K 程序和数据, 超出部分将不下载。\n\n                      "
        "按确定继续");
}

TEST(NumberGrowth, MayReach2147483648AndNoFurther)
{
    BoardJob job = job_for("Juniper-32Q");
    job.quantity = 1000;
    job.code_number = number_at(0x81, 4);
    job.code_number.increment = 1;
    job.code_number.next_value = 2147482648;
    EXPECT_EQ(number_growth(job), NumberGrowth::fits);
    job.code_number.next_value = 2147482649;
    EXPECT_EQ(number_growth(job), NumberGrowth::code_too_large);
    job.data_number = job.code_number;
    job.code_number.in_use = false;
    EXPECT_EQ(number_growth(job), NumberGrowth::data_too_large);
    job.data_number.in_use = false;
    EXPECT_EQ(number_growth(job), NumberGrowth::fits);
}

// One byte of the header holds the increment.
TEST(GivenNumbers, AreCountedAsTheBoardCounts)
{
    BoardNumber number = number_at(0x81, 4);
    number.next_value = 100;
    number.increment = 2;
    EXPECT_EQ(given_numbers(number, 10).last, 118);
    EXPECT_EQ(given_numbers(number, 1).last, 100);
    number.increment = 300;
    EXPECT_EQ(given_numbers(number, 3).last, 100 + 2 * 44);
}

TEST(GivenNumbers, HaveToFitTheirBytesUpToTheLastChip)
{
    BoardJob job = job_for("Juniper-32Q");
    job.quantity = 10;
    job.code_number = number_at(0x81, 2);
    job.code_number.format = AutoIncrease::bcd;
    job.code_number.increment = 1;
    job.code_number.next_value = 9990;
    EXPECT_FALSE(why_numbers_are_refused(job).has_value());
    job.code_number.next_value = 9991;
    const auto refusal = why_numbers_are_refused(job);
    ASSERT_TRUE(refusal.has_value());
    EXPECT_EQ(refusal->text.en, "The number of bytes is too small.");
    EXPECT_EQ(refusal->title.en, "Set Program Automatic Increment");
}

TEST(GivenNumbers, MayNotStandStillWhereTheyAreMeantToMove)
{
    BoardJob job = job_for("Juniper-32Q");
    job.data_number = number_at(0x81, 4);
    job.data_number.increment = 256;
    ASSERT_TRUE(why_numbers_are_refused(job).has_value());
    EXPECT_EQ(
        why_numbers_are_refused(job)->text.zh, "增量的低 8 位为 0，脱机下载板会给每个 MCU 写入相同的数值，未写入。");
    job.quantity = 1;
    EXPECT_FALSE(why_numbers_are_refused(job).has_value());
    job.quantity = 10;
    job.data_number.increment = 0;
    EXPECT_FALSE(why_numbers_are_refused(job).has_value()) << "typed like this, it is wanted";
    EXPECT_EQ(given_texts(job).at(0).en, "Auto increment of the EEPROM file: this board gives 16909060 to 16909060.");
}

TEST(ServiceImage, HasIdAndOptionsAtItsTop)
{
    const BoardJob job = job_for("Birch-16");
    const BoardImage image = stamped_source(job, build_board_source(job));
    EXPECT_EQ(part(image, 0xFFD0, 2), (Bytes{0xF1, 0x04}));
    EXPECT_EQ(part(image, 0xFFE0, 8), (Bytes{0x18, 0x19, 0x1A, 0x1B, 0x1C, 0x1D, 0x1E, 0x1F}));
    EXPECT_EQ(part(image, 0xFFF0, 8), (Bytes{0x10, 0x11, 0x12, 0x13, 0x14, 0x15, 0x16, 0x17}));
    EXPECT_EQ(part(image, 0, 0x3000), part(job.code.bytes, 0, 0x3000));
}
