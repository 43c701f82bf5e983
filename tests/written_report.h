// A report that is written down: for tests that look at what an engine tells, and at nothing else.
#pragma once

#include "options/chip_status.h"
#include "report/report.h"

#include <deque>
#include <string>
#include <vector>

namespace vrk {

struct WrittenReport final : Report {
    bool english = true;
    std::vector<std::string> lines;
    std::vector<std::string> boxes;
    std::deque<bool> answers; // to the next questions; one without is answered No
    int beeps = 0;
    std::vector<Stage> stages;
    std::vector<Progress> steps;
    bool port_open = false;
    std::vector<ChipStatus> chips;

    void show_box(const Line& text, const Line&) override { boxes.push_back(text.in(english)); }
    bool ask(const Line& question, const Line&) override
    {
        boxes.push_back(question.in(english));
        const bool yes = !answers.empty() && answers.front();
        if (!answers.empty())
            answers.pop_front();
        return yes;
    }
    void say(const Line& line) override
    {
        if (line.is_in(english))
            lines.push_back(line.in(english));
    }
    void beep(int times) override { beeps += times; }
    void enter(Stage stage) override { stages.push_back(stage); }
    void progress(const Progress& progress) override { steps.push_back(progress); }
    void port_is_open(bool open) override { port_open = open; }
    void options_read(const ChipStatus& status) override { chips.push_back(status); }
};

} // namespace vrk
