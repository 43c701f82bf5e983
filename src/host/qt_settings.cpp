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
}

QtSettings::QtSettings(const std::string& file)
    : settings_(QString::fromStdString(file), QSettings::IniFormat)
{
}

std::string QtSettings::get(const std::string& section, const std::string& key, const std::string& otherwise)
{
    return settings_.value(full_key(section, key), QString::fromStdString(otherwise)).toString().toStdString();
}

void QtSettings::set(const std::string& section, const std::string& key, const std::string& value)
{
    settings_.setValue(full_key(section, key), QString::fromStdString(value));
}

} // namespace vrk
