// Reads the whole tree and holds it to the rules of the house.
#include "house/rules.h"

#include <gtest/gtest.h>

namespace {

using house::Findings;
using house::SourceFile;

const std::vector<SourceFile>& tree()
{
    static const std::vector<SourceFile> files = house::whole_tree(PROJECT_DIR);
    return files;
}

template <typename Rule> std::string all_findings(Rule rule)
{
    std::string all;
    for (const SourceFile& file : tree()) {
        for (const std::string& one : rule(file))
            all += one + "\n";
    }
    return all;
}

bool has_file(const char* path)
{
    return std::any_of(tree().begin(), tree().end(), [&](const SourceFile& file) { return file.path == path; });
}

} // namespace

TEST(Sources, AreReadWhereTheyLie)
{
    EXPECT_TRUE(has_file("src/platform/timer.h"));
    EXPECT_TRUE(has_file("sim/wire.cpp"));
    EXPECT_TRUE(has_file("tests/house/rules.h"));
    EXPECT_GT(tree().size(), 150U);
}

TEST(Sources, QtStaysInWindowHostAndApps) { EXPECT_EQ(all_findings(house::qt_outside_its_rooms), ""); }
TEST(Sources, AskTheEventLoopForTheTime) { EXPECT_EQ(all_findings(house::time_and_threads), ""); }
TEST(Sources, IncludesFollowTheArrows) { EXPECT_EQ(all_findings(house::includes_against_the_arrows), ""); }
TEST(Sources, OfTheEngineKnowNoControl)
{
    const auto form = std::find_if(
        tree().begin(), tree().end(), [](const SourceFile& file) { return file.path == "src/form/main_form.h"; });
    ASSERT_NE(form, tree().end());
    const std::set<std::string> names = house::control_names(*form);
    ASSERT_GT(names.size(), 120U);
    ASSERT_TRUE(names.contains("textMsg"));
    EXPECT_EQ(all_findings([&](const SourceFile& file) { return house::controls_in_the_engine(file, names); }), "");
}
// A new control is added often, and is not to cost a cup of tea: who needs one or two controls asks for them by name.
TEST(Sources, ThatKnowTheWholeFormAreFew)
{
    const auto sources = house::sources_compiled_with(tree(), "src/form/main_form.h");
    EXPECT_GT(sources.size(), 20U);
    EXPECT_LE(sources.size(), 60U) << "use form/named_controls.h";
}
TEST(Sources, AreShortFilesButForTables) { EXPECT_EQ(all_findings(house::too_long), ""); }
TEST(Sources, LeaveNothingForLater) { EXPECT_EQ(all_findings(house::left_for_later), ""); }
TEST(Sources, HeadersGuardThemselves) { EXPECT_EQ(all_findings(house::header_without_guard), ""); }
TEST(Sources, AreAllInTheBuild)
{
    EXPECT_EQ(all_findings([](const SourceFile& file) { return house::not_in_the_build(file, tree()); }), "");
}
