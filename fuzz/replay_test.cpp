// Every input of the corpora through its target: what the fuzzer once found interesting stays tried on every build.
#include "fuzz/target.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

namespace {

using Bytes = std::vector<std::uint8_t>;

std::vector<std::filesystem::path> corpus_files(const char* target)
{
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator{std::filesystem::path{CORPORA} / target})
        files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

Bytes contents(const std::filesystem::path& path)
{
    std::ifstream file{path, std::ios::binary};
    return Bytes{std::istreambuf_iterator<char>{file}, {}};
}

void replay(const char* target, std::string (*routine)(fuzz::Input))
{
    const auto files = corpus_files(target);
    EXPECT_GE(files.size(), 10U) << "the corpus of " << target << " is gone";
    for (const auto& file : files)
        EXPECT_EQ(routine(contents(file)), "") << file;
}

} // namespace

TEST(Corpora, HexLoaderComesThroughAll) { replay("hex_loader", fuzz::fuzz_hex_loader); }
TEST(Corpora, BinLoaderComesThroughAll) { replay("bin_loader", fuzz::fuzz_bin_loader); }
TEST(Corpora, ProjectReaderComesThroughAll) { replay("project", fuzz::fuzz_project); }
TEST(Corpora, BootLoaderReceptionComesThroughAll) { replay("receive_isp", fuzz::fuzz_receive_isp); }
TEST(Corpora, StatusFrameComesThroughAll) { replay("status_frame", fuzz::fuzz_status_frame); }
TEST(Corpora, DemonstrationReceptionComesThroughAll) { replay("receive_demo", fuzz::fuzz_receive_demo); }
TEST(Corpora, MonitorFramesComeThroughAll) { replay("monitor_frames", fuzz::fuzz_monitor_frames); }
TEST(Corpora, TalksOfABoardComeThroughAll) { replay("board_talk", fuzz::fuzz_board_talk); }
TEST(Corpora, HexadecimalStringsComeThroughAll) { replay("hex_to_send", fuzz::fuzz_hex_to_send); }
