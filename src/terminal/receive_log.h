// What comes in goes to a file while it runs, whatever the display shows: as the bytes they are, or as lines of text
// with a time before each.
#pragma once

#include "terminal/code_page.h"
#include "terminal/line_times.h"

#include <cstdint>
#include <fstream>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace vrk {

class ReceiveLog {
public:
    enum class Kind { bytes, lines };

    // Begins a log; what the file held is kept, and the new bytes go behind it. False: it cannot be written.
    bool begin(const std::string& path, Kind kind, CodePage page);
    bool is_on() const { return file_.is_open(); }
    const std::string& path() const { return path_; }
    // False: it could not be written, and the log has ended. `time`: of the lines that begin now, "hh:mm:ss".
    bool write(std::span<const std::uint8_t> bytes, std::string_view time);
    void end();

private:
    bool put(std::string_view text);

    std::ofstream file_;
    std::string path_;
    Kind kind_ = Kind::bytes;
    TextDecoder decoder_{CodePage::utf8};
    LineTimes times_;
};

} // namespace vrk
