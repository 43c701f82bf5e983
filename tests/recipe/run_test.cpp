// Runs of the command line on the virtual platform: each way that a chip can end, its exit code and what JSON tells of
// it; repeats, numbers, stops.
#include "recipe/run_bench.h"

using namespace vrk;

namespace {

// Told once, as the last result and as the end of the run, with the sentence of what to do next.
void expect_end(const RunBench& bench, Result result, int status)
{
    const ResultClass& row = class_of(result);
    EXPECT_EQ(status, row.exit_code) << bench.out.str();
    const auto told = bench.last_result();
    ASSERT_TRUE(told.contains("result")) << bench.out.str();
    EXPECT_EQ(told.at("result"), row.word);
    EXPECT_EQ(told.at("exit_code"), row.exit_code);
    EXPECT_EQ(told.at("next"), row.next.en);
    EXPECT_EQ(told.at("good"), result == Result::good ? 1 : 0);
    ASSERT_EQ(bench.events("end").size(), 1U);
    EXPECT_EQ(bench.events().back().at("event"), "end");
    EXPECT_EQ(bench.events().back().at("exit_code"), row.exit_code);
    EXPECT_FALSE(bench.port.is_open());
}

void expect_refusal(const RunBench& bench, Result result, int status)
{
    EXPECT_EQ(status, class_of(result).exit_code);
    ASSERT_TRUE(bench.refusal);
    EXPECT_EQ(bench.refusal->result, result);
    EXPECT_EQ(bench.chip.power_ups(), 0);
}

} // namespace

TEST(CommandLineRun, OfAGoodChipTellsEachStageAndThatItHoldsTheFile)
{
    RunBench bench("Juniper-60Q");
    expect_end(bench, Result::good, bench.run());
    EXPECT_TRUE(bench.chip_holds(RunBench::pattern(0x300)));
    EXPECT_EQ(bench.chip.violations(), "");
    std::vector<std::string> stages;
    for (const auto& event : bench.events("stage"))
        stages.push_back(event.at("stage"));
    EXPECT_EQ(stages, (std::vector<std::string>{"calling", "found", "writing", "settling", "options"}));
    const auto told = bench.last_result();
    EXPECT_EQ(told.at("index"), 1);
    EXPECT_EQ(told.at("firmware"), "6.3I");
    EXPECT_EQ(told.at("factory_number"), "F510C42A07319B");
    EXPECT_NEAR(told.at("clock_mhz").get<double>(), 11.0592, 0.01);
    EXPECT_EQ(told.at("baud"), 115200);
    EXPECT_TRUE(told.at("number").is_null());
    EXPECT_GT(told.at("seconds").at("writing").get<double>(), 0.0);
    EXPECT_FALSE(bench.events("options").empty());
}

TEST(CommandLineRun, TellsItsProgressOnceAPercentUpToTheWhole)
{
    RunBench bench("Juniper-60Q");
    bench.recipe.file = bench.file("long.bin", RunBench::pattern(0xA000));
    bench.run();
    const auto progress = bench.events("progress");
    ASSERT_GT(progress.size(), 20U);
    for (std::size_t i = 1; i < progress.size(); ++i)
        EXPECT_GT(progress[i].at("percent"), progress[i - 1].at("percent"));
    EXPECT_EQ(progress.back().at("percent"), 100);
    EXPECT_EQ(progress.back().at("bytes"), progress.back().at("of"));
    EXPECT_EQ(progress.back().at("seconds_left"), 0);
}

// ---- before a chip

TEST(CommandLineRun, RefusesAFileThatIsNotThere)
{
    RunBench bench("Juniper-60Q");
    bench.recipe.file = bench.folder + "/nothing.hex";
    expect_refusal(bench, Result::file_gone, bench.run());
}

TEST(CommandLineRun, RefusesAFileWithoutData)
{
    RunBench bench("Juniper-60Q");
    bench.recipe.file = bench.file("empty.hex", std::string{":00000001FF\n"});
    expect_refusal(bench, Result::file_empty, bench.run());
}

TEST(CommandLineRun, RefusesAHalfWrittenHexFileUnlessToldToTakeIt)
{
    RunBench bench("Juniper-60Q");
    bench.recipe.file = bench.file("half.hex", std::string{":03000000020006F5\n"});
    expect_refusal(bench, Result::file_refused, bench.run());
    ASSERT_EQ(bench.events("question").size(), 1U);
    EXPECT_EQ(bench.events("question")[0].at("answer"), false);

    bench.refusal.reset();
    bench.says_yes = true;
    EXPECT_EQ(bench.run(), 0);
    EXPECT_TRUE(bench.chip_holds({2, 0, 6}));
}

TEST(CommandLineRun, RefusesWrongChecksumsUnlessToldToTakeThem)
{
    RunBench bench("Juniper-60Q");
    bench.recipe.file = bench.file("wrong.hex", std::string{":03000000020006F4\n:00000001FF\n"});
    expect_refusal(bench, Result::file_refused, bench.run());
    EXPECT_EQ(bench.events("box").size(), 1U);
    EXPECT_EQ(bench.events("question").size(), 1U);

    bench.refusal.reset();
    bench.says_yes = true;
    EXPECT_EQ(bench.run(), 0);
}

TEST(CommandLineRun, RefusesAProjectOfNoModel)
{
    RunBench bench("Juniper-60Q");
    bench.recipe.model.clear();
    bench.recipe.file = bench.file("job.VRK", std::string{"VER: 1.2\r\nMCU_Type: Nobody-1\r\nEND\r\n00\r\n"});
    expect_refusal(bench, Result::project_refused, bench.run());
}

TEST(CommandLineRun, RefusesAnEepromFileForAModelWithoutDataFlash)
{
    RunBench bench("Juniper-60");
    bench.recipe.eeprom = bench.file("data.bin", RunBench::pattern(10));
    expect_refusal(bench, Result::file_refused, bench.run());
}

TEST(CommandLineRun, RefusesANumberThatDoesNotFit)
{
    RunBench bench("Juniper-60Q");
    bench.recipe.numbers = {{BufferKind::code, "FFFF", "4", "1", "1", "hex"}};
    expect_refusal(bench, Result::number_refused, bench.run());
}

TEST(CommandLineRun, TakesAProjectsOwnNumberOnlyWhereBooksAreKeptOfIt)
{
    RunBench bench("Juniper-8");
    bench.recipe.model.clear();
    bench.recipe.file = std::string(PROJECT_DIR) + "/examples/projects/production.VRK";
    expect_refusal(bench, Result::number_refused, bench.run());
    bench.recipe.numbers_are_kept = true;
    EXPECT_EQ(bench.run(), 0);
    EXPECT_EQ(bench.chip.flash(0x1FC, 0x1FF), (std::vector<std::uint8_t>{0, 0, 0x10, 0}));
}

TEST(CommandLineRun, TakesNoWordForAnotherOne)
{
    RunBench bench("Juniper-60Q");
    bench.recipe.options = {{"clock-source", "outside"}};
    EXPECT_EQ(bench.run(), 2);
    bench.recipe.options = {{"clock-source", "internal"}, {"reset-pin", "port"}};
    EXPECT_EQ(bench.run(), 2);
    EXPECT_EQ(bench.refusal->why.en, "These options exclude each other: clock-source=internal, reset-pin=port");
    EXPECT_EQ(bench.chip.power_ups(), 0);
}

// ---- at the port and at the chip

TEST(CommandLineRun, TellsOfAPortThatIsNotThere)
{
    RunBench bench("Juniper-60Q");
    bench.recipe.line.port_path = "nowhere";
    expect_end(bench, Result::no_port, bench.run());
    EXPECT_EQ(bench.last_result().at("bad"), 0);
}

TEST(CommandLineRun, TellsOfAPortThatGoesWhileTheChipIsWritten)
{
    RunBench bench("Juniper-60Q");
    bench.chip.on_state_change.push_back([&bench](sim::Chip::State state) {
        if (state == sim::Chip::State::writing)
            bench.ports.remove("simulated");
    });
    expect_end(bench, Result::port_gone, bench.run());
    EXPECT_EQ(bench.last_result().at("bad"), 1);
}

TEST(CommandLineRun, TellsOfASilentChipAfterTheTimeItWasGiven)
{
    RunBench bench("Juniper-60Q");
    bench.has_power = false;
    bench.order.wait_s = 3;
    expect_end(bench, Result::no_answer, bench.run());
    EXPECT_EQ(bench.last_result().at("bad"), 0);
    EXPECT_LT(bench.loop.now_us(), 4'000'000);
}

TEST(CommandLineRun, TellsOfAChipThatCannotReadItsId)
{
    RunBench bench("Juniper-60Q");
    bench.chip.report_id_unreadable();
    expect_end(bench, Result::unreadable_id, bench.run());
}

TEST(CommandLineRun, TellsOfAnotherModel)
{
    RunBench bench("Juniper-60Q");
    bench.recipe.model = "Juniper-56Q";
    expect_end(bench, Result::wrong_model, bench.run());
    EXPECT_EQ(bench.chip.frame_count(0x84), 0);
}

TEST(CommandLineRun, TellsOfFirmwareThatIsTooOldForTheEnglishEdition)
{
    RunBench bench("Juniper-60Q");
    sim::ChipSetup setup = bench.setup_of("Juniper-60Q");
    setup.version = 0x49;
    sim::Chip old_chip(setup);
    bench.wire.attach(old_chip);
    old_chip.power_up_after_ms(50);
    bench.has_power = false;
    expect_end(bench, Result::old_firmware, bench.run());
    EXPECT_EQ(bench.events("box").size(), 1U);
}

TEST(CommandLineRun, TellsOfANumberWhereNothingIsWritten)
{
    RunBench bench("Juniper-60Q");
    bench.recipe.numbers = {{BufferKind::code, "8000", "4", "1", "1", "hex"}};
    const int status = bench.run();
    EXPECT_EQ(status, class_of(Result::number_outside).exit_code);
    EXPECT_EQ(bench.last_result().at("result"), "number-outside");
    EXPECT_EQ(bench.chip.frame_count(0x84), 0);
}

TEST(CommandLineRun, TellsOfAChipThatCannotBeErased)
{
    RunBench bench("Juniper-60Q");
    bench.chip.overhear(0x84, 100);
    expect_end(bench, Result::erase_failed, bench.run());
}

TEST(CommandLineRun, TellsOfABlockThatDoesNotGoIn)
{
    RunBench bench("Juniper-60Q");
    bench.chip.refuse_block(0x200);
    expect_end(bench, Result::programming_failed, bench.run());
    EXPECT_EQ(bench.last_result().at("bad"), 1);
}

TEST(CommandLineRun, TellsOfAChipThatDoesNotGoOnToItsOptions)
{
    RunBench bench("Juniper-8");
    const int end_of_code_answer = 14;
    bench.chip.noise_before_reply(end_of_code_answer, sim::reply_frame(0x50, {}, true));
    expect_end(bench, Result::options_refused, bench.run());
    EXPECT_TRUE(bench.chip_holds(RunBench::pattern(0x300)));
}

TEST(CommandLineRun, TellsOfOptionsThatAreNotTaken)
{
    RunBench bench("Juniper-60Q");
    bench.recipe.options = {{"watchdog-divider", "16"}};
    bench.chip.faults.refused_options = 10;
    expect_end(bench, Result::options_failed, bench.run());
}

TEST(CommandLineRun, TellsOfAnOscillatorThatIsTooFarOff)
{
    RunBench bench("Holly-4");
    bench.recipe.options = {{"rc-target", "100"}};
    expect_end(bench, Result::off_frequency, bench.run());
}

// ---- a stop

TEST(CommandLineRun, IsStoppedInTheMiddleOfAChip)
{
    RunBench bench("Juniper-60Q");
    bench.before_chip = [&bench](FlashRun& run) {
        bench.chip.on_state_change.push_back([&run](sim::Chip::State state) {
            if (state == sim::Chip::State::erased)
                run.stop();
        });
    };
    expect_end(bench, Result::stopped, bench.run());
}

TEST(CommandLineRun, IsStoppedWhileChipsAreChanged)
{
    RunBench bench("Juniper-60Q");
    bench.order.chips = 0;
    bench.before_chip = [&bench](FlashRun& run) {
        bench.loop.call_at(bench.loop.now_us() + 6'000'000, [&run] { run.stop(); });
    };
    EXPECT_EQ(bench.run(), 130);
    EXPECT_EQ(bench.last_result().at("result"), "good");
    EXPECT_EQ(bench.events().back().at("exit_code"), 130);
    EXPECT_EQ(bench.events().back().at("good"), 1);
}

// ---- chip after chip

TEST(CommandLineRepeat, GivesEachGoodChipANumberOfItsOwn)
{
    RunBench bench("Juniper-60Q");
    bench.order.chips = 3;
    bench.recipe.numbers = {{BufferKind::code, "0103", "4", "41", "2", "hex"}};
    std::vector<std::uint8_t> in_chips;
    bench.before_chip = [&](FlashRun&) {
        if (bench.chip.power_ups() > 0)
            in_chips.push_back(bench.chip.flash(0x103, 0x103).front());
    };
    EXPECT_EQ(bench.run(), 0);
    in_chips.push_back(bench.chip.flash(0x103, 0x103).front());
    EXPECT_EQ(in_chips, (std::vector<std::uint8_t>{41, 43, 45}));
    std::vector<long> told;
    for (const auto& event : bench.events("result"))
        told.push_back(std::stol(event.at("number").get<std::string>()));
    EXPECT_EQ(told, (std::vector<long>{41, 43, 45}));
}

TEST(CommandLineRepeat, EndsWithTheFirstBadChip)
{
    RunBench bench("Juniper-60Q");
    bench.order.chips = 3;
    bench.before_chip = [&](FlashRun&) {
        if (bench.events("result").size() == 1)
            bench.chip.refuse_block(0);
    };
    EXPECT_EQ(bench.run(), class_of(Result::programming_failed).exit_code);
    EXPECT_EQ(bench.events().back().at("good"), 1);
    EXPECT_EQ(bench.events().back().at("bad"), 1);
}

TEST(CommandLineRepeat, GoesOnBehindABadChipWhereToldAndGivesItsNumberToTheNext)
{
    RunBench bench("Juniper-60Q");
    bench.order.chips = 2;
    bench.order.keep_going = true;
    bench.recipe.numbers = {{BufferKind::code, "0103", "4", "41", "1", "hex"}};
    bench.before_chip = [&](FlashRun&) {
        bench.chip.faults.refused_blocks.clear();
        if (bench.events("result").size() == 1)
            bench.chip.refuse_block(0);
    };
    EXPECT_EQ(bench.run(), 0);
    const auto results = bench.events("result");
    ASSERT_EQ(results.size(), 3U);
    EXPECT_EQ(results[1].at("result"), "programming-failed");
    EXPECT_TRUE(results[1].at("number").is_null());
    EXPECT_EQ(std::stol(results[2].at("number").get<std::string>()), 42);
    EXPECT_EQ(results[2].at("good"), 2);
    EXPECT_EQ(results[2].at("bad"), 1);
}

TEST(CommandLineRepeat, EndsWhereThePortIsGoneWhateverItWasTold)
{
    RunBench bench("Juniper-60Q");
    bench.order.chips = 0;
    bench.order.keep_going = true;
    bench.recipe.line.port_path = "nowhere";
    EXPECT_EQ(bench.run(), class_of(Result::no_port).exit_code);
    EXPECT_EQ(bench.events("result").size(), 1U);
}
