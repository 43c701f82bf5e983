// A store with a disk behind it: what has been written through survives the program, and the disk can fail.
#pragma once

#include "platform/settings_store.h"

#include <functional>
#include <map>
#include <string>
#include <utility>

namespace vrk {

class SettingsOnDisk final : public SettingsStore {
public:
    using Values = std::map<std::pair<std::string, std::string>, std::string>;

    SettingsOnDisk() = default;
    explicit SettingsOnDisk(Values found) // the next run
        : disk(found)
        , memory_(std::move(found))
    {
    }

    std::string get(const std::string& section, const std::string& key, const std::string& otherwise) override
    {
        return read(memory_, section, key, otherwise);
    }
    void set(const std::string& section, const std::string& key, const std::string& value) override
    {
        memory_[{section, key}] = value;
    }
    std::optional<SettingsFault> write_through() override
    {
        if (refused)
            return refused;
        if (memory_ == disk)
            return std::nullopt;
        if (broken || (fails && fails()))
            return broken.value_or(full);
        disk = memory_;
        if (on_write)
            on_write();
        return std::nullopt;
    }
    std::string on_disk(const char* section, const char* key) const { return read(disk, section, key, "none"); }

    static inline const SettingsFault full = {
        SettingsFault::Kind::unwritable, "/home/line/VRK-ISP.ini", "No space left on device"};

    Values disk;
    std::optional<SettingsFault> broken; // what each write that has something to write comes to
    std::function<bool()> fails; // asked at each of these writes: true, and the disk is full for this once
    std::optional<SettingsFault> refused; // from the start
    std::function<void()> on_write;

private:
    static std::string read(
        const Values& values, const std::string& section, const std::string& key, const std::string& otherwise)
    {
        const auto found = values.find({section, key});
        return found == values.end() ? otherwise : found->second;
    }

    Values memory_;
};

} // namespace vrk
