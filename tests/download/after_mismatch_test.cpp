// What a wrong chip on the wire must not leave behind.
#include "bench.h"

using namespace vrk;

// The panel used to stay locked, and without a file neither Download nor any other button led out of it.
TEST(AfterAMismatch, TheFileCanBeOpenedAgain)
{
    Bench bench("Juniper-60Q");
    bench.open_code(Bench::pattern(600));
    bench.chip.report_id(0xD11E);
    bench.download();
    EXPECT_FALSE(bench.shell.succeeded);
    EXPECT_FALSE(bench.shell.file_loaded);
    EXPECT_TRUE(bench.form.button("comLoadFile").enabled());
    EXPECT_TRUE(bench.form.text_box("txtDevice").enabled());
    EXPECT_EQ(panel_state(bench.shell), 0);
}

// The block size of the chip that was there by mistake used to stay, and no right chip of the oldest family matched
// then.
TEST(AfterAMismatch, ARightChipOfTheOldestFamilyIsTaken)
{
    Bench bench("Alder-64");
    bench.shell.last_talk.identified = true; // as any other chip leaves it
    bench.shell.last_talk.connected.series = 7;
    bench.open_code(Bench::pattern(600));
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_EQ(bench.flash(0, 599), bench.code(0, 599));
}

// The flag used to be read after the report that it belongs in.
TEST(ClockReport, OfADoubledClockSaysTwiceTheMeasuredOne)
{
    sim::ChipSetup setup = setup_of("Juniper-60Q");
    setup.clock_doubled = true;
    Bench bench(setup);
    bench.open_code(Bench::pattern(600));
    bench.download();
    EXPECT_TRUE(bench.report_says("MCU Clock:22.1194"));
}

// The user was told to open the file again, and the next press went on without it.
TEST(AfterAMismatch, AStopInTheBeepsStillAsksForTheFile)
{
    Bench bench("Juniper-60Q");
    bench.open_code(Bench::pattern(600));
    bench.chip.report_id(0xD17C);
    bench.press_download();
    bench.power_up_after_ms(300);
    bench.when(sim::Chip::State::called, [&bench] { bench.press_stop_after_ms(200); });
    bench.run_until_idle();
    EXPECT_EQ(bench.dialogs.beeps, 3);
    EXPECT_FALSE(bench.shell.file_loaded);
    EXPECT_FALSE(bench.shell.succeeded);
}
