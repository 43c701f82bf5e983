#include "shell/buffer_view.h"

#include "shell/buffer_bench.h"
#include "shell/open_file.h"

#include <algorithm>

using namespace vrk;
using buffer_test::Bench;
using buffer_test::fixture;

namespace {

bool all_are(const std::vector<std::uint8_t>& bytes, std::uint8_t value)
{
    return std::all_of(bytes.begin(), bytes.end(), [&](std::uint8_t byte) { return byte == value; });
}

auto line_count(const std::string& text) { return std::count(text.begin(), text.end(), '\n'); }

} // namespace

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
    EXPECT_EQ(bench.form.frame("Frame7").caption(), "Program File: ");
    EXPECT_EQ(bench.form.text_box("txtFileCheckSum").text(), "");
    EXPECT_EQ(bench.form.scroll_bar("vscFile", 0).value(), 0);
    EXPECT_EQ(bench.form.scroll_bar("vscFile", 0).max(), 64);
    EXPECT_EQ(bench.form.text_box("txtBuffer2").text().substr(0, 15), "000000   00 00 ");
    EXPECT_EQ(bench.form.label("Label7", 1).caption(), "程序文件有效长度：");
}

TEST(ClearBuffer, ClearingTheEepromBufferLeavesFileLoaded)
{
    Bench bench{"Juniper-60Q"};
    load_file(bench.shell, fixture("hundred_bytes.hex"), bench.data);
    bench.form.frame("frmDataFlash").set_caption("Data File: x");
    clear_buffer(bench.shell, 0, bench.data);
    EXPECT_TRUE(bench.shell.file_loaded);
    EXPECT_FALSE(bench.data.loaded);
    EXPECT_EQ(bench.form.frame("frmDataFlash").caption(), "Data File: ");
    EXPECT_EQ(bench.form.text_box("txtDataFileCheckSum").text(), "");
    EXPECT_EQ(bench.form.scroll_bar("vscFile", 1).max(), 64);
}

TEST(ClearBuffer, DrawsNoMoreThan62LinesHoweverManyFit)
{
    Bench bench{"Juniper-60"};
    bench.shell.view_lines[0] = 100;
    clear_buffer(bench.shell, 0, bench.code);
    const std::string& dump = bench.form.text_box("txtBuffer2").text();
    EXPECT_EQ(line_count(dump), 62);
    EXPECT_EQ(dump.substr(dump.size() - 59, 6), "0003D0");
}

TEST(EffectiveLength, AHundredBytesShow512)
{
    Bench bench{"Juniper-60"};
    load_file(bench.shell, fixture("hundred_bytes.hex"), bench.code);
    EXPECT_EQ(bench.code.high, 511);
    EXPECT_EQ(bench.form.label("Label7", 1).caption(), "程序文件有效长度：512");
    EXPECT_EQ(bench.form.label("Label7", 2).caption(), "数据文件有效长度：");
}

TEST(EffectiveLength, TheEepromFileHasItsOwnLabel)
{
    Bench bench{"Juniper-60Q"};
    load_file(bench.shell, bench.file("d.bin", std::string(600, 'd')), bench.data);
    EXPECT_EQ(bench.form.label("Label7", 2).caption(), "数据文件有效长度：600");
}

TEST(BufferView, BothBoxesOfABufferShowTheSame)
{
    Bench bench{"Juniper-60Q"};
    bench.code.data[0x10] = 0xC0;
    bench.data.data[0x10] = 0xDA;
    render(bench.shell, bench.code, 0x10, 0x1F);
    render(bench.shell, bench.data, 0x10, 0x1F);
    EXPECT_EQ(bench.form.text_box("txtBuffer2").text().substr(0, 12), "000010   C0 ");
    EXPECT_EQ(bench.form.text_box("txtBuffer").text(), bench.form.text_box("txtBuffer2").text());
    EXPECT_EQ(bench.form.text_box("tetDataFlash2").text().substr(0, 12), "000010   DA ");
    EXPECT_EQ(bench.form.text_box("txtDataFlash1").text(), bench.form.text_box("tetDataFlash2").text());
}

TEST(BufferView, TheBarCountsLinesFromTheLowestAddressShown)
{
    Bench bench{"Juniper-60"};
    bench.form.text_box("txtAP_FileStart").set_text("1008");
    load_file(bench.shell, bench.file("k.bin", std::string(0x400, 'k')), bench.code);
    bench.form.scroll_bar("vscFile", 0).set_value(2);
    vscFile_Change(bench.shell, 0);
    EXPECT_EQ(bench.form.text_box("txtBuffer2").text().substr(0, 6), "001020");
}

TEST(BufferView, TheSecondBarScrollsTheEepromBuffer)
{
    Bench bench{"Juniper-60Q"};
    bench.form.scroll_bar("vscFile", 1).set_value(3);
    vscFile_Change(bench.shell, 1);
    EXPECT_EQ(bench.form.text_box("tetDataFlash2").text().substr(0, 6), "000030");
    EXPECT_EQ(bench.form.text_box("txtBuffer2").text().substr(0, 6), "000000");
}

TEST(BufferView, AfterALoadTheBarsRangeFollowsTheSpanAndStandsAtItsBeginning)
{
    Bench bench{"Juniper-60"};
    load_file(bench.shell, bench.file("k.bin", std::string(0x1000, 'k')), bench.code);
    EXPECT_EQ(bench.form.scroll_bar("vscFile", 0).min(), 0);
    EXPECT_EQ(bench.form.scroll_bar("vscFile", 0).max(), 0xFFF / 16 - 3);
    EXPECT_EQ(bench.form.scroll_bar("vscFile", 0).value(), 0);
    EXPECT_EQ(bench.form.text_box("txtBuffer2").text().substr(0, 6), "000000");
}

TEST(BufferView, AFileThatBeginsFarUpIsShownFromItsFirstByte)
{
    Bench bench{"Juniper-60"};
    load_file(bench.shell, bench.file("low.bin", std::string(0x1000, 'k')), bench.code);
    bench.form.text_box("txtAP_FileStart").set_text("1000");
    bench.form.check_box("cheClearAP_Buffer").set_value(false);
    load_file(bench.shell, bench.file("high.bin", std::string(0x1000, 'h')), bench.code);
    EXPECT_EQ(bench.form.text_box("txtBuffer2").text().substr(0, 9), "001000   ") << "of what was loaded last";
}

TEST(BufferView, ASpanOfLessThanThreeLinesDoesNotScroll)
{
    Bench bench{"Juniper-60"};
    bench.form.text_box("txtAP_FileStart").set_text("1E0");
    load_file(bench.shell, bench.file("k.bin", "k"), bench.code);
    EXPECT_EQ(bench.code.view_low, 0x1E0);
    EXPECT_EQ(bench.code.view_high, 0x1FF);
    EXPECT_EQ(bench.form.scroll_bar("vscFile", 0).max(), 0);
    EXPECT_EQ(bench.form.text_box("txtBuffer2").text().substr(0, 12), "0001E0   6B ");
}
