#include "script/commands.h"

#include "catalog/ranges.h"
#include "link/baud.h"
#include "platform/text_number.h"
#include "shell/events.h"
#include "shell/start_up.h"

#include <algorithm>
#include <charconv>
#include <limits>

namespace vrk::script {

namespace {

using Result = Runner::Result;
constexpr std::int64_t default_wait_ms = 60000;
constexpr double fastest_clock_hz = 1e9; // no chip comes near it

Result value_of(Json value)
{
    Result result;
    result.value = std::move(value);
    return result;
}

Result failure(std::string error)
{
    Result result;
    result.error = std::move(error);
    return result;
}

// Arguments of one line.
class Words {
public:
    explicit Words(std::string_view line)
        : rest_(line)
    {
        skip_blanks();
    }
    std::string_view next()
    {
        const std::size_t end = std::min(rest_.find_first_of(" \t"), rest_.size());
        const std::string_view word = rest_.substr(0, end);
        rest_.remove_prefix(end);
        skip_blanks();
        return word;
    }
    std::string_view rest() const { return rest_; } // as it stands, blanks at the end included
    bool empty() const { return rest_.empty(); }

private:
    void skip_blanks() { rest_.remove_prefix(std::min(rest_.find_first_not_of(" \t"), rest_.size())); }

    std::string_view rest_;
};

std::optional<std::int64_t> whole_number(std::string_view text, int base = 10)
{
    std::int64_t value = 0;
    text = trimmed(text);
    const auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), value, base);
    if (fault != std::errc{} || end != text.data() + text.size() || text.empty())
        return std::nullopt;
    return value;
}

// Nothing for a number that is too large for a position, an item or a value.
std::optional<int> small_number(std::string_view text)
{
    const auto number = whole_number(text);
    if (!number || *number < std::numeric_limits<int>::min() || *number > std::numeric_limits<int>::max())
        return std::nullopt;
    return static_cast<int>(*number);
}

constexpr std::int64_t longest_wait_ms = 1'000'000'000; // eleven days

// Nothing for less than none and for more than the loop's clock is asked for.
std::optional<std::int64_t> milliseconds(std::string_view text)
{
    const auto ms = whole_number(text);
    return ms && *ms >= 0 && *ms <= longest_wait_ms ? ms : std::nullopt;
}

Result no_control(std::string_view name) { return failure("no control '" + std::string{name} + "'"); }

// What became of a touch, in words; empty where it was taken.
std::string error_of(Touch touch, std::string_view name)
{
    const std::string quoted = "'" + std::string{name} + "'";
    switch (touch) {
    case Touch::disabled:
        return quoted + " is disabled";
    case Touch::busy:
        return quoted + " is busy: a sequence runs";
    case Touch::impossible:
        return quoted + " cannot take that";
    case Touch::taken:
        break;
    }
    return {};
}

Result answer_of(Touch touch, std::string_view name) { return failure(error_of(touch, name)); }

Result touch_soon(Runner& runner, std::string_view name, std::function<Touch()> event)
{
    return runner.run_soon(std::move(event), [name = std::string{name}](Touch touch) { return error_of(touch, name); });
}

// "Name", or "Name.property" where the part behind the point is no part of the name.
Result read_control(Runner& runner, std::string_view full)
{
    const std::size_t point = full.rfind('.');
    const std::string_view name = full.substr(0, point);
    const std::string_view property = point == std::string_view::npos ? std::string_view{} : full.substr(point + 1);
    const Control* control = runner.shell().controls.find_full(name);
    if (control == nullptr)
        return no_control(name);
    const auto value = control_property(*control, property);
    if (!value)
        return failure("'" + std::string{name} + "' has no property '" + std::string{property} + "'");
    return value_of(*value);
}

Result set_list(Runner& runner, ComboBox& list, std::string_view name, std::string_view text)
{
    Shell& shell = runner.shell();
    std::int64_t item = -1;
    if (text.starts_with("#")) {
        item = whole_number(text.substr(1)).value_or(-1);
    } else {
        const auto found = std::find(list.items().begin(), list.items().end(), text);
        if (found != list.items().end())
            item = found - list.items().begin();
        else if (list.editable)
            return answer_of(type_text(shell, list, text), name);
    }
    if (item < 0 || item >= static_cast<std::int64_t>(list.items().size()))
        return failure("'" + std::string{name} + "' has no item '" + std::string{text} + "'");
    return touch_soon(runner, name, [&shell, &list, item] { return choose_item(shell, list, static_cast<int>(item)); });
}

Result set_tab(Runner& runner, TabStrip& strip, std::string_view name, std::string_view text)
{
    const int tab = text.starts_with("#") ? small_number(text.substr(1)).value_or(-1) : strip.find(text);
    if (tab < 0 || static_cast<std::size_t>(tab) >= strip.tabs().size())
        return failure("'" + std::string{name} + "' has no tab '" + std::string{text} + "'");
    Shell& shell = runner.shell();
    return touch_soon(runner, name, [&shell, &strip, tab] { return choose_tab(shell, strip, tab); });
}

Result set_node(Runner& runner, Tree& tree, std::string_view name, std::string_view key)
{
    if (tree.find(key) == nullptr)
        return failure("'" + std::string{name} + "' has no node '" + std::string{key} + "'");
    Shell& shell = runner.shell();
    return touch_soon(runner, name, [&shell, &tree, key = std::string{key}] { return choose_node(shell, tree, key); });
}

Result set_control(Runner& runner, Words words)
{
    const std::string_view name = words.next();
    const std::string text{words.rest()};
    Shell& shell = runner.shell();
    Control* control = shell.controls.find_full(name);
    if (control == nullptr)
        return no_control(name);
    if (const Touch touch = may_touch(shell, *control); touch != Touch::taken)
        return answer_of(touch, name);
    const bool on = text == "1";
    if (auto* list = dynamic_cast<ComboBox*>(control))
        return set_list(runner, *list, name, text);
    if (auto* tree = dynamic_cast<Tree*>(control))
        return set_node(runner, *tree, name, text);
    if (auto* strip = dynamic_cast<TabStrip*>(control))
        return set_tab(runner, *strip, name, text);
    if (dynamic_cast<TextBox*>(control) != nullptr)
        return answer_of(type_text(shell, *control, text), name);
    if (auto* box = dynamic_cast<CheckBox*>(control))
        return touch_soon(runner, name, [&shell, box, on] { return set_checked(shell, *box, on); });
    if (auto* button = dynamic_cast<OptionButton*>(control)) {
        if (on)
            return touch_soon(runner, name, [&shell, button] { return choose_option(shell, *button); });
        button->set_value(false);
        return {};
    }
    if (auto* bar = dynamic_cast<ScrollBar*>(control)) {
        const auto value = small_number(text);
        if (!value)
            return failure("'" + std::string{name} + "' takes a whole number, not '" + text + "'");
        return touch_soon(runner, name, [&shell, bar, value] { return scroll_to(shell, *bar, *value); });
    }
    return failure("'" + std::string{name} + "' cannot be set");
}

// "TabStrip2(EEPROM_File)", "TreeViewDevice(Juniper-60Q)": a tab or a node by its key.
Result click_part(Runner& runner, std::string_view full)
{
    const std::size_t open = full.find('(');
    if (open == std::string_view::npos || !full.ends_with(')'))
        return no_control(full);
    const std::string_view name = full.substr(0, open);
    const std::string_view key = full.substr(open + 1, full.size() - open - 2);
    Control* control = runner.shell().controls.find_full(name);
    if (control != nullptr) {
        if (const Touch touch = may_touch(runner.shell(), *control); touch != Touch::taken)
            return answer_of(touch, name);
    }
    if (auto* strip = dynamic_cast<TabStrip*>(control))
        return set_tab(runner, *strip, name, key);
    if (auto* tree = dynamic_cast<Tree*>(control))
        return set_node(runner, *tree, name, key);
    return no_control(full);
}

Result click_control(Runner& runner, Words words)
{
    const std::string_view name = trimmed(words.rest());
    Shell& shell = runner.shell();
    Control* control = shell.controls.find_full(name);
    if (control == nullptr)
        return click_part(runner, name);
    if (const Touch touch = may_touch(shell, *control); touch != Touch::taken)
        return answer_of(touch, name);
    return touch_soon(runner, name, [&shell, control] { return click(shell, *control); });
}

Result press_control(Runner& runner, Words words)
{
    const std::string_view name = words.next();
    const std::string key{words.rest()};
    Shell& shell = runner.shell();
    Control* control = shell.controls.find_full(name);
    if (control == nullptr)
        return no_control(name);
    if (const Touch touch = may_press(shell, *control, key); touch != Touch::taken)
        return answer_of(touch, name);
    return touch_soon(runner, name, [&shell, control, key] { return press_key(shell, *control, key); });
}

Result put_caret(Runner& runner, Words words)
{
    const std::string_view name = words.next();
    auto* box = dynamic_cast<TextBox*>(runner.shell().controls.find_full(name));
    const auto position = small_number(words.rest());
    if (box == nullptr)
        return failure("no text control '" + std::string{name} + "'");
    if (!position || *position < 0)
        return failure("a caret stands at 0 or above, not at '" + std::string{words.rest()} + "'");
    return answer_of(put_caret(runner.shell(), *box, *position), name);
}

Result get_control(Runner& runner, Words words) { return read_control(runner, trimmed(words.rest())); }

Result list_controls(Runner& runner, Words words)
{
    return value_of(control_names(runner.shell(), trimmed(words.rest())));
}

constexpr std::pair<std::string_view, Reply> replies[] = {
    {"ok", Reply::ok}, {"cancel", Reply::cancel}, {"yes", Reply::yes}, {"no", Reply::no}};

std::string_view reply_name(Reply reply)
{
    return std::find_if(std::begin(replies), std::end(replies), [&](const auto& row) {
        return row.second == reply;
    })->first;
}

Result queue_answer(Runner& runner, Words words)
{
    const std::string_view text = trimmed(words.rest());
    for (const auto& [name, reply] : replies) {
        if (name == text) {
            runner.dialogs().replies.push_back(reply);
            return {};
        }
    }
    return failure("an answer is ok, yes, no or cancel, not '" + std::string{text} + "'");
}

Result queue_choice(Runner& runner, Words words)
{
    if (words.empty())
        runner.dialogs().choices.push_back(std::nullopt);
    else
        runner.dialogs().choices.push_back(std::string{words.rest()});
    return {};
}

std::string_view buttons_name(Buttons buttons)
{
    switch (buttons) {
    case Buttons::ok_cancel:
        return "ok cancel";
    case Buttons::yes_no:
        return "yes no";
    case Buttons::ok:
        break;
    }
    return "ok";
}

Result list_messages(Runner& runner, Words)
{
    Json list = Json::array();
    const auto& shown = runner.dialogs().shown;
    for (; runner.boxes_told < shown.size(); ++runner.boxes_told) {
        const ShownBox& box = shown[runner.boxes_told];
        list.push_back({{"title", box.box.title}, {"text", box.box.text}, {"buttons", buttons_name(box.box.buttons)},
            {"reply", reply_name(box.reply)}});
    }
    return value_of(list);
}

Result count_beeps(Runner& runner, Words)
{
    const int count = runner.dialogs().beeps - runner.beeps_told;
    runner.beeps_told = runner.dialogs().beeps;
    return value_of(count);
}

Result sleep_ms(Runner& runner, Words words)
{
    const auto ms = milliseconds(words.rest());
    if (!ms)
        return failure("sleep takes milliseconds, not '" + std::string{words.rest()} + "'");
    return runner.wait_for([] { return false; }, *ms, "");
}

Result wait_idle(Runner& runner, Words words)
{
    const auto ms = words.empty() ? default_wait_ms : milliseconds(words.rest()).value_or(-1);
    if (ms < 0)
        return failure("wait-idle takes milliseconds, not '" + std::string{words.rest()} + "'");
    Shell& shell = runner.shell();
    return runner.wait_for(
        [&shell] { return !shell.running; }, ms, "a sequence still runs after " + std::to_string(ms) + " ms");
}

std::string main_text(const Control& control)
{
    const Json value = control_property(control, "").value_or(Json(""));
    return value.is_string() ? value.get<std::string>() : value.dump();
}

Result wait_text(Runner& runner, Words words)
{
    const std::string_view name = words.next();
    const std::string_view ms_text = words.next();
    const std::string text{words.rest()};
    const Control* control = runner.shell().controls.find_full(name);
    const auto ms = milliseconds(ms_text);
    if (control == nullptr)
        return no_control(name);
    if (!ms)
        return failure("wait-text takes milliseconds, not '" + std::string{ms_text} + "'");
    return runner.wait_for([control, text] { return main_text(*control).find(text) != std::string::npos; }, *ms,
        "'" + std::string{name} + "' does not contain '" + text + "' after " + std::to_string(*ms) + " ms");
}

Result expect_text(Runner& runner, Words words)
{
    const std::string_view name = words.next();
    const std::string text{words.rest()};
    const Control* control = runner.shell().controls.find_full(name);
    if (control == nullptr)
        return no_control(name);
    const std::string found = main_text(*control);
    if (found.find(text) == std::string::npos)
        return failure("'" + std::string{name} + "' does not contain '" + text + "'; it holds '" + found + "'");
    return {};
}

const FileBuffer* buffer_named(Runner& runner, std::string_view name)
{
    if (name == "code")
        return &runner.shell().code_buffer;
    return name == "data" ? &runner.shell().data_buffer : nullptr;
}

Result read_buffer(Runner& runner, Words words)
{
    const FileBuffer* buffer = buffer_named(runner, words.next());
    const auto first = whole_number(words.next(), 16);
    const auto last = whole_number(words.rest(), 16);
    if (buffer == nullptr)
        return failure("a buffer is code or data");
    if (!first || !last || *first < 0 || *last < *first || *last > buffer->last())
        return failure("the buffer has addresses 0 to " + hex_text(buffer->last()));
    return value_of(hex_bytes(std::span{buffer->data}.subspan(
        static_cast<std::size_t>(*first), static_cast<std::size_t>(*last - *first + 1))));
}

Result read_buffer_info(Runner& runner, Words words)
{
    const FileBuffer* buffer = buffer_named(runner, trimmed(words.rest()));
    return buffer == nullptr ? failure("a buffer is code or data") : value_of(buffer_info(*buffer));
}

Result read_record(Runner& runner, Words words)
{
    const std::string_view which = trimmed(words.rest());
    if (which == "selected")
        return value_of(record_value(runner.shell().selected));
    if (which == "connected")
        return value_of(record_value(runner.shell().talk().connected));
    return failure("a record is selected or connected");
}

Result read_mcu(Runner& runner, Words words)
{
    const auto series = whole_number(words.next());
    const auto row = whole_number(words.rest());
    if (!series || !row || *series < 0 || *series >= McuTable::page_count || *row < 0 || *row >= McuTable::row_count)
        return failure("the table has series 0 to 20 and rows 0 to 140");
    Json cells = Json::array();
    for (int column = 0; column < McuTable::column_count; ++column)
        cells.push_back(runner.shell().mcu_table.cell(static_cast<int>(*series), static_cast<int>(*row), column));
    return value_of(cells);
}

Result read_options(Runner& runner, Words words)
{
    const auto page = whole_number(words.rest());
    if (!page || *page < 0 || *page >= OptionTable::page_count)
        return failure("the option table has pages 0 to 20");
    const OptionTable& table = runner.shell().option_table;
    Json rows = Json::array();
    for (int row = 0; row < table.filled_rows(static_cast<int>(*page)); ++row) {
        Json cells = Json::array();
        for (int column = 0; column < OptionTable::column_count; ++column)
            cells.push_back(table.cell(static_cast<int>(*page), row, column));
        rows.push_back(cells);
    }
    return value_of(rows);
}

Result read_variable(Runner& runner, Words words)
{
    const std::string_view name = trimmed(words.rest());
    const auto value = variable(runner.shell(), name);
    return value ? value_of(*value) : failure("no variable '" + std::string{name} + "'");
}

Result calculate(Runner&, Words words)
{
    const auto series = small_number(words.next());
    const auto max_baud = small_number(words.next());
    const double clock_hz = number_in(words.next());
    const auto index = whole_number(words.rest());
    constexpr auto most = std::numeric_limits<std::int16_t>::max();
    const bool fit = series && max_baud && index && *index >= -most && *index <= most && clock_hz <= fastest_clock_hz;
    if (!fit)
        return failure("calculate-baud takes series, highest baud, clock in Hz and start index");
    BaudChoice choice;
    choice.index = static_cast<std::int16_t>(*index);
    calculate_baud(clock_hz, *series, *max_baud, choice);
    return value_of({{"index", choice.index}, {"baud", choice.baud}, {"error", choice.error}, {"mode", choice.mode},
        {"setting", choice.setting}});
}

// The hand that a bench has: what it is to do is said, and done by the command alone in a rehearsal.
Result switch_power(Runner& runner, Words words)
{
    const std::string_view state = trimmed(words.rest());
    if (state != "on" && state != "off" && state != "cycle")
        return failure("power goes on, off or cycle, not '" + std::string{state} + "'");
    TargetAccess* target = runner.target();
    if (target == nullptr) {
        Result by_hand;
        by_hand.note = "switch the target " + std::string{state == "cycle" ? "off and on" : state} + " by hand";
        return by_hand;
    }
    if (state != "on")
        target->power(false);
    if (state == "cycle") {
        // Long enough for the chip to forget.
        EventLoop& loop = runner.shell().platform.loop;
        loop.call_at(loop.now_us() + 100000, [target] { target->power(true); });
        return runner.wait_for([] { return false; }, 100, "");
    }
    if (state == "on")
        target->power(true);
    return {};
}

Result describe_target(Runner& runner, Words)
{
    return runner.target() == nullptr ? failure("target needs --rehearse") : value_of(runner.target()->describe());
}

Result quit(Runner& runner, Words)
{
    runner.end();
    return {};
}

struct CommandRow {
    std::string_view name;
    std::string_view arguments;
    std::string_view does;
    Result (*run)(Runner& runner, Words words);
};

// clang-format off
constexpr CommandRow commands[] = {
//    name              arguments                  what it does
    { "set",            "NAME VALUE",              "types, picks an item (#n: item n), checks (1, 0), picks a node or a tab", set_control },
    { "click",          "NAME",                    "clicks a button, label, tab, node", click_control },
    { "press",          "NAME KEY",                "one key: a character, PageUp, PageDown, Up, Down, Left, Right, Home, End, Esc, Enter", press_control },
    { "caret",          "NAME POSITION",           "puts the caret of a text control", put_caret },
    { "get",            "NAME[.PROPERTY]",         "its value; caption, enabled, visible, index, items, min, max, value, selstart, sellength", get_control },
    { "controls",       "[PREFIX]",                "all control names with their type", list_controls },
    { "answer",         "ok|yes|no|cancel",        "queues the reply to the next message box", queue_answer },
    { "choose",         "[PATH]",                  "queues the result of the next file dialog; none: cancelled", queue_choice },
    { "messages",       "",                        "the message boxes shown since the last time", list_messages },
    { "beeps",          "",                        "how many beeps since the last time", count_beeps },
    { "sleep",          "MS",                      "lets the event loop run that long", sleep_ms },
    { "wait-idle",      "[MS]",                    "until no sequence runs; fails after MS, 60000 without it", wait_idle },
    { "wait-text",      "NAME MS TEXT",            "until the control's text contains TEXT; fails after MS", wait_text },
    { "buffer",         "code|data FIRST LAST",    "bytes of a buffer, addresses and bytes hexadecimal", read_buffer },
    { "buffer-info",    "code|data",               "low, high, view_low, view_high, checksum, start, loaded", read_buffer_info },
    { "record",         "selected|connected",      "the fields of that model's record", read_record },
    { "mcu",            "SERIES ROW",              "the 21 cells of that row of the catalogue", read_mcu },
    { "options",        "PAGE",                    "the rows of that page of options, 19 cells each", read_options },
    { "var",            "NAME",                    "a variable by its name", read_variable },
    { "calculate-baud", "SERIES MAXBAUD F INDEX",  "the divisor for a clock of F Hz", calculate },
    { "power",          "on|off|cycle",            "with --rehearse: the simulated chip's supply; else it is asked for on standard error", switch_power },
    { "target",         "",                        "with --rehearse: what the simulated chip holds", describe_target },
    { "expect",         "NAME TEXT",               "fails unless the control's text contains TEXT", expect_text },
    { "quit",           "",                        "asks the window to close, and ends", quit },
};
// clang-format on

} // namespace

std::string command_help()
{
    constexpr std::size_t column = 42;
    std::string text;
    for (const CommandRow& row : commands) {
        std::string line = "  " + std::string{row.name} + " " + std::string{row.arguments};
        line.resize(std::max(line.size() + 1, column), ' ');
        text += line + std::string{row.does} + "\n";
    }
    return text;
}

Runner::Result run_command(Runner& runner, const std::string& line)
{
    Words words(line);
    const std::string_view name = words.next();
    for (const CommandRow& row : commands) {
        if (row.name == name)
            return row.run(runner, words);
    }
    return failure("no command '" + std::string{name} + "'");
}

} // namespace vrk::script
