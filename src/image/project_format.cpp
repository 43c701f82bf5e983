#include "image/project_format.h"

#include "image/file_buffer.h"
#include "image/hex_digits.h"
#include "platform/text_number.h"

#include <algorithm>
#include <numeric>

namespace vrk {

namespace {

constexpr std::string_view line_end = "\r\n";
constexpr std::string_view version_key = "VER";
constexpr std::string_view this_version = "1.2";
constexpr double oldest_readable = 1.2;
constexpr std::string_view code_sum_key = "buffer_check_sum";
constexpr std::string_view data_sum_key = "data_buffer_check_sum";
constexpr std::string_view end_of_values = "END";
constexpr std::string_view data_begin = "Data_File_Begin:";
constexpr std::string_view data_end = "Data_File_End";
constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF"; // some editors put it in front of UTF-8

constexpr std::size_t longest_line = 8192; // of a value: twice the longest path
constexpr std::size_t most_values = 1000; // a project has 60 or so
constexpr std::size_t code_size = std::size_t{FileBuffer::code_last} + 1;
constexpr std::size_t data_size = std::size_t{FileBuffer::data_last} + 1;

// The first line of a text; it and its end (CR LF, LF or CR) are taken off the front.
std::string_view take_line(std::string_view& rest)
{
    std::size_t end = 0;
    while (end < rest.size() && rest[end] != '\n' && rest[end] != '\r')
        ++end;
    const std::string_view line = rest.substr(0, end);
    if (end + 1 < rest.size() && rest[end] == '\r' && rest[end + 1] == '\n')
        ++end;
    rest.remove_prefix(std::min(end + 1, rest.size()));
    return line;
}

// ---- writing

// A file name may hold a line end, a line of the project may not.
std::string on_one_line(std::string text)
{
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c == '\r' || c == '\n'; }, ' ');
    return text;
}

void add_line(std::string& text, std::string_view line) { text.append(line).append(line_end); }

void add_value(std::string& text, std::string_view key, std::string_view value)
{
    text.append(key).append(": ").append(value).append(line_end);
}

std::uint32_t sum_of(std::span<const std::uint8_t> image)
{
    return std::accumulate(image.begin(), image.end(), std::uint32_t{0});
}

void add_image(std::string& text, std::span<const std::uint8_t> image)
{
    constexpr std::string_view digits = "0123456789ABCDEF";
    for (const std::uint8_t byte : image) {
        text += digits[byte >> 4];
        text += digits[byte & 0xF];
    }
    text += line_end;
}

// ---- reading

bool ends_values(std::string_view line)
{
    const std::string_view word = trimmed(line);
    return word.size() == end_of_values.size() && upper_case(word) == end_of_values;
}

void read_value(Project& project, std::string_view line)
{
    const std::size_t colon = line.find(':');
    if (colon == std::string_view::npos || line.size() > longest_line || project.values.size() >= most_values)
        return;
    project.values.push_back(
        {std::string{trimmed(line.substr(0, colon))}, std::string{trimmed(line.substr(colon + 1))}});
}

Project::Version version_of(const Project& project)
{
    if (project.values.empty() || project.values.front().key != version_key)
        return Project::Version::old;
    const bool readable = number_in(project.values.front().value) >= oldest_readable;
    return readable ? Project::Version::good : Project::Version::refused;
}

// To the letter: a sum with anything else in it is not one that was written.
bool is_sum(std::string_view text, std::uint32_t sum) { return text == std::to_string(sum); }

ProjectImage read_image(std::string_view line, std::string_view stored_sum, std::size_t buffer_size)
{
    ProjectImage image;
    image.found = !line.empty();
    const std::size_t size = std::min((line.size() + 1) / 2, buffer_size);
    image.bytes.reserve(size);
    for (std::size_t i = 0; i < size; ++i) {
        const bool single = i * 2 + 1 == line.size();
        image.bytes.push_back(single ? pair_value('0', line[i * 2]) : pair_value(line[i * 2], line[i * 2 + 1]));
    }
    const bool whole = line.size() <= buffer_size * 2;
    const bool clean = whole && std::ranges::all_of(line, [](char c) { return digit_value(c) >= 0; });
    image.sum_is_right = image.found && clean && is_sum(stored_sum, sum_of(image.bytes));
    return image;
}

std::string_view value_in_line(std::string_view line)
{
    const std::size_t colon = line.find(':');
    return colon == std::string_view::npos ? std::string_view{} : trimmed(line.substr(colon + 1));
}

} // namespace

std::string project_text(const ProjectContent& content)
{
    std::string text;
    text.reserve((content.code.size() + (content.data ? content.data->size() : 0)) * 2 + longest_line);
    add_value(text, version_key, this_version);
    for (const ProjectValue& value : content.values)
        add_value(text, value.key, on_one_line(value.value));
    add_value(text, code_sum_key, std::to_string(sum_of(content.code)));
    add_line(text, end_of_values);
    add_image(text, content.code);
    if (content.data) {
        add_line(text, data_begin);
        add_value(text, data_sum_key, std::to_string(sum_of(*content.data)));
        add_image(text, *content.data);
        add_line(text, data_end);
    }
    return text;
}

const std::string* Project::find(std::string_view key) const
{
    const auto found = std::ranges::find(values, key, &ProjectValue::key);
    return found == values.end() ? nullptr : &found->value;
}

Project parse_project(std::string_view text)
{
    Project project;
    if (text.starts_with(byte_order_mark))
        text.remove_prefix(byte_order_mark.size());
    bool ended = false;
    while (!ended && !text.empty()) {
        const std::string_view line = take_line(text);
        ended = ends_values(line);
        if (!ended)
            read_value(project, line);
    }
    project.version = version_of(project);

    const std::string* code_sum = project.find(code_sum_key);
    project.code = read_image(take_line(text), code_sum == nullptr ? "" : *code_sum, code_size);
    project.has_data = project.version != Project::Version::old && !trimmed(text).empty();
    if (project.has_data) {
        take_line(text); // says only that the data begin
        const std::string_view data_sum = value_in_line(take_line(text));
        project.data = read_image(take_line(text), data_sum, data_size);
    }
    return project;
}

} // namespace vrk
