// What a database refuses, as the books tell it; and a query that does not go on behind the first refusal.
#pragma once

#include "books/books.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

#include <initializer_list>
#include <utility>

namespace vrk {

BooksFault fault_of(const QSqlError& error, bool server, const std::string& where);

// Thrown within the ledger by what cannot go on, and caught where the books answer.
struct LedgerRefuses {
    BooksFault fault;
};

// A database with the words for its refusals.
struct LedgerBase {
    QSqlDatabase database;
    bool server = false;
    std::string where;

    // One statement with its values in place of the question marks, in their order.
    QSqlQuery run(const char* statement, std::initializer_list<QVariant> values = {}) const;
    QSqlQuery run(const QString& statement, const QVariantList& values) const;
};

// A transaction that nobody else writes in, taken back unless it is committed.
class Writing {
public:
    explicit Writing(const LedgerBase& base);
    ~Writing();
    Writing(const Writing&) = delete;
    Writing& operator=(const Writing&) = delete;
    void commit(); // on the disk when this returns

private:
    const LedgerBase& base_;
    bool open_ = true;
};

} // namespace vrk
