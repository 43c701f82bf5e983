// A ledger on a server that goes away under the line. Told with a server only, as tests/ledger/on_a_server starts one.
#include "ledger_bench.h"

#include <QDir>

#include <unistd.h>

using namespace vrk;
using Kind = BooksFault::Kind;

namespace {

struct Server : LedgerBench {
    void SetUp() override
    {
        if (!on_server())
            GTEST_SKIP() << "no server";
    }
    void cut_all_connections() const
    {
        by_hand(address(),
            "SELECT pg_terminate_backend(pid) FROM pg_stat_activity WHERE pid <> pg_backend_pid()"
            " AND application_name = 'vrk-isp'");
        usleep(200'000); // until they are gone
    }
};

} // namespace

TEST_F(Server, CutOffInTheMiddleOfAChipHearsOfItLater)
{
    ASSERT_FALSE(books.open());
    const auto given = books.reserve(order()).value;
    ASSERT_FALSE(books.begin_work({&given, 1}));
    cut_all_connections();
    const EndKept end = books.end_chip({{given}, true, record(given.value, true)});
    EXPECT_EQ(end.place, EndKept::Place::beside);
    SqlBooks right(address(), "right");
    EXPECT_EQ(states(right), (States{"41 unsure"}));

    EXPECT_FALSE(books.open());
    EXPECT_EQ(states(books), (States{"41 spent"}));
    EXPECT_EQ(books.chips({}).value.size(), 1U);
    EXPECT_EQ(chip(books, true), "42");
}

TEST_F(Server, CutOffBeforeTheChipIsErasedLetsTheNumberGoAndTheChipStayAsItIs)
{
    ASSERT_FALSE(books.open());
    const auto given = books.reserve(order()).value;
    cut_all_connections();
    SqlBooks right(address(), "right");
    EXPECT_EQ(chip(right, true), "41");
    EXPECT_TRUE(books.begin_work({&given, 1})) << "the connection is gone";
    EXPECT_TRUE(books.begin_work({&given, 1})) << "and so is the number";
}

TEST_F(Server, ThatIsNotThereIsToldBeforeTheFirstChip)
{
    SqlBooks nowhere("postgresql://line@/postgres?host=" + folder.path().toStdString());
    const auto fault = nowhere.open();
    ASSERT_TRUE(fault);
    EXPECT_EQ(fault->kind, Kind::unreachable);
    EXPECT_EQ(nowhere.reserve(order()).fault->kind, Kind::unreachable);
}

TEST_F(Server, MadeByALaterVersionIsLeftAlone)
{
    chip(books, true);
    by_hand(address(), "UPDATE vrk_ledger SET version = 2");
    EXPECT_EQ(SqlBooks(address()).open()->kind, Kind::newer);
}

TEST_F(Server, ThatMayOnlyBeReadIsToldBeforeTheFirstChip)
{
    chip(books, true);
    by_hand(address(), "ALTER ROLE line SET default_transaction_read_only = on");
    EXPECT_EQ(SqlBooks(address()).open().value_or(BooksFault{}).kind, Kind::read_only);
    by_hand(address(), "SET TRANSACTION READ WRITE; ALTER ROLE line RESET default_transaction_read_only");
}
