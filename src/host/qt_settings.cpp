#include "host/qt_settings.h"

#include "platform/whole_file.h"

#include <QDir>
#include <QFileInfo>
#include <QSettings>

#include <utility>

namespace vrk {

namespace {

constexpr int longest_wait_ms = 1000; // for another program that has the settings in use

} // namespace

QtSettings::QtSettings()
    : QtSettings(QSettings(QSettings::IniFormat, QSettings::UserScope, "VRK-ISP", "VRK-ISP").fileName().toStdString())
{
}

QtSettings::QtSettings(const std::string& file)
    : path_(QString::fromStdString(behind_links(file)))
    , lock_(path_ + ".lock")
{
    open();
}

void QtSettings::open()
{
    const QFileInfo file(path_);
    if (file.exists() && !file.isFile()) {
        refused_ = fault(SettingsFault::Kind::no_file);
        return;
    }
    lock_.setStaleLockTime(0); // it is held as long as the program runs; that of a dead one counts for nothing
    if (is_held_by_another())
        refused_ = fault(SettingsFault::Kind::held);
    if (!file.exists())
        return;
    QString reason;
    if (auto values = read_ini(path_.toStdString(), reason))
        values_ = std::move(*values);
    else if (!refused_)
        refused_ = fault(SettingsFault::Kind::unreadable, reason);
}

// Takes the lock where that can be done. Where there is no place for it, the file cannot be written either, which will
// tell why. The lock of a killed program looks held where its process number has gone to another one of that name; the
// system's own lock on the file, which dies with its holder, tells the two apart.
bool QtSettings::is_held_by_another()
{
    if (lock_.isLocked())
        return false;
    QDir().mkpath(QFileInfo(path_).path());
    if (lock_.tryLock(longest_wait_ms) || lock_.error() != QLockFile::LockFailedError)
        return false;
    return !lock_.removeStaleLockFile() || !lock_.tryLock(0);
}

SettingsFault QtSettings::fault(SettingsFault::Kind kind, const QString& reason) const
{
    return {kind, path_.toStdString(), reason.toStdString()};
}

std::string QtSettings::get(const std::string& section, const std::string& key, const std::string& otherwise)
{
    const auto found = values_.find({section, key});
    return found == values_.end() ? otherwise : found->second;
}

// What stands there already is not written again: a start without a change leaves the file alone.
void QtSettings::set(const std::string& section, const std::string& key, const std::string& value)
{
    const auto [place, is_new] = values_.try_emplace({section, key}, value);
    changed_ = changed_ || is_new || place->second != value;
    place->second = value;
}

std::optional<SettingsFault> QtSettings::write_through()
{
    if (refused_ || !changed_)
        return refused_;
    if (is_held_by_another())
        return fault(SettingsFault::Kind::held);
    const QByteArray text = ini_text(values_);
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.constData());
    if (const auto failed = write_whole_file(path_.toStdString(), {bytes, static_cast<std::size_t>(text.size())}))
        return fault(SettingsFault::Kind::unwritable, QString::fromStdString(failed->reason));
    changed_ = false;
    return std::nullopt;
}

} // namespace vrk
