// What could not be written into the ledger when a chip was done: one file a chip, in a folder beside it, flushed. The
// folder is there as soon as the ledger is, so that it also tells a ledger that is gone from one that never was.
#pragma once

#include "books/books.h"
#include "platform/disk.h"

#include <QString>

namespace vrk {

class KeptChips {
public:
    explicit KeptChips(QString folder);

    bool folder_is_there() const;
    std::string make_folder() const; // what went wrong, in the system's words; empty: it is there
    std::string keep(const ClosedChip& end, const std::string& name, Disk& disk) const; // the same
    QStringList files() const; // paths, oldest first

    // Nothing: the file cannot be read or holds something else.
    static std::optional<ClosedChip> read(const QString& file);

private:
    QString folder_;
};

} // namespace vrk
