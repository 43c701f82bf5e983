// To a place in the dump, by its address or by what stands there.
#include "image/dump.h"
#include "shell/buffer_bench.h"
#include "shell/events.h"
#include "shell/open_file.h"

using namespace vrk;
using buffer_test::Bench;

namespace {

struct SearchBench : Bench {
    SearchBench()
        : Bench("Juniper-60Q")
    {
        shell.language_is_english = true;
        std::string bytes(0x1000, '\0');
        bytes.replace(0x123, 4, "V1.2");
        bytes.replace(0xF00, 4, "V1.2");
        bytes.replace(0x20F, 2, "\x12\xAB");
        load_file(shell, file("code.bin", bytes), code);
    }
    void type(const char* field, std::string_view text)
    {
        type_text(shell, form.text_box(field, 0), text);
        enter(field);
    }
    void enter(const char* field) { press_key(shell, form.text_box(field, 0), "Enter"); }
    const std::string& told() const { return form.label("labDumpFound", 0).caption(); }
    // Of the byte that what is highlighted begins with; -1: nothing is highlighted.
    std::int32_t at() const
    {
        const TextBox& box = form.text_box("txtBuffer2");
        const auto byte = dump_byte_at(box.text(), static_cast<std::size_t>(box.sel_start()));
        return byte && box.sel_length() > 0 ? byte->address : -1;
    }
    int highlighted() const { return form.text_box("txtBuffer2").sel_length(); }
};

} // namespace

TEST(GoToAddress, BringsTheByteIntoViewReadyToBeTypedOver)
{
    SearchBench bench;
    bench.type("texDumpAddress", "a2f");
    EXPECT_EQ(bench.at(), 0xA2F);
    EXPECT_EQ(bench.highlighted(), 1);
    EXPECT_EQ(bench.told(), "");
    bench.type("texDumpAddress", "FFF");
    EXPECT_EQ(bench.at(), 0xFFF);
    bench.type("texDumpAddress", "000000");
    EXPECT_EQ(bench.at(), 0);
}

TEST(GoToAddress, ThatIsNoneOrNotShownIsToldAndTheViewStays)
{
    SearchBench bench;
    const std::string before = bench.form.text_box("txtBuffer2").text();
    bench.type("texDumpAddress", "12G");
    EXPECT_EQ(bench.told(), "No hexadecimal address");
    bench.type("texDumpAddress", "");
    EXPECT_EQ(bench.told(), "No hexadecimal address");
    bench.type("texDumpAddress", "1000");
    EXPECT_EQ(bench.told(), "Shown are 00000 - 00FFF");
    EXPECT_EQ(bench.form.text_box("txtBuffer2").text(), before);
    bench.type("texDumpAddress", "10");
    EXPECT_EQ(bench.told(), "");
}

TEST(FindInTheDump, GoesFromOneTextToTheNextAndOnFromTheTop)
{
    SearchBench bench;
    bench.type("texDumpFind", "\"V1.2\"");
    EXPECT_EQ(bench.at(), 0x123);
    EXPECT_EQ(bench.highlighted(), 4 * dump_byte_size - 1);
    EXPECT_EQ(bench.told(), "");
    bench.enter("texDumpFind");
    EXPECT_EQ(bench.at(), 0xF00);
    EXPECT_EQ(bench.told(), "");
    bench.enter("texDumpFind");
    EXPECT_EQ(bench.at(), 0x123);
    EXPECT_EQ(bench.told(), "Gone on from the top");
}

TEST(FindInTheDump, FindsBytesOverTheEndOfALine)
{
    SearchBench bench;
    bench.type("texDumpFind", "12 ab");
    EXPECT_EQ(bench.at(), 0x20F);
    bench.type("texDumpFind", "12AB00");
    EXPECT_EQ(bench.at(), 0x20F) << "another word begins at the caret";
    EXPECT_EQ(bench.told(), "");
}

TEST(FindInTheDump, SaysThatItIsNowhereAndWhatCanBeTyped)
{
    SearchBench bench;
    const std::string before = bench.form.text_box("txtBuffer2").text();
    bench.type("texDumpFind", "FE FE");
    EXPECT_EQ(bench.told(), "Not found");
    for (const char* nonsense : {"", "1", "12 A", "xy", "\"\""}) {
        bench.type("texDumpFind", nonsense);
        EXPECT_EQ(bench.told(), "Type 12 AB or \"text\"") << nonsense;
    }
    EXPECT_EQ(bench.form.text_box("txtBuffer2").text(), before);
}

TEST(FindInTheDump, GoesOnWhileAChipIsWritten)
{
    SearchBench bench;
    bench.shell.running = true;
    bench.type("texDumpFind", "12AB");
    EXPECT_EQ(bench.at(), 0x20F);
    bench.type("texDumpAddress", "0");
    EXPECT_EQ(bench.at(), 0);
}
