#include "platform/whole_file.h"

#include "own_folder.h"

#include <sys/stat.h>

using namespace vrk;

namespace {

const std::vector<std::uint8_t> bytes{1, 2, 3, 4};

struct Folder : OwnFolder {
    Folder()
        : OwnFolder("platform")
    {
    }
};

// "", or why the file is not surely on the disk.
std::string reason_of(const std::optional<WriteFault>& fault) { return fault ? fault->reason : ""; }

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
    EXPECT_NE(reason_of(write_whole_file(path, bytes)), "");
    EXPECT_TRUE(std::filesystem::is_fifo(path));
    EXPECT_EQ(folder.files(), 1U);
}

TEST(WholeFile, LeavesOtherPeoplesHalfWrittenFilesAlone)
{
    Folder folder;
    const std::string path = folder.path + "/range.bin";
    const std::string other = folder.file("range.bin.part", "not ours");
    EXPECT_EQ(reason_of(write_whole_file(path, std::span{bytes}.first(3))), "");
    EXPECT_EQ(contents_of(other), "not ours");
    EXPECT_EQ(contents_of(path).size(), 3U);
    EXPECT_EQ(folder.files(), 2U);
}

TEST(WholeFile, IsOnTheDiskBeforeItTakesTheOldOnesPlaceAndItsFolderBehindIt)
{
    Folder folder;
    WrittenDisk disk;
    EXPECT_EQ(reason_of(write_whole_file(folder.path + "/range.bin", bytes, disk)), "");
    EXPECT_EQ(disk.steps, "write, put in place, flush folder");
    EXPECT_EQ(disk.flushed, folder.path);
    EXPECT_EQ(contents_of(folder.path + "/range.bin").size(), 4U);
}

TEST(WholeFile, LeavesTheOldOneWhereAnyStepBeforeItsPlaceFails)
{
    for (const char* step : {"write", "put in place"}) {
        Folder folder;
        WrittenDisk disk{step};
        const std::string path = folder.file("range.bin", "old");
        EXPECT_EQ(reason_of(write_whole_file(path, bytes, disk)), "out of order") << step;
        EXPECT_EQ(contents_of(path), "old") << step;
        EXPECT_EQ(folder.files(), 1U) << step;
    }
}

TEST(WholeFile, TellsOfAFolderThatCouldNotBeFlushed)
{
    Folder folder;
    WrittenDisk disk{"flush folder"};
    const std::string path = folder.file("range.bin", "old");
    const auto fault = write_whole_file(path, bytes, disk);
    ASSERT_TRUE(fault);
    EXPECT_EQ(fault->reason, "out of order");
    EXPECT_TRUE(fault->in_place);
    EXPECT_EQ(contents_of(path).size(), 4U);
}

// The link was replaced by a file.
TEST(WholeFile, ThroughALinkThatLeadsToNothingYetMakesWhatItLeadsTo)
{
    Folder folder;
    std::filesystem::create_directory(folder.path + "/jobs");
    std::filesystem::create_symlink("jobs/real.bin", folder.path + "/second.bin");
    std::filesystem::create_symlink(folder.path + "/second.bin", folder.path + "/first.bin");
    EXPECT_EQ(reason_of(write_whole_file(folder.path + "/first.bin", bytes)), "");
    EXPECT_TRUE(std::filesystem::is_symlink(folder.path + "/first.bin"));
    EXPECT_TRUE(std::filesystem::is_symlink(folder.path + "/second.bin"));
    EXPECT_EQ(contents_of(folder.path + "/jobs/real.bin").size(), 4U);
}

TEST(Disk, TellsWhatTheSystemSays)
{
    Folder folder;
    const std::string path = folder.file("there.bin", "old");
    EXPECT_EQ(system_disk().write_new(path, bytes), "File exists");
    EXPECT_EQ(system_disk().write_new(folder.path + "/no/where.bin", bytes), "No such file or directory");
    EXPECT_EQ(system_disk().put_in_place(folder.path + "/missing", path), "No such file or directory");
    EXPECT_EQ(system_disk().flush_folder(path), "Not a directory");
    EXPECT_EQ(contents_of(path), "old");
}
