#include "host/ini_text.h"

#include <QFile>
#include <QSettings>

#include <algorithm>
#include <cctype>

namespace vrk {

namespace {

constexpr const char* no_section = "General"; // where QSettings puts keys that stand above all sections

bool is_hex_digit(unsigned char c) { return std::isxdigit(c) != 0; }

QByteArray hex(char32_t character) { return QByteArray::number(static_cast<uint>(character), 16).toUpper(); }

// Letters, digits and a few signs stand for themselves; of others the number is told, as the format has it for keys.
QByteArray escaped_key(const std::string& key)
{
    QByteArray text;
    for (const QChar character : QString::fromStdString(key)) {
        const char16_t code = character.unicode();
        if (code == '/')
            text += '\\';
        else if (code < 0x80 && (std::isalnum(code) != 0 || code == '_' || code == '-' || code == '.'))
            text += static_cast<char>(code);
        else if (code <= 0xFF)
            text += '%' + hex(code).rightJustified(2, '0');
        else
            text += "%U" + hex(code).rightJustified(4, '0');
    }
    return text;
}

QByteArray escaped_section(const std::string& section)
{
    if (section.empty())
        return no_section;
    return section == no_section ? QByteArray("%General") : escaped_key(section);
}

QByteArray escaped_value(const std::string& value)
{
    QByteArray text = value.starts_with('@') ? "@" : ""; // a single one would begin a value of another kind
    bool behind_number = false; // whose digits the next character must not seem to continue
    for (const char character : QString::fromStdString(value).toUtf8()) {
        const auto code = static_cast<unsigned char>(character);
        const bool as_number = code < ' ' || (behind_number && is_hex_digit(code));
        if (as_number)
            text += "\\x" + hex(code).toLower();
        else if (character == '"' || character == '\\')
            text += QByteArray("\\") + character;
        else
            text += character;
        behind_number = as_number;
    }
    const bool needs_quotes =
        text.contains(';') || text.contains(',') || text.contains('=') || text.startsWith(' ') || text.endsWith(' ');
    return needs_quotes ? '"' + text + '"' : text;
}

} // namespace

QByteArray ini_text(const IniValues& values)
{
    QByteArray text;
    const std::string* section = nullptr;
    for (const auto& [name, value] : values) {
        if (section == nullptr || *section != name.first)
            text += (section == nullptr ? "[" : "\n[") + escaped_section(name.first) + "]\n";
        section = &name.first;
        text += escaped_key(name.second) + '=' + escaped_value(value) + '\n';
    }
    return text;
}

std::optional<IniValues> read_ini(const std::string& path, QString& reason)
{
    QFile plain(QString::fromStdString(path));
    const bool has_lines = plain.open(QIODevice::ReadOnly) && plain.readAll().contains('=');
    const QSettings file(QString::fromStdString(path), QSettings::IniFormat);
    reason = plain.error() != QFile::NoError ? plain.errorString() : QString();
    if (plain.error() != QFile::NoError || file.status() == QSettings::AccessError)
        return std::nullopt;
    if (has_lines && file.allKeys().isEmpty() && file.status() == QSettings::NoError)
        return std::nullopt; // QSettings takes a file that it could not read for an empty one
    IniValues values;
    for (const QString& name : file.allKeys()) {
        if (name.isEmpty())
            continue; // of a damaged line
        const QVariant value = file.value(name);
        const qsizetype slash = name.indexOf('/');
        const std::string section = name.left(std::max<qsizetype>(slash, 0)).toStdString();
        const std::string key = name.mid(slash + 1).toStdString();
        // A line written by hand with commas and no quotes comes as a list.
        if (value.typeId() == QMetaType::QStringList)
            values[{section, key}] = value.toStringList().join(", ").toStdString();
        else if (value.typeId() == QMetaType::QString)
            values[{section, key}] = value.toString().toStdString();
    }
    return values;
}

} // namespace vrk
