#include "image/auto_increase.h"

#include "image/bench.h"

using namespace vrk;
using image_test::model;

namespace {

using Bytes = std::vector<std::uint8_t>;

AutoIncrease number(std::int16_t system, std::int16_t bytes, std::string next, std::int16_t increment = 1)
{
    AutoIncrease record;
    record.system = system;
    record.bytes = bytes;
    record.next_value = std::move(next);
    record.increment = increment;
    return record;
}

} // namespace

TEST(NumberValue, FourBytesOfHexRefuseFourThousandMillion)
{
    EXPECT_EQ(value_fault(number(AutoIncrease::hex, 4, "4294967295")), ValueFault::too_large);
    EXPECT_EQ(value_fault(number(AutoIncrease::hex, 4, "2147483648")), ValueFault::too_large);
    EXPECT_EQ(value_fault(number(AutoIncrease::hex, 4, "2147483647")), ValueFault::none);
    EXPECT_EQ(value_fault(number(AutoIncrease::hex, 4, "99999999999999999999999999")), ValueFault::too_large);
}

TEST(NumberValue, TwoBytesOfHexRefuseFiveHexadecimalDigits)
{
    EXPECT_EQ(value_fault(number(AutoIncrease::hex, 2, "65536")), ValueFault::too_few_bytes);
    EXPECT_EQ(value_fault(number(AutoIncrease::hex, 2, "65535")), ValueFault::none);
}

TEST(NumberValue, BcdTakesTwoDigitsAByteAndAsciiOne)
{
    EXPECT_EQ(value_fault(number(AutoIncrease::bcd, 2, "9999")), ValueFault::none);
    EXPECT_EQ(value_fault(number(AutoIncrease::bcd, 2, "10000")), ValueFault::too_few_bytes);
    EXPECT_EQ(value_fault(number(AutoIncrease::ascii, 4, "9999")), ValueFault::none);
    EXPECT_EQ(value_fault(number(AutoIncrease::ascii, 3, "9999")), ValueFault::too_few_bytes);
}

TEST(NumberValue, LeadingZerosNeedNoRoom)
{
    EXPECT_EQ(value_fault(number(AutoIncrease::bcd, 1, "000000000000000000000042")), ValueFault::none);
    EXPECT_EQ(value_fault(number(AutoIncrease::ascii, 2, "0042")), ValueFault::none);
    EXPECT_EQ(value_fault(number(AutoIncrease::hex, 1, "0255")), ValueFault::none);
}

TEST(NumberValue, IsWrittenInDecimalDigitsAlone)
{
    EXPECT_EQ(value_fault(number(AutoIncrease::hex, 4, "1F")), ValueFault::no_decimal);
    EXPECT_EQ(value_fault(number(AutoIncrease::bcd, 4, " 12")), ValueFault::no_decimal);
    EXPECT_EQ(value_fault(number(AutoIncrease::ascii, 4, "-001")), ValueFault::no_decimal);
    EXPECT_EQ(value_fault(number(AutoIncrease::hex, 4, "１２")), ValueFault::no_decimal);
}

TEST(NumberValue, IsRefusedInMoreBytesThanItsSystemHas)
{
    EXPECT_EQ(value_fault(number(AutoIncrease::hex, 5, "1")), ValueFault::too_many_bytes_for_hex);
    EXPECT_EQ(value_fault(number(AutoIncrease::hex, 4, "1")), ValueFault::none);
    EXPECT_EQ(value_fault(number(AutoIncrease::bcd, 11, "1")), ValueFault::too_many_bytes);
    EXPECT_EQ(value_fault(number(AutoIncrease::ascii, 10, "1")), ValueFault::none);
}

TEST(NumberValue, NoBytesOrFewerHoldNoNumber)
{
    EXPECT_EQ(value_fault(number(AutoIncrease::bcd, 0, "1")), ValueFault::too_few_bytes);
    EXPECT_EQ(value_fault(number(AutoIncrease::hex, -4, "1")), ValueFault::too_few_bytes);
    EXPECT_EQ(stamp_bytes(number(AutoIncrease::bcd, -4, "0")), Bytes{});
}

TEST(NumberBytes, HexIsBigEndian)
{
    EXPECT_EQ(stamp_bytes(number(AutoIncrease::hex, 4, "305419896")), (Bytes{0x78, 0x56, 0x34, 0x12}));
    EXPECT_EQ(stamp_bytes(number(AutoIncrease::hex, 2, "7")), (Bytes{0x07, 0x00}));
}

TEST(NumberBytes, BcdIsBigEndianAndFilledWithZeros)
{
    EXPECT_EQ(stamp_bytes(number(AutoIncrease::bcd, 3, "12345")), (Bytes{0x45, 0x23, 0x01}));
    EXPECT_EQ(stamp_bytes(number(AutoIncrease::bcd, 10, "7")), (Bytes{0x07, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
}

TEST(NumberBytes, AsciiBeginsAtTheAddressAndReadsBackwards)
{
    EXPECT_EQ(stamp_bytes(number(AutoIncrease::ascii, 4, "1234")), (Bytes{'1', '2', '3', '4'}));
}

TEST(NumberBytes, AShortAsciiNumberIsFollowedByZeroBytes)
{
    EXPECT_EQ(stamp_bytes(number(AutoIncrease::ascii, 4, "12")), (Bytes{'1', '2', 0, 0}));
}

TEST(NumberBytes, AsciiDropsZerosInFrontForWhichThereIsNoRoom)
{
    EXPECT_EQ(stamp_bytes(number(AutoIncrease::ascii, 2, "0042")), (Bytes{'4', '2'}));
}

TEST(NumberAdvance, FourBcdDigitsWrapToZero)
{
    EXPECT_EQ(advanced_value(number(AutoIncrease::bcd, 2, "9999")), "0000");
}

TEST(NumberAdvance, AsciiWrapsAtItsBytes)
{
    EXPECT_EQ(advanced_value(number(AutoIncrease::ascii, 3, "998", 5)), "003");
}

TEST(NumberAdvance, HexIsPaddedToTheDecimalDigitsOfItsBytesAndOne)
{
    EXPECT_EQ(advanced_value(number(AutoIncrease::hex, 1, "9")), "010");
    EXPECT_EQ(advanced_value(number(AutoIncrease::hex, 2, "65535")), "065536");
    EXPECT_EQ(advanced_value(number(AutoIncrease::hex, 4, "41")), "00000000042");
}

TEST(NumberAdvance, ANegativeIncrementCountsDown)
{
    EXPECT_EQ(advanced_value(number(AutoIncrease::bcd, 2, "0100", -1)), "0099");
}

TEST(NumberAdvance, BelowZeroLeavesTextThatTheStampRefuses)
{
    const std::string next = advanced_value(number(AutoIncrease::bcd, 2, "0000", -1));
    EXPECT_EQ(next, "00-1");
    EXPECT_EQ(value_fault(number(AutoIncrease::bcd, 2, next)), ValueFault::no_decimal);
}

TEST(NumberPlace, AddressZeroHoldsOneByteAndNotTwo)
{
    EXPECT_EQ(place_fault(model("Juniper-60"), BufferKind::code, 0, 1), PlaceFault::none);
    EXPECT_EQ(place_fault(model("Juniper-60"), BufferKind::code, 0, 2), PlaceFault::code_below_zero);
    EXPECT_EQ(place_fault(model("Juniper-60Q"), BufferKind::data, 0, 1), PlaceFault::none);
    EXPECT_EQ(place_fault(model("Juniper-60Q"), BufferKind::data, 0, 2), PlaceFault::data_below_zero);
}

TEST(NumberPlace, WithASeparateEepromCodeEndsWithTheCodeFlash)
{
    const McuRecord split = model("Juniper-8Q");
    EXPECT_EQ(place_fault(split, BufferKind::code, split.ap_last, 1), PlaceFault::none);
    EXPECT_EQ(place_fault(split, BufferKind::code, split.ap_last + 1, 1), PlaceFault::code_past_code_flash);
    EXPECT_EQ(place_fault(split, BufferKind::data, split.eeprom_last - split.eeprom_first, 1), PlaceFault::none);
    EXPECT_EQ(
        place_fault(split, BufferKind::data, split.eeprom_last - split.eeprom_first + 1, 1), PlaceFault::data_past_end);
}

TEST(NumberPlace, AFlatModelTakesANumberInItsDataFlash)
{
    const McuRecord flat = model("Cedar-0.5");
    EXPECT_EQ(place_fault(flat, BufferKind::code, flat.eeprom_last, 1), PlaceFault::none);
    EXPECT_EQ(place_fault(flat, BufferKind::code, flat.eeprom_last + 1, 1), PlaceFault::code_past_flash);
}

TEST(NumberPlace, TheOldestModelsEndWithTheirCode)
{
    const McuRecord old = model("Alder-64");
    EXPECT_EQ(place_fault(old, BufferKind::code, old.ap_last, 1), PlaceFault::none);
    EXPECT_EQ(place_fault(old, BufferKind::code, old.ap_last + 1, 1), PlaceFault::code_past_flash);
}

TEST(NumberTexts, OfPlacesTellWhatIsWrongInBothLanguages)
{
    const McuRecord split = model("Juniper-60Q");
    const auto expect = [&](PlaceFault fault, const std::string& chinese, const char* english) {
        EXPECT_EQ(place_text(fault, split).zh, chinese);
        EXPECT_EQ(place_text(fault, split).en, english);
    };
    expect(PlaceFault::code_past_code_flash, "文件缓冲区自动增量存放地址太大",
        "The address of auto increament in the data buffer is too big.");
    expect(PlaceFault::code_past_flash, "文件缓冲区自动增量存放地址太大",
        "The address of auto increament in the buffer is too big.");
    expect(PlaceFault::code_below_zero, "文件缓冲区自动增量存放地址太小或字节数太长",
        "The address of auto increament in the code buffer is too small or the number of bytes is too big.");
    expect(PlaceFault::data_past_end, "数据文件缓冲区自动增量存放地址太大, \n3FFH",
        "The address of auto increament in the data buffer is too big.");
    expect(PlaceFault::data_below_zero, "数据文件缓冲区自动增量存放地址太小或字节数太长",
        "The address of auto increament in the EEPROM file buffer is too small or the number of bytes is too big.");
}

TEST(NumberTexts, BearTheNameOfTheBuffer)
{
    EXPECT_EQ(increase_title(BufferKind::code).zh, "设置程序文件自动增量");
    EXPECT_EQ(increase_title(BufferKind::code).en, "Set Program Automatic Increment");
    EXPECT_EQ(increase_title(BufferKind::data).zh, "设置 EEPROM 文件自动增量");
    EXPECT_EQ(increase_title(BufferKind::data).en, "Set EEPROM Automatic Increment");
}

namespace {

class ValueMessage : public ::testing::TestWithParam<std::tuple<AutoIncrease, const char*, const char*>> { };

} // namespace

TEST_P(ValueMessage, IsSaidInBothLanguagesAndTheBufferStays)
{
    const auto& [record, chinese, english] = GetParam();
    FileBuffer buffer{BufferKind::code};
    const Bytes before = buffer.data;
    EXPECT_FALSE(stamp(record, buffer));
    EXPECT_EQ(buffer.data, before);
    EXPECT_EQ(value_text(value_fault(record)).zh, chinese);
    EXPECT_EQ(value_text(value_fault(record)).en, english);
}

INSTANTIATE_TEST_SUITE_P(All, ValueMessage,
    ::testing::Values(std::tuple{number(AutoIncrease::hex, 4, "1F"), " '下一个值' 应输入10进制数",
                          "The format of Next Value must be 10 base."},
        std::tuple{number(AutoIncrease::hex, 4, "4294967295"), "下一值必须小于 2147483648。",
            "The Next Value must be less than 2147483648."},
        std::tuple{number(AutoIncrease::bcd, 1, "100"), "自动增量字节数太小", "The number of bytes is too small."},
        std::tuple{number(AutoIncrease::hex, 5, "1"), "选择 16进制时，字节数必须小于或等于 4。",
            "If choose HEX, the number of bytes must be less than or equal to 4."},
        std::tuple{number(AutoIncrease::ascii, 11, "1"), "字节数必须小于或等于 10。",
            "The number of Bytes must be less than or equal to 10."}));

TEST(StampNumber, WritesDownwardsFromItsAddress)
{
    FileBuffer buffer{BufferKind::code};
    AutoIncrease record = number(AutoIncrease::hex, 4, "305419896");
    record.address = 3;
    EXPECT_TRUE(stamp(record, buffer));
    EXPECT_EQ(Bytes(buffer.data.begin(), buffer.data.begin() + 5), (Bytes{0x12, 0x34, 0x56, 0x78, 0}));
}

TEST(StampNumber, LeavesLengthAndChecksumAsTheFileMadeThem)
{
    FileBuffer buffer{BufferKind::data};
    buffer.checksum = 77;
    AutoIncrease record{BufferKind::data};
    record.bytes = 1;
    record.next_value = "9";
    record.address = buffer.last();
    EXPECT_TRUE(stamp(record, buffer));
    EXPECT_EQ(buffer.data.back(), 9);
    EXPECT_EQ(buffer.checksum, 77);
    EXPECT_EQ(buffer.high, 1023);
    EXPECT_EQ(buffer.view_high, 1023);
}

TEST(StampNumber, OutsideTheBufferWritesNothingAtEitherEnd)
{
    FileBuffer buffer{BufferKind::code};
    const Bytes before = buffer.data;
    AutoIncrease record = number(AutoIncrease::hex, 4, "305419896");
    record.address = buffer.last() + 1;
    EXPECT_FALSE(stamp(record, buffer));
    record.address = 2;
    EXPECT_FALSE(stamp(record, buffer));
    record.address = -1;
    EXPECT_FALSE(stamp(record, buffer));
    EXPECT_EQ(buffer.data, before);
}
