// Serial numbers on a production line: each good chip has its own, and a chip that fails uses none up.
#include "production_line.h"

#include <iterator>

using namespace vrk;

namespace {

using Numbers = std::vector<std::vector<std::uint8_t>>;

// A hand at the line with numbered chips. Four bytes up to address 0x0203 hold the number.
struct NumberedLine : Bench {
    Numbers numbers; // of the chips that have left the socket as good ones

    explicit NumberedLine(const char* model, int system = AutoIncrease::hex)
        : Bench(model)
    {
        open_code(pattern(0x300));
        take_up_number(*this, "41", system);
        form.list("comDalay_ReDownLoad").set_text("2");
    }
    // Chip after chip by Re-Download; the user stops once `chips` have gone through.
    void run(int chips)
    {
        press_repeat(*this, chips, [this] { numbers.push_back(flash(0x200, 0x203)); });
        run_until_idle();
    }
    std::string stored_next() { return shell.platform.settings.get("Auto_Increase", "next_value", "none"); }
};

} // namespace

TEST(SerialNumbers, EveryChipOfALineHasItsOwn)
{
    NumberedLine bench("Juniper-8");
    bench.run(3);
    EXPECT_EQ(bench.numbers, (Numbers{{0, 0, 0, 41}, {0, 0, 0, 42}, {0, 0, 0, 43}}));
    EXPECT_EQ(bench.count(), 3);
    EXPECT_EQ(bench.form.text_box("texAuto_Increase", 2).text(), "00000000044");
    EXPECT_EQ(bench.stored_next(), "00000000044");
    EXPECT_EQ(bench.code(0x200, 0x203), (std::vector<std::uint8_t>{0, 0, 0, 44}));
    EXPECT_TRUE(bench.shell.code_increase.valid);
    EXPECT_EQ(bench.chip.violations(), "");
}

TEST(SerialNumbers, GoIntoOlderChipsInTheOtherSystemsToo)
{
    NumberedLine bcd("Birch-8", AutoIncrease::bcd);
    bcd.run(2);
    EXPECT_EQ(bcd.numbers, (Numbers{{0, 0, 0, 0x41}, {0, 0, 0, 0x42}}));
    NumberedLine ascii("Birch-8", AutoIncrease::ascii);
    ascii.run(2);
    EXPECT_EQ(ascii.numbers, (Numbers{{0, 0, '1', '4'}, {'2', '4', '0', '0'}}));
}

TEST(SerialNumbers, AChipThatRefusesABlockUsesNoneUp)
{
    NumberedLine bench("Juniper-8");
    bench.after_ms(6000, [&bench] { bench.chip.refuse_block(0); }); // the second chip
    bench.run(3);
    EXPECT_EQ(bench.numbers, (Numbers{{0, 0, 0, 41}}));
    EXPECT_EQ(bench.stored_next(), "00000000042");

    bench.repair();
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_EQ(bench.flash(0x200, 0x203), (std::vector<std::uint8_t>{0, 0, 0, 42}));
    EXPECT_EQ(bench.stored_next(), "00000000043");
}

TEST(SerialNumbers, AChipPulledFromTheSocketUsesNoneUp)
{
    NumberedLine bench("Juniper-8");
    bench.when(sim::Chip::State::erased, [&bench] { bench.chip.power_off(); });
    bench.press_download();
    bench.power_up_after_ms(300);
    bench.run_until_idle_or_given_up();
    EXPECT_FALSE(bench.shell.succeeded);
    EXPECT_EQ(bench.form.text_box("texAuto_Increase", 2).text(), "41");
    EXPECT_EQ(bench.stored_next(), "41");

    bench.repair();
    bench.download();
    EXPECT_EQ(bench.flash(0x200, 0x203), (std::vector<std::uint8_t>{0, 0, 0, 41}));
}

TEST(SerialNumbers, MoveInBothBuffersTogether)
{
    NumberedLine bench("Juniper-60Q");
    bench.open_data(Bench::pattern(0x100, 2)); // this load switches the code number off
    set_checked(bench.shell, bench.form.check_box("cheAuto_Increase"), true);
    type_text(bench.shell, bench.form.text_box("texData_Auto_Increase", 0), "11");
    type_text(bench.shell, bench.form.text_box("texData_Auto_Increase", 1), "2");
    type_text(bench.shell, bench.form.text_box("texData_Auto_Increase", 2), "0099");
    choose_option(bench.shell, bench.form.option("optData_Auto_Increase", AutoIncrease::bcd));
    set_checked(bench.shell, bench.form.check_box("cheData_Auto_Increase"), true);
    const auto data = static_cast<std::size_t>(bench.shell.selected.eeprom_first);

    bench.download();
    EXPECT_EQ(bench.flash(0x200, 0x203), (std::vector<std::uint8_t>{0, 0, 0, 41}));
    EXPECT_EQ(bench.flash(data + 0x10, data + 0x11), (std::vector<std::uint8_t>{0x00, 0x99}));
    EXPECT_EQ(bench.form.text_box("texData_Auto_Increase", 2).text(), "0100");
    EXPECT_EQ(bench.form.text_box("texAuto_Increase", 2).text(), "00000000042");
    EXPECT_TRUE(bench.form.check_box("cheData_Auto_Increase").enabled());
    EXPECT_FALSE(bench.form.text_box("texData_Auto_Increase", 0).enabled()) << "the number is still on";
}

// They used to be switched off by it, and chips went out without a number and were counted.
TEST(SerialNumbers, StayOnThroughTheReloadBeforeADownload)
{
    NumberedLine bench("Juniper-8");
    const std::string path = bench.shell.loader.code_path;
    const auto bytes = Bench::pattern(0x300, 3);
    std::ofstream(path, std::ios::binary).write(reinterpret_cast<const char*>(bytes.data()), 0x300);
    bench.form.check_box("cekReloadFile").set_value(true);
    bench.download();
    std::remove(path.c_str());
    EXPECT_TRUE(bench.shell.succeeded);
    auto numbered = bytes;
    numbered[0x200] = numbered[0x201] = numbered[0x202] = 0;
    numbered[0x203] = 41;
    EXPECT_EQ(bench.flash(0, 0x2FF), numbered) << "the number stands in the fresh image";
    EXPECT_TRUE(bench.form.check_box("cheAuto_Increase").value());
    EXPECT_EQ(number_in(bench.stored_next()), 42);
}

TEST(SerialNumbers, ACheckedOneThatFailedItsCheckStampsNothing)
{
    NumberedLine bench("Juniper-8");
    set_checked(bench.shell, bench.form.check_box("cheAuto_Increase"), false);
    bench.open_code(Bench::pattern(0x300, 4));
    const auto file = bench.code(0, 0x2FF);
    type_text(bench.shell, bench.form.text_box("texAuto_Increase", 0), "FFFFF");
    set_checked(bench.shell, bench.form.check_box("cheAuto_Increase"), true);
    bench.download();
    EXPECT_EQ(bench.flash(0, 0x2FF), file);
    EXPECT_EQ(bench.stored_next(), "41");
    EXPECT_EQ(bench.dialogs.shown.size(), 1U);
}

TEST(SerialNumbers, OneThatDoesNotFitAnyMoreIsToldBeforeEachDownload)
{
    NumberedLine bench("Juniper-8");
    bench.shell.code_increase.next_value = "4294967295";
    for (const std::size_t boxes : {1U, 2U}) {
        bench.press_download();
        bench.power_up_after_ms(300);
        bench.run_for_ms(3000);
        ASSERT_EQ(bench.dialogs.shown.size(), boxes);
        EXPECT_EQ(bench.dialogs.shown.back().box.text, "The Next Value must be less than 2147483648.");
        EXPECT_EQ(bench.chip.frame_count(), 0);
        bench.chip.power_off();
    }
}

// The line used to go on with the number of the chip before.
TEST(SerialNumbers, ThatHaveRunOutEndTheLineAfterTheLastGoodChip)
{
    NumberedLine bench("Juniper-8");
    set_checked(bench.shell, bench.form.check_box("cheAuto_Increase"), false);
    type_text(bench.shell, bench.form.text_box("texAuto_Increase", 1), "1");
    type_text(bench.shell, bench.form.text_box("texAuto_Increase", 2), "254");
    set_checked(bench.shell, bench.form.check_box("cheAuto_Increase"), true);
    bench.dialogs.replies = {Reply::ok};
    bench.press_download(1);
    bench.power_up_after_ms(300);
    bench.when(sim::Chip::State::user_code, [&] {
        bench.chip.power_off();
        bench.wipe_chip();
        bench.power_up_after_ms(4000);
    });
    bench.run_until_idle();
    EXPECT_EQ(bench.count(), 2);
    EXPECT_EQ(bench.flash(0x203, 0x203), (std::vector<std::uint8_t>{255}));
    ASSERT_EQ(bench.dialogs.shown.size(), 1U);
    EXPECT_EQ(bench.dialogs.shown[0].box.text, "The number of bytes is too small.");
    EXPECT_TRUE(bench.buttons_are_free());
    EXPECT_TRUE(bench.shell.succeeded);
}

TEST(SerialNumbers, ThatHaveRunOutStartNoDownload)
{
    NumberedLine bench("Juniper-8");
    bench.shell.code_increase.next_value = "4294967296";
    bench.dialogs.replies = {Reply::ok};
    bench.press_download();
    bench.power_up_after_ms(300);
    bench.run_for_ms(3000);
    EXPECT_EQ(bench.dialogs.shown.size(), 1U);
    EXPECT_EQ(bench.chip.frame_count(), 0);
    EXPECT_EQ(bench.count(), 0);
    EXPECT_TRUE(bench.buttons_are_free());
    EXPECT_EQ(panel_state(bench.shell), 0);
}

namespace {

// Four bytes of a number, as the hand sets them.
void number_at(Bench& bench, const char* address, const char* next, const char* side = "")
{
    const std::string fields = std::string{"tex"} + side + "Auto_Increase";
    const auto type = [&](std::size_t field, const char* text) {
        type_text(bench.shell, bench.form.text_box(fields, field), text);
    };
    type(0, address);
    type(1, "4");
    type(2, next);
    type(3, "1");
    choose_option(bench.shell, bench.form.option(std::string{"opt"} + side + "Auto_Increase", AutoIncrease::hex));
    set_checked(bench.shell, bench.form.check_box(std::string{"che"} + side + "Auto_Increase"), true);
}

constexpr const char* outside =
    "The auto increment number lies outside of what a download writes. Nothing was programmed.";

void expect_refused_at_the_press(Bench& bench)
{
    bench.press_download();
    bench.power_up_after_ms(300);
    bench.run_for_ms(3000);
    ASSERT_EQ(bench.dialogs.shown.size(), 1U);
    EXPECT_EQ(bench.dialogs.shown[0].box.text, outside);
    EXPECT_EQ(bench.chip.frame_count(), 0) << "the port was not even opened";
    EXPECT_EQ(bench.count(), 0);
    EXPECT_TRUE(bench.buttons_are_free());
}

} // namespace

// The chip used to be programmed and counted, with a note behind "Program OK".
TEST(SerialNumbers, BehindTheEndOfTheFileAreRefusedAtThePress)
{
    Bench bench("Juniper-8");
    bench.open_code(Bench::pattern(0x300));
    number_at(bench, "1203", "77");
    ASSERT_TRUE(bench.shell.code_increase.valid);
    expect_refused_at_the_press(bench);
}

TEST(SerialNumbers, AcrossTheEndOfTheFileAreRefusedToo)
{
    Bench bench("Juniper-8");
    bench.open_code(Bench::pattern(0x400));
    number_at(bench, "0601", "77");
    expect_refused_at_the_press(bench);
}

// A model without a file buffer for its EEPROM: how far it is written goes by the version of its boot loader.
TEST(SerialNumbers, BehindWhatThisBootLoaderTakesAreRefusedBeforeTheChipIsErased)
{
    auto setup = setup_of("Elm-16");
    setup.version = 0x50;
    Bench bench(setup);
    bench.open_code(Bench::pattern(0x3200));
    number_at(bench, "3103", "77");
    ASSERT_TRUE(bench.shell.code_increase.valid);
    bench.wipe_chip();
    const auto before = bench.chip.flash();
    bench.press_download();
    bench.power_up_after_ms(300);
    bench.run_until_idle();
    ASSERT_EQ(bench.dialogs.shown.size(), 1U);
    EXPECT_EQ(bench.dialogs.shown[0].box.text, outside);
    EXPECT_EQ(bench.chip.flash(), before);
    EXPECT_EQ(bench.count(), 0);
    EXPECT_FALSE(bench.report_says("OK"));
}

// With an EEPROM file the whole code area is written, whatever the length of the code file.
TEST(SerialNumbers, BehindTheEndOfTheFileAreWrittenWhereTheWholeAreaIs)
{
    Bench bench("Juniper-32Q");
    bench.open_code(Bench::pattern(0x300));
    bench.open_data(Bench::pattern(0x40));
    number_at(bench, "1203", "77");
    number_at(bench, "3", "5", "Data_");
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_EQ(bench.flash(0x1200, 0x1203), (std::vector<std::uint8_t>{0, 0, 0, 77}));
    EXPECT_TRUE(bench.dialogs.shown.empty());
}

TEST(SerialNumbers, OfAnEepromFileThatIsNotOpenAreRefusedToo)
{
    Bench bench("Juniper-32Q");
    bench.open_code(Bench::pattern(0x300));
    number_at(bench, "3", "5", "Data_");
    ASSERT_TRUE(bench.shell.data_increase.valid);
    expect_refused_at_the_press(bench);
}
