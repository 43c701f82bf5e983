// The program on virtual time with a second device beside the chip: a user program on a line of its own, where the
// terminal is open to it.
#pragma once

#include "bench.h"
#include "sim/user_program.h"

namespace vrk {

inline constexpr LineSettings terminal_line{115200, Parity::none, 8, 1}; // as the page has it at the start

struct SecondDevice : Bench {
    static constexpr const char* program_path = "board";

    explicit SecondDevice(sim::Target& device, bool english = true)
        : Bench("Juniper-60Q", english)
    {
        board.attach(device);
        ports.add(program_path, board, "board");
        run_for_ms(2000); // the list of ports is looked at now and then
        choose_port(program_path);
    }
    ~SecondDevice() { ports.remove(program_path); } // before its wire goes
    void choose_port(std::string_view path)
    {
        const auto found = std::find(shell.port_paths.begin(), shell.port_paths.end(), path);
        ASSERT_NE(found, shell.port_paths.end());
        choose_item(shell, form.list("com_Debug_COM"), static_cast<int>(found - shell.port_paths.begin()));
    }
    void open()
    {
        click(shell, form.button("comOpenCOM", 0));
        ASSERT_TRUE(is_open());
    }
    bool is_open() const { return shell.desk.terminal.has_port; }
    const std::vector<std::string>& list(const char* name) const
    {
        return dynamic_cast<ListBox&>(*shell.controls.find(name)).items();
    }

    sim::Wire board{loop};
};

// The device is a user program that tells what it has heard.
struct TerminalBench : SecondDevice {
    explicit TerminalBench(sim::UserProgram& its_program, bool english = true)
        : SecondDevice(its_program, english)
        , program(its_program)
    {
    }
    void type(const char* box, std::string_view text) { type_text(shell, form.text_box(box), text); }
    void type_row(int row, std::string_view text, bool hex = false)
    {
        type_text(shell, form.text_box("texSpreadSend", row), text);
        set_checked(shell, form.check_box("cheSpreadHex", row), hex);
    }
    void send_as_hex(bool hex) { choose_option(shell, form.option("optHexSend", hex ? 1 : 0)); }
    void show_as_hex(bool hex) { choose_option(shell, form.option("optReceiveHex", hex ? 1 : 0)); }
    void press(const char* button) { click(shell, form.button(button)); }
    // So many milliseconds, and what the program has heard in them. What is on its way when they begin counts too.
    std::string heard_in_ms(std::int64_t ms)
    {
        const std::size_t before = heard_before;
        run_for_ms(ms);
        const auto& heard = program.heard();
        heard_before = heard.size();
        return {heard.begin() + static_cast<std::ptrdiff_t>(before), heard.end()};
    }
    const std::string& shown() const { return form.text_box("texReceive").text(); }
    std::string caption(const char* button) const { return form.button(button).caption(); }
    std::string boxes() // since the last call: title and text, one box after the other
    {
        std::string all;
        for (const ShownBox& shown_box : std::exchange(dialogs.shown, {}))
            all += "[" + shown_box.box.title + "]" + shown_box.box.text + "\n";
        return all;
    }

    sim::UserProgram& program;
    std::size_t heard_before = 0;
};

} // namespace vrk
