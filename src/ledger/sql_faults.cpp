#include "ledger/sql_faults.h"

#include <algorithm>
#include <iterator>

namespace vrk {

namespace {

using Kind = BooksFault::Kind;

// clang-format off
struct CodeKind { const char* code; Kind kind; };
constexpr CodeKind file_codes[] = { // of SQLite, the low byte of its result codes
    { "5",  Kind::busy },
    { "6",  Kind::busy },
    { "8",  Kind::read_only },
    { "11", Kind::no_ledger },
    { "13", Kind::full },
    { "14", Kind::unreachable },
    { "26", Kind::no_ledger },
};
constexpr CodeKind server_codes[] = { // the SQLSTATE of PostgreSQL, or the class that it begins with
    { "53100", Kind::full },
    { "25006", Kind::read_only },
    { "42501", Kind::read_only },
    { "57014", Kind::busy },
    { "55P03", Kind::busy },
    { "40",    Kind::busy },
    { "08",    Kind::unreachable },
    { "57P",   Kind::unreachable },
    { "28",    Kind::unreachable },
    { "3D000", Kind::unreachable },
};
// clang-format on

Kind kind_of(const QSqlError& error, bool server)
{
    const QString code = error.nativeErrorCode();
    if (error.type() == QSqlError::ConnectionError && (server || code.isEmpty())) // SQLite says it of much else, too
        return Kind::unreachable;
    if (server) {
        const auto* row =
            std::ranges::find_if(server_codes, [&](const CodeKind& each) { return code.startsWith(each.code); });
        // Without a code it is the connection that has broken, not the statement.
        return row != std::end(server_codes) ? row->kind : code.isEmpty() ? Kind::unreachable : Kind::refused;
    }
    const QString low_byte = QString::number(code.toInt() & 0xFF);
    const auto* row = std::ranges::find_if(file_codes, [&](const CodeKind& each) { return low_byte == each.code; });
    return row == std::end(file_codes) ? Kind::refused : row->kind;
}

} // namespace

BooksFault fault_of(const QSqlError& error, bool server, const std::string& where)
{
    const QString words = error.databaseText().isEmpty() ? error.driverText() : error.databaseText();
    return {kind_of(error, server), where, words.simplified().toStdString()};
}

QSqlQuery LedgerBase::run(const char* statement, std::initializer_list<QVariant> values) const
{
    return run(QString::fromUtf8(statement), QVariantList(values));
}

QSqlQuery LedgerBase::run(const QString& statement, const QVariantList& values) const
{
    QSqlQuery query(database);
    query.setForwardOnly(!server); // a server would forget its answer at the next question
    bool done = false;
    if (values.isEmpty()) {
        done = query.exec(statement);
    } else if (query.prepare(statement)) {
        for (const QVariant& value : values)
            query.addBindValue(value);
        done = query.exec();
    }
    if (!done)
        throw LedgerRefuses{fault_of(query.lastError(), server, where)};
    return query;
}

Writing::Writing(const LedgerBase& base)
    : base_(base)
{
    base.run(base.server ? "BEGIN" : "BEGIN IMMEDIATE");
}

Writing::~Writing()
{
    if (open_)
        QSqlQuery(base_.database).exec("ROLLBACK");
}

void Writing::commit()
{
    base_.run("COMMIT");
    open_ = false;
}

} // namespace vrk
