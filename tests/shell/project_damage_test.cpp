// A damaged project: a message or a silence that is meant, and no setting that the file does not hold.
#include "project_bench.h"

#include <set>

using namespace vrk;

namespace {

using State = std::map<std::string, std::string>;

// A small project of a model with all that a project can have.
std::string small_project(ProjectBench& bench)
{
    bench.open_code({0x02, 0x00, 0x30, 0xA5});
    bench.open_data({0x0C, 0x01});
    bench.turn_all_options();
    bench.fill_in_numbers();
    bench.shell.code_buffer.view_high = 3;
    bench.shell.data_buffer.view_high = 1;
    bench.save();
    return bench.saved();
}

// What stands in the file, as values.
std::set<std::string> values_in(std::string_view text)
{
    std::set<std::string> values;
    for (const ProjectValue& value : parse_project(text).values)
        values.insert(value.value);
    return values;
}

// What a control may hold afterwards: what it held before, what the panel gives the model, what was saved, and what
// stands in the damaged file.
struct Allowed {
    State before;
    State fresh;
    State whole;

    void check(const State& now, const std::string& damaged, const std::string& where) const
    {
        std::optional<std::set<std::string>> in_file;
        for (const auto& [name, text] : now) {
            if (text == whole.at(name) || text == before.at(name) || text == fresh.at(name))
                continue;
            if (!in_file)
                in_file = values_in(damaged);
            const bool length_label = name.starts_with("Label7"); // counts the bytes
            // A divider that has become another number is chosen by it.
            const bool divider = name.starts_with("comWDT_Prescalar");
            EXPECT_TRUE(in_file->contains(text) || length_label || divider) << where << ": " << name << " = " << text;
        }
    }
};

class DamagedProjectFile : public ::testing::Test {
protected:
    ProjectBench bench{"Juniper-60Q", false};
    const std::string text = small_project(bench);
    Allowed allowed;

    void SetUp() override
    {
        bench.open();
        allowed.whole = bench.state();
        bench.open_text("VER: 1.2\r\nMCU_Type: Juniper-60Q\r\nEND\r\n");
        allowed.fresh = bench.state();
        another_job();
        allowed.before = bench.state();
        bench.dialogs.shown.clear();
    }
    void another_job()
    {
        bench.open_text("VER: 1.2\r\nMCU_Type: Hazel-6\r\nFile_Name: Program File: /jobs/other.hex\r\n"
                        "Auto_Increase_Next: 5555\r\nHalf_Gain_YES: True\r\nbuffer_check_sum: 3\r\nEND\r\n0102\r\n");
    }

    // Opens it over another job. True: a box was shown.
    bool told_of(const std::string& damaged, const std::string& where)
    {
        another_job();
        bench.dialogs.shown.clear();
        bench.open_text(damaged);
        allowed.check(bench.state(), damaged, where);
        return !bench.dialogs.shown.empty();
    }
    bool opened_whole() const
    {
        const auto& code = bench.shell.code_buffer;
        const auto& data = bench.shell.data_buffer;
        return bench.shell.file_loaded && data.loaded && code.data[0] == 2 && code.data[2] == 0x30 &&
            code.data[3] == 0xA5 && data.data[0] == 0x0C && data.data[1] == 1;
    }
};

} // namespace

TEST_F(DamagedProjectFile, WholeIsOpenedInSilence)
{
    EXPECT_FALSE(told_of(text, "whole"));
    EXPECT_TRUE(opened_whole());
}

// Silent only where nothing is lost: in the closing word, or between the images, where the file is a whole project
// without an EEPROM image.
TEST_F(DamagedProjectFile, CutOffAtEveryByteIsTold)
{
    const std::size_t code_end = text.find("\r\nData_File_Begin:");
    const std::size_t data_begin = code_end + 2;
    const std::size_t data_end = text.find("\r\nData_File_End");
    for (std::size_t length = 0; length < text.size(); ++length) {
        const bool told = told_of(text.substr(0, length), "cut at " + std::to_string(length));
        const bool silent = (length >= code_end && length <= data_begin) || length >= data_end;
        EXPECT_EQ(told, !silent) << length;
    }
}

TEST_F(DamagedProjectFile, WithEverySingleByteDamagedChangesNothingElse)
{
    for (std::size_t at = 0; at < text.size(); ++at) {
        for (const char byte : {'X', '7', '\n'}) {
            std::string damaged = text;
            damaged[at] = byte;
            const std::string where = "byte " + std::to_string(at) + " is " + std::to_string(byte);
            const bool told = told_of(damaged, where);
            EXPECT_TRUE(told || opened_whole()) << where;
        }
    }
}

TEST_F(DamagedProjectFile, MegabytesInOneLineAreToldOf)
{
    const std::string megabytes(5U << 20U, '1');
    std::string long_code = text;
    long_code.insert(long_code.find("END\r\n") + 5, megabytes);
    EXPECT_TRUE(told_of(long_code, "long code"));
    EXPECT_EQ(bench.shell.code_buffer.high, FileBuffer::code_last);
    std::string long_name = text;
    long_name.insert(long_name.find("File_Name: ") + 11, megabytes);
    EXPECT_FALSE(told_of(long_name, "long name"));
    EXPECT_EQ(bench.form.frame("Frame7").caption(), "Program File: ") << "no path is that long";
}
