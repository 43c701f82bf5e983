// What an engine tells, shown in the controls: the report pane, the progress bar, the lamps, the check page; boxes and
// beeps go to the platform.
#pragma once

#include "report/report.h"
#include "shell/shell.h"

namespace vrk {

class ScreenReport final : public Report {
public:
    explicit ScreenReport(Shell& shell)
        : shell_(shell)
    {
    }

    void show_box(const Line& text, const Line& title) override;
    bool ask(const Line& question, const Line& title) override;
    void say(const Line& line) override;
    void beep(int times) override;
    void enter(Stage stage) override;
    void progress(const Progress& progress) override;
    void port_is_open(bool open) override;
    void options_read(const ChipStatus& status) override;

private:
    Shell& shell_;
};

void show_port_lamp(Shell& shell, bool open);

} // namespace vrk
