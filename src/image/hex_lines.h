// The lines of a HEX file, read piece by piece: a file is never in memory as a whole.
#pragma once

#include <array>
#include <istream>
#include <optional>
#include <string>
#include <string_view>

namespace vrk {

class HexLines {
public:
    // Begins where the text stands.
    explicit HexLines(std::istream& text)
        : text_(text)
    {
    }

    // The next line without its end (CR LF, LF or CR), cut far behind all that a record can hold. Nothing: the text is
    // over, or cannot be read on. The view holds until the next call.
    std::optional<std::string_view> next();
    bool failed() const { return text_.bad(); } // the text ended where it could not be read

private:
    bool read_piece();
    void keep(std::string_view part);

    std::istream& text_;
    std::array<char, 65536> piece_;
    std::string_view rest_; // of the piece
    std::string line_; // that began in an earlier piece
    bool behind_return_ = false; // a line feed that follows belongs to the line before
};

} // namespace vrk
