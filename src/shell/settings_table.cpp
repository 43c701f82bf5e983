#include "shell/settings_table.h"

namespace vrk {

namespace {

constexpr const char* as_it_stands = nullptr;
constexpr int single = SettingRow::single;
constexpr int each = SettingRow::each;
constexpr const char* site = "www.example.com"; // something to send that everybody knows at sight

// Misspelt keys stay so: users' settings hang on them.
// clang-format off
constexpr SettingRow rows[] = {
//    key                             default       control                        index   holds
//  terminal
    { "DebugCOM",                     "0",          "com_Debug_COM",               single, Holds::place },
    { "DebugBaud",                    "2",          "com_Debug_Baud",              single, Holds::place },  // 115200
    { "DebugDataBits",                "0",          "com_Debug_DataBits",          single, Holds::place },  // 8
    { "DebugParity",                  "2",          "com_Debug_ParityCheck",       single, Holds::place },  // None
    { "DebugStopBits",                "0",          "com_Debug_StopBits",          single, Holds::place },  // 1
    { "DebugAutoOpenPort",            as_it_stands, "che_AutoOpenPort",            single, Holds::check },
    { "optHexSend",                   as_it_stands, "optHexSend",                  each,   Holds::button },
    { "texSendCycle",                 "1000",       "texSendCycle",                single, Holds::text },
    { "texSendText",                  site,         "texSend",                     single, Holds::text },
    { "texSpreadSendCycle",           "1000",       "texSpreadSendCycle",          single, Holds::text },
    { "cheSpreadHex",                 "0",          "cheSpreadHex",                each,   Holds::check },
    { "texSpreadSend",                "",           "texSpreadSend",               each,   Holds::text },
//  custom command and ISP DEMO: 115200, none, 8, 1 throughout
    { "UserCodeBaud",                 "0",          "cobUserCodeBaud",             single, Holds::place },
    { "UserCodeParity",               "2",          "cobUserCodeParity",           single, Holds::place },
    { "UserCodeDataBits",             "0",          "cobUserCodeDataBits",         single, Holds::place },
    { "UserCodeStopBits",             "0",          "cobUserCodeStopBits",         single, Holds::place },
    { "ISP_DEMO_DownLoad_Baud",       "0",          "cob_DEMO_DownLoad_Baud",      single, Holds::place },
    { "ISP_DEMO_DownLoad_Parity",     "2",          "cob_DEMO_DownLoad_Parity",    single, Holds::place },
    { "ISP_DEMO_DownLoad_DataBits",   "0",          "cob_DEMO_DownLoad_DataBits",  single, Holds::place },
    { "ISP_DEMO_DownLoad_StopBits",   "0",          "cob_DEMO_DownLoad_StopBits",  single, Holds::place },
    { "ISP_DEMO_UserCodeBaud",        "0",          "cob_DEMO_UserCode_Baud",      single, Holds::place },
    { "ISP_DEMO_UserCodeParity",      "2",          "cob_DEMO_UserCode_Parity",    single, Holds::place },
    { "ISP_DEMO_UserCodeDataBits",    "0",          "cob_DEMO_UserCode_DataBits",  single, Holds::place },
    { "ISP_DEMO_UserCodeStopBits",    "0",          "cob_DEMO_UserCode_StopBits",  single, Holds::place },
//  download
    { "COM_port",                     "0",          "combCommPort",                single, Holds::place },
    { "BaudMin",                      "8",          "cobBaudMin",                  single, Holds::place },  // 2400
    { "Dalay_ReDownLoad",             "4",          "comDalay_ReDownLoad",         single, Holds::place },  // 5 s
    { "Write_OK_Count",               "0",          "txtWrite_OK_Count",           single, Holds::count },
    { "Write_Bad_Count",              "0",          "txtWrite_Bad_Count",          single, Holds::count },
    { "pin_for_485",                  "1",          "opt_485_pin",                 single, Holds::choice },
    { "pin_address_for_485",          "0",          "comb_485_pin",                single, Holds::place },
    { "logic_of_control_485",         "1",          "opt_485_logic",               single, Holds::choice },
    { "pin_External_WDT",             "1",          "opt_External_WDT",            single, Holds::choice },
    { "pin_address_External_WDT",     "1",          "comb_External_WDT",           single, Holds::place },
    { "WDT_Prescalar",                "256",        "comWDT_Prescalar",            0,      Holds::item },
    { "com_RC_frequency_0",           "18.432",     "com_RC_frequency",            0,      Holds::item },
    { "com_RC_frequency_1",           "1",          "com_RC_frequency",            1,      Holds::place },
    { "com_RC_frequency_2",           "3",          "com_RC_frequency",            2,      Holds::place },
    { "com_RC_frequency_3",           "3",          "com_RC_frequency",            3,      Holds::place },
    { "com_RC_frequency_4",           "2",          "com_RC_frequency",            4,      Holds::place },
    { "com_RC_frequency_5",           "11.059",     "com_RC_frequency",            5,      Holds::item },
    { "txt_RC_frequency",             "128",        "txt_RC_frequency",            single, Holds::text },
//  line
    { "LedgerNumbers",                "0",          "cheLedger",                   single, Holds::check },
    { "LedgerRecord",                 "0",          "cheRecord",                   single, Holds::check },
    { "LedgerOrder",                  "",           "texOrder",                    single, Holds::text },
    { "LedgerStation",                "",           "texStation",                  single, Holds::text },
    { "LedgerAddress",                "",           "texLedger",                   single, Holds::text },
};
// clang-format on

} // namespace

std::span<const SettingRow> setting_rows() { return rows; }

} // namespace vrk
