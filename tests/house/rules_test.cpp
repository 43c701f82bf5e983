// The rules themselves, on files made up for them: a rule that finds nothing must have been able to.
#include "house/rules.h"

#include <gtest/gtest.h>

using namespace house;

namespace {

SourceFile file(std::string path, std::vector<std::string> lines) { return {std::move(path), std::move(lines)}; }
Findings one(std::string text) { return {std::move(text)}; }
const Findings none;

} // namespace

TEST(HouseRules, FindQtInTheCore)
{
    EXPECT_EQ(qt_outside_its_rooms(file("src/link/port.cpp", {"// port", "#include <QTimer>"})),
        one("src/link/port.cpp:2: <QTimer> is out here, use platform/ or move it to host/"));
    EXPECT_EQ(qt_outside_its_rooms(file("sim/wire.h", {"#include \"QtCore/qglobal.h\""})), none);
    EXPECT_EQ(
        qt_outside_its_rooms(file("src/link/CMakeLists.txt", {"target_link_libraries(vrk_link PUBLIC Qt6::Core)"})),
        one("src/link/CMakeLists.txt:1: Qt6 is out here, link it in src/host or src/window"));
}

TEST(HouseRules, LeaveQtToItsRooms)
{
    EXPECT_EQ(qt_outside_its_rooms(file("src/host/qt_loop.h", {"#include <QTimer>"})), none);
    EXPECT_EQ(qt_outside_its_rooms(file("src/window/binder.h", {"#include <QWidget>"})), none);
    EXPECT_EQ(qt_outside_its_rooms(file("apps/isp/main.cpp", {"#include <QApplication>"})), none);
}

TEST(HouseRules, FindClocksSleepsAndThreads)
{
    EXPECT_EQ(time_and_threads(file("src/link/baud.cpp", {"auto t = std::chrono::steady_clock::now();"})),
        one("src/link/baud.cpp:1: steady_clock is out, use EventLoop::now_us()"));
    EXPECT_EQ(time_and_threads(file("src/link/baud.cpp", {"usleep(10);"})),
        one("src/link/baud.cpp:1: usleep is out, use wait_ms or EventLoop::yield()"));
    EXPECT_EQ(time_and_threads(file("sim/wire.cpp", {"#include <thread>"})),
        one("sim/wire.cpp:1: <thread> is out, use the platform"));
}

TEST(HouseRules, LetCommentsAndTheHostSpeakOfSleep)
{
    EXPECT_EQ(
        time_and_threads(file("src/platform/event_loop.h", {"    // Runs what is due and never calls sleep."})), none);
    EXPECT_EQ(time_and_threads(file("src/link/baud.cpp", {"int sleepless = 0;"})), none);
    EXPECT_EQ(time_and_threads(file("src/host/qt_loop.cpp", {"usleep(1);"})), none);
    EXPECT_EQ(time_and_threads(file("sim/posix_loop.cpp", {"clock_gettime(CLOCK_MONOTONIC, &now);"})), none);
}

TEST(HouseRules, FindAnIncludeAgainstTheArrows)
{
    EXPECT_EQ(includes_against_the_arrows(file("src/image/buffers.cpp", {"#include \"link/port.h\""})),
        one("src/image/buffers.cpp:1: \"link/port.h\" is out in image, use what lies below it or move the routine up"));
    EXPECT_EQ(includes_against_the_arrows(file("src/board/task.cpp", {"#include \"terminal/view.h\""})).size(), 1U);
    EXPECT_EQ(includes_against_the_arrows(file("sim/chip.cpp", {"#include \"session/frame.h\""})).size(), 1U);
    EXPECT_EQ(includes_against_the_arrows(file("src/host/qt_loop.cpp", {"#include \"shell/shell.h\""})).size(), 1U);
    EXPECT_EQ(includes_against_the_arrows(file("src/shell/tabs.cpp", {"#include \"window/binder.h\""})).size(), 1U);
    EXPECT_EQ(includes_against_the_arrows(file("src/link/port.cpp", {"#include \"sim/wire.h\""})).size(), 1U);
    EXPECT_EQ(includes_against_the_arrows(file("src/attic/old.cpp", {"int x;"})).size(), 1U);
}

TEST(HouseRules, LetIncludesGoDownTheArrows)
{
    EXPECT_EQ(includes_against_the_arrows(file("src/link/port.cpp",
                  {"#include \"link/frame.h\"", "#include \"image/file_buffer.h\"", "#include \"platform/timer.h\"",
                      "#include <sys/ioctl.h>"})),
        none);
    EXPECT_EQ(includes_against_the_arrows(file("sim/wire.h", {"#include \"platform/event_loop.h\""})), none);
    EXPECT_EQ(includes_against_the_arrows(file("src/shell/events.cpp", {"#include \"monitor/view.h\""})), none);
}

TEST(HouseRules, FindALongFileThatIsNoTable)
{
    const std::vector<std::string> lines(601);
    EXPECT_EQ(
        too_long(file("src/link/port.cpp", lines)), one("src/link/port.cpp:601: 601 lines are out, use two files"));
    EXPECT_EQ(too_long(file("src/catalog/families/elm.cpp", lines)), none);
    EXPECT_EQ(too_long(file("src/link/port.cpp", std::vector<std::string>(600))), none);
}

TEST(HouseRules, FindWhatWasLeftForLater)
{
    EXPECT_EQ(left_for_later(file("src/link/port.cpp", {"// " + std::string{"FIX"} + "ME: never ends"})).size(), 1U);
    EXPECT_EQ(left_for_later(file("src/link/port.cpp", {"const char* kilobytes = \"####.000\";"})), none);
}

TEST(HouseRules, FindAHeaderWithoutAGuard)
{
    EXPECT_EQ(header_without_guard(file("src/link/port.h", {"int x;"})).size(), 1U);
    EXPECT_EQ(header_without_guard(file("src/link/port.h", {"#pragma once"})), none);
}

TEST(HouseRules, FindAFileThatTheBuildDoesNotKnow)
{
    const std::vector<SourceFile> tree = {
        file("src/link/CMakeLists.txt", {"add_library(vrk_link STATIC baud.cpp", "    families/elm.cpp)"})};
    EXPECT_EQ(not_in_the_build(file("src/link/port.cpp", {}), tree),
        one("src/link/port.cpp:1: a file outside the build is out, use a line in src/link/CMakeLists.txt"));
    EXPECT_EQ(not_in_the_build(file("src/link/baud.cpp", {}), tree), none);
    EXPECT_EQ(not_in_the_build(file("src/link/families/elm.cpp", {}), tree), none);
    EXPECT_EQ(not_in_the_build(file("bench/load.cpp", {}), tree).size(), 1U);
}

TEST(HouseRules, CountWhatAHeaderCompilesHoweverFarAround)
{
    const std::vector<SourceFile> tree = {file("src/form/main_form.h", {"#pragma once"}),
        file("src/form/main_form.cpp", {"#include \"form/main_form.h\""}),
        file("tests/window/window_bench.h", {"#include \"form/main_form.h\""}),
        file("tests/window/lamp_test.cpp", {"#include \"window_bench.h\""}),
        file("src/shell/press.cpp", {"// #include \"form/main_form.h\"", "#include \"form/registry.h\""})};
    EXPECT_EQ(sources_compiled_with(tree, "src/form/main_form.h"),
        (std::set<std::string>{"src/form/main_form.cpp", "tests/window/lamp_test.cpp"}));
}

TEST(HouseRules, FindAControlInTheEngine)
{
    const std::set<std::string> names = control_names(file("src/form/main_form.h",
        {"struct MainForm {", "    TextBox textMsg;", "    Label Label2[7];", "    ControlRegistry controls;", "};"}));
    EXPECT_EQ(names, (std::set<std::string>{"textMsg", "Label2"}));
    EXPECT_EQ(controls_in_the_engine(file("src/link/clock.cpp", {"void f(MainForm& form)", "    // textMsg"}), names),
        (Findings{"src/link/clock.cpp:1: MainForm is out below the form, use plain values",
            "src/link/clock.cpp:2: textMsg is out below the form, use a value of the job"}));
    EXPECT_EQ(controls_in_the_engine(file("src/shell/press.cpp", {"shell.form.textMsg"}), names), none);
}
