// Between the window and the engine: the controls, the tables and buffers behind them, and whether a sequence runs. It
// lives as long as the program and owns everything; an engine gets a job and the port, and tells a report.
#pragma once

#include "shell/loader_state.h"
#include "shell/terminal_desk.h"
#include "shell/verdict.h"

#include "catalog/mcu_table.h"
#include "form/registry.h"
#include "image/auto_increase.h"
#include "image/file_buffer.h"
#include "options/option_bytes.h"
#include "options/option_table.h"
#include "platform/platform.h"
#include "platform/port.h"
#include "platform/timer.h"
#include "session/result.h"
#include "session/session.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vrk {

class Books; // books/books.h: the numbers and records of a line
struct MainForm;

struct Shell {
    explicit Shell(const Platform& its_platform);
    ~Shell();

    Platform platform;
    Books* books = nullptr; // of the line; a program that has none keeps none
    bool language_is_english = false; // Chinese is the language in force
    const std::unique_ptr<MainForm> window_form;
    MainForm& form; // include form/main_form.h for its members
    ControlRegistry& controls; // and this for those who know them by name
    Port port;
    std::vector<std::string> port_paths; // behind the captions of combCommPort, item by item
    std::vector<std::string> added_ports; // that a hand has named; the system does not list them
    std::string chosen_port; // its path; stays while the port is gone

    // Timers with an event of their own; what is nothing but a wait is a deadline where it is waited for.
    Timer Timer3; // a saved setting has changed: saves all of them
    Timer Timer11; // takes the hint of the buffer editor away again
    Timer Timer12; // watches the code file for a change
    Timer TimerUnload; // ends the program once the sequences have wound down

    McuTable mcu_table;
    OptionTable option_table;
    McuRecord selected; // the model in the tree; a connection never overwrites it
    bool model_stands_in = false; // the stored one is not in the tree of this language, and nobody has chosen another
    OptionImage options; // as the panel had them at the last press
    std::string option_byte_text = "0,0,0"; // third field "1": block 1 must not program block 0

    FileBuffer code_buffer{BufferKind::code};
    FileBuffer data_buffer{BufferKind::data};
    int view_lines[2] = {20, 20}; // lines of the dumps that fit, by BufferKind; the window keeps them up to date
    bool file_loaded = false; // a code file has been opened; a model mismatch clears it
    LoaderState loader;
    AutoIncrease code_increase{BufferKind::code};
    AutoIncrease data_increase{BufferKind::data};
    std::vector<std::uint8_t> board_image = std::vector<std::uint8_t>(0x10001); // of the last job of an off-line board
    int dialogs_open = 0; // boxes and file dialogs that stand, one over the other
    bool edit_confirmed = false; // the user has agreed to edit the buffers

    TerminalDesk desk; // the terminal and the monitor

    Verdict verdict;
    bool running = false; // a sequence: what goes into a chip is sealed, and hands keep off
    bool locked = false; // by a project or the lock button
    bool shrunk = false; // the window has nothing but the download group in view
    bool stop_requested = false; // of the sequence that runs, its next chips included
    Session* session = nullptr; // of the sequence that runs
    SessionFacts last_talk; // what the last one knew when it ended
    bool succeeded = false; // the last cycle's result, as far as it has one: report, count and beep follow it
    bool number_for_next = true; // the serial number of the next chip stands in the buffer, where one is wanted

    std::optional<SettingsFault> settings_fault; // why the settings are not on the disk
    bool settings_fault_told = false; // once for all the failures until a write goes well again

    bool closing = false; // the window was asked to close
    bool unloaded = false; // and everything has wound down: the program may end
    std::function<void()> on_unload; // called then

    // The talk that goes on, else the last one.
    const SessionFacts& talk() const { return session != nullptr ? *session : last_talk; }
    // Nobody is downloading it, and no project holds it.
    bool job_may_change() const { return !running && !locked; }
};

} // namespace vrk
