#include "ledger/sql_books.h"

#include "ledger/holder.h"
#include "ledger/ledger_schema.h"

#include "platform/text_number.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QUuid>

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <type_traits>

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vrk {

namespace {

using Kind = BooksFault::Kind;

constexpr int holder_locks = 86827584; // class of the server's locks by which holders live
// The second half says to the database that its index of open numbers is enough.
constexpr const char* held_states = "IN ('reserved', 'at-work') AND n.state <> 'spent'";

QString text(std::string_view words) { return QString::fromUtf8(words.data(), qsizetype(words.size())); }
QString text(NumberState state) { return text(word_of(state)); }
QString now() { return QDateTime::currentDateTime().toString("yyyy-MM-dd HH:mm:ss"); }
QString new_key() { return QUuid::createUuid().toString(QUuid::WithoutBraces); }

std::string user_name()
{
    const passwd* user = ::getpwuid(::getuid());
    return user != nullptr ? user->pw_name : std::to_string(::getuid());
}

QString folder_of_kept(const LedgerAddress& address)
{
    if (!address.server)
        return address.file + "-kept";
    const QByteArray name = QCryptographicHash::hash(text(address.shown).toUtf8(), QCryptographicHash::Sha1).toHex();
    return QFileInfo(text(default_ledger())).path() + "/server-" + name.left(12) + "-kept";
}

std::pair<std::uint64_t, std::uint64_t> id_of(const QString& file)
{
    struct stat facts { };
    if (::stat(file.toUtf8().constData(), &facts) != 0)
        return {};
    return {facts.st_dev, facts.st_ino};
}

std::string order_of(const QSqlQuery& row) { return row.value(0).toString().toStdString(); }

// The WHERE of a filter and its values.
struct Condition {
    QString words = " WHERE 1 = 1";
    QVariantList values;

    void add(const char* words_with_mark, const std::string& value)
    {
        if (value.empty())
            return;
        words += QString{" AND "} + words_with_mark;
        values << text(value);
    }
};

Condition condition_of(const ChipFilter& filter)
{
    Condition condition;
    condition.add("at >= ?", filter.from);
    condition.add("at < ?", filter.to);
    if (filter.result == "bad")
        condition.words += " AND result <> 'good'";
    else
        condition.add("result = ?", filter.result);
    condition.add("model = ?", filter.model);
    condition.add("station = ?", filter.station);
    condition.add("number_order = ?", filter.order);
    condition.add("ltrim(number, '0') = ltrim(?, '0')", filter.number);
    condition.add("factory_number = ?", filter.factory_number);
    return condition;
}

QString record_columns()
{
    QStringList names;
    for (const RecordField& field : record_fields)
        names << field.name;
    return names.join(", ");
}

ChipRecord record_in(const QSqlQuery& row)
{
    ChipRecord record;
    for (std::size_t i = 0; i < record_fields.size(); ++i)
        record.*record_fields[i].text = row.value(int(i)).toString().toStdString();
    return record;
}

void append_record(const LedgerBase& base, const ChipRecord& record)
{
    QStringList marks;
    QVariantList values;
    for (const RecordField& field : record_fields) {
        marks << "?";
        values << QString::fromStdString(record.*field.text);
    }
    // A file that was taken in and could not be removed comes a second time.
    base.run(
        "INSERT INTO chips (" + record_columns() + ") VALUES (" + marks.join(", ") + ") ON CONFLICT (chip) DO NOTHING",
        values);
}

std::string rule_text(int bytes, int increment, int base)
{
    constexpr const char* bases[] = {"HEX", "BCD", "ASCII"};
    return std::to_string(bytes) + " bytes, increment " + std::to_string(increment) + ", " +
        bases[std::clamp(base, 0, 2)];
}

} // namespace

SqlBooks::SqlBooks(const std::string& address, const std::string& station, Disk& disk)
    : address_(ledger_address(address))
    , station_(station)
    , disk_(disk)
    , kept_(folder_of_kept(address_))
{
    base_.server = address_.server;
    base_.where = address_.shown;
}

SqlBooks::~SqlBooks() { disconnect(); }

void SqlBooks::keep_at(const std::string& address, const std::string& station)
{
    const LedgerAddress wanted = ledger_address(address);
    const bool same_place = wanted.file == address_.file && wanted.connection == address_.connection;
    if (same_place && station == station_)
        return;
    disconnect(); // the next number is held under the new name
    address_ = wanted;
    station_ = station;
    kept_ = KeptChips(folder_of_kept(address_));
    base_.server = address_.server;
    base_.where = address_.shown;
}

// What an act answers, or what the ledger has refused. A connection that has refused once is made anew the next time.
template <typename Act> auto SqlBooks::answered(Act act)
{
    BooksAnswer<std::invoke_result_t<Act>> answer;
    try {
        answer.value = act();
    } catch (const LedgerRefuses& refusal) {
        answer.fault = refusal.fault;
        if (refusal.fault.kind == Kind::unreachable || refusal.fault.kind == Kind::gone)
            disconnect();
    }
    return answer;
}

template <typename Act> std::optional<BooksFault> SqlBooks::done(Act act)
{
    return answered([&] {
        act();
        return true;
    }).fault;
}

void SqlBooks::disconnect()
{
    const QString name = base_.database.connectionName();
    base_.database = QSqlDatabase();
    if (!name.isEmpty())
        QSqlDatabase::removeDatabase(name);
    holder_ = 0;
}

bool SqlBooks::file_is_there() const { return address_.server || id_of(address_.file) == file_id_; }

void SqlBooks::connect(Purpose purpose)
{
    // A file that is deleted while it is open could still be written, and nobody would ever read it.
    if (base_.database.isOpen() && file_is_there())
        return;
    const bool was_open = base_.database.isOpen();
    disconnect();
    if (!address_.server && !QFileInfo::exists(address_.file)) {
        if (was_open || kept_.folder_is_there())
            throw LedgerRefuses{{Kind::gone, base_.where, {}}};
        if (purpose == Purpose::read)
            throw LedgerRefuses{{Kind::unreachable, base_.where, "no such file"}};
        std::error_code fault;
        std::filesystem::create_directories(std::filesystem::path(address_.shown).parent_path(), fault);
        if (fault)
            throw LedgerRefuses{{Kind::unreachable, base_.where, fault.message()}};
    }
    const QString name = new_key();
    {
        QSqlDatabase database = ledger_connection(address_, name);
        if (!database.open()) {
            const BooksFault fault = fault_of(database.lastError(), base_.server, base_.where);
            database = QSqlDatabase();
            QSqlDatabase::removeDatabase(name);
            throw LedgerRefuses{fault};
        }
        base_.database = database;
    }
    try {
        if (!base_.server)
            set_up_file();
        if (purpose == Purpose::write || !has_tables(base_)) {
            Writing writing(base_);
            prepare_tables(base_);
            writing.commit();
        }
    } catch (const LedgerRefuses&) {
        disconnect();
        throw;
    }
    file_id_ = id_of(address_.file);
}

void SqlBooks::set_up_file()
{
    has_tables(base_); // what is no ledger of ours is not touched
    base_.run("PRAGMA synchronous = FULL");
    base_.run("PRAGMA foreign_keys = ON");
    // One flush for a change. Where there is none the plain journal stays; and of two programs that make a ledger at
    // the same time one finds it held, and need not wait.
    QSqlQuery(base_.database).exec("PRAGMA journal_mode = WAL");
}

std::optional<BooksFault> SqlBooks::open()
{
    return done([this] {
        connect(Purpose::write);
        if (const std::string reason = kept_.make_folder(); !reason.empty())
            throw LedgerRefuses{{Kind::read_only, base_.where, reason}};
        {
            const Writing taken_back(base_); // never committed: it is seen whether it could be
            base_.run("UPDATE vrk_ledger SET version = version");
        }
        take_in_kept();
    });
}

// Each in a step of its own. One whose number is somebody else's by now is told, once, and stands in the record.
void SqlBooks::take_in_kept()
{
    std::string lost;
    for (const QString& file : kept_.files()) {
        const auto end = KeptChips::read(file);
        if (!end)
            throw LedgerRefuses{{Kind::no_ledger, file.toStdString(), {}}};
        Writing writing(base_);
        if (!write_end(*end))
            lost += (lost.empty() ? "" : ", ") + end->numbers.front().value;
        writing.commit();
        QFile::remove(file);
    }
    if (!lost.empty())
        throw LedgerRefuses{{Kind::lost, lost, {}}};
}

void SqlBooks::know_holder()
{
    if (holder_ != 0)
        return;
    const Holder self = this_process(station_);
    Writing writing(base_);
    QSqlQuery made =
        base_.run("INSERT INTO holders (station, host, boot, pid, started) VALUES (?, ?, ?, ?, ?) RETURNING id",
            {text(self.station), text(self.host), text(self.boot), qint64{self.pid}, text(self.started)});
    made.next();
    const std::int64_t id = made.value(0).toLongLong();
    made.finish();
    writing.commit();
    if (base_.server)
        base_.run("SELECT pg_advisory_lock(?, ?)", {holder_locks, int(id)});
    holder_ = id;
}

// Of a row with the holder's id, host, boot, pid and started behind its first two columns.
bool SqlBooks::is_dead(const QSqlQuery& row) const
{
    if (!base_.server) {
        const Holder holder{{}, row.value(3).toString().toStdString(), row.value(4).toString().toStdString(),
            row.value(5).toLongLong(), row.value(6).toString().toStdString()};
        return is_alive(holder) == Alive::no;
    }
    QSqlQuery lock = base_.run("SELECT pg_try_advisory_xact_lock(?, ?)", {holder_locks, row.value(2).toInt()});
    return lock.next() && lock.value(0).toBool();
}

// What the dead have left: a number that no chip has seen is free again, of one that was at work nobody can know.
void SqlBooks::sweep(const QString& condition, const QVariantList& values)
{
    QSqlQuery held =
        base_.run("SELECT n.id, n.state, h.id, h.host, h.boot, h.pid, h.started FROM numbers n JOIN holders h"
                  " ON h.id = n.holder WHERE n.state " +
                QString{held_states} + " AND h.id <> ?" + condition,
            QVariantList{qint64{holder_}} + values);
    std::vector<std::pair<std::int64_t, NumberState>> left;
    while (held.next()) {
        const bool touched = held.value(1).toString() == text(NumberState::at_work);
        if (is_dead(held))
            left.emplace_back(held.value(0).toLongLong(), touched ? NumberState::unsure : NumberState::free);
    }
    held.finish();
    for (const auto& [id, state] : left)
        base_.run("UPDATE numbers SET state = ?, changed = ? WHERE id = ?", {text(state), now(), qint64{id}});
}

// Nobody else draws from it until the end of the transaction. One that is not there yet begins with its rule's value.
SqlBooks::OpenOrder SqlBooks::open_order(const Order& order)
{
    const AutoIncrease& rule = order.rule;
    const auto kind = int(rule.kind);
    base_.run("INSERT INTO number_orders (name, kind, bytes, increment, base, next_place) VALUES (?, ?, ?, ?, ?, ?)"
              " ON CONFLICT (name, kind) DO NOTHING",
        {text(order.name), kind, rule.bytes, rule.increment, rule.system, qint64(number_in(rule.next_value))});
    QSqlQuery found = base_.run(QString{"SELECT id, bytes, increment, base, next_place FROM number_orders"
                                        " WHERE name = ? AND kind = ?"} +
            (base_.server ? " FOR UPDATE" : ""),
        {text(order.name), kind});
    found.next();
    const int bytes = found.value(1).toInt();
    const int increment = found.value(2).toInt();
    const int base = found.value(3).toInt();
    if (bytes != rule.bytes || increment != rule.increment || base != rule.system)
        throw LedgerRefuses{{Kind::other_rule, order.name,
            rule_text(bytes, increment, base) + " / " + rule_text(rule.bytes, rule.increment, rule.system)}};
    return {found.value(0).toLongLong(), found.value(4).toLongLong()};
}

SqlBooks::Choice SqlBooks::choose(const OpenOrder& open, const Order& order)
{
    QSqlQuery back = base_.run(
        "SELECT id, place FROM numbers WHERE order_id = ? AND state = 'free' AND state <> 'spent' ORDER BY id LIMIT 1",
        {qint64{open.id}});
    if (back.next())
        return {back.value(0).toLongLong(), back.value(1).toLongLong()};
    AutoIncrease record = order.rule;
    record.next_value = open.next_place < 0 ? "" : std::to_string(open.next_place);
    if (value_fault(record) != ValueFault::none)
        throw LedgerRefuses{{Kind::used_up, order.name, std::to_string(open.next_place)}};
    return {0, open.next_place};
}

BooksAnswer<std::string> SqlBooks::next_number(const Order& order)
{
    return answered([&] {
        connect(Purpose::write);
        const Writing taken_back(base_); // never committed
        const OpenOrder open = open_order(order);
        sweep(" AND n.order_id = ?", {qint64{open.id}});
        return padded_value(order.rule, double(choose(open, order).place));
    });
}

BooksAnswer<GivenNumber> SqlBooks::reserve(const Order& order)
{
    return answered([&] {
        connect(Purpose::write);
        know_holder();
        Writing writing(base_);
        const OpenOrder open = open_order(order);
        sweep(" AND n.order_id = ?", {qint64{open.id}});
        Choice choice = choose(open, order);
        const QString token = new_key();
        const std::string value = padded_value(order.rule, double(choice.place));
        if (choice.id != 0) {
            base_.run("UPDATE numbers SET state = 'reserved', holder = ?, token = ?, changed = ? WHERE id = ?",
                {qint64{holder_}, token, now(), qint64{choice.id}});
        } else {
            QSqlQuery made = base_.run("INSERT INTO numbers (order_id, place, value, state, holder, token, changed)"
                                       " VALUES (?, ?, ?, 'reserved', ?, ?, ?) RETURNING id",
                {qint64{open.id}, qint64{choice.place}, text(value), qint64{holder_}, token, now()});
            made.next();
            choice.id = made.value(0).toLongLong();
            made.finish();
            base_.run("UPDATE number_orders SET next_place = ? WHERE id = ?",
                {qint64{choice.place + order.rule.increment}, qint64{open.id}});
        }
        writing.commit();
        return GivenNumber{choice.id, value, token.toStdString()};
    });
}

std::optional<BooksFault> SqlBooks::begin_work(std::span<const GivenNumber> numbers)
{
    return done([&] {
        connect(Purpose::write);
        know_holder();
        Writing writing(base_);
        for (const GivenNumber& number : numbers) {
            const QSqlQuery marked = base_.run("UPDATE numbers SET state = 'at-work', holder = ?, changed = ?"
                                               " WHERE id = ? AND token = ? AND state = 'reserved'",
                {qint64{holder_}, now(), qint64{number.id}, text(number.token)});
            if (marked.numRowsAffected() != 1)
                throw LedgerRefuses{{Kind::lost, number.value, {}}};
        }
        writing.commit();
    });
}

bool SqlBooks::write_end(const ClosedChip& end)
{
    bool all_were_its_own = true;
    for (const GivenNumber& number : end.numbers) {
        // A good chip holds its number, whatever a hand has settled, as long as no other chip has been given it.
        const char* from =
            end.good ? "('reserved', 'at-work', 'unsure', 'free', 'spent')" : "('reserved', 'at-work', 'unsure')";
        const QSqlQuery changed = base_.run(
            QString{"UPDATE numbers SET state = ?, changed = ? WHERE id = ? AND token = ? AND state IN "} + from,
            {text(end.good ? NumberState::spent : NumberState::free), now(), qint64{number.id}, text(number.token)});
        all_were_its_own = all_were_its_own && (changed.numRowsAffected() == 1 || !end.good);
    }
    if (end.record)
        append_record(base_, *end.record);
    return all_were_its_own;
}

EndKept SqlBooks::end_chip(const ClosedChip& ended)
{
    ClosedChip end = ended;
    const std::string key = new_key().toStdString();
    if (end.record) {
        end.record->chip = key;
        end.record->who = user_name();
    }
    auto written = answered([&] {
        connect(Purpose::write);
        Writing writing(base_);
        const bool all_were_its_own = write_end(end);
        writing.commit();
        return all_were_its_own;
    });
    if (!written.fault && written.value)
        return {};
    if (!written.fault)
        return {EndKept::Place::in_books, BooksFault{Kind::lost, end.numbers.front().value, {}}, {}};
    const std::string reason = kept_.keep(end, key, disk_);
    return {reason.empty() ? EndKept::Place::beside : EndKept::Place::nowhere, written.fault, reason};
}

BooksAnswer<std::vector<NumberRow>> SqlBooks::numbers(const std::string& order, bool all)
{
    return answered([&] {
        connect(Purpose::read);
        Writing writing(base_);
        sweep({}, {});
        Condition condition;
        condition.add("o.name = ?", order);
        if (!all)
            condition.words += " AND n.state <> 'spent' AND n.state <> 'free'";
        QSqlQuery found =
            base_.run("SELECT o.name, o.kind, n.value, n.state, n.changed, h.station FROM numbers n"
                      " JOIN number_orders o ON o.id = n.order_id LEFT JOIN holders h ON h.id = n.holder" +
                    condition.words + " ORDER BY o.name, o.kind, n.id",
                condition.values);
        std::vector<NumberRow> rows;
        while (found.next()) {
            rows.push_back(
                {order_of(found), BufferKind(found.value(1).toInt()), found.value(2).toString().toStdString(),
                    number_state(found.value(3).toString().toStdString()).value_or(NumberState::unsure),
                    found.value(4).toString().toStdString(), found.value(5).toString().toStdString()});
        }
        found.finish();
        writing.commit();
        return rows;
    });
}

std::optional<BooksFault> SqlBooks::settle(const SettleWish& wish)
{
    return done([&] {
        connect(Purpose::read);
        Writing writing(base_);
        sweep({}, {});
        QSqlQuery found = base_.run("SELECT n.id, n.state, h.id, h.host, h.boot, h.pid, h.started FROM numbers n"
                                    " JOIN number_orders o ON o.id = n.order_id LEFT JOIN holders h ON h.id = n.holder"
                                    " WHERE o.name = ? AND o.kind = ? AND n.place = ?",
            {text(wish.order), int(wish.kind), qint64(number_in(wish.value))});
        const bool there = found.next();
        const auto state = number_state(there ? found.value(1).toString().toStdString() : "");
        const bool held = state == NumberState::reserved || state == NumberState::at_work;
        const bool elsewhere = held && !base_.server &&
            is_alive({{}, found.value(3).toString().toStdString(), found.value(4).toString().toStdString(),
                found.value(5).toLongLong(), found.value(6).toString().toStdString()}) == Alive::unknown;
        if (state != NumberState::unsure && !elsewhere)
            throw LedgerRefuses{
                {Kind::not_unsure, wish.value, state ? std::string{word_of(*state)} : "not in " + wish.order}};
        const qint64 id = found.value(0).toLongLong();
        found.finish();
        base_.run("UPDATE numbers SET state = ?, changed = ? WHERE id = ?", {text(wish.state), now(), id});
        writing.commit();
    });
}

BooksAnswer<std::vector<ChipRecord>> SqlBooks::chips(const ChipFilter& filter)
{
    return answered([&] {
        connect(Purpose::read);
        const Condition condition = condition_of(filter);
        const QString limit = filter.at_most > 0 ? " LIMIT " + QString::number(filter.at_most) : "";
        QSqlQuery found = base_.run(
            "SELECT " + record_columns() + " FROM chips" + condition.words + " ORDER BY at DESC, id DESC" + limit,
            condition.values);
        std::vector<ChipRecord> records;
        while (found.next())
            records.push_back(record_in(found));
        std::reverse(records.begin(), records.end());
        return records;
    });
}

BooksAnswer<std::vector<HourTotal>> SqlBooks::hours(const ChipFilter& filter)
{
    return answered([&] {
        connect(Purpose::read);
        const Condition condition = condition_of(filter);
        QSqlQuery found = base_.run(
            "SELECT substr(at, 1, 13), SUM(CASE WHEN result = 'good' THEN 1 ELSE 0 END), COUNT(*) FROM chips" +
                condition.words + " GROUP BY 1 ORDER BY 1",
            condition.values);
        std::vector<HourTotal> totals;
        while (found.next()) {
            const std::int64_t good = found.value(1).toLongLong();
            totals.push_back({found.value(0).toString().toStdString(), good, found.value(2).toLongLong() - good});
        }
        return totals;
    });
}

BooksAnswer<std::optional<ChipRecord>> SqlBooks::earlier_good(const ChipRecord& chip)
{
    return answered([&]() -> std::optional<ChipRecord> {
        if (chip.factory_number.empty())
            return std::nullopt;
        connect(Purpose::read);
        QSqlQuery found = base_.run("SELECT " + record_columns() +
                " FROM chips WHERE factory_number = ? AND code_sha256 = ? AND data_sha256 = ? AND result = 'good'"
                " AND factory_number <> '' ORDER BY at DESC, id DESC LIMIT 1",
            {text(chip.factory_number), text(chip.code_sha256), text(chip.data_sha256)});
        return found.next() ? std::optional{record_in(found)} : std::nullopt;
    });
}

} // namespace vrk
