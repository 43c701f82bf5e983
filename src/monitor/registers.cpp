#include "monitor/registers.h"

namespace vrk {

namespace {

// clang-format off
constexpr Register first_registers[] = {
    { 0xE0, "ACC" },           { 0xF0, "B" },             { 0x81, "SP" },            { 0x83, "DPH" },
    { 0x82, "DPL" },           { 0xD0, "PSW" },           { 0x80, "P0" },            { 0x90, "P1" },
    { 0xA0, "P2" },            { 0xB0, "P3" },            { 0xE8, "P4" },            { 0xE2, "ISP_DATA" },
    { 0xE3, "ISP_ADDRH" },     { 0xE4, "ISP_ADDRL" },     { 0xE5, "ISP_CMD" },       { 0xE6, "ISP_TRIG" },
    { 0xE7, "ISP_CONTR" },     { 0x88, "TCON" },          { 0x89, "TMOD" },          { 0x8C, "TH0" },
    { 0x8A, "TL0" },           { 0x8D, "TH1" },           { 0x8B, "TL1" },           { 0xC8, "T2CON" },
    { 0xC9, "T2MOD" },         { 0xCD, "TH2" },           { 0xCC, "TL2" },           { 0xCB, "RCAP2H" },
    { 0xCA, "RCAP2L" },        { 0x8E, "AUXR" },          { 0xA2, "AUXR1" },         { 0xA8, "IE" },
    { 0xC0, "XICON" },         { 0xB7, "IPH" },           { 0xB8, "IP" },            { 0x87, "PCON" },
    { 0xE1, "WDT_CONTR" },     { 0x98, "SCON" },          { 0x99, "SBUF" },          { 0xA9, "SADDR" },
    { 0xB9, "SADEN" },
};
constexpr Register small_registers[] = {
    { 0xE0, "ACC" },           { 0xF0, "B" },             { 0x81, "SP" },            { 0x83, "DPH" },
    { 0x82, "DPL" },           { 0xD0, "PSW" },           { 0x90, "P1" },            { 0x91, "P1M0" },
    { 0x92, "P1M1" },          { 0xB0, "P3" },            { 0xB1, "P3M0" },          { 0xB2, "P3M1" },
    { 0xE2, "ISP_DATA" },      { 0xE3, "ISP_ADDRH" },     { 0xE4, "ISP_ADDRL" },     { 0xE5, "ISP_CMD" },
    { 0xE6, "ISP_TRIG" },      { 0xE7, "ISP_CONTR" },     { 0x88, "TCON" },          { 0x89, "TMOD" },
    { 0x8C, "TH0" },           { 0x8A, "TL0" },           { 0x8D, "TH1" },           { 0x8B, "TL1" },
    { 0x8E, "AUXR" },          { 0xA8, "IE" },            { 0xB7, "IPH" },           { 0xB8, "IP" },
    { 0x87, "PCON" },          { 0xC7, "IDLE_CLK" },      { 0xE1, "WDT_CONTR" },     { 0x98, "SCON" },
    { 0x99, "SBUF" },          { 0xA9, "SADDR" },         { 0xB9, "SADEN" },         { 0x84, "SPSTAT" },
    { 0x85, "SPCTL" },         { 0x86, "SPDAT" },         { 0xC5, "ADC_CONTR" },     { 0xC6, "ADC_DATA" },
    { 0xD8, "CCON" },          { 0xD9, "CMOD" },          { 0xF9, "CH" },            { 0xE9, "CL" },
    { 0xDA, "CCAPM0" },        { 0xFA, "CCAP0H" },        { 0xEA, "CCAP0L" },        { 0xF2, "PCA_PWM0" },
    { 0xDB, "CCAPM1" },        { 0xFB, "CCAP1H" },        { 0xEB, "CCAP1L" },        { 0xF3, "PCA_PWM1" },
};
constexpr Register usual_registers[] = {
    { 0xE0, "ACC" },           { 0xF0, "B" },             { 0x81, "SP" },            { 0x83, "DPH" },
    { 0x82, "DPL" },           { 0xD0, "PSW" },           { 0x80, "P0" },            { 0x90, "P1" },
    { 0xA0, "P2" },            { 0xB0, "P3" },            { 0x93, "P0M0" },          { 0x94, "P0M1" },
    { 0x91, "P1M0" },          { 0x92, "P1M1" },          { 0x95, "P2M0" },          { 0x96, "P2M1" },
    { 0xB1, "P3M0" },          { 0xB2, "P3M1" },          { 0xE2, "ISP_DATA" },      { 0xE3, "ISP_ADDRH" },
    { 0xE4, "ISP_ADDRL" },     { 0xE5, "ISP_CMD" },       { 0xE6, "ISP_TRIG" },      { 0xE7, "ISP_CONTR" },
    { 0x88, "TCON" },          { 0x89, "TMOD" },          { 0x8C, "TH0" },           { 0x8A, "TL0" },
    { 0x8D, "TH1" },           { 0x8B, "TL1" },           { 0x8E, "AUXR" },          { 0xA8, "IE" },
    { 0xB7, "IPH" },           { 0xB8, "IP" },            { 0x87, "PCON" },          { 0xC7, "CLK_DIV" },
    { 0xE1, "WDT_CONTR" },     { 0x98, "SCON" },          { 0x99, "SBUF" },          { 0xA9, "SADDR" },
    { 0xB9, "SADEN" },         { 0x84, "SPSTAT" },        { 0x85, "SPCTL" },         { 0x86, "SPDAT" },
    { 0xC5, "ADC_CONTR" },     { 0xC6, "ADC_DATA" },      { 0xBE, "ADC_LOW2" },      { 0xD8, "CCON" },
    { 0xD9, "CMOD" },          { 0xF9, "CH" },            { 0xE9, "CL" },            { 0xDA, "CCAPM0" },
    { 0xFA, "CCAP0H" },        { 0xEA, "CCAP0L" },        { 0xF2, "PCA_PWM0" },      { 0xDB, "CCAPM1" },
    { 0xFB, "CCAP1H" },        { 0xEB, "CCAP1L" },        { 0xF3, "PCA_PWM1" },      { 0xDC, "CCAPM2" },
    { 0xFC, "CCAP2H" },        { 0xEC, "CCAP2L" },        { 0xF4, "PCA_PWM2" },      { 0xDD, "CCAPM3" },
    { 0xFD, "CCAP3H" },        { 0xED, "CCAP3L" },        { 0xF5, "PCA_PWM3" },
};
// clang-format on

} // namespace

std::span<const Register> registers_of(int series)
{
    switch (series) {
    case 0:
    case 1:
        return {};
    case 2:
        return first_registers;
    case 3:
        return small_registers;
    default:
        return usual_registers;
    }
}

} // namespace vrk
