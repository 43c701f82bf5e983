#include "image/buffer_view.h"

#include "image/bench.h"
#include "image/file_loader.h"

#include <algorithm>
#include <numeric>

using namespace vrk;
using image_test::Bench;

namespace {

const std::vector<std::uint8_t> counting = [] {
    std::vector<std::uint8_t> bytes(0x1000);
    std::iota(bytes.begin(), bytes.end(), std::uint8_t{0});
    return bytes;
}();

auto line_count(const std::string& text) { return std::count(text.begin(), text.end(), '\n'); }

} // namespace

TEST(DumpText, ALineHasTheAddressThreeBlanksSixteenBytesAndCrLf)
{
    EXPECT_EQ(dump_text(counting, 0, 15, 20), "000000   00 01 02 03 04 05 06 07 08 09 0A 0B 0C 0D 0E 0F \r\n");
    EXPECT_EQ(dump_line_size, 59);
}

TEST(DumpText, BeginsAtTheLineThatHoldsTheFirstAddress)
{
    EXPECT_EQ(dump_text(counting, 0x2F7, 0xFFF, 1), "0002F0   F0 F1 F2 F3 F4 F5 F6 F7 F8 F9 FA FB FC FD FE FF \r\n");
}

TEST(DumpText, DrawsOnlyTheLinesThatFit)
{
    EXPECT_EQ(line_count(dump_text(counting, 0, 0xFFF, 20)), 20);
    EXPECT_EQ(dump_text(counting, 0, 0xFFF, 0), "");
}

TEST(DumpText, EndsAtTheLastAddress) { EXPECT_EQ(dump_text(counting, 0x10, 0x12, 20), "000010   10 11 12 \r\n"); }

TEST(DumpText, NothingStandsBehindTheImageOrBehindItsEnd)
{
    EXPECT_EQ(dump_text(counting, 0x20, 0x1F, 20), "");
    EXPECT_EQ(dump_text(counting, 0x7FFFFFFF, 0x7FFFFFFF, 20), "");
    EXPECT_EQ(line_count(dump_text(counting, 0xFF0, 0x7FFFFFFF, 20)), 1);
}

TEST(BufferView, BothBoxesOfABufferShowTheSame)
{
    Bench bench{"Juniper-60Q"};
    bench.code.data[0x10] = 0xC0;
    bench.data.data[0x10] = 0xDA;
    render(bench.shell, bench.code, 0x10, 0x1F);
    render(bench.shell, bench.data, 0x10, 0x1F);
    EXPECT_EQ(bench.form.txtBuffer2.text().substr(0, 12), "000010   C0 ");
    EXPECT_EQ(bench.form.txtBuffer.text(), bench.form.txtBuffer2.text());
    EXPECT_EQ(bench.form.tetDataFlash2.text().substr(0, 12), "000010   DA ");
    EXPECT_EQ(bench.form.txtDataFlash1.text(), bench.form.tetDataFlash2.text());
}

TEST(BufferView, TheBarCountsLinesFromTheLowestAddressShown)
{
    Bench bench{"Juniper-60"};
    bench.form.txtAP_FileStart.set_text("1008");
    load_file(bench.shell, bench.file("k.bin", std::string(0x400, 'k')), bench.code);
    bench.form.vscFile[0].set_value(2);
    vscFile_Change(bench.shell, 0);
    EXPECT_EQ(bench.form.txtBuffer2.text().substr(0, 6), "001020");
}

TEST(BufferView, TheSecondBarScrollsTheEepromBuffer)
{
    Bench bench{"Juniper-60Q"};
    bench.form.vscFile[1].set_value(3);
    vscFile_Change(bench.shell, 1);
    EXPECT_EQ(bench.form.tetDataFlash2.text().substr(0, 6), "000030");
    EXPECT_EQ(bench.form.txtBuffer2.text().substr(0, 6), "000000");
}

TEST(BufferView, AfterALoadTheBarsRangeFollowsTheSpanAndStandsAtItsEnd)
{
    Bench bench{"Juniper-60"};
    load_file(bench.shell, bench.file("k.bin", std::string(0x1000, 'k')), bench.code);
    EXPECT_EQ(bench.form.vscFile[0].min(), 0);
    EXPECT_EQ(bench.form.vscFile[0].max(), 0xFFF / 16 - 3);
    EXPECT_EQ(bench.form.vscFile[0].value(), bench.form.vscFile[0].max());
    EXPECT_EQ(bench.form.txtBuffer2.text().substr(0, 6), "000FC0");
    EXPECT_EQ(line_count(bench.form.txtBuffer2.text()), 4);
}

TEST(BufferView, ASpanOfLessThanThreeLinesDoesNotScroll)
{
    Bench bench{"Juniper-60"};
    bench.form.txtAP_FileStart.set_text("1E0");
    load_file(bench.shell, bench.file("k.bin", "k"), bench.code);
    EXPECT_EQ(bench.code.view_low, 0x1E0);
    EXPECT_EQ(bench.code.view_high, 0x1FF);
    EXPECT_EQ(bench.form.vscFile[0].max(), 0);
    EXPECT_EQ(bench.form.txtBuffer2.text().substr(0, 12), "0001E0   6B ");
}
