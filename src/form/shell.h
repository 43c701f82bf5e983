// The program between its window and its engine: the named controls and the state behind them. It lives as long as the
// program and owns everything.
#pragma once

#include "image/auto_increase_record.h"
#include "image/file_buffer.h"
#include "form/job_state.h"
#include "form/link_state.h"
#include "form/main_form.h"
#include "catalog/mcu_record.h"
#include "catalog/mcu_table.h"
#include "options/option_table.h"
#include "form/target_facts.h"
#include "platform/comm_control.h"
#include "platform/platform.h"
#include "platform/timer.h"

namespace vrk {

struct Shell {
    explicit Shell(const Platform& its_platform);

    Platform platform;
    bool language_is_english = false; // Chinese is the language in force
    CommControl MSComm1;
    MainForm form;

    // Timers. Their roles stand beside their making.
    Timer Timer1;
    Timer Timer2;
    Timer Timer3;
    Timer Timer6;
    Timer Timer7;
    Timer Timer8;
    Timer Timer9;
    Timer Timer10;
    Timer Timer11;
    Timer Timer12;
    Timer Timer_beep;
    Timer TimerUnload;

    // State.
    McuTable mcu_table;
    OptionTable option_table;
    McuRecord selected; // the model in the tree; a connection never overwrites it
    McuRecord connected; // the chip on the wire, as the catalogue knows it
    std::int32_t option_family = 0; // of the selected model
    BesideRecord beside; // what comes with the model last taken
    bool series_is_15_16_17 = false; // of the selected model
    bool series_is_15_16 = false;

    LinkState link;
    TargetFacts target;
    RcTest rc;
    OptionState options;
    JobState job;

    FileBuffer code_buffer{"AP_FILE", FileBuffer::code_last};
    FileBuffer data_buffer{"Data_File", FileBuffer::data_last};
    bool file_loaded = false; // a code file has been opened; a model mismatch clears it
    LoaderState loader;
    AutoIncrease code_increase;
    AutoIncrease data_increase;
    bool edit_confirmed = false; // the user has agreed to edit the buffers
    DownloadPlan plan;
    bool closing = false; // the window was asked to close
    bool unloaded = false; // and everything has wound down: the program may end
    std::function<void()> on_unload; // called then
};

} // namespace vrk
