// Letter by letter: which chips are taken for the selected model.
#include "link/model_check.h"

#include "catalog/ranges.h"
#include "catalog/rows.h"
#include "session/hand_port.h"
#include "written_report.h"

#include <gtest/gtest.h>

using namespace vrk;

namespace {

const McuTable& all_models()
{
    static const McuTable table = [] {
        McuTable filled;
        load_mcu_tables(filled, false);
        return filled;
    }();
    return table;
}

McuRecord record(const std::string& name)
{
    const auto found = locate_mcu_by_name(all_models(), name);
    return found ? read_mcu_row(all_models(), found->series, found->row) : McuRecord{};
}

// A job for one model and a talk with a chip.
struct Pair : HandLink {
    explicit Pair(const char* selected)
    {
        job.model = record(selected);
        job.model_name = selected;
    }
    // A chip of this letter that reports this id, as the catalogue knows it.
    bool takes(char letter, const std::string& id)
    {
        session.chip = ChipFacts{};
        session.chip.fw_letter = std::string(1, letter);
        session.chip.target_id_hi = id.substr(0, 2);
        session.chip.target_id_lo = id.size() > 2 ? id.substr(2, 2) : "";
        session.chip.target_name = find_mcu_by_id(all_models(), id).name;
        session.identified = !session.chip.target_name.empty();
        session.connected = session.identified ? record(session.chip.target_name) : McuRecord{};
        return model_matches(session, job);
    }

    Job job;
};

struct LetterCase {
    char letter;
    const char* selected;
    const char* id;
    const char* other_id; // a sibling
    const char* of_another_family;
};

class EveryLetter : public ::testing::TestWithParam<LetterCase> { };

} // namespace

TEST_P(EveryLetter, TakesItsOwnAndNoOther)
{
    const LetterCase& row = GetParam();
    Pair pair(row.selected);
    EXPECT_EQ(pair.job.model.mcu_id, row.id);
    EXPECT_TRUE(pair.takes(row.letter, row.id));
    EXPECT_FALSE(pair.takes(row.letter, row.other_id));
    Pair wrong_family(row.of_another_family);
    EXPECT_FALSE(wrong_family.takes(row.letter, wrong_family.job.model.mcu_id));
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(WithAnIdTest, EveryLetter, ::testing::Values(
//             letter selected       id      sibling  another family
    LetterCase{'C', "Birch-8",      "F002", "F001",  "Cedar-4R"},
    LetterCase{'C', "Rowan-8",      "F022", "F021",  "Cedar-4R"},
    LetterCase{'D', "Cedar-4R",     "F214", "F213",  "Birch-8"},
    LetterCase{'G', "Fir-8R",       "E668", "E666",  "Elm-8R"},
    LetterCase{'H', "Hazel-4R",     "E164", "E163",  "Fir-8R"},
    LetterCase{'I', "Juniper-60Q",  "D17E", "D17C",  "Larch-12V"},
    LetterCase{'J', "Larch-12V",    "D26C", "D26A",  "Juniper-60Q"},
    LetterCase{'K', "Maple-4S",     "E224", "E223",  "Juniper-60Q"},
    LetterCase{'M', "Pine-32",      "F408", "F404",  "Rowan-8"},
    LetterCase{'N', "Rowan-8",      "F022", "F021",  "Birch-8"},
    LetterCase{'O', "Spruce-16",    "F164", "F162",  "Rowan-8"},
    LetterCase{'Q', "Poplar-4L",    "F344", "F343",  "Holly-4"},
    LetterCase{'R', "Holly-4",      "F384", "F383",  "Poplar-4L"}),
    [](const auto& row) { return std::string(1, row.param.letter) + std::string(row.param.id); });
// clang-format on

TEST(LetterL, TakesAnOakByItsId)
{
    Pair pair("Oak-20V");
    EXPECT_TRUE(pair.takes('L', pair.job.model.mcu_id));
    EXPECT_FALSE(pair.takes('L', "D17E"));
}

TEST(LetterS, TakesAWillowByEitherId)
{
    Pair pair("Willow-12R");
    EXPECT_TRUE(pair.takes('S', pair.job.model.mcu_id));
    pair.job.model.alt_id = "D4AB";
    EXPECT_TRUE(pair.takes('S', "D4AB"));
    EXPECT_FALSE(pair.takes('S', "D401"));
}

TEST(LetterI, TakesNoOlderId)
{
    Pair pair("Juniper-60Q");
    pair.job.model.alt_id = "D1FE";
    EXPECT_FALSE(pair.takes('I', "D1FE"));
    EXPECT_TRUE(pair.takes('I', "D17E"));
}

TEST(LettersJQAndR, TakeAnOlderId)
{
    Pair larch("Larch-12V");
    larch.job.model.alt_id = "D2AB";
    EXPECT_TRUE(larch.takes('J', "D2AB"));
    Pair poplar("Poplar-4L");
    poplar.job.model.alt_id = "F3FB";
    EXPECT_TRUE(poplar.takes('Q', "F3FB"));
    Pair holly("Holly-4");
    holly.job.model.alt_id = "F3FB";
    EXPECT_TRUE(holly.takes('R', "F3FB"));
}

TEST(LetterZ, WantsSeries18)
{
    Pair pair("Juniper-60Q");
    EXPECT_FALSE(pair.takes('Z', "D17E"));
    pair.job.model.series = 18;
    EXPECT_TRUE(pair.takes('Z', "D17E"));
}

TEST(LetterA, WantsBlocksOf128Bytes)
{
    Pair alder("Alder-64");
    EXPECT_TRUE(alder.takes('A', "FFFF"));
    Pair birch("Birch-8");
    EXPECT_FALSE(birch.takes('A', "FFFF"));
}

TEST(LetterB, WantsTheNamesToAgree)
{
    Pair pair("Aspen-16");
    EXPECT_TRUE(pair.takes('B', "54"));
    EXPECT_FALSE(pair.takes('B', "52"));
    EXPECT_TRUE(pair.takes('B', "5F")) << "a chip that nobody knows is taken";
}

TEST(LetterB, TakesTheTwoTopRowsForEachOther)
{
    Pair top("Aspen-63");
    EXPECT_TRUE(top.takes('B', "56"));
    Pair twin("Aspen-63M");
    EXPECT_TRUE(twin.takes('B', "56"));
    Pair small("Aspen-32");
    EXPECT_FALSE(small.takes('B', "56"));
    EXPECT_FALSE(top.takes('B', "58"));
}

TEST(LetterB, WantsSeries1)
{
    Pair pair("Alder-64");
    EXPECT_FALSE(pair.takes('B', "54"));
}

TEST(LetterE, WantsTheSizesToAgree)
{
    Pair pair("Elm-8R");
    EXPECT_TRUE(pair.takes('E', "E068"));
    EXPECT_TRUE(pair.takes('E', "E008")) << "a variant of the same size";
    EXPECT_FALSE(pair.takes('E', "E06A"));
    EXPECT_FALSE(pair.takes('E', "FFFE"));
    Pair fir("Fir-8R");
    EXPECT_FALSE(fir.takes('E', "E668"));
}

TEST(LetterF, LooksAtTheSizeOfTheChipAndAtItsFamily)
{
    Pair pair("Elm-8R");
    EXPECT_FALSE(pair.takes('F', "E06C")) << "12 KB";
    EXPECT_TRUE(pair.takes('F', "E070")) << "16 KB";
    EXPECT_TRUE(pair.takes('F', "E07C")) << "28 KB";
    EXPECT_FALSE(pair.takes('F', "DFFE")) << "unknown";
    Pair fir("Fir-8R");
    EXPECT_TRUE(fir.takes('F', "E67E")) << "30 KB";
}

TEST(LetterF, TakesNoChipOfAnotherFamily)
{
    Pair pair("Elm-8R");
    EXPECT_FALSE(pair.takes('F', "E67E")) << "30 KB of the next family";
    Pair juniper("Juniper-60Q");
    EXPECT_FALSE(juniper.takes('F', "E070"));
    EXPECT_FALSE(juniper.takes('F', "D170")) << "32 KB";
    EXPECT_FALSE(juniper.takes('F', "D26C")) << "no size that counts";
}

TEST(LetterWithoutARule, TakesAnything)
{
    Pair pair("Juniper-60Q");
    EXPECT_TRUE(pair.takes('P', "E068"));
    EXPECT_TRUE(pair.takes('T', "FFFE"));
}

TEST(ModelCheck, TellsAMismatchInTheReportAndInABox)
{
    Pair pair("Juniper-60Q");
    WrittenReport report;
    EXPECT_FALSE(pair.takes('I', "D17C"));
    EXPECT_EQ(model_check(pair.session, pair.job, report), Result::wrong_model);
    EXPECT_EQ(report.beeps, 3);
    ASSERT_EQ(report.boxes.size(), 1U);
    EXPECT_EQ(report.boxes, report.lines);
}

TEST(ModelCheck, OfTheRightModelSaysNothing)
{
    Pair pair("Juniper-60Q");
    WrittenReport report;
    EXPECT_TRUE(pair.takes('I', "D17E"));
    EXPECT_EQ(model_check(pair.session, pair.job, report), Result::good);
    EXPECT_TRUE(report.lines.empty());
    EXPECT_TRUE(report.boxes.empty());
}
