// The books in a database: SQLite, one file of the user's, or PostgreSQL, which several stations share.
//
// Every change is one transaction that nobody else writes in, and is on the disk when its call returns. A number is
// given with a token, and who ends a chip has to show it, so what a hand has settled meanwhile is not taken back in
// silence. Whether the holder of a number still lives is asked of the system where the file lies on this machine, and
// of the server by a lock that dies with his connection.
#pragma once

#include "books/books.h"
#include "ledger/kept_chips.h"
#include "ledger/ledger_address.h"
#include "ledger/sql_faults.h"

#include "platform/disk.h"

#include <utility>

namespace vrk {

class SqlBooks final : public Books {
public:
    // The disk is for what has to be kept beside the ledger. Opens nothing yet.
    explicit SqlBooks(const std::string& address = {}, const std::string& station = {}, Disk& disk = system_disk());
    ~SqlBooks() override;
    SqlBooks(const SqlBooks&) = delete;
    SqlBooks& operator=(const SqlBooks&) = delete;

    void keep_at(const std::string& address, const std::string& station) override;
    std::string where() const override { return base_.where; }
    std::optional<BooksFault> open() override;
    BooksAnswer<std::string> next_number(const Order& order) override;
    BooksAnswer<GivenNumber> reserve(const Order& order) override;
    std::optional<BooksFault> begin_work(std::span<const GivenNumber> numbers) override;
    EndKept end_chip(const ClosedChip& end) override;
    BooksAnswer<std::vector<NumberRow>> numbers(const std::string& order, bool all) override;
    std::optional<BooksFault> settle(const SettleWish& wish) override;
    BooksAnswer<std::vector<ChipRecord>> chips(const ChipFilter& filter) override;
    BooksAnswer<std::vector<HourTotal>> hours(const ChipFilter& filter) override;
    BooksAnswer<std::optional<ChipRecord>> earlier_good(const ChipRecord& chip) override;

private:
    enum class Purpose { read, write };
    struct OpenOrder {
        std::int64_t id = 0;
        std::int64_t next_place = 0;
    };
    struct Choice {
        std::int64_t id = 0; // 0: a new one
        std::int64_t place = 0;
    };

    template <typename Act> auto answered(Act act);
    template <typename Act> std::optional<BooksFault> done(Act act);

    // All of these throw what the books refuse.
    void connect(Purpose purpose);
    void disconnect();
    void set_up_file();
    void take_in_kept();
    bool file_is_there() const;
    void know_holder();
    bool is_dead(const QSqlQuery& holder) const;
    void sweep(const QString& condition, const QVariantList& values);
    OpenOrder open_order(const Order& order);
    Choice choose(const OpenOrder& open, const Order& order);
    bool write_end(const ClosedChip& end); // false: a number was not the chip's any more

    LedgerAddress address_;
    std::string station_;
    Disk& disk_;
    KeptChips kept_;
    LedgerBase base_;
    std::int64_t holder_ = 0; // row of this process; 0: it has none yet
    std::pair<std::uint64_t, std::uint64_t> file_id_; // device and number of the file that is open
};

} // namespace vrk
