#include "shell/buffer_edit.h"

#include "image/dump.h"
#include "shell/buffer_bench.h"
#include "shell/events.h"
#include "shell/open_file.h"

using namespace vrk;
using buffer_test::Bench;

namespace {

constexpr int line = dump_line_size;

// Where a digit of a byte stands: line on the screen, column of the byte, 0 the high digit and 1 the low one.
constexpr int place(int line_index, int column, int digit = 0)
{
    return line_index * line + dump_data_column + column * dump_byte_size + digit;
}

// A file of 4 KB, the view at its start, and a hand.
struct EditBench : Bench {
    explicit EditBench(bool with_file = true)
        : Bench("Juniper-60Q")
    {
        if (with_file)
            load_file(shell, file("k.bin", std::string(0x1000, 'k')), code);
        scroll(0);
    }
    void scroll(int value)
    {
        form.scroll_bar("vscFile", 0).set_value(value);
        vscFile_Change(shell, 0);
    }
    void click(int position)
    {
        form.text_box("txtBuffer2").select(position, 0);
        highlight_digit(form.text_box("txtBuffer2"));
    }
    void press(std::string_view key) { press_edit_key(shell, code, key); }
    void confirmed() { shell.edit_confirmed = true; }
    const TextBox& box() const { return form.text_box("txtBuffer2"); }
    std::string first_address() const { return box().text().substr(0, 6); }
};

} // namespace

TEST(HighlightDigit, ADigitUnderTheCaretIsTaken)
{
    EditBench bench;
    bench.click(place(2, 5, 1));
    EXPECT_EQ(bench.box().sel_start(), place(2, 5, 1));
    EXPECT_EQ(bench.box().sel_length(), 1);
}

TEST(HighlightDigit, FromABlankOrTheAddressItMovesToTheNextDigit)
{
    EditBench bench;
    bench.click(place(2, 5) + 2);
    EXPECT_EQ(bench.box().sel_start(), place(2, 6));
    bench.click(3 * line + 2);
    EXPECT_EQ(bench.box().sel_start(), place(3, 0));
    EXPECT_EQ(bench.box().sel_length(), 1);
}

TEST(HighlightDigit, BehindTheLastByteOfALineItMovesToTheNextLine)
{
    EditBench bench;
    bench.click(place(0, 15) + 2);
    EXPECT_EQ(bench.box().sel_start(), place(1, 0));
}

TEST(HighlightDigit, AtTheEndOfTheTextNothingIsHighlighted)
{
    EditBench bench;
    bench.click(static_cast<int>(bench.box().text().size()));
    EXPECT_EQ(bench.box().sel_length(), 0);
}

TEST(HighlightDigit, InTextThatIsNoDumpNothingIsHighlighted)
{
    TextBox box;
    highlight_digit(box);
    EXPECT_EQ(box.sel_length(), 0);
    box.set_text("地址地址   00 11 22");
    box.select(4, 3);
    highlight_digit(box);
    EXPECT_EQ(box.sel_length(), 0);
}

TEST(Edit, ADigitTypedOverTheHighDigitAtFffWritesThatByte)
{
    EditBench bench;
    bench.scroll(0xFF - 3);
    bench.scroll(0x7FFF);
    bench.confirmed();
    const auto last = static_cast<int>(bench.box().text().rfind("000FF0")) / line;
    bench.click(place(last, 15));
    bench.press("a");
    EXPECT_EQ(bench.code.data[0xFFF], 0xAB);
    EXPECT_EQ(bench.code.data[0xFFE], 'k');
}

TEST(Edit, ShowsInBothBoxesInUpperCaseAndMovesOn)
{
    EditBench bench;
    bench.confirmed();
    bench.click(place(1, 2));
    bench.press("c");
    bench.press("d");
    EXPECT_EQ(bench.code.data[0x12], 0xCD);
    EXPECT_EQ(bench.box().text().substr(line, 20), "000010   6B 6B CD 6B");
    EXPECT_EQ(bench.form.text_box("txtBuffer").text(), bench.form.text_box("txtBuffer2").text());
    EXPECT_EQ(bench.box().sel_start(), place(1, 3));
    EXPECT_EQ(bench.box().sel_length(), 1);
}

TEST(Edit, AtTheEndOfALineGoesOnInTheNext)
{
    EditBench bench;
    bench.confirmed();
    bench.click(place(0, 15, 1));
    bench.press("0");
    bench.press("1");
    EXPECT_EQ(bench.code.data[0x0F], 0x60);
    EXPECT_EQ(bench.code.data[0x10], 0x1B);
}

TEST(Edit, OtherKeysThanDigitsChangeNothing)
{
    EditBench bench;
    bench.click(place(0, 0));
    const std::string before = bench.box().text();
    bench.press("g");
    bench.press(" ");
    bench.press("Esc");
    bench.press("é");
    EXPECT_EQ(bench.box().text(), before);
    EXPECT_EQ(bench.code.data[0], 'k');
    EXPECT_EQ(bench.box().sel_start(), place(0, 0));
    EXPECT_TRUE(bench.dialogs.shown.empty());
}

TEST(Edit, WithoutExactlyOneDigitHighlightedChangesNothing)
{
    EditBench bench;
    bench.form.text_box("txtBuffer2").select(place(0, 0), 0);
    bench.press("1");
    bench.form.text_box("txtBuffer2").select(place(0, 0), 2);
    bench.press("1");
    bench.form.text_box("txtBuffer2").select(2, 1);
    bench.press("1");
    bench.form.text_box("txtBuffer2").select(place(0, 0) + 2, 1);
    bench.press("1");
    EXPECT_EQ(bench.code.data[0], 'k');
    EXPECT_TRUE(bench.dialogs.shown.empty());
}

TEST(Edit, AsksOnceInARunAndNoIsTheDefault)
{
    EditBench bench;
    bench.click(place(0, 0));
    bench.press("1");
    EXPECT_EQ(bench.code.data[0], 'k');
    EXPECT_EQ(bench.box_text(0), "Update the buffer? / 修改缓冲区内容吗?");
    EXPECT_EQ(bench.dialogs.shown[0].box.buttons, Buttons::yes_no);
    EXPECT_EQ(bench.dialogs.shown[0].box.default_reply, Reply::no);

    bench.dialogs.replies.push_back(Reply::yes);
    bench.press("1");
    bench.press("2");
    EXPECT_EQ(bench.code.data[0], 0x12);
    EXPECT_TRUE(bench.shell.edit_confirmed);
    EXPECT_EQ(bench.dialogs.shown.size(), 2U);
}

TEST(Edit, WithoutAFileIsAskedForEachKeyAndNeverDone)
{
    EditBench bench(false);
    bench.click(place(0, 0));
    bench.dialogs.replies = {Reply::yes, Reply::ok, Reply::yes, Reply::ok};
    bench.press("1");
    bench.shell.language_is_english = true;
    bench.press("1");
    ASSERT_EQ(bench.dialogs.shown.size(), 4U);
    EXPECT_EQ(bench.box_text(1), "    Please open code file./请打开文件。    ");
    EXPECT_EQ(bench.box_text(2), "Update the buffer ?");
    EXPECT_EQ(bench.box_text(3), " Please open code file.");
    EXPECT_EQ(bench.code.data[0], 0);
    EXPECT_FALSE(bench.shell.edit_confirmed);
}

TEST(Edit, OfAJobThatIsLockedOrRunningIsDropped)
{
    EditBench bench;
    bench.confirmed();
    bench.click(place(0, 0));
    for (const auto& [locked, running] : {std::pair{true, false}, {false, true}, {true, true}}) {
        bench.shell.locked = locked;
        bench.shell.running = running;
        bench.press("A");
        EXPECT_EQ(bench.code.data[0], 'k');
    }
    bench.shell.locked = false;
    bench.shell.running = false;
    bench.press("A");
    EXPECT_EQ(bench.code.data[0], 0xAB);
}

TEST(Edit, LeavesChecksumAndLengthAsTheyAre)
{
    EditBench bench;
    const auto checksum = bench.code.checksum;
    bench.confirmed();
    bench.click(place(0, 0));
    bench.press("0");
    EXPECT_EQ(bench.code.checksum, checksum);
    EXPECT_EQ(bench.code.high, 0xFFF);
}

TEST(Edit, ShowsItsHintForTwentySeconds)
{
    EditBench bench;
    bench.confirmed();
    bench.click(place(0, 0));
    EXPECT_FALSE(bench.form.label("LabEdit_Clew").visible());
    bench.press("0");
    EXPECT_TRUE(bench.form.label("LabEdit_Clew").visible());
    bench.loop.run_for_ms(15'000);
    bench.press("0");
    bench.loop.run_for_ms(15'000);
    EXPECT_TRUE(bench.form.label("LabEdit_Clew").visible()) << "each edit begins it anew";
    bench.loop.run_for_ms(6'000);
    EXPECT_FALSE(bench.form.label("LabEdit_Clew").visible());
}

TEST(Edit, TheEepromBufferIsEditedInItsOwnBox)
{
    EditBench bench;
    bench.confirmed();
    bench.form.text_box("tetDataFlash2").select(place(0, 1), 1);
    press_edit_key(bench.shell, bench.data, "7");
    EXPECT_EQ(bench.data.data[1], 0x70);
    EXPECT_EQ(bench.code.data[1], 'k');
}

TEST(Edit, NeverWritesPastTheBufferWhateverStandsInTheBox)
{
    EditBench bench;
    bench.confirmed();
    const auto before = bench.code.data;
    bench.form.text_box("txtBuffer2").set_text("0FFFF0   00 11\r\n");
    bench.form.text_box("txtBuffer2").select(9, 1);
    bench.press("1");
    bench.form.text_box("txtBuffer2").set_text("0");
    bench.form.text_box("txtBuffer2").select(0, 1);
    bench.press("1");
    bench.press("Down");
    bench.press("Right");
    bench.form.text_box("txtBuffer2").set_text("地000000   00 11 22 33\r\n");
    bench.form.text_box("txtBuffer2").select(11, 1);
    bench.press("1");
    EXPECT_EQ(bench.code.data, before);
}

TEST(EditKeys, PagesMoveByTheLargeStepWithinTheBar)
{
    EditBench bench;
    bench.click(place(4, 3));
    bench.press("PageDown");
    EXPECT_EQ(bench.form.scroll_bar("vscFile", 0).value(), 16);
    EXPECT_EQ(bench.first_address(), "000100");
    EXPECT_EQ(bench.box().sel_start(), place(4, 3));
    EXPECT_EQ(bench.box().sel_length(), 1);
    bench.press("PageUp");
    bench.press("PageUp");
    EXPECT_EQ(bench.form.scroll_bar("vscFile", 0).value(), 0);
}

TEST(EditKeys, APageDownToTheEndTakesTheCaretToTheLastLine)
{
    EditBench bench;
    bench.scroll(bench.form.scroll_bar("vscFile", 0).max() - 1);
    bench.click(place(4, 3));
    bench.press("PageDown");
    EXPECT_EQ(bench.form.scroll_bar("vscFile", 0).value(), bench.form.scroll_bar("vscFile", 0).max());
    EXPECT_EQ(bench.box().sel_start(), place(3, 3));
}

TEST(EditKeys, UpScrollsFromTheFirstThreeLinesAndElseMovesTheCaret)
{
    EditBench bench;
    bench.scroll(8);
    bench.click(place(2, 3));
    bench.press("Up");
    EXPECT_EQ(bench.form.scroll_bar("vscFile", 0).value(), 7);
    EXPECT_EQ(bench.box().sel_start(), place(2, 3));
    bench.click(place(3, 3));
    bench.press("Up");
    EXPECT_EQ(bench.form.scroll_bar("vscFile", 0).value(), 7);
    EXPECT_EQ(bench.box().sel_start(), place(2, 3));
}

TEST(EditKeys, AtTheTopUpReachesTheFirstLineAndStays)
{
    EditBench bench;
    bench.click(place(1, 3));
    bench.press("Up");
    EXPECT_EQ(bench.box().sel_start(), place(0, 3));
    bench.press("Up");
    EXPECT_EQ(bench.box().sel_start(), place(0, 3));
    EXPECT_EQ(bench.form.scroll_bar("vscFile", 0).value(), 0);
}

TEST(EditKeys, DownScrollsFromTheLastLineAndElseMovesTheCaret)
{
    EditBench bench;
    const int last = bench.shell.view_lines[0] - 1;
    bench.click(place(last - 1, 3));
    bench.press("Down");
    EXPECT_EQ(bench.form.scroll_bar("vscFile", 0).value(), 0);
    EXPECT_EQ(bench.box().sel_start(), place(last, 3));
    bench.press("Down");
    EXPECT_EQ(bench.form.scroll_bar("vscFile", 0).value(), 1);
    EXPECT_EQ(bench.box().sel_start(), place(last, 3));
}

TEST(EditKeys, LeftAndRightGoFromDigitToDigit)
{
    EditBench bench;
    bench.click(place(1, 0));
    bench.press("Left");
    EXPECT_EQ(bench.box().sel_start(), place(0, 15, 1));
    bench.press("Right");
    EXPECT_EQ(bench.box().sel_start(), place(1, 0));
    bench.press("Right");
    EXPECT_EQ(bench.box().sel_start(), place(1, 0, 1));
    bench.press("Right");
    EXPECT_EQ(bench.box().sel_start(), place(1, 1));
}

TEST(DumpKeys, HomeAndEndGoToTheEndsOfTheLine)
{
    EditBench bench;
    bench.click(place(2, 5));
    bench.press("End");
    EXPECT_EQ(bench.box().sel_start(), place(2, 15, 1));
    EXPECT_EQ(bench.box().sel_length(), 1);
    bench.press("End");
    EXPECT_EQ(bench.box().sel_start(), place(2, 15, 1));
    bench.press("Home");
    EXPECT_EQ(bench.box().sel_start(), place(2, 0));
    EXPECT_EQ(bench.box().sel_length(), 1);
    bench.press("Home");
    EXPECT_EQ(bench.box().sel_start(), place(2, 0));
}

TEST(DumpKeys, WithControlTheyGoToTheEndsOfTheBuffer)
{
    EditBench bench;
    bench.click(place(2, 5));
    bench.press("CtrlEnd");
    const auto last = static_cast<std::size_t>(bench.box().sel_start());
    const auto byte = dump_byte_at(bench.box().text(), last);
    ASSERT_TRUE(byte);
    EXPECT_EQ(byte->address, bench.code.view_high);
    EXPECT_EQ(last, byte->digits + 1);
    for (int twice = 0; twice < 2; ++twice) {
        bench.press("CtrlHome");
        EXPECT_EQ(bench.first_address(), "000000");
        EXPECT_EQ(bench.box().sel_start(), place(0, 0));
        EXPECT_EQ(bench.box().sel_length(), 1);
    }
}

TEST(DumpKeys, InADumpWithoutBytesDoNothing)
{
    EditBench bench;
    bench.form.text_box("txtBuffer2").set_text("");
    for (const char* key : {"Home", "End"}) {
        bench.press(key);
        EXPECT_EQ(bench.box().sel_length(), 0) << key;
    }
}

namespace {

// A number in the middle of the file, switched on as its box does it.
void switch_number_on(EditBench& bench)
{
    for (const auto& [field, text] : {std::pair{0, "0103"}, {1, "2"}, {2, "0001"}, {3, "1"}})
        bench.form.text_box("texAuto_Increase", field).set_text(text);
    set_checked(bench.shell, bench.form.check_box("cheAuto_Increase"), true);
}

} // namespace

TEST(UndoOfEdits, TakesDigitsBackOneByOneAndDoesThemAgain)
{
    EditBench bench;
    bench.confirmed();
    bench.click(place(1, 2));
    bench.press("c");
    bench.press("d");
    bench.press("CtrlZ");
    EXPECT_EQ(bench.code.data[0x12], 0xCB);
    EXPECT_EQ(bench.box().sel_start(), place(1, 2, 1)) << "where the digit has changed";
    EXPECT_EQ(bench.box().sel_length(), 1);
    bench.press("CtrlZ");
    bench.press("CtrlZ"); // once too often
    EXPECT_EQ(bench.code.data[0x12], 'k');
    EXPECT_EQ(bench.box().text().substr(line, 20), "000010   6B 6B 6B 6B");
    EXPECT_FALSE(bench.shell.loader.edited[0]);
    bench.press("CtrlY");
    bench.press("CtrlY");
    bench.press("CtrlY");
    EXPECT_EQ(bench.code.data[0x12], 0xCD);
    EXPECT_TRUE(bench.shell.loader.edited[0]);
}

TEST(UndoOfEdits, ComesIntoViewFromElsewhere)
{
    EditBench bench;
    bench.confirmed();
    bench.click(place(0, 1));
    bench.press("0");
    bench.scroll(0x80);
    bench.press("CtrlZ");
    EXPECT_EQ(bench.first_address(), "000000");
    EXPECT_EQ(bench.box().sel_start(), place(0, 1));
}

TEST(UndoOfEdits, WhatIsTypedAfterAnUndoCannotBeDoneAgain)
{
    EditBench bench;
    bench.confirmed();
    bench.click(place(0, 0));
    bench.press("1");
    bench.press("CtrlZ");
    bench.press("2");
    bench.press("CtrlY");
    EXPECT_EQ(bench.code.data[0], 0x2B);
}

TEST(UndoOfEdits, NothingIsTakenBackWhileTheJobIsSealed)
{
    EditBench bench;
    bench.confirmed();
    bench.click(place(0, 0));
    bench.press("1");
    bench.shell.locked = true;
    bench.press("CtrlZ");
    EXPECT_EQ(bench.code.data[0], 0x1B);
    bench.shell.locked = false;
    bench.shell.running = true;
    bench.press("CtrlZ");
    EXPECT_EQ(bench.code.data[0], 0x1B);
    EXPECT_EQ(press_key(bench.shell, bench.form.text_box("txtBuffer2"), "CtrlZ"), Touch::busy);
    bench.shell.running = false;
    EXPECT_EQ(press_key(bench.shell, bench.form.text_box("txtBuffer2"), "CtrlZ"), Touch::taken);
    EXPECT_EQ(bench.code.data[0], 'k');
}

TEST(UndoOfEdits, EndsAtALoadAClearAndASerialNumber)
{
    EditBench bench;
    bench.confirmed();
    const auto edited_then = [&](auto act) {
        bench.click(place(0, 0));
        bench.press("1");
        EXPECT_EQ(bench.shell.loader.history[0].done.size(), 1U);
        act();
        const auto before = bench.code.data;
        bench.press("CtrlZ");
        EXPECT_EQ(bench.code.data, before);
    };
    edited_then([&] { load_file(bench.shell, bench.folder + "/k.bin", bench.code); });
    edited_then([&] { switch_number_on(bench); });
    EXPECT_TRUE(bench.form.check_box("cheAuto_Increase").value());
    EXPECT_TRUE(bench.shell.loader.edited[0]) << "the hand's byte is still there";
    edited_then([&] { clear_buffer(bench.shell, 0, bench.code); });
}

TEST(EditedSum, FollowsEachEditBesideTheChecksumOfTheFile)
{
    EditBench bench;
    bench.confirmed();
    bench.shell.language_is_english = true;
    const Label& sum = bench.form.label("labEditedCheckSum", 0);
    const std::string of_the_file = bench.form.text_box("txtFileCheckSum").text();
    EXPECT_EQ(sum.caption(), "");
    bench.click(place(0, 0));
    bench.press("7"); // 6B to 7B: 10 more than 6B000
    EXPECT_EQ(sum.caption(), "Edited: 006B010H*");
    bench.press("0");
    EXPECT_EQ(sum.caption(), "Edited: 006B005H*");
    EXPECT_EQ(bench.form.text_box("txtFileCheckSum").text(), of_the_file);
    bench.press("CtrlZ");
    bench.press("CtrlZ");
    EXPECT_EQ(sum.caption(), "") << "as the file has brought it";
    bench.press("CtrlY");
    load_file(bench.shell, bench.folder + "/k.bin", bench.code);
    EXPECT_EQ(sum.caption(), "");
}

TEST(EditedSum, StaysWhereAReloadCouldNotBeDone)
{
    EditBench bench;
    bench.confirmed();
    switch_number_on(bench);
    bench.scroll(0);
    bench.click(place(0, 0));
    bench.press("7");
    bench.form.text_box("texAuto_Increase", 2).set_text("x"); // does not fit into the fresh image
    const std::string before = bench.form.label("labEditedCheckSum", 0).caption();
    EXPECT_FALSE(reload_code_file(bench.shell));
    EXPECT_EQ(bench.code.data[0], 0x7B);
    EXPECT_EQ(bench.form.label("labEditedCheckSum", 0).caption(), before);
    EXPECT_TRUE(bench.shell.loader.edited[0]);
}
