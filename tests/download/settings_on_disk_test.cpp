// What a production line has used up is on the disk before anybody is told, and a disk that fails ends it in time.
#include "production_line.h"
#include "settings_on_disk.h"
#include "shell/project.h"

#include <set>

using namespace vrk;

namespace {

const SettingsFault& full = SettingsOnDisk::full;
const SettingsFault held = {SettingsFault::Kind::held, "/home/line/VRK-ISP.ini", ""};

// Numbered chips, one after the other, by Re-Download; the settings outlive the program.
struct NumberedLine : Bench {
    std::vector<int> numbers; // of the chips that the tool has called good, in order

    explicit NumberedLine(SettingsStore& store)
        : Bench(setup_of("Juniper-8"), true, &store)
    {
        open_code(pattern(0x300));
        form.list("comDalay_ReDownLoad").set_text("2");
        run_for_ms(1000); // the save of the start
    }
    void number(const char* next) { take_up_number(*this, next); }
    void repeat(int chips)
    {
        press_repeat(*this, chips, [this] { numbers.push_back(flash(0x203, 0x203).front()); });
    }
    std::size_t boxes_about(std::string_view text) const
    {
        return static_cast<std::size_t>(std::ranges::count_if(
            dialogs.shown, [text](const auto& one) { return one.box.text.find(text) != std::string::npos; }));
    }
};

} // namespace

// For 155 ms behind "Program OK" the number was not on the disk: a chip cut off there got a twin.
TEST(SettingsOnDiskStory, NumberAndCountAreOnTheDiskBeforeTheReport)
{
    SettingsOnDisk store;
    NumberedLine bench(store);
    bench.number("41");
    bool written = false;
    store.on_write = [&] {
        if (written || number_in(store.on_disk("Auto_Increase", "next_value")) != 42)
            return;
        written = true;
        EXPECT_EQ(store.on_disk("Settings", "Write_OK_Count"), "1") << "both together";
        EXPECT_FALSE(bench.report_says("Program OK"));
        EXPECT_EQ(bench.count(), 0) << "the field follows";
        EXPECT_EQ(bench.dialogs.beeps, 0);
        EXPECT_EQ(bench.code(0x203, 0x203).front(), 42) << "the next one is stamped";
    };
    bench.download();
    EXPECT_TRUE(written);
    EXPECT_TRUE(bench.report_says("Program OK"));
    EXPECT_EQ(bench.count(), 1);
    EXPECT_EQ(bench.flash(0x203, 0x203).front(), 41);
}

// Cut off at any moment of the line, the next run goes on with a number that no chip called good has.
TEST(SettingsOnDiskStory, WhoIsCutOffAtAnyMomentGivesNoNumberTwice)
{
    SettingsOnDisk store;
    std::set<int> called_good;
    for (int cut_ms = 500; cut_ms < 12'000; cut_ms += 137) {
        SettingsOnDisk::Values at_the_cut;
        {
            NumberedLine bench(store);
            bench.number(store.get("Auto_Increase", "next_value", "1").c_str());
            bench.repeat(2);
            bool cut = false;
            bool was_good = false;
            bench.loop.before_sleep = [&] {
                const bool is_good = bench.report_says("Program OK");
                if (!cut && is_good && !was_good) {
                    EXPECT_TRUE(called_good.insert(bench.flash(0x203, 0x203).front()).second) << "cut at " << cut_ms;
                }
                was_good = is_good;
                return false;
            };
            bench.after_ms(cut_ms, [&] {
                cut = true;
                at_the_cut = store.disk;
            });
            bench.run_until_idle();
        }
        store = SettingsOnDisk(at_the_cut);
    }
    EXPECT_GT(called_good.size(), 50U);
}

TEST(SettingsOnDiskStory, ThatCannotBeWrittenEndARepeatWithNumbersAfterTheChipInHand)
{
    SettingsOnDisk store;
    NumberedLine bench(store);
    bench.number("41");
    bench.after_ms(3000, [&] { store.broken = full; }); // while the first chip is written or before the second
    bench.repeat(5);
    bench.run_until_idle();
    bench.run_for_ms(1000);
    const auto good = bench.numbers.size();
    EXPECT_GE(good, 1U);
    EXPECT_LE(good, 2U);
    EXPECT_EQ(bench.count(), static_cast<int>(good)) << "the chip in hand is good";
    ASSERT_EQ(bench.dialogs.shown.size(), 1U) << "told once";
    EXPECT_EQ(bench.dialogs.shown[0].box.text,
        "The settings can not be stored, and automatic increment can not be used.\n/home/line/VRK-ISP.ini\n"
        "No space left on device");
    EXPECT_TRUE(bench.buttons_are_free());
}

TEST(SettingsOnDiskStory, ThatCannotBeWrittenStartNoDownloadWithANumberUntilTheyCan)
{
    SettingsOnDisk store;
    NumberedLine bench(store);
    bench.number("41");
    store.broken = full;
    bench.download();
    EXPECT_EQ(bench.count(), 1);
    bench.repair();
    bench.wipe_chip();
    const int frames = bench.chip.frame_count();

    bench.press_download();
    bench.power_up_after_ms(300);
    bench.run_for_ms(3000);
    EXPECT_EQ(bench.chip.frame_count(), frames);
    EXPECT_TRUE(bench.report_says("The settings can not be stored. Nothing was programmed."));
    EXPECT_EQ(bench.dialogs.shown.size(), 2U) << "told at the press, again";
    EXPECT_TRUE(bench.buttons_are_free());

    store.broken.reset();
    bench.repair();
    bench.download();
    EXPECT_EQ(bench.flash(0x203, 0x203).front(), 42);
    EXPECT_EQ(number_in(store.on_disk("Auto_Increase", "next_value")), 43);
}

TEST(SettingsOnDiskStory, ThatCannotBeWrittenAreToldOnceOnALineWithoutNumbersWhichGoesOn)
{
    SettingsOnDisk store;
    NumberedLine bench(store);
    store.broken = full;
    bench.repeat(3);
    bench.run_until_idle();
    EXPECT_EQ(bench.count(), 3);
    EXPECT_EQ(bench.dialogs.shown.size(), 1U);
    EXPECT_EQ(bench.boxes_about("No space left on device"), 1U);
}

TEST(SettingsOnDiskStory, OfASecondProgramAreItsOwnAndItsNumberBoxesStayOff)
{
    SettingsOnDisk store;
    store.refused = held;
    NumberedLine bench(store);
    EXPECT_EQ(bench.boxes_about("Another program uses these settings."), 1U) << "told at the start";
    EXPECT_EQ(bench.dialogs.shown.size(), 1U);
    bench.number("41");
    EXPECT_FALSE(bench.form.check_box("cheAuto_Increase").value());
    EXPECT_FALSE(bench.shell.code_increase.valid);
    EXPECT_EQ(bench.boxes_about("automatic increment can not be used"), 2U) << "and why the box is off";
    bench.download();
    EXPECT_EQ(bench.count(), 1) << "chips without numbers go on";
    EXPECT_EQ(bench.dialogs.shown.size(), 2U);
}

// A project's number would be on every chip, since nobody could move it on.
TEST(SettingsOnDiskStory, OfASecondProgramTakeUpNoNumberOfAProject)
{
    SettingsOnDisk store;
    NumberedLine bench(store);
    bench.number("41");
    const std::string project = ::testing::TempDir() + std::to_string(getpid()) + "numbered.VRK";
    save_project(bench.shell, project);
    store.refused = held;
    bench.dialogs.shown.clear();
    open_project(bench.shell, project);
    std::remove(project.c_str());
    EXPECT_EQ(bench.boxes_about("automatic increment can not be used"), 1U);
    EXPECT_FALSE(bench.form.check_box("cheAuto_Increase").value());
    EXPECT_FALSE(bench.shell.code_increase.valid);

    bench.dialogs.shown.clear();
    bench.download();
    EXPECT_EQ(bench.chip.frame_count(), 0);
    EXPECT_EQ(bench.boxes_about("The automatic increment of the project is not in use. Nothing was programmed."), 1U);

    store.refused.reset(); // the other program has ended, and this one is asked again
    set_locked(bench.shell, false);
    set_checked(bench.shell, bench.form.check_box("cheAuto_Increase"), true);
    bench.repair();
    bench.download();
    EXPECT_EQ(bench.flash(0x203, 0x203).front(), 41);
}

TEST(SettingsOnDiskStory, HoldThePathOfAFileAndAClearedCountWhenTheEventEnds)
{
    SettingsOnDisk store;
    NumberedLine bench(store);
    take_path(bench.shell, BufferKind::code, "/jobs/lamp.hex");
    EXPECT_EQ(store.on_disk("Settings", "FilePath"), "/jobs/lamp.hex");
    take_path(bench.shell, BufferKind::data, "/jobs/lamp.bin");
    EXPECT_EQ(store.on_disk("Settings", "DataFilePath"), "/jobs/lamp.bin");
    bench.form.text_box("txtWrite_OK_Count").set_text("7");
    bench.dialogs.replies = {Reply::yes};
    click(bench.shell, bench.form.button("comClear_OK_Count"));
    EXPECT_EQ(store.on_disk("Settings", "Write_OK_Count"), "0");
    bench.number("41");
    EXPECT_EQ(store.on_disk("Auto_Increase", "next_value"), "41");
}
