// The reading of the board's serial memory, page by page.
#include "board/board_bench.h"

using namespace vrk;

namespace {

struct Reader : BoardBench {
    Reader()
        : BoardBench(job_for("Birch-16"))
    {
        board.serial_memory = pattern(sim::Board::size, 77);
    }
};

} // namespace

TEST(MemoryReader, BringsInWhatTheMemoryHolds)
{
    Reader bench;
    const MemoryRead read = bench.read_memory();
    EXPECT_EQ(read.result, Result::good);
    EXPECT_EQ(read.pages, bench.board.serial_memory);
    EXPECT_EQ(bench.board.violations(), "");
    EXPECT_EQ(bench.report.lines.back(), "读 24C512 OK");
    EXPECT_EQ(bench.report.steps.back().written_to, 0xFFFF);
}

TEST(MemoryReader, WritesTheStampedSourceFirst)
{
    Reader bench;
    bench.read_memory();
    const BoardImage image = stamped_source(bench.job, build_board_source(bench.job));
    EXPECT_EQ(bench.held(0x4000, 0xFFFF), Bytes(image.begin() + 0x4000, image.begin() + 0x10000));
    EXPECT_EQ(bench.held(0xFFD0, 0xFFD1), (Bytes{0xF1, 0x04}));
    EXPECT_EQ(bench.board.frame_count(0x84), 1);
    EXPECT_EQ(bench.board.frame_count(0x86), 0) << "no second area";
    EXPECT_TRUE(bench.says("Program OK"));
    EXPECT_FALSE(bench.says("Program OK."));
}

// A board of version 16 would get a second area of any other job.
TEST(MemoryReader, ErasesOnceWhateverTheBoard)
{
    BoardJob job = job_for("Birch-16");
    sim::BoardSetup setup = board_for(job.model);
    setup.version = 0x16;
    setup.single_area = true;
    BoardBench bench(job, setup);
    EXPECT_EQ(bench.read_memory().result, Result::good);
    EXPECT_EQ(bench.board.frame_count(0x84), 1);
    EXPECT_EQ(bench.board.frame_count(0x86), 0);
}

TEST(MemoryReader, AsksForNoQuantity)
{
    Reader bench;
    bench.job.quantity = 0;
    EXPECT_EQ(bench.read_memory().result, Result::good);
}

TEST(PageRequest, OfTheFirstAndOfTheLastPage)
{
    EXPECT_EQ(build_page_request(0), (Bytes{0x46, 0xB9, 0x6A, 0x00, 0x09, 0x53, 0x00, 0x00, 0xFA, 0x9C, 0x16}));
    const Bytes last = build_page_request(511);
    EXPECT_EQ(last.size(), 11U);
    EXPECT_EQ(last[6], 0xFF);
    EXPECT_EQ(last[7], 0x80);
}

TEST(MemoryReader, TriesAPageThreeTimes)
{
    Reader bench;
    bench.when_frame(0x53, 100, [&bench] { bench.board.deaf_to[0x53] = 2; });
    const MemoryRead read = bench.read_memory();
    EXPECT_EQ(read.result, Result::good);
    EXPECT_EQ(read.pages, bench.board.serial_memory);
}

TEST(MemoryReader, KeepsThePagesInFrontOfOneThatFails)
{
    Reader bench;
    bench.when_frame(0x53, 101, [&bench] { bench.board.deaf_to[0x53] = 1000; });
    const MemoryRead read = bench.read_memory();
    EXPECT_EQ(read.result, Result::no_answer);
    EXPECT_EQ(read.pages.size(), 100U * 128);
    EXPECT_TRUE(std::equal(read.pages.begin(), read.pages.end(), bench.board.serial_memory.begin()));
    EXPECT_EQ(bench.report.lines.back(), "读 24C512 失败");
}

TEST(MemoryReader, TakesNoOtherAnswerThoughItsCrcIsGood)
{
    Reader bench;
    bench.board.answers_pages_with = 0x54;
    const MemoryRead read = bench.read_memory();
    EXPECT_EQ(read.result, Result::no_answer);
    EXPECT_TRUE(read.pages.empty());
    EXPECT_EQ(bench.board.frame_count(0x53), 3);
}

TEST(MemoryReader, IsStoppedBetweenPages)
{
    Reader bench;
    bench.when_frame(0x53, 20, [&bench] { bench.stop(); });
    const MemoryRead read = bench.read_memory();
    EXPECT_EQ(read.result, Result::stopped);
    EXPECT_EQ(bench.report.lines.back(), "操作被停止.");
    EXPECT_FALSE(bench.says("读 24C512 OK"));
}

TEST(MemoryReader, SaysThatThePortDoesNotOpenAgain)
{
    Reader bench;
    bench.when_frame(0x00, 200, [&bench] { bench.ports.refuse_open("board"); });
    const MemoryRead read = bench.read_memory();
    EXPECT_EQ(read.result, Result::no_port);
    EXPECT_TRUE(read.line_lost);
    EXPECT_EQ(bench.report.beeps, 3);
    EXPECT_EQ(bench.report.lines.back(),
        "Open COM port failed!\nThe COM port is opened by another Program or the COM port does not exist.");
}

TEST(MemoryReader, EndsWhenItsPortGoes)
{
    Reader bench;
    bench.when_frame(0x53, 20, [&bench] { bench.ports.remove("board"); });
    const MemoryRead read = bench.read_memory();
    EXPECT_EQ(read.result, Result::port_gone);
    EXPECT_TRUE(bench.says("The serial port is gone."));
}
