// What a load leaves in the controls, and what its boxes look like.
#include "shell/open_file.h"

#include "shell/buffer_bench.h"

using namespace vrk;
using buffer_test::Bench;
using buffer_test::fixture;

TEST(LoadAtTheForm, BytesLengthChecksumAndFlagsAreTakenOver)
{
    Bench bench{"Juniper-60"};
    EXPECT_TRUE(load_file(bench.shell, fixture("hundred_bytes.hex"), bench.code));
    EXPECT_EQ(bench.code.data[99], 100);
    EXPECT_EQ(bench.code.high, 511);
    EXPECT_EQ(bench.form.text_box("txtFileCheckSum").text(), "00013BAH       ");
    EXPECT_TRUE(bench.code.loaded);
    EXPECT_TRUE(bench.shell.file_loaded);
    EXPECT_TRUE(bench.dialogs.shown.empty());
    EXPECT_FALSE(bench.dialogs.busy);
}

TEST(LoadAtTheForm, AnEmptyBinaryFileCountsAsOpen)
{
    Bench bench{"Juniper-60"};
    EXPECT_TRUE(load_file(bench.shell, fixture("empty.bin"), bench.code));
    EXPECT_EQ(bench.code.high, 511);
    EXPECT_TRUE(bench.shell.file_loaded);
}

TEST(LoadAtTheForm, AFileWithoutRecordsIsToldAndTheBufferIsAsItWas)
{
    Bench bench{"Juniper-60"};
    load_file(bench.shell, fixture("hundred_bytes.bin"), bench.code);
    const auto before = bench.code.data;
    EXPECT_FALSE(load_file(bench.shell, fixture("no_records.hex"), bench.code));
    EXPECT_EQ(bench.box_text(0), "文件中没有数据。");
    EXPECT_EQ(bench.code.data, before);
    EXPECT_TRUE(bench.code.loaded);
    EXPECT_TRUE(bench.shell.file_loaded);
}

TEST(LoadAtTheForm, AStartOf8000IsThatAddressForBothKindsOfFile)
{
    Bench bench{"Juniper-60"};
    bench.form.text_box("txtAP_FileStart").set_text("8000");
    load_file(bench.shell, fixture("overlapping_records.hex"), bench.code);
    EXPECT_EQ(bench.code.low, 0x8000);
    EXPECT_EQ(bench.code.data[0x8005], 2);
    load_file(bench.shell, fixture("hundred_bytes.bin"), bench.code);
    EXPECT_EQ(bench.code.low, 0x8000);
    EXPECT_EQ(bench.code.data[0x8000], 1);
}

TEST(LoadAtTheForm, TheChecksumOfASeparateEepromStandsInItsOwnBox)
{
    Bench bench{"Juniper-60Q"};
    load_file(bench.shell, fixture("hundred_bytes.hex"), bench.data);
    EXPECT_EQ(bench.form.text_box("txtDataFileCheckSum").text(), "00013BAH");
    EXPECT_EQ(bench.form.text_box("txtFileCheckSum").text(), "");
    load_file(bench.shell, fixture("hundred_bytes.bin"), bench.data);
    EXPECT_EQ(bench.form.text_box("txtDataFileCheckSum").text(), "00013BAH       ");
}

TEST(LoadAtTheForm, TheOlderFamiliesShowEveryChecksumInTheBoxOfTheCode)
{
    Bench bench{"Birch-16"};
    load_file(bench.shell, fixture("hundred_bytes.hex"), bench.data);
    EXPECT_EQ(bench.form.text_box("txtFileCheckSum").text(), "00013BAH       ");
    EXPECT_EQ(bench.form.text_box("txtDataFileCheckSum").text(), "");
}

TEST(LoadAtTheForm, AWrongChecksumIsABoxWithThePathOverIt)
{
    Bench bench{"Juniper-60"};
    const std::string path = fixture("second_record_bad_checksum.hex");
    EXPECT_TRUE(load_file(bench.shell, path, bench.code));
    ASSERT_EQ(bench.dialogs.shown.size(), 1U);
    EXPECT_EQ(bench.box_title(0), path);
    EXPECT_EQ(bench.box_text(0), "校验和错:\n\n:03000300040506EC");
    EXPECT_EQ(bench.dialogs.shown[0].box.buttons, Buttons::ok);
}

TEST(LoadAtTheForm, TheThirdWrongChecksumAsksAndNoClearsTheBuffer)
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

TEST(LoadAtTheForm, ARefusalClearsWhatEarlierFilesLeftToo)
{
    Bench bench{"Juniper-60"};
    load_file(bench.shell, fixture("hundred_bytes.hex"), bench.code);
    bench.dialogs.replies = {Reply::ok, Reply::ok, Reply::ok, Reply::no};
    EXPECT_FALSE(load_file(bench.shell, fixture("three_bad_checksums.hex"), bench.code));
    EXPECT_EQ(bench.code.data[99], 0);
    EXPECT_EQ(bench.form.text_box("txtFileCheckSum").text(), "");
    EXPECT_EQ(bench.form.label("Label7", 1).caption(), "程序文件有效长度：");
}

TEST(LoadAtTheForm, YesUsesTheRestOfTheFileWithoutAWord)
{
    Bench bench{"Juniper-60"};
    bench.dialogs.replies = {Reply::ok, Reply::ok, Reply::ok, Reply::yes};
    EXPECT_TRUE(load_file(bench.shell, fixture("five_bad_checksums.hex"), bench.code));
    EXPECT_EQ(bench.dialogs.shown.size(), 4U);
    EXPECT_TRUE(bench.shell.file_loaded);
}

TEST(LoadAtTheForm, RefusingAnEepromFileClosesTheCodeFileAsWell)
{
    Bench bench{"Juniper-60Q"};
    load_file(bench.shell, fixture("hundred_bytes.hex"), bench.code);
    bench.dialogs.replies = {Reply::ok, Reply::ok, Reply::ok, Reply::no};
    load_file(bench.shell, fixture("three_bad_checksums.hex"), bench.data);
    EXPECT_FALSE(bench.shell.file_loaded);
    EXPECT_EQ(bench.code.data[99], 100) << "its bytes are not touched";
}

TEST(LoadAtTheForm, BoxesSpeakTheLanguageInForce)
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

TEST(LoadAtTheForm, WhatTheRulesFindIsOneBoxUnderTheTitleOfTheLoader)
{
    Bench bench{"Cedar-2R"};
    load_file(bench.shell, bench.file("gap.hex", buffer_test::hex_line(0x800, {0x40, 0x02}) + buffer_test::end_line),
        bench.code);
    EXPECT_EQ(bench.code.data[0x800], 0);
    ASSERT_EQ(bench.dialogs.shown.size(), 1U);
    EXPECT_EQ(bench.box_title(0), "Open HEX file");
    EXPECT_EQ(bench.box_text(0).substr(0, 12), "无效区间");
    bench.select("Juniper-60Q");
    load_file(bench.shell, bench.file("long.bin", std::string(0xF001, 'x')), bench.code);
    ASSERT_EQ(bench.dialogs.shown.size(), 2U);
    EXPECT_EQ(bench.box_title(1), "Open BIN file");
    EXPECT_EQ(bench.code.high, 0xEFFF);
}
