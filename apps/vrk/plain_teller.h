// A run on a terminal: the lines of the report, and below them one line that tells stage and progress and is drawn over
// itself. Where nobody sees it being drawn, in a file or a pipe, there are lines alone.
#pragma once

#include "vrk/teller.h"

#include <ostream>
#include <string>

namespace vrk {

class PlainTeller final : public Teller {
public:
    enum class Manner {
        drawn, // to a terminal
        lines,
        quiet, // nothing but chips that are not good, and what stood in their way
    };

    PlainTeller(EventLoop& loop, bool english, bool says_yes, std::ostream& out, Manner manner)
        : Teller(loop, english, says_yes)
        , out_(out)
        , manner_(manner)
    {
    }

    void begin(const RunBegin& run) override;
    void end_of_chip(const ChipEnd& chip, const RunEnd& so_far) override;
    void end(const RunEnd& run) override;
    bool is_heard() const override { return static_cast<bool>(out_); }

    void show_box(const Line& text, const Line& title) override;
    void say(const Line& line) override;

protected:
    void tell_chip(int index) override;
    void tell_stage(Stage stage) override;
    void tell_pace(const PaceFigures& figures) override;
    void tell_question(const std::string& text, bool answer) override;
    void tell_options(const std::vector<std::string>& lines, const ChipStatus& status) override;

private:
    void write(const std::string& text); // a line of its own; what was drawn goes
    void draw(const std::string& text);

    std::ostream& out_;
    const Manner manner_;
    bool is_drawn_ = false;
};

} // namespace vrk
