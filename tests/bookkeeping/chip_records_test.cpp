// The record of every chip of a line agrees with what the chips hold.
#include "line_bench.h"

#include "books/sha256.h"

#include <map>

using namespace vrk;

TEST(LineRecords, TellWhatBecameOfAChip)
{
    LineBench bench;
    bench.record_every_chip();
    take_up_number(bench, "41");
    bench.download();
    const auto records = bench.records();
    ASSERT_EQ(records.size(), 1U);
    const ChipRecord& record = records[0];
    EXPECT_EQ(record.result, "good");
    EXPECT_EQ(record.model, "Juniper-8");
    EXPECT_EQ(record.station, "left");
    EXPECT_EQ(record.port, Bench::port_path);
    EXPECT_EQ(record.number, "41");
    EXPECT_EQ(record.order, "") << "it was not drawn from the ledger";
    EXPECT_EQ(record.firmware, "6.3I");
    EXPECT_EQ(record.factory_number, "F510C42A07319B");
    EXPECT_EQ(record.baud, "115200");
    EXPECT_NE(record.options_written, "");
    EXPECT_NE(record.options_read, "");
    EXPECT_NE(record.who, "");
    auto image = Bench::pattern(0x300);
    for (std::size_t at = 0x200; at <= 0x203; ++at)
        image[at] = 0;
    EXPECT_EQ(record.code_sha256, sha256(image));
    EXPECT_TRUE(record.stages.starts_with("calling ")) << record.stages;
    EXPECT_NE(record.stages.find("writing "), std::string::npos) << record.stages;
}

TEST(LineRecords, TellWhyAChipIsNotGood)
{
    LineBench bench;
    bench.record_every_chip();
    bench.chip.refuse_block(0);
    bench.download();
    const auto records = bench.records();
    ASSERT_EQ(records.size(), 1U);
    EXPECT_EQ(records[0].result, "programming-failed");
    EXPECT_TRUE(bench.report_says(records[0].last_line)) << records[0].last_line;
    EXPECT_NE(records[0].last_line, "");
}

TEST(LineRecords, KnowNothingOfAChipThatNeverCame)
{
    LineBench bench;
    bench.record_every_chip();
    bench.press_download();
    bench.press_stop_after_ms(3000);
    bench.run_until_idle();
    EXPECT_TRUE(bench.records().empty());
}

TEST(LineRecords, NameABoardThatIsDoneAlready)
{
    LineBench bench;
    bench.record_every_chip();
    bench.numbers_from_the_ledger();
    bench.download();
    EXPECT_FALSE(bench.report_says("This board was good for this job already"));
    const std::string first = bench.records()[0].at;
    bench.repair();
    bench.download();
    EXPECT_TRUE(
        bench.report_says("This board was good for this job already: F510C42A07319B  " + first + "  00000000041"));
    EXPECT_TRUE(bench.report_says("Program OK"));
    bench.open_code(Bench::pattern(0x300, 7));
    bench.repair();
    bench.download();
    EXPECT_FALSE(bench.report_says("This board was good for this job already")) << "another image is another job";
}

TEST(LineRecords, AreKeptBesideALedgerThatIsGone)
{
    LineBench bench;
    bench.record_every_chip();
    bench.when(sim::Chip::State::erased, [&bench] { bench.take_ledger_away(); });
    bench.download();
    EXPECT_TRUE(bench.report_says("Program OK"));
    EXPECT_TRUE(bench.report_says("This chip is kept in a file beside the ledger"));
    bench.bring_ledger_back();
    EXPECT_FALSE(bench.books.open());
    EXPECT_EQ(bench.records().size(), 1U);
}

// A shift with a twentieth of its chips failing: each record says what the chip in the socket holds. VRK_CHIPS=2000
// tells of a whole day.
TEST(LineRecords, OfADayAgreeWithTheChips)
{
    const char* wanted = std::getenv("VRK_CHIPS");
    const int chips = wanted != nullptr ? std::atoi(wanted) : 300;
    LineBench bench;
    bench.record_every_chip();
    bench.numbers_from_the_ledger("1001");
    std::map<int, std::vector<std::uint8_t>> good;
    int bad = 0;
    for (int chip = 0; chip < chips; ++chip) {
        bench.repair();
        bench.wipe_chip();
        if (chip % 20 == 7)
            bench.chip.refuse_block(0);
        bench.download();
        if (bench.shell.succeeded)
            good[bench.number_in_chip()] = bench.flash(0, 0x2FF);
        else
            ++bad;
    }
    EXPECT_EQ(bad, chips / 20);
    ASSERT_EQ(good.size(), static_cast<std::size_t>(chips - bad)) << "a number came twice";
    const auto records = bench.records();
    ASSERT_EQ(records.size(), static_cast<std::size_t>(chips));
    int good_records = 0;
    for (const ChipRecord& record : records) {
        if (record.result != "good")
            continue;
        ++good_records;
        const auto held = good.find(std::stoi(record.number));
        ASSERT_NE(held, good.end()) << record.number;
        auto image = held->second;
        std::fill(image.begin() + 0x200, image.begin() + 0x204, std::uint8_t{0});
        EXPECT_EQ(record.code_sha256, sha256(image)) << record.number;
    }
    EXPECT_EQ(good_records, chips - bad);
    EXPECT_EQ(good.begin()->first, 1001);
    EXPECT_EQ(good.rbegin()->first, 1000 + chips - bad) << "none was skipped";
}
