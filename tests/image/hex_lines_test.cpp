#include "image/hex_lines.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

using namespace vrk;

namespace {

std::vector<std::string> lines_of(const std::string& contents)
{
    std::istringstream text{contents};
    HexLines lines{text};
    std::vector<std::string> all;
    while (const auto line = lines.next())
        all.emplace_back(*line);
    return all;
}
using Lines = std::vector<std::string>;

} // namespace

TEST(HexLines, EndAtCrLfAtLfAndAtCr)
{
    EXPECT_EQ(lines_of("a\r\nb\nc\r\rd"), (Lines{"a", "b", "c", "", "d"}));
    EXPECT_EQ(lines_of("a\r\n"), (Lines{"a"}));
    EXPECT_EQ(lines_of("a\r"), (Lines{"a"}));
    EXPECT_EQ(lines_of(""), Lines{});
}

// A piece of the file is 64 KB: a line and its end go on in the next one.
TEST(HexLines, GoOnAcrossThePieces)
{
    for (const std::size_t before : {65530U, 65533U, 65534U, 65535U, 65536U}) {
        const std::string blank(before - 1, ' ');
        const Lines lines = lines_of(blank + "\nabc\r\nde\n");
        ASSERT_EQ(lines.size(), 3U) << before;
        EXPECT_EQ(lines[1], "abc") << before;
        EXPECT_EQ(lines[2], "de") << before;
    }
}

TEST(HexLines, WithoutAnEndAreCutBehindTheLongestRecord)
{
    const Lines lines = lines_of(":" + std::string(200'000, '0') + "\n:00000001FF");
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[0].size(), 1024U);
    EXPECT_EQ(lines[1], ":00000001FF");
}
