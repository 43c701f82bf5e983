// What a ledger in a file does when it cannot do its work: it says so before the first chip, and a chip that is in hand
// is not forgotten.
#include "ledger_bench.h"

#include "failures/failing_calls.h"
#include "failures/failing_files.h"

#include <QDir>
#include <QFile>

#include <sys/stat.h>
#include <unistd.h>

#include <fstream>
#include <set>

using namespace vrk;
using Kind = BooksFault::Kind;

namespace {

struct Faults : LedgerBench {
    static Kind kind_of(const std::optional<BooksFault>& fault)
    {
        EXPECT_TRUE(fault) << "there is no fault";
        return fault ? fault->kind : Kind::refused;
    }
    void remove_ledger() const
    {
        for (const char* end : {"", "-wal", "-shm"})
            std::remove((address() + end).c_str());
    }
    int kept() const { return int(QDir(QString::fromStdString(address() + "-kept")).entryList(QDir::Files).size()); }
};

// Rights count for nothing to the system's own user.
struct AsNobody {
    explicit AsNobody(const QTemporaryDir& folder)
    {
        ::chmod(folder.path().toUtf8().constData(), 0755);
        EXPECT_EQ(::seteuid(was_root ? 65534 : ::geteuid()), 0);
    }
    ~AsNobody() { EXPECT_EQ(::seteuid(was_root ? 0 : ::geteuid()), 0); }
    AsNobody(const AsNobody&) = delete;
    AsNobody& operator=(const AsNobody&) = delete;

    const bool was_root = ::geteuid() == 0;
};

} // namespace

TEST_F(Faults, ALedgerMadeByALaterVersionIsLeftAlone)
{
    chip(books, true);
    by_hand(address(), "UPDATE vrk_ledger SET version = 2");
    SqlBooks next(address());
    const auto fault = next.open();
    EXPECT_EQ(kind_of(fault), Kind::newer);
    EXPECT_NE(fault_text(*fault).en.find("made by a later version"), std::string::npos);
    EXPECT_EQ(kind_of(next.reserve(order()).fault), Kind::newer);
    EXPECT_EQ(kind_of(next.chips({}).fault), Kind::newer);
}

TEST_F(Faults, AFileThatIsNoLedgerIsLeftAlone)
{
    const std::string text(5000, 'x');
    std::ofstream(address()) << text;
    EXPECT_EQ(kind_of(books.open()), Kind::no_ledger);
    std::ifstream file(address());
    EXPECT_EQ((std::string{std::istreambuf_iterator<char>{file}, {}}), text);
}

TEST_F(Faults, TheDatabaseOfAnotherProgramIsLeftAlone)
{
    by_hand(address(), "CREATE TABLE songs (name TEXT)");
    EXPECT_EQ(kind_of(books.open()), Kind::no_ledger);
}

TEST_F(Faults, ALedgerThatCanOnlyBeReadIsToldBeforeTheFirstChip)
{
    chip(books, true);
    remove_ledger();
    SqlBooks(in_folder("own.sqlite")).open();
    const AsNobody nobody(folder);
    ::chmod(in_folder("own.sqlite").c_str(), 0444);
    SqlBooks read_only(in_folder("own.sqlite"));
    EXPECT_EQ(kind_of(read_only.open()), Kind::read_only);
    EXPECT_EQ(kind_of(read_only.reserve(order()).fault), Kind::read_only);
}

TEST_F(Faults, AFullDiskIsToldBeforeTheFirstChip)
{
    bool full = false;
    const auto fails = [&full](const char* call) { return full && std::string_view{call} == "pwrite64"; };
    const FailingFiles disk(folder.path().toStdString(), fails, ENOSPC);
    ASSERT_FALSE(books.open());
    chip(books, true);
    full = true;
    const auto refused = books.reserve(order());
    EXPECT_EQ(kind_of(refused.fault), Kind::full);
    EXPECT_NE(fault_text(*refused.fault).en.find("The disk is full"), std::string::npos);
    full = false;
    EXPECT_EQ(chip(books, true), "42");
}

TEST_F(Faults, AFolderThatCannotBeMadeIsToldBeforeTheFirstChip)
{
    std::ofstream(in_folder("file")) << "x";
    SqlBooks nowhere(in_folder("file") + "/ledger.sqlite");
    EXPECT_EQ(kind_of(nowhere.open()), Kind::unreachable);
}

TEST_F(Faults, AProgramThatHoldsTheLedgerTooLongIsToldOf)
{
    ASSERT_FALSE(books.open());
    {
        QSqlDatabase other = ledger_connection(ledger_address(address()), "other");
        ASSERT_TRUE(other.open());
        QSqlQuery(other).exec("BEGIN IMMEDIATE");
        EXPECT_EQ(kind_of(books.open()), Kind::busy);
    }
    QSqlDatabase::removeDatabase("other");
    EXPECT_FALSE(books.open());
}

TEST_F(Faults, ALedgerThatIsTakenAwayIsNotBegunAnew)
{
    ASSERT_FALSE(books.open());
    chip(books, true);
    remove_ledger();
    EXPECT_EQ(kind_of(books.reserve(order()).fault), Kind::gone);
    EXPECT_EQ(kind_of(books.open()), Kind::gone);
    SqlBooks next(address());
    EXPECT_EQ(kind_of(next.open()), Kind::gone) << "its numbers would be given a second time";
    EXPECT_FALSE(QFile::exists(QString::fromStdString(address())));
}

TEST_F(Faults, AChipThatEndsWhenTheLedgerIsGoneIsKeptBesideItAndTakenInLater)
{
    ASSERT_FALSE(books.open());
    const auto given = books.reserve(order()).value;
    ASSERT_FALSE(books.begin_work({&given, 1}));
    ASSERT_EQ(std::rename(address().c_str(), in_folder("elsewhere").c_str()), 0);
    const EndKept end = books.end_chip({{given}, true, record(given.value, true)});
    EXPECT_EQ(end.place, EndKept::Place::beside);
    EXPECT_EQ(kind_of(end.fault), Kind::gone);
    EXPECT_EQ(kept(), 1);
    EXPECT_EQ(kind_of(books.open()), Kind::gone) << "no new chip is begun";

    ASSERT_EQ(std::rename(in_folder("elsewhere").c_str(), address().c_str()), 0);
    SqlBooks next(address());
    EXPECT_FALSE(next.open());
    EXPECT_EQ(kept(), 0);
    EXPECT_EQ(states(next), (States{"41 spent"}));
    ASSERT_EQ(next.chips({}).value.size(), 1U);
    EXPECT_EQ(next.chips({}).value[0].number, given.value);
    EXPECT_EQ(chip(next, true), "42");
}

TEST_F(Faults, AKeptChipThatIsTakenInTwiceCountsOnce)
{
    ASSERT_FALSE(books.open());
    const auto given = books.reserve(order()).value;
    ASSERT_EQ(std::rename(address().c_str(), in_folder("elsewhere").c_str()), 0);
    books.end_chip({{given}, true, record(given.value, true)});
    ASSERT_EQ(std::rename(in_folder("elsewhere").c_str(), address().c_str()), 0);
    const QDir place(QString::fromStdString(address() + "-kept"));
    const QString name = place.entryList(QDir::Files).first();
    QFile::copy(place.filePath(name), folder.filePath("again"));
    EXPECT_FALSE(books.open());
    QFile::copy(folder.filePath("again"), place.filePath(name));
    EXPECT_FALSE(books.open());
    EXPECT_EQ(books.chips({}).value.size(), 1U);
    EXPECT_EQ(states(books), (States{"41 spent"}));
}

TEST_F(Faults, AKeptChipThatCannotBeReadStopsTheLine)
{
    ASSERT_FALSE(books.open());
    std::ofstream(address() + "-kept/1.chip") << "half a fi";
    const auto fault = books.open();
    EXPECT_EQ(kind_of(fault), Kind::no_ledger);
    EXPECT_EQ(fault->where, address() + "-kept/1.chip");
    EXPECT_EQ(kept(), 1) << "it is not thrown away";
}

TEST_F(Faults, WhereNeitherTheLedgerNorAFileTakesAChipItIsSaid)
{
    bool broken = false;
    const FailingFiles disk(folder.path().toStdString(), [&broken](const char*) { return broken; });
    ASSERT_FALSE(books.open());
    const auto given = books.reserve(order()).value;
    ASSERT_FALSE(books.begin_work({&given, 1}));
    broken = true;
    const EndKept end = books.end_chip({{given}, true, record(given.value, true)});
    EXPECT_EQ(end.place, EndKept::Place::nowhere);
    EXPECT_TRUE(end.fault);
    EXPECT_NE(end.beside_reason, "");
    broken = false;
}

// Chips after chips, with one call of the system failing in each run: whatever the books answer, no number comes twice,
// and one in a good chip is spent or kept as such.
TEST_F(Faults, WhicheverCallToTheDiskFailsNoNumberComesTwice)
{
    int runs = 0;
    int failures = 0;
    for (bool failed = true; failed; ++runs) {
        FailingCalls calls(runs + 1);
        const std::string own = in_folder(("run" + std::to_string(runs)).c_str());
        const std::string ledger = own + "/ledger.sqlite";
        std::multiset<std::string> good;
        {
            const FailingFiles disk(own, [&calls](const char* call) { return calls.fails(call); });
            SqlBooks line(ledger);
            ASSERT_FALSE(line.open());
            calls.counting = true;
            for (int each = 0; each < 3; ++each) {
                if (line.open())
                    continue;
                const auto given = line.reserve(order());
                if (given.fault || line.begin_work({&given.value, 1}))
                    continue;
                good.insert(plain(given.value.value));
                EXPECT_NE(line.end_chip({{given.value}, true, {}}).place, EndKept::Place::nowhere) << calls.failed();
            }
            calls.counting = false;
        }
        SqlBooks next(ledger);
        ASSERT_FALSE(next.open()) << calls.failed();
        const auto words = states(next);
        for (const std::string& number : good) {
            EXPECT_EQ(good.count(number), 1U) << number << " twice, with " << calls.failed();
            EXPECT_EQ(std::count(words.begin(), words.end(), number + " spent"), 1) << number << " " << calls.failed();
        }
        EXPECT_FALSE(good.contains(plain(next.next_number(order()).value)));
        failed = !calls.failed().empty();
        failures += failed ? 1 : 0;
    }
    EXPECT_GT(failures, 10) << "the disk was hardly asked";
}
