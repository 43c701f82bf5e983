#include "image/whole_file.h"

#include "image/bench.h"

#include <sys/stat.h>

using namespace vrk;
using image_test::Folder;

namespace {

const std::vector<std::uint8_t> bytes{1, 2, 3, 4};

std::string contents(const std::string& path)
{
    std::ifstream file{path, std::ios::binary};
    return {std::istreambuf_iterator<char>{file}, {}};
}

std::size_t files_in(const std::string& folder)
{
    return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator{folder}, {}));
}

} // namespace

TEST(WholeFile, IsNoneOfThePipesAndDevicesOfTheSystem)
{
    Folder folder;
    const std::string path = folder.path + "/range.bin";
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    EXPECT_NE(write_whole_file(path, bytes), "");
    EXPECT_TRUE(std::filesystem::is_fifo(path));
    EXPECT_EQ(files_in(folder.path), 1U);
}

TEST(WholeFile, LeavesOtherPeoplesHalfWrittenFilesAlone)
{
    Folder folder;
    const std::string path = folder.path + "/range.bin";
    const std::string other = folder.file("range.bin.part", "not ours");
    EXPECT_EQ(write_whole_file(path, std::span{bytes}.first(3)), "");
    EXPECT_EQ(contents(other), "not ours");
    EXPECT_EQ(contents(path).size(), 3U);
    EXPECT_EQ(files_in(folder.path), 2U);
}
