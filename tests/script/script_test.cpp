#include "script_bench.h"

using namespace vrk;
using namespace vrk::script;

namespace {

const std::string sample = std::string(PROJECT_DIR) + "/examples/firmware/blink.hex";

}

TEST(Script, RunsAWholeDownloadAndAnswersEachCommand)
{
    ScriptBench bench;
    bench.run({"set TreeViewDevice Juniper-60Q", "choose " + sample, "click comLoadFile", "click comDownload(0)",
        "sleep 500", "power on", "wait-idle", "get txtWrite_OK_Count", "expect textMsg Program OK", "var succeeded"});
    ASSERT_EQ(bench.answers.size(), 10U);
    EXPECT_EQ(bench.value(7), "1");
    EXPECT_EQ(bench.value(9), true);
    EXPECT_FALSE(bench.runner.failed());
}

TEST(Script, AClickThatStartsASequenceAnswersBeforeTheSequenceEnds)
{
    ScriptBench bench;
    bench.run({"choose " + sample, "click comLoadFile", "click comDownload(0)", "var sequence_running",
        "get comStop_Download.enabled", "click comStop_Download", "wait-idle", "var sequence_running"});
    EXPECT_EQ(bench.value(3), true);
    EXPECT_EQ(bench.value(4), true);
    EXPECT_EQ(bench.value(7), false);
}

TEST(Script, AClickThatStartsNoSequenceAnswersWhenItIsDone)
{
    ScriptBench bench;
    bench.run({"choose " + sample, "click comLoadFile", "var file_loaded"});
    EXPECT_EQ(bench.value(2), true);
}

TEST(Script, StopsAtItsFirstFailure)
{
    ScriptBench bench;
    bench.run({"get textMsg", "click noSuchButton", "get textMsg"});
    ASSERT_EQ(bench.answers.size(), 2U);
    EXPECT_EQ(bench.error(1), "no control 'noSuchButton'");
    EXPECT_EQ(bench.answers[1].line, 2);
    EXPECT_TRUE(bench.runner.failed());
}

TEST(Script, AConversationGoesOnAfterAFailure)
{
    ScriptBench bench(false);
    bench.run({"click noSuchButton", "get txtDevice"});
    ASSERT_EQ(bench.answers.size(), 2U);
    EXPECT_EQ(bench.value(1), "Juniper-60Q");
    EXPECT_TRUE(bench.runner.failed());
}

TEST(Script, CommentsAndEmptyLinesHaveNoAnswerButCountAsLines)
{
    ScriptBench bench;
    bench.run({"# a comment", "", "get txtDevice"});
    ASSERT_EQ(bench.answers.size(), 1U);
    EXPECT_EQ(bench.answers[0].line, 3);
}

TEST(Script, DisabledControlsRefuseAndHiddenOnesTakeIt)
{
    ScriptBench bench(false);
    bench.run({"click comStop_Download", "set comb_WDT P1.3", "get comb_WDT"});
    EXPECT_EQ(bench.error(0), "'comStop_Download' is disabled");
    EXPECT_EQ(bench.value(2), "P1.3");
}

TEST(Script, WhatMakesUpAJobIsBusyWhileASequenceRuns)
{
    ScriptBench bench(false);
    bench.open_code(Bench::pattern(0x200));
    bench.run({"click comDownload(0)", "set TreeViewDevice Hazel-1", "set cobBaudMax 9600", "click comLoadFile",
        "set Option0(0) 1", "click comDownload(1)", "press txtBuffer2 A", "click TreeViewDevice(Hazel-1)",
        "set com_RC_frequency(0) 12", "press txtBuffer2 PageDown", "click comStop_Download", "wait-idle",
        "set cobBaudMax 9600"});
    for (std::size_t refused = 1; refused <= 8; ++refused)
        EXPECT_NE(bench.error(refused).find("busy"), std::string::npos) << refused << ": " << bench.error(refused);
    for (const std::size_t taken : {0U, 9U, 10U, 11U, 12U})
        EXPECT_EQ(bench.error(taken), "") << taken;
}

// Between the command and its event the watch may start a download: the answer was that of a hand that was taken.
TEST(Script, WhatTheGateRefusesAfterTheCommandWasReadIsBusyToo)
{
    for (const char* late : {"set cobBaudMax 9600", "click TabStrip2(EEPROM_File)", "set TreeViewDevice Hazel-1",
             "set cheTL 1", "set Option0(0) 1", "click comLoadFile", "press txtBuffer2 A"}) {
        ScriptBench bench(false);
        bench.open_code(Bench::pattern(0x200));
        bench.on_line = [&](const std::string& line) {
            if (line == late)
                bench.press_download(); // due before the command's own event
        };
        bench.run({late, "var sequence_running", "click comStop_Download", "wait-idle"});
        ASSERT_EQ(bench.value(1), true) << late;
        if (std::string_view{late}.starts_with("click TabStrip2"))
            EXPECT_EQ(bench.error(0), "") << late << ": to look at is always free";
        else
            EXPECT_NE(bench.error(0).find("busy"), std::string::npos) << late << ": " << bench.error(0);
    }
}

TEST(Script, AWaitForAChipWithoutPowerSaysSo)
{
    ScriptBench bench(false);
    bench.run({"choose " + sample, "click comLoadFile", "click comDownload(0)", "wait-idle 3000",
        "wait-text textMsg 1000 Program OK", "power on", "wait-idle", "wait-text textMsg 10 no such words"});
    EXPECT_EQ(
        bench.error(3), "a sequence still runs after 3000 ms; the target has no power: 'power on' switches it on");
    EXPECT_NE(bench.error(4).find("the target has no power"), std::string::npos);
    EXPECT_EQ(bench.error(6), "");
    EXPECT_EQ(bench.error(7), "'textMsg' does not contain 'no such words' after 10 ms");
}

TEST(Script, AnInputThatEndsBeforeTheChipHasPowerSaysSo)
{
    ScriptBench bench(false);
    std::string said;
    bench.on_line = [&](const std::string& line) {
        if (line == "sleep 1000")
            bench.after_ms(500, [&] { said = bench.runner.break_off(); });
    };
    bench.run({"choose " + sample, "click comLoadFile", "click comDownload(0)", "sleep 1000"});
    EXPECT_EQ(said,
        "the script ended while a sequence ran: it is stopped; the target has no power: 'power on' switches it on");
    EXPECT_TRUE(bench.runner.failed());
}

// It used to load as zeros, which were programmed and counted as good.
TEST(Script, AMisspeltFileIsToldAndNothingIsLoaded)
{
    ScriptBench bench;
    bench.run({"choose " + sample + ".no", "click comLoadFile", "messages", "var file_loaded", "click comDownload(0)",
        "messages"});
    ASSERT_EQ(bench.value(2).size(), 1U);
    EXPECT_EQ(bench.value(2)[0]["text"], "Can not find the file.");
    EXPECT_EQ(bench.value(3), false);
    EXPECT_EQ(bench.value(5)[0]["text"], "    Please open code file.   ");
}

// Some were cut to their low bits, and the command went on with another number.
TEST(Script, ANumberTooLargeForItsUnitIsAFault)
{
    for (const char* command : {"sleep 99999999999999", "wait-idle 99999999999999999999", "set cobBaudMax #4294967296",
             "set TabStrip2 #4294967296", "caret txtBuffer2 4294967296", "set vscFile(0) 4294967297",
             "calculate-baud 4294967303 115200 11059200 0", "calculate-baud 7 115200 11059200 65536",
             "calculate-baud 7 115200 1e300 0", "mcu 4294967297 0", "options 4294967296",
             "buffer code 0 FFFFFFFFFFFFFFFFF"}) {
        ScriptBench bench(false);
        bench.run({command});
        EXPECT_NE(bench.error(0), "") << command;
    }
}

TEST(Script, PicksListItemsByTextAndByNumber)
{
    ScriptBench bench(false);
    bench.run({"set cobBaudMax 57600", "get cobBaudMax.index", "set cobBaudMax #0", "get cobBaudMax",
        "set cobBaudMax 12345", "get cobBaudMin.items"});
    EXPECT_EQ(bench.value(1), 1);
    EXPECT_EQ(bench.value(3), "115200");
    EXPECT_EQ(bench.error(4), "'cobBaudMax' has no item '12345'");
    EXPECT_EQ(bench.value(5).size(), 10U);
}

TEST(Script, SetsChecksOptionsAndText)
{
    ScriptBench bench;
    bench.run({"set cekReloadFile 1", "get cekReloadFile", "set optBeepNo 1", "get optBeepYes",
        "set txtAP_FileStart 1F0", "get txtAP_FileStart"});
    EXPECT_EQ(bench.value(1), "1");
    EXPECT_EQ(bench.value(3), "0");
    EXPECT_EQ(bench.value(5), "1F0");
}

TEST(Script, ReadsBuffersInHexadecimal)
{
    ScriptBench bench(false);
    bench.run({"choose " + sample, "click comLoadFile", "buffer code 0 3", "buffer code 0 12001", "buffer flash 0 1",
        "buffer-info code"});
    EXPECT_EQ(bench.value(2), hex_bytes(bench.code(0, 3)));
    EXPECT_EQ(bench.error(3), "the buffer has addresses 0 to 12000");
    EXPECT_EQ(bench.error(4), "a buffer is code or data");
    EXPECT_EQ(bench.value(5)["low"], 0);
    EXPECT_EQ(bench.value(5)["loaded"], true);
}

TEST(Script, ReadsTheCatalogueAndTheRecords)
{
    ScriptBench bench(false);
    bench.run({"mcu 1 0", "record selected", "record other", "mcu 21 0"});
    EXPECT_EQ(bench.value(0).size(), 21U);
    EXPECT_EQ(bench.value(0)[9], "Aspen-63");
    EXPECT_EQ(bench.value(1)["mcu_id"], "D17E");
    EXPECT_EQ(bench.value(1)["has_eeprom_buffer"], true);
    EXPECT_EQ(bench.value(1)["size_digits"], "60");
    EXPECT_EQ(bench.error(2), "a record is selected or connected");
    EXPECT_NE(bench.error(3), "");
}

TEST(Script, CalculatesABaud)
{
    ScriptBench bench;
    bench.run({"calculate-baud 7 115200 11059200 100"});
    EXPECT_EQ(bench.value(0)["index"], 11);
    EXPECT_EQ(bench.value(0)["mode"], 192);
    EXPECT_EQ(bench.value(0)["setting"], 6);
}

TEST(Script, TellsBoxesAndBeepsOnce)
{
    ScriptBench bench;
    bench.run({"click comDownload(0)", "messages", "messages", "beeps"});
    ASSERT_EQ(bench.value(1).size(), 1U);
    EXPECT_EQ(bench.value(1)[0]["text"], "    Please open code file.   ");
    EXPECT_EQ(bench.value(1)[0]["reply"], "ok");
    EXPECT_EQ(bench.value(2).size(), 0U);
    EXPECT_EQ(bench.value(3), 0);
}

TEST(Script, AnswersBoxesWithQueuedReplies)
{
    ScriptBench bench(false);
    bench.form.text_box("txtWrite_OK_Count").set_text("5");
    bench.run({"click comClear_OK_Count", "get txtWrite_OK_Count", "answer yes", "click comClear_OK_Count",
        "get txtWrite_OK_Count", "answer maybe"});
    EXPECT_EQ(bench.value(1), "5"); // No is the default
    EXPECT_EQ(bench.value(4), "0");
    EXPECT_NE(bench.error(5), "");
}

TEST(Script, SleepsInVirtualTime)
{
    ScriptBench bench;
    const std::int64_t before = bench.loop.now_us();
    bench.run({"sleep 1500"});
    EXPECT_GE(bench.loop.now_us() - before, 1500000);
}

TEST(Script, WaitTextEndsWithTheTextOrFailsInTime)
{
    ScriptBench bench(false);
    bench.run(
        {"choose " + sample, "click comLoadFile", "click comDownload(0)", "wait-text textMsg 5000 Connection is failed",
            "wait-text textMsg 100 no such words", "click comStop_Download", "wait-idle"});
    EXPECT_EQ(bench.error(3), "");
    EXPECT_TRUE(bench.error(4).starts_with("'textMsg' does not contain 'no such words' after 100 ms"))
        << bench.error(4);
}

TEST(Script, WaitIdleFailsWhenTheSequenceDoesNotEnd)
{
    ScriptBench bench(false);
    bench.run({"choose " + sample, "click comLoadFile", "click comDownload(0)", "wait-idle 1000"});
    EXPECT_TRUE(bench.error(3).starts_with("a sequence still runs after 1000 ms")) << bench.error(3);
    EXPECT_TRUE(bench.shell.unloaded); // the end of the script stops it
}

TEST(Script, ListsControlsWithTheirTypes)
{
    ScriptBench bench;
    bench.run({"controls comDownload"});
    ASSERT_EQ(bench.value(0).size(), 2U);
    EXPECT_EQ(bench.value(0)[0]["name"], "comDownload(0)");
    EXPECT_EQ(bench.value(0)[0]["type"], "Button");
}

TEST(Script, ClicksTabsAndNodesByTheirKeys)
{
    ScriptBench bench;
    bench.run({"click TabStrip2(EEPROM_File)", "get TabStrip2", "get frmDataFlash.visible",
        "click TreeViewDevice(Oak-20V)", "get txtDevice"});
    EXPECT_EQ(bench.value(1), "EEPROM_File");
    EXPECT_EQ(bench.value(2), true);
    EXPECT_EQ(bench.value(4), "Oak-20V");
}

TEST(Script, SaysWhichCommandItDoesNotKnow)
{
    ScriptBench bench;
    bench.run({"download now"});
    EXPECT_EQ(bench.error(0), "no command 'download'");
}

TEST(Script, ListsThePagesOfTheOptionTable)
{
    ScriptBench bench(false);
    bench.run({"options 6", "options 3", "options 21"});
    const Json juniper = bench.answers[0].value;
    ASSERT_EQ(juniper.size(), 56U);
    EXPECT_EQ(juniper[0].size(), 19U);
    EXPECT_EQ(juniper[0][0], "Clock_Source_Clew");
    EXPECT_EQ(bench.answers[1].value, Json::array());
    EXPECT_EQ(bench.error(2), "the option table has pages 0 to 20");
}

TEST(Script, SetsOptionsWritesThemAndReadsThemInTheChip)
{
    ScriptBench bench;
    bench.run({"set TreeViewDevice Juniper-60Q", "choose " + sample, "click comLoadFile", "set Option5(0) 1",
        "set comWDT_Prescalar(0) 64", "click comDownload(0)", "sleep 500", "power on", "wait-idle", "var options_done",
        "expect textMsg Setting options OK.", "power off", "click comReadChipLock", "sleep 500", "power on",
        "wait-idle", "expect textMsg Reading Options OK.", "expect textMsg Prescalar value of WatchDog Timer: 64"});
    EXPECT_FALSE(bench.runner.failed()) << bench.answers.back().error;
    EXPECT_EQ(bench.value(9), true);
}

TEST(Script, ACaretInTheDumpAndAKeyEditTheBufferAsInTheWindow)
{
    ScriptBench bench;
    bench.run({"choose " + sample, "click comLoadFile", "set vscFile(0) 0", "caret txtBuffer2 0",
        "get txtBuffer2.selstart", "get txtBuffer2.sellength", "answer yes", "press txtBuffer2 f", "buffer code 0 0",
        "get LabEdit_Clew.visible", "press txtBuffer2 PageDown", "get vscFile(0)"});
    EXPECT_EQ(bench.value(4), 9);
    EXPECT_EQ(bench.value(5), 1);
    EXPECT_EQ(bench.value(8), "F2");
    EXPECT_EQ(bench.value(9), true);
    EXPECT_FALSE(bench.runner.failed());
}

TEST(Script, SwitchesASerialNumberOnAndSavesARange)
{
    const std::string path = ::testing::TempDir() + std::to_string(getpid()) + "range.bin";
    ScriptBench bench;
    bench.run({"choose " + sample, "click comLoadFile", "set texAuto_Increase(0) 1f", "set texAuto_Increase(1) 2",
        "set texAuto_Increase(2) 1234", "set cheAuto_Increase 1", "buffer code 1E 1F", "get texAuto_Increase(0)",
        "get texAuto_Increase(0).enabled", "set txt_Start_Address 1e", "set txt_length 2", "choose " + path,
        "click comStoreFile", "messages"});
    EXPECT_EQ(bench.value(6), "1234");
    EXPECT_EQ(bench.value(7), "1F");
    EXPECT_EQ(bench.value(8), false);
    EXPECT_EQ(bench.value(13).size(), 0U);
    std::ifstream file{path, std::ios::binary};
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>{file}, {}), "\x12\x34");
    std::remove(path.c_str());
}
