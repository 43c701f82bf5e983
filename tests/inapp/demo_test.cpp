// Downloads through a small downloader that is linked into user code.
#include "inapp/inapp_bench.h"

#include "session/program.h"

using namespace vrk;

namespace {

struct DemoBench : InappBench {
    explicit DemoBench(const sim::DemoSetup& setup = {}, const char* model = "Birch-16")
        : demo(setup)
    {
        wire.attach(demo);
        job.model = catalog_test::record(model);
        job.port = line;
        job.line = setup.line;
        job.code = code_of(0x1000);
        demo.on_frame = [this](std::uint8_t code) {
            if (at_frame && code == at_code && --at_count == 0)
                at_frame();
        };
    }
    // Once, when the downloader has the n-th frame with this code in hand.
    void when_frame(std::uint8_t code, int n, std::function<void()> act)
    {
        at_code = code;
        at_count = n;
        at_frame = std::move(act);
    }
    Result run()
    {
        Result result = Result::good;
        talk(job.model, [&](Session& talk_) {
            result = program_by_demo(talk_, job, report);
            if (result == Result::good)
                report_demo_success(talk_, report);
            status_byte = talk_.status_bytes[0];
            reported = talk_.chip.target_id_hi;
            loop.run_for_ms(50);
        });
        return result;
    }
    Result run_with_power()
    {
        after_ms(300, [this] { demo.power(true); });
        return run();
    }

    sim::DemoProgram demo;
    DemoJob job;
    std::int16_t status_byte = 0;
    std::string reported;

    std::uint8_t at_code = 0;
    int at_count = 0;
    std::function<void()> at_frame;
};

} // namespace

TEST(Demo, ConnectsErasesWritesAndRunsTheCode)
{
    DemoBench bench;
    EXPECT_EQ(bench.run_with_power(), Result::good);
    EXPECT_EQ(bench.demo.violations(), "");
    EXPECT_EQ(bench.demo.flash(0, 0xFFF), pattern(0x1000));
    EXPECT_TRUE(bench.demo.runs_code());
    EXPECT_EQ(bench.status_byte, 0xA5);
    EXPECT_EQ(bench.reported, "F1");
    ASSERT_GE(bench.report.lines.size(), 6U);
    EXPECT_EQ(bench.report.lines[0], "We are trying to connect to target MCU ... ");
    EXPECT_EQ(bench.report.lines[1], "Connection is OK...");
    EXPECT_EQ(bench.report.lines[2], "We are reading MCU Firmware Version ...");
    EXPECT_TRUE(bench.says("We are erasing MCU flash..."));
    EXPECT_THAT(bench.report.lines.back(), ::testing::MatchesRegex("Program OK.\nVerify  OK \\( Total: ..:.. \\)"));
}

TEST(Demo, TellsTheSameInChinese)
{
    DemoBench bench;
    bench.report.english = false;
    EXPECT_EQ(bench.run_with_power(), Result::good);
    EXPECT_EQ(bench.report.lines[0], "Chinese:正在尝试与 MCU/单片机 握手连接 ... ");
    EXPECT_EQ(bench.report.lines[1], "Connection is OK... / 握手成功...");
    EXPECT_TRUE(bench.says("正在擦除应用程序区..."));
    EXPECT_THAT(bench.report.lines.back(),
        ::testing::MatchesRegex("Program OK / 下载 OK\nVerify  OK / 校验 OK  \\( Total: ..:.. \\)"));
}

// As they stand on the wire.
TEST(DemoFrames, AreEightBytesAndASum)
{
    DemoBench bench;
    EXPECT_EQ(bench.run_with_power(), Result::good);
    const auto& frames = bench.demo.frames();
    const auto frame = [&](std::uint8_t code) {
        return *std::find_if(frames.begin(), frames.end(), [code](const Bytes& one) { return one[4] == code; });
    };
    EXPECT_EQ(frame(0xB0), (Bytes{0x5A, 0xA5, 0x00, 0x08, 0xB0, 0x01, 0xB7, 0x16}));
    EXPECT_EQ(frame(0xB2), (Bytes{0x5A, 0xA5, 0x00, 0x08, 0xB2, 0x01, 0xB9, 0x16}));
    EXPECT_EQ(frame(0xB5), (Bytes{0x5A, 0xA5, 0x00, 0x08, 0xB5, 0x01, 0xBC, 0x16}));
    const Bytes block = frame(0xB3);
    ASSERT_EQ(block.size(), 142U);
    EXPECT_EQ(Bytes(block.begin(), block.begin() + 11),
        (Bytes{0x5A, 0xA5, 0x00, 0x8E, 0xB3, 0x00, 0x00, 0x00, 0x00, 0x00, 0x80}));
    EXPECT_EQ(bench.demo.frame_count(0xB1), 1) << "the second one finds the code running";
}

TEST(DemoConnection, WaitsLongerForAnAnswerOnASlowLine)
{
    EXPECT_EQ(demo_connect_ms(1200), 200);
    EXPECT_EQ(demo_connect_ms(2400), 100);
    EXPECT_EQ(demo_connect_ms(4800), 50);
    EXPECT_EQ(demo_connect_ms(115200), 50);
}

TEST(DemoConnection, WorksAtEverySpeedAndParity)
{
    const LineSettings lines[] = {
        {2400, Parity::none, 8, 1}, {4800, Parity::even, 8, 1}, {9600, Parity::odd, 8, 2}, {57600, Parity::none, 8, 1}};
    for (const LineSettings& settings : lines) {
        sim::DemoSetup setup;
        setup.line = settings;
        DemoBench bench(setup);
        bench.job.code = code_of(0x300);
        EXPECT_EQ(bench.run_with_power(), Result::good) << settings.baud;
        EXPECT_EQ(bench.demo.flash(0, 0x2FF), pattern(0x300)) << settings.baud;
        EXPECT_EQ(bench.demo.violations(), "") << settings.baud;
    }
}

TEST(DemoConnection, CallsUntilItIsStopped)
{
    DemoBench bench;
    bench.after_ms(600'000, [&bench] { bench.stop(); });
    EXPECT_EQ(bench.run(), Result::stopped);
    EXPECT_GE(bench.took_ms, 600'000);
    EXPECT_LT(bench.took_ms, 600'200);
    EXPECT_EQ(bench.report.lines.back(), "Operation stopped. ");
    EXPECT_TRUE(bench.says("It is still in connection state")) << "the page of advice, after four seconds";
}

TEST(DemoConnection, EndsWhenItsPortGoes)
{
    DemoBench bench;
    bench.after_ms(1000, [&bench] { bench.ports.remove("line"); });
    EXPECT_EQ(bench.run(), Result::port_gone);
    EXPECT_TRUE(bench.says("The serial port is gone."));
    EXPECT_THAT(bench.report.lines.back(), ::testing::MatchesRegex("Connection is failed. \\(End: ..:..:..\\)"));
}

TEST(DemoConnection, SaysThatThePortDoesNotOpen)
{
    DemoBench bench;
    bench.ports.refuse_open("line");
    EXPECT_EQ(bench.run(), Result::no_port);
    EXPECT_EQ(bench.report.beeps, 3);
}

TEST(DemoIdentity, IsThatOfTheTable)
{
    EXPECT_EQ(demo_model_id(0x0001), "F001");
    EXPECT_EQ(demo_model_id(0x4003), "F004");
    EXPECT_EQ(demo_model_id(0x0058), "F108");
    EXPECT_EQ(demo_model_id(0x0516), "F110");
    EXPECT_EQ(demo_model_id(0x0055), "");
}

TEST(DemoIdentity, OfAnotherModelEndsTheJobBeforeTheErasure)
{
    sim::DemoSetup setup;
    setup.code = 0x4003;
    DemoBench bench(setup);
    EXPECT_EQ(bench.run_with_power(), Result::wrong_model);
    const std::string text = "MCU Type is incorrect. please select correct MCU type and open the file again.";
    EXPECT_EQ(bench.report.lines.back(), text);
    EXPECT_EQ(bench.report.boxes, std::vector<std::string>{text});
    EXPECT_EQ(bench.report.beeps, 3);
    EXPECT_EQ(bench.demo.frame_count(0xB2), 0);
}

TEST(DemoIdentity, ThatIsUnknownIsNoModelAtAll)
{
    sim::DemoSetup setup;
    setup.code = 0x1234;
    DemoBench bench(setup);
    EXPECT_EQ(bench.run_with_power(), Result::wrong_model);
}

TEST(DemoIdentity, GetsThreeTries)
{
    DemoBench bench;
    bench.demo.deaf_to[0xB5] = 2;
    EXPECT_EQ(bench.run_with_power(), Result::good);

    DemoBench worse;
    worse.demo.deaf_to[0xB5] = 3;
    EXPECT_EQ(worse.run_with_power(), Result::no_answer);
    EXPECT_THAT(worse.report.lines.back(), ::testing::MatchesRegex("Reading MCU Option failed. \\(End: ..:..:..\\)"));
    EXPECT_EQ(worse.report.beeps, 3);
}

TEST(DemoErasure, GetsThreeTries)
{
    DemoBench bench;
    bench.demo.deaf_to[0xB2] = 2;
    EXPECT_EQ(bench.run_with_power(), Result::good);

    DemoBench worse;
    worse.demo.deaf_to[0xB2] = 3;
    EXPECT_EQ(worse.run_with_power(), Result::erase_failed);
    EXPECT_THAT(worse.report.lines.back(), ::testing::MatchesRegex("Erasing MCU flash failed. \\(End: ..:..:..\\)"));
}

TEST(DemoWriting, SendsABlockWithAWrongSumAgain)
{
    DemoBench bench;
    bench.demo.wrong_sums = 1;
    EXPECT_EQ(bench.run_with_power(), Result::good);
    EXPECT_EQ(bench.demo.frame_count(0xB4), 4);
    EXPECT_EQ(bench.demo.flash(0, 0xFFF), pattern(0x1000));
}

TEST(DemoWriting, GivesABlockUpAfterFourTries)
{
    DemoBench bench;
    bench.demo.wrong_sums = 4;
    EXPECT_EQ(bench.run_with_power(), Result::programming_failed);
    EXPECT_FALSE(bench.demo.runs_code());
    EXPECT_TRUE(bench.says("Programing failed. (End: "));
}

TEST(DemoWriting, SurvivesLostAndDamagedAnswers)
{
    DemoBench bench;
    for (const int n : {1, 3, 9, 26})
        bench.demo.replies.lose(n);
    for (const int n : {15, 34})
        bench.demo.replies.damage(n, 5, 0x10);
    EXPECT_EQ(bench.run_with_power(), Result::good);
    EXPECT_EQ(bench.demo.flash(0, 0xFFF), pattern(0x1000));
}

class DemoStop : public ::testing::TestWithParam<int> { };

TEST_P(DemoStop, EndsTheJobThereAndTheNextOneIsGood)
{
    DemoBench bench;
    bench.when_frame(static_cast<std::uint8_t>(GetParam()), 1, [&bench] { bench.stop(); });
    EXPECT_EQ(bench.run_with_power(), Result::stopped);
    EXPECT_THAT(bench.report.lines.back(), "Operation stopped. ");
    EXPECT_EQ(std::count(bench.report.lines.begin(), bench.report.lines.end(), "Operation stopped. "), 1);
    EXPECT_FALSE(bench.demo.runs_code());
    bench.demo.power(false);
    EXPECT_EQ(bench.run_with_power(), Result::good);
    EXPECT_EQ(bench.demo.flash(0, 0xFFF), pattern(0x1000));
}

INSTANTIATE_TEST_SUITE_P(AtEachStage, DemoStop, ::testing::Values(0xB0, 0xB5, 0xB2, 0xB3));

TEST(DemoNumber, OutsideOfWhatIsWrittenEndsTheJobBeforeItBegins)
{
    DemoBench bench;
    bench.job.numbers = {{0x3000, {1, 2, 3, 4}}};
    EXPECT_EQ(bench.run(), Result::number_outside);
    EXPECT_EQ(bench.report.boxes.size(), 1U);
    EXPECT_TRUE(bench.report.lines.empty()) << "nobody was called";
}

TEST(DemoRepeat, CountsDownToTheNextChip)
{
    DemoBench bench;
    bool another = false;
    bench.talk(bench.job.model, [&](Session& talk_) { another = count_down_to_next_demo(talk_, bench.report, 2); });
    EXPECT_TRUE(another);
    EXPECT_EQ(bench.took_ms, 3000);
    EXPECT_EQ(bench.report.lines.back(), "Program succeeded.\nAfter a few seconds re-connect will continue.  0");
}

TEST(DemoRepeat, IsStoppedInItsDelay)
{
    DemoBench bench;
    bool another = true;
    bench.after_ms(500, [&bench] { bench.stop(); });
    bench.talk(bench.job.model, [&](Session& talk_) { another = count_down_to_next_demo(talk_, bench.report, 10); });
    EXPECT_FALSE(another);
    EXPECT_EQ(bench.took_ms, 500);
    EXPECT_EQ(bench.report.lines.back(), "Operation stopped. ");
}

TEST(DemoCommand, LeadsTheUserCodeIntoTheDownloader)
{
    InappBench bench;
    sim::DemoProgram demo({});
    const LineSettings user_settings{9600, Parity::none, 8, 1};
    sim::UserCode user(demo, user_settings, {0xD0, 0x01});
    bench.wire.attach(user);
    user.power(true);
    DemoJob job;
    job.model = catalog_test::record("Birch-16");
    job.line = LineSettings{115200, Parity::none, 8, 1};
    job.code = code_of(0x800);
    job.command = UserCommand{user_settings, {0xD0, 0x01}};
    bench.talk(job.model, [&](Session& talk_) {
        EXPECT_EQ(enter_demo(talk_, job, bench.report), Result::good);
        EXPECT_EQ(program_by_demo(talk_, job, bench.report), Result::good);
        bench.loop.run_for_ms(50);
    });
    EXPECT_EQ(user.commands_heard(), 1);
    EXPECT_EQ(demo.flash(0, 0x7FF), pattern(0x800));
    EXPECT_EQ(demo.violations(), "");
}

TEST(DemoModels, AreOfAFamilyWithoutTheNewProtocol)
{
    for (const char* id : {"F001", "F002", "F004", "F104", "F108", "F110"}) {
        const FoundRow row = find_mcu_by_id(catalog_test::table(), id);
        ASSERT_FALSE(row.name.empty()) << id;
        EXPECT_FALSE(read_mcu_row(catalog_test::table(), row.series, row.row).cap_new_protocol) << id;
    }
}
