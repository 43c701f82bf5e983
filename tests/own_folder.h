// A folder that is a test's own: of this process, and of this test.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <system_error>

namespace vrk {

// Below the folder for tests; makes none. A parameterised test has a slash in its name: it would be a folder in a
// folder.
inline std::string own_folder(const std::string& room)
{
    std::string test = ::testing::UnitTest::GetInstance()->current_test_info()->name();
    std::replace(test.begin(), test.end(), '/', '_');
    return ::testing::TempDir() + "vrk_" + room + "_" + std::to_string(::getpid()) + "_" + test;
}

inline std::string contents_of(const std::string& path)
{
    std::ifstream file{path, std::ios::binary};
    return {std::istreambuf_iterator<char>{file}, {}};
}

// The folder itself, while this lives.
struct OwnFolder {
    explicit OwnFolder(const std::string& room)
        : path(own_folder(room))
    {
        std::filesystem::create_directories(path);
    }
    ~OwnFolder()
    {
        std::error_code fault;
        std::filesystem::remove_all(path, fault);
    }
    OwnFolder(const OwnFolder&) = delete;
    OwnFolder& operator=(const OwnFolder&) = delete;

    std::string file(std::string_view name, std::string_view contents) const
    {
        std::string file_path = path + "/" + std::string{name};
        std::ofstream{file_path, std::ios::binary} << contents;
        return file_path;
    }
    std::size_t files() const
    {
        return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator{path}, {}));
    }

    const std::string path;
};

} // namespace vrk
