// Loads and saves in which any one call to the outside fails: what stood there stays, or what was wanted stands there.
#include "failures/failing_line.h"

#include "image/project_format.h"
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

void tell_load(const FileCase& what, FailingCalls& calls)
{
    const OwnFolder folder;
    SettingsOnDisk store;
    FailingLine line("Juniper-60Q", calls, store, folder.path);
    const bool is_code = std::string_view{what.button} == "comLoadFile";
    const FileBuffer& buffer = is_code ? line.shell.code_buffer : line.shell.data_buffer;
    const Bytes old_bytes = Bench::pattern(0x300);
    line.open_by_hand("comLoadFile", line.write_code("code.bin", old_bytes));
    line.open_by_hand("comLoadDataFile", line.write_code("data.bin", old_bytes));
    const std::string path = line.write_code(what.file_name, {what.text.begin(), what.text.end()});
    line.dialogs.shown.clear();
    const auto before = buffer.data;
    calls.counting = true;
    line.open_by_hand(what.button, path);
    calls.counting = false;

    const bool loaded = beginning_of(buffer) == bytes_of_new_file;
    const bool was_told = !line.dialogs.shown.empty();
    EXPECT_TRUE(line.shell.file_loaded);
    EXPECT_TRUE(loaded || (buffer.data == before && was_told));
    EXPECT_EQ(was_told, !calls.failed().empty());
    EXPECT_FALSE(line.dialogs.busy);

    line.dialogs.shown.clear();
    line.open_by_hand(what.button, path);
    EXPECT_EQ(beginning_of(buffer), bytes_of_new_file) << "the next try";
    EXPECT_TRUE(line.dialogs.shown.empty());
    EXPECT_EQ(store.on_disk("Settings", is_code ? "FilePath" : "DataFilePath"), path);
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
