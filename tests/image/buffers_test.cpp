#include "image/buffers.h"

#include "image/bench.h"
#include "image/file_loader.h"

#include <algorithm>

using namespace vrk;
using image_test::Bench;
using image_test::fixture;

namespace {

bool all_are(const std::vector<std::uint8_t>& bytes, std::uint8_t value)
{
    return std::all_of(bytes.begin(), bytes.end(), [&](std::uint8_t byte) { return byte == value; });
}

} // namespace

TEST(Buffers, TheNameTellsTheCodeBufferInAnyCaseOfLetters)
{
    EXPECT_EQ(kind_of(FileBuffer("AP_FILE", 0x100)), BufferKind::code);
    EXPECT_EQ(kind_of(FileBuffer("ap_file", 0x100)), BufferKind::code);
    EXPECT_EQ(kind_of(FileBuffer("Data_File", 0x100)), BufferKind::data);
    EXPECT_EQ(kind_of(FileBuffer("", 0x100)), BufferKind::data);
}

TEST(Buffers, CodeIsAddressableTo12000AndDataTo10000)
{
    Bench bench{"Juniper-60"};
    EXPECT_EQ(bench.code.last(), 0x12000);
    EXPECT_EQ(bench.data.last(), 0x10000);
}

TEST(ClearBuffer, BringsBackAnEmptyKilobyte)
{
    Bench bench{"Juniper-60"};
    load_file(bench.shell, fixture("hundred_bytes.hex"), bench.code);
    clear_buffer(bench.shell, 0xA5, bench.code);
    EXPECT_TRUE(all_are(bench.code.data, 0xA5));
    EXPECT_EQ(bench.code.low, 0);
    EXPECT_EQ(bench.code.high, 1023);
    EXPECT_EQ(bench.code.view_low, 0);
    EXPECT_EQ(bench.code.view_high, 1023);
    EXPECT_EQ(bench.code.checksum, 0);
    EXPECT_FALSE(bench.code.loaded);
    EXPECT_FALSE(bench.shell.file_loaded);
}

TEST(ClearBuffer, ResetsTheControlsOfTheCodeBuffer)
{
    Bench bench{"Juniper-60"};
    bench.dialogs.choices.push_back(fixture("hundred_bytes.hex"));
    comLoadFile_Click(bench.shell);
    clear_buffer(bench.shell, 0, bench.code);
    EXPECT_EQ(bench.form.Frame7.caption(), "Program File: ");
    EXPECT_EQ(bench.form.txtFileCheckSum.text(), "");
    EXPECT_EQ(bench.form.vscFile[0].value(), 0);
    EXPECT_EQ(bench.form.vscFile[0].max(), 64);
    EXPECT_EQ(bench.form.txtBuffer2.text().substr(0, 15), "000000   00 00 ");
    EXPECT_EQ(bench.form.Label7[1].caption(), "程序文件有效长度：");
}

TEST(ClearBuffer, ClearingTheEepromBufferLeavesFileLoaded)
{
    Bench bench{"Juniper-60Q"};
    load_file(bench.shell, fixture("hundred_bytes.hex"), bench.data);
    bench.form.frmDataFlash.set_caption("Data File: x");
    clear_buffer(bench.shell, 0, bench.data);
    EXPECT_TRUE(bench.shell.file_loaded);
    EXPECT_FALSE(bench.data.loaded);
    EXPECT_EQ(bench.form.frmDataFlash.caption(), "Data File: ");
    EXPECT_EQ(bench.form.txtDataFileCheckSum.text(), "");
    EXPECT_EQ(bench.form.vscFile[1].max(), 64);
}

TEST(ClearBuffer, DrawsNoMoreThan62LinesHoweverManyFit)
{
    Bench bench{"Juniper-60"};
    bench.code.view_lines = 100;
    clear_buffer(bench.shell, 0, bench.code);
    const std::string& dump = bench.form.txtBuffer2.text();
    EXPECT_EQ(std::count(dump.begin(), dump.end(), '\n'), 62);
    EXPECT_EQ(dump.substr(dump.size() - 59, 6), "0003D0");
}

TEST(LoadParameters, AnEmptyTextMeansZero)
{
    Bench bench{"Juniper-60"};
    bench.form.txtAP_FileStart.set_text("  ");
    read_load_parameters(bench.shell, bench.code);
    EXPECT_EQ(bench.code.start, 0);
}

TEST(LoadParameters, FourDigitsFrom8000UpComeNegativeAndAreCorrectedForTheLoad)
{
    Bench bench{"Juniper-60"};
    bench.form.txtAP_FileStart.set_text(" 8000 ");
    read_load_parameters(bench.shell, bench.code);
    EXPECT_EQ(bench.code.start, -0x8000);
    EXPECT_EQ(load_base(bench.code.start), 0x8000);
    EXPECT_EQ(load_base(-1), 0xFFFF);
}

TEST(LoadParameters, FiveDigitsAreNotCorrected)
{
    Bench bench{"Juniper-60"};
    bench.form.txtAP_FileStart.set_text("10000");
    read_load_parameters(bench.shell, bench.code);
    EXPECT_EQ(bench.code.start, 0x10000);
    EXPECT_EQ(load_base(bench.code.start), 0x10000);
}

TEST(LoadParameters, EachBufferHasItsOwnControls)
{
    Bench bench{"Juniper-60Q"};
    bench.form.txtDataFileStart.set_text("20");
    bench.form.cheClearDataBuffer.set_value(true);
    read_load_parameters(bench.shell, bench.data);
    read_load_parameters(bench.shell, bench.code);
    EXPECT_EQ(bench.data.start, 0x20);
    EXPECT_TRUE(bench.data.clear_first);
    EXPECT_EQ(bench.code.start, 0);
    EXPECT_FALSE(bench.code.clear_first);
}

TEST(StartAddress, PastTheDeviceTheCodeLoadIsRefusedAndNothingChanges)
{
    Bench bench{"Juniper-60"}; // its data flash would end at F3FF
    load_file(bench.shell, fixture("hundred_bytes.hex"), bench.code);
    bench.form.txtAP_FileStart.set_text("10000");
    EXPECT_FALSE(load_file(bench.shell, fixture("overlapping_records.hex"), bench.code));
    ASSERT_EQ(bench.dialogs.shown.size(), 1U);
    EXPECT_EQ(bench.box_text(0), "缓冲区起始地址超出有效空间。");
    EXPECT_EQ(bench.code.data[0], 1);
    EXPECT_EQ(bench.code.data[99], 100);
    EXPECT_EQ(bench.code.checksum, 5050);
    EXPECT_TRUE(bench.shell.file_loaded);
    EXPECT_TRUE(bench.code.loaded);
}

TEST(StartAddress, RefusalOfTheEepromLoadSpeaksBothLanguages)
{
    Bench bench{"Juniper-60Q"}; // F000 to F3FF: offsets up to 3FF
    bench.form.txtDataFileStart.set_text("400");
    EXPECT_FALSE(load_file(bench.shell, fixture("hundred_bytes.hex"), bench.data));
    EXPECT_EQ(
        bench.box_text(0), "Start Buffer Address exceeded the valid scope. \n        缓冲区起始地址超出有效空间。");
    EXPECT_FALSE(bench.data.loaded);
}

TEST(StartAddress, TheLastByteOfTheEepromIsStillAStart)
{
    Bench bench{"Juniper-60Q"};
    bench.form.txtDataFileStart.set_text("3FF");
    read_load_parameters(bench.shell, bench.data);
    EXPECT_TRUE(start_address_fits(bench.shell, bench.data));
    EXPECT_TRUE(bench.dialogs.shown.empty());
}

TEST(StartAddress, EnglishRefusalsAreTheSameForBothBuffers)
{
    Bench bench{"Juniper-60Q"};
    bench.shell.language_is_english = true;
    bench.form.txtAP_FileStart.set_text("10000");
    bench.form.txtDataFileStart.set_text("400");
    load_file(bench.shell, fixture("hundred_bytes.hex"), bench.code);
    load_file(bench.shell, fixture("hundred_bytes.hex"), bench.data);
    EXPECT_EQ(bench.box_text(0), "Start Buffer Address exceeded the valid scope. \n");
    EXPECT_EQ(bench.box_text(1), "Start Buffer Address exceeded the valid scope. \n");
}

TEST(StartAddress, From8000ToFFFFItPassesTheRefusalOnASmallModelToo)
{
    Bench bench{"Hazel-1"};
    bench.form.txtAP_FileStart.set_text("8000");
    read_load_parameters(bench.shell, bench.code);
    EXPECT_TRUE(start_address_fits(bench.shell, bench.code));
}

TEST(Merge, WithAFileOpenAndTheClearBoxOffALoadAdds)
{
    Bench bench{"Juniper-60"};
    load_file(bench.shell, bench.file("a.hex", image_test::hex_line(0x100, {1, 2}) + image_test::end_line), bench.code);
    load_file(bench.shell, bench.file("b.hex", image_test::hex_line(0x800, {9}) + image_test::end_line), bench.code);
    EXPECT_EQ(bench.code.data[0x100], 1);
    EXPECT_EQ(bench.code.data[0x800], 9);
    EXPECT_EQ(bench.code.view_low, 0);
    EXPECT_EQ(bench.code.view_high, 0x800);
}

TEST(Merge, ShowsTheChecksumOfTheLastFileNotTheSumOfBoth)
{
    Bench bench{"Juniper-60"};
    load_file(bench.shell, fixture("hundred_bytes.hex"), bench.code);
    load_file(bench.shell, fixture("overlapping_records.hex"), bench.code);
    EXPECT_EQ(bench.code.checksum, 12);
    EXPECT_EQ(bench.form.txtFileCheckSum.text(), "000000CH       ");
    EXPECT_EQ(bench.code.data[50], 51) << "the first file is still there";
}

TEST(Merge, AShorterSecondFileKeepsTheSpanAndShrinksTheLength)
{
    Bench bench{"Juniper-60"};
    load_file(bench.shell, bench.file("long.bin", std::string(0x1000, 'x')), bench.code);
    load_file(bench.shell, bench.file("short.bin", "y"), bench.code);
    EXPECT_EQ(bench.code.high, 511);
    EXPECT_EQ(bench.code.view_high, 0xFFF);
}

TEST(Merge, WithTheClearBoxOnALoadReplaces)
{
    Bench bench{"Juniper-60"};
    load_file(bench.shell, bench.file("long.bin", std::string(0x1000, 'x')), bench.code);
    bench.form.cheClearAP_Buffer.set_value(true);
    load_file(bench.shell, bench.file("short.bin", "y"), bench.code);
    EXPECT_EQ(bench.code.data[0], 'y');
    EXPECT_EQ(bench.code.data[1], 0);
    EXPECT_EQ(bench.code.view_low, 0);
    EXPECT_EQ(bench.code.view_high, 511);
}

TEST(Merge, WithoutAFileOpenALoadReplacesEvenWithTheClearBoxOff)
{
    Bench bench{"Juniper-60"};
    fill_buffer(0x77, bench.code);
    load_file(bench.shell, fixture("overlapping_records.hex"), bench.code);
    EXPECT_EQ(bench.code.data[6], 0);
}

TEST(Merge, AReplacedImageThatBeginsHighIsViewedFromThere)
{
    Bench bench{"Juniper-60"};
    bench.form.txtAP_FileStart.set_text("1000");
    load_file(bench.shell, bench.file("k.bin", std::string(0x400, 'k')), bench.code);
    EXPECT_EQ(bench.code.view_low, 0x1000);
    EXPECT_EQ(bench.code.view_high, 0x13FF);
}

TEST(EffectiveLength, AHundredBytesShow512)
{
    Bench bench{"Juniper-60"};
    load_file(bench.shell, fixture("hundred_bytes.hex"), bench.code);
    EXPECT_EQ(bench.code.high, 511);
    EXPECT_EQ(bench.form.Label7[1].caption(), "程序文件有效长度：512");
    EXPECT_EQ(bench.form.Label7[2].caption(), "数据文件有效长度：");
}

TEST(EffectiveLength, TheEepromFileHasItsOwnLabel)
{
    Bench bench{"Juniper-60Q"};
    load_file(bench.shell, bench.file("d.bin", std::string(600, 'd')), bench.data);
    EXPECT_EQ(bench.form.Label7[2].caption(), "数据文件有效长度：600");
}

TEST(ChecksumText, HasSevenDigitsAndLosesTheTopOfEight)
{
    EXPECT_EQ(checksum_text(0x13BA), "00013BAH       ");
    EXPECT_EQ(checksum_text(0x12345678), "2345678H       ");
    EXPECT_EQ(checksum_text(-1), "FFFFFFFH       ");
}
