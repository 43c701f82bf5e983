// A line whose every call to the outside can fail once: at the port, at the settings, at the files.
//
// A story is told once without a fault, which counts the calls, and then once for each of them with exactly that one
// failing. Judged is what a user has: the chip's true flash, what has been told, the numbers, the settings, the panel.
//
// An engine changes the line of its port by closing and opening it, so a line that a driver refuses comes as an opening
// that fails. The call that changes it on the open port is counted too, should one be made.
#pragma once

#include "bench.h"
#include "failures/failing_calls.h"
#include "failures/failing_files.h"
#include "own_folder.h"
#include "settings_on_disk.h"

namespace vrk {

inline std::string text_of(const std::vector<std::uint8_t>& bytes) { return {bytes.begin(), bytes.end()}; }

inline const char* name_of(sim::PortCall call)
{
    constexpr const char* names[] = {"list ports", "open port", "set line", "read port", "write port"};
    return names[static_cast<int>(call)];
}

struct FailingLine : Bench {
    FailingCalls& calls;
    SettingsOnDisk& store;
    FailingFiles files;
    bool pulled_out = false; // a port whose call fails is gone, and stays away until it is plugged in again

    FailingLine(const char* model, FailingCalls& its_calls, SettingsOnDisk& its_store, const OwnFolder& folder)
        : Bench(setup_of(model), true, &its_store)
        , calls(its_calls)
        , store(its_store)
        , files(folder.path, [this](const char* call) { return calls.fails(call); })
    {
        ports.fails = [this](sim::PortCall call) {
            const bool fails = calls.fails(name_of(call));
            if (fails && pulled_out)
                ports.remove(port_path);
            return fails;
        };
        store.fails = [this] { return calls.fails("store settings"); };
        run_for_ms(1000); // the save of the start
    }
    ~FailingLine() { store.fails = nullptr; }

    // By the button and its dialog, as a user does.
    void open_by_hand(const char* button, const std::string& path)
    {
        dialogs.choices = {path};
        click(shell, form.button(button));
        dialogs.choices.clear();
    }

    void plug_in_again()
    {
        if (ports.list().empty())
            ports.add(port_path, wire);
        run_for_ms(100);
    }

    bool was_told() const
    {
        const char* const words[] = {"failed", "Failed", "is gone", "could not be loaded", "can not be stored"};
        return !dialogs.shown.empty() ||
            std::ranges::any_of(words, [this](const char* word) { return report_says(word); });
    }
    void expect_free() const
    {
        EXPECT_TRUE(buttons_are_free());
        EXPECT_EQ(panel_state(shell), 0);
        EXPECT_FALSE(shell.running);
        EXPECT_FALSE(shell.port.is_open());
    }
};

// Tells the story without a fault, then once more for each call that it has made, up to the first that goes wrong.
template <typename Story> void fail_each_call(Story story, int at_least)
{
    FailingCalls none{0};
    story(none);
    ASSERT_GE(none.made(), at_least) << "calls that could fail";
    for (int turn = 1; turn <= none.made() && !::testing::Test::HasFailure(); ++turn) {
        FailingCalls calls{turn};
        const ::testing::ScopedTrace where(
            __FILE__, __LINE__, "call " + std::to_string(turn) + " of " + std::to_string(none.made()));
        story(calls);
        EXPECT_NE(calls.failed(), "") << "the run before it went another way";
        EXPECT_FALSE(::testing::Test::HasFailure()) << "what failed: " << calls.failed();
    }
}

} // namespace vrk
