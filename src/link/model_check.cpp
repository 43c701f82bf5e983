#include "link/model_check.h"

#include "link/port.h"

#include "catalog/attributes.h"
#include "catalog/rows.h"
#include "form/messages.h"
#include "platform/text_number.h"

namespace vrk {

namespace {

enum class IdRule { id, id_or_alt };

struct LetterRule {
    char letter;
    int series;
    IdRule id;
};

// clang-format off
constexpr LetterRule letter_rules[] = {
//   letter series  id test
    { 'C',  2,  IdRule::id },
    { 'D',  3,  IdRule::id },
    { 'G',  5,  IdRule::id },
    { 'H',  6,  IdRule::id },
    { 'I',  7,  IdRule::id },
    { 'J',  8,  IdRule::id_or_alt },
    { 'K',  9,  IdRule::id },
    { 'L', 10,  IdRule::id },
    { 'M', 11,  IdRule::id },
    { 'N', 12,  IdRule::id },
    { 'O', 13,  IdRule::id },
    { 'Q', 15,  IdRule::id_or_alt },
    { 'R', 16,  IdRule::id_or_alt },
    { 'S', 17,  IdRule::id_or_alt },
    { 'Z', 18,  IdRule::id },
};
// clang-format on

constexpr int least_size_of_f = 16; // KB: letter F serves the large models of two families
constexpr int most_size_of_f = 30;

bool aspen_matches(const MainForm& form)
{
    const std::string& target_name = form.target.target_name;
    if (form.target.identified && is_aspen_top(form.connected))
        return is_aspen_top(form.selected);
    return target_name.empty() || target_name == trimmed(form.txtDevice.text());
}

bool sizes_agree(const MainForm& form)
{
    const auto connected = form.target.identified ? size_digits(form.connected) : std::nullopt;
    return connected.has_value() && connected == size_digits(form.selected);
}

bool has_size_of_f(const MainForm& form)
{
    const auto size = form.target.identified ? size_digits(form.connected) : std::nullopt;
    return size.has_value() && *size >= least_size_of_f && *size <= most_size_of_f;
}

} // namespace

bool model_matches(const MainForm& form)
{
    const std::string& letter = form.target.fw_letter;
    if (letter.size() != 1)
        return true;
    switch (letter[0]) {
    case 'A': return beside_record(form.selected).block_bytes == 128;
    case 'B': return form.selected.series == 1 && aspen_matches(form);
    case 'E': return form.selected.series == 4 && sizes_agree(form);
    case 'F': return has_size_of_f(form);
    default: break;
    }
    for (const LetterRule& rule : letter_rules) {
        if (rule.letter != letter[0])
            continue;
        const std::string id = reported_id(form);
        const bool family = form.selected.series == rule.series
            || (rule.letter == 'C' && series_is_rc_group(form.selected.series));
        const bool same_id = form.selected.mcu_id == id
            || (rule.id == IdRule::id_or_alt && form.selected.alt_id == id);
        return family && same_id;
    }
    return true;
}

bool model_check(MainForm& form)
{
    if (model_matches(form))
        return true;
    constexpr Text report = {"MCU Type is wrong. / MCU 型号错, 请重选",
        "MCU Type is incorrect. please select correct MCU type and open the file again."};
    constexpr Text box = {"Chinese:MCU 型号错。请重选 MCU、重新打开文件。",
        "MCU Type is incorrect. please select correct MCU type and open the file again."};
    beep(form, 3);
    append_message(form, report);
    form.file_loaded = false;
    show_box(form, in_language(form, box));
    return false;
}

} // namespace vrk
