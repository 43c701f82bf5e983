// The command that user code waits for, and the download behind it.
#include "inapp/inapp_bench.h"

#include "link/sequencer.h"
#include "options/codec.h"
#include "sim/chip.h"

using namespace vrk;

namespace {

constexpr LineSettings user_settings{9600, Parity::even, 8, 1};

sim::ChipSetup chip_of(const McuRecord& model)
{
    sim::ChipModel chip;
    chip.name = model.mcu_name;
    chip.series = model.series;
    chip.id = model.mcu_id;
    chip.ap_last = model.ap_last;
    chip.eeprom_first = model.eeprom_first;
    chip.eeprom_last = model.eeprom_last;
    chip.isp_start = model.isp_start;
    chip.new_protocol = model.cap_new_protocol;
    chip.parity = model.cap_parity;
    chip.parity_even = model.cap_parity_even;
    chip.long_frame = model.cap_long_frame;
    return sim::default_setup(chip);
}

struct CommandBench : InappBench {
    CommandBench()
    {
        wire.attach(user);
        user.power(true);
        command.line = user_settings;
        command.bytes = {0x12, 0x34, 0xAB};
        job.model = model;
        job.line = line;
        job.english = true;
        job.code = code_of(0x1200);
        job.options = encode_options(model.series, {});
        chip.on_state_change.push_back([this](sim::Chip::State state) {
            if (state == sim::Chip::State::user_code)
                user.run_again();
        });
    }
    Result send()
    {
        Result result = Result::good;
        talk(model, [&](Session& talk_) { result = send_user_command(talk_, command, report); });
        return result;
    }
    Result send_and_download()
    {
        if (const Result sent = send(); sent != Result::good)
            return sent;
        Result result = Result::good;
        talk(model, [&](Session& talk_) { result = program_one_chip(talk_, job, report); });
        loop.run_for_ms(1000);
        return result;
    }

    McuRecord model = catalog_test::record("Juniper-32Q");
    sim::Chip chip{chip_of(model)};
    sim::UserCode user{chip, user_settings, {0x12, 0x34, 0xAB}};
    UserCommand command;
    Job job;
};

} // namespace

TEST(UserCommand, LeadsIntoADownload)
{
    CommandBench bench;
    EXPECT_EQ(bench.send_and_download(), Result::good);
    EXPECT_EQ(bench.user.commands_heard(), 1);
    EXPECT_EQ(bench.chip.flash(0, 0x11FF), pattern(0x1200));
    EXPECT_EQ(bench.chip.violations(), "");
}

TEST(UserCommand, LeadsIntoOneDownloadAfterAnother)
{
    CommandBench bench;
    EXPECT_EQ(bench.send_and_download(), Result::good);
    bench.user.power(false);
    bench.user.power(true);
    EXPECT_EQ(bench.send_and_download(), Result::good);
    EXPECT_EQ(bench.user.commands_heard(), 2);
}

TEST(UserCommand, OfNoByteSendsNothingAndIsGood)
{
    CommandBench bench;
    bench.command.bytes.clear();
    EXPECT_EQ(bench.send(), Result::good);
    EXPECT_TRUE(bench.user.heard().empty());
    EXPECT_LT(bench.took_ms, 40);
}

// At 1200 baud a long command needs longer than the fixed wait, and the next line closes the port.
TEST(UserCommand, LeavesWholeAtASlowSpeed)
{
    CommandBench bench;
    sim::UserCode slow(bench.chip, {1200, Parity::none, 8, 1}, pattern(60));
    sim::Wire other(bench.loop);
    other.attach(slow);
    bench.ports.add("slow", other);
    slow.power(true);
    bench.line.port_path = "slow";
    bench.command.line = {1200, Parity::none, 8, 1};
    bench.command.bytes = pattern(60);
    bench.ports.closing = sim::Wire::Closing::drops;
    EXPECT_EQ(bench.send(), Result::good);
    EXPECT_EQ(slow.commands_heard(), 1);
}

TEST(UserCommand, OnAnotherLineIsNotHeard)
{
    CommandBench bench;
    bench.command.line = {9600, Parity::odd, 8, 1};
    EXPECT_EQ(bench.send(), Result::good) << "nothing comes back, so it cannot fail by itself";
    bench.loop.run_for_ms(2000);
    EXPECT_EQ(bench.user.commands_heard(), 0);
}

TEST(UserCommand, SaysThatThePortDoesNotOpen)
{
    CommandBench bench;
    bench.ports.refuse_open("line");
    EXPECT_EQ(bench.send(), Result::no_port);
    EXPECT_EQ(bench.report.beeps, 3);
    EXPECT_EQ(bench.report.lines.back(),
        "Open COM port failed!\nThe COM port is opened by another Program or the COM port does not exist.");
    bench.report.english = false;
    bench.ports.refuse_open("line");
    EXPECT_EQ(bench.send(), Result::no_port);
    EXPECT_EQ(bench.report.lines.back(),
        "Open COM port failure! / 打开串口失败!\nThe COM port opened by another Program or no the COM port.\n"
        "Chinese:串口已被其它程序打开或该串口不存在。");
}

TEST(UserCommand, SaysThatNoPortKnowsTheLine)
{
    CommandBench bench;
    bench.command.line = user_line("9600", "None", "8", "1.5");
    EXPECT_EQ(bench.send(), Result::no_port);
    EXPECT_EQ(bench.report.boxes.size(), 1U);
}

TEST(UserCommand, IsStopped)
{
    CommandBench bench;
    bench.after_ms(3, [&bench] { bench.stop(); });
    EXPECT_EQ(bench.send(), Result::stopped);
    EXPECT_EQ(bench.report.lines.back(), "Operation stopped. ");
}

TEST(UserLine, IsReadFromItsLists)
{
    EXPECT_EQ(user_line("115200", "None", "8", "1"), (LineSettings{115200, Parity::none, 8, 1}));
    EXPECT_EQ(user_line(" 9600 ", "Even", "7", "2"), (LineSettings{9600, Parity::even, 7, 2}));
    EXPECT_EQ(user_line("2400", "Odd", "5", "1.5"), (LineSettings{2400, Parity::odd, 5, 2}));
    EXPECT_EQ(user_line("2400", "Odd", "8", "1.5"), std::nullopt);
    EXPECT_EQ(user_line("", "Odd", "8", "1"), std::nullopt);
}
