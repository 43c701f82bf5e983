// What a run of the command line tells: the report of the engine, and around it the run itself, chip by chip. Drawn on
// a terminal or written as JSON by those who take it up.
#pragma once

#include "platform/event_loop.h"
#include "report/pace.h"
#include "report/report.h"
#include "report/stage_word.h"
#include "session/result.h"
#include "session/session.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vrk {

struct RunBegin {
    std::string port;
    std::string model;
    std::string file; // as it was named
    std::string sha256; // of the code image
    std::string eeprom_sha256; // empty: there is no EEPROM image
    std::string station; // empty: nobody has named one
};

struct ChipEnd {
    int index = 0; // from 1; 0: it ended before the first chip
    Result result = Result::good;
    std::string number; // its serial number; empty: none
    std::string firmware; // "6.3I"; empty: the chip has told none. So the others
    std::string factory_number;
    double clock_mhz = 0;
    std::int32_t baud = 0; // at which it was written
    std::vector<std::pair<std::string_view, double>> seconds; // by stage, in their order

    void take_facts(const Session& session); // what the talk knows of the chip and of the line
};

struct RunEnd {
    int exit_code = 0;
    int good = 0;
    int bad = 0;
};

class Teller : public Report {
public:
    // `says_yes`: what every question is answered with.
    Teller(EventLoop& loop, bool english, bool says_yes)
        : loop_(loop)
        , english_(english)
        , says_yes_(says_yes)
    {
    }

    virtual void begin(const RunBegin& run) = 0;
    virtual void end_of_chip(const ChipEnd& chip, const RunEnd& so_far) = 0;
    virtual void end(const RunEnd& run) = 0;
    virtual bool is_heard() const = 0; // false: what is told cannot be written any more

    void begin_chip(int index); // a new one is awaited
    bool answered() const { return answered_; } // the chip in hand has, and was worked on
    std::vector<std::pair<std::string_view, double>> seconds(); // by stage of the chip in hand, up to now

    // Of the engine's report
    bool ask(const Line& question, const Line& title) final;
    void beep(int /*times*/) final { }
    void port_is_open(bool /*open*/) final { }
    void options_read(const ChipStatus& status) final;
    void enter(Stage stage) final;
    void progress(const Progress& progress) final;

protected:
    virtual void tell_chip(int index) = 0;
    virtual void tell_stage(Stage stage) = 0;
    virtual void tell_pace(const PaceFigures& figures) = 0; // once a percent
    virtual void tell_question(const std::string& text, bool answer) = 0;
    virtual void tell_options(const std::vector<std::string>& lines, const ChipStatus& status) = 0; // never none
    bool english() const { return english_; }

private:
    void close_stage();

    EventLoop& loop_;
    const bool english_;
    const bool says_yes_;
    Pace pace_;
    int last_percent_ = -1;
    bool answered_ = false;
    bool in_stage_ = false;
    Stage stage_ = Stage::calling;
    std::int64_t stage_since_us_ = 0;
    std::vector<std::pair<std::string_view, double>> seconds_;
};

} // namespace vrk
