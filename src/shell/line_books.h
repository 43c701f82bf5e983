// The books of a line at the form: what the line wishes for, and the number that the ledger would give next in the
// place of the next value. How one chip goes through the books tells bookkeeping/chip_in_books.h.
#pragma once

#include "bookkeeping/chip_in_books.h"
#include "shell/shell.h"

namespace vrk {

// As the controls have it now; the books are where these say from then on.
LineWishes line_wishes(Shell& shell);

// The numbers in use come from the ledger.
bool numbers_from_ledger(const Shell& shell);

// Where the records are kept, for who looks at them; null: nowhere.
Books* opened_books(Shell& shell);

// They can be touched between sequences, where the program keeps books.
void enable_line_controls(Shell& shell);

void cheLedger_Click(Shell& shell);

// The numbers in use as the ledger would give them next. False: it gives none, and the report says why; what is shown
// stays. True where the numbers do not come from it.
bool show_next_numbers(Shell& shell);

// Before a job whose numbers are not drawn from the ledger: that of a board, and a download through user code. False:
// they would come from it; the user has been told.
bool numbers_are_the_forms(Shell& shell);

} // namespace vrk
