#include "image/range_messages.h"

#include <gtest/gtest.h>

#include <string>

using namespace vrk;

namespace {

constexpr AddressRange gap{0x0800, 0x0FFF};
const RangeReport cut{RangeRule::cut, {Finding::cut}, {}, false};
const RangeReport cut_without_data_flash{RangeRule::cut, {Finding::cut}, {}, true};

RangeReport flat(std::vector<Finding> findings) { return {RangeRule::flat, std::move(findings), gap, false}; }
RangeReport boot_area(std::vector<Finding> findings) { return {RangeRule::boot_area, std::move(findings), {}, false}; }

std::string zh(const RangeReport& report, FileKind file = FileKind::hex) { return range_message(report, file).zh; }
std::string en(const RangeReport& report, FileKind file = FileKind::hex) { return range_message(report, file).en; }

} // namespace

TEST(RangeMessages, Cut)
{
    EXPECT_EQ(zh(cut), "文件超出最大有效空间, 超出的部分已被清除。\n\n               按确定继续");
    EXPECT_EQ(en(cut), "The file is over the valid scope, and the exceeding part has been cleared.");
    EXPECT_EQ(zh(cut, FileKind::bin), zh(cut));
}

TEST(RangeMessages, InvalidRangeNamesItsEndsWithoutPadding)
{
    // 31 characters and 42: the closing word begins below their middle, the English one five to the left of it.
    EXPECT_EQ(zh(flat({Finding::invalid_range})),
        "无效区间 800 -- FFF 中有数据, 这些数据已被清除。\n\n" + std::string(15, ' ') + "按确定继续。");
    EXPECT_EQ(en(flat({Finding::invalid_range})),
        "    File over the valid scope(800 -- FFF).\n\n" + std::string(16, ' ') + "Continue");
}

TEST(RangeMessages, DataMemoryOfTheFlatImage)
{
    EXPECT_EQ(zh(flat({Finding::data_memory})), "Data Memory 空间有数据。\n\n         按确定继续。");
    EXPECT_EQ(en(flat({Finding::data_memory})), "Data Memory contain datas.\n\n        Continue");
}

TEST(RangeMessages, OverRangeOfTheFlatImage)
{
    EXPECT_EQ(zh(flat({Finding::over_range})), "文件超出最大有效空间, 超出的部分已被清除。\n\n           按确定继续。");
    EXPECT_EQ(en(flat({Finding::over_range})), "    File over the valid scope.\n\n          Continue");
}

TEST(RangeMessages, LinesOfTheFlatImageStandBelowEachOtherAndTheLongestSetsTheIndent)
{
    EXPECT_EQ(en(flat({Finding::invalid_range, Finding::data_memory, Finding::over_range})),
        "    File over the valid scope(800 -- FFF).\nData Memory contain datas.\n    File over the valid scope.\n\n" +
            std::string(16, ' ') + "Continue");
    EXPECT_EQ(zh(flat({Finding::data_memory, Finding::over_range})),
        "Data Memory 空间有数据。\n文件超出最大有效空间, 超出的部分已被清除。\n\n           按确定继续。");
}

TEST(RangeMessages, OverRangeOfTheBootArea)
{
    const RangeReport report = boot_area({Finding::over_range});
    EXPECT_EQ(zh(report, FileKind::bin),
        "    File over the valid scope.\n文件超出有效空间, 超出的部分已丢失。\n\n         按确定继续。");
    EXPECT_EQ(zh(report, FileKind::hex),
        "    File over the valid scope.\n文件超出有效空间, 超出的部分已丢失。\n\n       按确定继续。");
    EXPECT_EQ(en(report, FileKind::bin), "    File over the valid scope.\n\n\n          Continue");
    EXPECT_EQ(en(report, FileKind::hex), " File over the valid scope.\n\n\n        Continue");
}

TEST(RangeMessages, DataMemoryOfTheBootArea)
{
    const RangeReport report = boot_area({Finding::data_memory});
    EXPECT_EQ(zh(report, FileKind::bin),
        "   Data Memory contain datas.\n     Data Memory 空间有数据。\n\n         按确定继续。");
    EXPECT_EQ(
        zh(report, FileKind::hex), " Data Memory contain datas.\n  Data Memory 空间有数据。\n\n       按确定继续。");
    EXPECT_EQ(en(report, FileKind::bin), "   Data Memory contain datas.\n\n\n          Continue");
    EXPECT_EQ(en(report, FileKind::hex), " Data Memory contain datas.\n\n\n        Continue");
}

TEST(RangeMessages, BothFindingsOfTheBootAreaStandBelowEachOther)
{
    const RangeReport report = boot_area({Finding::over_range, Finding::data_memory});
    EXPECT_EQ(zh(report),
        "    File over the valid scope.\n文件超出有效空间, 超出的部分已丢失。\n Data Memory contain datas.\n  "
        "Data Memory 空间有数据。\n\n       按确定继续。");
    EXPECT_EQ(en(report), " File over the valid scope.\n Data Memory contain datas.\n\n\n        Continue");
}

TEST(RangeMessages, TheTitleIsTheLoaders)
{
    EXPECT_STREQ(range_title(flat({Finding::over_range}), FileKind::hex), "Open HEX file");
    EXPECT_STREQ(range_title(flat({Finding::over_range}), FileKind::bin), "Open BIN file");
    EXPECT_STREQ(range_title(cut, FileKind::hex), "Open HEX file");
    EXPECT_STREQ(range_title(cut, FileKind::bin), "Open BIN file");
}

TEST(RangeMessages, TheCutOfAModelWithoutDataFlashIsAlwaysTitledAsBinary)
{
    EXPECT_STREQ(range_title(cut_without_data_flash, FileKind::hex), "Open BIN file");
    EXPECT_STREQ(range_title(cut_without_data_flash, FileKind::bin), "Open BIN file");
}
