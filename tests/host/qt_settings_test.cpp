// The user's settings on a real disk: what goes in comes out, and nothing that happens to the file brings the program
// down.
#include "host/qt_settings.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <memory>
#include <random>

using vrk::QtSettings;

namespace {

constexpr const char* absent = "nothing stored";
constexpr int keys_of_a_save = 100;

// A folder that goes at the end, and the user's home in it.
struct QtStore : testing::Test {
    QtStore() { setenv("XDG_CONFIG_HOME", folder.path().toUtf8().constData(), 1); }

    std::string in_folder(const QString& name) const { return folder.filePath(name).toStdString(); }
    std::string path() const { return in_folder(QString("settings_%1.ini").arg(files)); }
    // Another file each time: the one that this process knows already would not be read again.
    void write(const QByteArray& bytes)
    {
        ++files;
        QFile file(QString::fromStdString(path()));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(bytes);
    }
    QByteArray bytes() const
    {
        QFile file(QString::fromStdString(path()));
        file.open(QIODevice::ReadOnly);
        return file.readAll();
    }
    // What the next program would find.
    std::unique_ptr<QtSettings> next_program()
    {
        const std::string copy = in_folder(QString("copy_%1.ini").arg(++copies));
        QFile::copy(QString::fromStdString(path()), QString::fromStdString(copy));
        return std::make_unique<QtSettings>(copy);
    }
    std::string stored(const std::string& key, const char* section = "Settings")
    {
        return next_program()->get(section, key, absent);
    }
    // A value that one store takes and another, later, finds.
    std::string round_trip(const std::string& value)
    {
        QtSettings(path()).set("Settings", "texSendText", value);
        return stored("texSendText");
    }

    QTemporaryDir folder;
    int files = 0;
    int copies = 0;
};

std::string key_of(int n) { return "key_" + std::to_string(n); }

void save_all(QtSettings& settings, const std::string& value)
{
    for (int n = 0; n < keys_of_a_save; ++n)
        settings.set("Settings", key_of(n), value);
}

// The event loop turns as often as there is something to do.
void let_it_write() { QCoreApplication::processEvents(); }

struct WithEvents : QtStore {
    int count = 1;
    char name[5] = "test";
    char* arguments[2] = {name, nullptr};
    QCoreApplication application{count, arguments};
};
using QtStoreInTheProgram = WithEvents;

ino_t file_number(const std::string& path)
{
    struct stat facts { };
    return stat(path.c_str(), &facts) == 0 ? facts.st_ino : 0;
}

// Saves without end, each time all keys with one number; killed from outside.
[[noreturn]] void save_for_ever(const std::string& path)
{
    int count = 0;
    char* none = nullptr;
    QCoreApplication application(count, &none);
    QtSettings settings(path);
    for (int round = 0;; ++round) {
        save_all(settings, std::to_string(round));
        let_it_write();
    }
}

} // namespace

TEST_F(QtStore, KeepsTextAsItStands)
{
    for (const char* text : {"", " ", "  leading", "trailing  ", "\ttab\t", "a, b, c", "a;b", "\"quoted\"", "\"", "'",
             "two\nlines\r\nand a third\r", "\\back\\slash\\", "%20 % 100%", "=", "[Settings]", "#no comment", "@",
             "@@", "@Invalid()", "@Variant(x)", "@ByteArray(x)", "@String(x)", "中文，逗号", "安全锁",
             "\xF0\x9F\x94\x92", "12", "True", "/home/user/a b/c,d;e.hex", "C:\\a\\", "\x01\x1F\x7F"})
        EXPECT_EQ(round_trip(text), text);
}

TEST_F(QtStore, KeepsSectionsApart)
{
    {
        QtSettings settings(path());
        settings.set("Auto_Increase", "address", "FFFF");
        settings.set("Data_Auto_Increase", "address", "01FF");
    }
    EXPECT_EQ(stored("address", "Auto_Increase"), "FFFF");
    EXPECT_EQ(stored("address", "Data_Auto_Increase"), "01FF");
    EXPECT_EQ(stored("address", "Settings"), absent);
}

TEST_F(QtStore, HasAKeyInChinese)
{
    QtSettings(path()).set("Settings", "安全锁", "5");
    EXPECT_EQ(stored("安全锁"), "5");
}

TEST_F(QtStore, OfTheUserLiesInHisConfigurationDirectoryUnderTheTitle)
{
    QtSettings().set("Settings", "DeviceProducts", "Juniper-60Q");
    EXPECT_TRUE(QFile::exists(folder.filePath("VRK-ISP/VRK-ISP.ini")));
    EXPECT_EQ(QtSettings().get("Settings", "DeviceProducts", absent), "Juniper-60Q");
}

TEST_F(QtStore, ComesBackKeyByKey)
{
    {
        QtSettings settings(path());
        for (int n = 0; n < keys_of_a_save; ++n)
            settings.set("Settings", key_of(n), "value " + std::to_string(n * n));
    }
    const auto again = next_program();
    for (int n = 0; n < keys_of_a_save; ++n)
        EXPECT_EQ(again->get("Settings", key_of(n), absent), "value " + std::to_string(n * n));
}

TEST_F(QtStoreInTheProgram, WritesASaveOnceAndOnlyInTheNextTurn)
{
    QtSettings settings(path());
    save_all(settings, "1");
    EXPECT_EQ(file_number(path()), 0U) << "written while the save was still running";
    let_it_write();
    const ino_t first = file_number(path());
    EXPECT_NE(first, 0U);
    let_it_write();
    EXPECT_EQ(file_number(path()), first) << "written twice";
    EXPECT_EQ(stored("key_99"), "1");
}

TEST_F(QtStoreInTheProgram, LeavesTheFileAloneWhereNothingHasChanged)
{
    QtSettings settings(path());
    save_all(settings, "1");
    let_it_write();
    const ino_t first = file_number(path());
    save_all(settings, "1");
    let_it_write();
    EXPECT_EQ(file_number(path()), first);
    settings.set("Settings", "key_5", "2");
    let_it_write();
    EXPECT_NE(file_number(path()), first) << "a change puts another file in its place";
}

TEST_F(QtStoreInTheProgram, StaysQuietWhereItCannotBeWritten)
{
    write("not a folder");
    QtSettings below_a_file(path() + "/below.ini");
    below_a_file.set("Settings", "COM_port", "3");
    let_it_write();
    EXPECT_EQ(below_a_file.get("Settings", "COM_port", absent), "3") << "for the rest of this run";
    EXPECT_EQ(bytes(), "not a folder");

    QDir(folder.path()).mkdir("taken");
    QtSettings on_a_folder(in_folder("taken"));
    on_a_folder.set("Settings", "COM_port", "3");
    let_it_write();
    EXPECT_EQ(on_a_folder.get("Settings", "COM_port", absent), "3");
    EXPECT_TRUE(QFileInfo(folder.filePath("taken")).isDir());
}

TEST_F(QtStore, ReadsRubbishAsNothingStored)
{
    write(QByteArray("\x7F"
                     "ELF\x02\x01\x01\0\0\xFF\xFE\0[Settings\0\n\n=\n\x80\x81",
        24));
    EXPECT_EQ(stored("DeviceProducts"), absent);
    write(QByteArray(1 << 20, '\0'));
    EXPECT_EQ(stored("DeviceProducts"), absent);
    write("");
    EXPECT_EQ(stored("DeviceProducts"), absent);
}

TEST_F(QtStore, ReadsAValueOfAnotherKindAsNothingStored)
{
    write("[Settings]\nDebugBaud=@Variant(\\0\\0\\0\\x9\\xff\\xff\\xff\\xf0\\0\\0\\0\\x9)\nCOM_port=@ByteArray(7)\n"
          "BaudMin=@Invalid()\n");
    EXPECT_EQ(stored("DebugBaud"), absent);
    EXPECT_EQ(stored("COM_port"), absent);
    EXPECT_EQ(stored("BaudMin"), absent);
}

TEST_F(QtStore, ReadsALineWrittenByHandWithCommas)
{
    write("[Settings]\ntexSendText=one, two, three\n");
    EXPECT_EQ(stored("texSendText"), "one, two, three");
}

TEST_F(QtStore, IsMendedByTheNextSave)
{
    write(QByteArray("[Sett\0ings\n\xFF\xFE\nDeviceProducts=\xC3", 30));
    QtSettings(path()).set("Settings", "DeviceProducts", "Oak-20");
    EXPECT_EQ(stored("DeviceProducts"), "Oak-20");
}

// Each key of a file that ends too early is whole, cut, or missing; the rest of the program does not notice.
TEST_F(QtStore, CutOffAnywhereIsStillRead)
{
    round_trip("中文 and, more");
    QtSettings(path()).set("Settings", "安全锁", "5");
    const QByteArray whole = bytes();
    ASSERT_GT(whole.size(), 60);
    for (qsizetype size = 0; size < whole.size(); ++size) {
        write(whole.left(size));
        const std::string lock = stored("安全锁");
        EXPECT_TRUE(lock == "5" || lock.empty() || lock == absent) << "cut at " << size << ": " << lock;
    }
}

TEST_F(QtStore, WithBytesDamagedIsStillReadAndWritten)
{
    round_trip("中文 and, \"more\"\n");
    QtSettings(path()).set("Auto_Increase", "address", "FFFF");
    const QByteArray whole = bytes();
    std::mt19937 random(20240301);
    for (int round = 0; round < 500; ++round) {
        QByteArray damaged = whole;
        for (int n = 0; n < 4; ++n)
            damaged[static_cast<qsizetype>(random() % static_cast<unsigned>(whole.size()))] =
                static_cast<char>(random());
        write(damaged);
        QtSettings(path()).set("Settings", "COM_port", "2");
        EXPECT_EQ(stored("COM_port"), "2") << "seed 20240301, round " << round;
    }
}

// The store is killed in the middle of its saves, again and again: what stands on the disk is always one whole save.
TEST_F(QtStore, KilledInTheMiddleOfASaveLeavesAWholeOne)
{
    { // one to begin with
        QtSettings settings(path());
        save_all(settings, "0");
    }
    for (int round = 0; round < 40; ++round) {
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0)
            save_for_ever(path());
        usleep(static_cast<useconds_t>(5'000 + round * 1'700));
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);

        const auto after = next_program();
        const std::string first = after->get("Settings", key_of(0), absent);
        ASSERT_NE(first, absent) << "round " << round;
        for (int n = 1; n < keys_of_a_save; ++n)
            ASSERT_EQ(after->get("Settings", key_of(n), absent), first) << "round " << round << ", key " << n;
    }
    EXPECT_NE(stored(key_of(0)), "0") << "no child has ever saved";
}
