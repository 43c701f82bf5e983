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

bool aspen_matches(const Shell& shell)
{
    const std::string& target_name = shell.target.target_name;
    if (shell.target.identified && is_aspen_top(shell.connected))
        return is_aspen_top(shell.selected);
    return target_name.empty() || target_name == trimmed(shell.form.txtDevice.text());
}

bool sizes_agree(const Shell& shell)
{
    const auto connected = shell.target.identified ? size_digits(shell.connected) : std::nullopt;
    return connected.has_value() && connected == size_digits(shell.selected);
}

bool has_size_of_f(const Shell& shell)
{
    const auto size = shell.target.identified ? size_digits(shell.connected) : std::nullopt;
    return size.has_value() && *size >= least_size_of_f && *size <= most_size_of_f;
}

} // namespace

bool model_matches(const Shell& shell)
{
    const std::string& letter = shell.target.fw_letter;
    if (letter.size() != 1)
        return true;
    switch (letter[0]) {
    case 'A': return beside_record(shell.selected).block_bytes == 128;
    case 'B': return shell.selected.series == 1 && aspen_matches(shell);
    case 'E': return shell.selected.series == 4 && sizes_agree(shell);
    case 'F': return has_size_of_f(shell);
    default: break;
    }
    for (const LetterRule& rule : letter_rules) {
        if (rule.letter != letter[0])
            continue;
        const std::string id = reported_id(shell);
        const bool family = shell.selected.series == rule.series
            || (rule.letter == 'C' && series_is_rc_group(shell.selected.series));
        const bool same_id = shell.selected.mcu_id == id
            || (rule.id == IdRule::id_or_alt && shell.selected.alt_id == id);
        return family && same_id;
    }
    return true;
}

bool model_check(Shell& shell)
{
    if (model_matches(shell))
        return true;
    constexpr Text report = {"MCU Type is wrong. / MCU 型号错, 请重选",
        "MCU Type is incorrect. please select correct MCU type and open the file again."};
    constexpr Text box = {"Chinese:MCU 型号错。请重选 MCU、重新打开文件。",
        "MCU Type is incorrect. please select correct MCU type and open the file again."};
    beep(shell, 3);
    append_message(shell, report);
    shell.file_loaded = false;
    show_box(shell, in_language(shell, box));
    return false;
}

} // namespace vrk
