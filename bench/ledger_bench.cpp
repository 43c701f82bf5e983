// The ledger of a line when 1 000 000 chips stand in it: what a chip pays for its number, and how long a day is looked
// for. Beside the first a bare flush of as many bytes in the same folder.
#include "bench/median_reporter.h"

#include "ledger/ledger_address.h"
#include "ledger/sql_books.h"

#include <QCoreApplication>
#include <QSqlQuery>

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <filesystem>

namespace {

constexpr int chips_in_it = 1'000'000;
constexpr int chips_a_day = 2000;

vrk::Order drawn_from()
{
    vrk::Order order{"pump", vrk::AutoIncrease{}};
    order.rule.bytes = 4;
    order.rule.increment = 1;
    order.rule.next_value = std::to_string(chips_in_it + 1);
    return order;
}

struct LedgerBench {
    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("vrk_ledger_" + std::to_string(getpid()));
    const std::string path = folder / "ledger.sqlite";
    vrk::SqlBooks books{path, "bench"};

    LedgerBench()
    {
        bench::require(!books.open() && !books.next_number(drawn_from()).fault, "there is no ledger");
        const auto first = books.reserve(drawn_from());
        bench::require(!first.fault, "the order cannot be begun");
        fill();
    }
    ~LedgerBench()
    {
        std::error_code fault;
        std::filesystem::remove_all(folder, fault);
    }
    // Five hundred days of 2000 chips, each with its number and a record of usual length.
    void fill() const
    {
        QString columns;
        QString values;
        for (const vrk::RecordField& field : vrk::record_fields) {
            columns += QString{columns.isEmpty() ? "" : ", "} + field.name;
            values += values.isEmpty() ? "" : ", ";
            if (field.text == &vrk::ChipRecord::chip)
                values += "'chip ' || i";
            else if (field.text == &vrk::ChipRecord::at)
                values +=
                    QString{"datetime('2025-01-01', '+' || (i / %1) || ' days', '+' || (i %% %1 * 40) || ' seconds')"}
                        .replace("%%", "%")
                        .replace("%1", QString::number(chips_a_day));
            else if (field.text == &vrk::ChipRecord::number)
                values += "substr('00000000000' || i, -11)";
            else
                values += "CASE WHEN i % 20 = 0 THEN 'erase-failed' ELSE 'good' END";
        }
        const QString counted = "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < " +
            QString::number(chips_in_it) + ") ";
        {
            QSqlDatabase database = vrk::ledger_connection(vrk::ledger_address(path), "fill");
            bench::require(database.open(), "the ledger does not open");
            QSqlQuery query(database);
            for (const QString& statement :
                {QString{"BEGIN"}, "INSERT INTO chips (" + columns + ") " + counted + "SELECT " + values + " FROM n",
                    "INSERT INTO numbers (order_id, place, value, state, token, changed) " + counted +
                        "SELECT 1, i, substr('00000000000' || i, -11), 'spent', '', '' FROM n",
                    QString{"COMMIT"}, QString{"PRAGMA wal_checkpoint(TRUNCATE)"}})
                bench::require(query.exec(statement), query.lastError().text().toStdString());
        }
        QSqlDatabase::removeDatabase("fill");
    }
};

LedgerBench& the_bench()
{
    static LedgerBench bench;
    return bench;
}

void number(benchmark::State& state)
{
    vrk::Books& books = the_bench().books;
    for (auto _ : state) {
        const auto given = books.reserve(drawn_from());
        if (given.fault || books.end_chip({{given.value}, true, {}}).fault)
            return state.SkipWithError("the number was not spent");
    }
}

void chip(benchmark::State& state)
{
    vrk::Books& books = the_bench().books;
    for (auto _ : state) {
        const auto given = books.reserve(drawn_from());
        vrk::ChipRecord record;
        record.at = "2026-06-01 12:00:00";
        record.number = given.value.value;
        if (books.open() || given.fault || books.begin_work({&given.value, 1}) ||
            books.end_chip({{given.value}, true, record}).fault)
            return state.SkipWithError("the chip was not written down");
    }
}

void day(benchmark::State& state)
{
    vrk::ChipFilter filter;
    filter.from = "2025-12-24";
    filter.to = "2025-12-25";
    for (auto _ : state) {
        if (the_bench().books.chips(filter).value.size() != chips_a_day)
            return state.SkipWithError("the day is not whole");
    }
}

void hours(benchmark::State& state)
{
    vrk::ChipFilter filter;
    filter.from = "2025-12-24";
    filter.to = "2025-12-25";
    for (auto _ : state) {
        if (the_bench().books.hours(filter).value.empty())
            return state.SkipWithError("the day has no hours");
    }
}

// Two small writes, each flushed.
void bare_flush(benchmark::State& state)
{
    const int file = open((the_bench().folder / "bare").c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0666);
    const std::array<char, 4096> page{};
    for (auto _ : state) {
        for (int i = 0; i < 2; ++i) {
            if (write(file, page.data(), page.size()) < 0 || fdatasync(file) != 0)
                return state.SkipWithError("the disk does not take it");
        }
    }
    close(file);
}

BENCHMARK(number)->Unit(benchmark::kMillisecond)->Repetitions(bench::runs);
BENCHMARK(chip)->Unit(benchmark::kMillisecond)->Repetitions(bench::runs);
BENCHMARK(bare_flush)->Unit(benchmark::kMillisecond)->Repetitions(bench::runs);
BENCHMARK(day)->Unit(benchmark::kMillisecond)->Repetitions(bench::runs);
BENCHMARK(hours)->Unit(benchmark::kMillisecond)->Repetitions(bench::runs);

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    bench::MedianReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    const double flush = reporter.median_of("bare_flush");
    const double a_day = reporter.median_of("day");
    bench::print({"number reserved and spent, 1 000 000 chips before", reporter.median_of("number"), "ms",
        "two bare flushes", flush, "below 5 ms"});
    bench::print({"whole chip in the books, 1 000 000 before", reporter.median_of("chip"), "ms", "two bare flushes",
        flush, "below 10 ms"});
    bench::print({"one day of 2000 out of 1 000 000 chips", a_day, "ms", "its hours alone", reporter.median_of("hours"),
        "below 1000 ms"});
}
