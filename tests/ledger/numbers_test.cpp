// Numbers and who has them: one by one, none twice, none skipped, and none that nobody can vouch for.
#include "ledger_bench.h"

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <functional>

using namespace vrk;

namespace {

struct Numbers : LedgerBench {
    // Another program does something with the books and is killed in the middle of it.
    void killed_after(const std::function<void(Books&)>& act) const
    {
        const pid_t child = fork();
        if (child == 0) {
            SqlBooks its_books(address(), "right");
            act(its_books);
            raise(SIGKILL);
        }
        int status = 0;
        waitpid(child, &status, 0);
        ASSERT_TRUE(WIFSIGNALED(status));
        if (on_server())
            usleep(200'000); // until it has noticed
    }
};

void reserve_one(Books& books) { books.reserve(LedgerBench::order()); }
void work_with_one(Books& books)
{
    const auto given = books.reserve(LedgerBench::order());
    books.begin_work({&given.value, 1});
}

} // namespace

TEST_F(Numbers, AreGivenOneByOneFromTheStartOfTheirOrder)
{
    EXPECT_EQ(plain(books.next_number(order()).value), "41");
    EXPECT_EQ(plain(books.next_number(order()).value), "41") << "looking reserves nothing";
    EXPECT_EQ(chip(books, true), "41");
    EXPECT_EQ(chip(books, true), "42");
    EXPECT_EQ(plain(books.next_number(order()).value), "43");
    EXPECT_EQ(chip(books, true, order("valve", "7")), "7") << "each order counts for itself";
    EXPECT_EQ(chip(books, true, order("pump", "1")), "43") << "the start counts once";
}

TEST_F(Numbers, LookLikeThoseOfTheirRule)
{
    EXPECT_EQ(books.reserve(order()).value.value, "00000000041");
    Order bcd = order("bcd", "41");
    bcd.rule.system = AutoIncrease::bcd;
    bcd.rule.increment = -2;
    EXPECT_EQ(books.reserve(bcd).value.value, "00000041");
    EXPECT_EQ(books.reserve(bcd).value.value, "00000039");
}

TEST_F(Numbers, OfTheCodeAndOfTheEepromAreTwoRuns)
{
    Order data = order("pump", "900");
    data.rule.kind = BufferKind::data;
    EXPECT_EQ(chip(books, true), "41");
    EXPECT_EQ(chip(books, true, data), "900");
    EXPECT_EQ(chip(books, true), "42");
}

TEST_F(Numbers, ThatCameBackAreGivenOutBeforeNewOnes)
{
    EXPECT_EQ(chip(books, false), "41");
    EXPECT_EQ(chip(books, true), "41");
    const auto first = books.reserve(order()).value;
    const auto second = books.reserve(order()).value;
    EXPECT_EQ(plain(second.value), "43");
    books.end_chip({{first}, false, {}});
    books.end_chip({{second}, true, {}});
    EXPECT_EQ(plain(books.next_number(order()).value), "42");
    EXPECT_EQ(chip(books, true), "42");
    EXPECT_EQ(chip(books, true), "44");
    EXPECT_EQ(states(books), (States{"41 spent", "42 spent", "43 spent", "44 spent"}));
}

TEST_F(Numbers, OfTwoProgramsNeverMeet)
{
    SqlBooks right(address(), "right");
    const auto left_number = books.reserve(order()).value;
    const auto right_number = right.reserve(order()).value;
    EXPECT_EQ(plain(left_number.value), "41");
    EXPECT_EQ(plain(right_number.value), "42");
    EXPECT_EQ(states(books), (States{"41 reserved", "42 reserved"})) << "both live";
    EXPECT_EQ(right.end_chip({{right_number}, true, {}}).place, EndKept::Place::in_books);
    EXPECT_EQ(books.end_chip({{left_number}, false, {}}).place, EndKept::Place::in_books);
    EXPECT_EQ(chip(right, true), "41");
}

TEST_F(Numbers, ThatNoChipHasSeenAreFreeAgainWhenTheirProgramIsKilled)
{
    killed_after(reserve_one);
    EXPECT_EQ(chip(books, true), "41");
}

TEST_F(Numbers, ThatAChipMayHoldAreUnsureWhenTheirProgramIsKilled)
{
    killed_after(work_with_one);
    EXPECT_EQ(plain(books.next_number(order()).value), "42");
    EXPECT_EQ(chip(books, true), "42") << "never given out by itself";
    EXPECT_EQ(states(books, false), (States{"41 unsure"}));
    EXPECT_EQ(books.numbers({}, false).value.front().station, "right") << "where to look for the chip";
}

TEST_F(Numbers, ThatAreUnsureAreSettledByHand)
{
    killed_after(work_with_one);
    killed_after(work_with_one);
    EXPECT_EQ(chip(books, true), "43");
    EXPECT_FALSE(books.settle({"pump", BufferKind::code, "41", NumberState::free}));
    EXPECT_FALSE(books.settle({"pump", BufferKind::code, "042", NumberState::spent}));
    EXPECT_EQ(states(books), (States{"41 free", "42 spent", "43 spent"}));
    EXPECT_EQ(chip(books, true), "41");
    EXPECT_EQ(chip(books, true), "44");
}

TEST_F(Numbers, ThatAreNotUnsureAreNotSettled)
{
    const auto held = books.reserve(order()).value;
    for (const char* number : {"41", "40", ""}) {
        const auto fault = books.settle({"pump", BufferKind::code, number, NumberState::free});
        ASSERT_TRUE(fault) << number;
        EXPECT_EQ(fault->kind, BooksFault::Kind::not_unsure);
    }
    EXPECT_EQ(books.end_chip({{held}, true, {}}).place, EndKept::Place::in_books);
    EXPECT_TRUE(books.settle({"pump", BufferKind::code, "41", NumberState::free})) << "a good chip holds it";
}

// A station that was cut off from its server comes back with a good chip.
TEST_F(Numbers, SettledTooSoonAreSpentAllTheSameOrToldOf)
{
    const auto given = books.reserve(order()).value;
    ASSERT_FALSE(books.begin_work({&given, 1}));
    by_hand(address(), "UPDATE numbers SET state = 'free'");
    EXPECT_FALSE(books.end_chip({{given}, true, {}}).fault) << "no other chip has been given it";
    EXPECT_EQ(states(books), (States{"41 spent"}));

    const auto second = books.reserve(order()).value;
    ASSERT_FALSE(books.begin_work({&second, 1}));
    by_hand(address(), "UPDATE numbers SET state = 'free' WHERE place = 42");
    SqlBooks right(address(), "right");
    EXPECT_EQ(chip(right, true), "42");
    const EndKept end = books.end_chip({{second}, true, record(second.value, true)});
    ASSERT_TRUE(end.fault);
    EXPECT_EQ(end.fault->kind, BooksFault::Kind::lost);
    EXPECT_EQ(books.chips({}).value.size(), 2U) << "the record of the chip stands";
}

TEST_F(Numbers, TakenAwayBeforeTheChipIsErasedKeepItFromBeingErased)
{
    const auto given = books.reserve(order()).value;
    by_hand(address(), "UPDATE numbers SET state = 'free'");
    const auto fault = books.begin_work({&given, 1});
    ASSERT_TRUE(fault);
    EXPECT_EQ(fault->kind, BooksFault::Kind::lost);
}

TEST_F(Numbers, OfAnOrderThatCountsInAnotherWayAreRefused)
{
    chip(books, true);
    Order other = order();
    other.rule.increment = 2;
    const auto refused = books.reserve(other);
    ASSERT_TRUE(refused.fault);
    EXPECT_EQ(refused.fault->kind, BooksFault::Kind::other_rule);
    EXPECT_EQ(refused.fault->reason, "4 bytes, increment 1, HEX / 4 bytes, increment 2, HEX");
    EXPECT_EQ(chip(books, true), "42");
}

TEST_F(Numbers, ThatAreUsedUpAreToldAndNeverBeginAgain)
{
    Order short_order = order("short", "254");
    short_order.rule.bytes = 1;
    EXPECT_EQ(chip(books, true, short_order), "254");
    EXPECT_EQ(chip(books, true, short_order), "255");
    for (const auto& fault : {books.reserve(short_order).fault, books.next_number(short_order).fault}) {
        ASSERT_TRUE(fault);
        EXPECT_EQ(fault->kind, BooksFault::Kind::used_up);
    }
    Order down = order("down", "0");
    down.rule.increment = -1;
    EXPECT_EQ(books.reserve(down).value.value, "00000000000");
    ASSERT_TRUE(books.reserve(down).fault);
}
