#include "shell/serial_numbers.h"

#include "shell/buffer_bench.h"
#include "shell/open_file.h"

using namespace vrk;
using buffer_test::Bench;

namespace {

using Bytes = std::vector<std::uint8_t>;

// A code file of 4 KB, all 'k', and the fields of the code number.
struct NumberBench : Bench {
    explicit NumberBench(std::string_view model_name = "Juniper-60")
        : Bench(model_name)
    {
        load_increase_settings(shell);
        load_file(shell, file("k.bin", std::string(0x1000, 'k')), code);
    }
    void fill(const char* address, const char* bytes, const char* next, const char* increment, int system)
    {
        fill_fields("texAuto_Increase", address, bytes, next, increment);
        form.option("optAuto_Increase", system).set_value(true);
    }
    void fill_data(const char* address, const char* bytes, const char* next, const char* increment, int system)
    {
        fill_fields("texData_Auto_Increase", address, bytes, next, increment);
        form.option("optData_Auto_Increase", system).set_value(true);
    }
    void enable(bool on = true)
    {
        form.check_box("cheAuto_Increase").set_value(on);
        cheAuto_Increase_Click(shell);
    }
    void enable_data()
    {
        form.check_box("cheData_Auto_Increase").set_value(true);
        cheData_Auto_Increase_Click(shell);
    }
    Bytes code_bytes(std::ptrdiff_t first, std::ptrdiff_t last) const
    {
        return {shell.code_buffer.data.begin() + first, shell.code_buffer.data.begin() + last + 1};
    }
    std::string stored(const char* section, const char* key) { return settings.get(section, key, "nothing stored"); }

private:
    void fill_fields(
        const char* fields, const char* address, const char* bytes, const char* next, const char* increment)
    {
        form.text_box(fields, 0).set_text(address);
        form.text_box(fields, 1).set_text(bytes);
        form.text_box(fields, 2).set_text(next);
        form.text_box(fields, 3).set_text(increment);
    }
};

} // namespace

TEST(NumberSettings, BeginWithEightBcdBytesAtTheTop)
{
    Bench bench{"Juniper-60"};
    load_increase_settings(bench.shell);
    read_records(bench.shell);
    EXPECT_EQ(bench.form.text_box("texAuto_Increase", 0).text(), "FFFF");
    EXPECT_EQ(bench.form.text_box("texData_Auto_Increase", 2).text(), "0000");
    EXPECT_EQ(bench.shell.code_increase.address, 0xFFFF);
    EXPECT_EQ(bench.shell.code_increase.bytes, 8);
    EXPECT_EQ(bench.shell.code_increase.next_value, "0000");
    EXPECT_EQ(bench.shell.code_increase.increment, 1);
    EXPECT_EQ(bench.shell.code_increase.system, AutoIncrease::bcd);
    EXPECT_EQ(bench.shell.code_increase.kind, BufferKind::code);
    EXPECT_EQ(bench.shell.data_increase.kind, BufferKind::data);
}

TEST(NumberSettings, EachRecordHasASectionOfItsOwn)
{
    NumberBench bench;
    bench.fill("0FF0", "4", "12", "3", AutoIncrease::hex);
    bench.fill_data("10", "2", "77", "1", AutoIncrease::ascii);
    bench.enable();
    bench.enable_data();
    EXPECT_EQ(bench.stored("Auto_Increase", "address"), "0FF0");
    EXPECT_EQ(bench.stored("Auto_Increase", "Length"), "4");
    EXPECT_EQ(bench.stored("Auto_Increase", "next_value"), "12");
    EXPECT_EQ(bench.stored("Auto_Increase", "Increase"), "3");
    EXPECT_EQ(bench.stored("Auto_Increase", "numeral_system"), "0");
    EXPECT_EQ(bench.stored("Data_Auto_Increase", "address"), "10");
    EXPECT_EQ(bench.stored("Data_Auto_Increase", "numeral_system"), "2");
}

TEST(NumberSettings, AnUnknownSystemReadsAsTheFirst)
{
    Bench bench{"Juniper-60"};
    bench.settings.set("Auto_Increase", "numeral_system", "3");
    bench.settings.set("Data_Auto_Increase", "numeral_system", "-1");
    load_increase_settings(bench.shell);
    EXPECT_TRUE(bench.form.option("optAuto_Increase", 0).value());
    EXPECT_TRUE(bench.form.option("optData_Auto_Increase", 0).value());
}

TEST(NumberFields, TheAddressHasFiveDigitsAndComesOutInUpperCase)
{
    NumberBench bench;
    bench.fill("  0abcd", "4", "1", "1", AutoIncrease::hex);
    read_records(bench.shell);
    EXPECT_EQ(bench.shell.code_increase.address, 0x0ABCD);
    EXPECT_EQ(bench.form.text_box("texAuto_Increase", 0).text(), "  0ABCD");
}

TEST(NumberFields, CountsThatNoShortHoldsAreHeldAtItsEnds)
{
    NumberBench bench;
    bench.fill("0", "99999", "1", "-99999", AutoIncrease::hex);
    read_records(bench.shell);
    EXPECT_EQ(bench.shell.code_increase.bytes, 32767);
    EXPECT_EQ(bench.shell.code_increase.increment, -32768);
}

TEST(EnableNumber, StampsShowsAndStoresIt)
{
    NumberBench bench;
    bench.fill("0803", "4", "305419896", "1", AutoIncrease::hex);
    bench.enable();
    EXPECT_TRUE(bench.shell.code_increase.valid);
    EXPECT_EQ(bench.code_bytes(0x7FF, 0x804), (Bytes{'k', 0x12, 0x34, 0x56, 0x78, 'k'}));
    EXPECT_EQ(bench.form.scroll_bar("vscFile", 0).value(), 0x80 - 3);
    EXPECT_NE(bench.form.text_box("txtBuffer2").text().find("000800   12 34 56 78 6B"), std::string::npos);
    EXPECT_EQ(bench.stored("Auto_Increase", "next_value"), "305419896");
    EXPECT_TRUE(bench.dialogs.shown.empty());
}

TEST(EnableNumber, LeavesLengthAndChecksumAsTheFileMadeThem)
{
    NumberBench bench;
    const auto high = bench.code.high;
    const auto checksum = bench.code.checksum;
    bench.fill("0803", "4", "9", "1", AutoIncrease::hex);
    bench.enable();
    EXPECT_EQ(bench.code.high, high);
    EXPECT_EQ(bench.code.checksum, checksum);
}

TEST(EnableNumber, HoldsItsFieldsUntilItIsSwitchedOff)
{
    NumberBench bench;
    bench.fill("0803", "4", "9", "1", AutoIncrease::hex);
    bench.enable();
    EXPECT_FALSE(bench.form.text_box("texAuto_Increase", 0).enabled());
    EXPECT_FALSE(bench.form.text_box("texAuto_Increase", 3).enabled());
    EXPECT_FALSE(bench.form.option("optAuto_Increase", 2).enabled());
    EXPECT_TRUE(bench.form.text_box("texData_Auto_Increase", 0).enabled());
    bench.enable(false);
    EXPECT_TRUE(bench.form.text_box("texAuto_Increase", 0).enabled());
    EXPECT_TRUE(bench.form.option("optAuto_Increase", 2).enabled());
    EXPECT_FALSE(bench.shell.code_increase.valid);
}

TEST(EnableNumber, OutsideTheFileTheBarReachesItAndTheLengthDoesNotGrow)
{
    NumberBench bench;
    bench.fill("E003", "4", "9", "1", AutoIncrease::hex);
    bench.enable();
    EXPECT_EQ(bench.code.view_high, 0xFFF) << "what is downloaded and saved does not grow by a number";
    EXPECT_EQ(bench.code.high, 0xFFF);
    EXPECT_EQ(bench.form.scroll_bar("vscFile", 0).max(), 0xE00 - 3);
    EXPECT_NE(bench.form.text_box("txtBuffer2").text().find("00E000   00 00 00 09"), std::string::npos);
}

TEST(EnableNumber, BelowAMergedFileItComesIntoViewToo)
{
    NumberBench bench;
    bench.form.check_box("cheClearAP_Buffer").set_value(true);
    bench.form.text_box("txtAP_FileStart").set_text("2000");
    load_file(bench.shell, bench.file("high.bin", std::string(0x400, 'h')), bench.code);
    bench.fill("0103", "4", "9", "1", AutoIncrease::hex);
    bench.enable();
    EXPECT_EQ(bench.code.view_low, 0x2000);
    EXPECT_NE(bench.form.text_box("txtBuffer2").text().find("000100   00 00 00 09"), std::string::npos);
}

TEST(EnableNumber, TheDefaultAddressIsRefusedOnASmallChipAtOnce)
{
    NumberBench bench("Rowan-4");
    const Bytes before = bench.code.data;
    bench.enable();
    EXPECT_FALSE(bench.shell.code_increase.valid);
    EXPECT_FALSE(bench.form.check_box("cheAuto_Increase").value()) << "the box comes off";
    EXPECT_TRUE(bench.form.text_box("texAuto_Increase", 0).enabled()) << "and the fields can be put right";
    ASSERT_EQ(bench.dialogs.shown.size(), 1U);
    EXPECT_EQ(bench.box_title(0), "设置程序文件自动增量");
    EXPECT_EQ(bench.box_text(0), "文件缓冲区自动增量存放地址太大");
    EXPECT_EQ(bench.code.data, before);
}

TEST(EnableNumber, AValueThatDoesNotFitLeavesTheBufferUntouched)
{
    NumberBench bench;
    const Bytes before = bench.code.data;
    bench.fill("0803", "2", "65536", "1", AutoIncrease::hex);
    bench.enable();
    ASSERT_EQ(bench.dialogs.shown.size(), 1U);
    EXPECT_EQ(bench.box_title(0), "设置程序文件自动增量");
    EXPECT_EQ(bench.box_text(0), "自动增量字节数太小");
    EXPECT_EQ(bench.code.data, before);
    EXPECT_FALSE(bench.form.check_box("cheAuto_Increase").value());
    EXPECT_FALSE(bench.shell.code_increase.valid);
}

namespace {

struct Slip {
    const char* name;
    const char* address;
    const char* bytes;
    const char* next;
    const char* increment;
    const char* box;
};
void PrintTo(const Slip& slip, std::ostream* out) { *out << slip.name; }

class SlipOfTheHand : public ::testing::TestWithParam<Slip> { };

constexpr const char* below_zero =
    "The address of auto increament in the code buffer is too small or the number of bytes is too big.";

} // namespace

// The box used to stay ticked over a number that no chip got, or that all chips got.
TEST_P(SlipOfTheHand, IsToldAndTheBoxComesOffAgain)
{
    NumberBench bench;
    bench.shell.language_is_english = true;
    const Bytes before = bench.code.data;
    bench.fill(GetParam().address, GetParam().bytes, GetParam().next, GetParam().increment, AutoIncrease::bcd);
    bench.enable();
    ASSERT_EQ(bench.dialogs.shown.size(), 1U);
    EXPECT_EQ(bench.box_text(0), GetParam().box);
    EXPECT_EQ(bench.box_title(0), "Set Program Automatic Increment");
    EXPECT_FALSE(bench.form.check_box("cheAuto_Increase").value());
    EXPECT_FALSE(bench.shell.code_increase.valid);
    EXPECT_TRUE(bench.form.text_box("texAuto_Increase", 3).enabled());
    EXPECT_EQ(bench.code.data, before);
}
// clang-format off
INSTANTIATE_TEST_SUITE_P(In, SlipOfTheHand, ::testing::Values(
    //   name                  address  bytes    next   increment  box
    Slip{"AddressOfWords",     "ZZZZ",  "4",     "1",   "1",       below_zero},
    Slip{"AddressHalfHex",     "08Z3",  "4",     "1",   "1",       "The address must be a hexadecimal number."},
    Slip{"AddressMissing",     "",      "1",     "1",   "1",       "The address must be a hexadecimal number."},
    Slip{"BytesInWords",       "803",   "four",  "1",   "1",       "The number of bytes must be a whole number."},
    Slip{"BytesBroken",        "803",   "4.5",   "1",   "1",       "The number of bytes must be a whole number."},
    Slip{"BytesNone",          "803",   "0",     "0",   "1",       "The number of bytes is too small."},
    Slip{"BytesBelowZero",     "803",   "-4",    "0",   "1",       "The number of bytes is too small."},
    Slip{"IncrementInWords",   "803",   "4",     "1",   "xyz",     "The increment must be a whole number."},
    Slip{"IncrementMissing",   "803",   "4",     "1",   "",        "The increment must be a whole number."},
    Slip{"IncrementBroken",    "803",   "4",     "1",   "1.5",     "The increment must be a whole number."},
    Slip{"IncrementWithTail",  "803",   "4",     "1",   "1x",      "The increment must be a whole number."},
    Slip{"IncrementTooLarge",  "803",   "4",     "1",   "32768",   "The increment must be a whole number from -32768 to 32767."},
    Slip{"IncrementTooSmall",  "803",   "4",     "1",   "-32769",  "The increment must be a whole number from -32768 to 32767."},
    Slip{"ValueMissing",       "803",   "4",     "",    "1",       "The format of Next Value must be 10 base."}),
    [](const auto& row) { return row.param.name; });
// clang-format on

TEST(EnableNumber, WithAnIncrementAtTheEndsOf16BitsIsTaken)
{
    for (const char* increment : {"32767", "-32768", " +7 "}) {
        NumberBench bench;
        bench.fill("0803", "4", "100000", increment, AutoIncrease::hex);
        bench.enable();
        EXPECT_TRUE(bench.shell.code_increase.valid) << increment;
    }
}

TEST(EnableNumber, SwitchedOffItWidensTheViewNoMore)
{
    NumberBench bench;
    const int reach = bench.form.scroll_bar("vscFile", 0).max();
    bench.fill("E003", "4", "9", "1", AutoIncrease::hex);
    bench.enable();
    EXPECT_GT(bench.form.scroll_bar("vscFile", 0).max(), reach);
    bench.enable(false);
    EXPECT_EQ(bench.form.scroll_bar("vscFile", 0).max(), reach);
}

TEST(EnableNumber, TheEepromNumberGoesIntoItsOwnBuffer)
{
    NumberBench bench("Juniper-60Q");
    bench.fill_data("0010", "2", "1234", "1", AutoIncrease::bcd);
    bench.enable_data();
    EXPECT_TRUE(bench.shell.data_increase.valid);
    EXPECT_FALSE(bench.shell.code_increase.valid);
    EXPECT_EQ(bench.data.data[0x0F], 0x12);
    EXPECT_EQ(bench.data.data[0x10], 0x34);
}

TEST(NumberMessages, SayWhatIsWrongWithTheEepromAddress)
{
    NumberBench bench("Juniper-60Q");
    const std::string span = hex_text(bench.shell.selected.eeprom_last - bench.shell.selected.eeprom_first);
    bench.fill_data("FFFF", "2", "1", "1", AutoIncrease::bcd);
    bench.enable_data();
    bench.fill_data("0000", "2", "1", "1", AutoIncrease::bcd);
    bench.enable_data();
    EXPECT_EQ(bench.box_title(0), "设置 EEPROM 文件自动增量");
    EXPECT_EQ(bench.box_text(0), "数据文件缓冲区自动增量存放地址太大, \n" + span + "H");
    EXPECT_EQ(bench.box_text(1), "数据文件缓冲区自动增量存放地址太小或字节数太长");
}

TEST(NumberMessages, ExistInEnglish)
{
    NumberBench bench("Juniper-8Q");
    bench.shell.language_is_english = true;
    bench.fill("FFFF", "2", "1", "1", AutoIncrease::bcd);
    bench.enable();
    bench.fill("0000", "2", "1", "1", AutoIncrease::bcd);
    bench.enable();
    bench.fill_data("FFFF", "2", "1", "1", AutoIncrease::bcd);
    bench.enable_data();
    bench.fill_data("0000", "2", "1", "1", AutoIncrease::bcd);
    bench.enable_data();
    bench.select("Cedar-0.5");
    bench.fill("FFFF", "2", "1", "1", AutoIncrease::bcd);
    bench.enable();
    ASSERT_EQ(bench.dialogs.shown.size(), 5U);
    EXPECT_EQ(bench.box_title(0), "Set Program Automatic Increment");
    EXPECT_EQ(bench.box_text(0), "The address of auto increament in the data buffer is too big.");
    EXPECT_EQ(bench.box_text(1),
        "The address of auto increament in the code buffer is too small or the number of bytes is too big.");
    EXPECT_EQ(bench.box_title(2), "Set EEPROM Automatic Increment");
    EXPECT_EQ(bench.box_text(2), "The address of auto increament in the data buffer is too big.");
    EXPECT_EQ(bench.box_text(3),
        "The address of auto increament in the EEPROM file buffer is too small or the number of bytes is too big.");
    EXPECT_EQ(bench.box_text(4), "The address of auto increament in the buffer is too big.");
}

TEST(MoveNumbers, TheNextOneStandsInTheBufferInTheFieldOnTheScreenAndInTheSettings)
{
    NumberBench bench;
    bench.fill("0803", "2", "9998", "1", AutoIncrease::bcd);
    bench.enable();
    move_numbers(bench.shell);
    EXPECT_EQ(bench.code_bytes(0x802, 0x803), (Bytes{0x99, 0x99}));
    EXPECT_EQ(bench.form.text_box("texAuto_Increase", 2).text(), "9999");
    EXPECT_NE(bench.form.text_box("txtBuffer2").text().find("000800   6B 6B 99 99"), std::string::npos);
    EXPECT_EQ(bench.stored("Auto_Increase", "next_value"), "9999");
    EXPECT_TRUE(bench.shell.code_increase.valid);
    move_numbers(bench.shell);
    EXPECT_EQ(bench.code_bytes(0x802, 0x803), (Bytes{0x00, 0x00}));
    EXPECT_EQ(bench.stored("Auto_Increase", "next_value"), "0000");
}

TEST(MoveNumbers, BothBuffersMoveAtTheirOwnPace)
{
    NumberBench bench("Juniper-60Q");
    bench.fill("0803", "2", "10", "5", AutoIncrease::hex);
    bench.fill_data("0003", "4", "0007", "1", AutoIncrease::ascii);
    bench.enable();
    bench.enable_data();
    move_numbers(bench.shell);
    EXPECT_EQ(bench.code.data[0x803], 15);
    EXPECT_EQ(bench.data.data[0x000], '8');
    EXPECT_EQ(bench.data.data[0x003], '0');
}

TEST(MoveNumbers, WhatIsNotValidStays)
{
    NumberBench bench;
    bench.fill("0803", "2", "10", "5", AutoIncrease::hex);
    move_numbers(bench.shell);
    EXPECT_EQ(bench.form.text_box("texAuto_Increase", 2).text(), "10");
    EXPECT_EQ(bench.code.data[0x803], 'k');
}

TEST(MoveNumbers, AnExhaustedCounterIsToldAndTheLastNumberIsNotOverwritten)
{
    NumberBench bench;
    bench.fill("0803", "1", "255", "1", AutoIncrease::hex);
    bench.enable();
    EXPECT_FALSE(move_numbers(bench.shell));
    EXPECT_FALSE(numbers_fit(bench.shell));
    ASSERT_EQ(bench.dialogs.shown.size(), 1U);
    EXPECT_EQ(bench.box_text(0), "自动增量字节数太小");
    EXPECT_EQ(bench.code.data[0x803], 255);
    EXPECT_EQ(bench.form.text_box("texAuto_Increase", 2).text(), "256");
}

TEST(NumbersFit, BeforeADownloadStampsNothingAnew)
{
    NumberBench bench;
    bench.fill("0803", "2", "10", "5", AutoIncrease::hex);
    bench.enable();
    bench.code.data[0x803] = 0xEE; // as a project or the buffer editor may have it
    EXPECT_TRUE(numbers_fit(bench.shell));
    EXPECT_EQ(bench.code.data[0x803], 0xEE);
}

TEST(AsciiNumber, LongerThanItsFieldStandsWithItsLastCharactersFirstToLastDownwards)
{
    NumberBench bench;
    bench.fill("0803", "3", "0000127", "1", AutoIncrease::ascii);
    bench.enable();
    EXPECT_EQ(bench.code_bytes(0x800, 0x804), (Bytes{'k', '7', '2', '1', 'k'}));
    EXPECT_TRUE(bench.form.check_box("cheAuto_Increase").value());
    ASSERT_TRUE(move_numbers(bench.shell));
    EXPECT_EQ(bench.code_bytes(0x800, 0x804), (Bytes{'k', '8', '2', '1', 'k'}));
    EXPECT_EQ(bench.stored("Auto_Increase", "next_value"), "128");
}

TEST(AnyLoad, SwitchesBothNumbersOffAndBringsTheFilesOwnBytes)
{
    NumberBench bench("Juniper-60Q");
    bench.fill("0803", "2", "10", "5", AutoIncrease::hex);
    bench.fill_data("0003", "4", "0007", "1", AutoIncrease::ascii);
    bench.enable();
    bench.enable_data();
    bench.form.check_box("cheClearAP_Buffer").set_value(true);
    load_file(bench.shell, bench.file("k.bin", std::string(0x1000, 'k')), bench.code);
    EXPECT_FALSE(bench.form.check_box("cheAuto_Increase").value());
    EXPECT_FALSE(bench.form.check_box("cheData_Auto_Increase").value());
    EXPECT_FALSE(bench.shell.code_increase.valid);
    EXPECT_FALSE(bench.shell.data_increase.valid);
    EXPECT_TRUE(bench.form.text_box("texAuto_Increase", 0).enabled());
    EXPECT_TRUE(bench.form.text_box("texData_Auto_Increase", 0).enabled());
    EXPECT_EQ(bench.code.data[0x803], 'k');
    EXPECT_EQ(bench.form.text_box("texAuto_Increase", 2).text(), "10");
}

TEST(AnotherFile, SwitchesTheNumbersOffAndTheReportSaysSo)
{
    NumberBench bench;
    bench.shell.language_is_english = true;
    constexpr const char* note = "Opening a file has switched the automatic increment off.";
    bench.fill("0803", "2", "10", "5", AutoIncrease::hex);
    bench.enable();
    bench.dialogs.choices = {bench.file("other.bin", std::string(0x1000, 'o'))};
    comLoadFile_Click(bench.shell);
    EXPECT_FALSE(bench.form.check_box("cheAuto_Increase").value());
    EXPECT_NE(bench.form.text_box("textMsg").text().find(note), std::string::npos);

    bench.form.text_box("textMsg").set_text("");
    bench.dialogs.choices = {bench.file("third.bin", std::string(0x1000, 't'))};
    comLoadFile_Click(bench.shell);
    EXPECT_EQ(bench.form.text_box("textMsg").text(), "") << "nothing was on";
}

TEST(AnyLoad, ThatIsRefusedLeavesTheNumberOn)
{
    NumberBench bench;
    bench.fill("0803", "2", "10", "5", AutoIncrease::hex);
    bench.enable();
    bench.select("Rowan-4");
    bench.form.text_box("txtAP_FileStart").set_text("7FFF");
    EXPECT_FALSE(load_file(bench.shell, bench.file("k.bin", "k"), bench.code));
    EXPECT_TRUE(bench.form.check_box("cheAuto_Increase").value());
    EXPECT_TRUE(bench.shell.code_increase.valid);
}

TEST(AnyLoad, ButAReloadKeepsThemOn)
{
    NumberBench bench;
    take_path(bench.shell, BufferKind::code, bench.folder + "/k.bin");
    bench.fill("0803", "2", "10", "5", AutoIncrease::hex);
    bench.enable();
    EXPECT_TRUE(reload_code_file(bench.shell));
    EXPECT_TRUE(bench.form.check_box("cheAuto_Increase").value());
    EXPECT_TRUE(bench.shell.code_increase.valid);
    EXPECT_EQ(bench.code.data[0x803], 10);
}

TEST(NumberInView, IsSelectedFromItsFirstDigitToItsLast)
{
    NumberBench bench;
    bench.fill("0803", "4", "1", "1", AutoIncrease::hex);
    bench.enable();
    const TextBox& box = bench.form.text_box("txtBuffer2");
    EXPECT_EQ(box.text().substr(static_cast<std::size_t>(box.sel_start()), static_cast<std::size_t>(box.sel_length())),
        "00 00 00 01");
    EXPECT_EQ(box.sel_length(), 4 * 3 - 1);
}

TEST(NumberInView, OverALineEndIsSelectedWithTheAddressBetween)
{
    NumberBench bench;
    bench.fill("0801", "4", "305419896", "1", AutoIncrease::hex);
    bench.enable();
    const TextBox& box = bench.form.text_box("txtBuffer2");
    EXPECT_EQ(box.text().substr(static_cast<std::size_t>(box.sel_start()), static_cast<std::size_t>(box.sel_length())),
        "12 34 \r\n000800   56 78");
}

TEST(NumberInView, ThatIsNotValidIsNotSelected)
{
    NumberBench bench;
    bench.fill("0803", "4", "1", "1", AutoIncrease::hex);
    bench.form.scroll_bar("vscFile", 0).set_value(0x7F);
    vscFile_Change(bench.shell, 0);
    EXPECT_EQ(bench.form.text_box("txtBuffer2").sel_length(), 0);
}
