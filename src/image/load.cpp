#include "image/load.h"

#include "catalog/attributes.h"
#include "image/bin_loader.h"
#include "platform/text_number.h"

#include <algorithm>

namespace vrk {

namespace {

constexpr std::int32_t no_low_yet = 0x10FFFF; // above every address, so that the first load lowers it

// clang-format off
//                                    Chinese                                                English
constexpr Text code_start_refused = { "缓冲区起始地址超出有效空间。",                            "Start Buffer Address exceeded the valid scope. \n" };
constexpr Text data_start_refused = { "Start Buffer Address exceeded the valid scope. \n"
                                      "        缓冲区起始地址超出有效空间。",                    "Start Buffer Address exceeded the valid scope. \n" };
// clang-format on

void forget_earlier_loads(FileBuffer& buffer)
{
    fill_buffer(0, buffer);
    buffer.view_low = no_low_yet;
    buffer.view_high = 0;
}

// Looked for before anything is told of the file: the last record of half a file is seldom a good one.
HexContents look_ahead(ImageFile& file)
{
    const std::streampos first_line = file.text.tellg();
    HexLines lines{file.text};
    const HexContents contents = look_through(lines);
    file.text.clear();
    file.text.seekg(first_line);
    return contents;
}

LoadEnd read_hex(
    FileBuffer& buffer, ImageFile& file, const LoadTerms& terms, Boxes& boxes, const StillWanted& still_wanted)
{
    if (terms.end_record_wanted) {
        const HexContents contents = look_ahead(file);
        if (!contents.end_record)
            return contents.data ? LoadEnd::no_end_record : LoadEnd::no_data;
    }
    const std::int32_t limit = std::min(terms.model.isp_last, FileBuffer::code_last) + 1;
    HexLines lines{file.text};
    const HexTarget target{buffer.data, buffer.low, limit};
    const HexFigures figures = parse_hex(lines, file.path, target, boxes, still_wanted);
    buffer.high = figures.high;
    buffer.checksum = static_cast<std::int32_t>(figures.checksum);
    return figures.end;
}

LoadEnd read_bin(FileBuffer& buffer, const ImageFile& file)
{
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(file.contents.data());
    const BinFigures figures = store_bin({bytes, file.contents.size()}, buffer.low, buffer.data);
    buffer.high = figures.high;
    buffer.checksum = static_cast<std::int32_t>(figures.checksum);
    return LoadEnd::done;
}

std::string shown_checksum(const FileBuffer& buffer, FileKind file, const McuRecord& model)
{
    const std::string text = checksum_text(buffer.checksum);
    // The box of an EEPROM file of its own is shorter.
    const bool is_short = buffer.kind == BufferKind::data && file == FileKind::hex && has_separate_eeprom(model);
    return is_short ? text.substr(0, text.find('H') + 1) : text;
}

} // namespace

std::int32_t load_base(std::int32_t start) { return start < 0 ? start + 0x10000 : start; }

bool start_address_fits(std::int32_t start, BufferKind kind, const McuRecord& model)
{
    return start <= (kind == BufferKind::code ? model.eeprom_last : model.eeprom_last - model.eeprom_first);
}

const Text& start_refused(BufferKind kind)
{
    return kind == BufferKind::code ? code_start_refused : data_start_refused;
}

bool load_adds(const FileBuffer& buffer, bool file_open) { return file_open && !buffer.clear_first; }

Loaded load_image(
    FileBuffer buffer, ImageFile& file, const LoadTerms& terms, Boxes& boxes, const StillWanted& still_wanted)
{
    Loaded result{LoadEnd::done, std::move(buffer), {}, {}, false};
    FileBuffer& image = result.buffer;
    if (!load_adds(image, terms.file_open))
        forget_earlier_loads(image);

    image.low = load_base(image.start);
    result.end = file.kind == FileKind::hex ? read_hex(image, file, terms, boxes, still_wanted) : read_bin(image, file);
    if (result.end == LoadEnd::done && file_stamp(file.path) != file.stamp)
        result.end = LoadEnd::changed; // half of it may be the old one's
    if (result.end != LoadEnd::done)
        return result;

    RangeVerdict verdict =
        range_rules({terms.model, terms.shown_ap_last, file.kind, image.kind, image.data, image.low, image.high});
    image.high = verdict.high;
    clear_ranges(image.data, verdict.to_clear);
    image.view_low = std::min(image.view_low, image.low);
    image.view_high = std::max(image.view_high, image.high);
    image.loaded = true;
    result.reports = std::move(verdict.reports);
    result.checksum = shown_checksum(image, file.kind, terms.model);
    result.checksum_beside_code = verdict.boot_area_rule;
    return result;
}

std::string checksum_text(std::int32_t checksum) { return hex_text(checksum, 7) + "H       "; }

} // namespace vrk
