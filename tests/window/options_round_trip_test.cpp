// Options from the model's tree into a chip on a pseudo terminal and back onto the check page, by mouse and keyboard:
// one model of each page, in both languages.
#include "window_bench.h"

#include "catalog/attributes.h"
#include "link/option_commit.h"
#include "shell/device.h"
#include "shell/option_choices.h"

#include <QRegularExpression>

using namespace vrk;

namespace {

enum class Pick { mouse, keyboard, by_name }; // the last: a model that only a connected chip or a project brings in

struct Trip {
    const char* model;
    const char* family; // as the tree has it
    bool english;
    Pick pick;
};

std::string trip_name(const ::testing::TestParamInfo<Trip>& info)
{
    std::string name = std::string{info.param.model} + (info.param.english ? "_English" : "_Chinese");
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

void pick_model(WindowBench& bench, const Trip& trip)
{
    if (trip.pick == Pick::mouse) {
        bench.choose_model(trip.family, trip.model);
    } else if (trip.pick == Pick::keyboard) {
        bench.type_model(trip.model);
    } else {
        bench.form.text_box("txtDevice").set_text(trip.model);
        ASSERT_TRUE(apply_selected_device(bench.shell));
        QTest::qWait(100);
    }
    ASSERT_EQ(bench.find<QLineEdit>("txtDevice")->text(), QString(trip.model));
}

// Clicks the other choice of every strip that shows one. Those that answer only together change together.
int turn_all_over(WindowBench& bench)
{
    int clicks = 0;
    for (int strip = 0; strip < 14; ++strip) {
        for (int index = 0; index < 2; ++index) {
            const std::string name = "Option" + std::to_string(strip) + "(" + std::to_string(index) + ")";
            auto* button = bench.find<QRadioButton>(name.c_str());
            if (!button->isVisible() || button->isChecked())
                continue;
            QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(8, button->height() / 2));
            EXPECT_TRUE(button->isChecked()) << name;
            ++clicks;
            break;
        }
    }
    auto* divider = bench.find<QComboBox>("comWDT_Prescalar(0)");
    if (divider->isVisible()) {
        divider->setFocus();
        QTest::keyClick(divider, Qt::Key_Home);
        QTest::keyClick(divider, Qt::Key_Down);
        EXPECT_EQ(divider->currentIndex(), 1);
        ++clicks;
    }
    return clicks;
}

QByteArray code_file()
{
    QByteArray bytes;
    for (int i = 0; i < 200; ++i)
        bytes.append(static_cast<char>(i * 7 + 1));
    return bytes;
}

QString report(WindowBench& bench)
{
    QTest::qWait(100);
    return bench.find<QPlainTextEdit>("textMsg")->toPlainText();
}

// The words of every choice that stands in the panel.
QStringList words_of_choices(Shell& shell, OptionPage page)
{
    QStringList words;
    snapshot_controls(shell);
    for (int row = 0; row <= page.last_row; ++row) {
        const auto cell = [&](OptionColumn column) { return shell.option_table.cell(page.page, row, column); };
        if (cell(OptionColumn::snapshot) == "True" && !cell(OptionColumn::bit_code).empty() &&
            !cell(OptionColumn::report).empty())
            words << QString::fromStdString(cell(OptionColumn::report)).simplified();
    }
    return words;
}

class EveryPage : public ::testing::TestWithParam<Trip> { };

} // namespace

TEST_P(EveryPage, GoesIntoTheChipAndComesBack)
{
    const Trip trip = GetParam();
    TargetProcess target({trip.model, "--at-once"});
    WindowBench bench(target.link(), trip.english);
    QTemporaryDir folder;
    QFile file(folder.filePath("code.bin"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(code_file());
    file.close();

    ASSERT_NO_FATAL_FAILURE(pick_model(bench, trip));
    const int clicks = turn_all_over(bench);
    EXPECT_GE(clicks, option_page_of_series(bench.shell.selected.series).last_row > 4 ? 5 : 0);
    bench.type_into_next_dialog(folder.filePath("code.bin"));
    bench.click("comLoadFile");

    bench.power_up_when_called(target);
    bench.click("comDownload(0)");
    const QString done = report(bench);
    const QString taken = trip.english ? "Setting options OK. " : "设置选项成功。";
    const bool writes = bench.shell.selected.series != 1;
    const bool doubled = bench.shell.selected.series == 0 && bench.form.option("Option0", 0).value();
    const QString oldest = trip.english ? "Lock Chip, set 6 Clocks OK." : "设置双倍速成功。";
    EXPECT_EQ(done.contains(doubled ? oldest : taken), writes) << done.toStdString();
    EXPECT_TRUE(done.contains("Program OK")) << done.toStdString();
    std::vector<std::uint8_t> wanted;
    for (const auto& row : bench.shell.options.bytes)
        wanted.push_back(row[0]);

    target.power_off();
    QTest::qWait(100);
    auto* tabs = bench.find<QTabBar>("TabStrip1");
    QTest::mouseClick(
        tabs, Qt::LeftButton, {}, tabs->tabRect(bench.form.tabs("TabStrip1").find("CheckMCUoption")).center());
    ASSERT_TRUE(QTest::qWaitFor([&] { return bench.find<QPushButton>("comReadChipLock")->isVisible(); }));
    const OptionPage page = option_page_of_series(bench.shell.selected.series);
    const QStringList words = words_of_choices(bench.shell, page);
    bench.power_up_when_called(target);
    bench.click("comReadChipLock");
    const QString read = report(bench);
    const bool letter_b = bench.shell.talk().chip.fw_letter == "B";
    const QString read_text = trip.english ? (letter_b ? "Read MCU Firmware Version OK." : "Reading Options OK. ")
                                           : (letter_b ? "读版本号成功." : "读选项成功.");
    EXPECT_TRUE(read.contains(read_text)) << read.toStdString();
    // The words of the voltages go by the firmware in the report, by the model in the panel.
    if (page.page >= 4 && page.page <= 9) {
        const QString plain = read.simplified();
        for (const QString& word : words) {
            EXPECT_TRUE(word.contains("V ") || plain.contains(word)) << word.toStdString() << "\n"
                                                                     << read.toStdString();
        }
        EXPECT_TRUE(bench.find<QLabel>("LabLock(1)")->text().contains(trip.model));
        EXPECT_FALSE(bench.find<QLabel>("LabLock(2)")->text().isEmpty());
    }

    const QString said = target.quit();
    EXPECT_TRUE(said.contains("violations: none")) << said.toStdString();
    const QStringList rows = QRegularExpression("options:([ 0-9A-F]+)").match(said).captured(1).simplified().split(' ');
    ASSERT_EQ(rows.size(), 17);
    std::vector<int> telling;
    if (bench.shell.selected.series >= 3 && !series_is_rc_group(bench.shell.selected.series)) {
        const auto compared =
            compared_rows(bench.shell.selected, bench.shell.talk().chip.fw_letter, bench.shell.talk().chip.fw_version);
        telling.assign(compared.begin(), compared.end());
    } else if (bench.shell.selected.series >= 2) {
        telling = {1};
    }
    for (const int row : telling)
        EXPECT_EQ(rows[row].toUInt(nullptr, 16), wanted[static_cast<std::size_t>(row)]) << "row " << row;
    EXPECT_EQ(target.flash().left(code_file().size()), code_file());
}

INSTANTIATE_TEST_SUITE_P(InEachLanguage, EveryPage,
    ::testing::Values(Trip{"Alder-64", "Alder series", false, Pick::mouse},
        Trip{"Aspen-16", "Aspen series", false, Pick::keyboard}, Trip{"Rowan-8", "Rowan series", true, Pick::mouse},
        Trip{"Birch-8", "Birch series", false, Pick::keyboard}, Trip{"Fir-20R", "Fir series", true, Pick::keyboard},
        Trip{"Elm-4R", "Elm series", false, Pick::mouse}, Trip{"Hazel-4R", "Hazel series", true, Pick::mouse},
        Trip{"Hazel-4R", "Hazel series", false, Pick::keyboard},
        Trip{"Juniper-60Q", "Juniper series", true, Pick::keyboard},
        Trip{"Juniper-60Q", "Juniper series", false, Pick::mouse}, Trip{"Larch-12V", "Larch series", true, Pick::mouse},
        Trip{"Larch-12V", "Larch series", false, Pick::keyboard},
        Trip{"Maple-4S", "Maple series", true, Pick::keyboard}, Trip{"Maple-4S", "Maple series", false, Pick::mouse},
        Trip{"Oak-20V", "Oak series", true, Pick::mouse}, Trip{"Oak-20V", "Oak series", false, Pick::keyboard},
        Trip{"Holly-4", "", true, Pick::by_name}, Trip{"Holly-4", "", false, Pick::by_name}),
    trip_name);
