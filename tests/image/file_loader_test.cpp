#include "image/file_loader.h"

#include "image/bench.h"

using namespace vrk;
using image_test::Bench;
using image_test::fixture;

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
    EXPECT_EQ(bench.form.Frame7.caption(), "Program File: /old.hex");
    EXPECT_EQ(stored(bench, "FilePath"), "/old.hex");
}

TEST(ChooseFile, AChoiceIsShownAndStoredAtOnce)
{
    Bench bench{"Juniper-60Q"};
    bench.dialogs.choices = {"/a/code.hex", "/a/data.hex"};
    EXPECT_EQ(choose_file(bench.shell, BufferKind::code), "/a/code.hex");
    EXPECT_EQ(choose_file(bench.shell, BufferKind::data), "/a/data.hex");
    EXPECT_EQ(bench.form.Frame7.caption(), "Program File: /a/code.hex");
    EXPECT_EQ(bench.form.frmDataFlash.caption(), "Data File: /a/data.hex");
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

TEST(LoadFile, AnEmptyPathDoesNothing)
{
    Bench bench{"Juniper-60"};
    fill_buffer(0x31, bench.code);
    EXPECT_FALSE(load_file(bench.shell, "", bench.code));
    EXPECT_EQ(bench.code.data[0], 0x31);
    EXPECT_FALSE(bench.shell.file_loaded);
}

TEST(LoadFile, ASecondExtensionBehindHexStillIsIntelHex)
{
    Bench bench{"Juniper-60"};
    load_file(bench.shell, bench.file("lamp.hex.bak", image_test::hex_line(0, {0x5A}) + "loose text\n"), bench.code);
    EXPECT_EQ(bench.code.data[0], 0x5A);
}

TEST(LoadFile, AFolderNamedHexMakesEveryFileInItIntelHex)
{
    Bench bench{"Juniper-60"};
    std::filesystem::create_directories(bench.folder + "/out.Hex");
    load_file(bench.shell, bench.file("out.Hex/lamp.bin", "loose text\n" + image_test::hex_line(0, {0x5A})), bench.code);
    EXPECT_EQ(bench.code.data[0], 0x5A);
}

TEST(LoadFile, ABinaryNameWithThreeColonLinesLoadsAsIntelHex)
{
    Bench bench{"Juniper-60"};
    load_file(bench.shell, fixture("three_colon_lines.bin"), bench.code);
    EXPECT_EQ(bench.code.data[0], 0x5A);
    EXPECT_EQ(bench.code.data[2], 0x5C);
}

TEST(LoadFile, AShortFileOfColonLinesAloneIsIntelHexToo)
{
    Bench bench{"Juniper-60"};
    load_file(bench.shell, fixture("two_colon_lines.dat"), bench.code);
    EXPECT_EQ(bench.code.data[0], 0x66);
}

TEST(LoadFile, AThirdLineOfTextMakesItBinary)
{
    Bench bench{"Juniper-60"};
    load_file(bench.shell, fixture("third_line_is_text.bin"), bench.code);
    EXPECT_EQ(bench.code.data[0], ':');
}

TEST(LoadFile, AHexFileLongerThanTheBufferIsReadToItsEnd)
{
    Bench bench{"Juniper-60"};
    const std::string comments(300'000, '\n');
    load_file(bench.shell, bench.file("late.hex", comments + image_test::hex_line(0x10, {0x42})), bench.code);
    EXPECT_EQ(bench.code.data[0x10], 0x42);
}

TEST(LoadFile, AMissingFileCountsAsAnEmptyOne)
{
    Bench bench{"Juniper-60"};
    EXPECT_TRUE(load_file(bench.shell, bench.folder + "/missing.hex", bench.code));
    EXPECT_TRUE(load_file(bench.shell, bench.folder + "/missing.bin", bench.code));
    EXPECT_TRUE(bench.dialogs.shown.empty());
    EXPECT_EQ(bench.code.high, 511);
    EXPECT_TRUE(bench.shell.file_loaded);
}

TEST(LoadFile, AFolderCountsAsAnEmptyFile)
{
    Bench bench{"Juniper-60"};
    EXPECT_TRUE(load_file(bench.shell, bench.folder, bench.code));
    EXPECT_EQ(bench.code.checksum, 0);
}

TEST(ReloadLastPath, TakesTheStoredPathOfTheCodeFile)
{
    Bench bench{"Juniper-60Q"};
    bench.settings.set("Settings", "FilePath", fixture("hundred_bytes.hex"));
    take_path(bench.shell, BufferKind::data, "/data.bin");
    EXPECT_TRUE(reload_last_path(bench.shell));
    EXPECT_EQ(bench.shell.loader.current_path, fixture("hundred_bytes.hex"));
    EXPECT_EQ(bench.form.Frame7.caption(), "Program File: " + fixture("hundred_bytes.hex"));
    EXPECT_TRUE(bench.dialogs.shown.empty());
}

TEST(ReloadLastPath, AFileThatIsGoneIsToldAndThePathStays)
{
    Bench bench{"Juniper-60"};
    take_path(bench.shell, BufferKind::code, bench.folder + "/gone.hex");
    EXPECT_FALSE(reload_last_path(bench.shell));
    bench.shell.language_is_english = true;
    EXPECT_FALSE(reload_last_path(bench.shell));
    EXPECT_EQ(bench.box_text(0), "Can not find the file./找不到文件");
    EXPECT_EQ(bench.box_text(1), "Can not find the file.");
    EXPECT_EQ(bench.shell.loader.current_path, bench.folder + "/gone.hex");
}

TEST(ReloadCodeFile, LoadsWhatTheFileHoldsNow)
{
    Bench bench{"Juniper-60"};
    bench.form.cheClearAP_Buffer.set_value(true);
    bench.dialogs.choices.push_back(bench.file("lamp.bin", "old"));
    comLoadFile_Click(bench.shell);
    bench.file("lamp.bin", "new");
    reload_code_file(bench.shell);
    EXPECT_EQ(bench.code.data[0], 'n');
}
