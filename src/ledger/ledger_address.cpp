#include "ledger/ledger_address.h"

#include "platform/whole_file.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QUrl>
#include <QUrlQuery>

namespace vrk {

namespace {

// A server that does not answer must not hold the line for minutes. Seconds, and milliseconds below.
constexpr const char* server_waits = " connect_timeout=5 tcp_user_timeout=5000 application_name=vrk-isp"
                                     " options='-c statement_timeout=10000 -c synchronous_commit=on'";
constexpr const char* file_waits = "QSQLITE_BUSY_TIMEOUT=5000";

QString quoted(QString value)
{
    value.replace('\\', "\\\\").replace('\'', "\\'");
    return "'" + value + "'";
}

QString connection_of(const QUrl& url)
{
    QStringList words;
    const auto add = [&words](const char* key, const QString& value) {
        if (!value.isEmpty())
            words << QString{key} + "=" + quoted(value);
    };
    add("host", url.host());
    add("port", url.port() < 0 ? QString{} : QString::number(url.port()));
    add("user", url.userName(QUrl::FullyDecoded));
    add("password", url.password(QUrl::FullyDecoded));
    add("dbname", url.path(QUrl::FullyDecoded).mid(1));
    for (const auto& [key, value] : QUrlQuery{url}.queryItems(QUrl::FullyDecoded))
        add(key.toUtf8().constData(), value);
    return words.join(' ');
}

} // namespace

std::string default_ledger()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation).toStdString() +
        "/VRK-ISP/ledger.sqlite";
}

LedgerAddress ledger_address(const std::string& text)
{
    const QString words = QString::fromStdString(text).trimmed();
    LedgerAddress address;
    if (words.startsWith("postgresql://") || words.startsWith("postgres://")) {
        const QUrl url(words);
        address.server = true;
        address.connection = connection_of(url);
        address.shown = url.toString(QUrl::RemovePassword).toStdString();
        return address;
    }
    static const QRegularExpression key_and_value("^(host|hostaddr|dbname|service|user|port)\\s*=");
    if (key_and_value.match(words).hasMatch()) {
        static const QRegularExpression password("\\bpassword\\s*=\\s*('[^']*'|\\S+)");
        address.server = true;
        address.connection = words;
        address.shown = QString{words}.remove(password).simplified().toStdString();
        return address;
    }
    const QString path = words.isEmpty() ? QString::fromStdString(default_ledger()) : words;
    address.shown = behind_links(QFileInfo(path).absoluteFilePath().toStdString());
    address.file = QString::fromStdString(address.shown);
    return address;
}

QSqlDatabase ledger_connection(const LedgerAddress& address, const QString& name)
{
    QSqlDatabase database = QSqlDatabase::addDatabase(address.server ? "QPSQL" : "QSQLITE", name);
    database.setDatabaseName(address.file);
    // What stands in the options of this driver goes to libpq word by word.
    database.setConnectOptions(address.server ? address.connection + server_waits : QString{file_waits});
    return database;
}

} // namespace vrk
