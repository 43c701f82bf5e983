#include "shell/line_books.h"

#include "form/main_form.h"

#include "platform/text_number.h"
#include "shell/messages.h"
#include "shell/serial_numbers.h"

#include <filesystem>
#include <initializer_list>

namespace vrk {

namespace {

constexpr Text only_by_boot_loader = {"台账编号只用于通过引导程序的下载; 请先取消 '编号取自台账'。",
    "The ledger gives numbers to downloads over the boot loader only. Take the tick off \"Numbers from the ledger\"."};

std::string path_of_job(const Shell& shell)
{
    return shell.loader.code_is_project ? shell.form.texBatchFileName.text() : shell.loader.code_path;
}

// What a hand has typed, else the name of the job.
std::string order_name(const Shell& shell)
{
    const std::string typed{trimmed(shell.form.texOrder.text())};
    return typed.empty() ? std::filesystem::path(path_of_job(shell)).stem().string() : typed;
}

} // namespace

LineWishes line_wishes(Shell& shell)
{
    LineWishes wishes;
    wishes.numbers = numbers_from_ledger(shell);
    wishes.record = shell.form.cheRecord.value();
    wishes.order = order_name(shell);
    wishes.station = trimmed(shell.form.texStation.text());
    wishes.job = path_of_job(shell);
    wishes.english = shell.language_is_english;
    if (wishes.any() && shell.books != nullptr)
        shell.books->keep_at(shell.form.texLedger.text(), wishes.station);
    return wishes;
}

Books* opened_books(Shell& shell)
{
    if (shell.books != nullptr && !shell.running) // a chip in hand has them where they are
        shell.books->keep_at(shell.form.texLedger.text(), std::string{trimmed(shell.form.texStation.text())});
    return shell.books;
}

bool numbers_from_ledger(const Shell& shell) { return shell.form.cheLedger.value() && numbers_in_use(shell).any(); }

void enable_line_controls(Shell& shell)
{
    MainForm& form = shell.form;
    form.mnuLog.set_enabled(shell.books != nullptr);
    for (Control* control : std::initializer_list<Control*>{
             &form.cheLedger, &form.cheRecord, &form.texOrder, &form.texStation, &form.texLedger})
        control->set_enabled(shell.books != nullptr && !shell.running);
}

void cheLedger_Click(Shell& shell) { show_next_numbers(shell); }

bool show_next_numbers(Shell& shell)
{
    if (!numbers_from_ledger(shell) || shell.books == nullptr)
        return true; // a press without books says so
    const LineWishes wishes = line_wishes(shell);
    for (const AutoIncrease* record : {&shell.code_increase, &shell.data_increase}) {
        if (!record->valid || wishes.order.empty())
            continue;
        const auto next = shell.books->next_number({wishes.order, *record});
        if (next.fault) {
            append_message(shell, fault_text(*next.fault));
            return false;
        }
        put_next_value(shell, record->kind, next.value);
    }
    return true;
}

bool numbers_are_the_forms(Shell& shell)
{
    if (!numbers_from_ledger(shell))
        return true;
    show_box(shell, in_language(shell, only_by_boot_loader));
    return false;
}

} // namespace vrk
