// The user's settings: an INI file, by default in the user's configuration directory.
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
