// vrk completion: the words of the command line for bash, from the table that the program itself goes by.
#include "vrk/subcommands.h"

#include <iostream>
#include <string>

namespace vrk {

namespace {

std::string option_words(const CLI::App& app)
{
    std::string words;
    for (const CLI::Option* option : app.get_options()) {
        for (const std::string& name : option->get_lnames())
            words += (words.empty() ? "--" : " --") + name;
    }
    return words;
}

// Models, options and ports are those of the machine at the moment of the key: the program is asked for them.
constexpr const char* head = R"bash(# bash completion for vrk: written by "vrk completion".
_vrk()
{
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]}
    local command=${COMP_WORDS[1]} model= i
    COMPREPLY=()
    if [ "$COMP_CWORD" -eq 1 ]; then
        COMPREPLY=($(compgen -W "$(_vrk_commands)" -- "$word"))
        return
    fi
    for ((i = 2; i < COMP_CWORD; i++)); do
        [ "${COMP_WORDS[i]}" = --model ] && model=${COMP_WORDS[i + 1]}
    done
    case $before in
    --model)
        COMPREPLY=($(compgen -W "$(vrk models 2>/dev/null | cut -f1)" -- "$word"))
        return
        ;;
    --port)
        COMPREPLY=($(compgen -W "$(vrk ports 2>/dev/null | cut -f1)" -- "$word") $(compgen -f -- "$word"))
        return
        ;;
    --option)
        [ -n "$model" ] && COMPREPLY=($(compgen -W "$(vrk options "$model" 2>/dev/null | cut -f1)" -- "$word"))
        return
        ;;
    --language)
        COMPREPLY=($(compgen -W "zh en" -- "$word"))
        return
        ;;
    esac
    if [[ $word == -* ]]; then
        COMPREPLY=($(compgen -W "$(_vrk_words "$command")" -- "$word"))
    elif [ "$command" = options ]; then
        COMPREPLY=($(compgen -W "$(vrk models 2>/dev/null | cut -f1)" -- "$word"))
    else
        COMPREPLY=($(compgen -f -- "$word"))
    fi
}
)bash";

int write_completion()
{
    std::string names;
    std::string cases;
    for (const Subcommand& one : subcommands()) {
        CLI::App app(one.what, one.name);
        one.describe(app);
        names += (names.empty() ? "" : " ") + std::string{one.name};
        cases += "    " + std::string{one.name} + ") echo \"" + option_words(app) + "\" ;;\n";
    }
    std::cout << head << "_vrk_commands()\n{\n    echo \"" << names << "\"\n}\n"
              << "_vrk_words()\n{\n    case $1 in\n"
              << cases << "    esac\n}\ncomplete -o filenames -F _vrk vrk\n";
    std::cout.flush();
    return std::cout ? status_good : status_different;
}

} // namespace

Action describe_completion(CLI::App& /*app*/)
{
    return [] { return write_completion(); };
}

} // namespace vrk
