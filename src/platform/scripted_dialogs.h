// Dialogs without a user: replies are queued beforehand, and what was shown is kept. For scripts and tests.
#pragma once

#include "platform/dialogs.h"

#include <deque>
#include <vector>

namespace vrk {

struct ShownBox {
    MessageBox box;
    Reply reply = Reply::ok;
};

class ScriptedDialogs final : public Dialogs {
public:
    std::deque<Reply> replies; // for the next boxes; a box without one gets its default button
    std::deque<std::optional<std::string>> choices; // for the next file dialogs; one without is cancelled
    std::vector<ShownBox> shown;
    std::vector<FileDialog> asked;
    int beeps = 0;
    bool busy = false;
    std::string copied; // the last text

    Reply show(const MessageBox& box) override;
    std::optional<std::string> choose(const FileDialog& dialog) override;
    void beep() override { ++beeps; }
    void set_busy(bool now_busy) override { busy = now_busy; }
    void copy_text(const std::string& text) override { copied = text; }
};

} // namespace vrk
