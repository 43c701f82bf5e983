// The user's settings: an INI file, by default VRK-ISP/VRK-ISP.ini in the user's configuration directory.
//
// Read once, when the store is opened, and held from then on: a lock file beside it keeps a second program from writing
// over what this one has stored, numbers above all. What is set goes to the disk when it is written through: to another
// file, flushed, which then takes the place of the old one, and the folder is flushed too. Who is killed in between
// leaves the old settings. A symbolic link stays one.
#pragma once

#include "host/ini_text.h"
#include "platform/settings_store.h"

#include <QLockFile>
#include <QString>

namespace vrk {

class QtSettings final : public SettingsStore {
public:
    QtSettings(); // the user's own
    explicit QtSettings(const std::string& file);

    std::string get(const std::string& section, const std::string& key, const std::string& otherwise) override;
    void set(const std::string& section, const std::string& key, const std::string& value) override;
    std::optional<SettingsFault> write_through() override;

private:
    void open();
    bool is_held_by_another();
    SettingsFault fault(SettingsFault::Kind kind, const QString& reason = {}) const;

    QString path_; // of the file itself, where a link leads to it
    QLockFile lock_;
    std::optional<SettingsFault> refused_;
    IniValues values_;
    bool changed_ = false;
};

} // namespace vrk
