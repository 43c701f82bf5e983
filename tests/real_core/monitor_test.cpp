// The monitor's routines, compiled: the pages show the core's registers and its memory.
#include "real_core/compiled_program.h"
#include "shell/terminal_bench.h"

using namespace vrk;

namespace {

struct RealMonitor : testing::Test {
    RealMonitor()
    {
        const ComboBox& bauds = bench.form.list("com_Debug_Baud");
        const auto wanted = std::find(bauds.items().begin(), bauds.items().end(), "9600");
        choose_item(bench.shell, bench.form.list("com_Debug_Baud"), static_cast<int>(wanted - bauds.items().begin()));
        bench.open();
        program.power(true); // its first frame is heard from the first byte on
    }
    // A line that begins so, within some seconds.
    bool comes_to_show(const char* list, std::string_view beginning)
    {
        for (int ms = 0; ms < 8000; ms += 10) {
            const auto& lines = bench.list(list);
            if (std::any_of(
                    lines.begin(), lines.end(), [&](const std::string& one) { return one.starts_with(beginning); }))
                return true;
            bench.run_for_ms(10);
        }
        return false;
    }
    void press_continue(int row) { click(bench.shell, bench.form.button("comDebugContinue", row)); }

    CompiledProgram program{"monitor/monitor"};
    SecondDevice bench{program};
};

} // namespace

TEST_F(RealMonitor, ShowsItsRegistersAndItsMemory)
{
    // Registers by what the program put into them; its mark at C0H, its counter at D0H.
    EXPECT_TRUE(comes_to_show("lst_debug2", "C0   63 6F 72 65 20 6F 6E 20"));
    EXPECT_THAT(bench.list("lst_debug1"),
        testing::IsSupersetOf({testing::EndsWith("90H  5AH  P1"), testing::EndsWith("A8H  12H  IE"),
            testing::EndsWith("8DH  FDH  TH1"), testing::EndsWith("89H  20H  TMOD")}));
    EXPECT_TRUE(comes_to_show("lst_debug2", "C8   74 68 65 20 6C 69 6E 65"));
    EXPECT_TRUE(comes_to_show("lst_debug2", "D0   01"));

    press_continue(1); // the table in external memory
    EXPECT_TRUE(comes_to_show("lst_debug3", "03F8 02 03 04 05 06 07 08 09"));
    EXPECT_TRUE(comes_to_show("lst_debug3", "0000 07 08 09 0A 0B 0C 0D 0E"));
    EXPECT_TRUE(comes_to_show("lst_debug3", "0100 08 09 0A 0B 0C 0D 0E 0F"));

    press_continue(2); // what stands for the data flash
    EXPECT_TRUE(comes_to_show("lst_debug4", "21F8 5D 5C 5F 5E 59 58 5B 5A"));
    EXPECT_TRUE(comes_to_show("lst_debug4", "2000 A5 A4 A7 A6 A1 A0 A3 A2"));

    press_continue(1); // and around
    EXPECT_TRUE(comes_to_show("lst_debug2", "D0   02"));
    EXPECT_THAT(bench.list("lst_debug1"), testing::Contains(testing::EndsWith("90H  5AH  P1")));
    EXPECT_TRUE(bench.dialogs.shown.empty());
    EXPECT_THAT(program.complaints(), testing::IsEmpty());
}
