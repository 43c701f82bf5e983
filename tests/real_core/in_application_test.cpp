// The sources that users link into their own programs, compiled, against the engine: the command arrives and resets
// into the boot area, and a kilobyte goes through the downloader into what stands for its flash.
#include "inapp/inapp_bench.h"
#include "real_core/compiled_program.h"

#include "session/program.h"

using namespace vrk;

namespace {

constexpr LineSettings firmware_line{9600, Parity::none, 8, 1};
constexpr std::uint8_t isp_contr = 0xE7;
constexpr std::uint8_t p2 = 0xA0;
constexpr std::uint16_t flash_stands_at = 0x1000;

struct RealCore : InappBench {
    explicit RealCore(const char* hex)
        : program(hex)
    {
        wire.attach(program);
        program.power(true);
        loop.run_for_ms(10); // it opens its serial port
        job.model = catalog_test::record("Birch-16");
        job.port = line;
        job.line = firmware_line;
        job.code = code_of(1024);
        job.command = UserCommand{firmware_line, parse_hex_pairs("12 34 AB")};
    }
    CompiledProgram program;
    DemoJob job;
};

} // namespace

TEST(RealCore, HearsTheCommandAndResetsIntoTheBootArea)
{
    RealCore bench("user_command/user_command");
    Result result = Result::no_answer;
    bench.talk(
        bench.job.model, [&](Session& talk) { result = send_user_command(talk, *bench.job.command, bench.report); });
    EXPECT_EQ(result, Result::good);
    EXPECT_EQ(bench.program.sfr(isp_contr), 0) << "a second passes first";
    bench.loop.run_for_ms(1100);
    EXPECT_EQ(bench.program.sfr(isp_contr), 0x60);
    EXPECT_THAT(bench.program.complaints(), testing::IsEmpty());
}

TEST(RealCore, DoesNotTakeHalfOfTheCommandForIt)
{
    RealCore bench("user_command/user_command");
    bench.job.command = UserCommand{firmware_line, parse_hex_pairs("12 34 12 AB")};
    bench.talk(bench.job.model, [&](Session& talk) { send_user_command(talk, *bench.job.command, bench.report); });
    bench.loop.run_for_ms(3000);
    EXPECT_EQ(bench.program.sfr(isp_contr), 0);
}

TEST(RealCore, TakesADownload)
{
    RealCore bench("isp_demo/isp_demo");
    Result result = Result::no_answer;
    std::vector<std::string> complaints{"the code has not been started"};
    bench.program.on_sfr_written = [&](std::uint8_t address, std::uint8_t) {
        if (address == p2) // what then runs does not hear the line
            complaints = bench.program.complaints();
    };
    bench.talk(bench.job.model, [&](Session& talk) {
        result = enter_demo(talk, bench.job, bench.report);
        if (result == Result::good)
            result = program_by_demo(talk, bench.job, bench.report);
    });
    EXPECT_EQ(result, Result::good);
    bench.loop.run_for_ms(100);
    EXPECT_EQ(bench.program.sfr(p2), 0xA5) << "the code has been started";
    for (unsigned i = 0; i < 1024; ++i)
        ASSERT_EQ(bench.program.xram(static_cast<std::uint16_t>(flash_stands_at + i)), bench.job.code.bytes[i]) << i;
    EXPECT_THAT(complaints, testing::IsEmpty());
}
