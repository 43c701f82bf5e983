// A run of the command line on the virtual platform: a port, a wire and a chip that can be told to fail, and what was
// told of it as JSON, event by event.
#pragma once

#include "rehearsal/chip_of_model.h"
#include "vrk/flash_run.h"
#include "vrk/json_teller.h"

#include "catalog/ranges.h"
#include "recipe/prepare.h"
#include "sim/chip.h"
#include "sim/sim_port.h"
#include "sim/virtual_loop.h"
#include "sim/wire.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

namespace vrk {

class RunBench {
public:
    using Events = std::vector<nlohmann::json>;

    explicit RunBench(const char* model)
        : chip(setup_of(model))
    {
        std::filesystem::create_directories(folder);
        wire.attach(chip);
        ports.add("simulated", wire);
        recipe.file = file("code.bin", pattern(0x300));
        recipe.model = model;
        recipe.english = true;
        recipe.line.port_path = "simulated";
    }
    ~RunBench() { std::filesystem::remove_all(folder); }

    sim::ChipSetup setup_of(const char* model)
    {
        load_mcu_tables(catalogue, false);
        return chip_setup_of(catalogue, model).value();
    }

    static std::vector<std::uint8_t> pattern(std::size_t size, std::uint8_t first = 1)
    {
        std::vector<std::uint8_t> bytes(size);
        for (std::size_t i = 0; i < size; ++i)
            bytes[i] = static_cast<std::uint8_t>(first + i * 7 + i / 256);
        return bytes;
    }
    std::string file(const std::string& name, const std::vector<std::uint8_t>& bytes) const
    {
        return file(name, std::string(bytes.begin(), bytes.end()));
    }
    std::string file(const std::string& name, const std::string& text) const
    {
        std::ofstream{folder + "/" + name, std::ios::binary} << text;
        return folder + "/" + name;
    }

    // The whole way from the recipe on; power comes a moment after each call. Gives the exit code.
    int run()
    {
        JsonTeller teller(loop, recipe.english, says_yes, out, "vrk 0");
        auto prepared = prepare(recipe, catalogue, teller);
        if (const Refusal* one = std::get_if<Refusal>(&prepared)) {
            refusal = *one;
            return one->result ? class_of(*one->result).exit_code : 2;
        }
        teller.begin({recipe.line.port_path, recipe.model, recipe.file, std::string(64, '0'), "", "desk"});
        FlashRun flash(loop, port, catalogue, teller);
        flash.on_chip_awaited = [this, &flash] {
            chip.power_off();
            if (has_power)
                chip.power_up_after_ms(50);
            if (before_chip)
                before_chip(flash);
        };
        return flash.run(std::get<Batch>(prepared), order).exit_code;
    }

    Events events() const
    {
        Events all;
        std::istringstream lines{out.str()};
        for (std::string line; std::getline(lines, line);)
            all.push_back(nlohmann::json::parse(line));
        return all;
    }
    Events events(const std::string& kind) const
    {
        Events some;
        for (const auto& event : events()) {
            if (event.at("event") == kind)
                some.push_back(event);
        }
        return some;
    }
    nlohmann::json last_result() const
    {
        const Events results = events("result");
        return results.empty() ? nlohmann::json::object() : results.back();
    }
    bool chip_holds(const std::vector<std::uint8_t>& bytes) const { return chip.flash(0, bytes.size() - 1) == bytes; }

    McuTable catalogue;
    sim::VirtualLoop loop;
    sim::Wire wire{loop};
    sim::Chip chip;
    sim::SimPortDriver ports{loop};
    Port port{ports};
    Recipe recipe;
    FlashOrder order;
    bool says_yes = false;
    bool has_power = true;
    std::function<void(FlashRun&)> before_chip;
    std::ostringstream out;
    std::optional<Refusal> refusal;
    const std::string folder = ::testing::TempDir() + "vrk_run_" + std::to_string(getpid());
};

} // namespace vrk
