// The tools' buttons, from the press to what the board or the chip then holds: on virtual time, with the simulated
// board, downloader or user code on the far end of the wire.
#include "board/board_bench.h"
#include "form/named_controls.h"
#include "platform/scripted_dialogs.h"
#include "sim/demo_program.h"
#include "sim/user_code.h"

#include "shell/events.h"
#include "shell/open_file.h"
#include "shell/start_up.h"

#include <unistd.h>

#include <filesystem>
#include <fstream>

using namespace vrk;

namespace {

struct ToolBench {
    explicit ToolBench(const char* model, bool english = true)
    {
        std::filesystem::create_directories(folder);
        shell.loader.application_dir = folder;
        ports.add("line", wire);
        shell.language_is_english = english;
        start_up(shell);
        EXPECT_EQ(choose_node(shell, form.tree("TreeViewDevice"), model), Touch::taken);
        dialogs.shown.clear();
    }
    ~ToolBench()
    {
        std::filesystem::remove_all(folder);
        if (::testing::Test::HasFailure())
            std::printf("--- report\n%s\n", form.text_box("textMsg").text().c_str());
    }

    Bytes open_file(std::size_t size, unsigned seed = 1)
    {
        const Bytes code = pattern(size, seed);
        write_file(code);
        dialogs.choices.push_back(path());
        click(shell, form.button("comLoadFile"));
        EXPECT_TRUE(shell.file_loaded);
        return code;
    }
    void write_file(const Bytes& code) const
    {
        std::ofstream file(path(), std::ios::binary);
        file.write(reinterpret_cast<const char*>(code.data()), static_cast<std::streamsize>(code.size()));
    }
    std::string path() const { return folder + "/code.bin"; }
    void after_ms(std::int64_t ms, std::function<void()> act)
    {
        loop.call_at(loop.now_us() + ms * 1000, std::move(act));
    }
    void press(const char* name)
    {
        Control* control = shell.controls.find_full(name);
        ASSERT_NE(control, nullptr) << name;
        EXPECT_EQ(click(shell, *control), Touch::taken) << name;
    }
    bool says(const char* text) const { return form.text_box("textMsg").text().find(text) != std::string::npos; }
    void expect_all_free() const
    {
        EXPECT_FALSE(shell.running);
        EXPECT_FALSE(shell.port.is_open());
        EXPECT_TRUE(form.button("comDownload", 0).enabled());
        EXPECT_TRUE(form.button("comTJXZ").enabled());
        EXPECT_TRUE(form.button("com_Demo_DownLoad").enabled());
        EXPECT_FALSE(form.button("com_Demo_Stop").enabled());
    }

    // The program was asked to end while something ran: that has stopped, and the program ends.
    void expect_left()
    {
        expect_all_free();
        while (!shell.unloaded)
            loop.yield();
        EXPECT_FALSE(shell.port.is_open());
    }

    const std::string folder = testing::TempDir() + "vrk_tools_" + std::to_string(getpid());
    sim::VirtualLoop loop;
    sim::Wire wire{loop};
    sim::SimPortDriver ports{loop};
    ScriptedDialogs dialogs;
    MemoryStore settings;
    Shell shell{Platform{loop, ports, dialogs, settings}};
    const NamedControls form{shell.controls};
};

struct BoardAtTheForm : ToolBench {
    explicit BoardAtTheForm(const char* model = "Juniper-32")
        : ToolBench(model)
        , board(board_for(catalog_test::record(model)))
    {
        wire.attach(board);
        after_ms(300, [this] { board.power(true); });
    }
    Bytes program_next()
    {
        sim::Chip next(chip_of(shell.selected));
        EXPECT_EQ(sim::program_chip(board, next), sim::BoardRun::programmed);
        return next.flash();
    }

    sim::Board board;
};

struct DemoAtTheForm : ToolBench {
    DemoAtTheForm()
        : ToolBench("Birch-16", false) // of the Chinese tree alone
        , demo({})
    {
        wire.attach(demo);
        after_ms(300, [this] { demo.power(true); });
    }

    sim::DemoProgram demo;
};

// User code that waits for 12 34 at 19200 baud and then goes to its boot loader.
struct CommandAtTheForm : ToolBench {
    CommandAtTheForm()
        : ToolBench("Juniper-32")
        , chip(chip_of(shell.selected))
        , user_code(chip, {19200, Parity::none, 8, 1}, {0x12, 0x34})
    {
        wire.attach(user_code);
        user_code.power(true);
        type_text(shell, form.text_box("txtUserCode"), "12 34");
        form.list("cobUserCodeBaud").set_text("19200");
        form.list("cobUserCodeParity").set_text("None");
    }
    bool chip_holds(const Bytes& code) const
    {
        const Bytes flash = chip.flash();
        return std::equal(code.begin(), code.end(), flash.begin());
    }

    sim::Chip chip;
    sim::UserCode user_code;
};

bool begins_with(const Bytes& flash, const Bytes& code)
{
    return code.size() <= flash.size() && std::equal(code.begin(), code.end(), flash.begin());
}

} // namespace

TEST(BoardPage, PutsTheOpenFileIntoTheBoardAndTheBoardIntoAChip)
{
    BoardAtTheForm bench;
    const Bytes code = bench.open_file(0x3000);
    bench.press("comTJXZ");
    EXPECT_TRUE(bench.says("Download OK.")) << bench.form.text_box("textMsg").text();
    EXPECT_EQ(bench.board.violations(), "");
    EXPECT_TRUE(begins_with(bench.program_next(), code));
    bench.expect_all_free();
}

TEST(BoardPage, LeavesTheBoardToCountTheNumbersAndKeepsItsOwn)
{
    BoardAtTheForm bench;
    bench.open_file(0x3000);
    const char* fields[] = {"0123", "4", "500", "2"};
    for (int i = 0; i < 4; ++i)
        type_text(bench.shell, bench.form.text_box("texAuto_Increase", i), fields[i]);
    choose_option(bench.shell, bench.form.option("optAuto_Increase", AutoIncrease::hex));
    set_checked(bench.shell, bench.form.check_box("cheAuto_Increase"), true);
    ASSERT_TRUE(bench.form.check_box("cheAuto_Increase").value());
    bench.press("comTJXZ");
    const auto number = [](const Bytes& flash) { return flash[0x122] * 256 + flash[0x123]; };
    EXPECT_EQ(number(bench.program_next()), 500);
    EXPECT_EQ(number(bench.program_next()), 502);
    EXPECT_EQ(number(bench.shell.code_buffer.data), 500) << "a download of our own has its number";
}

TEST(BoardPage, LeavesTheImageToBeLookedAt)
{
    BoardAtTheForm bench;
    const Bytes code = bench.open_file(0x3000);
    EXPECT_EQ(bench.shell.board_image, Bytes(0x10001, 0x00));
    type_text(bench.shell, bench.form.text_box("txt_download_max"), "2049");
    bench.press("comTJXZ");
    const Bytes& image = bench.shell.board_image;
    EXPECT_TRUE(std::equal(code.begin(), code.end(), image.begin() + 0x4000));
    EXPECT_EQ(image[0xED00], 0x01);
    EXPECT_EQ(image[0xEE00], 0x01);
    EXPECT_TRUE(std::equal(image.begin() + 0x4000, image.begin() + 0xF800, bench.board.memory().begin() + 0x4000));

    bench.board.silent = true;
    type_text(bench.shell, bench.form.text_box("txt_download_max"), "3");
    bench.after_ms(1000, [&bench] { bench.press("comStop_Download"); });
    bench.press("comTJXZ");
    EXPECT_EQ(bench.shell.board_image[0xEE00], 0x07) << "the quantity stands before the board has answered";
    EXPECT_EQ(bench.shell.board_image[0xEC78], 0x00);
}

TEST(BoardPage, AsksForAFileFirst)
{
    BoardAtTheForm bench;
    bench.press("comTJXZ");
    ASSERT_EQ(bench.dialogs.shown.size(), 1U);
    EXPECT_EQ(bench.dialogs.shown[0].box.text, "Please open code file.");
    bench.expect_all_free();
}

TEST(BoardPage, RefusesAQuantityOfNone)
{
    BoardAtTheForm bench;
    bench.open_file(0x1000);
    type_text(bench.shell, bench.form.text_box("txt_download_max"), "0");
    bench.press("comTJXZ");
    ASSERT_EQ(bench.dialogs.shown.size(), 1U);
    EXPECT_EQ(bench.dialogs.shown[0].box.text, "The number of MCU is too small.");
    EXPECT_EQ(bench.board.wake_bytes(), 0);
    bench.expect_all_free();
}

TEST(BoardPage, StopEndsTheWaitForPower)
{
    BoardAtTheForm bench;
    bench.open_file(0x1000);
    bench.board.silent = true;
    bench.after_ms(5000, [&bench] { bench.press("comStop_Download"); });
    bench.press("comTJXZ");
    EXPECT_TRUE(bench.says("Operation stopped."));
    bench.expect_all_free();
}

TEST(BoardPage, IsLeftWhileTheBoardIsWritten)
{
    BoardAtTheForm bench;
    bench.open_file(0x1000);
    bench.after_ms(3000, [&bench] { close_request(bench.shell); });
    bench.press("comTJXZ");
    EXPECT_FALSE(bench.says("Download OK."));
    bench.expect_left();
}

TEST(BoardPage, HandsAreRefusedWhileTheBoardIsWritten)
{
    BoardAtTheForm bench;
    bench.open_file(0x1000);
    bench.after_ms(3000, [&bench] {
        EXPECT_EQ(choose_node(bench.shell, bench.form.tree("TreeViewDevice"), "Hazel-1"), Touch::busy);
        EXPECT_EQ(click(bench.shell, bench.form.button("comDownload", 0)), Touch::busy);
    });
    bench.press("comTJXZ");
    EXPECT_TRUE(bench.says("Download OK."));
}

TEST(BoardPage, ReadsTheSerialMemoryIntoTheCodeBuffer)
{
    BoardAtTheForm bench;
    bench.open_file(0x1000);
    bench.board.serial_memory = pattern(0x10000, 7);
    bench.press("Read24C512");
    EXPECT_TRUE(bench.says("读 24C512 OK"));
    const auto& data = bench.shell.code_buffer.data;
    EXPECT_TRUE(std::equal(bench.board.serial_memory.begin(), bench.board.serial_memory.end(), data.begin()));
    EXPECT_EQ(bench.shell.code_buffer.high, 0xFFFF);
    bench.expect_all_free();
}

TEST(DemoPage, ProgramsAChipThroughItsOwnDownloader)
{
    DemoAtTheForm bench;
    const Bytes code = bench.open_file(0x1000);
    bench.press("com_Demo_DownLoad");
    EXPECT_TRUE(bench.says("Program OK / 下载 OK"));
    EXPECT_EQ(bench.demo.flash(0, 0xFFF), code);
    EXPECT_TRUE(bench.demo.runs_code());
    bench.expect_all_free();
}

TEST(DemoPage, RepeatsUntilItIsStoppedWithANumberForEachChip)
{
    DemoAtTheForm bench;
    bench.open_file(0x1000);
    const char* fields[] = {"0123", "2", "7", "1"};
    for (int i = 0; i < 4; ++i)
        type_text(bench.shell, bench.form.text_box("texAuto_Increase", i), fields[i]);
    choose_option(bench.shell, bench.form.option("optAuto_Increase", AutoIncrease::hex));
    set_checked(bench.shell, bench.form.check_box("cheAuto_Increase"), true);
    bench.form.list("comDalay_ReDownLoad").set_text("1");
    std::vector<int> numbers;
    bench.demo.on_frame = [&](std::uint8_t code) {
        if (code != 0xB1)
            return;
        const int number = bench.demo.flash(0x123, 0x123)[0];
        if (!numbers.empty() && numbers.back() == number)
            return; // the second of the two frames that nobody answers
        numbers.push_back(number);
        bench.after_ms(500, [&bench] {
            bench.demo.power(false);
            bench.demo.power(true);
        });
        if (numbers.size() == 3)
            bench.after_ms(800, [&bench] { bench.press("com_Demo_Stop"); });
    };
    bench.press("com_Demo_Re_DownLoad");
    EXPECT_EQ(numbers, (std::vector<int>{7, 8, 9}));
    EXPECT_EQ(bench.form.text_box("texAuto_Increase", 2).text(), "000010");
    EXPECT_TRUE(bench.says("操作被停止."));
    bench.expect_all_free();
}

TEST(DemoPage, AnotherModelIsRefusedAndWantsItsFileAgain)
{
    DemoAtTheForm bench;
    choose_node(bench.shell, bench.form.tree("TreeViewDevice"), "Birch-32");
    bench.open_file(0x1000);
    bench.press("com_Demo_DownLoad");
    EXPECT_TRUE(bench.says("MCU 型号错, 请重选"));
    EXPECT_FALSE(bench.shell.file_loaded);
    EXPECT_FALSE(bench.demo.runs_code());
    bench.expect_all_free();
}

TEST(DemoPage, IsLeftInItsLoop)
{
    DemoAtTheForm bench;
    bench.open_file(0x1000);
    bench.form.list("comDalay_ReDownLoad").set_text("9");
    bench.after_ms(15'000, [&bench] { close_request(bench.shell); });
    bench.press("com_Demo_Re_DownLoad");
    EXPECT_TRUE(bench.says("操作被停止."));
    bench.expect_left();
}

TEST(CommandPage, LeadsUserCodeIntoItsBootLoaderAndProgramsIt)
{
    CommandAtTheForm bench;
    const Bytes code = bench.open_file(0x2000);
    bench.press("comSendUserCode");
    EXPECT_EQ(bench.user_code.commands_heard(), 1);
    EXPECT_TRUE(bench.says("Program OK")) << bench.form.text_box("textMsg").text();
    EXPECT_TRUE(bench.chip_holds(code));
    EXPECT_EQ(bench.form.text_box("txtWrite_OK_Count").text(), "1");
    bench.expect_all_free();
}

TEST(CommandPage, AChangedFileSendsTheCommandByItself)
{
    CommandAtTheForm bench;
    bench.open_file(0x2000);
    set_checked(bench.shell, bench.form.check_box("cekReloadFileWhileFileChange1"), true);
    bench.loop.run_for_ms(3000);
    const Bytes changed = pattern(0x2100, 9);
    bench.write_file(changed);
    bench.loop.run_for_ms(60'000);
    EXPECT_EQ(bench.user_code.commands_heard(), 1);
    EXPECT_TRUE(bench.chip_holds(changed));
    bench.expect_all_free();
}

TEST(CommandPage, APortThatDoesNotOpenIsToldAndNothingFollows)
{
    CommandAtTheForm bench;
    bench.open_file(0x2000);
    bench.ports.refuse_open("line", 5);
    bench.press("comSendUserCode");
    EXPECT_TRUE(bench.says("Open COM port failed!"));
    EXPECT_FALSE(bench.says("We are trying to connect"));
    bench.expect_all_free();
}
