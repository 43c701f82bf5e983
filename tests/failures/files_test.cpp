// Loads and saves in which any one call to the outside fails: what stood there stays, or what was wanted stands there.
#include "failures/failing_line.h"

#include "image/project_format.h"
#include "platform/whole_file.h"
#include "shell/project.h"
#include "shell/start_up.h"

using namespace vrk;

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr const char* new_file_in_binary = "\1\2\3\4\5\6\7\10";
constexpr const char* new_file_in_hex = ":0400000001020304F2\r\n:0400040005060708DE\r\n:00000001FF\r\n";
const Bytes bytes_of_new_file{1, 2, 3, 4, 5, 6, 7, 8};

struct FileCase {
    std::string name;
    const char* button;
    const char* file_name;
    std::string text;
};
void PrintTo(const FileCase& what, std::ostream* to) { *to << what.name; }

Bytes beginning_of(const FileBuffer& buffer)
{
    return {buffer.data.begin(), buffer.data.begin() + static_cast<std::ptrdiff_t>(bytes_of_new_file.size())};
}

// The box about a file that could not be written says what stands there now.
void expect_old_or_new(
    const FailingLine& line, const FailingCalls& calls, const std::string& contents, const std::string& old)
{
    const bool is_new = contents != old;
    const std::string told = line.dialogs.shown.empty() ? "" : line.dialogs.shown.front().box.text;
    EXPECT_TRUE(is_new || !calls.failed().empty()) << "nothing has failed";
    EXPECT_TRUE(is_new || !told.empty()) << "nobody was told";
    EXPECT_TRUE(!is_new || told.empty() || told.starts_with("The file is written, but the disk has not confirmed it;"))
        << told;
}

void tell_load(const FileCase& what, FailingCalls& calls)
{
    const OwnFolder folder("failures");
    SettingsOnDisk store;
    FailingLine line("Juniper-60Q", calls, store, folder);
    const bool is_code = std::string_view{what.button} == "comLoadFile";
    const FileBuffer& buffer = is_code ? line.shell.code_buffer : line.shell.data_buffer;
    const std::string old_bytes = text_of(Bench::pattern(0x300));
    line.open_by_hand("comLoadFile", folder.file("code.bin", old_bytes));
    line.open_by_hand("comLoadDataFile", folder.file("data.bin", old_bytes));
    const std::string path = folder.file(what.file_name, what.text);
    line.dialogs.shown.clear();
    const auto before = buffer.data;
    calls.counting = true;
    line.open_by_hand(what.button, path);
    calls.counting = false;

    const bool loaded = beginning_of(buffer) == bytes_of_new_file;
    const bool was_told = !line.dialogs.shown.empty();
    EXPECT_TRUE(line.shell.file_loaded);
    EXPECT_TRUE(loaded || (buffer.data == before && was_told));
    const std::string& named = line.form.frame(is_code ? "Frame7" : "frmDataFlash").caption();
    EXPECT_TRUE(named.ends_with(loaded ? path : folder.path + (is_code ? "/code.bin" : "/data.bin"))) << named;
    EXPECT_EQ(was_told, !calls.failed().empty());
    EXPECT_FALSE(line.dialogs.busy);

    line.dialogs.shown.clear();
    line.open_by_hand(what.button, path);
    EXPECT_EQ(beginning_of(buffer), bytes_of_new_file) << "the next try";
    EXPECT_TRUE(line.dialogs.shown.empty());
    EXPECT_EQ(store.on_disk("Settings", is_code ? "FilePath" : "DataFilePath"), path);
}

// Over a project of before; the folder lies beside the program and is tried at each press.
void tell_project_save(FailingCalls& calls)
{
    const OwnFolder folder("failures");
    SettingsOnDisk store;
    FailingLine line("Juniper-60Q", calls, store, folder);
    line.shell.loader.application_dir = folder.path;
    line.open_by_hand("comLoadFile", folder.file("code.bin", text_of(Bench::pattern(0x300))));
    const std::string path = folder.path + "/job.VRK";
    line.open_by_hand("comSaveBatchFile", path);
    const std::string before = contents_of(path);
    const std::size_t files_before = folder.files();
    line.form.option("optAuto_Increase", 0).set_value(true);
    line.form.option("optAuto_Increase", 2).set_value(true);
    calls.counting = true;
    line.open_by_hand("comSaveBatchFile", path);
    calls.counting = false;
    expect_old_or_new(line, calls, contents_of(path), before);
    EXPECT_TRUE(parse_project(contents_of(path)).code.sum_is_right);
    EXPECT_EQ(folder.files(), files_before) << "nothing is left over";

    line.dialogs.shown.clear();
    line.open_by_hand("comSaveBatchFile", path);
    EXPECT_NE(contents_of(path), before) << "the next press";
    EXPECT_TRUE(line.dialogs.shown.empty());
}

void tell_store(FailingCalls& calls)
{
    const OwnFolder folder("failures");
    SettingsOnDisk store;
    FailingLine line("Juniper-60Q", calls, store, folder);
    line.open_by_hand("comLoadFile", folder.file("code.bin", text_of(Bench::pattern(0x300))));
    line.form.text_box("txt_length").set_text("200");
    const std::string path = folder.file("range.bin", "of before");
    const std::size_t files_before = folder.files();
    calls.counting = true;
    line.open_by_hand("comStoreFile", path);
    calls.counting = false;
    expect_old_or_new(line, calls, contents_of(path), "of before");
    EXPECT_EQ(folder.files(), files_before) << "nothing is left over";

    line.dialogs.shown.clear();
    line.open_by_hand("comStoreFile", path);
    EXPECT_EQ(contents_of(path), text_of(Bench::pattern(0x300)).substr(0, 0x200)) << "the next press";
    EXPECT_TRUE(line.dialogs.shown.empty());
}

void tell_project_opening(FailingCalls& calls)
{
    const OwnFolder folder("failures");
    SettingsOnDisk store;
    FailingLine line("Juniper-60Q", calls, store, folder);
    line.shell.loader.application_dir = folder.path;
    line.open_by_hand("comLoadFile", folder.file("code.bin", text_of(Bench::pattern(0x300, 7))));
    const std::string path = folder.path + "/job.VRK";
    line.open_by_hand("comSaveBatchFile", path);
    const auto project_image = line.shell.code_buffer.data;
    line.select("Juniper-8");
    line.open_by_hand("comLoadFile", folder.file("other.bin", text_of(Bench::pattern(0x300, 8))));
    const auto image_before = line.shell.code_buffer.data;
    calls.counting = true;
    line.open_by_hand("comOpenBatchFile", path);
    calls.counting = false;

    const bool opened = line.shell.code_buffer.data == project_image;
    EXPECT_EQ(line.shell.selected.mcu_name, opened ? "Juniper-60Q" : "Juniper-8");
    EXPECT_TRUE(opened || line.shell.code_buffer.data == image_before);
    EXPECT_EQ(opened, line.dialogs.shown.empty());
    EXPECT_TRUE(opened || !calls.failed().empty());

    line.dialogs.shown.clear();
    line.open_by_hand("comOpenBatchFile", path);
    EXPECT_EQ(line.shell.code_buffer.data, project_image) << "the next press";
    EXPECT_TRUE(line.dialogs.shown.empty());
}

class LoadWithAFailingCall : public ::testing::TestWithParam<FileCase> { };

} // namespace

TEST_P(LoadWithAFailingCall, BringsTheFileWholeOrTellsAndLeavesTheBuffer)
{
    fail_each_call([](FailingCalls& calls) { tell_load(GetParam(), calls); }, 3);
}

INSTANTIATE_TEST_SUITE_P(Of, LoadWithAFailingCall,
    ::testing::Values(FileCase{"CodeInHex", "comLoadFile", "new.hex", new_file_in_hex},
        FileCase{"CodeInHexUnderAnotherName", "comLoadFile", "new.txt", new_file_in_hex},
        FileCase{"CodeInHexBehindAMark", "comLoadFile", "new.hex", "\xEF\xBB\xBF" + std::string{new_file_in_hex}},
        FileCase{"CodeInBinary", "comLoadFile", "new.bin", new_file_in_binary},
        FileCase{"DataInHex", "comLoadDataFile", "new.hex", new_file_in_hex},
        FileCase{"DataInBinary", "comLoadDataFile", "new.bin", new_file_in_binary}),
    [](const auto& row) { return row.param.name; });

TEST(SaveWithAFailingCall, LeavesTheOldProjectOrTheNewOneAndSaysWhich) { fail_each_call(tell_project_save, 4); }

TEST(SaveWithAFailingCall, LeavesTheOldFileOrTheNewRangeAndSaysWhich) { fail_each_call(tell_store, 4); }

TEST(OpenProjectWithAFailingCall, BringsTheWholeJobOrTellsAndLeavesTheOneBefore)
{
    fail_each_call(tell_project_opening, 2);
}

// What lies only in the system's memory is gone with the power: the new bytes are on the disk before the old file
// leaves its place, and so is the place before anybody is told.
TEST(AWholeFile, IsFlushedBeforeItTakesItsPlaceAndItsFolderBehind)
{
    const OwnFolder folder("failures");
    const std::string path = folder.file("settings.ini", "old");
    std::vector<std::string> calls;
    const FailingFiles recorder(folder.path, [&calls](const char* call) {
        calls.emplace_back(call);
        return false;
    });
    const Bytes bytes{'n', 'e', 'w'};
    EXPECT_FALSE(write_whole_file(path, bytes));
    std::erase_if(calls, [](const std::string& call) { return call.starts_with("open"); });
    EXPECT_EQ(calls, (std::vector<std::string>{"write", "fsync", "close", "rename", "fsync", "close"}));
    EXPECT_EQ(contents_of(path), "new");
}
