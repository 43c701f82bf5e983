// Answers a dialog after an act of the test's choice: it stands for a while, and files, timers and hands go on.
#pragma once

#include "platform/dialogs.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace buffer_test {

struct ActingDialogs final : vrk::Dialogs {
    std::function<void()> act; // under the next dialog
    std::vector<std::string> boxes; // their texts
    bool busy = false;

    vrk::Reply show(const vrk::MessageBox& box) override
    {
        boxes.push_back(box.text);
        stand();
        return box.default_reply;
    }
    std::optional<std::string> choose(const vrk::FileDialog&) override
    {
        stand();
        return std::nullopt;
    }
    void beep() override { }
    void set_busy(bool now_busy) override { busy = now_busy; }
    void copy_text(const std::string&) override { }

private:
    void stand()
    {
        if (const auto once = std::exchange(act, {}))
            once();
    }
};

} // namespace buffer_test
