// One chip of a line and what the books have to do with it: its numbers are reserved before the press becomes a job,
// the books hear when it may be written from then on, and are told how it ended before anybody else is. Without a wish
// of the line's it asks nothing and changes nothing.
#pragma once

#include "books/books.h"
#include "link/job.h"
#include "report/report.h"
#include "session/result.h"

#include <cstdint>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace vrk {

struct LineWishes {
    bool numbers = false; // come from the books
    std::string order; // that they are drawn for
    bool record = false; // every chip is written down
    std::string station;
    std::string job; // the project or the code file, for the record
    bool english = false;
    bool any() const { return numbers || record; }
};

// SHA-256 of what a load has brought into the image, the bytes of serial numbers as 0: all chips of one job have the
// same. Empty: nothing was loaded. `offset` is the flash address of the image's first byte.
std::string image_sha256(const JobImage& image, const std::vector<StampedNumber>& numbers, std::int32_t offset);

// Stands between an engine and the report that shows what it tells.
class ChipInBooks final : public Report {
public:
    // No books: none are kept, and a line that wishes for them is refused.
    ChipInBooks(Books* books, LineWishes wishes, EventLoop& loop, Report& shown);
    ~ChipInBooks() override; // what has not ended goes back
    ChipInBooks(const ChipInBooks&) = delete;
    ChipInBooks& operator=(const ChipInBooks&) = delete;

    // Before the job is made. The records that are valid get the values of their numbers. False: no chip may begin, and
    // it has been said why.
    bool begin(std::span<AutoIncrease* const> records);
    void seal(const Job& job, const Session& talk); // for as long as the engine works
    // How it ended. False: the chip stands, but the books do not take it or not as they should; no further chip is to
    // begin. What there is to say is said by `tell_books`, when the chip's own report is over.
    bool end(Result result);
    void tell_books();

    void show_box(const Line& text, const Line& title) override { shown_.show_box(text, title); }
    bool ask(const Line& question, const Line& title) override { return shown_.ask(question, title); }
    void say(const Line& line) override;
    void beep(int times) override { shown_.beep(times); }
    void enter(Stage stage) override;
    void progress(const Progress& progress) override { shown_.progress(progress); }
    void port_is_open(bool open) override { shown_.port_is_open(open); }
    void options_read(const ChipStatus& status) override { shown_.options_read(status); }
    bool may_erase() override;

private:
    bool refuse(const BooksFault& fault);
    void name_same_board();
    ChipRecord record_of(Result result) const;
    void close_stage();

    Books* books_;
    LineWishes wishes_;
    EventLoop& loop_;
    Report& shown_;
    const Job* job_ = nullptr;
    const Session* talk_ = nullptr;
    std::vector<GivenNumber> numbers_; // in the chip's hands
    std::pair<std::string, std::string> values_; // of the code and of the EEPROM image, for the record
    bool answered_ = false; // there is a chip
    bool ended_ = false;
    EndKept kept_;
    std::string last_line_;
    std::string stages_;
    std::string stage_; // that goes on
    std::int64_t stage_since_us_ = 0;
};

} // namespace vrk
