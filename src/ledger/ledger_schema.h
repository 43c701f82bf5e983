// The tables of a ledger, and the version that they are of.
#pragma once

#include "ledger/sql_faults.h"

namespace vrk {

// Makes the tables where there are none. Refuses a ledger of a later version. Only within a Writing.
void prepare_tables(const LedgerBase& base);

// Where the tables are there already, without writing. False: there are none.
bool has_tables(const LedgerBase& base);

} // namespace vrk
