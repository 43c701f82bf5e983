// The one main object: the named controls of the window and the state behind them. It lives as long as the program and
// owns everything. Rooms above bring the routines that work on it; there are no procedures of the tool here.
#pragma once

#include "form/file_buffer.h"
#include "form/job_state.h"
#include "form/link_state.h"
#include "form/mcu_record.h"
#include "form/mcu_table.h"
#include "form/registry.h"
#include "form/target_facts.h"
#include "platform/comm_control.h"
#include "platform/platform.h"
#include "platform/timer.h"

namespace vrk {

struct MainForm {
    explicit MainForm(const Platform& its_platform);

    Platform platform;
    ControlRegistry controls;
    bool language_is_english = false; // Chinese is the language in force
    CommControl MSComm1;

    // Step 1: the model. The tree drops down from txtDevice.
    Frame FrameX[5];
    TextBox txtDevice;
    Tree TreeViewDevice;
    Label Label2[7];
    Label LabISP_reange[2]; // first and last application address

    // Step 2: the files.
    Button comLoadFile;
    Button comLoadDataFile;
    TextBox txtAP_FileStart;
    TextBox txtDataFileStart;
    CheckBox cheClearAP_Buffer;
    CheckBox cheClearDataBuffer;

    // Step 3: the line.
    ComboBox combCommPort;
    Label LabMaxBaud;
    Label Label4;
    ComboBox cobBaudMax;
    ComboBox cobBaudMin;
    CheckBox cheTL; // connects at a fixed 115200 without parity
    Image imgOpen_sys;
    Image imgNotOpen_sys;

    // Step 4: the options of the model.
    Frame Frame12;
    ComboBox com_RC_frequency[6];
    OptionButton opt_ISP_DEMO_WDT[2];
    ComboBox comb_WDT; // pin that feeds an external watchdog

    // Step 5: the download.
    Button comDownload[2];
    Button comStop_Download;
    TextBox textMsg;
    ProgressBar ProgressBar1;
    Label labKbyte;
    Label labWrite_OK_Count;
    TextBox txtWrite_OK_Count;
    Button comClear_OK_Count;

    // Beeps and repeats.
    Frame Frame16;
    OptionButton optBeepYes;
    OptionButton optBeepNo;
    ComboBox comDalay_ReDownLoad;
    CheckBox cekReloadFile;
    CheckBox cekReloadFileWhileFileChange;
    Label Label10[3];

    // The right side: buffers.
    TabStrip TabStrip1;
    TabStrip TabStrip2;
    Frame Frame7;
    Frame frmDataFlash;
    TextBox txtBuffer;
    TextBox txtBuffer2;
    TextBox txtDataFlash1;
    TextBox tetDataFlash2;
    ScrollBar vscFile[2];
    TextBox txtBufferAddress[4];
    Label LabFileCheckSum[2];
    TextBox txtFileCheckSum;
    TextBox txtDataFileCheckSum;
    Label Label7[3]; // 1 and 2: effective length of the code and of the EEPROM file

    // Timers. Their roles stand beside their making.
    Timer Timer1;
    Timer Timer2;
    Timer Timer3;
    Timer Timer6;
    Timer Timer7;
    Timer Timer8;
    Timer Timer9;
    Timer Timer10;
    Timer Timer12;
    Timer Timer_beep;
    Timer TimerUnload;

    // State.
    McuTable mcu_table;
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
    DownloadPlan plan;
    bool closing = false; // the window was asked to close
    bool unloaded = false; // and everything has wound down: the program may end
    std::function<void()> on_unload; // called then
};

} // namespace vrk
