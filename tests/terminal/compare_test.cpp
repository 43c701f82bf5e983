// What a target has dumped, against the code. The questions are answered beforehand.
#include "terminal/compare.h"

#include "written_report.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace vrk {
namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr const char* question = "\n\n不相等的单元已达 100 个， 继续比较请输入 Y";

struct CompareTest : testing::Test {
    void compare(const Bytes& received, const Bytes& code)
    {
        ring.push(received);
        compare_with_code(ring, code, "08:15:30", report);
    }
    long differences() const
    {
        return std::count_if(report.lines.begin(), report.lines.end(),
            [](const std::string& line) { return line.starts_with("地址: "); });
    }
    std::vector<std::string> last_lines() const
    {
        const auto count = std::min<std::size_t>(report.lines.size(), 3);
        return {report.lines.end() - static_cast<std::ptrdiff_t>(count), report.lines.end()};
    }
    void expect_equal(const std::string& last) const
    {
        EXPECT_EQ(report.lines,
            (std::vector<std::string>{"比较完毕，比较范围: 0000H -- " + last + "H", "          时    间: 08:15:30",
                "MCU AP 区的内容与程序文件缓冲区一致。"}));
    }
    void expect_unequal(const std::string& last) const
    {
        EXPECT_EQ(last_lines(),
            (std::vector<std::string>{"比较范围: 0000H -- " + last + "H", "          时    间: 08:15:30",
                "MCU AP 区的内容与程序文件缓冲区不相等。"}));
    }

    CompareRing ring;
    WrittenReport report;
};

} // namespace

TEST_F(CompareTest, SaysThatAllIsEqual)
{
    Bytes code(0x1234);
    for (std::size_t i = 0; i < code.size(); ++i)
        code[i] = static_cast<std::uint8_t>(i * 7);
    compare(code, code);
    expect_equal("1233");
    EXPECT_TRUE(report.boxes.empty());
}

TEST_F(CompareTest, LooksAtOneByteOfACodeOfOneByte)
{
    compare({0x5A, 0x77}, {0x5A});
    expect_equal("0000");
}

TEST_F(CompareTest, TellsEachDifference)
{
    compare({0x00, 0xFF, 0x02, 0x0A}, {0x00, 0x01, 0x02, 0xB0});
    ASSERT_EQ(report.lines.size(), 5U);
    EXPECT_EQ(report.lines[0], "地址: 0001H;  文件缓冲区: 01;  MCU: FF");
    EXPECT_EQ(report.lines[1], "地址: 0003H;  文件缓冲区: B0;  MCU: 0A");
    expect_unequal("0003");
}

TEST_F(CompareTest, AsksNothingOfAHundredDifferences)
{
    compare(Bytes(100, 0x11), Bytes(100, 0x22));
    EXPECT_EQ(differences(), 100);
    EXPECT_TRUE(report.boxes.empty());
    expect_unequal("0063");
}

TEST_F(CompareTest, AsksAtTheNextOneAndLeavesWhenTheAnswerIsNo)
{
    compare(Bytes(5000, 0x11), Bytes(5000, 0x22));
    EXPECT_EQ(differences(), 101);
    EXPECT_EQ(report.boxes, std::vector<std::string>{question});
    expect_unequal("1387");
}

TEST_F(CompareTest, GoesOnForAnotherHundredAndOneWhenTheAnswerIsYes)
{
    report.answers = {true};
    compare(Bytes(5000, 0x11), Bytes(5000, 0x22));
    EXPECT_EQ(differences(), 202);
    EXPECT_EQ(report.boxes.size(), 2U);
    expect_unequal("1387");
}

// The count that the answer sets to nothing is that of the next question, not the verdict.
TEST_F(CompareTest, StillSaysUnequalWhenTheRestBehindTheAnswerIsEqual)
{
    report.answers = {true};
    Bytes received(4096, 0x22);
    std::fill_n(received.begin(), 101, std::uint8_t{0x11});
    compare(received, Bytes(4096, 0x22));
    EXPECT_EQ(differences(), 101);
    expect_unequal("0FFF");
}

TEST_F(CompareTest, TakesWhatDidNotComeForADifference)
{
    compare({0x01, 0x02}, {0x01, 0x02, 0x03});
    EXPECT_EQ(report.lines.front(), "地址: 0002H;  文件缓冲区: 03;  MCU: 00");
    expect_unequal("0002");
}

// Where nothing came the array holds zeros: a code that ends in zeros would pass for received.
TEST_F(CompareTest, TakesAZeroThatDidNotComeForADifferenceToo)
{
    compare({0x01, 0x02}, {0x01, 0x02, 0x00});
    EXPECT_EQ(report.lines.front(), "地址: 0002H;  文件缓冲区: 00;  MCU: --");
    expect_unequal("0002");
}

TEST_F(CompareTest, LooksAtAllOfTheLargestCode)
{
    Bytes code(0x10000, 0x00);
    code.back() = 0x01;
    compare(Bytes(0x10000, 0x00), code);
    EXPECT_EQ(report.lines.front(), "地址: FFFFH;  文件缓冲区: 01;  MCU: 00");
    expect_unequal("FFFF");
}

} // namespace vrk
