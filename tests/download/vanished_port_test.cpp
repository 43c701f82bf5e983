// A port whose device is pulled out in the middle of a job: the job ends at once and says why, and what is plugged in
// again belongs to the next one.
#include "bench.h"

using namespace vrk;

namespace {

struct Station : Bench {
    explicit Station(const char* model, bool english = true)
        : Bench(model, english)
    {
        open_code(pattern(0x500));
        form.option("optBeepNo").set_value(true);
    }
    // Pulls the device out as soon as the chip has got that far, and runs to the end of the job.
    void pull_out_when(sim::Chip::State state)
    {
        when(state, [this] {
            ports.remove(port_path);
            pulled_us = loop.now_us();
        });
        press_download();
        power_up_after_ms(300);
        run_until_idle();
    }
    std::int64_t ms_since_it_went() const { return (loop.now_us() - pulled_us) / 1000; }

    std::int64_t pulled_us = 0;
};

struct Case {
    const char* model;
    sim::Chip::State state;
    const char* told_behind_it;
};

class PortGone : public ::testing::TestWithParam<Case> { };

} // namespace

TEST_P(PortGone, EndsTheJobAtOnceAndSaysWhy)
{
    Station bench(GetParam().model);
    bench.pull_out_when(GetParam().state);
    bench.expect_failed_honestly();
    EXPECT_TRUE(bench.report_says("\nThe serial port is gone.\n" + std::string(GetParam().told_behind_it)));
    EXPECT_EQ(bench.times_said("The serial port is gone."), 1);
    EXPECT_FALSE(bench.report_says("lower baud"));
    EXPECT_LT(bench.ms_since_it_went(), 2000) << "its beeps, and the waits that nothing ends";
    bench.ports.add(Bench::port_path, bench.wire);
    bench.expect_a_clean_next_download();
}

// A state begins with the chip's answer on its way, which the tool does not get any more.
INSTANTIATE_TEST_SUITE_P(WhenTheChipIs, PortGone,
    ::testing::Values(Case{"Juniper-8", sim::Chip::State::listening, "Connection failed. (End: "},
        Case{"Juniper-8", sim::Chip::State::called, "Connection failed. (End: "},
        Case{"Juniper-8", sim::Chip::State::named, "Connection failed.(End: "},
        Case{"Juniper-8", sim::Chip::State::speed_set, "Connection failed. (End: "},
        Case{"Juniper-8", sim::Chip::State::erased, "Erasing MCU failed. (End: "},
        Case{"Juniper-8", sim::Chip::State::writing, "Programing failed. (End: "},
        Case{"Juniper-8", sim::Chip::State::code_ended, "Programing failed. (End: "},
        Case{"Juniper-8", sim::Chip::State::options_written, "Setting options failed!"},
        Case{"Birch-8", sim::Chip::State::called, "Connection failed. (End: "},
        Case{"Birch-8", sim::Chip::State::speed_set, "Connection failed. (End: "},
        Case{"Birch-8", sim::Chip::State::writing, "Programing failed. (End: "},
        Case{"Holly-4", sim::Chip::State::testing_rc, "Connection failed.(End: "}),
    [](const auto& row) {
        std::string name = std::string(row.param.model).substr(0, 5) + sim::state_name(row.param.state);
        name.erase(std::remove(name.begin(), name.end(), ' '), name.end());
        return name;
    });

// It used to call for ever: nobody answers on a line that is not there.
TEST(PortGone, WhileTheToolStillCallsEndsTheCalling)
{
    Station bench("Juniper-8", false);
    bench.press_download();
    bench.after_ms(1000, [&bench] { bench.ports.remove(Bench::port_path); });
    bench.run_until_idle();
    EXPECT_LT(bench.loop.now_us(), 2'000'000);
    bench.expect_failed_honestly();
    EXPECT_TRUE(bench.report_says("\n串口已断开。\nConnection failed. / 握手失败 (End: "));
    EXPECT_EQ(bench.dialogs.beeps, 3);
}

TEST(PortGone, WhileTheToolCallsAtAFixedSpeedEndsTheCalling)
{
    Station bench("Juniper-8");
    bench.form.check_box("cheTL").set_value(true);
    bench.press_download();
    bench.after_ms(1000, [&bench] { bench.ports.remove(Bench::port_path); });
    bench.run_until_idle();
    EXPECT_LT(bench.loop.now_us(), 2'000'000);
    EXPECT_TRUE(bench.report_says("\nThe serial port is gone.\nConnection failed. (End: "));
}

TEST(PortGone, EndsARepeatToo)
{
    Station bench("Juniper-8");
    bench.press_download(1);
    bench.after_ms(1000, [&bench] { bench.ports.remove(Bench::port_path); });
    bench.run_until_idle();
    EXPECT_LT(bench.loop.now_us(), 2'000'000);
    EXPECT_TRUE(bench.report_says("The serial port is gone."));
}

TEST(PortGone, UnderAReadingIsToldBeforeItsFailure)
{
    Station bench("Juniper-8");
    bench.after_ms(0, [&bench] { click(bench.shell, bench.form.button("comReadChipLock")); });
    bench.after_ms(1000, [&bench] { bench.ports.remove(Bench::port_path); });
    bench.run_until_idle();
    EXPECT_TRUE(bench.report_says("\nThe serial port is gone.\nConnection failed. (End: "));
    EXPECT_TRUE(bench.form.text_box("textMsg").text().ends_with("\nReading Options failed!."));
}

// Another chip may stand behind the port that comes back.
TEST(PortGone, ThatIsPluggedInAgainIsNotTakenUpByTheSameJob)
{
    Station bench("Juniper-8");
    bench.when(sim::Chip::State::speed_set, [&bench] {
        bench.ports.remove(Bench::port_path);
        bench.ports.add(Bench::port_path, bench.wire);
    });
    bench.press_download();
    bench.power_up_after_ms(300);
    bench.run_until_idle();
    bench.expect_failed_honestly();
    EXPECT_TRUE(bench.report_says("The serial port is gone."));
    EXPECT_EQ(bench.chip.frame_count(0x84), 0);
    bench.expect_a_clean_next_download();
}

TEST(PortGone, BehindACompleteChipTakesNothingBack)
{
    Station bench("Juniper-8");
    bench.pull_out_when(sim::Chip::State::user_code);
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_EQ(bench.count(), 1);
    EXPECT_TRUE(bench.chip_holds_the_code());
}
