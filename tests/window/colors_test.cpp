// The colours that mean something can be read on the ground that they stand on, in light and in dark palettes: a
// contrast of 4.5 to 1 at least, as the guidelines for accessible contents measure it.
#include "window_bench.h"

#include "shell/messages.h"
#include "window/colors.h"
#include "window/seen_choices.h"
#include "window/verdict_look.h"

#include <QCheckBox>
#include <QPlainTextEdit>
#include <QSet>
#include <QTextBlock>
#include <QTextLayout>

#include <cmath>

using namespace vrk;

namespace {

constexpr double readable = 4.5;

double luminance(const QColor& color)
{
    const auto linear = [](double part) {
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double contrast(const QColor& one, const QColor& other)
{
    const double first = luminance(one) + 0.05;
    const double second = luminance(other) + 0.05;
    return std::max(first, second) / std::min(first, second);
}

// What is seen of a colour through a veil that lies over it.
QColor through(const QColor& veil, const QColor& below)
{
    const auto part = [&veil](float over, float under) { return over * veil.alphaF() + under * (1 - veil.alphaF()); };
    return QColor::fromRgbF(
        part(veil.redF(), below.redF()), part(veil.greenF(), below.greenF()), part(veil.blueF(), below.blueF()));
}

QPalette of_two(const QColor& text, const QColor& window, const QColor& base, const QColor& button)
{
    QPalette palette(text, button, Qt::white, Qt::black, Qt::gray, text, Qt::white, base, window);
    palette.setColor(QPalette::Highlight, QColor(0x2f, 0x65, 0xa8));
    return palette;
}

class Colors : public ::testing::TestWithParam<bool> {
protected:
    const QPalette palette = readable_when_disabled(GetParam()
            ? of_two(QColor(0xe6, 0xe6, 0xe6), QColor(0x2d, 0x2d, 0x2d), QColor(0x1e, 0x1e, 0x1e),
                  QColor(0x3a, 0x3a, 0x3a))
            : of_two(Qt::black, QColor(0xef, 0xef, 0xef), Qt::white, QColor(0xe6, 0xe6, 0xe6)));
};

INSTANTIATE_TEST_SUITE_P(
    Palettes, Colors, ::testing::Bool(), [](const auto& test) { return std::string{test.param ? "Dark" : "Light"}; });

} // namespace

TEST_P(Colors, OfEachToneAreReadInReportAndVerdict)
{
    EXPECT_EQ(is_dark(palette), GetParam());
    for (const Tone tone : {Tone::plain, Tone::good, Tone::bad, Tone::advice})
        EXPECT_GE(contrast(tone_color(tone, palette), palette.color(QPalette::Base)), readable)
            << static_cast<int>(tone);
    EXPECT_NE(tone_color(Tone::good, palette), tone_color(Tone::bad, palette));
    EXPECT_NE(tone_color(Tone::good, palette), tone_color(Tone::plain, palette));
}

// The word that is read from two metres.
TEST_P(Colors, OfEachVerdictAreReadOnItsGround)
{
    for (const VerdictState state :
        {VerdictState::ready, VerdictState::waiting, VerdictState::working, VerdictState::good, VerdictState::bad,
            VerdictState::stopped, VerdictState::done, VerdictState::not_done}) {
        QImage picture(60, 40, QImage::Format_RGB32);
        QPainter painter(&picture);
        const QColor ink = paint_verdict_ground(painter, picture.rect(), state, palette);
        painter.end();
        EXPECT_GE(contrast(ink, picture.pixelColor(picture.rect().center())), readable)
            << word_of(state).en << ": " << picture.pixelColor(picture.rect().center()).name().toStdString();
    }
}

TEST_P(Colors, OfNotesAndOfWhatCannotBeUsedNowAreRead)
{
    EXPECT_GE(contrast(note_color(palette), palette.color(QPalette::Window)), readable);
    const std::pair<QPalette::ColorRole, QPalette::ColorRole> pairs[] = {{QPalette::WindowText, QPalette::Window},
        {QPalette::Text, QPalette::Base}, {QPalette::ButtonText, QPalette::Button}};
    for (const auto& [text, ground] : pairs)
        EXPECT_GE(
            contrast(palette.color(QPalette::Disabled, text), palette.color(QPalette::Disabled, ground)), readable)
            << text;
}

TEST_P(Colors, OfADumpAreReadThroughItsMarks)
{
    const QColor text = palette.color(QPalette::Text);
    const QColor base = palette.color(QPalette::Base);
    for (const QColor& veil : {number_veil(palette), left_out_veil(palette)})
        EXPECT_GE(contrast(through(veil, text), through(veil, base)), readable) << veil.name().toStdString();
}

// A box that was not ticked was a dark spot on a dark ground. What is no text has to stand out by 3 to 1.
TEST_P(Colors, OfTheRimOfABoxStandOutFromTheWindow)
{
    SeenChoices style("Fusion");
    QCheckBox box;
    box.setStyle(&style);
    box.setPalette(palette);
    box.resize(box.sizeHint());
    const QImage picture = box.grab().toImage();
    double most = 1;
    for (int x = 0; x < picture.width(); ++x)
        most = std::max(most, contrast(picture.pixelColor(x, picture.height() / 2), palette.color(QPalette::Window)));
    if (GetParam())
        EXPECT_GE(most, 3);
    else
        EXPECT_GT(most, 1); // the style's own rim, as on every light desktop
}

// A report in which nothing is coloured would be read word by word.
TEST(ReportPane, ShowsFailureAndSuccessInTheirColours)
{
    WindowBench bench("/dev/null");
    auto* report = bench.find<QPlainTextEdit>("textMsg");
    for (const Tone tone : {Tone::good, Tone::bad, Tone::advice}) {
        constexpr Text said = {"一行", "one line"};
        append_message(bench.shell, Line{said}.as(tone));
        bench.window->binder().refresh();
        QSet<QRgb> seen;
        for (QTextBlock block = report->document()->begin(); block.isValid(); block = block.next()) {
            for (const auto& part : block.layout()->formats())
                seen << part.format.foreground().color().rgb();
        }
        EXPECT_TRUE(seen.contains(tone_color(tone, report->palette()).rgb())) << static_cast<int>(tone);
    }
}
