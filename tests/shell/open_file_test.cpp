#include "shell/open_file.h"
#include "shell/serial_numbers.h"

#include "shell/buffer_bench.h"

using namespace vrk;
using buffer_test::Bench;
using buffer_test::fixture;

namespace {

constexpr const char* file_filter = "(*.hex, *.bin)|*.hex;*.bin|(*.bin)|*.bin|(*.hex)|*.hex|All Files (*.*)|*.*";
std::string stored(Bench& bench, const char* key) { return bench.settings.get("Settings", key, "nothing stored"); }

} // namespace

TEST(ChooseFile, AsksForACodeFileBeginningInTheProgramsDirectory)
{
    Bench bench{"Juniper-60"};
    choose_file(bench.shell, BufferKind::code);
    ASSERT_EQ(bench.dialogs.asked.size(), 1U);
    const FileDialog& dialog = bench.dialogs.asked[0];
    EXPECT_EQ(dialog.kind, FileDialog::Kind::open);
    EXPECT_EQ(dialog.title, "Open file ( *.hex or *.bin )");
    EXPECT_EQ(dialog.filter, file_filter);
    EXPECT_EQ(dialog.initial_dir, bench.folder);
    EXPECT_EQ(dialog.file_name, "") << "a directory is no file to propose";
    EXPECT_TRUE(dialog.must_exist);
}

TEST(ChooseFile, ProposesTheFileChosenLastIfItIsStillThere)
{
    Bench bench{"Juniper-60"};
    const std::string here = bench.file("here.hex", "");
    bench.settings.set("Settings", "DataFilePath", here);
    bench.settings.set("Settings", "FilePath", bench.folder + "/gone.hex");
    choose_file(bench.shell, BufferKind::data);
    choose_file(bench.shell, BufferKind::code);
    EXPECT_EQ(bench.dialogs.asked[0].title, "Open Data file ( *.hex or *.bin )");
    EXPECT_EQ(bench.dialogs.asked[0].file_name, here);
    EXPECT_EQ(bench.dialogs.asked[1].file_name, "");
    EXPECT_EQ(bench.dialogs.asked[1].initial_dir, bench.folder + "/gone.hex");
}

TEST(ChooseFile, APathThatEndsInABackslashProposesNoName)
{
    Bench bench{"Juniper-60"};
    bench.settings.set("Settings", "FilePath", bench.file("odd\\", ""));
    choose_file(bench.shell, BufferKind::code);
    EXPECT_EQ(bench.dialogs.asked[0].file_name, "");
}

TEST(ChooseFile, CancellingChangesNothing)
{
    Bench bench{"Juniper-60"};
    take_path(bench.shell, BufferKind::code, "/old.hex");
    EXPECT_EQ(choose_file(bench.shell, BufferKind::code), "");
    EXPECT_EQ(bench.shell.loader.current_path, "/old.hex");
    EXPECT_EQ(bench.form.frame("Frame7").caption(), "Program File: /old.hex");
    EXPECT_EQ(stored(bench, "FilePath"), "/old.hex");
}

TEST(ChooseFile, AChoiceIsShownAndStoredAtOnce)
{
    Bench bench{"Juniper-60Q"};
    bench.dialogs.choices = {"/a/code.hex", "/a/data.hex"};
    EXPECT_EQ(choose_file(bench.shell, BufferKind::code), "/a/code.hex");
    EXPECT_EQ(choose_file(bench.shell, BufferKind::data), "/a/data.hex");
    EXPECT_EQ(bench.form.frame("Frame7").caption(), "Program File: /a/code.hex");
    EXPECT_EQ(bench.form.frame("frmDataFlash").caption(), "Data File: /a/data.hex");
    EXPECT_EQ(stored(bench, "FilePath"), "/a/code.hex");
    EXPECT_EQ(stored(bench, "DataFilePath"), "/a/data.hex");
    EXPECT_EQ(bench.shell.loader.current_path, "/a/data.hex") << "shared by both dialogs";
}

TEST(LoadButtons, ACancelledCodeDialogStoresTheProgramsDirectory)
{
    Bench bench{"Juniper-60"};
    bench.settings.set("Settings", "FilePath", "/old.hex");
    EXPECT_EQ(comLoadFile_Click(bench.shell), Chosen::nothing);
    EXPECT_EQ(stored(bench, "FilePath"), bench.folder);
    EXPECT_FALSE(bench.shell.file_loaded);
}

TEST(LoadButtons, ACancelledEepromDialogStoresNothing)
{
    Bench bench{"Juniper-60Q"};
    EXPECT_EQ(comLoadDataFile_Click(bench.shell), Chosen::nothing);
    EXPECT_EQ(stored(bench, "DataFilePath"), "nothing stored");
}

TEST(LoadButtons, EachLoadsIntoItsOwnBuffer)
{
    Bench bench{"Juniper-60Q"};
    bench.dialogs.choices = {fixture("hundred_bytes.hex"), fixture("overlapping_records.hex")};
    EXPECT_EQ(comLoadFile_Click(bench.shell), Chosen::file);
    EXPECT_EQ(comLoadDataFile_Click(bench.shell), Chosen::file);
    EXPECT_EQ(bench.code.data[99], 100);
    EXPECT_EQ(bench.data.data[5], 2);
    EXPECT_TRUE(bench.code.loaded);
    EXPECT_TRUE(bench.data.loaded);
}

TEST(LoadButtons, AProjectCanBeChosenInEitherDialogAndIsLeftToTheCaller)
{
    Bench bench{"Juniper-60Q"};
    bench.dialogs.choices = {"/jobs/lamp.vrk", "/jobs.VRK.d/lamp.hex"};
    EXPECT_EQ(comLoadFile_Click(bench.shell), Chosen::project);
    EXPECT_EQ(bench.shell.loader.current_path, "/jobs/lamp.vrk");
    EXPECT_EQ(comLoadDataFile_Click(bench.shell), Chosen::project);
    EXPECT_FALSE(bench.shell.file_loaded);
    EXPECT_FALSE(bench.code.loaded);
}

namespace {

// A program and its data are open, and then a file is chosen in each dialog of which nothing can be had.
struct MisjudgedFile : Bench {
    MisjudgedFile()
        : Bench{"Juniper-60Q"}
    {
        shell.language_is_english = true;
        dialogs.choices = {file("lamp.bin", "lamp"), file("table.bin", "table")};
        comLoadFile_Click(shell);
        comLoadDataFile_Click(shell);
    }
    void choose_in_both(const std::string& path)
    {
        dialogs.choices = {path, path};
        EXPECT_EQ(comLoadFile_Click(shell), Chosen::file);
        EXPECT_EQ(comLoadDataFile_Click(shell), Chosen::file);
        EXPECT_EQ(dialogs.shown.size(), 2U);
    }
    void expect_old_files()
    {
        EXPECT_EQ(form.frame("Frame7").caption(), "Program File: " + folder + "/lamp.bin");
        EXPECT_EQ(form.frame("frmDataFlash").caption(), "Data File: " + folder + "/table.bin");
        EXPECT_EQ(code.data[0], 'l');
        EXPECT_EQ(data.data[0], 't');
        EXPECT_TRUE(shell.file_loaded);
        file("lamp.bin", "LAMP");
        EXPECT_TRUE(reload_code_file(shell));
        EXPECT_EQ(code.data[0], 'L');
    }
};

} // namespace

// Its name used to stand over the old image, which a worker then took for the new program.
TEST(LoadButtons, AFileThatIsNotThereLeavesTheNamesOfThoseInTheBuffers)
{
    MisjudgedFile bench;
    bench.choose_in_both(bench.folder + "/missing.hex");
    bench.expect_old_files();
}

TEST(LoadButtons, AFileWithoutDataLeavesTheNamesOfThoseInTheBuffers)
{
    MisjudgedFile bench;
    bench.choose_in_both(bench.file("hello.hex", "hello"));
    bench.expect_old_files();
}

TEST(LoadButtons, AFileBehindTheDeviceLeavesTheNamesOfThoseInTheBuffers)
{
    MisjudgedFile bench;
    bench.form.text_box("txtAP_FileStart").set_text("7FFF");
    bench.form.text_box("txtDataFileStart").set_text("7FFF");
    bench.select("Rowan-4");
    bench.choose_in_both(bench.file("late.bin", "late"));
    bench.form.text_box("txtAP_FileStart").set_text("0");
    bench.expect_old_files();
}

TEST(LoadButtons, AFileThatTheUserGivesUpLeavesNoNameOverTheEmptyBuffer)
{
    MisjudgedFile bench;
    bench.dialogs.choices = {fixture("three_bad_checksums.hex")};
    bench.dialogs.replies = {Reply::ok, Reply::ok, Reply::ok, Reply::no};
    comLoadFile_Click(bench.shell);
    EXPECT_EQ(bench.form.frame("Frame7").caption(), "Program File: ");
    EXPECT_EQ(bench.code.data[0], 0);
    EXPECT_FALSE(bench.shell.file_loaded);
    EXPECT_EQ(bench.shell.loader.code_path, fixture("three_bad_checksums.hex")) << "nor does the old one come back";
}

TEST(LoadFile, AnEmptyPathDoesNothing)
{
    Bench bench{"Juniper-60"};
    fill_buffer(0x31, bench.code);
    EXPECT_FALSE(load_file(bench.shell, "", bench.code));
    EXPECT_FALSE(load_file(bench.shell, "  ", bench.code));
    EXPECT_EQ(bench.code.data[0], 0x31);
    EXPECT_FALSE(bench.shell.file_loaded);
}

// A misspelt name used to load as zeros, which were programmed and counted as good.
TEST(LoadFile, AFileThatIsNotThereIsToldAndTheBufferIsAsItWas)
{
    Bench bench{"Juniper-60"};
    load_file(bench.shell, bench.file("there.bin", "there"), bench.code);
    for (const char* name : {"/missing.hex", "/missing.bin", ""}) // the last is a folder
        EXPECT_FALSE(load_file(bench.shell, bench.folder + name, bench.code));
    ASSERT_EQ(bench.dialogs.shown.size(), 3U);
    EXPECT_EQ(bench.box_text(0), "Can not find the file./找不到文件");
    EXPECT_EQ(bench.code.data[0], 't');
    EXPECT_TRUE(bench.shell.file_loaded);
}

TEST(LoadFile, OneAboveSixtyFourMegabytesIsRefusedWithItsSizeAndTheLimit)
{
    Bench bench{"Juniper-60"};
    load_file(bench.shell, bench.file("there.bin", "there"), bench.code);
    const std::string path = bench.file("long.hex", "");
    std::filesystem::resize_file(path, 64 * 1024 * 1024 + 1);
    EXPECT_FALSE(load_file(bench.shell, path, bench.code));
    bench.shell.language_is_english = true;
    EXPECT_FALSE(load_file(bench.shell, path, bench.code));
    EXPECT_EQ(bench.box_text(0), "文件太大: 67108865 字节。最大允许 67108864 字节 (64 MB)。");
    EXPECT_EQ(
        bench.box_text(1), "The file is too large: 67108865 bytes. At most 67108864 bytes (64 MB) can be opened.");
    EXPECT_EQ(bench.box_title(1), path);
    EXPECT_EQ(bench.code.data[0], 't');
    EXPECT_TRUE(bench.shell.file_loaded);
}

TEST(LoadFile, HexInUtf16IsRefusedWithABox)
{
    Bench bench{"Juniper-60"};
    bench.shell.language_is_english = true;
    load_file(bench.shell, bench.file("there.bin", "there"), bench.code);
    EXPECT_FALSE(load_file(bench.shell, bench.file("lamp.hex", std::string{"\xFF\xFE:\0", 4}), bench.code));
    EXPECT_EQ(bench.box_text(0), "The file is UTF-16 text. Please save it as ASCII or UTF-8.");
    EXPECT_EQ(bench.code.data[0], 't');
    EXPECT_TRUE(bench.shell.file_loaded);
}

TEST(LoadFile, OneWhoseBytesTheDiskDoesNotGiveLeavesTheBufferAsItWas)
{
    Bench bench{"Juniper-60"};
    load_file(bench.shell, bench.file("there.bin", "there"), bench.code);
    for (const char* name : {"dead.hex", "dead.bin"}) {
        std::filesystem::create_symlink("/proc/self/mem", bench.folder + "/" + name); // no byte 0 in it
        EXPECT_FALSE(load_file(bench.shell, bench.folder + "/" + name, bench.code)) << name;
    }
    EXPECT_EQ(bench.dialogs.shown.size(), 2U);
    EXPECT_EQ(bench.box_text(1), "Can not find the file./找不到文件");
    EXPECT_EQ(bench.code.data[0], 't');
    EXPECT_TRUE(bench.shell.file_loaded);
}

TEST(LoadParameters, AnEmptyTextMeansZero)
{
    Bench bench{"Juniper-60"};
    bench.form.text_box("txtAP_FileStart").set_text("  ");
    read_load_parameters(bench.shell, bench.code);
    EXPECT_EQ(bench.code.start, 0);
}

TEST(LoadParameters, FourDigitsFrom8000UpComeNegative)
{
    Bench bench{"Juniper-60"};
    bench.form.text_box("txtAP_FileStart").set_text(" 8000 ");
    read_load_parameters(bench.shell, bench.code);
    EXPECT_EQ(bench.code.start, -0x8000);
}

TEST(LoadParameters, FiveDigitsAreNotCorrected)
{
    Bench bench{"Juniper-60"};
    bench.form.text_box("txtAP_FileStart").set_text("10000");
    read_load_parameters(bench.shell, bench.code);
    EXPECT_EQ(bench.code.start, 0x10000);
}

TEST(LoadParameters, EachBufferHasItsOwnControls)
{
    Bench bench{"Juniper-60Q"};
    bench.form.text_box("txtDataFileStart").set_text("20");
    bench.form.check_box("cheClearDataBuffer").set_value(true);
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
    bench.form.text_box("txtAP_FileStart").set_text("10000");
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
    bench.form.text_box("txtDataFileStart").set_text("400");
    EXPECT_FALSE(load_file(bench.shell, fixture("hundred_bytes.hex"), bench.data));
    EXPECT_EQ(
        bench.box_text(0), "Start Buffer Address exceeded the valid scope. \n        缓冲区起始地址超出有效空间。");
    EXPECT_FALSE(bench.data.loaded);
}

TEST(StartAddress, TheLastByteOfTheEepromIsStillAStart)
{
    Bench bench{"Juniper-60Q"};
    bench.form.text_box("txtDataFileStart").set_text("3FF");
    EXPECT_TRUE(load_file(bench.shell, bench.file("one.bin", "1"), bench.data));
    EXPECT_EQ(bench.data.data[0x3FF], '1');
    EXPECT_TRUE(bench.dialogs.shown.empty());
}

TEST(StartAddress, EnglishRefusalsAreTheSameForBothBuffers)
{
    Bench bench{"Juniper-60Q"};
    bench.shell.language_is_english = true;
    bench.form.text_box("txtAP_FileStart").set_text("10000");
    bench.form.text_box("txtDataFileStart").set_text("400");
    load_file(bench.shell, fixture("hundred_bytes.hex"), bench.code);
    load_file(bench.shell, fixture("hundred_bytes.hex"), bench.data);
    EXPECT_EQ(bench.box_text(0), "Start Buffer Address exceeded the valid scope. \n");
    EXPECT_EQ(bench.box_text(1), "Start Buffer Address exceeded the valid scope. \n");
}

TEST(ClearBeforeLoad, WithTheBoxOffASecondFileIsAddedAndWithTheBoxOnItReplaces)
{
    Bench bench{"Juniper-60"};
    load_file(bench.shell, bench.file("long.bin", std::string(0x1000, 'x')), bench.code);
    load_file(bench.shell, bench.file("short.bin", "y"), bench.code);
    EXPECT_EQ(bench.code.data[1], 'x');
    EXPECT_EQ(bench.code.view_high, 0xFFF);
    bench.form.check_box("cheClearAP_Buffer").set_value(true);
    load_file(bench.shell, bench.file("short.bin", "y"), bench.code);
    EXPECT_EQ(bench.code.data[0], 'y');
    EXPECT_EQ(bench.code.data[1], 0);
    EXPECT_EQ(bench.code.view_high, 511);
}

TEST(ClearBeforeLoad, ASecondFilesChecksumIsShownAloneNotTheSumOfBoth)
{
    Bench bench{"Juniper-60"};
    load_file(bench.shell, fixture("hundred_bytes.hex"), bench.code);
    load_file(bench.shell, fixture("overlapping_records.hex"), bench.code);
    EXPECT_EQ(bench.form.text_box("txtFileCheckSum").text(), "000000CH       ");
    EXPECT_EQ(bench.code.data[50], 51) << "the first file is still there";
}

// An EEPROM file that was opened last used to go into the code flash, and so did what another program had stored.
TEST(ReloadCodeFile, TakesItsOwnCodeFileWhateverElseWasChosenOrStored)
{
    Bench bench{"Juniper-60Q"};
    const std::string path = bench.file("code.bin", "code");
    take_path(bench.shell, BufferKind::code, path);
    load_file(bench.shell, path, bench.code);
    take_path(bench.shell, BufferKind::data, bench.file("data.bin", "data"));
    bench.settings.set("Settings", "FilePath", bench.file("foreign.bin", "foreign"));
    EXPECT_TRUE(reload_code_file(bench.shell));
    EXPECT_EQ(bench.code.data[0], 'c');
    EXPECT_TRUE(bench.dialogs.shown.empty());
}

namespace {

// A file that was loaded well and cannot be brought in again. Zeros used to be programmed, and counted as good.
struct LostFile : Bench {
    explicit LostFile(bool english = true)
        : Bench{"Juniper-60"}
    {
        shell.language_is_english = english;
        const std::string path = file("lamp.hex", lamp);
        take_path(shell, BufferKind::code, path);
        load_file(shell, path, code);
    }
    void expect_kept(const char* box)
    {
        EXPECT_FALSE(reload_code_file(shell));
        EXPECT_EQ(box_text(0), box);
        EXPECT_EQ(code.data[0], 0xAB);
        EXPECT_EQ(code.data[1], 0xCD);
        EXPECT_TRUE(shell.file_loaded);
        EXPECT_TRUE(code.loaded);
        EXPECT_EQ(form.text_box("txtFileCheckSum").text(), "0000178H       ");
        EXPECT_TRUE(form.text_box("textMsg").text().ends_with(shell.language_is_english
                ? "\nThe file could not be loaded again. Nothing was programmed."
                : "\n文件未能重新加载，未下载。"));
    }
    static constexpr const char* lamp = ":02000000ABCD86\n:00000001FF\n";
};

} // namespace

TEST(AReloadThatFails, KeepsTheBufferWhereTheFileIsGone)
{
    LostFile bench;
    std::filesystem::remove(bench.folder + "/lamp.hex");
    bench.expect_kept("Can not find the file.");
}

TEST(AReloadThatFails, SaysSoInChineseToo)
{
    LostFile bench(false);
    std::filesystem::remove(bench.folder + "/lamp.hex");
    bench.expect_kept("Can not find the file./找不到文件");
}

TEST(AReloadThatFails, KeepsTheBufferWhereTheFileIsEmpty)
{
    LostFile bench;
    bench.file("lamp.hex", "");
    bench.expect_kept("The file contains no data.");
}

TEST(AReloadThatFails, KeepsTheBufferWhereTheFileIsText)
{
    LostFile bench;
    bench.file("lamp.hex", "hello\n");
    bench.expect_kept("The file contains no data.");
}

// A press while the linker was at work used to send half a file into the chip.
TEST(AReloadThatFails, KeepsTheBufferWhereTheFileIsNotWrittenToItsEnd)
{
    LostFile bench;
    bench.file("lamp.hex", ":02000000121AD2\n:0200020034");
    bench.expect_kept("The HEX file has no end record: it may not have been written to its end.");
    EXPECT_EQ(bench.dialogs.shown.size(), 1U) << "no word of the record that was cut";
}

TEST(AReloadThatFails, KeepsTheBufferWhereTheUserGivesUpOnWrongChecksums)
{
    LostFile bench;
    bench.file("lamp.hex", ":0100000001AA\n:0100010001AA\n:0100020001AA\n:00000001FF\n");
    bench.dialogs.replies = {Reply::ok, Reply::ok, Reply::ok, Reply::no};
    bench.expect_kept("The checksum is incorrect:\n\n:0100000001AA");
}

TEST(AReloadThatFails, ForItsNumberKeepsTheBufferToo)
{
    LostFile bench;
    load_increase_settings(bench.shell);
    bench.form.text_box("texAuto_Increase", 0).set_text("0011");
    bench.form.text_box("texAuto_Increase", 1).set_text("2");
    bench.form.text_box("texAuto_Increase", 2).set_text("7");
    bench.form.check_box("cheAuto_Increase").set_value(true);
    cheAuto_Increase_Click(bench.shell);
    ASSERT_EQ(bench.code.data[0x11], 7);
    bench.form.text_box("texAuto_Increase", 2).set_text("99999999");
    EXPECT_FALSE(reload_code_file(bench.shell));
    EXPECT_EQ(bench.box_text(0), "The number of bytes is too small.");
    EXPECT_EQ(bench.code.data[0x11], 7);
}

TEST(AReload, StampsTheNumberThatIsSetIntoTheFreshImage)
{
    LostFile bench;
    load_increase_settings(bench.shell);
    bench.form.text_box("texAuto_Increase", 0).set_text("0011");
    bench.form.text_box("texAuto_Increase", 1).set_text("2");
    bench.form.text_box("texAuto_Increase", 2).set_text("7");
    bench.form.check_box("cheAuto_Increase").set_value(true);
    cheAuto_Increase_Click(bench.shell);
    EXPECT_TRUE(reload_code_file(bench.shell));
    EXPECT_EQ(bench.code.data[0x11], 7);
    EXPECT_TRUE(bench.form.check_box("cheAuto_Increase").value());
    EXPECT_TRUE(bench.shell.code_increase.valid);
    EXPECT_TRUE(bench.dialogs.shown.empty());
}

TEST(ReloadCodeFile, LoadsWhatTheFileHoldsNow)
{
    Bench bench{"Juniper-60"};
    bench.form.check_box("cheClearAP_Buffer").set_value(true);
    bench.dialogs.choices.push_back(bench.file("lamp.bin", "old"));
    comLoadFile_Click(bench.shell);
    bench.file("lamp.bin", "new");
    reload_code_file(bench.shell);
    EXPECT_EQ(bench.code.data[0], 'n');
}
