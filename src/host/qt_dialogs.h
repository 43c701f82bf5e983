// Message boxes and file dialogs on the screen, and the system's beep.
#pragma once

#include "platform/dialogs.h"

#include <QWidget>

namespace vrk {

class QtDialogs final : public Dialogs {
public:
    QWidget* parent = nullptr; // the window that boxes stand over

    Reply show(const MessageBox& box) override;
    std::optional<std::string> choose(const FileDialog& dialog) override;
    void beep() override;
    void set_busy(bool busy) override;
    void copy_text(const std::string& text) override;
};

} // namespace vrk
