// Where a ledger is kept: a file of the user's, or a server that several stations share.
#pragma once

#include <QSqlDatabase>
#include <QString>

#include <string>

namespace vrk {

struct LedgerAddress {
    bool server = false;
    QString file; // of SQLite, absolute, links followed
    QString connection; // to PostgreSQL, key=value as libpq takes them
    std::string shown; // for people, without a password
};

// Of a path, of "postgresql://user@host:port/database?key=value" or of "host=... dbname=...". Empty: the user's own
// file.
LedgerAddress ledger_address(const std::string& text);

// $XDG_DATA_HOME/VRK-ISP/ledger.sqlite
std::string default_ledger();

// A connection with a name of its own, not open yet.
QSqlDatabase ledger_connection(const LedgerAddress& address, const QString& name);

} // namespace vrk
