// The controls of the window under their own names, and the window's place. Data: what they show and what follows when
// one is touched is the shell's business.
#pragma once

#include "form/registry.h"
#include "form/window_place.h"

namespace vrk {

struct MainForm {
    MainForm();

    ControlRegistry controls;
    WindowPlace window;

    // Step 1: the model. The tree drops down from txtDevice.
    Frame FrameX[5];
    TextBox txtDevice;
    Button Command3; // drops the tree down, and takes it back
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
    Button comOtherPort; // one that the system does not list
    Label LabMaxBaud;
    Label Label4;
    ComboBox cobBaudMax;
    ComboBox cobBaudMin;
    CheckBox cheTL; // connects at a fixed 115200 without parity
    Image imgOpen_sys;
    Image imgNotOpen_sys;

    // Step 4: the options of the model. A strip is a label and a group of buttons; they share the strip's index.
    Frame Picture2[14];
    Label LabOption[14];
    OptionButton Option0[2];
    OptionButton Option1[2];
    OptionButton Option2[3];
    OptionButton Option3[3];
    OptionButton Option4[2];
    OptionButton Option5[3];
    OptionButton Option6[2];
    OptionButton Option7[2];
    OptionButton Option8[2];
    OptionButton Option9[2];
    OptionButton Option10[2];
    OptionButton Option11[2];
    OptionButton Option12[3];
    OptionButton Option13[2];
    Label LabOptionC[2]; // notes to the whole panel
    ComboBox comWDT_Prescalar[2]; // 0: divider of the watchdog, 1: of the 30 kHz clock
    Frame Frame12;
    Frame Frame15;
    Frame Frame20;
    Frame Frame23;
    Label Label20;

    // The RC oscillator. 0: MHz wanted, 1 to 3: what goes into the option bytes, 4: low voltage, 5: what the RC test
    // aims at.
    ComboBox com_RC_frequency[6];
    TextBox txt_RC_frequency;
    Label Label8[5];

    // Pins that the boot code drives for the user.
    Frame Picture4; // the transceiver's
    Frame Picture7; // the watchdog's
    Label Lab_485_pin;
    Label Lab__485_logic;
    ComboBox comb_485_pin;
    OptionButton opt_485_pin[2];
    OptionButton opt_485_logic[2];
    Label Label9;
    ComboBox comb_External_WDT;
    OptionButton opt_External_WDT[2];
    OptionButton opt_ISP_DEMO_WDT[2];
    ComboBox comb_WDT; // pin that feeds an external watchdog

    // The check page: the options as read from the chip.
    Frame Frame4;
    Button comReadChipLock;
    Label LabLock[16];

    // Step 5: the download.
    Button comDownload[2];
    Button comStop_Download;
    TextBox textMsg;
    ProgressBar ProgressBar1;
    Label labKbyte;
    Label labTimeLeft; // percent, and the time that is left
    Label labVerdict; // in one word
    Label labLastVerdict; // of the last chip that was worked on
    Label labWrite_OK_Count;
    TextBox txtWrite_OK_Count;
    Label labWrite_Bad_Count;
    TextBox txtWrite_Bad_Count;
    Button comClear_OK_Count;
    Button comMastWindow; // leaves the download group alone in the window, and back; the caption is the state

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
    Label labEditedCheckSum[2]; // of the bytes as a hand has left them
    Label Label7[3]; // 1 and 2: effective length of the code and of the EEPROM file
    Label LabDumpAddress[2]; // of the fields of each dump: an address to go to, what to look for, and the answer
    TextBox texDumpAddress[2];
    Label LabDumpFind[2];
    TextBox texDumpFind[2];
    Label labDumpFound[2];
    Label LabEdit_Clew; // how to edit a buffer; there for a while after each edit

    // Serial numbers.
    Frame fraAuto_Increase;
    Label LabIncrease_Clew; // the line above both frames
    Frame frmAP_FileIncrease;
    CheckBox cheAuto_Increase;
    Label LabAuto_Increase[5]; // of the four fields and of the number system
    TextBox texAuto_Increase[4]; // address, byte count, next value, increment
    OptionButton optAuto_Increase[3]; // AutoIncrease::System
    Frame frmDtat_FileIncrease;
    CheckBox cheData_Auto_Increase;
    Label LabData_Auto_Increase[5];
    TextBox texData_Auto_Increase[4];
    OptionButton optData_Auto_Increase[3];

    // The books of a line.
    Frame fraLine;
    CheckBox cheLedger; // numbers come from the ledger
    CheckBox cheRecord; // every chip is written down
    Label LabLine[3]; // of the fields below, in their order
    TextBox texOrder;
    TextBox texStation;
    TextBox texLedger; // a file, or a server's address; empty: the user's own file

    Button mnuLog; // the records, in a window of their own

    // A range of the code buffer goes to a file.
    Frame Frame9;
    Label LabStore[2]; // of the start address and of the length
    TextBox txt_Start_Address;
    TextBox txt_length;
    Button comStoreFile;

    // The project page.
    Frame fra_Batch_quantity;
    TextBox texBatchFileName;
    Button comOpenBatchFile;
    Button comSaveBatchFile;
    Button comLockOptions;
    Button comUnlockOptions;
    Button Command1; // what a project file is for

    // The off-line board: how many chips it may program, and what of the production line it has to know.
    Frame Frame18;
    Button comTJXZ;
    Button com_TJXZ_help;
    Button Read24C512; // the board's own memory, for those who build it
    Label labTJXZ[4]; // over the quantity and behind it, about the lights, of the pins
    TextBox txt_download_max;
    ComboBox combPins;
    CheckBox che_staple[4]; // 0: a sorter stands before the chips, 1 to 3: BoardChecks
    CheckBox mnuProduction; // shows the controls of a production line

    // The custom command: what is sent to user code before a download, and on what line.
    Frame Frame8;
    Label LabUserCode[6]; // of the command and of its line
    TextBox txtUserCode;
    Button comSendUserCode;
    Button comHelp[2];
    CheckBox cekReloadFileWhileFileChange1; // sends the command when the file has changed
    ComboBox cobUserCodeBaud;
    ComboBox cobUserCodeParity;
    ComboBox cobUserCodeDataBits;
    ComboBox cobUserCodeStopBits;

    // ISP DEMO: the line of its download, and the command that leads to it with a line of its own.
    Frame Frame11;
    Label LabDEMO[8]; // of both lines
    Button com_Demo_DownLoad;
    Button com_Demo_Re_DownLoad;
    Button com_Demo_Stop;
    CheckBox che_Demo_DownLoad; // sends the command first
    ComboBox cob_DEMO_DownLoad_Baud;
    ComboBox cob_DEMO_DownLoad_Parity;
    ComboBox cob_DEMO_DownLoad_DataBits;
    ComboBox cob_DEMO_DownLoad_StopBits;
    TextBox txt_DEMO_UserCode;
    ComboBox cob_DEMO_UserCode_Baud;
    ComboBox cob_DEMO_UserCode_Parity;
    ComboBox cob_DEMO_UserCode_DataBits;
    ComboBox cob_DEMO_UserCode_StopBits;

    // The terminal: its line, and what it sends once or again and again.
    Frame fraDebug;
    Frame Frame24; // its right pane
    Image ImgSplitter;
    Image imgOpen; // the lamp; a click on it closes the port, and one on the other opens it
    Image imgNotOpen;
    Label labDebugPort; // the device behind the number
    ComboBox com_Debug_COM;
    ComboBox com_Debug_Baud;
    ComboBox com_Debug_DataBits;
    ComboBox com_Debug_ParityCheck;
    ComboBox com_Debug_StopBits;
    CheckBox che_AutoOpenPort; // after a download
    Button comOpenCOM[3]; // of the terminal's page and of the monitor's two; the caption is the state
    TextBox texReceive;
    OptionButton optReceiveHex[2]; // 0: as text, 1: as hexadecimal bytes
    ComboBox combDebugCodePage; // CodePage
    Button comDebugClear[3]; // 0: the terminal's display, 1 and 2: the monitor's lists
    Button comDebugHelp[3];
    Label labReceiveCount;
    Label labSendCount;
    Button comComp; // compares what came in with the code buffer
    TextBox texSend;
    Button comDebugSend;
    Button comAutoSend;
    Label LabDebug[8];

    // Beyond the talk itself: a time before each line, a log, a search, the control lines.
    CheckBox che_DebugTime;
    Button comDebugLog; // begins and ends the log; the caption is the state
    OptionButton optDebugLog[2]; // ReceiveLog::Kind
    TextBox texDebugFind;
    Button comDebugFind;
    Label labDebugFound; // where nothing was found
    CheckBox che_DebugDTR;
    CheckBox che_DebugRTS;
    Label labDebugLines; // of the other side
    OptionButton optHexSend[2]; // 0: as text, 1: as hexadecimal bytes
    TextBox texSendCycle; // ms

    // The terminal's list of strings, sent one by one or in turn.
    TextBox texSpreadSend[25];
    CheckBox cheSpreadHex[25]; // the string of that row is hexadecimal
    TextBox texSpreadSendCycle; // ms
    Button comSpreadSendCom[25];
    Button comSpreadAutoSend;

    // The monitor: registers and direct memory on one page, the rest on the other.
    Frame Frame21;
    Frame Frame22;
    ListBox lst_debug1; // special function registers
    ListBox lst_debug2; // direct and indirect memory
    ListBox lst_debug3; // external memory
    ListBox lst_debug4; // data flash
    Label Label23[4]; // over each list
    Label Label24; // columns of the list of direct memory, of external memory, of data flash
    Label Label26;
    Label Label27;
    Button comDebugContinue[3]; // 1 and 2
    CheckBox che_disable_Debug_SFR_232; // no word goes back to the target

    // The wiring of a target, to read.
    Frame fraAboutHardWare;
    Label LabAboutHardWare;

    // The menu.
    Label mnuTitle[4]; // of the tools, the languages, the help and the files
    Label mnuRecentTitle[2]; // of the two lists
    Button mnuRecentFile[8]; // the newest first; the caption is the path
    Button mnuRecentProject[8];
    OptionButton mnuLanguage[2]; // of the next start: 0: Chinese, 1: English
    Button mnuAbout;
    Button mnuCopyCommandLine; // the job as it stands

    TextBox Text1; // where keys go that are meant for no control
    OptionButton optFillbyte[2]; // reserved, as its setting is: 0: 00, 1: FF
};

} // namespace vrk
