// The pages that tell of exit codes and of JSON, held against what the program does.
#include "recipe/run_bench.h"

#include <map>
#include <set>

using namespace vrk;

namespace {

std::string page(const std::string& name)
{
    std::ifstream file{std::string{PROJECT_DIR} + "/docs/" + name};
    EXPECT_TRUE(file) << name;
    return {std::istreambuf_iterator<char>{file}, {}};
}

// The cells of the rows of its tables.
std::vector<std::vector<std::string>> rows_of(const std::string& text)
{
    std::vector<std::vector<std::string>> rows;
    std::istringstream lines{text};
    for (std::string line; std::getline(lines, line);) {
        if (!line.starts_with("| "))
            continue;
        std::vector<std::string> cells;
        std::istringstream parts{line.substr(1)};
        for (std::string cell; std::getline(parts, cell, '|');) {
            const std::size_t first = cell.find_first_not_of(' ');
            cells.push_back(
                first == std::string::npos ? "" : cell.substr(first, cell.find_last_not_of(' ') - first + 1));
        }
        rows.push_back(cells);
    }
    return rows;
}

} // namespace

TEST(ExitCodesPage, TellsEachCodeOfTheTableAndNoOther)
{
    std::map<std::string, std::string> told; // code by word
    for (const auto& cells : rows_of(page("exit-codes.md"))) {
        if (cells.size() == 3 && !cells[1].empty() && cells[0] != "code") {
            EXPECT_TRUE(told.emplace(cells[1], cells[0]).second) << cells[1];
        }
    }
    for (const ResultClass& row : result_classes())
        EXPECT_EQ(told[std::string{row.word}], std::to_string(row.exit_code)) << row.word;
    EXPECT_EQ(told.size(), result_classes().size());
}

TEST(JsonPage, TellsEachEventAndFieldThatIsWritten)
{
    std::map<std::string, std::string> told; // the fields in words by event
    for (const auto& cells : rows_of(page("json.md"))) {
        if (cells.size() == 3)
            told[cells[0]] = cells[1];
    }
    RunBench bench("Juniper-60Q");
    bench.run();
    bench.recipe.file = bench.file("half.hex", std::string{":03000000020006F5\n"});
    bench.says_yes = true;
    bench.run();
    bench.recipe.file = bench.file("wrong.hex", std::string{":03000000020006F4\n:00000001FF\n"});
    bench.run();
    std::set<std::string> seen;
    for (const auto& event : bench.events()) {
        const std::string kind = "`" + event.at("event").get<std::string>() + "`";
        seen.insert(kind);
        ASSERT_TRUE(told.contains(kind)) << kind;
        for (const auto& [field, value] : event.items()) {
            if (field != "event") {
                EXPECT_NE(told[kind].find("`" + field + "`"), std::string::npos) << kind << " " << field;
            }
        }
    }
    for (const char* kind : {"`start`", "`chip`", "`stage`", "`options`", "`progress`", "`message`", "`box`",
             "`question`", "`result`", "`end`"})
        EXPECT_TRUE(seen.contains(kind)) << kind;
}
