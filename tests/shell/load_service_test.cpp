// What the user, or a timer, does while a load serves events.
#include "form/named_controls.h"
#include "shell/acting_dialogs.h"
#include "shell/buffer_bench.h"
#include "shell/open_file.h"
#include "shell/serial_numbers.h"

#include <functional>

using namespace vrk;
using buffer_test::ActingDialogs;
using buffer_test::BenchOn;
using buffer_test::end_line;
using buffer_test::hex_line;

namespace {

// Every look at the clock costs some time; what is due is one act of the test's choice.
struct SlowLoop final : EventLoop {
    mutable std::int64_t now = 0;
    std::int64_t cost_us = 4'000;
    int served = 0;
    std::function<void()> act;

    std::int64_t now_us() const override { return now += cost_us; }
    WallTime wall_time() const override { return {}; }
    CallId call_at(std::int64_t, Task) override { return 1; }
    void cancel(CallId) override { }
    void yield() override { run_due(); }
    void run_due() override
    {
        ++served;
        if (const auto once = std::exchange(act, {}))
            once();
    }
};
using SlowBench = BenchOn<SlowLoop>;

// A bench on which a second file, "later", is opened while the first box of a load stands.
struct BoxBench : SlowBench {
    explicit BoxBench(std::string_view model)
        : SlowBench(model)
        , boxes_shell(Platform{loop, ports, boxes, settings})
    {
        NamedControls names{boxes_shell.controls};
        boxes_shell.selected = shell.selected;
        names.label("LabISP_reange", 1).set_caption("EFFF");
        names.check_box("cheClearAP_Buffer").set_value(true);
        boxes.act = [this, later = file("later.bin", "later")] {
            load_file(boxes_shell, later, boxes_shell.code_buffer);
        };
    }

    ActingDialogs boxes;
    Shell boxes_shell;
};

std::string many_lines(int byte, int count)
{
    std::string text;
    for (int i = 0; i < count; ++i)
        text += hex_line(i * 4, {byte, byte, byte, byte});
    return text + end_line;
}

} // namespace

TEST(LoadService, ALongFileServesEventsByElapsedTime)
{
    SlowBench bench{"Juniper-60"};
    load_file(bench.shell, bench.file("long.hex", many_lines(1, 4096)), bench.code);
    EXPECT_GT(bench.loop.served, 1);
    EXPECT_EQ(bench.code.data[0x3FFF], 1);
}

TEST(LoadService, AFileThatIsReadInAMomentServesNone)
{
    SlowBench bench{"Juniper-60"};
    bench.loop.cost_us = 1;
    load_file(bench.shell, bench.file("long.hex", many_lines(1, 4096)), bench.code);
    EXPECT_EQ(bench.loop.served, 0);
    EXPECT_EQ(bench.code.data[0x3FFF], 1);
}

TEST(LoadService, ABufferClearedMeanwhileStaysCleared)
{
    SlowBench bench{"Juniper-60"};
    bench.loop.act = [&] { clear_buffer(bench.shell, 0, bench.code); };
    EXPECT_FALSE(load_file(bench.shell, bench.file("long.hex", many_lines(1, 4096)), bench.code));
    EXPECT_EQ(bench.code.data[0x3FFF], 0);
    EXPECT_EQ(bench.code.data[0], 0);
    EXPECT_FALSE(bench.code.loaded);
    EXPECT_FALSE(bench.shell.file_loaded);
    EXPECT_FALSE(bench.dialogs.busy);
}

TEST(LoadService, AFileOpenedMeanwhileIsTheOneThatStands)
{
    SlowBench bench{"Juniper-60"};
    const std::string later = bench.file("later.bin", "later");
    bench.form.check_box("cheClearAP_Buffer").set_value(true);
    bench.loop.act = [&] { load_file(bench.shell, later, bench.code); };
    EXPECT_TRUE(load_file(bench.shell, bench.file("long.hex", many_lines(1, 4096)), bench.code));
    EXPECT_EQ(bench.code.data[0], 'l');
    EXPECT_EQ(bench.code.data[0x100], 0);
    EXPECT_EQ(bench.code.high, 511);
    EXPECT_TRUE(bench.code.loaded);
    EXPECT_TRUE(bench.shell.file_loaded);
}

TEST(LoadService, AnEepromFileOpenedMeanwhileDoesNotDisturbTheCode)
{
    SlowBench bench{"Juniper-60Q"};
    const std::string eeprom = bench.file("eeprom.bin", "eeprom");
    bench.loop.act = [&] { load_file(bench.shell, eeprom, bench.data); };
    EXPECT_TRUE(load_file(bench.shell, bench.file("long.hex", many_lines(1, 4096)), bench.code));
    EXPECT_EQ(bench.code.data[0x3FFF], 1);
    EXPECT_EQ(bench.data.data[0], 'e');
}

TEST(LoadService, AReloadWhileABoxAboutAChecksumIsOpenIsTheOneThatStands)
{
    BoxBench bench{"Juniper-60"};
    Shell& shell = bench.boxes_shell;
    load_file(shell, buffer_test::fixture("three_bad_checksums.hex"), shell.code_buffer);
    EXPECT_EQ(bench.boxes.boxes.size(), 1U);
    EXPECT_EQ(shell.code_buffer.data[0], 'l');
    EXPECT_TRUE(shell.file_loaded);
    EXPECT_FALSE(bench.boxes.busy);
}

TEST(LoadService, AReloadWhileARangeMessageIsOpenIsTheOneThatStands)
{
    BoxBench bench{"Juniper-60Q"};
    Shell& shell = bench.boxes_shell;
    load_file(shell, bench.file("long.bin", std::string(0xF800, 'x')), shell.code_buffer);
    EXPECT_EQ(bench.boxes.boxes.size(), 1U);
    EXPECT_EQ(shell.code_buffer.high, 511);
    EXPECT_EQ(shell.code_buffer.view_high, 511);
}

TEST(LoadService, AFileThatIsWrittenWhileABoxIsOpenIsRefusedAndTheBufferIsAsItWas)
{
    BoxBench bench{"Juniper-60"};
    Shell& shell = bench.boxes_shell;
    bench.boxes.act = {};
    load_file(shell, bench.file("early.bin", "early"), shell.code_buffer);
    const std::string path = bench.file("lamp.hex", ":0100000041BF\n" + end_line);
    bench.boxes.act = [&] { bench.file("lamp.hex", "the linker begins anew"); };
    EXPECT_FALSE(load_file(shell, path, shell.code_buffer));
    ASSERT_EQ(bench.boxes.boxes.size(), 2U);
    EXPECT_EQ(bench.boxes.boxes[1], "读取文件时文件发生了变化，请重新打开。");
    EXPECT_EQ(shell.code_buffer.data[0], 'e');
    EXPECT_TRUE(shell.file_loaded);
}

TEST(LoadService, UntilTheFileHasBeenReadTheBufferHoldsTheOneBefore)
{
    SlowBench bench{"Juniper-60"};
    load_file(bench.shell, bench.file("early.bin", "early"), bench.code);
    std::uint8_t seen = 0;
    bench.loop.act = [&] { seen = bench.code.data[0]; };
    EXPECT_TRUE(load_file(bench.shell, bench.file("long.hex", many_lines(1, 4096)), bench.code));
    EXPECT_EQ(seen, 'e');
    EXPECT_EQ(bench.code.data[0], 1);
}

TEST(LoadService, UntilAFileThatReplacesHasBeenReadNoFileIsOpen)
{
    SlowBench bench{"Juniper-60"};
    load_file(bench.shell, bench.file("early.bin", "early"), bench.code);
    bench.form.check_box("cheClearAP_Buffer").set_value(true);
    bool open = true;
    bench.loop.act = [&] { open = bench.shell.file_loaded; };
    EXPECT_TRUE(load_file(bench.shell, bench.file("long.hex", many_lines(1, 4096)), bench.code));
    EXPECT_FALSE(open);
    EXPECT_TRUE(bench.shell.file_loaded);
}

TEST(LoadService, ANumberSwitchedOnMeanwhileIsSwitchedOffAgain)
{
    SlowBench bench{"Juniper-60"};
    load_increase_settings(bench.shell);
    bench.form.text_box("texAuto_Increase", 0).set_text("0803");
    bench.loop.act = [&] {
        bench.form.check_box("cheAuto_Increase").set_value(true);
        cheAuto_Increase_Click(bench.shell);
        ASSERT_TRUE(bench.shell.code_increase.valid);
    };
    EXPECT_TRUE(load_file(bench.shell, bench.file("long.hex", many_lines(1, 4096)), bench.code));
    EXPECT_EQ(bench.code.data[0x803], 1) << "the file's own byte";
    EXPECT_FALSE(bench.form.check_box("cheAuto_Increase").value());
    EXPECT_FALSE(bench.shell.code_increase.valid);
}

TEST(LoadService, TheWindowMayGrowMeanwhile)
{
    SlowBench bench{"Juniper-60"};
    bench.loop.act = [&] { bench.shell.view_lines[0] = 30; };
    EXPECT_TRUE(load_file(bench.shell, bench.file("long.hex", many_lines(1, 4096)), bench.code));
    EXPECT_EQ(bench.shell.view_lines[0], 30);
}
