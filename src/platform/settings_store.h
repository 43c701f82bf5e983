// Settings of one user: section, key, value, all text. A missing key reads as the caller's default.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <utility>

namespace vrk {

// Why a store does not keep what it is given beyond this run.
struct SettingsFault {
    enum class Kind {
        held, // another program has the settings in use
        no_file, // a device, a folder or a pipe stands where the file should
        unreadable, // what stands there cannot be read, and is not to be lost
        unwritable,
    };
    Kind kind = Kind::unwritable;
    std::string path;
    std::string reason; // the system's own words; empty where the kind says it all
};

class SettingsStore {
public:
    virtual ~SettingsStore() = default;
    virtual std::string get(const std::string& section, const std::string& key, const std::string& otherwise) = 0;
    // Holds for this run from now on, and beyond it from the next write_through.
    virtual void set(const std::string& section, const std::string& key, const std::string& value) = 0;
    // What has been set is on the disk when this returns, all of it or nothing; a power cut does not take it back. Else
    // the fault; what has been set stays for this run, and the next call tries again. A store that was refused when it
    // was opened says so at each call.
    virtual std::optional<SettingsFault> write_through() = 0;
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
    std::optional<SettingsFault> write_through() override { return std::nullopt; }

    std::map<std::pair<std::string, std::string>, std::string> values;
};

} // namespace vrk
