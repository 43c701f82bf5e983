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

// Writes down the steps, and can fail at one of them.
class WrittenDisk final : public Disk {
public:
    explicit WrittenDisk(std::string fails_at = "")
        : fails_at_(std::move(fails_at))
    {
    }
    std::string write_new(const std::string& path, std::span<const std::uint8_t> content) override
    {
        const std::string reason = system_disk().write_new(path, content);
        return step("write") ? "out of order" : reason;
    }
    std::string put_in_place(const std::string& from, const std::string& to) override
    {
        return step("put in place") ? "out of order" : system_disk().put_in_place(from, to);
    }
    std::string flush_folder(const std::string& folder) override
    {
        flushed = folder;
        return step("flush folder") ? "out of order" : system_disk().flush_folder(folder);
    }

    std::string steps;
    std::string flushed;

private:
    bool step(const std::string& name)
    {
        steps += (steps.empty() ? "" : ", ") + name;
        return name == fails_at_;
    }

    std::string fails_at_;
};

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

TEST(WholeFile, IsOnTheDiskBeforeItTakesTheOldOnesPlaceAndItsFolderBehindIt)
{
    Folder folder;
    WrittenDisk disk;
    EXPECT_EQ(write_whole_file(folder.path + "/range.bin", bytes, disk), "");
    EXPECT_EQ(disk.steps, "write, put in place, flush folder");
    EXPECT_EQ(disk.flushed, folder.path);
    EXPECT_EQ(contents(folder.path + "/range.bin").size(), 4U);
}

TEST(WholeFile, LeavesTheOldOneWhereAnyStepBeforeItsPlaceFails)
{
    for (const char* step : {"write", "put in place"}) {
        Folder folder;
        WrittenDisk disk{step};
        const std::string path = folder.file("range.bin", "old");
        EXPECT_EQ(write_whole_file(path, bytes, disk), "out of order") << step;
        EXPECT_EQ(contents(path), "old") << step;
        EXPECT_EQ(files_in(folder.path), 1U) << step;
    }
}

TEST(WholeFile, TellsOfAFolderThatCouldNotBeFlushed)
{
    Folder folder;
    WrittenDisk disk{"flush folder"};
    EXPECT_EQ(write_whole_file(folder.path + "/range.bin", bytes, disk), "out of order");
}

// The link was replaced by a file.
TEST(WholeFile, ThroughALinkThatLeadsToNothingYetMakesWhatItLeadsTo)
{
    Folder folder;
    std::filesystem::create_directory(folder.path + "/jobs");
    std::filesystem::create_symlink("jobs/real.bin", folder.path + "/second.bin");
    std::filesystem::create_symlink(folder.path + "/second.bin", folder.path + "/first.bin");
    EXPECT_EQ(write_whole_file(folder.path + "/first.bin", bytes), "");
    EXPECT_TRUE(std::filesystem::is_symlink(folder.path + "/first.bin"));
    EXPECT_TRUE(std::filesystem::is_symlink(folder.path + "/second.bin"));
    EXPECT_EQ(contents(folder.path + "/jobs/real.bin").size(), 4U);
}

TEST(Disk, TellsWhatTheSystemSays)
{
    Folder folder;
    const std::string path = folder.file("there.bin", "old");
    EXPECT_EQ(system_disk().write_new(path, bytes), "File exists");
    EXPECT_EQ(system_disk().write_new(folder.path + "/no/where.bin", bytes), "No such file or directory");
    EXPECT_EQ(system_disk().put_in_place(folder.path + "/missing", path), "No such file or directory");
    EXPECT_EQ(system_disk().flush_folder(path), "Not a directory");
    EXPECT_EQ(contents(path), "old");
}
