#include "link/model_check.h"

#include "catalog/attributes.h"

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

constexpr Text wrong_model = {"MCU Type is wrong. / MCU 型号错, 请重选",
    "MCU Type is incorrect. please select correct MCU type and open the file again.", Tone::bad};
constexpr Text wrong_model_box = {"Chinese:MCU 型号错。请重选 MCU、重新打开文件。",
    "MCU Type is incorrect. please select correct MCU type and open the file again."};

bool aspen_matches(const Session& session, const Job& job)
{
    const std::string& target_name = session.chip.target_name;
    if (session.identified && is_aspen_top(session.connected))
        return is_aspen_top(job.model);
    return target_name.empty() || target_name == job.model_name;
}

// Of the connected chip.
std::optional<int> connected_size(const Session& session)
{
    return session.identified ? size_digits(session.connected) : std::nullopt;
}

bool sizes_agree(const Session& session, const Job& job)
{
    const auto size = connected_size(session);
    return size.has_value() && size == size_digits(job.model);
}

bool has_size_of_f(const Session& session)
{
    const auto size = connected_size(session);
    return size.has_value() && *size >= least_size_of_f && *size <= most_size_of_f;
}

} // namespace

bool model_matches(const Session& session, const Job& job)
{
    const std::string& letter = session.chip.fw_letter;
    if (letter.size() != 1)
        return true;
    switch (letter[0]) {
    case 'A':
        return block_bytes(job.model) == 128;
    case 'B':
        return job.model.series == 1 && aspen_matches(session, job);
    case 'E':
        return job.model.series == 4 && sizes_agree(session, job);
    case 'F':
        return has_size_of_f(session) && session.connected.series == job.model.series;
    default:
        break;
    }
    for (const LetterRule& rule : letter_rules) {
        if (rule.letter != letter[0])
            continue;
        const std::string id = session.reported_id();
        const bool family =
            job.model.series == rule.series || (rule.letter == 'C' && series_is_rc_group(job.model.series));
        const bool same_id = job.model.mcu_id == id || (rule.id == IdRule::id_or_alt && job.model.alt_id == id);
        return family && same_id;
    }
    return true;
}

Result model_check(const Session& session, const Job& job, Report& report)
{
    if (model_matches(session, job))
        return Result::good;
    report.beep(3);
    report.say(wrong_model);
    report.show_box(wrong_model_box);
    return Result::wrong_model;
}

} // namespace vrk
