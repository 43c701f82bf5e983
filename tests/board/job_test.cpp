// Jobs of the off-line board, from the press to what the board holds.
#include "board/board_bench.h"

using namespace vrk;

namespace {

sim::BoardSetup version(std::uint8_t digits, const BoardJob& job, bool single_area = false)
{
    sim::BoardSetup setup = board_for(job.model);
    setup.version = digits;
    setup.single_area = single_area;
    return setup;
}

Bytes first_frame_with(const sim::Board& board, std::uint8_t code)
{
    for (const Bytes& frame : board.frames()) {
        if (frame[5] == code)
            return frame;
    }
    return {};
}

} // namespace

TEST(BoardJob, WaitsForPowerAndWritesTheWholeImage)
{
    BoardBench bench(job_for("Birch-16"));
    bench.power_up_after_ms(4500);
    EXPECT_EQ(bench.run(), Result::good);
    EXPECT_EQ(bench.board.violations(), "");
    EXPECT_EQ(bench.held(0x4000, 0xF7FF), bench.planned(0x4000, 0xF7FF));
    EXPECT_THAT(bench.report.lines,
        ::testing::ElementsAre("We are trying to connect to target MCU ... \nPlease turn power on.", "Version: 1.7",
            "Connect OK.", "we are  processing data, please wait...", "We are erasing MCU flash ...",
            "We are programming ...", "Download OK. / 下载成功。"));
    EXPECT_TRUE(bench.report.boxes.empty());
}

TEST(BoardJob, TellsTheSameInChinese)
{
    BoardBench bench(job_for("Birch-16"));
    bench.report.english = false;
    EXPECT_EQ(bench.run_with_power(), Result::good);
    EXPECT_THAT(bench.report.lines,
        ::testing::ElementsAre("正在连接...\n请给脱机下载板上电。", "脱机下载固件版本号: 1.7",
            "Connect OK. / 连接成功。", "正在处理数据，请稍候...", "正在擦除全片内容...", "正在下载 ...",
            "Download OK. / 下载成功。"));
}

// The frames of a job for series 2 and id F104, as they stand on the wire.
TEST(BoardFrames, AreThoseOfTheLinkWithACrcBehindThem)
{
    BoardBench bench(job_for("Birch-16"));
    EXPECT_EQ(bench.run_with_power(), Result::good);
    EXPECT_EQ(first_frame_with(bench.board, 0x0C),
        (Bytes{0x46, 0xB9, 0x6A, 0x00, 0x0D, 0x0C, 0x02, 0x00, 0x36, 0x01, 0xF1, 0x04, 0x45, 0xF9, 0x16}));
    EXPECT_EQ(first_frame_with(bench.board, 0x84),
        (Bytes{0x46, 0xB9, 0x6A, 0x00, 0x0D, 0x84, 0x02, 0x00, 0x36, 0x01, 0xF1, 0x04, 0x4D, 0xF1, 0x16}));
    const Bytes write = first_frame_with(bench.board, 0x00);
    ASSERT_EQ(write.size(), 143U);
    EXPECT_EQ(Bytes(write.begin(), write.begin() + 12),
        (Bytes{0x46, 0xB9, 0x6A, 0x00, 0x8D, 0x00, 0x00, 0x00, 0x40, 0x00, 0x00, 0x80}));
}

TEST(BoardFrames, OfAVersionCommandForIdF101EndIn85Fa16)
{
    McuRecord model;
    model.series = 2;
    model.mcu_id = "F101";
    EXPECT_EQ(build_model_frame(0x0C, 0, model, "", Check::crc16),
        (Bytes{0x46, 0xB9, 0x6A, 0x00, 0x0D, 0x0C, 0x02, 0x00, 0x36, 0x01, 0xF1, 0x01, 0x85, 0xFA, 0x16}));
}

TEST(BoardFrames, NameAModelOfTwoDigitsWithFfBehindThem)
{
    BoardBench bench(job_for("Aspen-8"));
    bench.run_with_power();
    EXPECT_EQ(bench.board.violations(), "");
    EXPECT_EQ(first_frame_with(bench.board, 0x84)[11], 0xFF);
}

TEST(BoardFrames, NameTheOlderIdOfAModelThatAChipHasReportedWithIt)
{
    BoardJob job = job_for("Birch-16");
    job.model.alt_id = "F0A4";
    job.reported_id = "F0A4";
    sim::BoardSetup setup = board_for(job.model);
    setup.id = {0xF0, 0xA4};
    BoardBench bench(job, setup);
    EXPECT_EQ(bench.run_with_power(), Result::good);
    EXPECT_EQ(bench.board.violations(), "");
}

// ---- versions and areas

TEST(BoardVersion, Of15EndsAfterTheFirstArea)
{
    const BoardJob job = job_for("Birch-16");
    BoardBench bench(job, version(0x15, job));
    EXPECT_EQ(bench.run_with_power(), Result::good);
    EXPECT_EQ(bench.board.frame_count(0x86), 0);
    EXPECT_EQ(bench.held(0x4000, 0xF3FF), bench.planned(0x4000, 0xF3FF));
    EXPECT_EQ(bench.board.memory()[0xF400], 0xFF) << "nothing above F3FF below version 17";
    EXPECT_EQ(bench.report.lines.back(), "Download OK. / 下载成功。");
}

TEST(BoardVersion, Of16GoesOnToTheSecondArea)
{
    const BoardJob job = job_for("Birch-62", 0xC800);
    BoardBench bench(job, version(0x16, job));
    EXPECT_EQ(bench.run_with_power(), Result::good);
    EXPECT_EQ(bench.board.violations(), "");
    EXPECT_EQ(bench.board.frame_count(0x86), 1);
    EXPECT_EQ(bench.held(0x4000, 0xF3FF), bench.planned(0x4000, 0xF3FF));
    EXPECT_EQ(bench.held(0x2000, 0x3FFF), bench.planned(0x2000, 0x3FFF));
    EXPECT_EQ(bench.report.lines.back(), "Program OK.");
}

TEST(BoardVersion, OfALetterCountsAsItsDigitsBeforeIt)
{
    const BoardJob job = job_for("Birch-16");
    BoardBench bench(job, version(0x1A, job));
    EXPECT_EQ(bench.run_with_power(), Result::good);
    EXPECT_TRUE(bench.says("Version: 1.A"));
    EXPECT_EQ(bench.board.frame_count(0x86), 1) << "1, and no 26";
    BoardFacts facts;
    facts.firmware = "1A";
    EXPECT_EQ(facts.version(), 1);
    facts.firmware = "A1";
    EXPECT_EQ(facts.version(), 0);
    facts.firmware = "17";
    EXPECT_EQ(facts.version(), 17);
}

TEST(BoardWithASingleArea, GetsItsSecondBankAtThePlaceOfTheFirst)
{
    const BoardJob job = job_for("Birch-62", 0xF000);
    BoardBench bench(job, version(0x17, job, true));
    EXPECT_EQ(bench.run_with_power(), Result::good);
    EXPECT_EQ(bench.board.violations(), "");
    EXPECT_EQ(bench.held(0x4000, 0xF7FF), bench.planned(0x4000, 0xF7FF));
    const Bytes& bank = bench.board.second_bank();
    const auto file = [&](std::size_t at) { return bench.job.code.bytes.begin() + static_cast<std::ptrdiff_t>(at); };
    EXPECT_TRUE(std::equal(file(0xAC00), file(0xF000), bank.begin() + 0x4000));
    EXPECT_EQ(bench.report.lines.back(), "Program OK.");
}

// ---- faults on the line

TEST(BoardLink, SurvivesLostAndDamagedAnswers)
{
    BoardBench bench(job_for("Birch-16"));
    for (const int lost : {3, 5, 9, 14, 20, 33})
        bench.board.replies.lose(lost);
    for (const int damaged : {15, 24, 41})
        bench.board.replies.damage(damaged, 4, 0x10);
    EXPECT_EQ(bench.run_with_power(), Result::good);
    EXPECT_EQ(bench.board.violations(), "");
    EXPECT_EQ(bench.held(0x4000, 0xF7FF), bench.planned(0x4000, 0xF7FF));
}

// An answer does not say which frame it is for: one to an earlier sending used to be able to vouch for the next block.
TEST(BoardLink, LateAnswerVouchesForNoOtherFrame)
{
    BoardBench bench(job_for("Birch-16"));
    bench.when_frame(0x00, 5, [&bench] { bench.board.replies.delay(1, 630'000); });
    bench.board.on_frame = [&bench, next = bench.board.on_frame](std::uint8_t code) {
        next(code);
        if (code == 0x30 &&
            bench.board.frame_count(0x30) == 2) // the repeat was answered; the frame behind it is not heard
            bench.board.deaf_to[0x30] = 1;
    };
    EXPECT_EQ(bench.run_with_power(), Result::good);
    EXPECT_GE(bench.board.frame_count(0x30), 6);
    EXPECT_EQ(bench.held(0x4000, 0xF7FF), bench.planned(0x4000, 0xF7FF));
}

// A late answer to one of several calls used to be taken for the answer to a block that the board had not heard.
TEST(BoardLink, LateAnswerToACallVouchesForNoBlock)
{
    const BoardJob job = job_for("Birch-62", 0xC800);
    BoardBench bench(job, version(0x16, job));
    bench.when_frame(0x86, 1, [&bench] { bench.board.replies.delay(2, 165'000); });
    bench.board.on_frame = [&bench, next = bench.board.on_frame](std::uint8_t code) {
        next(code);
        if (code == 0x00 && bench.board.frames().back()[8] == 0x20 && bench.board.frames().back()[9] == 0x00)
            bench.board.deaf_to[0x00] = 1;
    };
    EXPECT_EQ(bench.run_with_power(), Result::good);
    EXPECT_EQ(bench.held(0x2000, 0x3FFF), bench.planned(0x2000, 0x3FFF));
}

TEST(BoardLink, BlockThatIsRefusedOnceIsSentAgainFromItsStartWithItsMark)
{
    BoardBench bench(job_for("Birch-16"));
    bench.board.refused[0x4280] = 1;
    EXPECT_EQ(bench.run_with_power(), Result::good);
    EXPECT_EQ(bench.board.frame_count(0x30), 4);
    EXPECT_EQ(bench.held(0x4000, 0xF7FF), bench.planned(0x4000, 0xF7FF));
}

TEST(BoardLink, BlockGetsSixTries)
{
    BoardBench bench(job_for("Birch-16"));
    bench.board.refused[0x4200] = 5;
    EXPECT_EQ(bench.run_with_power(), Result::good);

    BoardBench worse(job_for("Birch-16"));
    worse.board.refused[0x4200] = 6;
    EXPECT_EQ(worse.run_with_power(), Result::programming_failed);
    EXPECT_EQ(worse.report.lines.back(), "Program failure!");
    EXPECT_EQ(worse.report.beeps, 3);
}

TEST(BoardLink, LastBlockGetsThreeTries)
{
    BoardBench bench(job_for("Birch-16"));
    bench.board.refused[0xF600] = 2;
    EXPECT_EQ(bench.run_with_power(), Result::good);

    BoardBench worse(job_for("Birch-16"));
    worse.board.refused[0xF600] = 3;
    EXPECT_EQ(worse.run_with_power(), Result::programming_failed);
}

TEST(BoardLink, WriteThatIsAnsweredWithAnotherCodeFails)
{
    BoardBench bench(job_for("Birch-16"));
    bench.board.answers_writes_with = 0x00;
    EXPECT_EQ(bench.run_with_power(), Result::programming_failed);
    EXPECT_EQ(bench.board.frame_count(0x00) + bench.board.frame_count(0x30), 6);
}

TEST(BoardLink, ErasureGetsSixTries)
{
    BoardBench bench(job_for("Birch-16"));
    bench.board.deaf_to[0x84] = 5;
    EXPECT_EQ(bench.run_with_power(), Result::good);

    BoardBench worse(job_for("Birch-16"));
    worse.board.deaf_to[0x84] = 6;
    EXPECT_EQ(worse.run_with_power(), Result::erase_failed);
    EXPECT_EQ(worse.report.lines.back(), "Erasing MCU failed.");
    EXPECT_EQ(worse.board.frame_count(0x00), 0);
}

TEST(BoardLink, SecondErasureThatFailsIsTold)
{
    const BoardJob job = job_for("Birch-16");
    BoardBench bench(job, version(0x16, job));
    bench.report.english = false;
    bench.board.deaf_to[0x86] = 6;
    EXPECT_EQ(bench.run_with_power(), Result::erase_failed);
    EXPECT_EQ(bench.report.lines.back(), "下载失败。");
}

TEST(BoardLink, BoardThatStaysSilentBehindTheSecondErasureIsTold)
{
    const BoardJob job = job_for("Birch-16");
    BoardBench bench(job, version(0x16, job));
    bench.when_frame(0x86, 1, [&bench] { bench.board.deaf_to[0x80] = 1000; });
    EXPECT_EQ(bench.run_with_power(), Result::no_answer);
    EXPECT_EQ(bench.report.lines.back(), "Program failed.");
}

TEST(BoardLink, VersionAndProbeGetFourTriesEach)
{
    BoardBench bench(job_for("Birch-16"));
    bench.board.deaf_to[0x0C] = 3;
    bench.board.deaf_to[0x0E] = 3;
    EXPECT_EQ(bench.run_with_power(), Result::good);

    BoardBench no_version(job_for("Birch-16"));
    no_version.board.deaf_to[0x0C] = 4;
    EXPECT_EQ(no_version.run_with_power(), Result::no_answer);
    EXPECT_EQ(no_version.report.lines.back(), "Connection failed!");

    BoardBench no_probe(job_for("Birch-16"));
    no_probe.board.deaf_to[0x0E] = 4;
    EXPECT_EQ(no_probe.run_with_power(), Result::no_answer);
    EXPECT_EQ(no_probe.report.lines.back(), "Connection failed!");
}

TEST(BoardLink, AfterAFailureTheNextJobWorks)
{
    BoardBench bench(job_for("Birch-16"));
    bench.when_frame(0x00, 40, [&bench] { bench.board.power(false); });
    EXPECT_EQ(bench.run_with_power(), Result::programming_failed);
    EXPECT_EQ(bench.run_with_power(), Result::good);
    EXPECT_EQ(bench.board.violations(), "");
    EXPECT_EQ(bench.held(0x4000, 0xF7FF), bench.planned(0x4000, 0xF7FF));
}

TEST(BoardLink, WithoutABoardCallsForOverAnHourAndThenSaysSo)
{
    BoardBench bench(job_for("Birch-16"));
    EXPECT_EQ(bench.run(), Result::no_answer);
    EXPECT_EQ(bench.report.lines.back(), "Connection failed!");
    EXPECT_EQ(bench.took_ms, 20001 * 200);
}

TEST(BoardLink, SendsAWakeByteBehindEachCall)
{
    BoardBench bench(job_for("Birch-16"));
    bench.board.deaf_to[0x80] = 20;
    EXPECT_EQ(bench.run_with_power(), Result::good);
    EXPECT_EQ(bench.board.wake_bytes(), 21);
}

// ---- stops and ports

TEST(BoardJob, IsStoppedWhileItWaitsForPower)
{
    BoardBench bench(job_for("Birch-16"));
    bench.stop_after_ms(1000);
    EXPECT_EQ(bench.run(), Result::stopped);
    EXPECT_LT(bench.took_ms, 1050);
    EXPECT_EQ(bench.report.lines.back(), "Operation stopped.");
    EXPECT_EQ(bench.report.beeps, 1);
    EXPECT_EQ(bench.run_with_power(), Result::good);
}

TEST(BoardJob, IsStoppedInTheErasure)
{
    BoardBench bench(job_for("Birch-16"));
    bench.when_frame(0x84, 1, [&bench] { bench.stop(); });
    EXPECT_EQ(bench.run_with_power(), Result::stopped);
    EXPECT_EQ(bench.report.lines.back(), "Operation stopped.");
    EXPECT_EQ(bench.board.frame_count(0x00), 0);
}

TEST(BoardJob, IsStoppedInTheWriting)
{
    BoardBench bench(job_for("Birch-16"));
    bench.report.english = false;
    bench.when_frame(0x00, 10, [&bench] { bench.stop(); });
    EXPECT_EQ(bench.run_with_power(), Result::stopped);
    EXPECT_EQ(bench.report.lines.back(), "操作被停止.");
    EXPECT_EQ(bench.board.frame_count(0x00), 10);
}

TEST(BoardJob, EndsAtOnceWhenItsPortGoes)
{
    BoardBench bench(job_for("Birch-16"));
    bench.when_frame(0x00, 10, [&bench] { bench.ports.remove("board"); });
    EXPECT_EQ(bench.run_with_power(), Result::port_gone);
    EXPECT_EQ(bench.report.lines.back(), "Program failure!");
    EXPECT_TRUE(bench.says("The serial port is gone."));
}

TEST(BoardJob, EndsAtOnceWhenItsPortGoesInTheWaitForPower)
{
    BoardBench bench(job_for("Birch-16"));
    bench.loop.call_at(bench.loop.now_us() + 1'000'000, [&bench] { bench.ports.remove("board"); });
    EXPECT_EQ(bench.run(), Result::port_gone);
    EXPECT_LT(bench.took_ms, 1050);
}

TEST(BoardJob, SaysThatThePortDoesNotOpen)
{
    BoardBench bench(job_for("Birch-16"));
    bench.ports.refuse_open("board");
    EXPECT_EQ(bench.run(), Result::no_port);
    EXPECT_EQ(bench.report.lines.back(),
        "Open COM port failed!\nThe COM port is opened by another Program or the COM port does not exist.");
}

// ---- what is refused

TEST(BoardJob, RefusesAQuantityBeforeAnythingIsSent)
{
    BoardBench bench(job_for("Birch-16"));
    bench.job.quantity = 0;
    EXPECT_EQ(bench.run(), Result::refused);
    EXPECT_EQ(bench.report.boxes, std::vector<std::string>{"The number of MCU is too small."});
    EXPECT_EQ(bench.took_ms, 0);
    bench.report.boxes.clear();
    bench.job.quantity = 1000001;
    EXPECT_EQ(bench.run(), Result::refused);
    EXPECT_EQ(bench.report.boxes,
        std::vector<std::string>{
            "The number of MCU should be less than or equal to 1000000 on an off-line progam board."});
}

TEST(BoardJob, RefusesNumbersThatGrowTooLarge)
{
    BoardBench bench(job_for("Birch-16"));
    bench.job.code_number = {true, 0x81, 4, 2147483640, 1, AutoIncrease::hex};
    EXPECT_EQ(bench.run_with_power(), Result::refused);
    EXPECT_EQ(bench.report.boxes,
        std::vector<std::string>{"Auto increment + (increment * 'Number of MCU') too big( >2147483648 ), \n"
                                 "Please decrease the auto increment value, or decrease the increment value，"
                                 "or decrease the limitation of the number of MCU."});
    EXPECT_EQ(bench.board.frame_count(0x84), 0);
}

TEST(BoardJob, RefusesANumberThatTheBoardWouldNotWrite)
{
    BoardBench bench(job_for("Birch-16", 0x400));
    bench.job.code_number = {true, 0x2000, 4, 1, 1, AutoIncrease::hex};
    EXPECT_EQ(bench.run_with_power(), Result::number_outside);
    EXPECT_EQ(bench.report.boxes.size(), 1U);
    EXPECT_EQ(bench.board.frame_count(0x84), 0);
}

TEST(BoardJob, RefusesNumbersThatWouldRunOutOfTheirBytes)
{
    BoardBench bench(job_for("Birch-16"));
    bench.job.code_number = {true, 0x81, 1, 250, 1, AutoIncrease::hex};
    EXPECT_EQ(bench.run_with_power(), Result::refused);
    EXPECT_EQ(bench.report.boxes, std::vector<std::string>{"The number of bytes is too small."});
    EXPECT_EQ(bench.board.frame_count(0x84), 0);
}

// Boards of these versions get nothing above their first area, whatever they claim to hold. Such a board used to be
// called good.
TEST(BoardJob, RefusesWhatLiesAboveTheOnlyAreaThatIsWritten)
{
    const BoardJob job = job_for("Birch-62", 0xAC01);
    for (const int digits : {0x15, 0x17, 0x20}) {
        BoardBench bench(job, version(static_cast<std::uint8_t>(digits), job));
        EXPECT_EQ(bench.run_with_power(), Result::refused);
        EXPECT_EQ(bench.report.boxes,
            std::vector<std::string>{"Only 43K of code and data can be written into this off-line board, 44K are "
                                     "needed. Nothing was written."});
        EXPECT_EQ(bench.board.frame_count(0x84), 0);
    }
    BoardBench just_fits(job_for("Birch-62", 0xAC00), version(0x17, job));
    EXPECT_EQ(just_fits.run_with_power(), Result::good);
}

TEST(BoardJob, RefusesWhatLiesAboveBothAreas)
{
    const BoardJob job = job_for("Birch-62", 0xCC01);
    BoardBench bench(job, version(0x16, job));
    bench.report.english = false;
    EXPECT_EQ(bench.run_with_power(), Result::refused);
    EXPECT_EQ(
        bench.report.boxes, std::vector<std::string>{"此脱机下载板只能写入 51K 程序和数据，本次需要 52K，未写入。"});
    EXPECT_EQ(bench.board.frame_count(0x84), 0);
    BoardBench just_fits(job_for("Birch-62", 0xCC00), version(0x16, job));
    EXPECT_EQ(just_fits.run_with_power(), Result::good);
}

// The last address of a board's job counts code and data one behind the other; these models have a hole between them.
TEST(BoardJob, RefusesDataWhoseEndTheBoardWouldLeaveOut)
{
    BoardJob job = job_for("Fir-5", 0x1400);
    job.data = image_with(pattern(0x600, 9), 0x10001);
    BoardBench bench(job);
    EXPECT_EQ(bench.run(), Result::refused);
    EXPECT_EQ(bench.report.boxes,
        std::vector<std::string>{
            "An off-line board would leave out the end of the EEPROM data of this MCU. Nothing was written."});
    EXPECT_EQ(bench.took_ms, 0);
    bench.job.data.loaded = false;
    EXPECT_EQ(bench.run_with_power(), Result::good);
}

TEST(BoardJob, MovesTheBarOverTheBlocksThatItSums)
{
    BoardBench bench(job_for("Birch-16"));
    EXPECT_EQ(bench.run_with_power(), Result::good);
    ASSERT_GT(bench.report.steps.size(), 512U);
    for (int block = 0; block < 512; ++block) {
        const Progress& step = bench.report.steps[static_cast<std::size_t>(block)];
        EXPECT_EQ(step.unit, Progress::Unit::step);
        EXPECT_EQ(step.last, 511);
        EXPECT_EQ(step.written_to, block);
    }
    EXPECT_EQ(bench.report.steps[512].unit, Progress::Unit::byte);
}

TEST(BoardJob, SaysThatABoardIsTooSmallAndGoesOn)
{
    const BoardJob job = job_for("Birch-62", 0x9000);
    sim::BoardSetup setup = board_for(job.model);
    setup.capacity_kb = 32;
    BoardBench bench(job, setup);
    EXPECT_EQ(bench.run_with_power(), Result::good);
    EXPECT_EQ(bench.report.boxes,
        std::vector<std::string>{
            "The maximum size of downloading code and data is 32K, The exceeding part won't be downloaded."});
    EXPECT_EQ(bench.held(0xEC70, 0xEC72), (Bytes{0x00, 0x7F, 0xFF}));
}

// No job asks for the type of a board; what would become of the answer is kept right all the same.
TEST(BoardType, IsLookedAtOnlyWhereTheJobAsksForIt)
{
    const BoardJob job = job_for("Birch-16");
    sim::BoardSetup setup = board_for(job.model);
    setup.type = 5;
    BoardBench bench(job, setup);
    EXPECT_EQ(bench.run_with_power(), Result::good);
    EXPECT_EQ(bench.board.frame_count(0x69), 0);
    bench.job.asks_board_type = true;
    bench.board.power(false);
    EXPECT_EQ(bench.run_with_power(), Result::wrong_model);
    EXPECT_EQ(bench.report.lines.back(), "脱机下载板不支持您选择的 MCU。");
    EXPECT_EQ(bench.board.frame_count(0x69), 11);
}

TEST(BoardType, Of2TakesTheFamilyOfTheModel)
{
    BoardJob job = job_for("Pine-16");
    job.asks_board_type = true;
    sim::BoardSetup setup = board_for(job.model);
    setup.type = 2;
    BoardBench bench(job, setup);
    EXPECT_EQ(bench.run_with_power(), Result::good);
}

TEST(Sorter, IsSwitchedThroughAtEvenParityFirst)
{
    BoardJob job = job_for("Birch-16");
    job.behind_sorter = true;
    sim::BoardSetup setup = board_for(job.model);
    setup.behind_sorter = true;
    BoardBench bench(job, setup);
    bench.board.power(true);
    bench.loop.run_for_ms(500);
    EXPECT_EQ(bench.run(), Result::good);
    EXPECT_EQ(bench.board.violations(), "");
    EXPECT_EQ(bench.held(0x4000, 0xF7FF), bench.planned(0x4000, 0xF7FF));
}

TEST(KeptImage, ComesBackWhereTheCodeHasANumber)
{
    BoardBench bench(job_for("Birch-16"));
    EXPECT_EQ(bench.run_with_power(), Result::good);
    EXPECT_TRUE(bench.outcome.kept.empty());
    bench.board.power(false);
    bench.job.code_number = {true, 0x81, 4, 7, 1, AutoIncrease::hex};
    EXPECT_EQ(bench.run_with_power(), Result::good);
    ASSERT_EQ(bench.outcome.kept.size(), 0x10001U);
    EXPECT_EQ(bench.outcome.kept[0x7E], 0xFF);
    EXPECT_EQ(bench.outcome.kept[0x7D], bench.job.code.bytes[0x7D]);
}
