// The record of every chip: what goes in comes out, and nothing goes out any more.
#include "ledger_bench.h"

#include <algorithm>

using namespace vrk;

namespace {

struct Records : LedgerBench {
    ChipRecord at(const char* time, const char* result, const char* factory_number = "", const char* image = "aa")
    {
        ChipRecord made = record({}, true);
        made.at = time;
        made.result = result;
        made.factory_number = factory_number;
        made.code_sha256 = image;
        EXPECT_EQ(books.end_chip({{}, made.result == "good", made}).place, EndKept::Place::in_books);
        return made;
    }
};

} // namespace

TEST_F(Records, ComeOutFieldByFieldAsTheyWentIn)
{
    ChipRecord whole;
    for (const RecordField& field : record_fields)
        whole.*field.text = std::string{field.name} + " 'quoted' \"编号\"\n";
    books.end_chip({{}, true, whole});
    const auto found = books.chips({}).value;
    ASSERT_EQ(found.size(), 1U);
    EXPECT_NE(found[0].chip, whole.chip) << "the books give the key";
    EXPECT_NE(found[0].who, whole.who) << "and the user";
    whole.chip = found[0].chip;
    whole.who = found[0].who;
    EXPECT_EQ(csv_line(found[0]), csv_line(whole));
}

TEST_F(Records, AreFoundByDayAndByWhatBecameOfThem)
{
    at("2025-03-08 23:59:59", "good");
    at("2025-03-09 00:00:00", "good");
    at("2025-03-09 17:04:59", "erase-failed");
    at("2025-03-09 17:05:00", "good");
    at("2025-03-10 00:00:00", "stopped");
    ChipFilter day;
    day.from = "2025-03-09";
    day.to = "2025-03-10";
    EXPECT_EQ(books.chips(day).value.size(), 3U);
    day.result = "bad";
    EXPECT_EQ(books.chips(day).value.size(), 1U);
    day.result = "good";
    EXPECT_EQ(books.chips(day).value.size(), 2U);
    ChipFilter last;
    last.at_most = 2;
    const auto newest = books.chips(last).value;
    ASSERT_EQ(newest.size(), 2U);
    EXPECT_EQ(newest[0].at, "2025-03-09 17:05:00");
    EXPECT_EQ(newest[1].at, "2025-03-10 00:00:00");
}

TEST_F(Records, AreFoundByTheNumberInTheChipHoweverItIsPadded)
{
    chip(books, true);
    chip(books, true);
    ChipFilter number;
    number.number = "042";
    const auto found = books.chips(number).value;
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].number, "00000000042");
}

TEST_F(Records, AreCountedByHour)
{
    at("2025-03-09 16:59:59", "good");
    at("2025-03-09 17:00:00", "good");
    at("2025-03-09 17:04:59", "erase-failed");
    at("2025-03-09 17:59:59", "good");
    const auto hours = books.hours({}).value;
    ASSERT_EQ(hours.size(), 2U);
    EXPECT_EQ(hours[0].hour, "2025-03-09 16");
    EXPECT_EQ(hours[0].good, 1);
    EXPECT_EQ(hours[0].bad, 0);
    EXPECT_EQ(hours[1].good, 2);
    EXPECT_EQ(hours[1].bad, 1);
}

TEST_F(Records, TellABoardThatIsDoneAlready)
{
    const ChipRecord bad = at("2025-03-09 17:00:00", "options-failed", "F0C1");
    EXPECT_FALSE(books.earlier_good(bad).value) << "it was not good";
    const ChipRecord good = at("2025-03-09 17:01:00", "good", "F0C1");
    at("2025-03-09 17:02:00", "good", "");
    ASSERT_TRUE(books.earlier_good(good).value);
    EXPECT_EQ(books.earlier_good(good).value->at, "2025-03-09 17:01:00");
    ChipRecord other = good;
    other.code_sha256 = "bb";
    EXPECT_FALSE(books.earlier_good(other).value) << "another image is another job";
    other = good;
    other.factory_number = "";
    EXPECT_FALSE(books.earlier_good(other).value) << "a chip that tells no number is known by nobody";
}

TEST_F(Records, AreNeitherChangedNorTakenAway)
{
    at("2025-03-09 17:00:00", "good");
    {
        QSqlDatabase database = ledger_connection(ledger_address(address()), "by_hand");
        ASSERT_TRUE(database.open());
        QSqlQuery query(database);
        EXPECT_FALSE(query.exec("UPDATE chips SET result = 'bad'"));
        EXPECT_FALSE(query.exec("DELETE FROM chips"));
    }
    QSqlDatabase::removeDatabase("by_hand");
    EXPECT_EQ(books.chips({}).value.size(), 1U);
    EXPECT_EQ(books.chips({}).value[0].result, "good");
}
