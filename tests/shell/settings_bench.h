// One run of the program after another on the same store.
#pragma once

#include "form/named_controls.h"
#include "platform/scripted_dialogs.h"
#include "shell/events.h"
#include "shell/settings.h"
#include "shell/start_up.h"
#include "sim/sim_port.h"
#include "sim/virtual_loop.h"
#include "sim/wire.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vrk {

// Counts what is written, by key.
class CountingStore final : public SettingsStore {
public:
    std::string get(const std::string& section, const std::string& key, const std::string& otherwise) override
    {
        read.push_back(key);
        return inner.get(section, key, otherwise);
    }
    void set(const std::string& section, const std::string& key, const std::string& value) override
    {
        ++writes[key];
        inner.set(section, key, value);
    }
    std::optional<SettingsFault> write_through() override { return inner.write_through(); }

    MemoryStore inner;
    std::map<std::string, int> writes;
    std::vector<std::string> read; // in order
};

// The program, started, with four ports.
struct Program {
    explicit Program(SettingsStore& store, bool english = false)
        : shell{Platform{loop, ports, dialogs, store}}
    {
        for (const char* path : {"first", "second", "third", "fourth"})
            ports.add(path, wire);
        shell.language_is_english = english;
        start_up(shell);
    }

    void let_the_save_run() { loop.run_for_ms(500); }
    template <typename Type> Type& control(std::string_view name, int index = Control::no_index)
    {
        return dynamic_cast<Type&>(*shell.controls.find(name, index));
    }

    sim::VirtualLoop loop;
    sim::Wire wire{loop};
    sim::SimPortDriver ports{loop};
    ScriptedDialogs dialogs;
    Shell shell;
    NamedControls form{shell.controls};
};

inline void put(MemoryStore& store, const char* key, const char* value) { store.set("Settings", key, value); }
inline std::string stored(MemoryStore& store, const std::string& key)
{
    return store.get("Settings", key, "nothing stored");
}

} // namespace vrk
