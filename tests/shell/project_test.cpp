// Projects through the form: what is saved comes back.
#include "project_bench.h"

using namespace vrk;

namespace {

using Bytes = std::vector<std::uint8_t>;

std::string zeros(std::size_t bytes) { return std::string(bytes * 2, '0'); }

} // namespace

// ---- the file

TEST(ProjectFile, OfTheForm_IsWrittenToTheByte)
{
    ProjectBench bench{"Hazel-1", false};
    bench.open_code({0x02, 0x00, 0x30, 0xA5});
    bench.form.frame("Frame7").set_caption("Program File: /jobs/灯.bin");
    bench.fill_in_numbers();
    bench.form.check_box("cheAuto_Increase").set_value(true);
    bench.shell.data_buffer.loaded = false;
    bench.save();

    EXPECT_EQ(bench.saved(),
        "VER: 1.2\r\n"
        "MCU_Type: Hazel-1\r\n"
        "File_Name: Program File: /jobs/灯.bin\r\n"
        "File_Check_Sum: 00000D7H       \r\n"
        "Dtat_File_Name: Data File: \r\n"
        "Dtat_File_CheckSum: \r\n"
        "Auto_Increase_Enable: 1\r\n"
        "Auto_Increase_Address: 01FF\r\n"
        "Auto_Increase_Bytes: 4\r\n"
        "Auto_Increase_Next: 0123\r\n"
        "Auto_Increase: 7\r\n"
        "Auto_Increase_HEX: False\r\n"
        "Auto_Increase_BCD: True\r\n"
        "Auto_Increase_ASCII: False\r\n"
        "Data_Increase_Enable: 0\r\n"
        "Data_Increase_Address: 0010\r\n"
        "Data_Increase_Bytes: 6\r\n"
        "Data_Increase_Next: 000999\r\n"
        "Data_Increase: 3\r\n"
        "Data_Increase_HEX: False\r\n"
        "Data_Increase_BCD: False\r\n"
        "Data_Increase_ASCII: True\r\n"
        "Interior_Oscillate: True\r\n"
        "Exterior_Oscillate: False\r\n"
        "Half_Gain_YES: False\r\n"
        "Half_Gain_NO: True\r\n"
        "Disregard_P10_P11: True\r\n"
        "P10_P11_00_Download: False\r\n"
        "Clear_EEPROM_00H: False\r\n"
        "Clear_EEPROM_Spite: True\r\n"
        "Unchangeable_WDT_YES: False\r\n"
        "Unchangeable_WDT_NO: True\r\n"
        "Power_On_Run_WDT_YES: False\r\n"
        "Power_On_Run_WDT_NO: True\r\n"
        "Idle_Run_WDT_YES: True\r\n"
        "Idle_Run_WDT_NO: False\r\n"
        "LowU_Reset_YES: False\r\n"
        "LowU_Reset_NO: True\r\n"
        "WDT_Prescalar: 256\r\n"
        "EN810_200mS_YES: True\r\n"
        "EN810_200mS_NO: False\r\n"
        "buffer_check_sum: 215\r\n"
        "END\r\n"
        "020030A5" +
            zeros(508) + "\r\n");
    EXPECT_TRUE(bench.no_more_boxes());
}

// The English page of the oldest families has more rows than make bytes: the last choice of the panel was saved empty.
TEST(ProjectFile, SaysWhatIsChosenOnEveryStripOfEveryPage)
{
    for (const char* model : {"Alder-64", "Birch-8", "Cedar-4R", "Fir-8R", "Hazel-4R", "Juniper-60Q", "Larch-12V",
             "Maple-4S", "Oak-20V", "Rowan-8", "Holly-4"}) {
        for (const bool english : {false, true}) {
            ProjectBench bench{model, english};
            for (const auto& [key, value] : project_values(bench.shell)) {
                const auto keys = project_option_keys();
                const bool is_option = std::find(keys.begin(), keys.end(), key) != keys.end();
                EXPECT_FALSE(is_option && value.empty())
                    << model << ", " << (english ? "English: " : "Chinese: ") << key;
            }
        }
    }
    ProjectBench bench{"Rowan-8", true};
    bench.save();
    EXPECT_NE(bench.saved().find("P4_5_As_ALE_NO: False\r\nP4_5_As_ALE_YES: True\r\n"), std::string::npos);
}

TEST(ProjectFile, WithAnEepromFileHoldsBothImages)
{
    ProjectBench bench;
    bench.open_code(Bench::pattern(600));
    bench.open_data(Bench::pattern(520, 2));
    bench.form.check_box("cheClearDataBuffer").set_value(true);
    bench.save();

    const Project project = parse_project(bench.saved());
    EXPECT_EQ(project.code.bytes, Bench::pattern(600));
    EXPECT_TRUE(project.code.sum_is_right);
    EXPECT_EQ(project.data.bytes, Bench::pattern(520, 2));
    EXPECT_TRUE(project.data.sum_is_right);
    EXPECT_TRUE(bench.saved().ends_with("\r\nData_File_End\r\n"));
}

TEST(ProjectFile, TheLowVoltageChoicesOfPoplarAreNotWritten)
{
    ProjectBench bench{"Poplar-1", false};
    bench.open_code(Bench::pattern(600));
    bench.save();
    EXPECT_EQ(bench.saved().find("LVD_Reset"), std::string::npos);
    EXPECT_NE(bench.saved().find("EN810_200mS_YES: "), std::string::npos);
}

TEST(ProjectFile, OnlyTheLowerDividerOfMapleAndOakIsThere)
{
    ProjectBench bench{"Maple-1S"};
    bench.open_code(Bench::pattern(600));
    bench.form.list("comWDT_Prescalar", 1).set_text("4096");
    bench.save();
    EXPECT_NE(bench.saved().find("\r\nRC30K_Divder: 4096\r\nbuffer_check_sum: "), std::string::npos);
}

// ---- a job and back, for a model of every page of options

struct Station {
    const char* model;
    bool english;
};
void PrintTo(const Station& job, std::ostream* out) { *out << job.model << (job.english ? ", English" : ", Chinese"); }
class EveryPage : public ::testing::TestWithParam<Station> { };

TEST_P(EveryPage, SavedChangedAndOpenedIsTheSameJob)
{
    ProjectBench bench{GetParam().model, GetParam().english};
    bench.put(bench.shell.code_buffer, Bench::pattern(1000, 3));
    bench.put(bench.shell.data_buffer, Bench::pattern(777, 4));
    bench.turn_all_options();
    bench.fill_in_numbers();
    bench.save();
    const auto values = project_values(bench.shell);
    const auto state = bench.state();
    const Bytes code = bench.shell.code_buffer.data;
    const Bytes data = bench.shell.data_buffer.data;
    const std::int32_t code_high = bench.shell.code_buffer.view_high;
    const std::int32_t data_high = bench.shell.data_buffer.view_high;

    bench.change_everything();
    EXPECT_NE(bench.changes_since(state), "");
    bench.open();
    EXPECT_TRUE(bench.no_more_boxes()) << bench.dialogs.shown.back().box.text;

    EXPECT_EQ(bench.shell.selected.mcu_name, GetParam().model);
    EXPECT_EQ(bench.form.label("Label2", 6).caption(), std::string{"MCU Type: "} + GetParam().model);
    const auto opened = project_values(bench.shell);
    EXPECT_TRUE(std::equal(values.begin(), values.end(), opened.begin(), opened.end(),
        [](const ProjectValue& one, const ProjectValue& other) {
            return one.key == other.key && trimmed(one.value) == trimmed(other.value);
        }));
    EXPECT_EQ(bench.shell.code_buffer.data, code);
    EXPECT_EQ(bench.shell.data_buffer.data, data);
    EXPECT_EQ(bench.shell.code_buffer.high, code_high);
    EXPECT_EQ(bench.shell.code_buffer.view_high, code_high);
    EXPECT_EQ(bench.shell.data_buffer.high, data_high);
    EXPECT_EQ(bench.shell.data_buffer.view_high, data_high);
    EXPECT_TRUE(bench.shell.data_buffer.loaded);
    EXPECT_TRUE(bench.shell.file_loaded);

    // And once more: what is opened saves as the same file but for the blanks at the end of values.
    const std::string first = bench.saved();
    bench.save();
    bench.open();
    EXPECT_EQ(bench.shell.code_buffer.data, code);
    EXPECT_EQ(parse_project(bench.saved()).values, parse_project(first).values);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Projects, EveryPage, ::testing::Values(
    Station{"Alder-64", false},    // page 0
    Station{"Aspen-63", false},    // page 1
    Station{"Birch-4", false},     // page 2
    Station{"Birch-4", true},      // page 2, one key differs by language
    Station{"Pine-61", true},      // page 2, boot loader above the code
    Station{"Cedar-0.5", false},   // page 4, small
    Station{"Fir-1", true},        // page 4
    Station{"Hazel-6", true},      // page 5
    Station{"Juniper-60Q", false}, // page 6
    Station{"Juniper-60Q", true},  // page 6, one key differs by language
    Station{"Larch-4V", true},     // page 7
    Station{"Maple-1S", false},    // page 8
    Station{"Oak-32", true},      // page 9
    Station{"Poplar-1", false},    // page 10
    Station{"Poplar-1", true}));   // page 10, as Larch's in English
// clang-format on

TEST(OpenProject, RestoresEveryControlOfTheSameModel)
{
    ProjectBench bench{"Oak-32", false};
    bench.open_code(Bench::pattern(1000, 3));
    bench.turn_all_options();
    bench.fill_in_numbers();
    bench.save();
    const auto state = bench.state();
    bench.change_everything();
    bench.open();
    EXPECT_EQ(bench.changes_since(state), "");
}

TEST(OpenProject, WithoutAnEepromImageLeavesItsBufferCleared)
{
    ProjectBench bench;
    bench.open_code(Bench::pattern(600));
    bench.save();
    bench.open_data(Bench::pattern(100));
    bench.open();
    EXPECT_FALSE(bench.shell.data_buffer.loaded);
    EXPECT_EQ(bench.shell.data_buffer.data, Bytes(bench.shell.data_buffer.data.size(), 0));
    EXPECT_TRUE(bench.no_more_boxes());
}

TEST(OpenProject, TheLengthIsWhatWasSavedWithoutAMinimum)
{
    ProjectBench bench;
    bench.open_text("VER: 1.2\r\nMCU_Type: Juniper-60Q\r\nbuffer_check_sum: 6\r\nEND\r\n010203\r\n");
    EXPECT_EQ(bench.shell.code_buffer.high, 2);
    EXPECT_EQ(bench.shell.code_buffer.first, 0);
    EXPECT_EQ(bench.form.label("Label7", 1).caption(), "Effective length of code file: 3");
    EXPECT_EQ(bench.form.text_box("txtBuffer").text(), "000000   01 02 03 \r\n");
    EXPECT_TRUE(bench.no_more_boxes());
}

TEST(OpenProject, ReadyToDownloadTheChipGetsTheImage)
{
    ProjectBench bench{"Hazel-1"};
    bench.open_code(Bench::pattern(900));
    bench.save();
    bench.change_everything();
    bench.open();
    bench.download();
    EXPECT_TRUE(bench.shell.succeeded);
    EXPECT_EQ(bench.flash(0, 899), Bench::pattern(900));
    EXPECT_EQ(panel_state(bench.shell), 2) << "locked before, locked behind";
}

// ---- values

TEST(ProjectValues, TrueFalseAndNumbersCheckAndUncheck)
{
    ProjectBench bench{"Hazel-1"};
    const std::string head = "VER: 1.2\r\nMCU_Type: Hazel-1\r\nAuto_Increase_Address: 01FF\r\n";
    bench.open_text(head + "Auto_Increase_Enable: True\r\nHalf_Gain_YES: 1\r\nHalf_Gain_NO: 0\r\nEND\r\n");
    EXPECT_TRUE(bench.form.check_box("cheAuto_Increase").value());
    EXPECT_TRUE(bench.chosen("Option2(1)"));
    EXPECT_FALSE(bench.chosen("Option2(0)"));
    bench.open_text(head + "Auto_Increase_Enable: False\r\nEND\r\n");
    EXPECT_FALSE(bench.form.check_box("cheAuto_Increase").value());
    bench.open_text(head + "Auto_Increase_Enable: -1\r\nEND\r\n");
    EXPECT_TRUE(bench.form.check_box("cheAuto_Increase").value());
    bench.open_text(head + "Auto_Increase_Enable: 0\r\nEND\r\n");
    EXPECT_FALSE(bench.form.check_box("cheAuto_Increase").value());
}

TEST(ProjectValues, ADividerIsChosenByItsTextElseByItsNumber)
{
    ProjectBench bench{"Maple-1S"};
    const std::string head = "VER: 1.2\r\nMCU_Type: Maple-1S\r\n";
    bench.open_text(head + "WDT_Prescalar: 4\r\nRC30K_Divder: 8192\r\nEND\r\n");
    EXPECT_EQ(bench.form.list("comWDT_Prescalar", 0).text(), "4");
    EXPECT_EQ(bench.form.list("comWDT_Prescalar", 1).text(), "8192");
    bench.open_text(head + "WDT_Prescalar: 6\r\nRC30K_Divder: 0\r\nEND\r\n");
    EXPECT_EQ(bench.form.list("comWDT_Prescalar", 0).text(), "128");
    EXPECT_EQ(bench.form.list("comWDT_Prescalar", 1).text(), "4096");
    bench.open_text(head + "WDT_Prescalar: 25\r\nRC30K_Divder: -1\r\nEND\r\n");
    EXPECT_EQ(bench.form.list("comWDT_Prescalar", 0).text(), "256") << "the panel's default";
    EXPECT_EQ(bench.form.list("comWDT_Prescalar", 1).text(), "32768");
}

TEST(ProjectValues, UnknownKeysAndThoseOfAnotherLayoutAreIgnored)
{
    ProjectBench bench{"Hazel-1"};
    const auto state = bench.state();
    bench.open_text("VER: 1.2\r\nMCU_Type: Hazel-1\r\nDouble_speed_YES: True\r\nRC30K_Divder: 4096\r\nClew: x\r\n"
                    "Half_Gain_Clew: another caption\r\nfoo: bar\r\n: x\r\nno colon\r\nbuffer_check_sum: 0\r\n"
                    "安全锁: 7\r\nEND\r\n00\r\n");
    EXPECT_EQ(bench.changes_since(state),
        "Label7(1): 'Effective length of code file:', 'Effective length of code file: 1'\n");
}

TEST(ProjectValues, ADamagedChoiceLeavesNoPairWithoutAChoice)
{
    ProjectBench bench{"Hazel-1"};
    bench.open_text(
        "VER: 1.2\r\nMCU_Type: Hazel-1\r\nInterior_Oscillate: False\r\nExterior_Oscillate: Xrue\r\nEND\r\n");
    EXPECT_TRUE(bench.chosen("Option0(0)"));
    EXPECT_FALSE(bench.chosen("Option0(1)"));
}

// ---- refusals

TEST(OpenProject, WithoutAModelIsRefusedAndChangesNothing)
{
    ProjectBench bench{"Oak-32"};
    bench.open_code(Bench::pattern(600));
    const auto state = bench.state();
    bench.open_text("VER: 1.2\r\nAuto_Increase_Next: 77\r\nEND\r\n00\r\n");
    EXPECT_EQ(bench.next_box(), "Can not find the MCU type: ");
    EXPECT_EQ(bench.changes_since(state), "");
    EXPECT_TRUE(bench.shell.file_loaded);
    EXPECT_EQ(panel_state(bench.shell), 0);
    EXPECT_EQ(bench.form.text_box("texBatchFileName").text(), bench.path);
}

TEST(OpenProject, OfAModelThatNobodyKnowsChangesNothing)
{
    ProjectBench bench{"Aspen-63", false};
    bench.open_code(Bench::pattern(600));
    set_locked(bench.shell, true);
    const auto state = bench.state();
    const bool abuts = bench.shell.selected.ap_abuts_isp;
    bench.open_text("VER: 1.2\r\nMCU_Type: Hazel-1000\r\nAuto_Increase_Next: 77\r\nEND\r\n00\r\n");
    EXPECT_EQ(bench.next_box(), "找不到 MCU: Hazel-1000");
    EXPECT_TRUE(bench.no_more_boxes());
    EXPECT_EQ(bench.changes_since(state), "");
    EXPECT_EQ(bench.form.label("Label2", 6).caption(), "");
    EXPECT_EQ(bench.shell.selected.mcu_name, "Aspen-63");
    EXPECT_EQ(bench.shell.selected.ap_abuts_isp, abuts);
    EXPECT_EQ(panel_state(bench.shell), 2);
}

TEST(OpenProject, OfVersion1_1IsRefused)
{
    ProjectBench bench{"Oak-32", false};
    const auto state = bench.state();
    bench.open_text("VER: 1.1\r\nMCU_Type: Hazel-1\r\nEND\r\n00\r\n");
    EXPECT_EQ(bench.next_box(), "非常抱歉，本程序不支持 1.1 版本的工程文件。");
    EXPECT_TRUE(bench.no_more_boxes());
    EXPECT_EQ(bench.changes_since(state), "");
}

TEST(OpenProject, AFileThatIsGoneIsTold)
{
    ProjectBench bench;
    const auto state = bench.state();
    bench.open();
    EXPECT_EQ(bench.next_box(), "Can not find the file.");
    open_project(bench.shell, bench.folder);
    EXPECT_EQ(bench.next_box(), "Can not find the file.") << "a folder is no project";
    EXPECT_EQ(bench.changes_since(state), "");
}

TEST(OpenProject, WrongSumsAreToldAndLoadingGoesOn)
{
    ProjectBench bench{"Juniper-60Q", false};
    bench.open_text("VER: 1.2\r\nMCU_Type: Juniper-60Q\r\nbuffer_check_sum: 7\r\nEND\r\n010203\r\nData_File_Begin:\r\n"
                    "data_buffer_check_sum: 1\r\n0A0B\r\nData_File_End\r\n");
    EXPECT_EQ(bench.next_box(), "应用程序代码校验和错。");
    EXPECT_EQ(bench.next_box(), "EEPROM 文件校验和错。");
    EXPECT_TRUE(bench.no_more_boxes());
    EXPECT_EQ(bench.shell.code_buffer.data[2], 3);
    EXPECT_EQ(bench.shell.data_buffer.data[1], 0x0B);
    EXPECT_TRUE(bench.shell.file_loaded);
    EXPECT_EQ(panel_state(bench.shell), 2);
}

TEST(OpenProject, WithoutAnImageThereIsNothingToDownload)
{
    ProjectBench bench;
    bench.open_code(Bench::pattern(600));
    bench.open_text("VER: 1.2\r\nMCU_Type: Juniper-60Q\r\nbuffer_check_sum: 0\r\nEND\r\n");
    EXPECT_EQ(bench.next_box(), "The check sum of code file is incorrect.");
    EXPECT_FALSE(bench.shell.file_loaded);
    EXPECT_EQ(bench.shell.code_buffer.data[0], 0);
}

TEST(OpenProject, WhileASequenceRunsDoesNothing)
{
    ProjectBench bench;
    bench.open_code(Bench::pattern(600));
    bench.save();
    bench.press_download();
    bench.after_ms(200, [&] {
        EXPECT_NE(click(bench.shell, bench.form.button("comOpenBatchFile")), Touch::taken);
        bench.open(); // as from a dialog that was left open
        EXPECT_EQ(panel_state(bench.shell), 1);
        EXPECT_TRUE(bench.form.button("comStop_Download").enabled());
    });
    bench.press_stop_after_ms(400);
    bench.run_until_idle();
    EXPECT_EQ(bench.shell.code_buffer.data[1], Bench::pattern(600)[1]);
}

// ---- the old format

TEST(OldProject, OfTheOldestLayoutIsReadWithItsKeys)
{
    ProjectBench bench{"Oak-32", false};
    bench.form.option("optAuto_Increase", 0).set_value(true);
    bench.open_text("MCU_Type: Birch-4\r\nFile_Name: Program File: C:\\old.hex\r\nAP_File_CheckSum: 0000006H\r\n"
                    "Auto_Increase_Enable: 0\r\nAuto_Increase_Address: 00FF\r\nAuto_Increase_Bytes: 2\r\n"
                    "Auto_Increase_Next: 0042\r\nAuto_Increase: 5\r\nAuto_Increase_HEX: False\r\n"
                    "Auto_Increase_BCD: False\r\nAuto_Increase_ASCII: True\r\nDouble_speed_YES: True\r\n"
                    "Double_speed_NO: False\r\nP4_5_As_ALE_NO: True\r\nInterior_Oscillate: True\r\n"
                    "Data_Increase_Next: 99\r\nbuffer_check_sum: 6\r\nEND\r\n010203\r\nData_File_Begin:\r\n"
                    "data_buffer_check_sum: 1\r\n01\r\n");
    EXPECT_EQ(bench.next_box(), "您使用的是旧版本的工程文件，打开文件后请仔细核对各选项是否正确。");
    EXPECT_TRUE(bench.no_more_boxes());
    EXPECT_EQ(bench.shell.selected.mcu_name, "Birch-4");
    EXPECT_EQ(bench.form.frame("Frame7").caption(), "Program File: C:\\old.hex");
    EXPECT_EQ(bench.form.text_box("txtFileCheckSum").text(), "0000006H");
    EXPECT_EQ(bench.form.text_box("texAuto_Increase", 2).text(), "0042");
    EXPECT_TRUE(bench.form.option("optAuto_Increase", 2).value());
    EXPECT_TRUE(bench.form.option("Option0", 0).value());
    EXPECT_TRUE(bench.chosen("Option11(0)"));
    EXPECT_NE(bench.form.text_box("texData_Auto_Increase", 2).text(), "99") << "that time had no such key";
    EXPECT_EQ(bench.shell.code_buffer.data[2], 3);
    EXPECT_FALSE(bench.shell.data_buffer.loaded);
    EXPECT_EQ(panel_state(bench.shell), 2);
}

TEST(OldProject, OfTheSecondLayoutTakesTheChoicesThatAreNoDefaults)
{
    ProjectBench bench{"Oak-32"};
    bench.open_text("MCU_Type: Fir-1\nInterior_Oscillate: False\nExterior_Oscillate: True\nPower_On_Run_WDT_YES: True\n"
                    "WDT_Prescalar: 8\nbuffer_check_sum: 1\nEND\n01\n");
    EXPECT_EQ(bench.next_box(), "What you are using is an old project file, carefully check each options please.");
    EXPECT_TRUE(bench.chosen("Option0(1)"));
    EXPECT_TRUE(bench.chosen("Option11(0)"));
    EXPECT_TRUE(bench.chosen("Option10(1)"));
    EXPECT_EQ(bench.form.list("comWDT_Prescalar", 0).text(), "256") << "that layout had no divider";
}

TEST(OldProject, OfALaterModelIsReadWithTheKeysOfToday)
{
    ProjectBench bench;
    bench.open_text("MCU_Type: Juniper-60Q\nWDT_Prescalar: 8\nbuffer_check_sum: 1\nEND\n01\n");
    bench.next_box();
    EXPECT_TRUE(bench.no_more_boxes());
    EXPECT_EQ(bench.form.list("comWDT_Prescalar", 0).text(), "8");
}

TEST(OldProject, BothListsHaveTheir26KeysAndNoKeyTwice)
{
    for (const int page : {0, 2, 4}) {
        const auto keys = old_project_keys(page);
        EXPECT_EQ(keys.size(), 26U);
        EXPECT_EQ(std::set<std::string_view>(keys.begin(), keys.end()).size(), 26U);
        EXPECT_EQ(keys.front(), "VER");
        EXPECT_EQ(keys.back(), "buffer_check_sum");
    }
    EXPECT_TRUE(old_project_keys(6).empty());
}

TEST(OldProject, BinaryRubbishSaysItIsOldAndOfNoModel)
{
    ProjectBench bench;
    const auto state = bench.state();
    bench.open_text(std::string_view{"\x7F"
                                     "ELF\0\1\2:\xFF\n\0\0",
        12});
    bench.next_box();
    EXPECT_EQ(bench.next_box(), "Can not find the MCU type: ");
    EXPECT_EQ(bench.changes_since(state), "");
}

// ---- serial numbers

TEST(ProjectNumber, IsTakenUpAsItStandsAndTheUserIsAskedToCheckIt)
{
    ProjectBench bench{"Juniper-60Q", false};
    bench.open_code(Bench::pattern(600));
    bench.fill_in_numbers();
    bench.shell.code_buffer.data[0x1FF] = 0x23; // stamped before it was saved
    bench.shell.code_buffer.data[0x1FE] = 0x01;
    bench.form.check_box("cheAuto_Increase").set_value(true);
    bench.save();
    bench.change_everything();
    bench.form.check_box("cheAuto_Increase").set_value(false);

    bench.open();
    EXPECT_EQ(bench.next_box(),
        "    您打开的工程文件启用了自动增量功能，请检查自动增量“下一个值(10进制)”的数值是否正确。\n"
        "若要修改“下一个值(10进制)”，请先点击“允许修改参数和选项”按钮。");
    EXPECT_TRUE(bench.no_more_boxes());
    EXPECT_TRUE(bench.form.check_box("cheAuto_Increase").value());
    EXPECT_TRUE(bench.shell.code_increase.valid);
    EXPECT_EQ(bench.shell.code_increase.next_value, "0123");
    EXPECT_EQ(bench.form.text_box("texAuto_Increase", 2).text(), "0123");
    EXPECT_EQ(bench.shell.code_buffer.data[0x1FF], 0x23);
    EXPECT_EQ(bench.shell.code_buffer.data[0x1FE], 0x01);
    EXPECT_EQ(bench.shell.code_buffer.data[0x1FD], Bench::pattern(600)[0x1FD]) << "not stamped anew";
    EXPECT_FALSE(bench.shell.data_increase.valid);
}

// The box used to stay ticked, and every chip went out without a number.
TEST(ProjectNumber, WithABadAddressIsToldAndNotTakenUp)
{
    ProjectBench bench{"Hazel-1"};
    bench.open_text("VER: 1.2\r\nMCU_Type: Hazel-1\r\nAuto_Increase_Enable: 1\r\nAuto_Increase_Address: FFFF\r\n"
                    "Auto_Increase_Bytes: 2\r\nbuffer_check_sum: 1\r\nEND\r\n01\r\n");
    EXPECT_NE(bench.next_box().find("auto increament"), std::string::npos);
    EXPECT_EQ(bench.next_box(),
        "The project file has atomatic increment function. \n"
        "Please check the next value whether it is correct or not(10 base).");
    EXPECT_FALSE(bench.form.check_box("cheAuto_Increase").value());
    EXPECT_FALSE(bench.shell.code_increase.valid);
}

TEST(ProjectNumber, OfTheJobBeforeIsNotTakenOver)
{
    ProjectBench bench{"Hazel-1"};
    bench.shell.code_increase.valid = true;
    bench.shell.data_increase.valid = true;
    bench.open_text("VER: 1.2\r\nMCU_Type: Hazel-1\r\nbuffer_check_sum: 1\r\nEND\r\n01\r\n");
    EXPECT_FALSE(bench.shell.code_increase.valid);
    EXPECT_FALSE(bench.shell.data_increase.valid);
    EXPECT_TRUE(bench.no_more_boxes());
}

// A locked project used to be replaced by the code file of the job before.
TEST(OpenProject, ReloadBeforeADownloadDoesNotBringTheFileOfTheJobBefore)
{
    ProjectBench bench;
    const auto job = Bench::pattern(0x300, 5);
    bench.open_code(job);
    bench.save();
    bench.open_code(Bench::pattern(0x300, 6));
    bench.open();
    bench.form.check_box("cekReloadFile").set_value(true);
    reload_code_file(bench.shell);
    EXPECT_EQ(bench.code(0, 0x2FF), job);
    EXPECT_TRUE(bench.shell.loader.code_is_project);
    bench.open_code(Bench::pattern(0x300, 7));
    EXPECT_FALSE(bench.shell.loader.code_is_project);
}
