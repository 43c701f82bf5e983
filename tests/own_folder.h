// The name of a folder that is a test's own: of this process, and of this test.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <string>

namespace vrk {

// Below the folder for tests; makes none. A parameterised test has a slash in its name: it would be a folder in a
// folder.
inline std::string own_folder(const std::string& room)
{
    std::string test = ::testing::UnitTest::GetInstance()->current_test_info()->name();
    std::replace(test.begin(), test.end(), '/', '_');
    return ::testing::TempDir() + "vrk_" + room + "_" + std::to_string(::getpid()) + "_" + test;
}

} // namespace vrk
