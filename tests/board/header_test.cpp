// The header of a board's image: whole ones typed out, sixteen bytes a line, and what single fields go by.
#include "board/board_bench.h"

#include "platform/text_number.h"

using namespace vrk;

namespace {

std::array<std::uint8_t, header_size> header_of(const BoardJob& job)
{
    const BoardSource source = build_board_source(job);
    return build_board_header(header_values(job, source, board_fit(job.model, 62 * 1024, source.last)));
}

std::string lines_of(const std::array<std::uint8_t, header_size>& header)
{
    std::string text;
    for (const std::uint8_t byte : header)
        text += (text.empty() ? "" : " ") + hex_text(byte, 2);
    return text;
}

std::string field(const std::array<std::uint8_t, header_size>& header, std::size_t offset, std::size_t size)
{
    return lines_of(header).substr(3 * offset, 3 * size - 1);
}

BoardNumber unused_number()
{
    BoardNumber number;
    number.address = 0xFFFF;
    number.bytes = 8;
    number.increment = 1;
    return number;
}

} // namespace

TEST(BoardHeader, OfSeries2WithoutNumbers)
{
    BoardJob job = job_for("Birch-16");
    job.checks = {true, true, false};
    job.code_number = unused_number();
    job.data_number = unused_number();
    EXPECT_EQ(lines_of(header_of(job)),
        // clang-format off
        "42 69 72 63 68 2D 31 36 00 00 00 00 00 00 00 00 "
        "00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 "
        "F1 04 00 00 00 00 00 00 00 00 28 00 03 00 00 00 "
        "FF 11 FF FF FF FF FF FF FF FF FF FF FF FF FF FF "
        "00 40 00 00 6F FF 00 00 00 00 2F FF 00 00 00 00 "
        "EB FF 00 00 00 00 00 00 00 20 00 00 3F FF 00 AC "
        "00 00 CB FF 00 00 00 00 00 00 00 00 00 00 00 00 "
        "00 2F FF 00 00 00 00 00 F3 00 00 00 00 00 00 00 "
        "00 00 FF F8 08 00 FF FF 00 01 FF 00 00 00 00 00 "
        "00 00 00 00 00 00 02 00 00 00 00 00 3F FF 00 20 "
        "00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 "
        "00 EC 00 00 FB FF 00 08 00 00 00 00 3F FF 00 F7 "
        "FF 00 00 00 00 00 00 00 00 00 00 30 00 00 3F FF "
        "00 F7 FF 00 00 00 00 00 00 00 00 00 00 01 3F F8 "
        "08 01 3F FF 00 01 FF 00 00 00 00 00 00 00 00 00 "
        "00 00 00 00 00 00 00 00 00 00 00 00 00 00 44 35");
    // clang-format on
}

TEST(BoardHeader, OfSeries7WithDataTwoNumbersAndAnOlderId)
{
    BoardJob job = job_for("Juniper-32Q", 0x8000);
    job.model.alt_id = "F0A5";
    job.pins = 44;
    job.checks = {false, false, true};
    job.data = image_with(pattern(0x600, 9), 0x10001);
    job.code_number = {true, 0x0081, 4, 0x01020304, 300, AutoIncrease::bcd};
    job.data_number = {true, 0x0041, 4, 9, 1, AutoIncrease::ascii};
    EXPECT_EQ(lines_of(header_of(job)),
        // clang-format off
        "4A 75 6E 69 70 65 72 2D 33 32 51 00 00 00 00 00 "
        "00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 "
        "D1 70 F0 A5 FF FF FF FF 00 00 2C 00 04 00 00 00 "
        "10 11 12 13 FF FF FF FF 18 19 FF FF FF FF FF FF "
        "00 40 00 00 C5 FF 00 00 00 00 85 FF 00 00 00 00 "
        "7B FF 00 00 00 00 00 00 00 20 00 00 3F FF 00 AC "
        "00 00 CB FF 00 00 00 00 00 00 00 00 00 00 00 00 "
        "00 85 FF 00 00 00 00 00 F3 00 00 00 00 00 00 00 "
        "01 00 00 7E 02 00 00 80 02 2C 01 00 00 00 00 00 "
        "01 02 03 04 00 00 02 00 00 00 00 00 7F FF 00 40 "
        "00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 "
        "00 F4 00 00 FF FF 00 06 00 00 00 00 7F FF 00 F3 "
        "FF 00 00 00 00 00 00 00 00 00 00 86 00 00 85 FF "
        "00 F3 FF 00 85 FF 00 85 FF 00 85 FF 01 00 80 3E "
        "04 00 80 41 00 01 02 00 00 00 00 00 00 00 00 09 "
        "00 00 00 00 00 00 00 00 00 00 00 00 00 00 9C A1");
    // clang-format on
}

TEST(BoardHeader, OfSeries3WithAGapBeforeItsDataFlash)
{
    EXPECT_EQ(lines_of(header_of(job_for("Cedar-2", 0x200))),
        // clang-format off
        "43 65 64 61 72 2D 32 00 00 00 00 00 00 00 00 00 "
        "00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 "
        "F2 02 00 00 00 00 00 00 00 00 28 00 00 00 00 00 "
        "12 13 18 1A 1B 10 FF FF FF FF FF FF FF FF FF FF "
        "00 40 00 00 43 FF 00 00 00 00 03 FF 00 00 00 00 "
        "EB FF 00 00 00 00 00 00 00 20 00 00 3F FF 00 AC "
        "00 00 CB FF 00 00 00 00 00 00 00 00 00 00 00 00 "
        "00 03 FF 00 00 00 00 00 F3 00 00 00 00 00 00 00 "
        "00 00 00 01 00 00 00 00 00 00 FF 00 00 00 00 00 "
        "00 00 00 00 00 00 02 00 00 00 00 00 07 FF 00 04 "
        "00 08 00 00 0F FF 00 04 00 00 00 00 00 00 00 00 "
        "00 14 00 00 1F FF 00 06 00 00 00 00 0F FF 00 13 "
        "FF 00 00 00 00 00 00 00 00 00 00 04 00 00 0F FF "
        "00 13 FF 00 00 00 00 00 00 00 00 00 00 00 10 01 "
        "00 00 10 00 00 00 FF 00 00 00 00 00 00 00 00 00 "
        "00 00 00 00 00 00 00 00 00 00 00 00 00 00 1A 40");
    // clang-format on
}

TEST(BoardHeader, HasTheTwoDigitsOfAnOldIdTwice)
{
    const auto header = header_of(job_for("Aspen-8", 0x400));
    EXPECT_EQ(field(header, 0x20, 2), "52 52");
    EXPECT_EQ(field(header, 0xA8, 8), "00 1F FF 00 1F FF 00 00") << "its data flash of one byte has no page";
    EXPECT_EQ(field(header, 0x30, 16), "FF FF FF FF FF FF FF FF FF FF FF FF FF FF FF FF") << "and no option bytes";
}

// The oldest series has no limit of its own: nothing of its file is programmed, and the user is told.
TEST(BoardHeader, OfSeries0CountsInPagesOf128Bytes)
{
    const BoardJob job = job_for("Alder-64", 0x400);
    ASSERT_EQ(job.model.mcu_id, "FF");
    const auto header = header_of(job);
    EXPECT_EQ(field(header, 0x96, 2), "00 80");
    EXPECT_EQ(field(header, 0x70, 3), "FF FF FF");
    EXPECT_TRUE(board_fit(job.model, 62 * 1024, 1023).cut);
}

TEST(BoardHeader, EndsTheFirstAreaWhereTheBoardsOwnBytesBegin)
{
    const auto header = header_of(job_for("Birch-62", 0xF000));
    EXPECT_EQ(field(header, 0x43, 3), "00 EB FF");
    EXPECT_EQ(field(header, 0x49, 3), "00 AB FF");
    EXPECT_EQ(field(header, 0x70, 3), "00 EF FF");
}

TEST(BoardHeader, CutsALongNameAtThirtyOneCharacters)
{
    BoardJob job = job_for("Birch-16");
    job.model_name = " ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789 ";
    EXPECT_EQ(field(header_of(job), 0x1D, 3), "33 34 00") << "the letters and five digits";
}

TEST(BoardHeader, TellsThePinsOfTheCaseAndEachFlag)
{
    BoardJob job = job_for("Birch-16");
    job.model.cap_all_flash_ap = true;
    job.model.cap_no_option_write = true;
    job.model.cap_no_eeprom = true;
    job.pins = 12;
    EXPECT_EQ(field(header_of(job), 0x24, 8), "00 00 00 00 FF FF 0C FF");
}

// No field of the table reaches into another one.
TEST(BoardHeader, HasOnePlaceForEachField)
{
    std::size_t behind = 0;
    for (const HeaderField& one : header_fields()) {
        EXPECT_GE(one.offset, behind) << hex_text(static_cast<std::int64_t>(one.offset));
        behind = one.offset + one.size;
    }
    EXPECT_LE(behind, 0xFEU);
}
