// A ledger of a test's own: a file in a folder that goes at the end, or, where VRK_LEDGER_SERVER names one, a server's
// database that is emptied at the start.
#pragma once

#include "ledger/ledger_address.h"
#include "ledger/sql_books.h"
#include "own_application.h"

#include <QSqlQuery>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

namespace vrk {

// A statement by a hand that goes round the books.
inline void by_hand(const std::string& address, const char* statement)
{
    {
        QSqlDatabase database = ledger_connection(ledger_address(address), "by_hand");
        ASSERT_TRUE(database.open()) << database.lastError().text().toStdString();
        QSqlQuery query(database);
        ASSERT_TRUE(query.exec(statement)) << query.lastError().text().toStdString();
    }
    QSqlDatabase::removeDatabase("by_hand");
}

struct LedgerBench : testing::Test {
    LedgerBench()
    {
        if (on_server())
            by_hand(address(), "SET client_min_messages = error; DROP SCHEMA public CASCADE; CREATE SCHEMA public");
    }

    static bool on_server() { return std::getenv("VRK_LEDGER_SERVER") != nullptr; }
    std::string in_folder(const char* name) const { return folder.filePath(name).toStdString(); }
    std::string address() const { return on_server() ? std::getenv("VRK_LEDGER_SERVER") : in_folder("ledger.sqlite"); }

    static Order order(const std::string& name = "pump", const std::string& start = "41")
    {
        Order order{name, AutoIncrease{}};
        order.rule.bytes = 4;
        order.rule.increment = 1;
        order.rule.next_value = start;
        return order;
    }
    static std::string plain(const std::string& value) { return value.substr(value.find_first_not_of('0')); }

    // A chip from its number to its end. The value of the number.
    static std::string chip(Books& books, bool good, const Order& of = order())
    {
        const auto given = books.reserve(of);
        EXPECT_FALSE(given.fault) << fault_text(given.fault.value_or(BooksFault{})).en;
        EXPECT_FALSE(books.begin_work({&given.value, 1}));
        EXPECT_EQ(
            books.end_chip({{given.value}, good, record(given.value.value, good)}).place, EndKept::Place::in_books);
        return plain(given.value.value);
    }
    static ChipRecord record(const std::string& number, bool good)
    {
        ChipRecord record;
        record.at = "2025-03-09 17:04:59";
        record.station = "left";
        record.model = "Juniper-8";
        record.number = number;
        record.result = good ? "good" : "programming-failed";
        return record;
    }
    static std::vector<std::string> states(Books& books, bool all = true)
    {
        std::vector<std::string> words;
        const auto rows = books.numbers({}, all);
        EXPECT_FALSE(rows.fault) << fault_text(rows.fault.value_or(BooksFault{})).en;
        for (const NumberRow& row : rows.value)
            words.push_back(plain(row.value) + " " + std::string{word_of(row.state)});
        return words;
    }

    // Where the user's data are: told before the books are made, which look for it then.
    struct OwnData {
        explicit OwnData(const QTemporaryDir& place)
        {
            have_application();
            setenv("XDG_DATA_HOME", place.path().toUtf8().constData(), 1);
        }
    };
    QTemporaryDir folder;
    OwnData own_data{folder};
    SqlBooks books{address(), "left"};
};

using States = std::vector<std::string>;

} // namespace vrk
