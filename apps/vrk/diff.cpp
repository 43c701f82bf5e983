// vrk diff: two images byte by byte, or two projects value by value and then byte by byte.
#include "vrk/json_line.h"
#include "vrk/subcommands.h"
#include "vrk/talk_options.h"

#include "image/hex_loader.h"
#include "image/image_file.h"
#include "image/load_messages.h"
#include "image/project_format.h"
#include "image/project_read.h"
#include "image/range_rules.h"
#include "platform/text_number.h"
#include "session/result.h"

#include <algorithm>
#include <iostream>
#include <map>
#include <memory>
#include <optional>
#include <set>

namespace vrk {

namespace {

struct DiffOptions {
    std::string one;
    std::string other;
    TalkOptions talk;
};

using Bytes16 = std::vector<std::int16_t>; // by address; -1: nothing stands there

struct Contents {
    std::vector<ProjectValue> values; // of a project
    Bytes16 code;
    Bytes16 data;
};

Bytes16 bytes_of(const std::vector<std::uint8_t>& bytes) { return {bytes.begin(), bytes.end()}; }

Bytes16 bytes_of(ImageFile& file)
{
    Bytes16 bytes;
    if (file.kind == FileKind::bin) {
        for (const char c : file.contents)
            bytes.push_back(static_cast<std::uint8_t>(c));
        return bytes;
    }
    HexLines lines{file.text};
    while (const auto line = lines.next()) {
        if (!line->starts_with(':'))
            continue;
        const HexRecord record = parse_hex_line(*line);
        if (record.type == HexRecord::end_of_file)
            break;
        const std::size_t end = std::size_t{record.address} + record.data().size();
        bytes.resize(std::max(bytes.size(), end), -1);
        std::ranges::copy(record.data(), bytes.begin() + record.address);
    }
    return bytes;
}

// Nothing: it cannot be read, which has been said.
std::optional<Contents> contents_of(const std::string& path, bool english)
{
    if (names_project(path)) {
        if (const auto text = read_project_file(path)) {
            const Project project = parse_project(*text);
            return Contents{project.values, bytes_of(project.code.bytes), bytes_of(project.data.bytes)};
        }
        std::cerr << "vrk: " << path << ": " << in_language(english, project_text_of::not_found) << std::endl;
        return std::nullopt;
    }
    ImageFile file = open_image_file(path, std::size_t{ImageFile::most_bytes});
    if (const auto fault = fault_text(file)) {
        std::cerr << "vrk: " << path << ": " << fault->in(english) << std::endl;
        return std::nullopt;
    }
    return Contents{{}, bytes_of(file), {}};
}

std::string byte_text(const Bytes16& bytes, std::size_t address)
{
    const std::int16_t byte = address < bytes.size() ? bytes[address] : std::int16_t{-1};
    return byte < 0 ? std::string{"--"} : hex_text(byte, 2);
}

// True: they are the same.
bool compare_bytes(const char* which, const Bytes16& one, const Bytes16& other, bool json)
{
    bool same = true;
    const std::size_t size = std::max(one.size(), other.size());
    for (std::size_t first = 0; first < size;) {
        if (byte_text(one, first) == byte_text(other, first)) {
            ++first;
            continue;
        }
        std::size_t end = first;
        while (end < size && byte_text(one, end) != byte_text(other, end))
            ++end;
        same = false;
        if (json)
            write_json_line(std::cout,
                {{"differs", which}, {"first", first}, {"last", end - 1}, {"one", byte_text(one, first)},
                    {"other", byte_text(other, first)}});
        else
            std::cout << which << "\t" << hex_text(static_cast<std::int64_t>(first), 4) << "-"
                      << hex_text(static_cast<std::int64_t>(end) - 1, 4) << "\t" << byte_text(one, first) << "\t"
                      << byte_text(other, first) << "\n";
        first = end;
    }
    return same;
}

bool compare_values(const Contents& one, const Contents& other, bool json)
{
    std::map<std::string, std::string> first;
    std::map<std::string, std::string> second;
    std::set<std::string> keys;
    for (const auto& [key, value] : one.values)
        keys.insert(first.emplace(key, value).first->first);
    for (const auto& [key, value] : other.values)
        keys.insert(second.emplace(key, value).first->first);
    bool same = true;
    for (const std::string& key : keys) {
        if (first.contains(key) == second.contains(key) && first[key] == second[key])
            continue;
        same = false;
        if (json)
            write_json_line(
                std::cout, {{"differs", "value"}, {"key", key}, {"one", first[key]}, {"other", second[key]}});
        else
            std::cout << key << "\t" << first[key] << "\t" << second[key] << "\n";
    }
    return same;
}

int diff(const DiffOptions& options)
{
    const bool english = speaks_english(options.talk);
    if (names_project(options.one) != names_project(options.other))
        return refuse_words("two images or two projects are wanted");
    const auto one = contents_of(options.one, english);
    const auto other = contents_of(options.other, english);
    if (!one || !other)
        return class_of(Result::file_gone).exit_code;
    const bool json = options.talk.json;
    const bool values = compare_values(*one, *other, json);
    const bool code = compare_bytes("code", one->code, other->code, json);
    const bool data = compare_bytes("eeprom", one->data, other->data, json);
    std::cout.flush();
    return values && code && data && std::cout ? status_good : status_different;
}

} // namespace

Action describe_diff(CLI::App& app)
{
    const auto options = std::make_shared<DiffOptions>();
    app.add_option("A", options->one, "an image (.hex, .bin) or a project (.vrk)")->required();
    app.add_option("B", options->other, "another one of its kind")->required();
    describe_manner(app, options->talk);
    return [options] { return diff(*options); };
}

} // namespace vrk
