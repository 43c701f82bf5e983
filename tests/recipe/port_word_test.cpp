// A serial port as a hand names it on the command line.
#include "vrk/port_word.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

using namespace vrk;

namespace {

struct PortWord : testing::Test {
    PortWord()
    {
        std::filesystem::create_directories(by_id);
        std::ofstream{by_id + "/usb-adapter-if00"} << "";
        ports[0].serial_number = "A50285BI";
        ports[1].serial_number = "0001";
        ports[2].serial_number = "0001";
    }
    ~PortWord() override { std::filesystem::remove_all(folder); }
    std::string path(std::string_view word) const
    {
        const auto found = path_of_port(word, ports, by_id);
        return std::holds_alternative<std::string>(found) ? std::get<std::string>(found)
                                                          : "none: " + std::get<NoPort>(found).why;
    }
    std::string folder = testing::TempDir() + "port_word";
    std::string by_id = folder + "/by-id";
    std::vector<PortInfo> ports{{"/dev/ttyUSB0", "", ""}, {"/dev/ttyUSB1", "", ""}, {"/dev/ttyUSB2", "", ""}};
};

} // namespace

TEST_F(PortWord, IsAPath)
{
    EXPECT_EQ(path("/dev/ttyS0"), "/dev/ttyS0");
    EXPECT_EQ(path("./line"), "./line") << "opening it tells whether it is there";
}

TEST_F(PortWord, IsANameInTheFolderWhereTheProgramRuns)
{
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(folder);
    std::ofstream{"line"} << "";
    EXPECT_EQ(path("line"), (std::filesystem::current_path() / "line").string());
    std::filesystem::current_path(before);
}

TEST_F(PortWord, IsTheNameThatStaysWithAnAdapter) { EXPECT_EQ(path("usb-adapter-if00"), by_id + "/usb-adapter-if00"); }

TEST_F(PortWord, IsTheSerialNumberOfOneAdapterAlone)
{
    EXPECT_EQ(path("a50285bi"), "/dev/ttyUSB0");
    EXPECT_NE(path("0001").find("more than one adapter has the serial number '0001'"), std::string::npos);
    EXPECT_NE(path("A5").find("no port and no adapter is called 'A5'; there are: /dev/ttyUSB0 (A50285BI)"),
        std::string::npos);
    EXPECT_NE(path("").find("none: "), std::string::npos);
}
