// The user's settings: an INI file, by default VRK-ISP/VRK-ISP.ini in the user's configuration directory.
//
// Changes are kept in memory and go to the disk together, in the next turn of the Qt event loop or at the end of the
// program: a save of a hundred keys is one write. That goes to another file beside it, which then takes the place of
// the old one: who is killed in between leaves the old settings. What cannot be read counts as missing, and what cannot
// be written is forgotten at the end.
#pragma once

#include "platform/settings_store.h"

#include <QSettings>

namespace vrk {

class QtSettings final : public SettingsStore {
public:
    QtSettings(); // the user's own
    explicit QtSettings(const std::string& file);

    std::string get(const std::string& section, const std::string& key, const std::string& otherwise) override;
    void set(const std::string& section, const std::string& key, const std::string& value) override;

private:
    QSettings settings_;
};

} // namespace vrk
