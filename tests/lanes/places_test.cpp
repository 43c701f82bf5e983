// A lane belongs to the place where its adapter is plugged in.
#include "lanes/places.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace vrk::lanes;

namespace {

struct Places : testing::Test {
    Places()
    {
        QDir(folder.path()).mkdir("by-path");
        for (const char* device : {"ttyUSB0", "ttyUSB1"}) {
            QFile file(folder.filePath(device));
            EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        }
    }
    void plug(const char* device, const char* place)
    {
        QFile::remove(places() + "/" + place);
        EXPECT_TRUE(QFile::link("../" + QString(device), places() + "/" + place));
    }
    QString places() const { return folder.filePath("by-path"); }
    QString of(const char* device) const { return place_of(folder.filePath(device), places()); }
    QTemporaryDir folder;
};

} // namespace

TEST_F(Places, StayTheSameWhateverNumberTheDeviceHasToday)
{
    plug("ttyUSB0", "usb-1-port0");
    plug("ttyUSB1", "usb-2-port0");
    EXPECT_EQ(of("ttyUSB0"), places() + "/usb-1-port0");
    plug("ttyUSB1", "usb-1-port0");
    plug("ttyUSB0", "usb-2-port0");
    EXPECT_EQ(of("ttyUSB1"), places() + "/usb-1-port0");
}

TEST_F(Places, AreTheDeviceItselfWhereTheSystemTellsNone)
{
    plug("ttyUSB0", "usb-1-port0");
    EXPECT_EQ(of("ttyUSB1"), folder.filePath("ttyUSB1"));
    EXPECT_EQ(place_of("/nowhere/tty", places()), "/nowhere/tty");
}
