// The option stage behind the code: what goes into the chip, when nothing does, and how it fails.
#include "frame_tape.h"

#include "link/option_commit.h"
#include "options/option_report.h"
#include "options/status_frame.h"
#include "shell/option_panel.h"

#include <algorithm>

using namespace vrk;

namespace {

constexpr const char* taken = "Setting options OK. ";
constexpr const char* failed = "Setting options failed!";

struct Options : Bench {
    explicit Options(const char* model, bool english = true)
        : Bench(model, english)
    {
        open_code(pattern(static_cast<std::size_t>(std::min(shell.selected.ap_last + 1, 0x400))));
    }
    explicit Options(const sim::ChipSetup& setup)
        : Bench(setup)
    {
        open_code(pattern(0x400));
    }

    // Clicks the other button of a pair.
    void turn_over(std::size_t strip)
    {
        for (OptionButton* button : buttons_of(strip)) {
            if (button->visible() && !button->value()) {
                EXPECT_EQ(click(shell, *button), Touch::taken);
                return;
            }
        }
    }
    void turn_all_over()
    {
        for (std::size_t strip = 0; strip < 14; ++strip)
            turn_over(strip);
    }
    std::uint8_t wanted(std::size_t row) const { return shell.options.bytes[row][0]; }
    void expect_in_the_chip() const { EXPECT_TRUE(chip_holds_the_options()); }
    // The stage has said that it failed; the code is in the chip, and nothing was counted.
    void expect_failed_stage()
    {
        EXPECT_FALSE(shell.succeeded);
        EXPECT_FALSE(shell.talk().options_done);
        EXPECT_EQ(times_said(failed), 1);
        EXPECT_FALSE(report_says("Program OK"));
        EXPECT_FALSE(report_says("Encrypt"));
        EXPECT_EQ(count(), 0);
        EXPECT_TRUE(chip_holds_the_code());
        EXPECT_TRUE(buttons_are_free());
    }
    // Reads the chip by the button of the check page.
    void read_chip()
    {
        chip.power_off();
        run_for_ms(100);
        loop.call_at(loop.now_us(), [this] { click(shell, form.button("comReadChipLock")); });
        power_up_after_ms(300);
        run_until_idle();
    }
};

class EveryFamily : public ::testing::TestWithParam<const char*> { };

std::string test_name(const ::testing::TestParamInfo<const char*>& info)
{
    std::string name = info.param;
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

constexpr std::uint8_t write_options_code = 0x8D;

} // namespace

TEST_P(EveryFamily, TakesEveryChoiceTurnedOver)
{
    Options bench(GetParam());
    bench.turn_all_over();
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_TRUE(bench.shell.talk().options_done);
    EXPECT_EQ(bench.times_said(taken), 1);
    EXPECT_EQ(bench.count(), 1);
    EXPECT_EQ(bench.chip.violations(), "");
    bench.expect_in_the_chip();
    EXPECT_GE(bench.chip.frame_count(write_options_code), 1);
}

TEST_P(EveryFamily, IsToldInChineseToo)
{
    Options bench(GetParam(), false);
    bench.turn_all_over();
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_TRUE(bench.report_says("设置选项成功。"));
    EXPECT_EQ(bench.chip.violations(), "");
    bench.expect_in_the_chip();
}

TEST_P(EveryFamily, ReadsBackWhatWasWritten)
{
    Options bench(GetParam());
    bench.turn_all_over();
    bench.download();
    bench.read_chip();
    EXPECT_TRUE(bench.report_says("Reading Options OK. "));
    const std::vector<int> rows = bench.telling_rows();
    EXPECT_TRUE(std::all_of(rows.begin(), rows.end(),
        [&](std::size_t row) { return bench.shell.talk().status_bytes[row] == bench.wanted(row); }));
}

TEST_P(EveryFamily, ThatCannotWriteItsOptionsFails)
{
    Options bench(GetParam());
    bench.turn_all_over();
    bench.chip.faults.refused_options = 10;
    bench.download();
    bench.expect_failed_stage();
    bench.expect_a_clean_next_download();
    bench.expect_in_the_chip();
}

TEST_P(EveryFamily, ThatIsSilentToTheOptionsFails)
{
    Options bench(GetParam());
    bench.turn_all_over();
    bench.chip.overhear(write_options_code, 100);
    bench.download();
    bench.expect_failed_stage();
    bench.expect_a_clean_next_download();
}

INSTANTIATE_TEST_SUITE_P(OneModelEach, EveryFamily,
    ::testing::Values("Birch-8", "Pine-32", "Rowan-8", "Spruce-16", "Cedar-4R", "Elm-28R", "Fir-20R", "Fir-28R",
        "Hazel-4R", "Juniper-60Q", "Juniper-8L", "Juniper-I32Q", "Larch-12V", "Maple-4S", "Oak-20V", "Poplar-4L",
        "Holly-4", "Willow-12R"),
    test_name);

// ---- nothing to write
// ----------------------------------------------------------------------------------------------------

class Unchanged : public ::testing::TestWithParam<const char*> { };

TEST_P(Unchanged, OptionsSendNoFrameAndTheResultIsGood)
{
    Options bench(GetParam());
    click(bench.shell, bench.form.option("Option0", 1)); // an outer clock
    bench.download();
    ASSERT_TRUE(bench.shell.succeeded);
    const int frames = bench.chip.frame_count(write_options_code);
    bench.chip.power_off();
    bench.run_for_ms(100);
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_TRUE(bench.shell.talk().options_done);
    EXPECT_EQ(bench.chip.frame_count(write_options_code), frames);
    EXPECT_FALSE(bench.report_says(taken));
    EXPECT_EQ(bench.count(), 2);
    EXPECT_EQ(bench.chip.violations(), "");
}

INSTANTIATE_TEST_SUITE_P(OneModelEach, Unchanged,
    ::testing::Values("Birch-8", "Pine-32", "Cedar-4R", "Fir-20R", "Hazel-4R", "Juniper-60Q", "Larch-12V", "Maple-4S",
        "Oak-20V", "Willow-12R"),
    test_name);

TEST(OptionStage, OfAChipOnItsInternalClockAlwaysWrites)
{
    Options bench("Maple-4S");
    ASSERT_EQ(click(bench.shell, bench.form.option("Option0", 0)), Touch::taken);
    bench.download();
    const int frames = bench.chip.frame_count(write_options_code);
    bench.chip.power_off();
    bench.run_for_ms(100);
    bench.download();
    EXPECT_EQ(bench.chip.frame_count(write_options_code), frames + 1);
    EXPECT_EQ(bench.count(), 2);
}

TEST(OptionStage, OfAModelWithoutDataFlashAlwaysWrites)
{
    Options bench("Juniper-I32Q");
    bench.download();
    const int frames = bench.chip.frame_count(write_options_code);
    bench.chip.power_off();
    bench.run_for_ms(100);
    bench.download();
    EXPECT_EQ(bench.chip.frame_count(write_options_code), frames + 1);
}

class NoOptionStage : public ::testing::TestWithParam<const char*> { };

TEST_P(NoOptionStage, SendsNoOptions)
{
    Options bench(GetParam());
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_FALSE(bench.shell.talk().options_done);
    EXPECT_EQ(bench.chip.frame_count(write_options_code), 0);
    EXPECT_FALSE(bench.report_says(taken));
    EXPECT_TRUE(bench.report_says("Program OK"));
}

INSTANTIATE_TEST_SUITE_P(OneModelEach, NoOptionStage,
    ::testing::Values(
        "Aspen-16", "Fir-30R", "Hazel-5R", "Hazel-6R", "Juniper-I62Q", "Maple-5S", "Maple-I6", "Oak-I62W"),
    test_name);

TEST(OptionStage, OfAModelWithFixedOptionsSendsNoEndOfCodeEither)
{
    Options bench("Hazel-5R");
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_EQ(bench.chip.frame_count(0x69), 0);
}

TEST(OptionStage, PassesTwoBitsOfByte1ThatTheChipSetsByItself)
{
    sim::ChipSetup setup = setup_of("Juniper-60Q");
    setup.options[1] &= 0x77;
    setup.fixed_option_bits[1] = 0x88;
    Options bench(setup);
    bench.turn_over(5);
    bench.download();
    EXPECT_NE(bench.chip.options()[1], bench.wanted(1));
    EXPECT_EQ(bench.chip.options()[1] | 0x88, bench.wanted(1) | 0x88);
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_TRUE(bench.report_says(taken));
}

TEST(OptionStage, FailsOnAnyOtherBitThatStays)
{
    sim::ChipSetup setup = setup_of("Juniper-60Q");
    setup.fixed_option_bits[1] = 0x04;
    setup.options[1] &= 0xFB;
    Options bench(setup);
    bench.download();
    EXPECT_NE(bench.chip.options()[1], bench.wanted(1));
    bench.expect_failed_stage();
    EXPECT_FALSE(bench.shell.talk().chip.options_read_ok);
}

TEST(OptionStage, TakesFirmwareBelow32AtItsWord)
{
    sim::ChipSetup setup = setup_of("Juniper-60Q");
    setup.version = 0x31;
    setup.fixed_option_bits[1] = 0x04;
    setup.options[1] &= 0xFB;
    Bench bench(setup, false);
    bench.open_code(Bench::pattern(0x200));
    bench.download();
    EXPECT_TRUE(bench.report_says("设置选项成功。"));
    EXPECT_TRUE(bench.shell.succeeded);
}

TEST(OptionStage, OfFirmwareUpTo36LeavesByte3Alone)
{
    sim::ChipSetup setup = setup_of("Juniper-60Q");
    setup.version = 0x36;
    Bench bench(setup, false);
    bench.open_code(Bench::pattern(0x200));
    bench.download();
    EXPECT_EQ(bench.shell.options.bytes[3][0], 0xFF);
    EXPECT_EQ(bench.chip.options()[3], 0xFF);
}

// ---- tries and failures
// --------------------------------------------------------------------------------------------------

TEST(OptionStage, AnswerNotYetIsFollowedByTheNextTry)
{
    Options bench("Juniper-60Q");
    bench.turn_over(5);
    bench.chip.faults.busy_options = 1;
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_EQ(bench.chip.frame_count(write_options_code), 2);
    bench.expect_in_the_chip();
}

TEST(OptionStage, GivesUpAfterTwoRoundsOfTwoTries)
{
    Options bench("Juniper-60Q");
    bench.turn_over(5);
    bench.chip.faults.busy_options = 100;
    bench.dialogs.beeps = 0;
    bench.download();
    EXPECT_EQ(bench.chip.frame_count(write_options_code), 4);
    EXPECT_EQ(bench.dialogs.beeps, 3);
    bench.expect_failed_stage();
    bench.expect_a_clean_next_download();
}

TEST(OptionStage, OfTheOldestFamilyGivesUpAfterThreeTries)
{
    Options bench("Alder-64", false);
    bench.chip.faults.busy_options = 100;
    bench.download();
    EXPECT_EQ(bench.chip.frame_count(write_options_code), 3);
    EXPECT_EQ(bench.times_said("设置选项失败。"), 1);
    EXPECT_FALSE(bench.shell.succeeded);
}

TEST(OptionStage, OfTheOldestFamilyTellsTheTime)
{
    Options bench("Alder-64", false);
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_TRUE(bench.report_says("设置选项成功。 (End: "));
}

TEST(OptionStage, OfTheOldestFamilyTellsItsDoubleSpeed)
{
    Options bench("Alder-64");
    click(bench.shell, bench.form.option("Option0", 0));
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_TRUE(bench.report_says("Lock Chip, set 6 Clocks OK. (End: "));
}

TEST(OptionStage, WithoutAnAnswerToTheReadBackFails)
{
    Options bench("Juniper-60Q");
    bench.turn_over(5);
    bench.when(sim::Chip::State::options_written, [&] { bench.chip.overhear(0x50, 100); });
    bench.download();
    bench.expect_failed_stage();
    bench.expect_a_clean_next_download();
}

TEST(OptionStage, WhoseSupplyIsCutFailsAndTheNextDownloadIsGood)
{
    Options bench("Juniper-60Q");
    bench.turn_over(5);
    bench.when(sim::Chip::State::options_written, [&] { bench.chip.power_off(); });
    bench.download();
    bench.expect_failed_stage();
    bench.expect_a_clean_next_download();
}

TEST(OptionStage, DamagedAnswerIsTriedAgain)
{
    Options bench("Juniper-60Q");
    bench.turn_over(5);
    bench.when(sim::Chip::State::code_ended, [&] { bench.chip.damage_reply(1); });
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    bench.expect_in_the_chip();
}

TEST(OptionStage, StoppedSaysSoAndBeepsOnce)
{
    Options bench("Juniper-60Q");
    bench.turn_over(5);
    bench.chip.overhear(write_options_code, 100);
    bench.when(sim::Chip::State::code_ended, [&] {
        bench.dialogs.beeps = 0;
        bench.press_stop_after_ms(600);
    });
    bench.download();
    EXPECT_EQ(bench.times_said("Operation stopped. "), 1);
    EXPECT_EQ(bench.dialogs.beeps, 1);
    EXPECT_FALSE(bench.report_says(failed));
    EXPECT_FALSE(bench.shell.succeeded);
    EXPECT_EQ(bench.count(), 0);
    EXPECT_TRUE(bench.buttons_are_free());
    bench.expect_a_clean_next_download();
}

// ---- what the options do
// -------------------------------------------------------------------------------------------------

TEST(OptionsAtWork, DoubleSpeedIsMeasuredAtTheNextConnection)
{
    Options bench("Rowan-8");
    ASSERT_EQ(click(bench.shell, bench.form.option("Option0", 0)), Touch::taken);
    bench.download();
    const float before = bench.shell.talk().chip.mcu_clock_saved;
    bench.read_chip();
    EXPECT_NEAR(bench.shell.talk().chip.mcu_clock_saved / before, 2.0, 0.01);
}

TEST(OptionsAtWork, EraseChoiceTakesTheDataFlashOfTheNextDownload)
{
    Options bench("Juniper-60Q");
    const auto first = static_cast<std::size_t>(bench.shell.selected.eeprom_first);
    bench.chip.preset_flash(first, Bench::pattern(0x200, 9));
    bench.turn_over(5); // erase
    bench.download();
    EXPECT_EQ(bench.flash(first, first + 0x1FF), Bench::pattern(0x200, 9)) << "this download still keeps it";
    bench.chip.power_off();
    bench.run_for_ms(100);
    bench.download();
    EXPECT_NE(bench.flash(first, first + 0x1FF), Bench::pattern(0x200, 9));
}

// ---- the check page
// ---------------------------------------------------------------------------------------------------

TEST(CheckPage, TellsTheChipItsOptionsAndLeavesItAlone)
{
    Options bench("Juniper-60Q");
    bench.chip.preset_option(0, 0x3F);
    const auto options = bench.chip.options();
    const auto flash = bench.chip.flash();
    bench.read_chip();
    EXPECT_TRUE(bench.report_says("MCU Type is: Juniper-60Q"));
    EXPECT_EQ(bench.times_said("Reading Options OK. "), 1);
    EXPECT_EQ(bench.chip.options(), options);
    EXPECT_EQ(bench.chip.flash(), flash);
    EXPECT_EQ(bench.chip.frame_count(0x84), 0);
    EXPECT_EQ(bench.chip.frame_count(write_options_code), 0);
    EXPECT_EQ(bench.form.label("LabLock", 1).caption(), " MCU: Juniper-60Q  Firmware Version: 6.3I");
    EXPECT_EQ(bench.count(), 0);
    EXPECT_EQ(bench.chip.violations(), "");
}

TEST(CheckPage, LeavesThePanelAsItWas)
{
    Options bench("Juniper-60Q");
    bench.turn_all_over();
    const bool first = bench.form.option("Option0", 0).value();
    const bool sixth = bench.form.option("Option5", 0).value();
    bench.read_chip();
    EXPECT_EQ(bench.form.option("Option0", 0).value(), first);
    EXPECT_EQ(bench.form.option("Option5", 0).value(), sixth);
    EXPECT_EQ(panel_state(bench.shell), 0);
    EXPECT_TRUE(bench.form.option("Option0", 0).enabled());
    EXPECT_TRUE(bench.form.button("comReadChipLock").enabled());
    EXPECT_TRUE(bench.buttons_are_free());
    EXPECT_FALSE(bench.shell.port.is_open());
}

TEST(CheckPage, ReadsAChipOfAnotherModelThanTheOneChosen)
{
    Options bench("Juniper-60Q");
    bench.select("Maple-4S");
    bench.read_chip();
    EXPECT_TRUE(bench.report_says("MCU Type is: Juniper-60Q"));
    EXPECT_TRUE(bench.report_says("Reading Options OK. "));
}

TEST(CheckPage, NeedsNoFile)
{
    Bench bench("Juniper-60Q");
    bench.loop.call_at(bench.loop.now_us(), [&] { click(bench.shell, bench.form.button("comReadChipLock")); });
    bench.power_up_after_ms(300);
    bench.run_until_idle();
    EXPECT_TRUE(bench.report_says("Reading Options OK. "));
    EXPECT_EQ(bench.dialogs.shown.size(), 0U);
}

TEST(CheckPage, OfTheOldestChipsTellsWhatTheirFirmwareKnows)
{
    Options bench("Alder-64", false);
    bench.read_chip();
    EXPECT_TRUE(bench.report_says("读选项成功."));
    EXPECT_TRUE(bench.report_says("Double speed: No"));
    EXPECT_TRUE(bench.form.button("comReadChipLock").enabled());
}

TEST(CheckPage, OfLetterBReadsTheVersionOnly)
{
    Options bench("Aspen-16"); // has it
    bench.read_chip();
    EXPECT_TRUE(bench.report_says("Read MCU Firmware Version OK."));
    EXPECT_FALSE(bench.report_says("Reading Options OK. "));
}

TEST(CheckPage, StoppedBeforePowerUpLeavesTheButtonsFree)
{
    Options bench("Juniper-60Q");
    bench.loop.call_at(bench.loop.now_us(), [&] { click(bench.shell, bench.form.button("comReadChipLock")); });
    bench.press_stop_after_ms(1000);
    bench.run_until_idle();
    EXPECT_TRUE(bench.report_says("Operation stopped. "));
    EXPECT_FALSE(bench.report_says("OK"));
    EXPECT_TRUE(bench.form.button("comReadChipLock").enabled());
    EXPECT_TRUE(bench.buttons_are_free());
    EXPECT_EQ(panel_state(bench.shell), 0);
    bench.expect_a_clean_next_download();
}

TEST(CheckPage, CannotBePressedDuringADownload)
{
    Options bench("Juniper-60Q");
    bool enabled = true;
    bench.after_ms(200, [&] { enabled = bench.form.button("comReadChipLock").enabled(); });
    bench.download();
    EXPECT_FALSE(enabled);
    EXPECT_TRUE(bench.form.button("comReadChipLock").enabled());
}

// ---- the last family
// --------------------------------------------------------------------------------------------------

namespace {

// No model of it stands in the catalogue: its rules are put on by hand, and its chip answers with an id that nobody
// knows, so that the rules stay those of the model chosen.
struct LastFamily : Bench {
    LastFamily()
        : Bench(setup(), false)
    {
        shell.selected.series = 18;
        shell.selected.mcu_id = "FE01";
        open_code(pattern(0x200));
    }
    static sim::ChipSetup setup()
    {
        sim::ChipSetup setup = setup_of("Juniper-60Q");
        setup.model.series = 18;
        setup.model.id = "FE01";
        setup.letter = 'Z';
        setup.version = 0x31; // older than the firmware whose rows are compared
        return setup;
    }
};

} // namespace

TEST(LastFamily, IsToldItsSixRowsAndNoClockWhereItHasItsOwn)
{
    LastFamily bench;
    FrameTape tape(bench);
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_TRUE(bench.report_says("设置选项成功。"));
    ASSERT_EQ(tape.frames(write_options_code).size(), 1U);
    const auto frame = tape.frames(write_options_code)[0];
    EXPECT_EQ((std::vector<std::uint8_t>(frame.begin() + 12, frame.begin() + 16)), std::vector<std::uint8_t>(4, 0xFF));
    EXPECT_EQ(bench.chip.violations(), "");
    for (const std::size_t row : {0U, 3U, 4U, 5U, 8U, 9U})
        EXPECT_EQ(bench.chip.options()[row], bench.shell.options.bytes[row][0]) << row;
}

TEST(LastFamily, IsToldItsClockWhereItHasNone)
{
    LastFamily bench;
    bench.chip.preset_option(3, 0xFD);
    FrameTape tape(bench);
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    ASSERT_EQ(tape.frames(write_options_code).size(), 1U);
    const auto frame = tape.frames(write_options_code)[0];
    const int clock = frame[12] << 24 | frame[13] << 16 | frame[14] << 8 | frame[15];
    EXPECT_NEAR(clock, 11059200, 11059200 / 100);
    EXPECT_EQ(bench.chip.violations(), "");
}

TEST(LastFamily, ThatRefusesFailsLikeTheOthers)
{
    LastFamily bench;
    bench.chip.overhear(write_options_code, 100);
    bench.download();
    EXPECT_FALSE(bench.shell.succeeded);
    EXPECT_EQ(bench.times_said("设置选项失败。"), 1);
    EXPECT_EQ(bench.chip.frame_count(write_options_code), 4);
    EXPECT_EQ(bench.count(), 0);
}
