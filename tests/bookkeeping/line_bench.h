// A bench with books: the ledger is a real one, in a folder that goes at the end.
#pragma once

#include "ledger/sql_books.h"
#include "own_application.h"
#include "own_folder.h"
#include "production_line.h"

#include <cstdlib>

namespace vrk {

struct LineBench : Bench {
    explicit LineBench(const char* model = "Juniper-8", bool english = true)
        : Bench(model, english)
    {
        have_application();
        shell.books = &books;
        show_panel_state(shell);
        open_code(pattern(0x300));
        form.list("comDalay_ReDownLoad").set_text("2");
        type_text(shell, form.text_box("texStation"), "left");
        type_text(shell, form.text_box("texOrder"), "pump");
        type_text(shell, form.text_box("texLedger"), address());
    }
    std::string address() const { return folder.path + "/ledger.sqlite"; }

    void numbers_from_the_ledger(const char* start = "41", int system = AutoIncrease::hex)
    {
        set_checked(shell, form.check_box("cheLedger"), true);
        take_up_number(*this, start, system);
    }
    void record_every_chip() { set_checked(shell, form.check_box("cheRecord"), true); }

    std::vector<std::string> states()
    {
        std::vector<std::string> words;
        for (const NumberRow& row : books.numbers({}, true).value)
            words.push_back(row.value.substr(row.value.find_first_not_of('0')) + " " + std::string{word_of(row.state)});
        return words;
    }
    std::vector<ChipRecord> records() { return books.chips({}).value; }
    std::string next_value() const { return form.text_box("texAuto_Increase", 2).text(); }
    int number_in_chip() const { return flash(0x202, 0x203)[0] * 256 + flash(0x202, 0x203)[1]; }

    // The ledger is away, and comes back.
    void take_ledger_away() const { std::rename(address().c_str(), (folder.path + "/elsewhere").c_str()); }
    void bring_ledger_back() const { std::rename((folder.path + "/elsewhere").c_str(), address().c_str()); }

    OwnFolder folder{"line"};
    SqlBooks books{address(), "left"};
};

using States = std::vector<std::string>;

} // namespace vrk
