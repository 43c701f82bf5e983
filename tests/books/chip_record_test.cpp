// A record on its way out of the house, and the sum by which an image is known again.
#include "books/chip_record.h"
#include "books/sha256.h"

#include <gtest/gtest.h>

#include <set>
#include <vector>

using namespace vrk;

namespace {

std::string sum_of(const std::string& text) { return sha256(std::vector<std::uint8_t>(text.begin(), text.end())); }

} // namespace

// The examples of the standard, and a message as long as a block and its length leave no room for.
TEST(Sha256, GivesTheSumsOfTheStandard)
{
    EXPECT_EQ(sum_of(""), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
    EXPECT_EQ(sum_of("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    EXPECT_EQ(sum_of("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq"),
        "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1");
    EXPECT_EQ(sum_of(std::string(1000000, 'a')), "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
}

TEST(ChipRecords, HaveEachFieldOnceInTheirTable)
{
    std::set<std::string> names;
    ChipRecord record;
    for (const RecordField& field : record_fields) {
        EXPECT_TRUE((record.*field.text).empty()) << field.name << " is the field of another row, too";
        record.*field.text = field.name;
        names.insert(field.name);
    }
    EXPECT_EQ(names.size(), record_fields.size());
    EXPECT_EQ(sizeof(ChipRecord), record_fields.size() * sizeof(std::string)) << "a field stands in no row";
}

TEST(ChipRecords, LeaveAsALineOfCsvWhateverStandsInTheirFields)
{
    ChipRecord record;
    record.at = "2025-03-09 17:04:59";
    record.job = "red, green.vrk";
    record.last_line = "Program \"OK\"\nVerify OK";
    const std::string line = csv_line(record);
    EXPECT_TRUE(line.starts_with(",2025-03-09 17:04:59,,,,\"red, green.vrk\",")) << line;
    EXPECT_TRUE(line.ends_with(",\"Program \"\"OK\"\"\nVerify OK\",")) << line;
    EXPECT_TRUE(csv_head().starts_with("chip,at,who,station,port,job,")) << csv_head();
}

TEST(ChipRecords, LeaveAsAnObjectOfJsonWithoutTheirEmptyFields)
{
    ChipRecord record;
    record.model = "Juniper-8";
    record.baud = "115200";
    record.last_line = "a \"b\" \\\n";
    EXPECT_EQ(json_line(record), R"({"model":"Juniper-8","baud":115200,"last_line":"a \"b\" \\\u000A"})");
}
