// The verdict over the report: one word that is true at every moment, the last chip's word below it, good and bad
// counted, and how far the writing has come.
#include "production_line.h"

using namespace vrk;

namespace {

struct VerdictBench : Bench {
    explicit VerdictBench(const char* model = "Juniper-8", bool english = true)
        : Bench(model, english)
    {
        open_code(pattern(0x1800));
        form.list("comDalay_ReDownLoad").set_text("2");
    }
    std::string word() const { return form.label("labVerdict").caption(); }
    std::string last() const { return form.label("labLastVerdict").caption(); }
    std::string bad() const { return form.text_box("txtWrite_Bad_Count").text(); }
    void note_word_after_ms(std::int64_t ms)
    {
        after_ms(ms, [this] { words.push_back(word()); });
    }
    Tone tone_of(std::string_view text) const
    {
        const TextBox& report = form.text_box("textMsg");
        const std::size_t at = report.text().find(text);
        EXPECT_NE(at, std::string::npos) << text;
        for (const TextBox::Toned& part : report.toned()) {
            if (static_cast<int>(at) >= part.from && static_cast<int>(at) < part.end)
                return part.tone;
        }
        return Tone::plain;
    }

    std::vector<std::string> words;
};

} // namespace

TEST(Verdict, WaitsForPowerWorksAndIsGood)
{
    VerdictBench bench;
    EXPECT_EQ(bench.word(), "READY");
    bench.press_download();
    bench.power_up_after_ms(6000);
    bench.note_word_after_ms(5500); // the advice stands since a second and a half
    bench.note_word_after_ms(7500);
    bench.run_until_idle();
    EXPECT_EQ(bench.words, (std::vector<std::string>{"WAITING", "WORKING"}));
    EXPECT_EQ(bench.word(), "GOOD");
    EXPECT_TRUE(bench.last().starts_with("Last chip: GOOD  ")) << bench.last();
    EXPECT_EQ(bench.bad(), "0");
}

TEST(Verdict, SpeaksChineseToo)
{
    VerdictBench bench("Juniper-8", false);
    EXPECT_EQ(bench.word(), "就绪");
    bench.download();
    EXPECT_EQ(bench.word(), "合格");
    EXPECT_TRUE(bench.last().starts_with("上一片: 合格  ")) << bench.last();
}

TEST(Verdict, AChipThatRefusesABlockIsBadAndCounted)
{
    VerdictBench bench;
    bench.chip.refuse_block(2);
    bench.download();
    EXPECT_EQ(bench.word(), "BAD");
    EXPECT_TRUE(bench.last().starts_with("Last chip: BAD  ")) << bench.last();
    EXPECT_EQ(bench.bad(), "1");
    EXPECT_EQ(bench.count(), 0);
    EXPECT_EQ(bench.shell.platform.settings.get("Settings", "Write_Bad_Count", ""), "1");
}

TEST(Verdict, AGoodChipsWordIsGoneAsSoonAsTheNextPressCannotBeCarriedOut)
{
    VerdictBench bench;
    bench.download();
    ASSERT_EQ(bench.word(), "GOOD");
    clear_buffer(bench.shell, 0, bench.shell.code_buffer);
    bench.press_download(); // no file is open: nothing goes into the chip that lies there now
    bench.run_until_idle();
    EXPECT_EQ(bench.word(), "NOT DONE");
    EXPECT_TRUE(bench.last().starts_with("Last chip: GOOD  ")) << bench.last();
    EXPECT_EQ(bench.bad(), "0") << "no chip was touched";
}

TEST(Verdict, OfALineStaysBelowWhileTheNextChipIsAwaited)
{
    VerdictBench bench;
    int chips = 0;
    std::vector<std::string> awaited;
    press_repeat(bench, 2, [&] { ++chips; });
    bench.when(sim::Chip::State::user_code, [&bench, &awaited] {
        for (int s = 1; s <= 6; ++s)
            bench.after_ms(1000 * s, [&bench, &awaited] {
                if (bench.word() == "WAITING")
                    awaited.push_back(bench.last().substr(0, 15));
            });
    });
    bench.run_until_idle();
    EXPECT_EQ(chips, 2);
    ASSERT_FALSE(awaited.empty());
    EXPECT_EQ(awaited.front(), "Last chip: GOOD");
    EXPECT_TRUE(bench.last().starts_with("Last chip: GOOD  ")) << "the stop that ended the line judged no chip";
}

TEST(Verdict, AStopWhileAChipIsWrittenSaysOfItThatItWasStopped)
{
    VerdictBench bench;
    bench.press_download();
    bench.power_up_after_ms(500);
    bench.when(sim::Chip::State::writing, [&bench] { bench.press_stop_after_ms(100); });
    bench.run_until_idle();
    EXPECT_EQ(bench.word(), "STOPPED");
    EXPECT_TRUE(bench.last().starts_with("Last chip: STOPPED  ")) << bench.last();
    EXPECT_EQ(bench.bad(), "0");
}

TEST(Verdict, AStopWhileNobodyAnswersLeavesTheLastChipsWord)
{
    VerdictBench bench;
    bench.download();
    const std::string last = bench.last();
    bench.press_download();
    bench.press_stop_after_ms(2000);
    bench.run_until_idle();
    EXPECT_EQ(bench.word(), "STOPPED");
    EXPECT_EQ(bench.last(), last);
}

TEST(Verdict, ReadingTheOptionsJudgesNoChip)
{
    VerdictBench bench;
    bench.after_ms(0, [&bench] { click(bench.shell, bench.form.button("comReadChipLock")); });
    bench.power_up_after_ms(500);
    bench.run_until_idle();
    EXPECT_EQ(bench.word(), "DONE");
    EXPECT_EQ(bench.last(), "");
}

TEST(Verdict, TheCountsAreClearedTogether)
{
    VerdictBench bench;
    bench.chip.refuse_block(0);
    bench.download();
    ASSERT_EQ(bench.bad(), "1");
    bench.dialogs.replies.push_back(Reply::yes);
    click(bench.shell, bench.form.button("comClear_OK_Count"));
    EXPECT_EQ(bench.bad(), "0");
    EXPECT_EQ(bench.shell.platform.settings.get("Settings", "Write_Bad_Count", ""), "0");
}

namespace {

struct ToldLeft {
    int percent = 0;
    int seconds = 0;
    std::int64_t at_us = 0;
};

// What the window tells as soon as it tells at least `percent` and a time; percent 0: it never did.
ToldLeft first_told(const std::vector<ToldLeft>& told, int percent)
{
    const auto found =
        std::find_if(told.begin(), told.end(), [=](const ToldLeft& left) { return left.percent >= percent; });
    return found != told.end() ? *found : ToldLeft{};
}

} // namespace

// A worker plans by it: what is told has to be what it takes, on this line at this baud.
TEST(Verdict, TellsPercentAndTheTimeThatIsLeft)
{
    VerdictBench bench("Juniper-60");
    bench.open_code(VerdictBench::pattern(0xEE00));
    bench.form.list("cobBaudMax").set_text("57600");
    std::string at_first;
    std::vector<ToldLeft> told;
    std::int64_t all_written_us = 0;
    bench.press_download();
    bench.power_up_after_ms(500);
    bench.when(sim::Chip::State::writing, [&] {
        bench.after_ms(300, [&] { at_first = bench.form.label("labTimeLeft").caption(); });
        for (int ms = 600; ms < 60'000; ms += 10)
            bench.after_ms(ms, [&] {
                ToldLeft left;
                int minutes = 0;
                const std::string& text = bench.form.label("labTimeLeft").caption();
                if (std::sscanf(text.c_str(), "%d %% %d:%d", &left.percent, &minutes, &left.seconds) != 3)
                    return;
                left.seconds += minutes * 60;
                left.at_us = bench.loop.now_us();
                told.push_back(left);
                if (left.percent == 100 && all_written_us == 0)
                    all_written_us = left.at_us;
            });
    });
    bench.run_until_idle();
    EXPECT_EQ(bench.word(), "GOOD");
    EXPECT_TRUE(at_first.ends_with(" %")) << at_first << ": the pace is not known yet";
    EXPECT_EQ(bench.form.label("labTimeLeft").caption(), "") << "nothing is left";
    ASSERT_NE(all_written_us, 0);
    for (const int percent : {10, 25, 50, 75, 90}) {
        const ToldLeft left = first_told(told, percent);
        ASSERT_EQ(left.percent, percent);
        const double taken_s = static_cast<double>(all_written_us - left.at_us) / 1e6;
        EXPECT_NEAR(left.seconds, taken_s, std::max(1.0, 0.15 * taken_s)) << percent << " %";
    }
}

// Code and EEPROM are two ranges on the wire and one time to wait.
TEST(Verdict, ThePercentOfCodeAndEepromTogetherNeverGoesBack)
{
    VerdictBench bench("Fir-8R");
    bench.open_data(VerdictBench::pattern(0x1000));
    std::vector<int> percents;
    bench.press_download();
    bench.power_up_after_ms(500);
    bench.when(sim::Chip::State::writing, [&bench, &percents] {
        for (int ms = 20; ms < 4000; ms += 20)
            bench.after_ms(ms, [&bench, &percents] {
                const std::string& text = bench.form.label("labTimeLeft").caption();
                if (!text.empty())
                    percents.push_back(std::stoi(text));
            });
    });
    bench.run_until_idle();
    ASSERT_EQ(bench.word(), "GOOD");
    ASSERT_GT(percents.size(), 20U);
    EXPECT_TRUE(std::is_sorted(percents.begin(), percents.end()));
    EXPECT_LT(percents.front(), 10);
    EXPECT_GT(percents.back(), 90);
}

TEST(Verdict, TheBytesOfTheLastChipAreGoneWhenTheNextIsAwaited)
{
    VerdictBench bench;
    bench.download();
    ASSERT_EQ(bench.form.label("labKbyte").caption(), "6.000K");
    std::string waiting = "?";
    bench.press_download();
    bench.after_ms(1000, [&bench, &waiting] { waiting = bench.form.label("labKbyte").caption(); });
    bench.press_stop_after_ms(2000);
    bench.run_until_idle();
    EXPECT_EQ(waiting, "");
}

TEST(Verdict, TheNumberInAChipStandsInItsReport)
{
    VerdictBench bench;
    take_up_number(bench, "41", AutoIncrease::hex);
    bench.download();
    EXPECT_TRUE(bench.report_says("\nNumber of this chip: 41"));
    EXPECT_NE(bench.last().find("  41"), std::string::npos);
    EXPECT_EQ(bench.flash(0x200, 0x203), (std::vector<std::uint8_t>{0, 0, 0, 41}));
}

TEST(Verdict, InTheReportSuccessFailureAndAdviceHaveTheirTones)
{
    VerdictBench good;
    good.press_download();
    good.power_up_after_ms(6000);
    good.after_ms(5000, [&good] { EXPECT_EQ(good.tone_of("Connection is failed"), Tone::advice); });
    good.run_until_idle();
    EXPECT_EQ(good.tone_of("Program OK"), Tone::good);
    EXPECT_EQ(good.tone_of("Encrypt OK"), Tone::good);
    EXPECT_EQ(good.tone_of("Current Baud"), Tone::plain);

    VerdictBench bad;
    bad.chip.refuse_block(2);
    bad.download();
    EXPECT_EQ(bad.tone_of("Programing failed."), Tone::bad);
    EXPECT_EQ(bad.tone_of("Try to use the lower baud"), Tone::advice);
}
