// Books that do not do what is asked, on a command line.
#pragma once

#include "vrk/talk_options.h"

#include "books/books.h"

#include <iostream>

namespace vrk {

// Says so on the standard error; gives the status.
inline int refuse_books(const BooksFault& fault, const TalkOptions& talk)
{
    std::cerr << "vrk: " << fault_text(fault).in(speaks_english(talk)) << std::endl;
    return class_of(Result::refused).exit_code;
}

} // namespace vrk
