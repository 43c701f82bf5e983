#include "host/qt_settings.h"

namespace vrk {

namespace {

QString full_key(const std::string& section, const std::string& key)
{
    return QString::fromStdString(section + "/" + key);
}

} // namespace

QtSettings::QtSettings()
    : settings_(QSettings::IniFormat, QSettings::UserScope, "VRK-ISP", "VRK-ISP")
{
    settings_.setFallbacksEnabled(false); // the user's own and nobody else's
}

QtSettings::QtSettings(const std::string& file)
    : settings_(QString::fromStdString(file), QSettings::IniFormat)
{
}

std::string QtSettings::get(const std::string& section, const std::string& key, const std::string& otherwise)
{
    const QVariant value = settings_.value(full_key(section, key));
    // A line written by hand with commas and no quotes comes as a list.
    if (value.typeId() == QMetaType::QStringList)
        return value.toStringList().join(", ").toStdString();
    return value.typeId() == QMetaType::QString ? value.toString().toStdString() : otherwise;
}

// What stands there already is not written again: a start without a change leaves the file alone.
void QtSettings::set(const std::string& section, const std::string& key, const std::string& value)
{
    const QString name = full_key(section, key);
    const QString text = QString::fromStdString(value);
    if (!settings_.contains(name) || settings_.value(name).toString() != text)
        settings_.setValue(name, text);
}

} // namespace vrk
