// What is written down of one chip, and how it leaves the house: as a line of CSV or of JSON. All fields are texts;
// one table names them, and whoever stores, shows or exports a record goes by it.
#pragma once

#include <array>
#include <string>

namespace vrk {

struct ChipRecord {
    std::string chip; // the record's own key, in no other record of any books
    std::string at; // local time of its end, "2025-03-09 17:04:59": sorts as time goes
    std::string who; // the user of the system; the books know him
    std::string station;
    std::string port;
    std::string job; // the project's or the code file's path
    std::string code_sha256; // of the image without the serial numbers in it, see image_sha256
    std::string data_sha256; // empty: no EEPROM image
    std::string model;
    std::string firmware;
    std::string factory_number; // empty where the chip tells none
    std::string clock_hz; // as the tool has measured it
    std::string baud;
    std::string options_written; // hexadecimal, blanks between
    std::string options_read; // the rows that the chip told before it was erased
    std::string order; // that the numbers were drawn for
    std::string number; // in the code; empty: none
    std::string data_number; // in the EEPROM image
    std::string result; // word of its Result
    std::string last_line; // of the report
    std::string stages; // "calling 0.512 writing 7.730": seconds
};

struct RecordField {
    const char* name; // of the column, in every store and export
    std::string ChipRecord::*text;
    bool is_number; // to a reader of JSON
};

// clang-format off
inline constexpr std::array<RecordField, 21> record_fields = {{
//    name               text                            number
    { "chip",            &ChipRecord::chip,              false },
    { "at",              &ChipRecord::at,                false },
    { "who",             &ChipRecord::who,               false },
    { "station",         &ChipRecord::station,           false },
    { "port",            &ChipRecord::port,              false },
    { "job",             &ChipRecord::job,               false },
    { "code_sha256",     &ChipRecord::code_sha256,       false },
    { "data_sha256",     &ChipRecord::data_sha256,       false },
    { "model",           &ChipRecord::model,             false },
    { "firmware",        &ChipRecord::firmware,          false },
    { "factory_number",  &ChipRecord::factory_number,    false },
    { "clock_hz",        &ChipRecord::clock_hz,          true  },
    { "baud",            &ChipRecord::baud,              true  },
    { "options_written", &ChipRecord::options_written,   false },
    { "options_read",    &ChipRecord::options_read,      false },
    { "number_order",    &ChipRecord::order,             false },
    { "number",          &ChipRecord::number,            false },
    { "data_number",     &ChipRecord::data_number,       false },
    { "result",          &ChipRecord::result,            false },
    { "last_line",       &ChipRecord::last_line,         false },
    { "stages",          &ChipRecord::stages,            false },
}};
// clang-format on

// Without a line end. A field with a comma, a quote or a line end in it stands in quotes, as RFC 4180 has it.
std::string csv_head();
std::string csv_line(const ChipRecord& record);

// One object; empty fields are left out.
std::string json_line(const ChipRecord& record);

// A text between quotes as JSON writes it.
std::string json_text(const std::string& text);

} // namespace vrk
