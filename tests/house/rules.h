// The rules of the house that can be read off the text of a file. Each looks at one file and answers its findings, as
// "file:line: what is out, what to use".
#pragma once

#include "house/source_tree.h"

#include <cctype>
#include <map>
#include <optional>
#include <set>

namespace house {

using Findings = std::vector<std::string>;

inline std::string finding(const SourceFile& file, std::size_t line_index, const std::string& what)
{
    return file.path + ":" + std::to_string(line_index + 1) + ": " + what;
}

inline bool is_cpp(const SourceFile& file) { return file.path.ends_with(".cpp") || file.path.ends_with(".h"); }
inline bool lies_in(const SourceFile& file, std::string_view folder) { return file.path.starts_with(folder); }

// The line without a comment at its end.
inline std::string_view code_of(std::string_view line)
{
    bool quoted = false;
    for (std::size_t i = 0; i + 1 < line.size(); ++i) {
        if (line[i] == '"' && (i == 0 || line[i - 1] != '\\'))
            quoted = !quoted;
        if (!quoted && line[i] == '/' && line[i + 1] == '/')
            return line.substr(0, i);
    }
    return line;
}

inline bool is_word_part(char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_'; }

// The word stands there, not as a part of a longer one.
inline bool has_word(std::string_view text, std::string_view word)
{
    for (std::size_t at = text.find(word); at != std::string_view::npos; at = text.find(word, at + 1)) {
        const std::size_t end = at + word.size();
        if ((at == 0 || !is_word_part(text[at - 1])) && (end == text.size() || !is_word_part(text[end])))
            return true;
    }
    return false;
}

// What stands between the quotes or the angle brackets of an include.
inline std::optional<std::string> included(std::string_view line)
{
    const std::size_t hash = line.find_first_not_of(" \t");
    if (hash == std::string_view::npos || !line.substr(hash).starts_with("#include"))
        return std::nullopt;
    const std::size_t open = line.find_first_of("<\"", hash);
    if (open == std::string_view::npos)
        return std::nullopt;
    const std::size_t close = line.find_first_of(">\"", open + 1);
    return std::string{line.substr(open + 1, close - open - 1)};
}

// Qt is the business of these rooms; all else must run without it.
inline Findings qt_outside_its_rooms(const SourceFile& file)
{
    Findings findings;
    const bool core = lies_in(file, "src/") || lies_in(file, "sim/");
    if (!core || lies_in(file, "src/window/") || lies_in(file, "src/host/") || lies_in(file, "src/ledger/"))
        return findings;
    for (std::size_t i = 0; i < file.lines.size(); ++i) {
        const auto name = included(file.lines[i]);
        const bool qt_header =
            name && name->size() > 1 && (*name)[0] == 'Q' && std::isupper(static_cast<unsigned char>((*name)[1])) != 0;
        if (qt_header)
            findings.push_back(finding(file, i, "<" + *name + "> is out here, use platform/ or move it to host/"));
        else if (file.path.ends_with("CMakeLists.txt") && file.lines[i].find("Qt6") != std::string::npos)
            findings.push_back(finding(file, i, "Qt6 is out here, link it in src/host or src/window"));
    }
    return findings;
}

// Files of the simulator that stand on the system: a pseudo terminal in real time.
inline bool is_real_time_sim(const SourceFile& file)
{
    constexpr std::string_view names[] = {"sim/posix_loop.", "sim/pty_target.", "sim/terminal_speed."};
    return std::any_of(std::begin(names), std::end(names), [&](std::string_view name) { return lies_in(file, name); });
}

// The one file of the core that asks the system itself: the standard library cannot flush a file.
inline bool is_the_disk(const SourceFile& file) { return lies_in(file, "src/platform/disk."); }

// Time comes from the event loop of the platform, and there is one thread.
inline Findings time_and_threads(const SourceFile& file)
{
    struct Word {
        const char* out;
        const char* instead;
    };
    // clang-format off
    constexpr Word words[] = {
        { "system_clock",          "EventLoop::wall_time()" },
        { "steady_clock",          "EventLoop::now_us()" },
        { "high_resolution_clock", "EventLoop::now_us()" },
        { "clock_gettime",         "EventLoop::now_us()" },
        { "gettimeofday",          "EventLoop::now_us()" },
        { "localtime",             "EventLoop::wall_time()" },
        { "localtime_r",           "EventLoop::wall_time()" },
        { "sleep",                 "wait_ms or EventLoop::yield()" },
        { "usleep",                "wait_ms or EventLoop::yield()" },
        { "nanosleep",             "wait_ms or EventLoop::yield()" },
        { "clock_nanosleep",       "wait_ms or EventLoop::yield()" },
        { "sleep_for",             "wait_ms or EventLoop::yield()" },
        { "sleep_until",           "wait_ms or EventLoop::yield()" },
        { "jthread",               "the event loop: there is one thread" },
        { "pthread_create",        "the event loop: there is one thread" },
    };
    constexpr std::string_view headers[] = {"thread", "future", "mutex", "condition_variable", "ctime", "time.h",
        "unistd.h", "fcntl.h", "termios.h", "poll.h", "sys/types.h", "sys/time.h", "sys/ioctl.h", "pthread.h"};
    // clang-format on

    Findings findings;
    const bool core = lies_in(file, "src/") || lies_in(file, "sim/");
    if (!core || !is_cpp(file) || lies_in(file, "src/host/") || lies_in(file, "src/ledger/") ||
        is_real_time_sim(file) || is_the_disk(file))
        return findings;
    for (std::size_t i = 0; i < file.lines.size(); ++i) {
        const std::string_view code = code_of(file.lines[i]);
        for (const Word& word : words) {
            if (has_word(code, word.out))
                findings.push_back(finding(file, i, std::string{word.out} + " is out, use " + word.instead));
        }
        const auto name = included(code);
        if (name && std::find(std::begin(headers), std::end(headers), *name) != std::end(headers))
            findings.push_back(finding(file, i, "<" + *name + "> is out, use the platform"));
    }
    return findings;
}

// A room may include itself and what lies below it.
inline const std::map<std::string, std::set<std::string>>& rooms_below()
{
    static const std::map<std::string, std::set<std::string>> below = [] {
        std::map<std::string, std::set<std::string>> rooms;
        std::set<std::string> so_far;
        for (const char* room : {"platform", "report", "catalog", "options", "image", "session"}) {
            so_far.insert(room);
            rooms[room] = so_far;
        }
        for (const char* room : {"link", "board", "inapp", "terminal", "monitor"}) { // side by side, on a session
            rooms[room] = rooms["session"];
            rooms[room].insert(room);
        }
        rooms["books"] = rooms["image"]; // beside the session
        rooms["books"].insert("books");
        rooms["bookkeeping"] = rooms["link"]; // a chip's way through the books
        rooms["bookkeeping"].insert({"books", "bookkeeping"});
        rooms["ledger"] = rooms["books"];
        rooms["ledger"].insert("ledger");
        rooms["recipe"] = rooms["link"]; // from words to jobs
        rooms["recipe"].insert("recipe");
        so_far.insert({"books", "bookkeeping", "recipe", "link", "board", "inapp", "terminal", "monitor", "form"});
        rooms["options"].erase("form"); // works on plain values
        for (const char* room : {"shell", "window"}) {
            so_far.insert(room);
            rooms[room] = so_far;
        }
        rooms["form"] = {"platform", "report", "form"}; // controls: plain data beside the engine
        rooms["host"] = {"platform", "host"};
        rooms["sim"] = {"platform", "sim"};
        return rooms;
    }();
    return below;
}

// "link" for src/link/port.cpp, "sim" for sim/wire.h, nothing for what is no room.
inline std::string room_of(const std::string& path)
{
    if (path.starts_with("sim/"))
        return "sim";
    if (!path.starts_with("src/"))
        return {};
    const std::size_t end = path.find('/', 4);
    return end == std::string::npos ? std::string{} : path.substr(4, end - 4);
}

inline Findings includes_against_the_arrows(const SourceFile& file)
{
    Findings findings;
    const std::string room = room_of(file.path);
    if (room.empty() || !is_cpp(file))
        return findings;
    const auto& rooms = rooms_below();
    const auto own = rooms.find(room);
    if (own == rooms.end())
        return {finding(file, 0,
            "src/" + room + " is no room of the house, use one of them or give it its place in " +
                "tests/house/rules.h")};
    for (std::size_t i = 0; i < file.lines.size(); ++i) {
        const auto name = included(file.lines[i]);
        const std::size_t slash = name ? name->find('/') : std::string::npos;
        if (slash == std::string::npos)
            continue;
        const std::string other = name->substr(0, slash);
        const bool foreign = rooms.contains(other) || other == "apps" || other == "rehearsal" || other == "script" ||
            other == "tests" || other == "fuzz" || other == "bench" || other == "..";
        if (foreign && !own->second.contains(other))
            findings.push_back(finding(
                file, i, "\"" + *name + "\" is out in " + room + ", use what lies below it or move the routine up"));
    }
    return findings;
}

// The sources that are compiled anew when the header changes: those that include it, however far around.
inline std::set<std::string> sources_compiled_with(const std::vector<SourceFile>& tree, const std::string& header)
{
    std::map<std::string, std::vector<std::string>> includers; // of a file of the tree
    const auto is_there = [&](const std::string& path) {
        return std::any_of(tree.begin(), tree.end(), [&](const SourceFile& file) { return file.path == path; });
    };
    for (const SourceFile& file : tree) {
        const std::string own_folder = file.path.substr(0, file.path.rfind('/') + 1);
        for (const std::string& line : file.lines) {
            const auto name = is_cpp(file) ? included(line) : std::nullopt;
            if (!name)
                continue;
            for (const std::string& folder : {own_folder, std::string{"src/"}, std::string{}, std::string{"apps/"},
                     std::string{"tests/"}, std::string{"tests/window/"}}) { // where the build looks
                if (is_there(folder + *name)) {
                    includers[folder + *name].push_back(file.path);
                    break;
                }
            }
        }
    }
    std::set<std::string> reached{header};
    std::set<std::string> sources;
    for (std::vector<std::string> next{header}; !next.empty();) {
        const std::string path = next.back();
        next.pop_back();
        if (path.ends_with(".cpp"))
            sources.insert(path);
        for (const std::string& includer : includers[path]) {
            if (reached.insert(includer).second)
                next.push_back(includer);
        }
    }
    return sources;
}

// The names that the window's controls are declared under, from the text of the form.
inline std::set<std::string> control_names(const SourceFile& form)
{
    constexpr std::string_view kinds[] = {"TextBox", "CheckBox", "OptionButton", "ComboBox", "Label", "Button", "Frame",
        "TabStrip", "Tree", "ProgressBar", "ScrollBar", "Image"};
    std::set<std::string> names;
    for (const std::string& line : form.lines) {
        const std::size_t begin = std::min(line.find_first_not_of(' '), line.size());
        const std::size_t blank = line.find(' ', begin);
        if (blank == std::string::npos ||
            std::find(std::begin(kinds), std::end(kinds), line.substr(begin, blank - begin)) == std::end(kinds))
            continue;
        const std::size_t end = line.find_first_of("[;", blank);
        if (end != std::string::npos)
            names.insert(line.substr(blank + 1, end - blank - 1));
    }
    return names;
}

// The engine and all below it know no control: not the form, and not by name either. The one table whose cells are
// names of controls, for the shell to look up, is told apart.
inline Findings controls_in_the_engine(const SourceFile& file, const std::set<std::string>& names)
{
    constexpr std::string_view above[] = {"src/form/", "src/shell/", "src/window/"};
    const auto lies_above = [&](std::string_view folder) { return lies_in(file, folder); };
    if (!lies_in(file, "src/") || !is_cpp(file) || std::any_of(std::begin(above), std::end(above), lies_above) ||
        file.path == "src/options/option_tables.cpp")
        return {};
    Findings findings;
    for (std::size_t i = 0; i < file.lines.size(); ++i) {
        for (const std::string& name : names) {
            if (has_word(file.lines[i], name))
                findings.push_back(finding(file, i, name + " is out below the form, use a value of the job"));
        }
        for (const char* word : {"MainForm", "Shell"}) {
            if (has_word(code_of(file.lines[i]), word))
                findings.push_back(finding(file, i, std::string{word} + " is out below the form, use plain values"));
        }
    }
    return findings;
}

// Long files are tables, and say so by where they lie or what they are called.
inline Findings too_long(const SourceFile& file)
{
    constexpr std::size_t most_lines = 600;
    const bool is_table = file.path.find("/families/") != std::string::npos ||
        file.path.find("_table.") != std::string::npos || file.path.find("_rows.") != std::string::npos ||
        file.path.find("_texts.") != std::string::npos;
    if (!is_cpp(file) || is_table || file.lines.size() <= most_lines)
        return {};
    return {finding(file, file.lines.size() - 1, std::to_string(file.lines.size()) + " lines are out, use two files")};
}

inline Findings left_for_later(const SourceFile& file)
{
    // In two pieces, so that this file is no finding of its own.
    const std::string words[] = {std::string{"TO"} + "DO", std::string{"FIX"} + "ME", std::string{"XX"} + "X"};
    Findings findings;
    for (std::size_t i = 0; i < file.lines.size(); ++i) {
        for (const std::string& word : words) {
            if (has_word(file.lines[i], word))
                findings.push_back(finding(file, i, word + " is out, use an issue or do it now"));
        }
    }
    return findings;
}

inline Findings header_without_guard(const SourceFile& file)
{
    if (!file.path.ends_with(".h") || lies_in(file, "examples/")) // those are C for small compilers
        return {};
    if (std::find(file.lines.begin(), file.lines.end(), "#pragma once") != file.lines.end())
        return {};
    return {finding(file, 0, "a header that can be included twice is out, use #pragma once")};
}

// A file that no CMakeLists.txt names is not built, and rots. The nearest one upwards must name it.
inline Findings not_in_the_build(const SourceFile& file, const std::vector<SourceFile>& tree)
{
    if (!file.path.ends_with(".cpp") || lies_in(file, "tests/") || lies_in(file, "examples/"))
        return {};
    for (std::string folder = file.path; folder.find('/') != std::string::npos;) {
        folder = folder.substr(0, folder.rfind('/'));
        const std::string list_path = folder + "/CMakeLists.txt";
        const auto list =
            std::find_if(tree.begin(), tree.end(), [&](const auto& one) { return one.path == list_path; });
        if (list == tree.end())
            continue;
        const std::string name = file.path.substr(folder.size() + 1);
        const auto names_it = [&](const std::string& line) {
            std::string padded = " " + line + " ";
            std::replace_if(
                padded.begin(), padded.end(), [](char c) { return c == '(' || c == ')' || c == '\t'; }, ' ');
            return padded.find(" " + name + " ") != std::string::npos;
        };
        if (std::any_of(list->lines.begin(), list->lines.end(), names_it))
            return {};
        return {finding(file, 0, "a file outside the build is out, use a line in " + list_path)};
    }
    return {finding(file, 0, "a file outside the build is out, use a CMakeLists.txt that names it")};
}

} // namespace house
