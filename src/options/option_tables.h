// Fills the option table: the pages of the panel row by row, and the page of the project fields.
#pragma once

#include "options/option_table.h"

namespace vrk {

// Replaces all pages by those of one language, without snapshots.
void load_option_tables(OptionTable& table, bool english);

// Teak's rows. They land on Juniper's page, as they always did; no start-up loads them, and the page that the panel
// reads for that family stays empty.
void load_teak_table(OptionTable& table, bool english);

} // namespace vrk
