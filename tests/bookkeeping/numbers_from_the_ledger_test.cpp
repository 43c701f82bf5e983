// Serial numbers that a line draws from its ledger: reserved before the chip is touched, spent before it is called
// good, back when it is not.
#include "line_bench.h"

#include <set>

using namespace vrk;

TEST(LedgerNumbers, AreShownBeforeTheyAreGiven)
{
    LineBench bench;
    bench.numbers_from_the_ledger();
    EXPECT_EQ(bench.next_value(), "00000000041");
    EXPECT_EQ(bench.code(0x200, 0x203), (std::vector<std::uint8_t>{0, 0, 0, 41}));
    EXPECT_EQ(bench.states(), (States{})) << "looking reserves nothing";
    SqlBooks other(bench.address(), "right");
    other.reserve({"pump", bench.shell.code_increase});
    set_checked(bench.shell, bench.form.check_box("cheLedger"), false);
    set_checked(bench.shell, bench.form.check_box("cheLedger"), true);
    EXPECT_EQ(bench.next_value(), "00000000042") << "another station is at work with 41";
}

TEST(LedgerNumbers, GoOneByOneIntoTheChipsOfARepeat)
{
    LineBench bench;
    bench.numbers_from_the_ledger();
    std::vector<int> numbers;
    press_repeat(bench, 3, [&] { numbers.push_back(bench.number_in_chip()); });
    bench.run_until_idle();
    EXPECT_EQ(numbers, (std::vector<int>{41, 42, 43}));
    EXPECT_EQ(bench.states(), (States{"41 spent", "42 spent", "43 spent", "44 free"}))
        << "the fourth was reserved for a chip that never came";
    EXPECT_EQ(bench.next_value(), "00000000044");
    EXPECT_EQ(bench.count(), 3);
}

TEST(LedgerNumbers, AreSpentWhenTheChipIsCalledGood)
{
    LineBench bench;
    bench.numbers_from_the_ledger();
    bench.download();
    EXPECT_TRUE(bench.report_says("Program OK"));
    EXPECT_TRUE(bench.report_says("Number of this chip: 00000000041"));
    EXPECT_EQ(bench.states(), (States{"41 spent"}));
}

TEST(LedgerNumbers, GoBackWhenTheChipIsNotGood)
{
    LineBench bench;
    bench.numbers_from_the_ledger();
    bench.chip.refuse_block(0);
    bench.download();
    bench.expect_failed_honestly();
    EXPECT_EQ(bench.states(), (States{"41 free"}));
    bench.repair();
    bench.download();
    EXPECT_EQ(bench.number_in_chip(), 41);
    EXPECT_EQ(bench.states(), (States{"41 spent"}));
}

TEST(LedgerNumbers, GoBackWhenNoChipComes)
{
    LineBench bench;
    bench.numbers_from_the_ledger();
    bench.press_download();
    bench.press_stop_after_ms(3000);
    bench.after_ms(1000, [&bench] { EXPECT_EQ(bench.states(), (States{"41 reserved"})); });
    bench.run_until_idle();
    EXPECT_EQ(bench.states(), (States{"41 free"}));
}

TEST(LedgerNumbers, AreAtWorkFromTheErasingOn)
{
    LineBench bench;
    bench.numbers_from_the_ledger();
    States while_erased;
    bench.when(sim::Chip::State::erased, [&] { while_erased = bench.states(); });
    bench.download();
    EXPECT_EQ(while_erased, (States{"41 at-work"}));
}

TEST(LedgerNumbers, OfTwoStationsNeverMeet)
{
    LineBench left;
    left.numbers_from_the_ledger();
    LineBench right;
    type_text(right.shell, right.form.text_box("texLedger"), left.address());
    type_text(right.shell, right.form.text_box("texStation"), "right");
    right.numbers_from_the_ledger();
    EXPECT_EQ(right.next_value(), "00000000041") << "both show the same";
    left.download();
    right.download();
    EXPECT_EQ(left.number_in_chip(), 41);
    EXPECT_EQ(right.number_in_chip(), 42);
    EXPECT_EQ(left.states(), (States{"41 spent", "42 spent"}));
}

TEST(LedgerNumbers, OfBothBuffersAreDrawnTogether)
{
    LineBench bench("Juniper-60Q");
    bench.open_data(Bench::pattern(0x100, 2));
    bench.numbers_from_the_ledger();
    type_text(bench.shell, bench.form.text_box("texData_Auto_Increase", 0), "11");
    type_text(bench.shell, bench.form.text_box("texData_Auto_Increase", 1), "2");
    type_text(bench.shell, bench.form.text_box("texData_Auto_Increase", 2), "0099");
    choose_option(bench.shell, bench.form.option("optData_Auto_Increase", AutoIncrease::bcd));
    set_checked(bench.shell, bench.form.check_box("cheData_Auto_Increase"), true);
    const auto data = static_cast<std::size_t>(bench.shell.selected.eeprom_first);
    bench.download();
    EXPECT_EQ(bench.number_in_chip(), 41);
    EXPECT_EQ(bench.flash(data + 0x10, data + 0x11), (std::vector<std::uint8_t>{0x00, 0x99}));
    EXPECT_EQ(bench.states(), (States{"41 spent", "99 spent"}));
}

TEST(LedgerNumbers, ThatHaveNoOrderAreNamedForTheFile)
{
    LineBench bench;
    type_text(bench.shell, bench.form.text_box("texOrder"), "");
    bench.numbers_from_the_ledger();
    bench.download();
    const auto rows = bench.books.numbers({}, true).value;
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_TRUE(rows[0].order.ends_with("code")) << rows[0].order;
}

TEST(LedgerNumbers, WithoutTheirBoxAreAsTheFieldsHaveThem)
{
    LineBench bench;
    take_up_number(bench, "41");
    bench.download();
    EXPECT_EQ(bench.number_in_chip(), 41);
    EXPECT_EQ(bench.next_value(), "00000000042");
    EXPECT_FALSE(std::filesystem::exists(bench.address())) << "nobody has asked for a ledger";
}

// ---- the ledger fails

TEST(LedgerNumbers, NoChipBeginsWithoutTheLedger)
{
    LineBench bench;
    bench.numbers_from_the_ledger();
    bench.download();
    bench.repair();
    bench.take_ledger_away();
    bench.wipe_chip();
    bench.press_download();
    bench.power_up_after_ms(300);
    bench.run_until_idle();
    EXPECT_TRUE(bench.report_says("The ledger is not there any more"));
    EXPECT_TRUE(bench.report_says("No chip was begun."));
    EXPECT_FALSE(bench.shell.succeeded);
    EXPECT_EQ(bench.flash(0, 0)[0], 0xA5) << "the chip is as it was";
    EXPECT_TRUE(bench.buttons_are_free());

    bench.bring_ledger_back();
    bench.repair();
    bench.download();
    EXPECT_EQ(bench.number_in_chip(), 42);
}

TEST(LedgerNumbers, AChipInHandIsFinishedWhenTheLedgerGoesAndNoOtherBegins)
{
    LineBench bench;
    bench.numbers_from_the_ledger();
    bench.record_every_chip();
    bench.when(sim::Chip::State::erased, [&bench] { bench.take_ledger_away(); });
    int chips = 0;
    press_repeat(bench, 3, [&] { ++chips; });
    bench.run_until_idle();
    EXPECT_EQ(chips, 0) << "the line has ended before anybody changed the chip";
    EXPECT_EQ(bench.number_in_chip(), 41);
    EXPECT_EQ(bench.flash(0, 0x1FF), bench.code(0, 0x1FF));
    EXPECT_TRUE(bench.report_says("Program OK"));
    EXPECT_TRUE(bench.report_says("This chip is kept in a file beside the ledger"));
    EXPECT_EQ(bench.count(), 1);

    bench.bring_ledger_back();
    bench.repair();
    bench.chip.on_state_change.clear();
    bench.download();
    EXPECT_EQ(bench.number_in_chip(), 42);
    EXPECT_EQ(bench.states(), (States{"41 spent", "42 spent"}));
    ASSERT_EQ(bench.records().size(), 2U);
    EXPECT_EQ(bench.records()[0].number, "00000000041");
}

TEST(LedgerNumbers, AreNotErasedForWhenSomebodyHasTakenThemAway)
{
    LineBench bench;
    bench.numbers_from_the_ledger();
    bench.wipe_chip();
    bench.when(sim::Chip::State::called, [&bench] { bench.take_ledger_away(); });
    bench.download();
    EXPECT_FALSE(bench.shell.succeeded);
    EXPECT_EQ(bench.flash(0, 0)[0], 0xA5);
    EXPECT_TRUE(bench.report_says("No chip was begun."));
    EXPECT_FALSE(bench.report_says("OK"));
    EXPECT_EQ(bench.count(), 0);
    EXPECT_TRUE(bench.buttons_are_free());
}

TEST(LedgerNumbers, DoNotGoToABoardOrThroughUserCode)
{
    LineBench bench;
    bench.numbers_from_the_ledger();
    click(bench.shell, bench.form.button("com_Demo_DownLoad"));
    bench.run_for_ms(100);
    ASSERT_EQ(bench.dialogs.shown.size(), 1U);
    EXPECT_NE(bench.dialogs.shown[0].box.text.find("over the boot loader only"), std::string::npos);
    EXPECT_EQ(bench.states(), (States{}));
}

TEST(LedgerNumbers, OfAProgramWithoutALedgerAreRefused)
{
    Bench bench("Juniper-8");
    bench.open_code(Bench::pattern(0x300));
    EXPECT_FALSE(bench.form.check_box("cheLedger").enabled());
    bench.form.check_box("cheLedger").set_value(true); // as a settings file may have it
    take_up_number(bench, "41");
    bench.press_download();
    bench.run_until_idle();
    EXPECT_TRUE(bench.report_says("This program has no ledger."));
    EXPECT_FALSE(bench.shell.succeeded);
}
