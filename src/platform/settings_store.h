// Settings of one user: section, key, value, all text. A missing key reads as the caller's default.
#pragma once

#include <map>
#include <string>
#include <utility>

namespace vrk {

class SettingsStore {
public:
    virtual ~SettingsStore() = default;
    virtual std::string get(const std::string& section, const std::string& key, const std::string& otherwise) = 0;
    // A store that cannot be written keeps quiet: losing a setting is no reason to stop anybody's work.
    virtual void set(const std::string& section, const std::string& key, const std::string& value) = 0;
};

// Starts empty and forgets: for scripts and tests.
class MemoryStore final : public SettingsStore {
public:
    std::string get(const std::string& section, const std::string& key, const std::string& otherwise) override
    {
        const auto found = values.find({section, key});
        return found == values.end() ? otherwise : found->second;
    }
    void set(const std::string& section, const std::string& key, const std::string& value) override
    {
        values[{section, key}] = value;
    }

    std::map<std::pair<std::string, std::string>, std::string> values;
};

} // namespace vrk
