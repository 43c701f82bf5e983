// vrk info: what a file of code or data holds, and what a model would take of it.
#include "vrk/image_sum.h"
#include "vrk/json_line.h"
#include "vrk/subcommands.h"
#include "vrk/talk_options.h"

#include "catalog/ranges.h"
#include "image/hex_survey.h"
#include "image/load_messages.h"
#include "platform/text_number.h"
#include "recipe/prepare.h"

#include <iostream>
#include <memory>

namespace vrk {

namespace {

struct InfoOptions {
    std::string file;
    std::string model;
    TalkOptions talk;
};

// What the rules of a model say of a load is collected.
struct Collected final : Boxes {
    explicit Collected(bool its_english)
        : english(its_english)
    {
    }
    void show_box(const Line& text, const Line& /*title*/) override { said.push_back(text.in(english)); }
    bool ask(const Line& question, const Line& /*title*/) override
    {
        said.push_back(question.in(english));
        return true; // nothing is at stake, and the rest of the file is to be told too
    }
    const bool english;
    std::vector<std::string> said;
};

Json range_json(const AddressRange& range) { return {{"first", range.first}, {"last", range.last}}; }

std::string range_text(const AddressRange& range)
{
    return hex_text(range.first, 4) + "-" + hex_text(range.last, 4) + " (" +
        std::to_string(range.last - range.first + 1) + " bytes)";
}

std::vector<AddressRange> gaps_between(const std::vector<AddressRange>& ranges)
{
    std::vector<AddressRange> gaps;
    for (std::size_t i = 1; i < ranges.size(); ++i)
        gaps.push_back({ranges[i - 1].last + 1, ranges[i].first - 1});
    return gaps;
}

Json list_of(const std::vector<AddressRange>& ranges)
{
    Json list = Json::array();
    for (const AddressRange& range : ranges)
        list.push_back(range_json(range));
    return list;
}

void print_ranges(const char* word, const std::vector<AddressRange>& ranges)
{
    for (const AddressRange& range : ranges)
        std::cout << word << "\t" << range_text(range) << "\n";
}

HexSurvey survey_of_binary(const ImageFile& file)
{
    HexSurvey found;
    if (!file.contents.empty())
        found.ranges = {{0, static_cast<std::int32_t>(file.contents.size()) - 1}};
    for (const char c : file.contents)
        found.sum += static_cast<std::uint8_t>(c);
    return found;
}

Json survey_json(const HexSurvey& found, const ImageFile& file)
{
    return {{"file", file.path}, {"kind", file.kind == FileKind::hex ? "hex" : "bin"}, {"size", file.size},
        {"data_records", found.data_records}, {"other_records", found.other_records},
        {"wrong_checksums", found.wrong_checksums}, {"end_record", found.end_record}, {"ranges", list_of(found.ranges)},
        {"gaps", list_of(gaps_between(found.ranges))}, {"overlaps", list_of(found.overlaps)},
        {"sum", hex_text(found.sum)}};
}

void print_survey(const HexSurvey& found, const ImageFile& file)
{
    const bool hex = file.kind == FileKind::hex;
    std::cout << "file\t" << file.path << " (" << file.size << " bytes, " << (hex ? "HEX" : "binary") << ")\n";
    if (hex) {
        std::cout << "records\t" << found.data_records << " of data, end record "
                  << (found.end_record ? "found" : "MISSING") << "\n";
        if (found.other_records > 0)
            std::cout << "records\t" << found.other_records << " of other types, WHICH ARE STORED AS DATA\n";
        if (found.wrong_checksums > 0)
            std::cout << "wrong checksums\t" << found.wrong_checksums << ", the first in line "
                      << found.first_wrong_line << "\n";
    }
    print_ranges("range", found.ranges);
    print_ranges("gap", gaps_between(found.ranges));
    print_ranges("OVERLAP", found.overlaps);
    std::cout << "sum\t" << hex_text(found.sum) << "\n";
}

// As a download would take it.
int tell_model(const InfoOptions& options, bool english)
{
    static McuTable catalogue;
    load_mcu_tables(catalogue, false);
    Recipe recipe;
    recipe.file = options.file;
    recipe.model = options.model;
    recipe.english = english;
    Collected boxes(english);
    auto prepared = prepare(recipe, catalogue, boxes);
    const Refusal* refused = std::get_if<Refusal>(&prepared);
    if (refused != nullptr && !refused->result)
        return refuse_words(refused->why.in(english));
    const Batch* batch = std::get_if<Batch>(&prepared);
    const Result result = refused != nullptr ? *refused->result : Result::good;
    if (refused != nullptr && !refused->why.in(english).empty())
        boxes.said.push_back(refused->why.in(english));
    const std::string sha256 = batch == nullptr ? std::string{} : sums_of(*batch).code;
    if (options.talk.json) {
        write_json_line(std::cout,
            {{"model", options.model}, {"result", word_of(result)}, {"said", boxes.said},
                {"last_address", batch == nullptr ? Json{} : Json(batch->code.high)},
                {"sha256", batch == nullptr ? Json{} : Json(sha256)}});
    } else {
        for (const std::string& text : boxes.said)
            std::cout << options.model << "\t" << text << "\n";
        if (batch != nullptr)
            std::cout << "image\tto " << hex_text(batch->code.high, 4) << "\nsha256\t" << sha256 << "\n";
    }
    return class_of(result).exit_code;
}

int info(const InfoOptions& options)
{
    const bool english = speaks_english(options.talk);
    ImageFile file = open_image_file(options.file, FileBuffer{BufferKind::code}.data.size());
    if (const auto fault = fault_text(file)) {
        std::cerr << "vrk: " << options.file << ": " << fault->in(english) << std::endl;
        return class_of(file.fault == FileFault::not_found ? Result::file_gone : Result::file_refused).exit_code;
    }
    HexSurvey found;
    if (file.kind == FileKind::hex) {
        HexLines lines{file.text};
        found = survey(lines);
    } else {
        found = survey_of_binary(file);
    }
    if (options.talk.json)
        write_json_line(std::cout, survey_json(found, file));
    else
        print_survey(found, file);
    const int status = options.model.empty() ? status_good : tell_model(options, english);
    std::cout.flush();
    return std::cout ? status : status_different;
}

} // namespace

Action describe_info(CLI::App& app)
{
    const auto options = std::make_shared<InfoOptions>();
    app.add_option("FILE", options->file, "a file of code or data (.hex, .bin)")->required();
    app.add_option("--model", options->model, "tells what a download to this model would cut or refuse")
        ->type_name("MODEL");
    describe_manner(app, options->talk);
    return [options] { return info(*options); };
}

} // namespace vrk
