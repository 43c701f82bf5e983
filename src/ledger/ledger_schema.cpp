#include "ledger/ledger_schema.h"

namespace vrk {

namespace {

constexpr int version = 1;

// KEY stands for a number that the database gives by itself. States are written as their words. The place of a number
// within its order is its value: padding does not tell two numbers apart.
constexpr const char* tables[] = {
    "CREATE TABLE vrk_ledger (version INTEGER NOT NULL)",
    "CREATE TABLE holders (id KEY, station TEXT, host TEXT, boot TEXT, pid BIGINT, started TEXT)",
    "CREATE TABLE number_orders (id KEY, name TEXT NOT NULL, kind INTEGER NOT NULL, bytes INTEGER NOT NULL,"
    " increment INTEGER NOT NULL, base INTEGER NOT NULL, next_place BIGINT NOT NULL, UNIQUE (name, kind))",
    "CREATE TABLE numbers (id KEY, order_id BIGINT NOT NULL REFERENCES number_orders, place BIGINT NOT NULL,"
    " value TEXT NOT NULL, state TEXT NOT NULL, holder BIGINT REFERENCES holders, token TEXT NOT NULL,"
    " changed TEXT NOT NULL, UNIQUE (order_id, place))",
    "CREATE INDEX open_numbers ON numbers (order_id, state, id) WHERE state <> 'spent'",
};
constexpr const char* indices[] = {
    "CREATE INDEX chips_by_time ON chips (at)",
    "CREATE INDEX chips_by_factory_number ON chips (factory_number) WHERE factory_number <> ''",
    "CREATE INDEX chips_by_number ON chips (ltrim(number, '0'))",
};

// A record is never changed and never taken away.
constexpr const char* file_seals[] = {
    "CREATE TRIGGER chips_stay BEFORE UPDATE ON chips BEGIN SELECT RAISE(ABORT, 'a record stays as it is'); END",
    "CREATE TRIGGER chips_remain BEFORE DELETE ON chips BEGIN SELECT RAISE(ABORT, 'a record stays as it is'); END",
};
constexpr const char* server_seals[] = {
    "CREATE FUNCTION refuse_change() RETURNS trigger LANGUAGE plpgsql AS"
    " 'BEGIN RAISE EXCEPTION ''a record stays as it is''; END'",
    "CREATE TRIGGER chips_stay BEFORE UPDATE OR DELETE ON chips FOR EACH ROW EXECUTE FUNCTION refuse_change()",
};

QString chips_table()
{
    QString statement = "CREATE TABLE chips (id KEY";
    for (const RecordField& field : record_fields)
        statement +=
            QString{", "} + field.name + (field.text == &ChipRecord::chip ? " TEXT NOT NULL UNIQUE" : " TEXT NOT NULL");
    return statement + ")";
}

void make(const LedgerBase& base, QString statement)
{
    base.run(statement.replace(" KEY", base.server ? " BIGSERIAL PRIMARY KEY" : " INTEGER PRIMARY KEY"), {});
}

} // namespace

bool has_tables(const LedgerBase& base)
{
    QSqlQuery found = base.run(base.server
            ? "SELECT 1 FROM pg_tables WHERE schemaname = current_schema() AND tablename = 'vrk_ledger'"
            : "SELECT name FROM sqlite_master WHERE type = 'table' ORDER BY name = 'vrk_ledger' DESC");
    if (!found.next())
        return false;
    if (!base.server && found.value(0).toString() != "vrk_ledger") // another program's file
        throw LedgerRefuses{{BooksFault::Kind::no_ledger, base.where, found.value(0).toString().toStdString()}};
    found.finish();
    QSqlQuery told = base.run("SELECT version FROM vrk_ledger");
    if (!told.next())
        throw LedgerRefuses{{BooksFault::Kind::no_ledger, base.where, {}}};
    const int found_version = told.value(0).toInt();
    if (found_version > version)
        throw LedgerRefuses{{BooksFault::Kind::newer, base.where,
            "version " + std::to_string(found_version) + ", this program knows " + std::to_string(version)}};
    return true;
}

void prepare_tables(const LedgerBase& base)
{
    if (base.server)
        base.run("SELECT pg_advisory_xact_lock(86827583)"); // two stations that start at once; the number is ours alone
    if (has_tables(base))
        return;
    for (const char* statement : tables)
        make(base, statement);
    make(base, chips_table());
    for (const char* statement : indices)
        make(base, statement);
    if (base.server) {
        for (const char* statement : server_seals)
            make(base, statement);
    } else {
        for (const char* statement : file_seals)
            make(base, statement);
    }
    base.run("INSERT INTO vrk_ledger (version) VALUES (?)", {version});
}

} // namespace vrk
