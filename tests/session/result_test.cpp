// The table by which programs and people read how a cycle ended.
#include "session/result.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <set>
#include <string>

using namespace vrk;

TEST(ResultClasses, HasEachResultOnce)
{
    int next = 0;
    for (int value = 0; value <= static_cast<int>(Result::off_frequency); ++value) {
        const auto result = static_cast<Result>(value);
        EXPECT_EQ(std::ranges::count(result_classes(), result, &ResultClass::result), 1) << value;
        ++next;
    }
    EXPECT_EQ(result_classes().size(), static_cast<std::size_t>(next));
}

TEST(ResultClasses, GivesEachAWordAndAnExitCodeOfItsOwn)
{
    std::set<std::string_view> words;
    std::set<int> codes;
    for (const ResultClass& row : result_classes()) {
        EXPECT_FALSE(row.word.empty());
        EXPECT_TRUE(std::ranges::all_of(row.word, [](unsigned char c) { return std::islower(c) != 0 || c == '-'; }))
            << row.word;
        EXPECT_TRUE(words.insert(row.word).second) << row.word;
        EXPECT_TRUE(codes.insert(row.exit_code).second) << row.word;
    }
}

// 1 and 2 are the command line's own, and a shell tells of signals from 128 on.
TEST(ResultClasses, KeepsItsExitCodesClearOfThoseOfOthers)
{
    for (const ResultClass& row : result_classes()) {
        const bool own = row.result == Result::good || row.result == Result::stopped;
        EXPECT_TRUE(own || (row.exit_code >= 10 && row.exit_code < 126)) << row.word;
    }
    EXPECT_EQ(class_of(Result::good).exit_code, 0);
    EXPECT_EQ(class_of(Result::stopped).exit_code, 130);
}

// Scripts hang on them.
TEST(ResultClasses, KeepsTheWordsAndCodesThatAreInUse)
{
    EXPECT_EQ(class_of(Result::no_answer).word, "no-answer");
    EXPECT_EQ(class_of(Result::no_answer).exit_code, 13);
    EXPECT_EQ(class_of(Result::programming_failed).word, "programming-failed");
    EXPECT_EQ(class_of(Result::programming_failed).exit_code, 21);
    EXPECT_EQ(class_of(Result::number_refused).word, "number-refused");
    EXPECT_EQ(class_of(Result::number_refused).exit_code, 29);
}

TEST(ResultClasses, SaysWhatToDoNextInBothLanguages)
{
    for (const ResultClass& row : result_classes()) {
        EXPECT_TRUE(row.next.en.ends_with(".")) << row.word;
        EXPECT_TRUE(row.next.zh.ends_with("。")) << row.word;
        EXPECT_EQ(row.next.en.find('\n'), std::string_view::npos) << row.word;
    }
}
