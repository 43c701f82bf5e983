#include "image/range_rules.h"

#include "catalog/attributes.h"

#include <algorithm>
#include <optional>

namespace vrk {

namespace {

constexpr std::int32_t no_data_flash_below = 100; // bytes of span; a model with less has no data flash to speak of
constexpr std::int32_t wide_boot_data_first = 0x8000; // data flash of the wide-boot models; below it lies a gap

using Image = std::span<const std::uint8_t>;

AddressRange inside(Image image, AddressRange range)
{
    return {std::max(range.first, 0),
        static_cast<std::int32_t>(std::min<std::int64_t>(range.last, static_cast<std::int64_t>(image.size()) - 1))};
}

// A verdict in the making.
struct Judgement {
    const RangeQuestion& asked;
    RangeVerdict verdict;

    // Looking downward from the end of the range. What is to be cleared counts as 0 already: a rule judges what the one
    // before it has left, and that one's findings must not be told twice.
    std::optional<std::int32_t> last_data_byte(AddressRange range) const
    {
        range = inside(asked.image, range);
        for (std::int32_t address = range.last; address >= range.first; --address) {
            if (asked.image[static_cast<std::size_t>(address)] != 0 && !is_to_clear(address))
                return address;
        }
        return std::nullopt;
    }
    bool holds_data(AddressRange range) const { return last_data_byte(range).has_value(); }
    void clear(AddressRange range)
    {
        if (range.first <= range.last)
            verdict.to_clear.push_back(range);
    }
    void report(RangeReport report)
    {
        if (!report.findings.empty())
            verdict.reports.push_back(std::move(report));
    }

private:
    bool is_to_clear(std::int32_t address) const
    {
        return std::any_of(verdict.to_clear.begin(), verdict.to_clear.end(),
            [address](const AddressRange& range) { return range.first <= address && address <= range.last; });
    }
};

// Of the older families: code is followed by data flash up to the boot loader.
bool has_data_below_boot_area(const McuRecord& model) { return model.series == 2 || series_is_rc_group(model.series); }

AddressRange gap_behind_code(const McuRecord& model) { return {model.ap_last + 1, model.eeprom_first - 1}; }

void cut_to_own_area(Judgement& judgement)
{
    const RangeQuestion& asked = judgement.asked;
    const McuRecord& model = asked.model;
    const std::int32_t last = asked.buffer == BufferKind::code ? model.ap_last : model.eeprom_last - model.eeprom_first;
    if (judgement.verdict.high <= last)
        return;
    judgement.verdict.high = last; // the bytes beyond stay: only `high` says that they are gone
    judgement.report({RangeRule::cut, {Finding::cut}, {}, false});
}

void cut_to_code_area(Judgement& judgement)
{
    const McuRecord& model = judgement.asked.model;
    if (judgement.verdict.high <= model.ap_last)
        return;
    judgement.verdict.high = model.ap_last;
    judgement.report({RangeRule::cut, {Finding::cut}, {}, true});
    judgement.clear(gap_behind_code(model));
}

void judge_flat_image(Judgement& judgement)
{
    const RangeQuestion& asked = judgement.asked;
    const McuRecord& model = asked.model;
    std::int32_t& high = judgement.verdict.high;
    const AddressRange gap = gap_behind_code(model);
    RangeReport report{RangeRule::flat, {}, gap, false};

    if (!is_iap_class(model) && judgement.holds_data(gap))
        report.findings.push_back(Finding::invalid_range);
    judgement.clear(gap);

    const bool data_memory = asked.file == FileKind::bin
        ? high > model.eeprom_first
        : judgement.holds_data({model.eeprom_first, model.eeprom_last});
    if (data_memory)
        report.findings.push_back(Finding::data_memory);

    if (high > model.eeprom_last) {
        report.findings.push_back(Finding::over_range);
        high = model.eeprom_last;
    }
    judgement.report(report);
}

struct Found {
    bool over_range = false;
    bool data_memory = false;
};

// The wide-boot models by addresses: where the file begins and ends against code area, gap and data flash. A HEX file
// may begin in the gap without a byte there, so that only a binary one is over range for it.
Found found_by_address(const RangeQuestion& asked)
{
    const auto in_gap = [&](std::int32_t address) {
        return address > asked.shown_ap_last && address < wide_boot_data_first;
    };
    const auto in_data = [](std::int32_t address) { return address >= wide_boot_data_first; };
    const bool crosses = asked.low <= asked.shown_ap_last && in_data(asked.high);
    const bool begins_in_gap = asked.file == FileKind::bin && in_gap(asked.low);
    return {begins_in_gap || in_gap(asked.high) || crosses, in_data(asked.low) || in_data(asked.high)};
}

Found judge_hex_below_boot_area(Judgement& judgement)
{
    const RangeQuestion& asked = judgement.asked;
    const McuRecord& model = asked.model;
    const bool has_data_flash = has_data_below_boot_area(model);
    std::int32_t& high = judgement.verdict.high;
    const AddressRange behind_code{asked.shown_ap_last + 1, model.isp_start - 1};
    const AddressRange wide_boot_gap{asked.shown_ap_last + 1, wide_boot_data_first - 1};
    Found found;

    if (high >= model.isp_start) {
        found.over_range = true;
        high = model.isp_start - 1;
    }
    if (is_wide_boot(model)) {
        const Found by_address = found_by_address(asked);
        found.over_range = found.over_range || by_address.over_range || judgement.holds_data(wide_boot_gap);
        found.data_memory = by_address.data_memory || judgement.holds_data({wide_boot_data_first, model.isp_start - 1});
        judgement.clear(wide_boot_gap);
        return found;
    }
    if (!model.ap_abuts_isp && high > asked.shown_ap_last) {
        found.data_memory = has_data_flash;
        found.over_range = found.over_range || !has_data_flash;
        high = has_data_flash ? high : asked.shown_ap_last;
    }
    if (has_data_flash) {
        found.data_memory = found.data_memory || judgement.holds_data(behind_code);
    } else if (!found.over_range) {
        if (const auto hit = judgement.last_data_byte(behind_code)) {
            found.over_range = true;
            judgement.clear({behind_code.first, *hit - 1}); // the byte that was hit stays, and all above it
        }
    }
    if (found.over_range)
        high = model.eeprom_last;
    return found;
}

Found judge_bin_below_boot_area(Judgement& judgement)
{
    const RangeQuestion& asked = judgement.asked;
    const McuRecord& model = asked.model;
    const bool has_data_flash = has_data_below_boot_area(model);
    std::int32_t& high = judgement.verdict.high;
    Found found;

    if (model.ap_abuts_isp || !has_data_flash) {
        if (high > asked.shown_ap_last) {
            found.over_range = true;
            high = asked.shown_ap_last;
        }
        if (!model.ap_abuts_isp)
            judgement.clear({asked.shown_ap_last + 1, model.isp_first - 1});
        return found;
    }
    if (is_wide_boot(model))
        found = found_by_address(asked);
    else
        found.data_memory = high > asked.shown_ap_last;
    if (high >= model.isp_start) {
        found.over_range = true;
        high = model.isp_start - 1;
    }
    if (is_wide_boot(model))
        judgement.clear({asked.shown_ap_last + 1, wide_boot_data_first - 1});
    return found;
}

void judge_below_boot_area(Judgement& judgement)
{
    const Found found = judgement.asked.file == FileKind::hex ? judge_hex_below_boot_area(judgement)
                                                              : judge_bin_below_boot_area(judgement);
    RangeReport report{RangeRule::boot_area, {}, {}, false};
    if (found.over_range)
        report.findings.push_back(Finding::over_range);
    if (found.data_memory)
        report.findings.push_back(Finding::data_memory);
    judgement.report(report);
    judgement.verdict.boot_area_rule = true;
}

} // namespace

RangeVerdict range_rules(const RangeQuestion& question)
{
    const McuRecord& model = question.model;
    Judgement judgement{question, {}};
    judgement.verdict.high = question.high;

    if (has_separate_eeprom(model) && !is_iap_class(model)) {
        cut_to_own_area(judgement);
        return judgement.verdict;
    }
    if (model.eeprom_last - model.eeprom_first < no_data_flash_below)
        cut_to_code_area(judgement);
    if (is_newer_series(model.series))
        judge_flat_image(judgement);
    else
        judge_below_boot_area(judgement);
    return judgement.verdict;
}

void clear_ranges(std::span<std::uint8_t> image, const std::vector<AddressRange>& ranges)
{
    for (const AddressRange& range : ranges) {
        const AddressRange held = inside(image, range);
        if (held.first <= held.last)
            std::fill(image.begin() + held.first, image.begin() + held.last + 1, std::uint8_t{0});
    }
}

} // namespace vrk
