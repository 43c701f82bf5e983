// cut_off script|window KILLS PROGRAM: a production line with serial numbers that is cut off by SIGKILL at random
// moments, again and again, and started anew on the settings that it left. No number may be on two chips that were
// called good.
//
//   script   PROGRAM is vrk-script: a rehearsal, chip after chip, as fast as it goes
//   window   PROGRAM is window_line: the window on a simulated chip in real time; wants a display
//
// Each chip that is called good is told on standard output with its true flash. VRK_SEED repeats a run's moments.
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <random>
#include <set>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace {

namespace fs = std::filesystem;

constexpr std::size_t number_first = 0x200;
constexpr std::size_t number_digits = 8;
constexpr int chips_of_a_script = 2000; // more than any run gets to

struct Line {
    std::vector<std::string> command;
    int longest_ms; // until it is cut off: several chips
};

// A hand at the line: the number's next value is the one that the settings hold.
void write_script(const fs::path& script, const fs::path& code)
{
    std::ofstream lines(script);
    lines << "set TreeViewDevice Juniper-8\nchoose " << code.string() << "\nclick comLoadFile\n"
          << "set texAuto_Increase(0) 203\nset texAuto_Increase(1) 4\nset optAuto_Increase(0) 1\n"
          << "set comDalay_ReDownLoad 1\nset cheAuto_Increase 1\nclick comDownload(1)\n";
    for (int chip = 0; chip < chips_of_a_script; ++chip)
        lines << "power on\nwait-text textMsg 60000 Program OK\ntarget\n"
              << "wait-text textMsg 60000 will continue\npower off\nsleep 2500\n";
}

Line line_of(const std::string& mode, const std::string& program, const fs::path& folder)
{
    const std::string settings = (folder / "settings.ini").string();
    const std::string code = (folder / "code.bin").string();
    std::ofstream(code, std::ios::binary) << std::string(0x300, '\x5A');
    if (mode == "window")
        return {{program, settings, code}, 9000};
    const fs::path script = folder / "line.vrks";
    write_script(script, code);
    return {{program, "--english", "--settings", settings, "--rehearse", "Juniper-8", script.string()}, 400};
}

[[noreturn]] void become(std::vector<std::string> command, int out)
{
    dup2(out, STDOUT_FILENO);
    std::vector<char*> words;
    for (std::string& word : command)
        words.push_back(word.data());
    words.push_back(nullptr);
    execv(words[0], words.data());
    _exit(127);
}

// What the line says until it is cut off. Empty and `ended` where it has ended by itself.
std::string run_and_cut_off(const Line& line, int after_ms, bool& ended)
{
    int pipe_ends[2];
    if (pipe2(pipe_ends, O_CLOEXEC) != 0)
        return {};
    const pid_t child = fork();
    if (child == 0)
        become(line.command, pipe_ends[1]);
    close(pipe_ends[1]);
    std::string said;
    std::thread reader([&said, from = pipe_ends[0]] {
        char bytes[4096];
        for (ssize_t count = 0; (count = read(from, bytes, sizeof bytes)) > 0;)
            said.append(bytes, static_cast<std::size_t>(count));
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(after_ms));
    ended = waitpid(child, nullptr, WNOHANG) != 0;
    if (!ended) {
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
    }
    reader.join();
    close(pipe_ends[0]);
    return said;
}

// The numbers of the chips that it has told of, whole lines only.
std::vector<std::string> numbers_in(std::string_view said)
{
    constexpr std::string_view flash = "\"flash\":\"";
    std::vector<std::string> numbers;
    for (std::size_t end = said.find('\n'); end != std::string_view::npos; end = said.find('\n')) {
        const std::string_view line = said.substr(0, end);
        const std::size_t at = line.find(flash);
        if (at != std::string_view::npos)
            numbers.emplace_back(line.substr(at + flash.size() + number_first * 2, number_digits));
        said.remove_prefix(end + 1);
    }
    return numbers;
}

// False: a number came twice, or the line did not run.
bool hold_out(const Line& line, int kills, std::uint32_t seed)
{
    std::mt19937 random(seed);
    std::set<std::string> given;
    const auto told_little = [&] { return given.size() * 4 < static_cast<std::size_t>(kills); };
    int kill = 0;
    for (; kill < kills || (told_little() && kill < kills * 10); ++kill) {
        bool ended = false;
        const int after_ms = std::uniform_int_distribution<int>(0, line.longest_ms)(random);
        const std::string said = run_and_cut_off(line, after_ms, ended);
        if (ended) {
            std::cout << "kill " << kill << ": the line has ended by itself\n" << said;
            return false;
        }
        for (const std::string& number : numbers_in(said)) {
            if (!given.insert(number).second) {
                std::cout << "kill " << kill << ": number " << number << " is on two good chips; VRK_SEED=" << seed
                          << "\n";
                return false;
            }
        }
    }
    std::cout << kill << " kills, " << given.size() << " good chips, no number twice; VRK_SEED=" << seed << "\n";
    return !told_little(); // else it was always cut off too soon to tell anything
}

} // namespace

int main(int argc, char** argv)
{
    const std::vector<std::string> words(argv + 1, argv + argc);
    if (words.size() != 3 || (words[0] != "script" && words[0] != "window")) {
        std::cerr << "usage: cut_off script|window KILLS PROGRAM\n";
        return 2;
    }
    const char* seed = std::getenv("VRK_SEED");
    std::string folder = fs::absolute("cut_off_XXXXXX").string();
    if (mkdtemp(folder.data()) == nullptr)
        return 1;
    const bool held = hold_out(line_of(words[0], words[2], folder), std::atoi(words[1].c_str()),
        seed != nullptr ? static_cast<std::uint32_t>(std::strtoul(seed, nullptr, 10)) : std::random_device{}());
    std::error_code fault;
    fs::remove_all(folder, fault);
    return held ? 0 : 1;
}
