#include "image/project_format.h"

#include "image/file_buffer.h"

#include <gtest/gtest.h>

#include <numeric>

using namespace vrk;

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::size_t code_size = std::size_t{FileBuffer::code_last} + 1;
constexpr std::size_t data_size = std::size_t{FileBuffer::data_last} + 1;

const Bytes code{0x02, 0x00, 0x30, 0xFF, 0xA5};
const Bytes data{0x0C, 0x00, 0x10};
const std::vector<ProjectValue> values{{"MCU_Type", "Juniper-60Q"}, {"File_Name", "Program File: /jobs/a:b.hex"}};

constexpr std::string_view whole_text = "VER: 1.2\r\n"
                                        "MCU_Type: Juniper-60Q\r\n"
                                        "File_Name: Program File: /jobs/a:b.hex\r\n"
                                        "buffer_check_sum: 470\r\n"
                                        "END\r\n"
                                        "020030FFA5\r\n"
                                        "Data_File_Begin:\r\n"
                                        "data_buffer_check_sum: 28\r\n"
                                        "0C0010\r\n"
                                        "Data_File_End\r\n";

std::string with_code_line(std::string_view line, std::string_view sum)
{
    return "VER: 1.2\r\nMCU_Type: Hazel-1\r\nbuffer_check_sum: " + std::string{sum} + "\r\nEND\r\n" +
        std::string{line} + "\r\n";
}
Bytes code_read(std::string_view line) { return parse_project(with_code_line(line, "0")).code.bytes; }

// What must hold whatever was read.
void expect_in_bounds(const Project& project)
{
    EXPECT_LE(project.code.bytes.size(), code_size);
    EXPECT_LE(project.data.bytes.size(), data_size);
    EXPECT_LE(project.values.size(), 1000U);
    EXPECT_TRUE(project.code.found || !project.code.sum_is_right);
    EXPECT_TRUE(project.data.found || !project.data.sum_is_right);
}

} // namespace

// ---- writing

TEST(ProjectText, IsWrittenToTheByte) { EXPECT_EQ(project_text({values, code, data}), whole_text); }

TEST(ProjectText, WithoutEepromDataEndsBehindTheCodeLine)
{
    const std::string text = project_text({values, code, std::nullopt});
    EXPECT_EQ(text, whole_text.substr(0, whole_text.find("Data_File_Begin:")));
    EXPECT_TRUE(text.ends_with("020030FFA5\r\n"));
}

TEST(ProjectText, TellsTheWholeSumOfALargeImage)
{
    const Bytes large(0x10000, 0xFF);
    EXPECT_NE(project_text({{}, large, std::nullopt}).find("buffer_check_sum: 16711680\r\n"), std::string::npos);
}

TEST(ProjectText, AFileNameWithLineEndsStaysOnOneLine)
{
    const std::string text = project_text({{{"File_Name", "Program File: a\r\nEND\n00"}}, code, std::nullopt});
    EXPECT_NE(text.find("File_Name: Program File: a  END 00\r\n"), std::string::npos);
    EXPECT_EQ(parse_project(text).code.bytes, code);
}

// ---- reading

TEST(ProjectReader, TakesBackWhatWasWritten)
{
    const Project project = parse_project(whole_text);
    EXPECT_EQ(project.version, Project::Version::good);
    EXPECT_EQ(
        project.values, (std::vector<ProjectValue>{{"VER", "1.2"}, values[0], values[1], {"buffer_check_sum", "470"}}));
    EXPECT_EQ(project.code.bytes, code);
    EXPECT_TRUE(project.code.sum_is_right);
    EXPECT_TRUE(project.has_data);
    EXPECT_EQ(project.data.bytes, data);
    EXPECT_TRUE(project.data.sum_is_right);
}

TEST(ProjectReader, TheKeyEndsAtTheFirstColonAndTheValueIsTrimmed)
{
    const Project project = parse_project("VER: 1.2\r\nFile_Name:  Data: x:y  \t\r\nNo_Value:\r\nEND\r\n");
    EXPECT_EQ(*project.find("File_Name"), "Data: x:y");
    EXPECT_EQ(*project.find("No_Value"), "");
    EXPECT_EQ(project.find("Missing"), nullptr);
}

TEST(ProjectReader, OfAKeyThatStandsTwiceTheFirstIsFound)
{
    EXPECT_EQ(*parse_project("VER: 1.2\nMCU_Type: A\nMCU_Type: B\nEND\n").find("MCU_Type"), "A");
}

TEST(ProjectReader, LineEndsOfOtherSystemsAndAByteOrderMarkAreTaken)
{
    const Project project = parse_project("\xEF\xBB\xBFVER: 1.2\nMCU_Type: Hazel-1\nbuffer_check_sum: 3\nend\n0102\n");
    EXPECT_EQ(project.version, Project::Version::good);
    EXPECT_EQ(project.code.bytes, (Bytes{1, 2}));
    EXPECT_TRUE(project.code.sum_is_right);
    EXPECT_FALSE(project.has_data);
}

TEST(ProjectReader, AVersionBelow1_2IsRefusedALaterOneIsNot)
{
    EXPECT_EQ(parse_project("VER: 1.1\r\n").version, Project::Version::refused);
    EXPECT_EQ(parse_project("VER: one\r\n").version, Project::Version::refused);
    EXPECT_EQ(parse_project("VER:\r\n").version, Project::Version::refused);
    EXPECT_EQ(parse_project("VER: 1.2\r\n").version, Project::Version::good);
    EXPECT_EQ(parse_project("VER: 1.3\r\n").version, Project::Version::good);
}

TEST(ProjectReader, WithoutAVersionInFrontTheFileIsOldAndHasNoEepromImage)
{
    const Project project =
        parse_project("MCU_Type: Birch-4\r\nVER: 1.2\r\nbuffer_check_sum: 1\r\nEND\r\n01\r\nData_File_Begin:\r\n"
                      "data_buffer_check_sum: 1\r\n01\r\n");
    EXPECT_EQ(project.version, Project::Version::old);
    EXPECT_EQ(project.code.bytes, Bytes{1});
    EXPECT_FALSE(project.has_data);
    EXPECT_EQ(parse_project("").version, Project::Version::old);
}

TEST(ProjectReader, TheLastSingleDigitOfALineIsAByte)
{
    EXPECT_EQ(code_read("ABC"), (Bytes{0xAB, 0x0C}));
    EXPECT_EQ(code_read("7"), Bytes{0x07});
    EXPECT_TRUE(parse_project(with_code_line("01F", "16")).code.sum_is_right);
}

TEST(ProjectReader, InAPairDigitsEndAtTheFirstOtherCharacter)
{
    EXPECT_EQ(code_read("1GG1zz0fF0"), (Bytes{0x01, 0x00, 0x00, 0x0F, 0xF0}));
    EXPECT_EQ(code_read("01x"), (Bytes{0x01, 0x00}));
    EXPECT_EQ(code_read(std::string_view{"0\0\xFF\xFF", 4}), (Bytes{0x00, 0x00}));
}

TEST(ProjectReader, WhatIsNoDigitIsNeverRight)
{
    EXPECT_FALSE(parse_project(with_code_line("01GG02", "3")).code.sum_is_right);
    EXPECT_FALSE(parse_project(with_code_line("0102 ", "3")).code.sum_is_right);
    EXPECT_TRUE(parse_project(with_code_line("01fF02", "258")).code.sum_is_right);
}

TEST(ProjectReader, AWrongSumIsSeen)
{
    EXPECT_TRUE(parse_project(with_code_line("0102", "3")).code.sum_is_right);
    EXPECT_FALSE(parse_project(with_code_line("0102", "4")).code.sum_is_right);
    EXPECT_FALSE(parse_project(with_code_line("0102", "3x")).code.sum_is_right);
    EXPECT_FALSE(parse_project(with_code_line("0102", "")).code.sum_is_right);
    EXPECT_FALSE(parse_project("VER: 1.2\r\nEND\r\n00\r\n").code.sum_is_right) << "without a sum nothing is right";
}

TEST(ProjectReader, AnImageThatIsMissingIsNotFound)
{
    EXPECT_FALSE(parse_project("VER: 1.2\r\nbuffer_check_sum: 0\r\n").code.found);
    EXPECT_FALSE(parse_project("VER: 1.2\r\nbuffer_check_sum: 0\r\nEND").code.found);
    EXPECT_FALSE(parse_project("VER: 1.2\r\nbuffer_check_sum: 0\r\nEND\r\n").code.found);
    EXPECT_FALSE(parse_project("VER: 1.2\r\nbuffer_check_sum: 0\r\nEND\r\n").code.sum_is_right);
}

TEST(ProjectReader, BlankLinesBehindTheCodeAreNoEepromImage)
{
    EXPECT_FALSE(parse_project(with_code_line("0102", "3") + "\r\n \r\n").has_data);
}

TEST(ProjectReader, AnEepromPartThatBreaksOffIsWrong)
{
    const Project project = parse_project(with_code_line("0102", "3") + "Data_File_Begin:\r\ndata_buffer");
    EXPECT_TRUE(project.code.sum_is_right);
    EXPECT_TRUE(project.has_data);
    EXPECT_FALSE(project.data.found);
    EXPECT_FALSE(project.data.sum_is_right);
}

TEST(ProjectReader, AnImageIsCutAtTheEndOfItsBuffer)
{
    const Project full = parse_project(with_code_line(std::string(code_size * 2, '0'), "0"));
    EXPECT_EQ(full.code.bytes.size(), code_size);
    EXPECT_TRUE(full.code.sum_is_right);

    const Project over = parse_project(with_code_line(std::string(code_size * 2 + 1, '0'), "0"));
    EXPECT_EQ(over.code.bytes.size(), code_size);
    EXPECT_FALSE(over.code.sum_is_right) << "something was lost";

    const Project data_over =
        parse_project(with_code_line("00", "0") + "Data_File_Begin:\r\ndata_buffer_check_sum: 0\r\n" +
            std::string(data_size * 2 + 2, '0') + "\r\nData_File_End\r\n");
    EXPECT_EQ(data_over.data.bytes.size(), data_size);
    EXPECT_FALSE(data_over.data.sum_is_right);
}

TEST(ProjectReader, MegabytesInOneLineAreRead)
{
    const std::string megabytes(8U << 20U, 'F');
    EXPECT_EQ(parse_project(with_code_line(megabytes, "1")).code.bytes.size(), code_size);
    EXPECT_TRUE(parse_project(megabytes).values.empty());
    EXPECT_EQ(parse_project("VER: 1.2\r\nFile_Name: " + megabytes + "\r\nEND\r\n").find("File_Name"), nullptr);
    EXPECT_EQ(
        *parse_project("VER: 1.2\r\n" + megabytes + "\r\nMCU_Type: Hazel-1\r\nEND\r\n").find("MCU_Type"), "Hazel-1");
}

TEST(ProjectReader, AMillionLinesStayFewValues)
{
    std::string lines = "VER: 1.2\r\n";
    for (int i = 0; i < 1'000'000; ++i)
        lines += ":\n";
    const Project project = parse_project(lines + "END\r\n01\r\n");
    expect_in_bounds(project);
    EXPECT_EQ(project.code.bytes, Bytes{1});
}

TEST(ProjectReader, BinaryRubbishHoldsNothing)
{
    Bytes rubbish(100'000);
    std::uint32_t state = 7;
    for (std::uint8_t& byte : rubbish) {
        state = state * 1664525U + 1013904223U;
        byte = static_cast<std::uint8_t>(state >> 24);
    }
    const Project project = parse_project({reinterpret_cast<const char*>(rubbish.data()), rubbish.size()});
    expect_in_bounds(project);
    EXPECT_EQ(project.find("MCU_Type"), nullptr);
    EXPECT_FALSE(project.code.sum_is_right);
}

// ---- damage

// The end of the last line and of the closing word may be missing: all that counts has been read by then.
TEST(DamagedProject, CutOffAnywhereIsNoticed)
{
    const std::size_t code_end = whole_text.find("020030FFA5") + 10;
    const std::size_t data_begin = whole_text.find("Data_File_Begin:");
    const std::size_t data_end = whole_text.find("0C0010") + 6;
    for (std::size_t length = 0; length < whole_text.size(); ++length) {
        const Project project = parse_project(whole_text.substr(0, length));
        expect_in_bounds(project);
        EXPECT_EQ(project.code.sum_is_right, length >= code_end) << length;
        EXPECT_EQ(project.has_data, length > data_begin) << length;
        EXPECT_EQ(project.data.sum_is_right, length >= data_end) << length;
        EXPECT_TRUE(
            std::equal(project.code.bytes.begin(), project.code.bytes.end(), code.begin()) || length < code_end);
    }
}

// One digit more at the end, in place of a line end, is a byte of its own.
bool same_but_for_a_zero(const Bytes& read, Bytes written)
{
    written.resize(std::max(read.size(), written.size()), 0);
    return read == written && read.size() <= code.size() + 1;
}

// Whatever one byte has become, no image passes for right that is not the one written, and every value that the reader
// tells stands in the file.
TEST(DamagedProject, NoSingleByteMakesAWrongImageRight)
{
    for (std::size_t at = 0; at < whole_text.size(); ++at) {
        for (int byte = 0; byte < 256; ++byte) {
            std::string text{whole_text};
            text[at] = static_cast<char>(byte);
            const Project project = parse_project(text);
            expect_in_bounds(project);
            EXPECT_TRUE(!project.code.sum_is_right || same_but_for_a_zero(project.code.bytes, code))
                << at << " " << byte;
            EXPECT_TRUE(!project.data.sum_is_right || same_but_for_a_zero(project.data.bytes, data))
                << at << " " << byte;
            for (const ProjectValue& value : project.values) {
                EXPECT_NE(text.find(value.key), std::string::npos);
                EXPECT_NE(text.find(value.value), std::string::npos);
            }
        }
    }
}
