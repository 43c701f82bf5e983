// The user's settings on a real disk: what goes in comes out, and nothing that happens to the file brings the program
// down.
#include "host/qt_settings.h"

#include "failures/failing_calls.h"
#include "failures/failing_files.h"

#include <QDir>
#include <QElapsedTimer>
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
using vrk::SettingsFault;

namespace {

constexpr const char* absent = "nothing stored";
constexpr int keys_of_a_save = 100;

// A folder that goes at the end, and the user's home in it.
struct QtStore : testing::Test {
    QtStore() { setenv("XDG_CONFIG_HOME", folder.path().toUtf8().constData(), 1); }

    std::string in_folder(const QString& name) const { return folder.filePath(name).toStdString(); }
    std::string path() const { return in_folder(QString("settings_%1.ini").arg(files)); }
    // Another file each time: QSettings would not read again the one that this process knows already.
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
        store("Settings", "texSendText", value);
        return stored("texSendText");
    }
    void store(const char* section, const char* key, const std::string& value) const
    {
        QtSettings settings(path());
        settings.set(section, key, value);
        EXPECT_FALSE(settings.write_through());
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

ino_t file_number(const std::string& path)
{
    struct stat facts { };
    return stat(path.c_str(), &facts) == 0 ? facts.st_ino : 0;
}

// Saves without end, each time all keys with one number; killed from outside.
[[noreturn]] void save_for_ever(const std::string& path)
{
    QtSettings settings(path);
    for (int round = 0;; ++round) {
        save_all(settings, std::to_string(round));
        settings.write_through();
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
        settings.set("", "address", "above all sections");
        settings.set("General", "address", "of the section of that name");
        settings.write_through();
    }
    EXPECT_EQ(stored("address", "Auto_Increase"), "FFFF");
    EXPECT_EQ(stored("address", "Data_Auto_Increase"), "01FF");
    EXPECT_EQ(stored("address", "Settings"), absent);
    EXPECT_EQ(stored("address", ""), "above all sections");
    EXPECT_EQ(stored("address", "General"), "of the section of that name");
}

TEST_F(QtStore, HasKeysOfAnyCharacters)
{
    for (const char* key : {"a b", "50%", "a/b", "a=b", "[a]", "ÄÖ", "a.b-c_d", "\\"}) {
        store("Settings", key, "found");
        EXPECT_EQ(stored(key), "found") << key;
    }
}

TEST_F(QtStore, HasAKeyInChinese)
{
    store("Settings", "安全锁", "5");
    EXPECT_EQ(stored("安全锁"), "5");
}

TEST_F(QtStore, OfTheUserLiesInHisConfigurationDirectoryUnderTheTitle)
{
    {
        QtSettings settings;
        settings.set("Settings", "DeviceProducts", "Juniper-60Q");
        settings.write_through();
    }
    EXPECT_TRUE(QFile::exists(folder.filePath("VRK-ISP/VRK-ISP.ini")));
    EXPECT_EQ(QtSettings().get("Settings", "DeviceProducts", absent), "Juniper-60Q");
}

TEST_F(QtStore, ComesBackKeyByKey)
{
    {
        QtSettings settings(path());
        for (int n = 0; n < keys_of_a_save; ++n)
            settings.set("Settings", key_of(n), "value " + std::to_string(n * n));
        settings.write_through();
    }
    const auto again = next_program();
    for (int n = 0; n < keys_of_a_save; ++n)
        EXPECT_EQ(again->get("Settings", key_of(n), absent), "value " + std::to_string(n * n));
}

// It used to be written in the next turn of the event loop: what was told of before that turn was not on the disk.
TEST_F(QtStore, IsOnTheDiskWhenTheWriteReturns)
{
    QtSettings settings(path());
    save_all(settings, "1");
    EXPECT_EQ(file_number(path()), 0U) << "written while the save was still running";
    EXPECT_FALSE(settings.write_through());
    EXPECT_EQ(stored("key_99"), "1");
}

TEST_F(QtStore, LeavesTheFileAloneWhereNothingHasChanged)
{
    QtSettings settings(path());
    save_all(settings, "1");
    settings.write_through();
    const ino_t first = file_number(path());
    save_all(settings, "1");
    settings.write_through();
    EXPECT_EQ(file_number(path()), first);
    settings.set("Settings", "key_5", "2");
    settings.write_through();
    EXPECT_NE(file_number(path()), first) << "a change puts another file in its place";
}

// It used to keep quiet.
TEST_F(QtStore, ThatCannotBeWrittenTellsPathAndReason)
{
    write("not a folder");
    QtSettings below_a_file(path() + "/below.ini");
    below_a_file.set("Settings", "COM_port", "3");
    const auto fault = below_a_file.write_through();
    ASSERT_TRUE(fault);
    EXPECT_EQ(fault->kind, SettingsFault::Kind::unwritable);
    EXPECT_EQ(fault->path, path() + "/below.ini");
    EXPECT_NE(fault->reason, "");
    EXPECT_EQ(below_a_file.get("Settings", "COM_port", absent), "3") << "for the rest of this run";
    EXPECT_EQ(bytes(), "not a folder");
}

TEST_F(QtStore, IsWrittenByTheNextTryOnceItsFolderIsThere)
{
    write("in the way");
    QtSettings settings(path() + "/below.ini");
    settings.set("Settings", "COM_port", "3");
    ASSERT_TRUE(settings.write_through());
    QFile::remove(QString::fromStdString(path()));
    QDir().mkpath(QString::fromStdString(path()));
    EXPECT_FALSE(settings.write_through());
    QtSettings second(path() + "/below.ini");
    EXPECT_EQ(second.get("Settings", "COM_port", absent), "3");
    ASSERT_TRUE(second.write_through());
    EXPECT_EQ(second.write_through()->kind, SettingsFault::Kind::held);
}

// A file that opened and could not be read counted as empty, and the next change put an empty one in its place.
TEST_F(QtStore, WithAnyOneCallFailingIsOnTheDiskOrSaysWhyNotAndLosesNothing)
{
    int made = 1;
    for (int turn = 0; turn <= made; ++turn) {
        vrk::FailingCalls calls{turn};
        SCOPED_TRACE("call " + std::to_string(turn));
        write("[Auto_Increase]\naddress=203\nnext_value=41\n");
        const vrk::FailingFiles failing(
            folder.path().toStdString(), [&calls](const char* call) { return calls.fails(call); });
        calls.counting = true;
        QtSettings settings(path());
        settings.set("Auto_Increase", "next_value", "42");
        const auto fault = settings.write_through();
        calls.counting = false;
        made = turn == 0 ? calls.made() : made;

        EXPECT_TRUE(fault || stored("next_value", "Auto_Increase") == "42");
        EXPECT_TRUE(!fault || !calls.failed().empty());
        EXPECT_EQ(stored("address", "Auto_Increase"), "203") << calls.failed();
        if (!fault || fault->kind != SettingsFault::Kind::unreadable) {
            EXPECT_FALSE(settings.write_through());
            EXPECT_EQ(stored("next_value", "Auto_Increase"), "42");
        }
    }
    EXPECT_GE(made, 6);
}

// A device node used to be replaced by a file.
TEST_F(QtStore, OnWhatIsNoFileIsRefusedAndLeavesItAsItIs)
{
    QDir(folder.path()).mkdir("taken");
    mkfifo(in_folder("pipe").c_str(), 0600);
    symlink("/dev/null", in_folder("device").c_str());
    for (const char* name : {"taken", "pipe", "device"}) {
        QtSettings settings(in_folder(name));
        ASSERT_TRUE(settings.write_through()) << name << ": told before anything is set";
        EXPECT_EQ(settings.write_through()->kind, SettingsFault::Kind::no_file) << name;
        settings.set("Settings", "COM_port", "3");
        EXPECT_TRUE(settings.write_through());
        EXPECT_EQ(settings.get("Settings", "COM_port", absent), "3");
    }
    EXPECT_TRUE(QFileInfo(folder.filePath("taken")).isDir());
    EXPECT_TRUE(QFileInfo(folder.filePath("device")).isSymLink());
    EXPECT_FALSE(QFileInfo(folder.filePath("pipe")).isFile());
}

TEST_F(QtStore, BehindALinkStaysBehindIt)
{
    write("");
    symlink(path().c_str(), in_folder("link.ini").c_str());
    QtSettings settings(in_folder("link.ini"));
    settings.set("Settings", "COM_port", "3");
    EXPECT_FALSE(settings.write_through());
    EXPECT_TRUE(QFileInfo(folder.filePath("link.ini")).isSymLink());
    EXPECT_EQ(stored("COM_port"), "3");
}

// Two programs used to write over each other's numbers; a lock was waited for half a minute without a sign of life.
TEST_F(QtStore, InUseByAnotherProgramIsReadAndNotWritten)
{
    store("Auto_Increase", "next_value", "41");
    QtSettings first(path());
    QElapsedTimer clock;
    clock.start();
    QtSettings second(path());
    EXPECT_LT(clock.elapsed(), 5000);
    EXPECT_FALSE(first.write_through());
    ASSERT_TRUE(second.write_through());
    EXPECT_EQ(second.write_through()->kind, SettingsFault::Kind::held);
    EXPECT_EQ(second.get("Auto_Increase", "next_value", absent), "41");
    second.set("Auto_Increase", "next_value", "99");
    second.write_through();
    EXPECT_EQ(stored("next_value", "Auto_Increase"), "41");
    first.set("Auto_Increase", "next_value", "42");
    EXPECT_FALSE(first.write_through());
    EXPECT_EQ(stored("next_value", "Auto_Increase"), "42");
}

TEST_F(QtStore, OfAProgramThatWasKilledIsFree)
{
    store("Settings", "COM_port", "1");
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0)
        save_for_ever(path());
    usleep(100'000);
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    EXPECT_FALSE(QtSettings(path()).write_through());
}

// The lock file of a killed program names a process number that a program of that name has by now: this one.
TEST_F(QtStore, OfAKilledProgramWhoseProcessNumberIsInUseAgainIsFree)
{
    store("Settings", "COM_port", "1");
    const QString lock = QString::fromStdString(path()) + ".lock";
    QByteArray left_behind;
    {
        const QtSettings killed(path());
        QFile file(lock);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        left_behind = file.readAll();
    }
    QFile file(lock);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(left_behind);
    file.close();
    EXPECT_FALSE(QtSettings(path()).write_through());
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
    store("Settings", "DeviceProducts", "Oak-20");
    EXPECT_EQ(stored("DeviceProducts"), "Oak-20");
}

// Each key of a file that ends too early is whole, cut, or missing; the rest of the program does not notice.
TEST_F(QtStore, CutOffAnywhereIsStillRead)
{
    round_trip("中文 and, more");
    store("Settings", "安全锁", "5");
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
    store("Auto_Increase", "address", "FFFF");
    const QByteArray whole = bytes();
    std::mt19937 random(20240301);
    for (int round = 0; round < 500; ++round) {
        QByteArray damaged = whole;
        for (int n = 0; n < 4; ++n)
            damaged[static_cast<qsizetype>(random() % static_cast<unsigned>(whole.size()))] =
                static_cast<char>(random());
        write(damaged);
        store("Settings", "COM_port", "2");
        EXPECT_EQ(stored("COM_port"), "2") << "seed 20240301, round " << round;
    }
}

// The store is killed in the middle of its saves, again and again: what stands on the disk is always one whole save.
TEST_F(QtStore, KilledInTheMiddleOfASaveLeavesAWholeOne)
{
    { // one to begin with
        QtSettings settings(path());
        save_all(settings, "0");
        settings.write_through();
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
