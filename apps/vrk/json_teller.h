// A run as JSON: one object a line, flushed each, for those who run the command line by program. docs/json.md tells the
// schema; a field may come to it, none goes or changes its meaning while the schema is 1.
#pragma once

#include "vrk/teller.h"

#include <ostream>

namespace vrk {

class JsonTeller final : public Teller {
public:
    static constexpr int schema = 1;

    JsonTeller(EventLoop& loop, bool english, bool says_yes, std::ostream& out, std::string tool)
        : Teller(loop, english, says_yes)
        , out_(out)
        , tool_(std::move(tool))
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
    std::ostream& out_;
    const std::string tool_; // "vrk 1.0.0"
};

} // namespace vrk
