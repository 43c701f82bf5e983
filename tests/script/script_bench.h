// A script on a rehearsal: lines in, answers out.
#pragma once

#include "bench.h"
#include "script/runner.h"

#include <deque>
#include <memory>

namespace vrk::script {

class ChipPower final : public TargetAccess {
public:
    explicit ChipPower(sim::Chip& chip)
        : chip_(chip)
    {
    }
    void power(bool on) override { chip_.power(on); }
    bool has_power() const override { return chip_.state() != sim::Chip::State::off; }
    Json describe() const override { return {{"flash", hex_bytes(chip_.flash(0, 15))}}; }

private:
    sim::Chip& chip_;
};

struct ScriptBench : Bench {
    explicit ScriptBench(bool stop_at_failure = true)
        : Bench("Juniper-60Q")
        , power(chip)
        , runner({shell, dialogs, &power,
              [this]() -> std::optional<std::string> {
                  if (lines.empty()) {
                      runner.end();
                      return std::nullopt;
                  }
                  std::string line = lines.front();
                  lines.pop_front();
                  if (on_line)
                      on_line(line);
                  return line;
              },
              [this](const Answer& answer) { answers.push_back(answer); }, stop_at_failure})
    {
    }

    void run(std::deque<std::string> script)
    {
        lines = std::move(script);
        loop.before_sleep = [this] { return runner.turn(); };
        while (!shell.unloaded || shell.running)
            loop.yield();
        loop.before_sleep = nullptr;
    }
    // The value that the n-th command answered with, from 0.
    Json value(std::size_t n) const { return answers.at(n).value; }
    std::string error(std::size_t n) const { return answers.at(n).error; }

    std::deque<std::string> lines;
    std::function<void(const std::string& line)> on_line; // as it is handed out, before it runs
    std::vector<Answer> answers;
    ChipPower power;
    Runner runner;
};

} // namespace vrk::script
