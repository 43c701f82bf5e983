#include "image/store_range.h"

#include <gtest/gtest.h>

using namespace vrk;

TEST(StoreRange, AllOfTheBufferFromZeroIsAcceptedAndFromOneRefused)
{
    EXPECT_EQ(store_fault(0, 0x10000), StoreFault::none);
    EXPECT_EQ(store_fault(1, 0x10000), StoreFault::too_long);
    EXPECT_EQ(store_fault(0xFFFF, 1), StoreFault::none);
}

TEST(StoreRange, IsJudgedStartFirst)
{
    EXPECT_EQ(store_fault(-1, 0), StoreFault::start_too_small);
    EXPECT_EQ(store_fault(0x10000, 0), StoreFault::start_too_big);
    EXPECT_EQ(store_fault(0, 0), StoreFault::too_short);
    EXPECT_EQ(store_fault(0, -1), StoreFault::too_short);
    EXPECT_EQ(store_fault(0xFFFF, 2), StoreFault::too_long);
}

TEST(StoreRange, ChineseTextsStandInBothLanguagesUnderEachOther)
{
    EXPECT_EQ(store_text(StoreFault::start_too_small).zh, "The start address is too small.\n      起始地址小于 0。");
    EXPECT_EQ(store_text(StoreFault::start_too_small).en, "The start address is too small.");
    EXPECT_EQ(store_text(StoreFault::start_too_big).zh, "The start Address is too big.\n起始地址太大。");
    EXPECT_EQ(store_text(StoreFault::start_too_big).en, "The start Address is too big.");
    EXPECT_EQ(store_text(StoreFault::too_short).zh, "The file size is too small.\n文件长度不能小于 0。");
    EXPECT_EQ(store_text(StoreFault::too_long).en, "The file size is too big.");
}
