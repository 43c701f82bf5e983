#include "recipe/prepare.h"

#include "recipe/number_words.h"

#include "catalog/attributes.h"
#include "catalog/isp_start.h"
#include "catalog/near_names.h"
#include "catalog/rows.h"
#include "image/load.h"
#include "image/load_messages.h"
#include "image/project_keys.h"
#include "image/project_read.h"
#include "image/range_messages.h"
#include "options/option_sheet.h"
#include "options/option_table.h"
#include "platform/text_number.h"

#include <algorithm>
#include <utility>

namespace vrk {

namespace {

// clang-format off
//                                   Chinese                                                English
constexpr Text project_has_it    = { "工程文件已包含型号、选项、EEPROM 数据和地址，请不要另外指定。",
                                     "A project tells model, options, EEPROM data and addresses itself: they can not be named beside it." };
constexpr Text model_wanted      = { "请指定型号。",                                           "A model is wanted." };
constexpr Text no_data_flash     = { "此型号没有数据 Flash: ",                                 "This model has no data flash: " };
constexpr Text next_wanted       = { "工程文件使用自动增量，请指定下一个值 (--number next=...)。",
                                     "The project has a serial number: tell which is next (--number next=...)." };
constexpr Text number_incomplete = { "编号需要地址、字节数和下一个值 (address, bytes, next)。",
                                     "A serial number needs its address, its bytes and its next value." };
constexpr Text one_number_each   = { "每个缓冲区只能有一个编号。",                             "There is one serial number a buffer at most." };
constexpr Text only_next         = { "工程文件的编号只能指定下一个值。",                       "Of a project's serial number only the next value can be told." };
constexpr Text no_number         = { "工程文件没有使用自动增量。",                             "The project has no serial number in use." };
constexpr Text exclude_each_other= { "这些选项不能同时选择: ",                                 "These options exclude each other: " };
constexpr Text no_code           = { "工程文件中没有程序代码。",                               "The project holds no code." };
constexpr Text continue_anyway   = { "要继续吗？",                                             "Go on all the same?" };
// clang-format on

constexpr std::string_view model_key = "MCU_Type";

using Checked = std::optional<Refusal>; // nothing: it is good

Refusal wrong_words(Line why) { return {std::nullopt, std::move(why)}; }

std::optional<McuRecord> record_of(const McuTable& catalogue, std::string_view name)
{
    const auto found = locate_mcu_by_name(catalogue, name);
    return found ? std::optional{read_mcu_row(catalogue, found->series, found->row)} : std::nullopt;
}

// ---- files

Result result_of(LoadEnd end)
{
    switch (end) {
    case LoadEnd::no_data:
        return Result::file_empty;
    case LoadEnd::unreadable:
        return Result::file_gone;
    default:
        return Result::file_refused;
    }
}

// The boxes of a load tell of wrong checksums, and a hand that presses them away has seen them. Here nobody has.
struct SeenBoxes final : Boxes {
    explicit SeenBoxes(Boxes& its_boxes)
        : boxes(its_boxes)
    {
    }
    void show_box(const Line& text, const Line& title) override
    {
        ++shown;
        boxes.show_box(text, title);
    }
    bool ask(const Line& question, const Line& title) override
    {
        shown = 0; // whatever is answered, they have been decided on
        return boxes.ask(question, title);
    }
    Boxes& boxes;
    int shown = 0;
};

Loaded load_once(
    const FileBuffer& buffer, ImageFile& file, const McuRecord& model, bool end_record_wanted, Boxes& boxes)
{
    // As four digits show it, which is how the rules have always been asked.
    const std::int32_t shown_ap_last = derive_isp_start(model).shown_last & 0xFFFF;
    constexpr bool nothing_open = false;
    return load_image(
        buffer, file, {model, shown_ap_last, nothing_open, end_record_wanted}, boxes, [] { return true; });
}

// A HEX file without its end record may be half a one: a linker is at work, or a disk was full. Who says so gets it.
Checked load_file(
    const std::string& path, std::string_view start, const McuRecord& model, FileBuffer& buffer, Boxes& boxes)
{
    buffer.start = signed_hex_number(start);
    buffer.clear_first = true;
    if (!start_address_fits(buffer.start, buffer.kind, model))
        return Refusal{Result::file_refused, start_refused(buffer.kind)};
    ImageFile file = open_image_file(path, buffer.data.size());
    if (const auto fault = fault_text(file)) {
        const Result result = file.fault == FileFault::not_found ? Result::file_gone : Result::file_refused;
        return Refusal{result, *fault + Line{" " + path}};
    }
    SeenBoxes checksums(boxes);
    Loaded loaded = load_once(buffer, file, model, true, checksums);
    if (loaded.end == LoadEnd::no_end_record && boxes.ask(Line{*end_text(loaded.end)} + "\n" + continue_anyway)) {
        file = open_image_file(path, buffer.data.size());
        loaded = load_once(buffer, file, model, false, checksums);
    }
    if (loaded.end != LoadEnd::done) {
        const Text* const why = end_text(loaded.end);
        return Refusal{result_of(loaded.end), why == nullptr ? Line{""} : Line{*why} + Line{" " + path}};
    }
    if (checksums.shown > 0 && !boxes.ask(continue_anyway))
        return Refusal{Result::file_refused, Line{""}};
    buffer = std::move(loaded.buffer);
    for (const RangeReport& report : loaded.reports)
        boxes.show_box(range_message(report, file.kind), range_title(report, file.kind));
    return std::nullopt;
}

// ---- numbers

AutoIncrease& number_of(Batch& batch, BufferKind kind)
{
    return kind == BufferKind::code ? batch.code_number : batch.data_number;
}

Checked put_in_use(Batch& batch, BufferKind kind)
{
    if (const auto fault = put_number_in_use(batch.model, number_of(batch, kind)))
        return Refusal{Result::number_refused, *fault};
    return std::nullopt;
}

Checked take_numbers(const Recipe& recipe, Batch& batch)
{
    for (const NumberWish& wish : recipe.numbers) {
        if (number_of(batch, wish.kind).valid)
            return wrong_words(one_number_each);
        if (!wish.address || !wish.bytes || !wish.next)
            return wrong_words(number_incomplete);
        AutoIncrease& number = number_of(batch, wish.kind);
        number.increment = 1;
        if (const auto fault = take_wish(wish, number))
            return Refusal{Result::number_refused, *fault};
        if (auto refused = put_in_use(batch, wish.kind))
            return refused;
    }
    return std::nullopt;
}

// ---- options

std::string words_of(const OptionWish& wish) { return wish.name + "=" + wish.choice; }

bool holds(const OptionSheet& sheet, const OptionWish& wish)
{
    const auto offered = sheet.offered();
    return std::ranges::any_of(offered, [&](const OfferedOption& one) {
        return upper_case(one.name) == upper_case(wish.name) && upper_case(one.chosen) == upper_case(wish.choice);
    });
}

// One that a later one has changed again was not meant so.
Checked take_options(const Recipe& recipe, OptionSheet& sheet)
{
    for (auto wish = recipe.options.begin(); wish != recipe.options.end(); ++wish) {
        if (const auto fault = sheet.choose(wish->name, wish->choice))
            return wrong_words(*fault);
        const auto lost = std::find_if(
            recipe.options.begin(), wish, [&](const OptionWish& earlier) { return !holds(sheet, earlier); });
        if (lost != wish)
            return wrong_words(Line{exclude_each_other} + Line{words_of(*lost) + ", " + words_of(*wish)});
    }
    return std::nullopt;
}

void keep_options(const OptionSheet& sheet, Batch& batch)
{
    batch.options = sheet.choices();
    batch.watchdog_pin = sheet.watchdog_pin();
    batch.rc_target_mhz = sheet.rc_target_mhz();
}

// ---- files with options beside them

Checked prepare_files(const Recipe& recipe, const McuTable& catalogue, Batch& batch, Boxes& boxes)
{
    if (recipe.model.empty())
        return wrong_words(model_wanted);
    const auto name = model_named(catalogue, recipe.model);
    const auto record = name ? record_of(catalogue, *name) : std::nullopt;
    if (!record)
        return wrong_words(unknown_model_text(catalogue, recipe.model));
    batch.model = *record;
    OptionSheet sheet(batch.model, recipe.english);
    if (auto refused = take_options(recipe, sheet))
        return refused;
    if (!recipe.eeprom.empty() && !has_eeprom_buffer(batch.model))
        return Refusal{Result::file_refused, Line{no_data_flash} + Line{batch.model.mcu_name}};
    if (auto refused = load_file(recipe.file, recipe.start, batch.model, batch.code, boxes))
        return refused;
    if (!recipe.eeprom.empty()) {
        if (auto refused = load_file(recipe.eeprom, recipe.eeprom_start, batch.model, batch.data, boxes))
            return refused;
    }
    keep_options(sheet, batch);
    return take_numbers(recipe, batch);
}

// ---- projects

Checked take_image(const ProjectImage& image, const Text& wrong_sum, FileBuffer& buffer, Boxes& boxes)
{
    if (image.found) {
        std::ranges::copy(image.bytes, buffer.data.begin());
        buffer.high = static_cast<std::int32_t>(image.bytes.size()) - 1;
        buffer.view_high = buffer.high;
        buffer.loaded = true;
    }
    if (!image.sum_is_right && !boxes.ask(Line{wrong_sum} + "\n" + continue_anyway))
        return Refusal{Result::project_refused, wrong_sum};
    return std::nullopt;
}

// The fields of a project's number by key, and the box that puts it in use.
struct NumberKeys {
    BufferKind kind;
    std::string_view enable;
    std::string_view address;
    std::string_view bytes;
    std::string_view next;
    std::string_view step;
    std::string_view systems[3]; // by AutoIncrease::System
};
// clang-format off
constexpr NumberKeys number_keys[] = {
    { BufferKind::code, "Auto_Increase_Enable", "Auto_Increase_Address", "Auto_Increase_Bytes", "Auto_Increase_Next",
      "Auto_Increase",  { "Auto_Increase_HEX", "Auto_Increase_BCD", "Auto_Increase_ASCII" } },
    { BufferKind::data, "Data_Increase_Enable", "Data_Increase_Address", "Data_Increase_Bytes", "Data_Increase_Next",
      "Data_Increase",  { "Data_Increase_HEX", "Data_Increase_BCD", "Data_Increase_ASCII" } },
};
// clang-format on

// Nothing: the project has no number of this kind in use.
std::optional<NumberWish> number_of_project(const std::vector<ProjectValue>& values, const NumberKeys& keys)
{
    NumberWish wish;
    wish.kind = keys.kind;
    bool in_use = false;
    for (const auto& [key, value] : values) {
        if (key == keys.enable)
            in_use = checked_by(value).value_or(in_use);
        else if (key == keys.address)
            wish.address = value;
        else if (key == keys.bytes)
            wish.bytes = value;
        else if (key == keys.next)
            wish.next = value;
        else if (key == keys.step)
            wish.step = value;
        for (std::int16_t system = 0; system < 3; ++system) {
            if (key == keys.systems[system] && checked_by(value).value_or(false))
                wish.system = std::string{system_word(system)};
        }
    }
    return in_use ? std::optional{wish} : std::nullopt;
}

// The number that stands in a project was next when it was saved. Who runs it twice would give it twice, so it has to
// be told, unless books are kept of the numbers.
Checked take_project_numbers(const Recipe& recipe, const std::vector<ProjectValue>& values, Batch& batch)
{
    for (const NumberKeys& keys : number_keys) {
        const auto told = std::ranges::find(recipe.numbers, keys.kind, &NumberWish::kind);
        const bool is_told = told != recipe.numbers.end();
        if (is_told && (told->address || told->bytes || told->step || told->system))
            return wrong_words(only_next);
        auto wish = number_of_project(values, keys);
        if (!wish && is_told)
            return wrong_words(no_number);
        if (!wish)
            continue;
        if (is_told && told->next)
            wish->next = told->next;
        else if (!recipe.numbers_are_kept)
            return Refusal{Result::number_refused, next_wanted};
        if (const auto fault = take_wish(*wish, number_of(batch, keys.kind)))
            return Refusal{Result::number_refused, *fault};
        if (auto refused = put_in_use(batch, keys.kind))
            return refused;
    }
    return std::nullopt;
}

Checked take_model(const Project& project, const McuTable& catalogue, Batch& batch, Boxes& boxes)
{
    if (project.version == Project::Version::old)
        boxes.show_box(project_text_of::old_version);
    if (project.version == Project::Version::refused)
        return Refusal{Result::project_refused, project_text_of::refused_version};
    const std::string* name = project.find(model_key);
    const auto record = name == nullptr ? std::nullopt : record_of(catalogue, trimmed(*name));
    if (!record)
        return Refusal{Result::project_refused, Line{project_text_of::no_model} + Line{name == nullptr ? "" : *name}};
    batch.model = *record;
    return std::nullopt;
}

Checked prepare_project(const Recipe& recipe, const McuTable& catalogue, Batch& batch, Boxes& boxes)
{
    const bool is_moved = signed_hex_number(recipe.start) != 0 || signed_hex_number(recipe.eeprom_start) != 0;
    if (!recipe.model.empty() || !recipe.eeprom.empty() || !recipe.options.empty() || is_moved)
        return wrong_words(project_has_it);
    const auto text = read_project_file(recipe.file);
    if (!text)
        return Refusal{Result::file_gone, Line{project_text_of::not_found} + Line{" " + recipe.file}};
    const Project project = parse_project(*text);
    if (auto refused = take_model(project, catalogue, batch, boxes))
        return refused;
    if (!project.code.found)
        return Refusal{Result::file_empty, no_code};
    OptionSheet sheet(batch.model, recipe.english);
    const auto values = values_in_use(project, option_page_of_series(batch.model.series).page);
    for (const auto& [key, value] : values)
        sheet.take_stored(key, value);
    keep_options(sheet, batch);
    if (auto refused = take_image(project.code, project_text_of::wrong_code_sum, batch.code, boxes))
        return refused;
    if (project.has_data) {
        if (auto refused = take_image(project.data, project_text_of::wrong_data_sum, batch.data, boxes))
            return refused;
    }
    return take_project_numbers(recipe, values, batch);
}

} // namespace

std::variant<Batch, Refusal> prepare(const Recipe& recipe, const McuTable& catalogue, Boxes& boxes)
{
    Batch batch;
    batch.english = recipe.english;
    batch.line = recipe.line;
    auto refused = names_project(recipe.file) ? prepare_project(recipe, catalogue, batch, boxes)
                                              : prepare_files(recipe, catalogue, batch, boxes);
    if (refused)
        return std::move(*refused);
    return batch;
}

} // namespace vrk
