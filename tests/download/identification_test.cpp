// Which chip is on the wire, and is it the one that was selected?
#include "bench.h"
#include "link/handshake.h"

using namespace vrk;

namespace {

constexpr const char* wrong_model_en = "MCU Type is incorrect. please select correct MCU type and open the file again.";

void expect_wrong_model_en(Bench& bench)
{
    bench.expect_failed_honestly();
    EXPECT_EQ(bench.times_said(wrong_model_en), 1);
    ASSERT_EQ(bench.dialogs.shown.size(), 1U);
    EXPECT_EQ(bench.dialogs.shown[0].box.text, wrong_model_en);
    EXPECT_EQ(bench.dialogs.beeps, 3);
    EXPECT_FALSE(bench.shell.file_loaded);
    EXPECT_EQ(bench.chip.frame_count(0x84), 0) << "a wrong chip must not be erased";
}

// A connection that only reads, as a button for it runs it.
void read_only(Bench& bench)
{
    bench.after_ms(0, [&bench] { click(bench.shell, bench.form.button("comReadChipLock")); });
    bench.power_up_after_ms(300);
    bench.run_until_idle();
}

sim::ChipSetup setup_with(const char* model, char letter, std::uint8_t version, sim::StatusLayout layout)
{
    sim::ChipSetup setup = setup_of(model);
    setup.letter = letter;
    setup.version = version;
    setup.layout = layout;
    return setup;
}

} // namespace

TEST(WrongModel, EndsTheConnectionBeforeAnythingIsErased)
{
    Bench bench("Juniper-60Q");
    bench.open_code(Bench::pattern(0x300));
    bench.chip.report_id(0xD17C);
    bench.download();
    expect_wrong_model_en(bench);
}

TEST(WrongModel, IsToldInChineseByTwoTexts)
{
    Bench bench("Juniper-60Q", false);
    bench.open_code(Bench::pattern(0x300));
    bench.chip.report_id(0xD17C);
    bench.download();
    bench.expect_failed_honestly();
    EXPECT_EQ(bench.times_said("MCU Type is wrong. / MCU 型号错, 请重选"), 1);
    ASSERT_EQ(bench.dialogs.shown.size(), 1U);
    EXPECT_EQ(bench.dialogs.shown[0].box.text, "Chinese:MCU 型号错。请重选 MCU、重新打开文件。");
    EXPECT_EQ(bench.dialogs.beeps, 3);
}

TEST(WrongModel, MakesTheNextPressAskForAFile)
{
    Bench bench("Juniper-60Q");
    bench.open_code(Bench::pattern(0x300));
    bench.chip.report_id(0xD17C);
    bench.download();
    bench.press_download();
    bench.run_until_idle();
    ASSERT_EQ(bench.dialogs.shown.size(), 2U);
    EXPECT_EQ(bench.dialogs.shown[1].box.text, "    Please open code file.   ");
    EXPECT_EQ(bench.chip.power_ups(), 1);
}

TEST(WrongModel, WithItsFileOpenedAgainGivesAGoodDownloadIntoTheRightChip)
{
    Bench bench("Juniper-60Q");
    bench.open_code(Bench::pattern(0x300));
    bench.chip.report_id(0xD17C);
    bench.download();
    bench.open_code(Bench::pattern(0x300));
    bench.expect_a_clean_next_download();
}

TEST(WrongModel, NeverOverwritesTheSelectedOne)
{
    Bench bench("Juniper-60Q");
    bench.open_code(Bench::pattern(0x300));
    bench.chip.report_id(0xD17C);
    bench.download();
    EXPECT_EQ(bench.shell.selected.mcu_name, "Juniper-60Q");
    EXPECT_EQ(bench.shell.talk().connected.mcu_name, "Juniper-56Q");
    EXPECT_EQ(bench.form.text_box("txtDevice").text(), "Juniper-60Q");
}

TEST(UnknownModel, IsAMismatchWhereTheLetterAsksForTheId)
{
    Bench bench("Juniper-60Q");
    bench.open_code(Bench::pattern(0x300));
    bench.chip.report_id(0xDFFE);
    bench.download();
    expect_wrong_model_en(bench);
    EXPECT_FALSE(bench.report_says("MCU Type is: "));
    EXPECT_TRUE(bench.report_says("MCU Firmware Version: 6.3I"));
}

TEST(LongId, NamesTheChipWhereTheCatalogueHasIt)
{
    sim::ChipSetup setup = setup_of("Juniper-60Q");
    setup.long_id = 0xD17C;
    Bench bench(setup);
    bench.open_code(Bench::pattern(0x300));
    bench.download();
    EXPECT_EQ(bench.shell.talk().chip.target_id_alt, "D17C");
    EXPECT_EQ(bench.shell.talk().connected.mcu_name, "Juniper-56Q");
    EXPECT_TRUE(bench.report_says("MCU Type is: Juniper-56Q"));
}

TEST(LongId, ThatNobodyKnowsChangesNothing)
{
    sim::ChipSetup setup = setup_of("Juniper-60Q");
    setup.long_id = 0x0102;
    Bench bench(setup);
    bench.open_code(Bench::pattern(0x300));
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_EQ(bench.shell.talk().chip.target_id_alt, "0102");
    EXPECT_EQ(bench.shell.talk().connected.mcu_name, "Juniper-60Q");
}

TEST(UnreadableId, EndsTheConnection)
{
    Bench bench("Juniper-60Q");
    bench.open_code(Bench::pattern(0x300));
    bench.chip.report_id_unreadable();
    bench.download();
    bench.expect_failed_honestly();
    EXPECT_EQ(bench.times_said("IAP read MCU ID is error!"), 1);
    EXPECT_EQ(bench.dialogs.beeps, 3);
    EXPECT_EQ(bench.chip.frame_count(), 0);
    EXPECT_TRUE(bench.shell.file_loaded);
    bench.expect_a_clean_next_download();
}

TEST(UnreadableId, IsSaidInTheSameWordsInChinese)
{
    Bench bench("Juniper-60Q", false);
    bench.open_code(Bench::pattern(0x300));
    bench.chip.report_id_unreadable();
    bench.download();
    bench.expect_failed_honestly();
    EXPECT_EQ(bench.times_said("IAP read MCU ID is error!"), 1);
}

TEST(IdByte, BelowD1IsTheWholeId)
{
    Bench bench("Aspen-16");
    bench.open_code(Bench::pattern(0x300));
    bench.chip.report_id(0xD0FF);
    bench.download();
    EXPECT_EQ(bench.shell.talk().chip.target_id_hi, "D0");
    EXPECT_EQ(bench.shell.talk().chip.target_id_lo, "");
}

TEST(IdByte, OfD1TakesASecondOne)
{
    Bench bench("Aspen-16");
    bench.open_code(Bench::pattern(0x300));
    bench.chip.report_id(0xD17C);
    bench.download();
    EXPECT_EQ(bench.shell.talk().chip.target_id_hi, "D1");
    EXPECT_EQ(bench.shell.talk().chip.target_id_lo, "7C");
    EXPECT_EQ(bench.shell.talk().chip.target_name, "Juniper-56Q");
}

TEST(StatusFrame, OfLength25TellsThatThereAreOptionsAndIsNotComparedYet)
{
    Bench bench(setup_with("Birch-8", 'C', 0x42, sim::StatusLayout::old_options));
    bench.open_code(Bench::pattern(0x300));
    bench.press_download();
    bench.power_up_after_ms(300);
    bench.when(sim::Chip::State::speed_set, [&bench] {
        EXPECT_EQ(bench.shell.talk().line.contact_baud, 2400);
        EXPECT_TRUE(bench.shell.talk().chip.status_has_options);
        EXPECT_EQ(bench.shell.talk().chip.target_id_hi.size(), 2U);
        EXPECT_EQ(bench.shell.talk().chip.target_name, "");
    });
    bench.run_until_idle();
    // Without an id the comparison that comes behind the negotiation cannot be passed.
    expect_wrong_model_en(bench);
}

TEST(Version, ZeroGivesAnEmptyTextAndAHeaderWithoutIt)
{
    Bench bench(setup_with("Juniper-60Q", 'I', 0x00, sim::StatusLayout::long_id), false);
    read_only(bench);
    EXPECT_EQ(bench.shell.talk().chip.fw_version, "");
    EXPECT_TRUE(bench.report_says("\nMCU Firmware Version: I\nChinese:MCU 固件版本号: I"));
}

TEST(FirmwareFloor, OfFiveHoldsFromLetterDOnInEnglish)
{
    Bench bench(setup_with("Juniper-60Q", 'I', 0x49, sim::StatusLayout::long_id));
    bench.open_code(Bench::pattern(0x300));
    bench.download();
    bench.expect_failed_honestly();
    ASSERT_EQ(bench.dialogs.shown.size(), 1U);
    EXPECT_EQ(bench.dialogs.shown[0].box.text,
        "Sorry, the current program does not support the MCU or Firmware Version is too low.");
    EXPECT_EQ(bench.chip.frame_count(0x84), 0);
}

TEST(FirmwareFloor, OfFourHoldsUpToLetterCInEnglish)
{
    Bench old_chip(setup_with("Birch-8", 'C', 0x39, sim::StatusLayout::flags));
    old_chip.open_code(Bench::pattern(0x300));
    old_chip.download();
    old_chip.expect_failed_honestly();
    EXPECT_EQ(old_chip.dialogs.shown.size(), 1U);

    Bench new_chip(setup_with("Birch-8", 'C', 0x40, sim::StatusLayout::flags));
    new_chip.open_code(Bench::pattern(0x300));
    new_chip.download();
    EXPECT_TRUE(new_chip.shell.succeeded);
}

TEST(FirmwareFloor, IsNotLookedAtInChinese)
{
    Bench bench(setup_with("Birch-8", 'C', 0x32, sim::StatusLayout::flags), false);
    bench.open_code(Bench::pattern(0x300));
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_EQ(bench.dialogs.shown.size(), 0U);
}

TEST(BootFlags, AskForTheHeaderAndTellTheBootBlock)
{
    sim::ChipSetup setup = setup_of("Birch-8");
    setup.new_boot_block = true;
    setup.boot_size_code = 3;
    Bench bench(setup);
    bench.open_code(Bench::pattern(0x300));
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded) << "with the header required all goes on as before";
    EXPECT_TRUE(bench.shell.talk().rx.header_required);
    EXPECT_TRUE(bench.shell.talk().chip.boot_size_known);
    EXPECT_EQ(bench.shell.talk().chip.boot_size, 0xA00);
}

TEST(BootFlags, OfFourLargeModelsAreNotBelieved)
{
    sim::ChipSetup setup = setup_of("Birch-62");
    setup.boot_size_code = 2;
    Bench bench(setup);
    bench.open_code(Bench::pattern(0x300));
    bench.download();
    EXPECT_TRUE(bench.shell.talk().chip.boot_size_known);
    EXPECT_EQ(bench.shell.talk().chip.boot_size, 0);
}

TEST(BootFlags, AreReadFromVersion26On)
{
    sim::ChipSetup setup = setup_of("Birch-8");
    setup.version = 0x25;
    setup.boot_size_code = 2;
    Bench bench(setup, false);
    bench.open_code(Bench::pattern(0x300));
    bench.download();
    EXPECT_FALSE(bench.shell.talk().chip.boot_size_known);
}

TEST(DoubleSpeed, OfLetterAIsToldAndSaid)
{
    sim::ChipSetup setup = setup_of("Alder-64");
    setup.options[0] = 0xFF;
    Bench bench(setup);
    bench.open_code(Bench::pattern(0x300));
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_TRUE(bench.report_says("Double speed: Yes"));
    EXPECT_TRUE(bench.shell.talk().chip.double_speed_on);
}

TEST(ClockLines, OfEarlyLettersTellBothClocks)
{
    Bench bench("Alder-64", false);
    read_only(bench);
    EXPECT_EQ(bench.times_said("\n内部时钟频率:11.059743M.\n外部时钟频率:11.059743M."), 1);
}

TEST(ClockLines, OfLetterBTellTheInternalOneOnly)
{
    Bench bench("Aspen-16", false);
    read_only(bench);
    EXPECT_EQ(bench.times_said("\n内部时钟频率:11.059743M."), 1);
    EXPECT_FALSE(bench.report_says("外部时钟频率:"));
}

TEST(ClockLines, FromLetterDOnDoNotSayWhichClockItIs)
{
    Bench bench("Juniper-60Q", false);
    read_only(bench);
    EXPECT_EQ(bench.times_said("\n时钟频率:11.059743M."), 1);
    EXPECT_FALSE(bench.report_says("部时钟频率:"));
}

TEST(ReadOnlyConnection, EndsWithTheStatusFrameOfANewerChip)
{
    Bench bench("Juniper-60Q");
    read_only(bench);
    EXPECT_TRUE(bench.shell.talk().chip.target_ok);
    EXPECT_TRUE(bench.shell.talk().chip.options_read_ok);
    EXPECT_EQ(bench.chip.frame_count(0x82), 1);
    EXPECT_EQ(bench.chip.frame_count(), 1) << "it is sent back to its user code, and hears nothing else";
    EXPECT_EQ(bench.chip.violations(), "");
    EXPECT_TRUE(bench.report_says("MCU Type is: Juniper-60Q"));
}

TEST(ReadOnlyConnection, TakesAnyModel)
{
    Bench bench("Juniper-60Q");
    bench.chip.report_id(0xD17C);
    read_only(bench);
    EXPECT_TRUE(bench.shell.talk().chip.target_ok);
    EXPECT_TRUE(bench.report_says("MCU Type is: Juniper-56Q"));
    EXPECT_EQ(bench.dialogs.shown.size(), 0U);
}

TEST(ReadOnlyConnection, TellsAnOlderChipFiveTimesThatTheToolIsReady)
{
    Bench bench("Birch-8");
    read_only(bench);
    EXPECT_TRUE(bench.shell.talk().chip.target_ok);
    EXPECT_EQ(bench.chip.frame_count(0x80), 5);
    EXPECT_EQ(bench.chip.frame_count(0x82), 1);
    EXPECT_EQ(bench.chip.frame_count(), 6);
    EXPECT_EQ(bench.chip.violations(), "");
}

TEST(ShortStatusFrame, IsCompletedByAReadWhereOnlyTheOptionsAreWanted)
{
    Bench bench("Birch-8");
    bench.chip.send_status_as(sim::StatusLayout::brief);
    read_only(bench);
    EXPECT_TRUE(bench.report_says("\nWe are Reading options."));
    EXPECT_FALSE(bench.shell.talk().chip.status_has_options);
    EXPECT_TRUE(bench.shell.talk().chip.options_read_ok);
    EXPECT_TRUE(bench.shell.talk().chip.target_ok);
    EXPECT_EQ(bench.chip.frame_count(0x50), 1);
    EXPECT_EQ(bench.chip.violations(), "");
}

TEST(ShortStatusFrame, WithoutAnAnswerToTheReadEndsAfterTwelveFrames)
{
    Bench bench("Birch-8", false);
    bench.chip.send_status_as(sim::StatusLayout::brief);
    bench.chip.overhear(0x50, 100);
    read_only(bench);
    EXPECT_FALSE(bench.shell.talk().chip.target_ok);
    EXPECT_FALSE(bench.shell.talk().chip.options_read_ok);
    EXPECT_EQ(bench.chip.frame_count(0x50), 12);
    EXPECT_EQ(bench.dialogs.beeps, 3);
    EXPECT_TRUE(bench.report_says("\nWe are Reading options./ 正在读加密位,双倍速,版本号"));
    EXPECT_EQ(bench.times_said("\nConnection failed. / 握手失败 (End: 08:00:"), 1);
    EXPECT_TRUE(bench.buttons_are_free());
}

TEST(ShortStatusFrame, GoesOnAfterThreeLostReads)
{
    Bench bench("Birch-8");
    bench.chip.send_status_as(sim::StatusLayout::brief);
    bench.chip.overhear(0x50, 4);
    read_only(bench);
    EXPECT_TRUE(bench.shell.talk().chip.target_ok);
    EXPECT_EQ(bench.chip.frame_count(0x50), 5);
}

TEST(ShortStatusFrame, ReadIsStoppedByTheUser)
{
    Bench bench("Birch-8");
    bench.chip.send_status_as(sim::StatusLayout::brief);
    bench.chip.overhear(0x50, 100);
    bench.when(sim::Chip::State::called, [&bench] {
        bench.form.button("comStop_Download").set_enabled(true);
        bench.press_stop_after_ms(2000);
    });
    read_only(bench);
    EXPECT_FALSE(bench.shell.talk().chip.target_ok);
    EXPECT_EQ(bench.times_said("\nOperation stopped. "), 1);
    EXPECT_EQ(bench.dialogs.beeps, 1);
    EXPECT_LT(bench.chip.frame_count(0x50), 4);
}
