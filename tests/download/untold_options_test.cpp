// A chip that does not tell its options, or tells nothing at all: nothing is taken as known, and a reading that failed
// is said to have failed.
#include "bench.h"

using namespace vrk;

namespace {

constexpr std::uint8_t write_options_code = 0x8D;

struct Reader : Bench {
    template <typename Chip>
    explicit Reader(const Chip& model)
        : Bench(model)
    {
        open_code(pattern(0x400));
    }
    // Clicks the other button of a pair.
    void turn_over_strip(std::size_t strip)
    {
        for (OptionButton* button : buttons_of(strip)) {
            if (button->visible() && !button->value()) {
                EXPECT_EQ(click(shell, *button), Touch::taken);
                return;
            }
        }
    }
    // Reads the chip by the button of the check page.
    void read_chip()
    {
        loop.call_at(loop.now_us(), [this] { click(shell, form.button("comReadChipLock")); });
        power_up_after_ms(300);
        run_until_idle();
    }
};

} // namespace

// One chip of a repeat tells its options, the next one does not: what the first one told is no news of the second.
TEST(UntoldOptions, AreWrittenAndReadBack)
{
    Reader bench("Juniper-60Q");
    bench.turn_over_strip(5);
    bench.download();
    ASSERT_TRUE(bench.shell.succeeded);
    bench.chip.power_off();
    bench.run_for_ms(100);
    const std::uint8_t good = bench.chip.options()[2];
    bench.chip.preset_option(2, static_cast<std::uint8_t>(~good));
    bench.chip.send_status_as(sim::StatusLayout::flags);
    const int written = bench.chip.frame_count(write_options_code);
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_EQ(bench.chip.frame_count(write_options_code), written + 1);
    EXPECT_EQ(bench.chip.options()[2], good);
    EXPECT_TRUE(bench.chip_holds_the_options());
}

// The options of this model are always written. An answer that does not tell them used to leave those of the call
// standing as if they had been read back.
TEST(UntoldOptions, AreNotTakenAsReadBack)
{
    Reader bench("Fir-28");
    bench.download();
    ASSERT_TRUE(bench.shell.succeeded);
    bench.chip.power_off();
    bench.run_for_ms(100);
    bench.chip.faults.answers_without_options = 100;
    const int written = bench.chip.frame_count(write_options_code);
    bench.download();
    EXPECT_FALSE(bench.shell.succeeded);
    EXPECT_FALSE(bench.shell.talk().options_done);
    EXPECT_EQ(bench.times_said("Setting options failed!"), 1);
    EXPECT_EQ(bench.count(), 1);
    EXPECT_EQ(bench.chip.frame_count(write_options_code), written + 2) << "one a round";
    bench.expect_a_clean_next_download();
}

TEST(UntoldOptions, AreAskedForAgain)
{
    Reader bench("Fir-28");
    bench.chip.faults.answers_without_options = 1;
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_TRUE(bench.chip_holds_the_options());
}

TEST(UntoldOptions, AreReadByTheButtonOfTheCheckPage)
{
    Reader bench("Juniper-60Q");
    bench.chip.send_status_as(sim::StatusLayout::flags);
    bench.chip.preset_option(0, 0x3F);
    bench.read_chip();
    EXPECT_EQ(bench.chip.frame_count(0x50), 1);
    EXPECT_EQ(bench.times_said("Reading Options OK. "), 1);
    EXPECT_EQ(bench.shell.talk().status_bytes[0], 0x3F);
    EXPECT_EQ(bench.form.label("LabLock", 1).caption(), " MCU: Juniper-60Q  Firmware Version: 6.3I");
    EXPECT_NE(bench.form.label("LabLock", 2).caption(), "");
}

TEST(UntoldOptions, OfAReadingAreSaidToBeUnread)
{
    Reader bench("Juniper-60Q");
    bench.chip.send_status_as(sim::StatusLayout::flags);
    bench.chip.faults.answers_without_options = 100;
    bench.read_chip();
    EXPECT_TRUE(bench.form.text_box("textMsg").text().ends_with("\nReading Options failed!."));
}

// The check of the longer frames has two bytes. The first of them used to be taken for the last option.
TEST(OptionWindow, EndsBeforeBothBytesOfTheCheck)
{
    sim::ChipSetup setup = setup_of("Juniper-60Q");
    setup.layout = sim::StatusLayout::flags;
    Reader bench(setup);
    bench.chip.faults.answers_without_options = 100;
    bench.read_chip();
    EXPECT_EQ(bench.shell.talk().status_bytes[0], 0);
    EXPECT_TRUE(bench.shell.talk().told.none());
}

TEST(Reading, SaysThatAReadingFailed)
{
    Reader bench("Juniper-60Q");
    bench.chip.report_id_unreadable();
    bench.read_chip();
    EXPECT_TRUE(
        bench.form.text_box("textMsg").text().ends_with("\nIAP read MCU ID is error!\nReading Options failed!."));
}

TEST(Reading, SaysThatAReadingFailedWithoutAPortToo)
{
    Reader bench("Juniper-60Q");
    bench.ports.refuse_open(Bench::port_path, 100);
    bench.read_chip();
    EXPECT_TRUE(bench.report_says("Open COM port failed!"));
    EXPECT_TRUE(bench.form.text_box("textMsg").text().ends_with("\nReading Options failed!."));
}

TEST(Reading, OfAReadingThatWasStoppedSaysThatAlone)
{
    Reader bench("Juniper-60Q");
    bench.chip.keep_silent();
    bench.after_ms(1000, [&bench] { click(bench.shell, bench.form.button("comStop_Download")); });
    bench.read_chip();
    EXPECT_TRUE(bench.form.text_box("textMsg").text().ends_with("\nOperation stopped. "));
    EXPECT_FALSE(bench.report_says("Reading Options failed!."));
}
