#include "books/chip_record.h"

#include "platform/text_number.h"

namespace vrk {

namespace {

std::string csv_field(const std::string& text)
{
    if (text.find_first_of(",\"\r\n") == std::string::npos)
        return text;
    std::string quoted = "\"";
    for (const char c : text)
        quoted += c == '"' ? std::string{"\"\""} : std::string{c};
    return quoted + "\"";
}

} // namespace

std::string csv_head()
{
    std::string line;
    for (const RecordField& field : record_fields)
        line += (line.empty() ? "" : ",") + std::string{field.name};
    return line;
}

std::string csv_line(const ChipRecord& record)
{
    std::string line;
    for (const RecordField& field : record_fields)
        line += (&field == record_fields.data() ? "" : ",") + csv_field(record.*field.text);
    return line;
}

std::string json_text(const std::string& text)
{
    std::string quoted = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\')
            quoted += '\\';
        if (static_cast<unsigned char>(c) < ' ')
            quoted += "\\u" + hex_text(c, 4);
        else
            quoted += c;
    }
    return quoted + "\"";
}

std::string json_line(const ChipRecord& record)
{
    std::string line;
    for (const RecordField& field : record_fields) {
        const std::string& text = record.*field.text;
        if (text.empty())
            continue;
        line += (line.empty() ? "" : ",") + json_text(field.name) + ":" + (field.is_number ? text : json_text(text));
    }
    return "{" + line + "}";
}

} // namespace vrk
