// Every stepping letter with every length of the status frame: which byte goes into which row, and what the report then
// says. The layouts are typed out here once more, so that the decoder does not judge itself.
#include "options/chip_bench.h"

#include "options/status_frame.h"

#include <array>
#include <random>

using namespace vrk;

namespace {

// Rows 0 to 15 as frame bytes; 0: not filled.
struct Layout {
    const char* letters;
    const char* version;
    std::array<int, 16> byte_of_row;
    bool row_0_is_255;
};

// clang-format off
constexpr Layout layouts[] = {
//    letters         version   0   1   2   3          8   9  10  11
    { "AB",            "4.2", {22                                                 }, false },
    { "C",             "4.2", { 0, 22                                             }, false },
    { "DEFG",          "5.4", { 0,  0, 26, 27, 0,0,0,0, 28,  0, 29, 30            }, true  },
    { "DEFG",          "5.8", {32, 33, 34, 35, 0,0,0,0, 36, 37                    }, false },
    { "H",             "5.7", {31,  0, 26, 27, 0,0,0,0, 28,  0, 29, 30            }, false },
    { "H",             "5.8", {32, 33, 34, 35, 0,0,0,0, 36, 37                    }, false },
    { "IJKLMNOPQR",    "6.3", {26, 27, 28, 29, 0,0,0,0, 30, 31                    }, false },
};
constexpr Layout sixteen_rows =
    { "ABCDEFGHIJKLMNOPQR", "6.3", {26, 27, 28, 29, 30, 31, 32, 33, 34, 35, 36, 37, 38, 39, 40, 41}, false };
// clang-format on

constexpr int lengths[] = {24, 25, 26, 27, 28, 34, 40, 44, 56, 57, 59, 62, 63}; // of the length byte
constexpr std::int16_t untouched = 0x33;

std::string name_of(const ::testing::TestParamInfo<char>& info) { return std::string(1, info.param); }

// Decodes a frame whose byte n holds 100 + n, and compares all rows.
void expect_rows(const std::string& letter, const Layout& layout, bool is_of_sixteen_rows, int length)
{
    std::array<std::uint8_t, 70> frame{};
    for (std::size_t i = 0; i < frame.size(); ++i)
        frame[i] = static_cast<std::uint8_t>(100 + i);
    frame[2] = static_cast<std::uint8_t>(length);
    StatusBytes rows;
    rows.fill(untouched);
    const auto fields = std::span{frame}.first(static_cast<std::size_t>(length - 2));
    decode_status_frame(fields, StatusLayout::power_up, letter, layout.version, is_of_sixteen_rows, 0, rows);
    for (std::size_t row = 0; row < 16; ++row) {
        const int byte = layout.byte_of_row[row];
        std::int16_t wanted = untouched;
        if (byte != 0 && byte < length - 2)
            wanted = static_cast<std::int16_t>(100 + byte);
        else if (row == 0 && layout.row_0_is_255)
            wanted = 255;
        EXPECT_EQ(rows[row], wanted) << "letter " << letter << " version " << layout.version << " length " << length
                                     << " row " << row;
    }
}

class EveryLetter : public ::testing::TestWithParam<char> { };

} // namespace

TEST_P(EveryLetter, FillsItsRowsFromEveryLength)
{
    for (const Layout& layout : layouts) {
        if (std::string_view{layout.letters}.find(GetParam()) == std::string_view::npos)
            continue;
        for (const int length : lengths)
            expect_rows(std::string(1, GetParam()), layout, false, length);
    }
}

TEST_P(EveryLetter, FillsSixteenRowsInTheSixteenRowFamilies)
{
    for (const int length : lengths)
        expect_rows(std::string(1, GetParam()), sixteen_rows, true, length);
}

// Random bytes: each line of the report belongs to a row whose bit holds, and each such row with words of its own has
// its line, in the order of the table.
TEST_P(EveryLetter, ReportsTheRowsThatHold)
{
    std::mt19937 random(static_cast<std::mt19937::result_type>(GetParam()));
    for (const bool english : {false, true}) {
        ChipBench bench("Juniper-60Q", std::string(1, GetParam()).c_str(), english);
        for (int round = 0; round < 200; ++round) {
            for (std::int16_t& row : bench.status.status_bytes)
                row = static_cast<std::int16_t>(random() % 256);
            const StatusBytes status = bench.status.status_bytes;
            const std::vector<std::string> said = bench.lines();
            const OptionPage page = option_page_of_letter(bench.status.fw_letter);
            std::vector<std::string> wanted;
            for (int row = 0; row <= page.last_row; ++row) {
                const auto cell = [&](OptionColumn column) { return bench.table.cell(page.page, row, column); };
                const std::string code = cell(OptionColumn::bit_code);
                const std::string words = cell(OptionColumn::report);
                if (cell(OptionColumn::key) == "WDT_Prescalar" && !words.empty()) {
                    const int byte = page.page <= 5 ? 3 : 2;
                    wanted.push_back(words + " " + std::to_string(2 << (status[static_cast<std::size_t>(byte)] & 7)));
                } else if (code.size() == 4 && !words.empty()) {
                    std::size_t byte = static_cast<std::size_t>((code[0] - '0') * 10 + code[1] - '0');
                    std::int16_t value = status[byte];
                    if (GetParam() == 'R' && byte == 8)
                        value = status[12];
                    else if (GetParam() == 'R' && byte == 12)
                        value = 255;
                    if (((value >> (code[2] - '0')) & 1) == code[3] - '0')
                        wanted.push_back(words);
                }
            }
            ASSERT_EQ(said, wanted);
            ASSERT_EQ(bench.status.status_bytes, status) << "a report changes no byte";
        }
    }
}

INSTANTIATE_TEST_SUITE_P(FromAToR, EveryLetter, ::testing::Range('A', 'S'), name_of);
