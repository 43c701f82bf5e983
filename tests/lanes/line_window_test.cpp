// The line in a real window: eight lanes over pseudo terminals, each a process of its own. One is killed, one has
// nothing in its fixture, one has a chip that refuses a block; the others go on.
#include "lanes/line_window.h"
#include "window/target_process.h"

#include <QApplication>
#include <QDir>
#include <QPushButton>

#include <csignal>
#include <memory>
#include <vector>

using namespace vrk;
using namespace vrk::lanes;

namespace {

constexpr int lanes = 8;
constexpr int killed = 4;
constexpr int silent = 5;
constexpr int refuses = 6;
constexpr const char* fixture_pause_ms = "200";

struct LineOfEight : testing::Test {
    LineOfEight()
    {
        QFile project(QString(PROJECT_DIR) + "/examples/projects/production.VRK");
        EXPECT_TRUE(project.open(QIODevice::ReadOnly));
        // Without serial numbers, which would want a ledger.
        write_job(project.readAll().replace("Auto_Increase_Enable: 1", "Auto_Increase_Enable: 0"));
        terms.vrk = VRK;
        terms.job = job_file();
        terms.english = true;
        terms.more = {"--pause", "1"};
        QStringList ports;
        for (int lane = 1; lane <= lanes; ++lane) {
            QStringList words{"Juniper-8"};
            if (lane != silent)
                words << "--fixture" << fixture_pause_ms << "--chips" << chips_file(lane);
            if (lane == refuses)
                words << "--refuse-block"
                      << "0";
            targets.push_back(std::make_unique<TargetProcess>(words));
            ports << targets.back()->link();
        }
        window = std::make_unique<LineWindow>(terms, settings, lanes, ports);
        window->resize(1366, 768);
        window->show();
        window->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    }
    QString job_file() const { return folder.filePath("job.VRK"); }
    QString chips_file(int lane) const { return folder.filePath("chips" + QString::number(lane)); }
    void write_job(const QByteArray& text) const
    {
        QFile job(job_file());
        EXPECT_TRUE(job.open(QIODevice::WriteOnly) && job.write(text) == text.size());
    }
    const Lane& lane(int number) const { return window->tiles()[static_cast<std::size_t>(number - 1)]->lane(); }
    bool comes(const std::function<bool()>& what, int ms = 60'000) const { return QTest::qWaitFor(what, ms); }
    bool all(const std::function<bool(const Lane&)>& what) const
    {
        for (int number = 1; number <= lanes; ++number) {
            if (!what(lane(number)))
                return false;
        }
        return true;
    }
    void take_picture(const char* name) const
    {
        if (const QString place = qEnvironmentVariable("VRK_PICTURES"); !place.isEmpty())
            window->grab().save(QDir(place).filePath(name));
    }
    int chips_in(int number) const
    {
        QFile file(chips_file(number));
        return file.open(QIODevice::ReadOnly) ? static_cast<int>(file.readAll().count('\n')) : 0;
    }

    QTemporaryDir folder;
    LineTerms terms;
    MemoryStore settings;
    std::vector<std::unique_ptr<TargetProcess>> targets;
    std::unique_ptr<LineWindow> window;
};

} // namespace

TEST_F(LineOfEight, TellsGoodFromBadAndGoesOnWithoutTheLaneThatIsKilled)
{
    QTest::keyClick(window.get(), Qt::Key_F5);
    ASSERT_TRUE(comes([this] { return lane(killed).state == VerdictState::working; }));
    ::kill(static_cast<pid_t>(window->tiles()[killed - 1]->process().process_id()), SIGKILL);
    ASSERT_TRUE(comes([this] { return !lane(killed).runs; }));
    EXPECT_EQ(lane(killed).state, VerdictState::bad);
    EXPECT_NE(lane(killed).advice.find("unsure"), std::string::npos);

    ASSERT_TRUE(comes([this] { return lane(refuses).bad >= 1 && lane(1).good >= 1; }));
    take_picture("line.png");
    ASSERT_TRUE(comes([this] {
        return all([this](const Lane& one) {
            return &one == &lane(killed) || &one == &lane(silent) || &one == &lane(refuses) || one.good >= 2;
        });
    }));
    EXPECT_EQ(lane(refuses).good, 0);
    EXPECT_EQ(lane(silent).state, VerdictState::waiting);
    EXPECT_EQ(lane(silent).all(), 0);
    EXPECT_EQ(window->message(), "");

    QTest::keyClick(window.get(), Qt::Key_4); // the killed lane begins again
    EXPECT_TRUE(comes([this] { return lane(killed).good == 1; }));
    QTest::keyClick(window.get(), Qt::Key_1);
    EXPECT_TRUE(comes([this] { return !lane(1).runs; }));
    EXPECT_TRUE(lane(2).runs);
    QTest::keyClick(window.get(), Qt::Key_Escape);
    EXPECT_TRUE(comes([this] { return all([](const Lane& one) { return !one.runs; }); }));
    for (const int number : {1, 2, 3, killed, 7, 8})
        EXPECT_GE(chips_in(number), lane(number).good) << "good is a chip that runs its code, lane " << number;
    EXPECT_EQ(chips_in(refuses), 0);
}

TEST_F(LineOfEight, StartsNothingWithAProjectThatHasBeenChanged)
{
    write_job("VER: 1.2\n");
    QTest::keyClick(window.get(), Qt::Key_F5);
    EXPECT_NE(window->message(), "");
    EXPECT_TRUE(all([](const Lane& one) { return !one.runs; }));
    QTest::keyClick(window.get(), Qt::Key_2);
    EXPECT_TRUE(all([](const Lane& one) { return !one.runs; }));
}

TEST_F(LineOfEight, SaysWhichProgramIsMissing)
{
    auto elsewhere = terms;
    elsewhere.vrk = folder.filePath("no-such-program");
    LineWindow other(elsewhere, settings, 1, {targets[0]->link()});
    other.start_all();
    EXPECT_TRUE(comes([&] { return !other.tiles()[0]->lane().runs; }));
    EXPECT_EQ(other.tiles()[0]->lane().state, VerdictState::not_done);
    EXPECT_NE(other.tiles()[0]->lane().advice.find("vrk"), std::string::npos);
}

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
