// The option panel in the window: one model of each page, in both languages. With VRK_PICTURES set to a folder, each
// panel is left there as a picture.
#include "whole_texts.h"
#include "window_bench.h"

#include "shell/device.h"

#include <QPainter>
#include <QScrollArea>

#include <set>

using namespace vrk;

namespace {

struct Panel {
    const char* model;
    bool english;
};

std::string panel_name(const ::testing::TestParamInfo<Panel>& info)
{
    std::string name = std::string{info.param.model} + (info.param.english ? "_English" : "_Chinese");
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

void choose(WindowBench& bench, const char* model)
{
    bench.form.text_box("txtDevice").set_text(model);
    ASSERT_TRUE(apply_selected_device(bench.shell));
    QTest::qWait(100); // two redraws: the captions, then their columns
}

// Step 4 with the page of options behind it, as the manual shows them; nothing of the machine comes into it.
void keep_picture(WindowBench& bench, const std::string& name)
{
    const QString folder = qEnvironmentVariable("VRK_PICTURES");
    if (folder.isEmpty())
        return;
    const QPixmap upper = bench.find<QWidget>("FrameX(3)")->grab();
    const QPixmap lower = bench.find<QWidget>("Frame12")->grab();
    constexpr int margin = 10;
    QPixmap picture(std::max(upper.width(), lower.width()) + 2 * margin, upper.height() + lower.height() + 3 * margin);
    picture.fill(bench.window->palette().color(QPalette::Window));
    QPainter painter(&picture);
    painter.drawPixmap(margin, margin, upper);
    painter.drawPixmap(margin, upper.height() + 2 * margin, lower);
    painter.end();
    EXPECT_TRUE(picture.save(folder + "/" + QString::fromStdString(name) + ".png"));
}

class EveryPanel : public ::testing::TestWithParam<Panel> { };

} // namespace

TEST_P(EveryPanel, ShowsAllItsTextsWhole)
{
    WindowBench bench("/dev/null", GetParam().english);
    choose(bench, GetParam().model);
    keep_picture(bench, panel_name({GetParam(), 0}));
    EXPECT_EQ(cut_off(*bench.window), "");
    EXPECT_EQ(outside(*bench.window), "");
}

// On a small screen the second choice of a strip had to be scrolled to. A page that came after a wider one kept some of
// its columns.
TEST(NarrowPanel, ShowsEveryChoiceOfStep4InTheWidthOfASmallScreen)
{
    for (const bool english : {true, false}) {
        WindowBench bench("/dev/null", english);
        auto* strips = bench.find<QWidget>("Picture2(0)")->parentWidget();
        auto* area = qobject_cast<QScrollArea*>(strips->parentWidget()->parentWidget());
        ASSERT_NE(area, nullptr);
        for (const char* model : {"Alder-64", "Juniper-60Q", "Larch-12V", "Juniper-60Q"}) {
            for (const int width : {1600, 1366, 1024, 1366}) {
                bench.window->resize(width, 720);
                choose(bench, model);
                EXPECT_LE(strips->width(), area->viewport()->width()) << model << ", " << width << ", " << english;
                EXPECT_EQ(cut_off(*strips), "") << model << ", " << width;
            }
            std::set<int> columns; // where the first choices stand
            for (const char* first : {"Option0(0)", "Option2(0)", "Option3(0)"}) {
                bench.window->resize(1900, 720);
                QTest::qWait(100);
                const auto* choice = bench.find<QWidget>(first);
                if (choice->isVisible())
                    columns.insert(choice->mapTo(strips, QPoint()).x());
            }
            EXPECT_LE(columns.size(), 1U) << model << ": there is room for columns";
        }
    }
}

INSTANTIATE_TEST_SUITE_P(OneModelOfEachPage, EveryPanel,
    ::testing::Values(Panel{"Alder-64", false}, Panel{"Aspen-16", false}, Panel{"Birch-32", false},
        Panel{"Rowan-8", false}, Panel{"Rowan-8", true}, Panel{"Fir-8R", false}, Panel{"Fir-28R", true},
        Panel{"Hazel-4R", false}, Panel{"Hazel-4R", true}, Panel{"Juniper-60Q", false}, Panel{"Juniper-60Q", true},
        Panel{"Larch-12V", false}, Panel{"Larch-12V", true}, Panel{"Maple-4S", false}, Panel{"Maple-4S", true},
        Panel{"Oak-20V", false}, Panel{"Oak-20V", true}, Panel{"Holly-4", false}, Panel{"Holly-4", true},
        Panel{"Hazel-5R", false}, Panel{"Hazel-5R", true}, Panel{"Juniper-I62Q", true}),
    panel_name);
