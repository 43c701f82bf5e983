// A download and a repeat in which any one call to the outside fails.
#include "failures/failing_line.h"
#include "production_line.h"

#include <ostream>

using namespace vrk;

namespace {

constexpr std::size_t number_at = 0x203;

struct NumberedLine : FailingLine {
    NumberedLine(const char* model, FailingCalls& its_calls, SettingsOnDisk& its_store, const OwnFolder& folder)
        : FailingLine(model, its_calls, its_store, folder)
    {
        open_by_hand("comLoadFile", folder.file("code.bin", text_of(pattern(0x300))));
        form.check_box("cekReloadFile").set_value(true);
        form.list("comDalay_ReDownLoad").set_text("2");
        take_up_number(*this, "41");
        run_for_ms(1000);
        EXPECT_TRUE(shell.code_increase.valid);
        dialogs.shown.clear();
    }

    int number_in_chip() const { return flash(number_at, number_at).front(); }
    int next_on_disk() const { return static_cast<int>(number_in(store.on_disk("Auto_Increase", "next_value"))); }
    int count_on_disk() const { return static_cast<int>(number_in(store.on_disk("Settings", "Write_OK_Count"))); }
    bool chip_holds(int number) const
    {
        auto wanted = pattern(0x300);
        std::fill_n(wanted.begin() + number_at - 3, 3, std::uint8_t{0});
        wanted[number_at] = static_cast<std::uint8_t>(number);
        return flash(0, 0x2FF) == wanted;
    }
};

// Another chip is put in, and Download is pressed as if nothing had been.
void expect_a_good_second_press(NumberedLine& line, int number, int count)
{
    line.repair();
    line.wipe_chip();
    line.download();
    EXPECT_TRUE(line.shell.succeeded) << "the next press";
    EXPECT_TRUE(line.chip_holds(number));
    EXPECT_EQ(line.next_on_disk(), number + 1);
    EXPECT_EQ(line.count_on_disk(), count);
    line.expect_free();
}

// What the books say follows the chips. Settings that could not be written are told, and behind on the disk.
void expect_true_books(const NumberedLine& line, const FailingCalls& calls, int good_chips)
{
    EXPECT_EQ(line.count(), good_chips);
    if (calls.failed() == "store settings") {
        EXPECT_FALSE(line.dialogs.shown.empty());
    } else {
        EXPECT_EQ(line.next_on_disk(), 41 + good_chips);
        EXPECT_EQ(line.count_on_disk(), good_chips);
    }
}

struct Case {
    std::string name;
    const char* model;
    bool fixed_115200 = false;
    int max_baud = 0; // place in the list; the contact is at 2400
    bool pulled_out = false;
};

void tell_download(const Case& what, FailingCalls& calls)
{
    const OwnFolder folder("failures");
    SettingsOnDisk store;
    NumberedLine line(what.model, calls, store, folder);
    line.form.check_box("cheTL").set_value(what.fixed_115200);
    line.form.list("cobBaudMax").choose(what.max_baud);
    line.pulled_out = what.pulled_out;
    line.press_download();
    line.power_up_after_ms(100);
    calls.counting = true;
    line.run_until_idle_or_given_up();
    calls.counting = false;

    const bool good = line.shell.succeeded;
    EXPECT_EQ(line.report_says("Program OK"), good);
    EXPECT_FALSE(line.report_says("Operation stopped")) << "it would have gone on for ever";
    EXPECT_TRUE(good || !calls.failed().empty()) << "nothing has failed";
    EXPECT_TRUE(good ? line.chip_holds(41) : line.was_told());
    expect_true_books(line, calls, good ? 1 : 0);
    line.expect_free();
    line.plug_in_again();
    expect_a_good_second_press(line, good ? 42 : 41, good ? 2 : 1);
}

void change_chip(NumberedLine& line, bool another)
{
    line.chip.power_off();
    if (!another)
        return line.press_stop_after_ms(100);
    line.wipe_chip();
    line.power_up_after_ms(4000); // when the tool calls again
}

// Three chips by Re-Download; a hand changes them whenever the tool has called one good.
void tell_repeat(FailingCalls& calls)
{
    constexpr int chips = 3;
    const OwnFolder folder("failures");
    SettingsOnDisk store;
    NumberedLine line("Juniper-8", calls, store, folder);
    std::vector<int> good_numbers; // of the chips that the tool has called good
    bool was_good = false;
    line.loop.before_sleep = [&] {
        const bool is_good = line.report_says("Program OK");
        if (is_good && !std::exchange(was_good, is_good)) {
            EXPECT_TRUE(line.chip_holds(line.number_in_chip()));
            good_numbers.push_back(line.number_in_chip());
            line.after_ms(500, [&] { change_chip(line, line.count() < chips); });
        }
        was_good = is_good;
        return false;
    };
    line.press_download(1);
    line.power_up_after_ms(100);
    calls.counting = true;
    line.run_until_idle_or_given_up();
    calls.counting = false;

    const int good_chips = static_cast<int>(good_numbers.size());
    EXPECT_TRUE(good_chips == chips || (line.was_told() && !calls.failed().empty()));
    expect_true_books(line, calls, good_chips);
    line.expect_free();
    for (int i = 0; i < good_chips; ++i)
        EXPECT_EQ(good_numbers[static_cast<std::size_t>(i)], 41 + i);
    line.loop.before_sleep = nullptr;
    expect_a_good_second_press(line, 41 + good_chips, good_chips + 1);
}

void tell_reading(FailingCalls& calls)
{
    const OwnFolder folder("failures");
    SettingsOnDisk store;
    FailingLine line("Juniper-8", calls, store, folder);
    line.after_ms(0, [&line] { click(line.shell, line.form.button("comReadChipLock")); });
    line.power_up_after_ms(100);
    calls.counting = true;
    line.run_until_idle_or_given_up();
    calls.counting = false;
    EXPECT_NE(line.report_says("Reading Options OK."), line.report_says("Reading Options failed!."));
    EXPECT_TRUE(line.report_says("Reading Options OK.") || !calls.failed().empty());
    EXPECT_FALSE(line.report_says("Operation stopped")) << "it would have gone on for ever";
    line.expect_free();

    line.repair();
    line.after_ms(0, [&line] { click(line.shell, line.form.button("comReadChipLock")); });
    line.power_up_after_ms(100);
    line.run_until_idle_or_given_up();
    EXPECT_TRUE(line.report_says("Reading Options OK."));
}

void PrintTo(const Case& what, std::ostream* to) { *to << what.name; }

class DownloadWithAFailingCall : public ::testing::TestWithParam<Case> { };

} // namespace

TEST_P(DownloadWithAFailingCall, TellsTheUserLosesNothingAndTheNextPressIsGood)
{
    fail_each_call([](FailingCalls& calls) { tell_download(GetParam(), calls); }, 60);
}

INSTANTIATE_TEST_SUITE_P(To, DownloadWithAFailingCall,
    ::testing::Values(Case{"Juniper", "Juniper-8"}, Case{"BirchAtAFixedSpeed", "Birch-8", true},
        Case{"JuniperAtTheBaudOfItsContact", "Juniper-8", false, 10}, Case{"Birch", "Birch-8"},
        Case{"Holly", "Holly-4"}, Case{"JuniperPulledOut", "Juniper-8", false, 0, true},
        Case{"BirchPulledOut", "Birch-8", false, 0, true}),
    [](const auto& row) { return row.param.name; });

TEST(RepeatWithAFailingCall, GivesEachNumberOnceAndTheNextPressIsGood) { fail_each_call(tell_repeat, 300); }

TEST(ReadingWithAFailingCall, SaysHowItEndedAndTheNextPressIsGood) { fail_each_call(tell_reading, 20); }
