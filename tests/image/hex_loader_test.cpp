#include "image/hex_loader.h"

#include "image/bench.h"
#include "image/file_loader.h"

using namespace vrk;
using image_test::Bench;
using image_test::end_line;
using image_test::fixture;
using image_test::hex_line;

TEST(HexLoader, AHundredBytesAtZeroReachTo511)
{
    Bench bench{"Juniper-60"};
    EXPECT_TRUE(load_file(bench.shell, fixture("hundred_bytes.hex"), bench.code));
    EXPECT_EQ(bench.code.data[0], 1);
    EXPECT_EQ(bench.code.data[99], 100);
    EXPECT_EQ(bench.code.data[100], 0);
    EXPECT_EQ(bench.code.low, 0);
    EXPECT_EQ(bench.code.high, 511);
    EXPECT_EQ(bench.code.checksum, 5050);
    EXPECT_EQ(bench.form.txtFileCheckSum.text(), "00013BAH       ");
    EXPECT_TRUE(bench.code.loaded);
    EXPECT_TRUE(bench.shell.file_loaded);
    EXPECT_TRUE(bench.dialogs.shown.empty());
    EXPECT_FALSE(bench.dialogs.busy);
}

TEST(HexLoader, WrongCountFieldWithGoodChecksumStoresAllItsBytes)
{
    Bench bench{"Juniper-60"};
    load_file(bench.shell, fixture("count_field_too_small.hex"), bench.code);
    EXPECT_TRUE(bench.dialogs.shown.empty());
    EXPECT_EQ(bench.code.data[0x12], 0xA3);
    EXPECT_EQ(bench.code.data[0x13], 0xA4);
}

TEST(HexLoader, AnExtendedAddressRecordIsStoredAsDataAndShiftsNothing)
{
    Bench bench{"Juniper-60"};
    bench.form.txtAP_FileStart.set_text("100");
    fill_buffer(0x99, bench.code);
    bench.shell.file_loaded = true; // merge, so that the two zero bytes show
    load_file(bench.shell, fixture("extended_linear_zero.hex"), bench.code);
    EXPECT_EQ(bench.code.data[0x0FF], 0x99);
    EXPECT_EQ(bench.code.data[0x100], 0);
    EXPECT_EQ(bench.code.data[0x101], 0);
    EXPECT_EQ(bench.code.data[0x102], 0x99);
    EXPECT_EQ(bench.code.data[0x120], 0x55);
    EXPECT_EQ(bench.code.checksum, 0x55);
}

TEST(HexLoader, AMissingEndRecordIsNoFault)
{
    Bench bench{"Juniper-60"};
    load_file(bench.shell, fixture("ends_without_end_record.hex"), bench.code);
    EXPECT_EQ(bench.code.data[0x301], 4);
    EXPECT_EQ(bench.code.high, 0x301);
    EXPECT_TRUE(bench.dialogs.shown.empty());
}

TEST(HexLoader, NothingIsReadBehindTheEndRecord)
{
    Bench bench{"Juniper-60"};
    load_file(bench.shell, fixture("data_behind_end_record.hex"), bench.code);
    EXPECT_EQ(bench.code.data[0x10], 0);
    EXPECT_EQ(bench.code.checksum, 3);
}

TEST(HexLoader, LinesWithoutAColonAreSkippedInSilence)
{
    Bench bench{"Juniper-60"};
    load_file(bench.shell, fixture("text_between_records.hex"), bench.code);
    EXPECT_EQ(bench.code.data[0], 0x11);
    EXPECT_EQ(bench.code.data[1], 0x22);
    EXPECT_TRUE(bench.dialogs.shown.empty());
}

TEST(HexLoader, AFileWithoutRecordsReachesTo511FromItsBase)
{
    Bench bench{"Juniper-60"};
    bench.form.txtAP_FileStart.set_text("40");
    load_file(bench.shell, fixture("no_records.hex"), bench.code);
    EXPECT_EQ(bench.code.high, 511);
    EXPECT_EQ(bench.code.low, 0x40);
    EXPECT_EQ(bench.code.checksum, 0);
    EXPECT_TRUE(bench.shell.file_loaded);
}

TEST(HexLoader, OverlappingRecordsBothCountInTheChecksum)
{
    Bench bench{"Juniper-60"};
    load_file(bench.shell, fixture("overlapping_records.hex"), bench.code);
    EXPECT_EQ(bench.code.data[1], 1);
    EXPECT_EQ(bench.code.data[2], 2);
    EXPECT_EQ(bench.code.checksum, 12);
}

TEST(HexLoader, CarriageReturnsAloneEndLinesToo)
{
    Bench bench{"Juniper-60"};
    load_file(bench.shell, fixture("carriage_returns_only.hex"), bench.code);
    EXPECT_EQ(bench.code.data[2], 0x0C);
}

TEST(HexLoader, LowerCaseDigitsAreRead)
{
    Bench bench{"Juniper-60"};
    load_file(bench.shell, fixture("lower_case_digits.hex"), bench.code);
    EXPECT_EQ(bench.code.data[2], 0xEF);
}

TEST(HexLoader, AStartOf8000IsCorrectedToThatAddress)
{
    Bench bench{"Juniper-60"};
    bench.form.txtAP_FileStart.set_text("8000");
    load_file(bench.shell, fixture("overlapping_records.hex"), bench.code);
    EXPECT_EQ(bench.code.low, 0x8000);
    EXPECT_EQ(bench.code.data[0x8005], 2);
}

TEST(HexLoader, BytesAboveTheDeviceAreSummedButNotStored)
{
    Bench bench{"Hazel-1"}; // the boot area ends at 1FFF
    load_file(bench.shell, bench.file("high.hex", hex_line(0x1FFF, {0x10, 0x20}) + end_line), bench.code);
    EXPECT_EQ(bench.code.data[0x1FFF], 0x10);
    EXPECT_EQ(bench.code.data[0x2000], 0);
    EXPECT_EQ(bench.code.checksum, 0x30);
}

TEST(HexLoader, ARecordAcrossTheTopOfTheMapIsNoDanger)
{
    Bench bench{"Alder-64"}; // its boot area ends at 11FFF
    bench.form.txtAP_FileStart.set_text("FFFF");
    load_file(bench.shell, bench.file("top.hex", hex_line(0xFFFF, std::vector<int>(255, 1)) + end_line), bench.code);
    EXPECT_EQ(bench.code.checksum, 255);
    EXPECT_EQ(bench.code.data[0x11FFF], 0);
}

TEST(HexLoader, BytesThatAreClearedAsOverRangeStayInTheChecksum)
{
    Bench bench{"Cedar-2R"};
    load_file(bench.shell, bench.file("gap.hex", hex_line(0x800, {0x40, 0x02}) + end_line), bench.code);
    EXPECT_EQ(bench.code.data[0x800], 0);
    EXPECT_EQ(bench.code.checksum, 0x42);
    ASSERT_EQ(bench.dialogs.shown.size(), 1U);
    EXPECT_EQ(bench.box_title(0), "Open HEX file");
    EXPECT_EQ(bench.box_text(0).substr(0, 12), "无效区间");
}

TEST(HexLoader, AGapFilledWithZerosShowsNoLine)
{
    Bench bench{"Cedar-2R"};
    load_file(bench.shell, bench.file("zeros.hex", hex_line(0x800, {0, 0, 0}) + end_line), bench.code);
    EXPECT_TRUE(bench.dialogs.shown.empty());
    EXPECT_EQ(bench.code.checksum, 0);
}

TEST(HexLoader, AModelWithoutDataFlashIsCutUnderTheBinaryTitle)
{
    Bench bench{"Juniper-8"};
    load_file(bench.shell, bench.file("long.hex", hex_line(0x2000, {0x77}) + end_line), bench.code);
    ASSERT_EQ(bench.dialogs.shown.size(), 1U);
    EXPECT_EQ(bench.box_title(0), "Open BIN file");
    EXPECT_EQ(bench.code.high, 0x1FFF);
    EXPECT_EQ(bench.code.data[0x2000], 0);
}

TEST(HexLoader, TheChecksumOfASeparateEepromHasNoBlanksBehindTheH)
{
    Bench bench{"Juniper-60Q"};
    load_file(bench.shell, fixture("hundred_bytes.hex"), bench.data);
    EXPECT_EQ(bench.form.txtDataFileCheckSum.text(), "00013BAH");
    EXPECT_EQ(bench.form.txtFileCheckSum.text(), "");
}

TEST(HexLoader, TheOlderFamiliesShowEveryChecksumInTheBoxOfTheCode)
{
    Bench bench{"Birch-16"};
    load_file(bench.shell, fixture("hundred_bytes.hex"), bench.data);
    EXPECT_EQ(bench.form.txtFileCheckSum.text(), "00013BAH       ");
    EXPECT_EQ(bench.form.txtDataFileCheckSum.text(), "");
}

TEST(HexLoader, AWrongChecksumIsShownWithItsLineAndTheDataIsUsed)
{
    Bench bench{"Juniper-60"};
    const std::string path = fixture("second_record_bad_checksum.hex");
    EXPECT_TRUE(load_file(bench.shell, path, bench.code));
    ASSERT_EQ(bench.dialogs.shown.size(), 1U);
    EXPECT_EQ(bench.box_title(0), path);
    EXPECT_EQ(bench.box_text(0), "校验和错:\n\n:03000300040506EC");
    EXPECT_EQ(bench.dialogs.shown[0].box.buttons, Buttons::ok);
    EXPECT_EQ(bench.code.data[4], 5);
    EXPECT_EQ(bench.code.checksum, 45);
}

TEST(HexLoader, TheThirdWrongChecksumAsksAndNoClearsTheBuffer)
{
    Bench bench{"Juniper-60"};
    bench.dialogs.replies = {Reply::ok, Reply::ok, Reply::ok, Reply::no};
    EXPECT_FALSE(load_file(bench.shell, fixture("three_bad_checksums.hex"), bench.code));
    ASSERT_EQ(bench.dialogs.shown.size(), 4U);
    EXPECT_EQ(bench.box_text(3), "不再检测校验和, 继续加载文件请输入 Y\n\n中止加载文件, 立即返回请输入 N");
    EXPECT_EQ(bench.dialogs.shown[3].box.buttons, Buttons::yes_no);
    EXPECT_EQ(bench.dialogs.shown[3].box.default_reply, Reply::no);
    EXPECT_EQ(bench.code.data[0], 0);
    EXPECT_EQ(bench.code.high, 1023);
    EXPECT_FALSE(bench.code.loaded);
    EXPECT_FALSE(bench.shell.file_loaded);
    EXPECT_FALSE(bench.dialogs.busy);
}

TEST(HexLoader, YesUsesTheRestOfTheFileWithoutAWord)
{
    Bench bench{"Juniper-60"};
    bench.dialogs.replies = {Reply::ok, Reply::ok, Reply::ok, Reply::yes};
    EXPECT_TRUE(load_file(bench.shell, fixture("five_bad_checksums.hex"), bench.code));
    EXPECT_EQ(bench.dialogs.shown.size(), 4U);
    EXPECT_EQ(bench.code.data[4], 3) << "the third faulty line too";
    EXPECT_EQ(bench.code.data[9], 5);
    EXPECT_TRUE(bench.shell.file_loaded);
}

TEST(HexLoader, RefusingAnEepromFileClosesTheCodeFileAsWell)
{
    Bench bench{"Juniper-60Q"};
    load_file(bench.shell, fixture("hundred_bytes.hex"), bench.code);
    bench.dialogs.replies = {Reply::ok, Reply::ok, Reply::ok, Reply::no};
    load_file(bench.shell, fixture("three_bad_checksums.hex"), bench.data);
    EXPECT_FALSE(bench.shell.file_loaded);
    EXPECT_EQ(bench.code.data[99], 100) << "its bytes are not touched";
}

TEST(HexLoader, EnglishTextsOfTheWrongChecksums)
{
    Bench bench{"Juniper-60"};
    bench.shell.language_is_english = true;
    load_file(bench.shell, fixture("three_bad_checksums.hex"), bench.code);
    ASSERT_EQ(bench.dialogs.shown.size(), 4U);
    EXPECT_EQ(bench.box_text(0), "The checksum is incorrect:\n\n:03000000010203F8");
    EXPECT_EQ(bench.box_text(3),
        "Not test Checksum any more. Continue loading the file, Please input Y.\n\n"
        "Stop loading the file. Return immediately, please input N");
}
