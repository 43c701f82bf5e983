// The options of the chips, one choice of two each, with all that is said of them. A pair writes one bit; which bit,
// and which choice is the default, is a matter of the page: see option_pages.cpp.
//
// The keys are stored names, misspellings included. Blanks inside the report texts line the choices up.
#pragma once

#include "report/text.h"

#include <string_view>

namespace vrk {

struct Choice {
    std::string_view clew_key; // of the row with the caption
    std::string_view key;
    Text caption; // of its button
    Text report; // said when it is chosen, in the report of a chip
};

struct Pair {
    std::string_view label_key;
    Text label;
    Choice first;
    Choice second;
};

namespace pairs {

// clang-format off

// ---- speed, oscillator, clock ----------------------------------------------------------------------------------------

inline constexpr Pair double_speed_oldest = {
    "Double_speed_Clew", { "Double speed / 双倍速:", "Double speed / 双倍速:" },
    { "Double_speed_YES_Clew", "Double_speed_YES", { "6T/双倍速", "6T/双倍速" },
      { "Double speed / 双倍速:           6T/双倍速", "Double speed / 双倍速:           6T/双倍速" } },
    { "Double_speed_NO_Clew", "Double_speed_NO", { "12T/单倍速", "12T/单倍速" },
      { "Double speed / 双倍速:          12T/单倍速", "Double speed / 双倍速:          12T/单倍速" } } };

inline constexpr Pair double_speed = {
    "Double_speed_Clew", { "Double speed / 双倍速:", "Double speed:" },
    { "Double_speed_YES_Clew", "Double_speed_YES", { "6T/双倍速", "6T" },
      { "Double speed / 双倍速:           6T/双倍速", "Double speed:                     YES, 6T" } },
    { "Double_speed_NO_Clew", "Double_speed_NO", { "12T/单倍速", "12T" },
      { "Double speed / 双倍速:          12T/单倍速", "Double speed:                     NO, 12T" } } };

inline constexpr Pair half_or_full_gain = {
    "Half_Gain_Clew", { "振荡放大器增益:", "Oscillator Gain( <12MHz can select Low):" },
    { "Half_Gain_YES_Clew", "Half_Gain_YES", { "1/2 gain", "Low" },
      { "振荡放大器增益:                   1/2 gain", "Oscillator Gain:                  1/2 gain" } },
    { "Half_Gain_NO_Clew", "Half_Gain_NO", { "full gain", "High" },
      { "振荡放大器增益:                  full gain", "Oscillator Gain:                 full gain" } } };

inline constexpr Pair high_or_low_gain = {
    "Half_Gain_Clew", { "振荡器放大增益(12MHz以下可选 Low):", "Oscillator Gain( <12MHz can select Low):" },
    { "Half_Gain_NO_Clew", "Half_Gain_NO", { "High", "High" },
      { "振荡器放大增益:                   High gain", "Oscillator Gain:                 High gain" } },
    { "Half_Gain_YES_Clew", "Half_Gain_YES", { "Low", "Low" },
      { "振荡器放大增益:                    Low gain", "Oscillator Gain:                  Low gain" } } };

inline constexpr Pair clock_source_oldest = { // says yes and no to the internal oscillator
    "Clock_Source_Clew", { "下次冷启动后时钟源为:", "MCU Clock:" },
    { "InteriorOscillate_Clew", "Interior_Oscillate", { "内部RC振荡器", "On-Chip R/C clock" },
      { "下次冷启动后使用 内部 RC 振荡器         YES", "Next Power-Up-Reset, use On-Chip R/C clock" } },
    { "ExteriorOscillate_Clew", "Exterior_Oscillate", { "外部晶体或时钟", "External Crystal/Clock" },
      { "下次冷启动后使用 内部 RC 振荡器         NO", "Next Power-Up-Reset, use External Crystal/Clock" } } };

inline constexpr Pair clock_source = {
    "Clock_Source_Clew", { "下次冷启动后时钟源为:", "MCU Clock:" },
    { "InteriorOscillate_Clew", "Interior_Oscillate", { "内部RC振荡器", "On-Chip R/C clock" },
      { "下次冷启动后使用内部 RC 振荡器", "Next Power-Up-Reset, use On-Chip R/C clock" } },
    { "ExteriorOscillate_Clew", "Exterior_Oscillate", { "外部晶体或时钟", "External Crystal/Clock" },
      { "下次冷启动后使用外部晶体或时钟", "Next Power-Up-Reset, use External Crystal/Clock" } } };

inline constexpr Pair clock_source_rc_oscillator = { // the same but for one word of a report
    "Clock_Source_Clew", { "下次冷启动后时钟源为:", "MCU Clock:" },
    { "InteriorOscillate_Clew", "Interior_Oscillate", { "内部RC振荡器", "On-Chip R/C clock" },
      { "下次冷启动后使用内部 RC 振荡器", "Next Power-Up-Reset, use On-Chip RC Oscillator" } },
    { "ExteriorOscillate_Clew", "Exterior_Oscillate", { "外部晶体或时钟", "External Crystal/Clock" },
      { "下次冷启动后使用外部晶体或时钟", "Next Power-Up-Reset, use External Crystal/Clock" } } };

// ---- download and memory -----------------------------------------------------------------------------------------------

inline constexpr Pair download_pins_oldest = {
    "P10_P11_Clew", { "下次冷启动P1.0/P1.1", "Next Program Code,P1.0/P1.1:" },
    { "Disregard_P10_P11_Clew", "Disregard_P10_P11", { "与下载无关", "Not Related" },
      { "下次下载时 P1.0/P1.1 与下载无关", "P1.0/P1.1 are not related to VRK ISP Programming" } },
    { "P10_P11_00_Down_Clew", "P10_P11_00_Download", { "等于0/0才可下载,快速启动", "Need = 0/0" },
      { "下次冷启动须 P1.0/P1.1=0/0 才下载, 快速启动", "P1.0/P1.1 need = 0/0 when Programming" } } };

inline constexpr Pair download_pins = {
    "P10_P11_Clew", { "下次冷启动P1.0/P1.1:", "Next Program Code,P1.0/P1.1:" },
    { "Disregard_P10_P11_Clew", "Disregard_P10_P11", { "与下载无关", "Not Related" },
      { "下次下载时 P1.0/P1.1 与下载无关", "P1.0/P1.1 are not related to VRK ISP Programming" } },
    { "P10_P11_00_Down_Clew", "P10_P11_00_Download", { "等于0/0才可以下载程序", "Need = 0/0" },
      { "下次冷启动须 P1.0/P1.1=0/0 才可以下载程序", "P1.0/P1.1 need = 0/0 when Programming" } } };

inline constexpr Pair download_pins_p3_2_p3_3 = { // P3.2 twice in the label, where P3.3 is meant: as it always was
    "P10_P11_Clew", { "下次冷启动P3.2/P3.2:", "Next Program Code,P1.0/P1.1:" },
    { "Disregard_P10_P11_Clew", "Disregard_P10_P11", { "与下载无关", "Not Related" },
      { "下次下载时 P3.2/P3.3 与下载无关", "P1.0/P1.1 are not related to VRK ISP Programming" } },
    { "P10_P11_00_Down_Clew", "P10_P11_00_Download", { "等于0/0才可以下载程序", "Need = 0/0" },
      { "下次冷启动须 P3.2/P3.3=0/0 才可以下载程序", "P1.0/P1.1 need = 0/0 when Programming" } } };

inline constexpr Pair extended_ram = {
    "AUX_RAM_Enable_Clew", { "内部扩展AUX-RAM:", "Enable AUX-RAM:" },
    { "AUX_RAM_Enable_NO_Clew", "AUX_RAM_Enable_NO", { "禁止访问", "Disable" },
      { "内部扩展AUX-RAM:                 禁止访问", "Disable AUX-RAM." } },
    { "AUX_RAM_Enable_Y_Clew", "AUX_RAM_Enable_YES", { "允许访问(强烈推荐)", "Enable" },
      { "内部扩展AUX-RAM:        允许访问(强烈推荐)", "Enable AUX-RAM." } } };

// Of the choice to erase the data flash: the same bit, under FFH in Chinese and 00H in English on some pages.
inline constexpr Pair erase_data_ff = {
    "Clear_EEPROM_Clew", { "下次下载用户应用程序时将数据Flash区一并擦除", "Next Program Code,erase EEPROM data to FF:" },
    { "Clear_EEPROM_FFH_Clew", "Clear_EEPROM_FFH", { "YES", "YES" },
      { "下次下载用户应用程序时将数据Flash区擦除:YES", "Next ISP Programming Code,erase EEPROM data to FF" } },
    { "Clear_EEPROM_SpiteClew", "Clear_EEPROM_Spite", { "NO", "NO" },
      { "下次下载用户应用程序时将数据Flash区擦除: NO", "Next ISP Programming Code,don't erase EEPROM data" } } };
inline constexpr Pair erase_data_00 = {
    "Clear_EEPROM_Clew", { "下次下载用户应用程序时将数据Flash区一并擦除", "Next Program Code,erase EEPROM data to FF:" },
    { "Clear_EEPROM_00H_Clew", "Clear_EEPROM_00H", { "YES", "YES" },
      { "下次下载用户应用程序时将数据Flash区擦除:YES", "Next ISP Programming Code,erase EEPROM data to FF" } },
    { "Clear_EEPROM_SpiteClew", "Clear_EEPROM_Spite", { "NO", "NO" },
      { "下次下载用户应用程序时将数据Flash区擦除: NO", "Next ISP Programming Code,don't erase EEPROM data" } } };
inline constexpr Pair clear_data_4 = {
    "Clear_EEPROM_Clew", { "下次下载用户应用程序时将数据Flash区一并清0:", "Next Program Code,clear EEPROM data to 00:" },
    { "Clear_EEPROM_00H_Clew", "Clear_EEPROM_00H", { "YES", "YES" },
      { "下次下载用户应用程序时将数据Flash区清0: YES", "Next ISP Programming Clear Data Flash To 0:  YES" } },
    { "Clear_EEPROM_SpiteClew", "Clear_EEPROM_Spite", { "NO", "NO" },
      { "下次下载用户应用程序时将数据Flash区清0: NO", "Next ISP Programming Clear Data Flash To 0:  NO" } } };
inline constexpr Pair clear_data_5 = {
    "Clear_EEPROM_Clew", { "下次下载用户应用程序时将数据Flash区一并清0:", "Next Program Code, clear EEPROM data:" },
    { "Clear_EEPROM_00H_Clew", "Clear_EEPROM_00H", { "YES", "YES" },
      { "下次下载用户应用程序时将数据Flash区清0: YES", "Next ISP Programming Code, clear EEPROM data" } },
    { "Clear_EEPROM_SpiteClew", "Clear_EEPROM_Spite", { "NO", "NO" },
      { "下次下载用户应用程序时将数据Flash区清0:  NO", "Next ISP Programming Code,don't clear EEPROM data" } } };

inline constexpr Pair unused_code = {
    "Clear_Unused_AP_Clew", { "本次下载时将用户程序区高端未用单元", "Didn't yet use of the application" },
    { "Clear_Unused_AP_Y_Clew", "Clear_Unused_AP_YES", { "写成00", "Write 0" }, { "", "" } },
    { "Clear_Unused_AP_N_Clew", "Clear_Unused_AP_NO", { "写成FF", "Write FF" }, { "", "" } } };

inline constexpr Pair ale_pin = {
    "P4_5_As_ALE_Clew", { "ALE pin", "ALE pin" },
    { "P4_5_As_ALE_NO_Clew", "P4_5_As_ALE_NO", { "用作P4.5", "ALE pin as P4.5" },
      { "ALE pin 用作P4.5", "ALE pin P4.5" } },
    { "P4_5_As_ALE_YES_Clew", "P4_5_As_ALE_YES", { "仍为 ALE pin", "ALE pin" },
      { "ALE pin 仍为 ALE", "ALE pin" } } };

// ---- reset -----------------------------------------------------------------------------------------------------------

inline constexpr Pair reset_pin_p4_7 = {
    "P4_7_As_RESET_pin_Clew", { "RESET pin", "RESET/P4.7 is used as" },
    { "P4_7_As_RESET_NO_Clew", "P4_7_As_RESET_NO", { "用作P4.7,如用内部RC振荡仍为RESET脚", "P4.7,must use external clock" },
      { "RESET pin 用作P4.7,如用内部RC振荡仍为RESET脚", "RESET/P4.7 is used as P4.7" } },
    { "P4_7_As_RESET_YES_Clew", "P4_7_As_RESET_YES", { "仍为 RESET", "RESET" },
      { "RESET/P4.7 用作 RESET", "RESET/P4.7 is used as RESET" } } };

inline constexpr Pair reset_pin_p4_7_juniper = { // the same but for one Chinese report
    "P4_7_As_RESET_pin_Clew", { "RESET pin", "RESET/P4.7 is used as" },
    { "P4_7_As_RESET_NO_Clew", "P4_7_As_RESET_NO", { "用作P4.7,如用内部RC振荡仍为RESET脚", "P4.7,must use external clock" },
      { "RESET pin 用作P4.7,如用内部RC振荡仍为RESET脚", "RESET/P4.7 is used as P4.7" } },
    { "P4_7_As_RESET_YES_Clew", "P4_7_As_RESET_YES", { "仍为 RESET", "RESET" },
      { "RESET pin 仍为 RESET", "RESET/P4.7 is used as RESET" } } };

inline constexpr Pair reset_pin_p3_6 = {
    "P4_7_As_RESET_pin_Clew", { "RESET pin", "RESET/P3.6 is used as" },
    { "P4_7_As_RESET_NO_Clew", "P4_7_As_RESET_NO", { "用作P3.6,如用内部RC振荡仍为RESET脚", "P3.6,must use external clock" },
      { "RESET pin 用作P3.6,如用内部RC振荡仍为RESET脚", "RESET/P3.6 is used as P3.6" } },
    { "P4_7_As_RESET_YES_Clew", "P4_7_As_RESET_YES", { "仍为 RESET", "RESET" },
      { "RESET/P3.6 用作 RESET", "RESET/P3.6 is used as RESET" } } };

inline constexpr Pair reset_pin_p0_0 = {
    "P4_7_As_RESET_pin_Clew", { "RESET pin", "RESET/P4.7 is used as" },
    { "P4_7_As_RESET_NO_Clew", "P4_7_As_RESET_NO", { "用作P0.0", "P4.7,must use external clock" },
      { "RESET pin 用作P0.0", "RESET/P4.7 is used as P4.7" } },
    { "P4_7_As_RESET_YES_Clew", "P4_7_As_RESET_YES", { "仍为 RESET", "RESET" },
      { "RESET/P0.0 用作 RESET", "RESET/P4.7 is used as RESET" } } };

inline constexpr Pair reset_delay = {
    "EN810_Delay_200mS_Clew", { "上电复位增加额外的复位延时:", "After Power-Up Reset,add extra Reset-Delay-Time" },
    { "EN810_200mS_YES_Clew", "EN810_200mS_YES", { "YES", "YES" },
      { "上电复位增加额外的复位延时", "Power-Up Reset,add extra Reset-Delay-Time" } },
    { "EN810_200mS_NO_Clew", "EN810_200mS_NO", { "NO", "NO" },
      { "上电复位不增加额外的复位延时", "Power-Up do not add extra Reset-Delay-Time" } } };

// ---- low voltage, Chinese page of the RC families: the same two keys in two strips --------------------------------------

inline constexpr Pair low_voltage_resets = {
    "LVD_Reset_NO_Clew", { "电压低于检测值时", "" },
    { "Clew", "LVD_Reset_NO", { "产生中断", "" }, { "低电压产生中断", "" } },
    { "Clew", "LVD_Reset_YES", { "复位", "" }, { "低电压复位", "" } } };
inline constexpr Pair low_voltage_protects = {
    "LVD_Reset_NO_Clew", { "低压允许IAP写操作(选低压复位无意义)", "" },
    { "Clew", "LVD_Reset_NO", { "允许写操作", "" }, { "低电压允许IAP写操作(低压复位无意义)", "" } },
    { "Clew", "LVD_Reset_YES", { "写保护", "" }, { "低电压写保护", "" } } };

// ---- low voltage, Teak ------------------------------------------------------------------------------------------------

inline constexpr Pair data_write_protection = {
    "LowU_Unwrite_Clew", { "EEPROM 低压写保护", "EEPROM 低压写保护" },
    { "LowU_Unwrite_YES_Clew", "LowU_Unwrite_YES", { "YES", "YES" },
      { "EEPROM 低压写保护                       YES", "EEPROM 低压写保护                       YES" } },
    { "LowU_Unwrite_NO_Clew", "LowU_Unwrite_NO", { "NO", "NO" },
      { "EEPROM 低压写保护                       NO", "EEPROM 低压写保护                       NO" } } };

// ---- low voltage: the builder of the panel puts the voltages of the model in place of these ----------------------------

inline constexpr Pair low_voltage_3_7_3_3 = {
    "Low_Voltage_Reset_Clew", { "低压复位电压(固件版本>5.4有效)", "Low Voltage Reset, when MCU-VCC" },
    { "LowU_Reset_YES_Clew", "LowU_Reset_YES", { "3.7V以下", "< 3.7V" },
      { "电源电压低于 3.7V 复位", "Low Voltage Reset, when MCU-VCC < 3.7V" } },
    { "LowU_Reset_NO_Clew", "LowU_Reset_NO", { "3.3V以下", "< 3.3V" },
      { "电源电压低于 3.3V 复位", "Low Voltage Reset, when MCU-VCC < 3.3V" } } };

inline constexpr Pair low_voltage_p1_2 = {
    "Low_Voltage_Reset_Clew", { "P1.2/RESET2脚低于1.33V复位,固件>V5.7有效", "P1.2/RESET2:" },
    { "LowU_Reset_YES_Clew", "LowU_Reset_YES", { "YES", "<1.33V Voltage Reset" },
      { "P1.2/RESET2 脚低于 1.33V 复位", "P1.2/RESET2 pin, voltage<1.33V Reset" } },
    { "LowU_Reset_NO_Clew", "LowU_Reset_NO", { "NO", "Used as P1.2/LVD" },
      { "P1.2 仍为 LVD 脚", "P1.2/RESET2 is used as P1.2/LVD" } } };

inline constexpr Pair low_voltage_p4_6 = {
    "Low_Voltage_Reset_Clew", { "P4.6/RESET2脚低于1.33V复位,固件>V6.0有效", "P4.6/RESET2:" },
    { "LowU_Reset_YES_Clew", "LowU_Reset_YES", { "YES", "<1.33V Voltage Reset" },
      { "P4.6/RESET2 脚低于 1.33V 复位", "P4.6/RESET2 pin voltage<1.33V Reset" } },
    { "LowU_Reset_NO_Clew", "LowU_Reset_NO", { "NO", "Used as P4.6/LVD" },
      { "P4.6/RESET2 用作 P4.6", "P4.6/RESET2 is used as P4.6/LVD" } } };

inline constexpr Pair low_voltage_3_8_3_3 = {
    "Low_Voltage_Reset_Clew", { "低压复位电压(>12M建议选高电压)", "Low Voltage Reset, when MCU-VCC" },
    { "LowU_Reset_YES_Clew", "LowU_Reset_YES", { "3.8V以下", "< 3.8V" },
      { "电源电压低于 3.8V 复位", "Low Voltage Reset, when MCU-VCC < 3.8V" } },
    { "LowU_Reset_NO_Clew", "LowU_Reset_NO", { "3.3V以下", "< 3.3V" },
      { "电源电压低于 3.3V 复位", "Low Voltage Reset, when MCU-VCC < 3.3V" } } };

inline constexpr Pair low_voltage_4_1_3_5 = {
    "Low_Voltage_Reset_Clew", { "低压复位电压(>12M建议选高电压)", "Low Voltage Reset, when MCU-VCC" },
    { "LowU_Reset_YES_Clew", "LowU_Reset_YES", { "4.1V以下", "< 4.1V" },
      { "电源电压低于 4.1V 复位", "Low Voltage Reset, when MCU-VCC < 4.1V" } },
    { "LowU_Reset_NO_Clew", "LowU_Reset_NO", { "3.5V以下", "< 3.5V" },
      { "电源电压低于 3.5V 复位", "Low Voltage Reset, when MCU-VCC < 3.5V" } } };

inline constexpr Pair low_voltage_4_1_3_7 = {
    "Low_Voltage_Reset_Clew", { "低压复位电压(>12M建议选高电压)", "Low Voltage Reset, when MCU-VCC" },
    { "LowU_Reset_YES_Clew", "LowU_Reset_YES", { "4.1V以下", "< 4.1V" },
      { "电源电压低于 4.1V 复位", "Low Voltage Reset, when MCU-VCC < 4.1V" } },
    { "LowU_Reset_NO_Clew", "LowU_Reset_NO", { "3.7V以下", "< 3.7V" },
      { "电源电压低于 3.7V 复位", "Low Voltage Reset, when MCU-VCC < 3.7V" } } };

// ---- watchdog --------------------------------------------------------------------------------------------------------

inline constexpr Pair watchdog_stops = {
    "Reset_Close_WDT_Clew", { "用户软件启动内部看门狗后", "After start WDT:" },
    { "Reset_Close_WDT_N_Clew", "Reset_Close_WDT_NO", { "只有停电关看门狗", "Close With Power Down" },
      { "用户软件启动内部看门狗后:  只有停电关看门狗", "After start WDT: Close with Power Down" } },
    { "Reset_Close_WDT_Y_Clew", "Reset_Close_WDT_YES", { "复位关看门狗", "Close With Reset" },
      { "用户软件启动内部看门狗后:     复位关看门狗", "After start WDT: Close with Reset" } } };

// The reports of page 4 have one blank less in front of their NO.
inline constexpr Pair watchdog_locked_4 = {
    "Unchangeable_WDT_Clew", { "启动内部看门狗后禁止改看门狗分频数", "WDT_CONTR be write-protected except CLR_WDT" },
    { "UnchangeableWDT_Y_Clew", "Unchangeable_WDT_YES", { "YES", "YES" },
      { "启动内部看门狗后禁止改看门狗分频数      YES", "WDT_CONTR be write-protected except CLR_WDT:YES" } },
    { "UnchangeableWDT_N_Clew", "Unchangeable_WDT_NO", { "NO", "NO" },
      { "启动内部看门狗后禁止改看门狗分频数      NO", "WDT_CONTR be write-protected except CLR_WDT:NO" } } };
inline constexpr Pair watchdog_at_power_up_4 = {
    "Power_On_Run_WDT_Clew", { "上电时自动用有关参数启动内部看门狗", "WDT is enabled automatically during power-up" },
    { "PowerOn_Run_WDT_Y_Clew", "Power_On_Run_WDT_YES", { "YES", "YES" },
      { "下次上电自动用有关参数启动内部看门狗    YES", "WDT is enabled automatically during power-up:YES" } },
    { "PowerOn_Run_WDT_N_Clew", "Power_On_Run_WDT_NO", { "NO", "NO" },
      { "下次上电自动用有关参数启动内部看门狗    NO", "WDT is enabled automatically during power-up:NO" } } };
inline constexpr Pair watchdog_in_idle_4 = {
    "Idle_Run_WDT_Clew", { "Idle(空闲)状态时内部看门狗停止计数", "Stop WatchDog Timer counting in Idle mode" },
    { "Idle_Run_WDT_YES_Clew", "Idle_Run_WDT_YES", { "YES", "YES" },
      { "Idle(空闲)状态时内部看门狗停止计数      YES", "Stop WatchDog Timer counting in Idle mode:  YES" } },
    { "Idle_Run_WDT_NO_Clew", "Idle_Run_WDT_NO", { "NO", "NO" },
      { "Idle(空闲)状态时内部看门狗停止计数      NO", "Stop WatchDog Timer counting in Idle mode:  NO" } } };

inline constexpr Pair watchdog_locked = {
    "Unchangeable_WDT_Clew", { "启动内部看门狗后禁止改看门狗分频数", "WDT_CONTR be write-protected except CLR_WDT" },
    { "UnchangeableWDT_Y_Clew", "Unchangeable_WDT_YES", { "YES", "YES" },
      { "启动内部看门狗后禁止改看门狗分频数      YES", "WDT_CONTR be write-protected except CLR_WDT:YES" } },
    { "UnchangeableWDT_N_Clew", "Unchangeable_WDT_NO", { "NO", "NO" },
      { "启动内部看门狗后禁止改看门狗分频数       NO", "WDT_CONTR be write-protected except CLR_WDT:NO" } } };
inline constexpr Pair watchdog_at_power_up = {
    "Power_On_Run_WDT_Clew", { "上电时自动用有关参数启动内部看门狗", "WDT is enabled automatically during power-up" },
    { "PowerOn_Run_WDT_Y_Clew", "Power_On_Run_WDT_YES", { "YES", "YES" },
      { "下次上电自动用有关参数启动内部看门狗    YES", "WDT is enabled automatically during power-up:YES" } },
    { "PowerOn_Run_WDT_N_Clew", "Power_On_Run_WDT_NO", { "NO", "NO" },
      { "下次上电自动用有关参数启动内部看门狗     NO", "WDT is enabled automatically during power-up:NO" } } };
inline constexpr Pair watchdog_in_idle = {
    "Idle_Run_WDT_Clew", { "Idle(空闲)状态时内部看门狗停止计数", "Stop WatchDog Timer counting in Idle mode" },
    { "Idle_Run_WDT_YES_Clew", "Idle_Run_WDT_YES", { "YES", "YES" },
      { "Idle(空闲)状态时内部看门狗停止计数      YES", "Stop WatchDog Timer counting in Idle mode:  YES" } },
    { "Idle_Run_WDT_NO_Clew", "Idle_Run_WDT_NO", { "NO", "NO" },
      { "Idle(空闲)状态时内部看门狗停止计数       NO", "Stop WatchDog Timer counting in Idle mode:  NO" } } };

// clang-format on

} // namespace pairs

} // namespace vrk
