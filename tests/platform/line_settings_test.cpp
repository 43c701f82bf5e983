#include "platform/comm_control.h"

#include <gtest/gtest.h>

using namespace vrk;

TEST(LineSettingsText, NamesBaudParityDataAndStopBits)
{
    EXPECT_EQ(parse_line_settings("9600,n,8,1"), (LineSettings{9600, Parity::none, 8, 1}));
    EXPECT_EQ(parse_line_settings("2400,e,8,1"), (LineSettings{2400, Parity::even, 8, 1}));
    EXPECT_EQ(parse_line_settings("115200,o,7,2"), (LineSettings{115200, Parity::odd, 7, 2}));
}

TEST(LineSettingsText, IsRefusedWhereItCannotBeRead)
{
    EXPECT_FALSE(parse_line_settings("fast,n,8,1"));
    EXPECT_FALSE(parse_line_settings("9600,x,8,1"));
    EXPECT_FALSE(parse_line_settings("9600,n,8"));
    EXPECT_FALSE(parse_line_settings("0,n,8,1"));
    EXPECT_FALSE(parse_line_settings(""));
}

TEST(BitsPerByte, CountStartDataParityAndStop)
{
    EXPECT_EQ(bits_per_byte({9600, Parity::none, 8, 1}), 10);
    EXPECT_EQ(bits_per_byte({9600, Parity::even, 8, 1}), 11);
    EXPECT_EQ(bits_per_byte({9600, Parity::none, 8, 2}), 11);
}
