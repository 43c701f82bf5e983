#include "image/hex_loader.h"

#include "image/bench.h"
#include "image/range_messages.h"

using namespace vrk;
using image_test::end_line;
using image_test::fixture;
using image_test::hex_line;
using image_test::LoadBench;

TEST(HexLoader, AHundredBytesAtZeroReachTo511)
{
    LoadBench bench{"Juniper-60"};
    EXPECT_EQ(bench.load(fixture("hundred_bytes.hex")), LoadEnd::done);
    EXPECT_EQ(bench.buffer.data[0], 1);
    EXPECT_EQ(bench.buffer.data[99], 100);
    EXPECT_EQ(bench.buffer.data[100], 0);
    EXPECT_EQ(bench.buffer.low, 0);
    EXPECT_EQ(bench.buffer.high, 511);
    EXPECT_EQ(bench.buffer.checksum, 5050);
    EXPECT_EQ(bench.checksum, "00013BAH       ");
    EXPECT_TRUE(bench.buffer.loaded);
    EXPECT_TRUE(bench.boxes.shown.empty());
}

TEST(HexLoader, WrongCountFieldWithGoodChecksumStoresAllItsBytes)
{
    LoadBench bench{"Juniper-60"};
    bench.load(fixture("count_field_too_small.hex"));
    EXPECT_TRUE(bench.boxes.shown.empty());
    EXPECT_EQ(bench.buffer.data[0x12], 0xA3);
    EXPECT_EQ(bench.buffer.data[0x13], 0xA4);
}

TEST(HexLoader, AnExtendedAddressRecordIsStoredAsDataAndShiftsNothing)
{
    LoadBench bench{"Juniper-60"};
    bench.buffer.start = 0x100;
    fill_buffer(0x99, bench.buffer);
    bench.file_open = true; // merge, so that the two zero bytes show
    bench.load(fixture("extended_linear_zero.hex"));
    EXPECT_EQ(bench.buffer.data[0x0FF], 0x99);
    EXPECT_EQ(bench.buffer.data[0x100], 0);
    EXPECT_EQ(bench.buffer.data[0x101], 0);
    EXPECT_EQ(bench.buffer.data[0x102], 0x99);
    EXPECT_EQ(bench.buffer.data[0x120], 0x55);
    EXPECT_EQ(bench.buffer.checksum, 0x55);
}

TEST(HexLoader, AMissingEndRecordIsNoFault)
{
    LoadBench bench{"Juniper-60"};
    bench.load(fixture("ends_without_end_record.hex"));
    EXPECT_EQ(bench.buffer.data[0x301], 4);
    EXPECT_EQ(bench.buffer.high, 0x301);
    EXPECT_TRUE(bench.boxes.shown.empty());
}

TEST(HexLoader, AMissingEndRecordIsAFaultWhereOneIsWanted)
{
    LoadBench bench{"Juniper-60"};
    bench.end_record_wanted = true;
    EXPECT_EQ(bench.load(fixture("ends_without_end_record.hex")), LoadEnd::no_end_record);
    EXPECT_FALSE(bench.buffer.loaded);
    EXPECT_EQ(bench.load(bench.file("cut.hex", ":0100000041BE\n:00000001")), LoadEnd::no_end_record);
    EXPECT_TRUE(bench.boxes.shown.empty()) << "nothing is told of half a record";
    EXPECT_EQ(bench.load(fixture("hundred_bytes.hex")), LoadEnd::done);
    EXPECT_EQ(bench.load(fixture("hundred_bytes.bin")), LoadEnd::done) << "binary files have none";
}

// A checksum became a data byte, and stood over that of the record's neighbour.
TEST(HexLoader, BlanksBehindARecordDoNotTouchItsNeighbour)
{
    LoadBench bench{"Juniper-60"};
    bench.load(bench.file("blanks.hex", ":0100010042BC\n:0100000041BE \t\n:00000001FF  \n"));
    EXPECT_TRUE(bench.boxes.shown.empty());
    EXPECT_EQ(bench.buffer.data[0], 0x41);
    EXPECT_EQ(bench.buffer.data[1], 0x42);
    EXPECT_EQ(bench.buffer.checksum, 0x83);
}

TEST(HexLoader, AFileThatIsWrittenWhileItIsReadIsLeft)
{
    LoadBench bench{"Juniper-60"};
    const std::string path = bench.file("lamp.hex", ":0100000041BF\n:0100010042BC\n" + end_line);
    bench.boxes.act = [&] { bench.file("lamp.hex", "the linker begins anew"); };
    EXPECT_EQ(bench.load(path), LoadEnd::changed);
    EXPECT_FALSE(bench.buffer.loaded);
}

TEST(HexLoader, NothingIsReadBehindTheEndRecord)
{
    LoadBench bench{"Juniper-60"};
    bench.load(fixture("data_behind_end_record.hex"));
    EXPECT_EQ(bench.buffer.data[0x10], 0);
    EXPECT_EQ(bench.buffer.checksum, 3);
}

TEST(HexLoader, LinesWithoutAColonAreSkippedInSilence)
{
    LoadBench bench{"Juniper-60"};
    bench.load(fixture("text_between_records.hex"));
    EXPECT_EQ(bench.buffer.data[0], 0x11);
    EXPECT_EQ(bench.buffer.data[1], 0x22);
    EXPECT_TRUE(bench.boxes.shown.empty());
}

// It used to load as 512 zeros, and these were programmed.
TEST(HexLoader, AFileWithoutRecordsBringsNothing)
{
    LoadBench bench{"Juniper-60"};
    bench.buffer.start = 0x40;
    EXPECT_EQ(bench.load(fixture("no_records.hex")), LoadEnd::no_data);
    EXPECT_EQ(bench.buffer.high, 1023);
    EXPECT_FALSE(bench.buffer.loaded);
}

TEST(HexLoader, OverlappingRecordsBothCountInTheChecksum)
{
    LoadBench bench{"Juniper-60"};
    bench.load(fixture("overlapping_records.hex"));
    EXPECT_EQ(bench.buffer.data[1], 1);
    EXPECT_EQ(bench.buffer.data[2], 2);
    EXPECT_EQ(bench.buffer.checksum, 12);
}

TEST(HexLoader, CarriageReturnsAloneEndLinesToo)
{
    LoadBench bench{"Juniper-60"};
    bench.load(fixture("carriage_returns_only.hex"));
    EXPECT_EQ(bench.buffer.data[2], 0x0C);
}

TEST(HexLoader, LowerCaseDigitsAreRead)
{
    LoadBench bench{"Juniper-60"};
    bench.load(fixture("lower_case_digits.hex"));
    EXPECT_EQ(bench.buffer.data[2], 0xEF);
}

TEST(HexLoader, AStartOf8000IsCorrectedToThatAddress)
{
    LoadBench bench{"Juniper-60"};
    bench.buffer.start = -0x8000; // as four digits come out
    bench.load(fixture("overlapping_records.hex"));
    EXPECT_EQ(bench.buffer.low, 0x8000);
    EXPECT_EQ(bench.buffer.data[0x8005], 2);
}

TEST(HexLoader, BytesAboveTheDeviceAreSummedButNotStored)
{
    LoadBench bench{"Hazel-1"}; // the boot area ends at 1FFF
    bench.load(bench.file("high.hex", hex_line(0x1FFF, {0x10, 0x20}) + end_line));
    EXPECT_EQ(bench.buffer.data[0x1FFF], 0x10);
    EXPECT_EQ(bench.buffer.data[0x2000], 0);
    EXPECT_EQ(bench.buffer.checksum, 0x30);
}

TEST(HexLoader, ARecordAcrossTheTopOfTheMapIsNoDanger)
{
    LoadBench bench{"Alder-64"}; // its boot area ends at 11FFF
    bench.buffer.start = -1; // FFFF
    bench.load(bench.file("top.hex", hex_line(0xFFFF, std::vector<int>(255, 1)) + end_line));
    EXPECT_EQ(bench.buffer.checksum, 255);
    EXPECT_EQ(bench.buffer.data[0x11FFF], 0);
}

TEST(HexLoader, BytesThatAreClearedAsOverRangeStayInTheChecksum)
{
    LoadBench bench{"Cedar-2R"};
    bench.load(bench.file("gap.hex", hex_line(0x800, {0x40, 0x02}) + end_line));
    EXPECT_EQ(bench.buffer.data[0x800], 0);
    EXPECT_EQ(bench.buffer.checksum, 0x42);
    ASSERT_EQ(bench.reports.size(), 1U);
    EXPECT_STREQ(range_title(bench.reports[0], FileKind::hex), "Open HEX file");
    EXPECT_EQ(range_message(bench.reports[0], FileKind::hex).zh.substr(0, 12), "无效区间");
}

TEST(HexLoader, AGapFilledWithZerosShowsNoLine)
{
    LoadBench bench{"Cedar-2R"};
    bench.load(bench.file("zeros.hex", hex_line(0x800, {0, 0, 0}) + end_line));
    EXPECT_TRUE(bench.reports.empty());
    EXPECT_EQ(bench.buffer.checksum, 0);
}

TEST(HexLoader, AModelWithoutDataFlashIsCutUnderTheBinaryTitle)
{
    LoadBench bench{"Juniper-8"};
    bench.load(bench.file("long.hex", hex_line(0x2000, {0x77}) + end_line));
    ASSERT_EQ(bench.reports.size(), 1U);
    EXPECT_STREQ(range_title(bench.reports[0], FileKind::hex), "Open BIN file");
    EXPECT_EQ(bench.buffer.high, 0x1FFF);
    EXPECT_EQ(bench.buffer.data[0x2000], 0);
}

TEST(HexLoader, TheChecksumOfASeparateEepromHasNoBlanksBehindTheH)
{
    LoadBench bench{"Juniper-60Q", BufferKind::data};
    bench.load(fixture("hundred_bytes.hex"));
    EXPECT_EQ(bench.checksum, "00013BAH");
    EXPECT_FALSE(bench.checksum_beside_code);
}

TEST(HexLoader, TheOlderFamiliesShowEveryChecksumInTheBoxOfTheCode)
{
    LoadBench bench{"Birch-16", BufferKind::data};
    bench.load(fixture("hundred_bytes.hex"));
    EXPECT_EQ(bench.checksum, "00013BAH       ");
    EXPECT_TRUE(bench.checksum_beside_code);
}

TEST(HexLoader, AWrongChecksumIsShownWithItsLineAndTheDataIsUsed)
{
    LoadBench bench{"Juniper-60"};
    const std::string path = fixture("second_record_bad_checksum.hex");
    EXPECT_EQ(bench.load(path), LoadEnd::done);
    ASSERT_EQ(bench.boxes.shown.size(), 1U);
    EXPECT_EQ(bench.boxes.shown[0].title.zh, path);
    EXPECT_EQ(bench.boxes.shown[0].text.zh, "校验和错:\n\n:03000300040506EC");
    EXPECT_FALSE(bench.boxes.shown[0].is_question);
    EXPECT_EQ(bench.buffer.data[4], 5);
    EXPECT_EQ(bench.buffer.checksum, 45);
}

TEST(HexLoader, TheThirdWrongChecksumAsksAndNoEndsTheLoad)
{
    LoadBench bench{"Juniper-60"};
    bench.boxes.answers = {false};
    EXPECT_EQ(bench.load(fixture("three_bad_checksums.hex")), LoadEnd::refused);
    ASSERT_EQ(bench.boxes.shown.size(), 4U);
    EXPECT_FALSE(bench.boxes.shown[2].is_question);
    EXPECT_TRUE(bench.boxes.shown[3].is_question);
    EXPECT_EQ(bench.boxes.shown[3].text.zh, "不再检测校验和, 继续加载文件请输入 Y\n\n中止加载文件, 立即返回请输入 N");
    EXPECT_EQ(bench.boxes.shown[3].title.zh, fixture("three_bad_checksums.hex"));
}

TEST(HexLoader, YesUsesTheRestOfTheFileWithoutAWord)
{
    LoadBench bench{"Juniper-60"};
    bench.boxes.answers = {true};
    EXPECT_EQ(bench.load(fixture("five_bad_checksums.hex")), LoadEnd::done);
    EXPECT_EQ(bench.boxes.shown.size(), 4U);
    EXPECT_EQ(bench.buffer.data[4], 3) << "the third faulty line too";
    EXPECT_EQ(bench.buffer.data[9], 5);
}

TEST(HexLoader, EnglishTextsOfTheWrongChecksums)
{
    LoadBench bench{"Juniper-60"};
    bench.load(fixture("three_bad_checksums.hex"));
    ASSERT_EQ(bench.boxes.shown.size(), 4U);
    EXPECT_EQ(bench.boxes.shown[0].text.en, "The checksum is incorrect:\n\n:03000000010203F8");
    EXPECT_EQ(bench.boxes.shown[3].text.en,
        "Not test Checksum any more. Continue loading the file, Please input Y.\n\n"
        "Stop loading the file. Return immediately, please input N");
}

TEST(HexLoader, AFileThatIsNotWantedAnyMoreIsReadNoFurther)
{
    LoadBench bench{"Juniper-60"};
    int asked = 0;
    bench.wanted = [&] { return ++asked < 3; };
    EXPECT_EQ(bench.load(fixture("hundred_bytes.hex")), LoadEnd::overtaken);
    EXPECT_EQ(asked, 3) << "once a line";
    EXPECT_FALSE(bench.buffer.loaded);
    EXPECT_EQ(bench.buffer.data[0], 0) << "the image is that of before";
}

TEST(HexLoader, AfterABoxItIsAskedAgainWhetherTheFileIsWanted)
{
    LoadBench bench{"Juniper-60"};
    bool wanted = true;
    bench.wanted = [&] { return wanted; };
    bench.boxes.act = [&] { wanted = false; };
    EXPECT_EQ(bench.load(fixture("three_bad_checksums.hex")), LoadEnd::overtaken);
    EXPECT_EQ(bench.boxes.shown.size(), 1U) << "no more boxes about a file that nobody waits for";
}
