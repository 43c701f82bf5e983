#include "ledger/kept_chips.h"

#include "platform/whole_file.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <filesystem>
#include <system_error>

namespace vrk {

namespace {

constexpr const char* ending = ".chip";

QJsonObject object_of(const GivenNumber& number)
{
    return {{"id", qint64{number.id}}, {"value", QString::fromStdString(number.value)},
        {"token", QString::fromStdString(number.token)}};
}

QJsonObject object_of(const ChipRecord& record)
{
    QJsonObject object;
    for (const RecordField& field : record_fields)
        object[field.name] = QString::fromStdString(record.*field.text);
    return object;
}

} // namespace

KeptChips::KeptChips(QString folder)
    : folder_(std::move(folder))
{
}

bool KeptChips::folder_is_there() const { return QDir(folder_).exists(); }

std::string KeptChips::make_folder() const
{
    std::error_code fault;
    std::filesystem::create_directories(folder_.toStdString(), fault);
    return fault ? fault.message() : "";
}

std::string KeptChips::keep(const ClosedChip& end, const std::string& name, Disk& disk) const
{
    QJsonArray numbers;
    for (const GivenNumber& number : end.numbers)
        numbers.append(object_of(number));
    QJsonObject whole{{"numbers", numbers}, {"good", end.good}};
    if (end.record)
        whole["record"] = object_of(*end.record);
    const QByteArray text = QJsonDocument(whole).toJson();
    const std::string path = folder_.toStdString() + "/" + name + ending;
    const auto fault = write_whole_file(
        path, {reinterpret_cast<const std::uint8_t*>(text.constData()), std::size_t(text.size())}, disk);
    return fault ? fault->reason : "";
}

QStringList KeptChips::files() const
{
    QStringList paths;
    const QDir folder(folder_);
    for (const QString& name : folder.entryList({QString{"*"} + ending}, QDir::Files, QDir::Time | QDir::Reversed))
        paths << folder.filePath(name);
    return paths;
}

std::optional<ClosedChip> KeptChips::read(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QJsonObject whole = QJsonDocument::fromJson(file.readAll()).object();
    if (!whole.contains("numbers"))
        return std::nullopt;
    ClosedChip end;
    end.good = whole["good"].toBool();
    for (const QJsonValue& number : whole["numbers"].toArray())
        end.numbers.push_back({number["id"].toInteger(), number["value"].toString().toStdString(),
            number["token"].toString().toStdString()});
    if (whole.contains("record")) {
        end.record.emplace();
        for (const RecordField& field : record_fields)
            (*end.record).*field.text = whole["record"][field.name].toString().toStdString();
    }
    return end;
}

} // namespace vrk
