#include "shell/language.h"

#include "form/main_form.h"

#include "platform/text_number.h"
#include "shell/kept_settings.h"
#include "shell/messages.h"

namespace vrk {

namespace {

constexpr const char* section = "Settings";
constexpr const char* key = "Language";
constexpr const char* words[] = {"zh", "en"};

// Who does not read the language in force has to understand it too.
constexpr Text at_next_start[] = {
    {"下次启动程序时使用中文。", "The program will be in Chinese from its next start on.\n下次启动程序时使用中文。"},
    {"下次启动程序时使用英文。\nThe program will be in English from its next start on.",
        "The program will be in English from its next start on."},
};

} // namespace

std::optional<bool> is_english(std::string_view word)
{
    const std::string upper = upper_case(trimmed(word));
    if (upper == "EN")
        return true;
    return upper == "ZH" ? std::optional{false} : std::nullopt;
}

bool starts_in_english(SettingsStore& settings, std::string_view for_this_run)
{
    if (const auto english = is_english(for_this_run))
        return *english;
    return is_english(settings.get(section, key, "")).value_or(false);
}

void show_language_choice(Shell& shell)
{
    shell.form.mnuLanguage[starts_in_english(shell.platform.settings, "") ? 1 : 0].set_value(true);
}

void mnuLanguage_Click(Shell& shell)
{
    const bool english = shell.form.mnuLanguage[1].value();
    shell.platform.settings.set(section, key, words[english ? 1 : 0]);
    if (keep_settings(shell) && english != shell.language_is_english)
        show_box(shell, in_language(shell, at_next_start[english ? 1 : 0]), {}, BoxIcon::information);
}

} // namespace vrk
