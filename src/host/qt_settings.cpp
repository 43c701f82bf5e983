#include "host/qt_settings.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QSettings>

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

namespace vrk {

namespace {

constexpr int longest_wait_ms = 1000; // for another program that has the settings in use
constexpr int most_links = 40; // one behind the other; more are a ring

QString behind_links(const QString& path)
{
    QFileInfo file(path);
    for (int i = 0; i < most_links && file.isSymLink(); ++i)
        file = QFileInfo(file.symLinkTarget());
    return file.absoluteFilePath();
}

// What the folder knows of the file is on the disk, too: until then a power cut can bring the old file back.
bool flush_folder(const QString& folder)
{
    const int handle = ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (handle < 0)
        return false;
    const bool flushed = ::fsync(handle) == 0;
    const int error = errno;
    ::close(handle);
    errno = error;
    return flushed;
}

} // namespace

QtSettings::QtSettings()
    : QtSettings(QSettings(QSettings::IniFormat, QSettings::UserScope, "VRK-ISP", "VRK-ISP").fileName().toStdString())
{
}

QtSettings::QtSettings(const std::string& file)
    : path_(behind_links(QString::fromStdString(file)))
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
    QFile trial(path_);
    if (trial.open(QIODevice::ReadOnly))
        values_ = read_ini(path_.toStdString());
    else if (!refused_)
        refused_ = fault(SettingsFault::Kind::unreadable, trial.errorString());
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
    QSaveFile file(path_);
    if (!file.open(QIODevice::WriteOnly))
        return fault(SettingsFault::Kind::unwritable, file.errorString());
    const QByteArray text = ini_text(values_);
    if (file.write(text) != text.size() || !file.flush())
        return fault(SettingsFault::Kind::unwritable, file.errorString());
    if (::fsync(file.handle()) != 0)
        return fault(SettingsFault::Kind::unwritable, qt_error_string(errno));
    if (!file.commit())
        return fault(SettingsFault::Kind::unwritable, file.errorString());
    if (!flush_folder(QFileInfo(path_).path()))
        return fault(SettingsFault::Kind::unwritable, qt_error_string(errno));
    changed_ = false;
    return std::nullopt;
}

} // namespace vrk
