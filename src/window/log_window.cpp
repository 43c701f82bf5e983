#include "window/log_window.h"

#include "books/books.h"
#include "shell/line_books.h"
#include "shell/messages.h"
#include "window/binder.h"

#include <QBarCategoryAxis>
#include <QBarSet>
#include <QChart>
#include <QChartView>
#include <QComboBox>
#include <QDialog>
#include <QFile>
#include <QFileDialog>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSaveFile>
#include <QStackedBarSeries>
#include <QTableWidget>
#include <QVBoxLayout>
#include <QValueAxis>

#include <algorithm>
#include <array>
#include <memory>
#include <span>

namespace vrk {

namespace {

constexpr int rows_shown = 1000; // of the newest; totals and exports have all
constexpr std::size_t hours_shown = 48; // of the newest with chips in them
constexpr int least_chart_height = 160;
constexpr int steps_upward = 4; // of the chart's scale
constexpr int widest_column = 200; // the path of a job may be long

// clang-format off
constexpr Text title          = { "记录",       "Log" };
constexpr Text show_it        = { "显示",       "Show" };
constexpr Text export_it      = { "导出...",    "Export..." };
constexpr Text good_word      = { "合格",       "Good" };
constexpr Text bad_word       = { "不合格",     "Bad" };
constexpr Text yield_word     = { "合格率",     "Yield" };
constexpr Text chips_word     = { "片",         "chips" };
constexpr Text not_written    = { "文件无法写入: ", "The file cannot be written: " };

// What is looked for, and the columns of the table.
struct Wish { Text label; std::string ChipFilter::* field; };
constexpr Wish wishes[] = {
    { { "从 (年-月-日)", "From (year-month-day)" }, &ChipFilter::from },
    { { "到之前",   "Before" },   &ChipFilter::to },
    { { "型号",     "Model" },    &ChipFilter::model },
    { { "工位",     "Station" },  &ChipFilter::station },
    { { "订单",     "Order" },    &ChipFilter::order },
    { { "编号",     "Number" },   &ChipFilter::number },
};
struct Column { Text head; std::string ChipRecord::* field; };
constexpr Column columns[] = {
    { { "时间",     "Time" },     &ChipRecord::at },
    { { "结果",     "Result" },   &ChipRecord::result },
    { { "型号",     "Model" },    &ChipRecord::model },
    { { "编号",     "Number" },   &ChipRecord::number },
    { { "出厂序列号", "Factory number" }, &ChipRecord::factory_number },
    { { "工位",     "Station" },  &ChipRecord::station },
    { { "任务",     "Job" },      &ChipRecord::job },
    { { "报告末行", "Last line" }, &ChipRecord::last_line },
};
// clang-format on

class LogWindow final : public QDialog {
public:
    LogWindow(Shell& shell, Books& books, QWidget* parent)
        : QDialog(parent)
        , shell_(shell)
        , books_(books)
    {
        setObjectName("LogWindow");
        setAttribute(Qt::WA_DeleteOnClose);
        setWindowTitle(word(title));
        auto* layout = new QVBoxLayout(this);
        layout->addLayout(make_wishes());
        layout->addWidget(table_ = make_table(), 3);
        layout->addWidget(totals_);
        chart_->setMinimumHeight(least_chart_height);
        chart_->setRenderHint(QPainter::Antialiasing);
        layout->addWidget(chart_, 2);
        resize(900, 640);
        look();
    }

private:
    QString word(const Text& text) const { return to_qt(in_language(shell_, text)); }

    QLayout* make_wishes()
    {
        auto* grid = new QGridLayout;
        for (std::size_t i = 0; i < fields_.size(); ++i) {
            grid->addWidget(new QLabel(word(wishes[i].label)), 0, int(i));
            grid->addWidget(fields_[i] = new QLineEdit, 1, int(i));
            fields_[i]->setAccessibleName(word(wishes[i].label));
            connect(fields_[i], &QLineEdit::returnPressed, this, [this] { look(); });
        }
        result_->addItem(QString{}, QString{});
        result_->addItem(word(good_word), "good");
        result_->addItem(word(bad_word), "bad");
        result_->setAccessibleName(word(columns[1].head));
        constexpr int behind = int(std::size(wishes));
        grid->addWidget(new QLabel(word(columns[1].head)), 0, behind);
        grid->addWidget(result_, 1, behind);
        auto* shown = new QPushButton(word(show_it));
        shown->setObjectName("logShow");
        shown->setDefault(true);
        auto* exported = new QPushButton(word(export_it));
        exported->setAutoDefault(false);
        connect(shown, &QPushButton::clicked, this, [this] { look(); });
        connect(exported, &QPushButton::clicked, this, [this] { export_records(); });
        grid->addWidget(shown, 1, behind + 1);
        grid->addWidget(exported, 1, behind + 2);
        return grid;
    }

    QTableWidget* make_table()
    {
        auto* table = new QTableWidget(0, int(std::size(columns)));
        QStringList heads;
        for (const Column& column : columns)
            heads << word(column.head);
        table->setHorizontalHeaderLabels(heads);
        table->setEditTriggers(QAbstractItemView::NoEditTriggers);
        table->setSelectionBehavior(QAbstractItemView::SelectRows);
        table->setWordWrap(false);
        table->setTextElideMode(Qt::ElideMiddle);
        table->verticalHeader()->hide();
        table->horizontalHeader()->setStretchLastSection(true);
        return table;
    }

    ChipFilter filter() const
    {
        ChipFilter filter;
        for (std::size_t i = 0; i < fields_.size(); ++i)
            filter.*wishes[i].field = from_qt(fields_[i]->text().trimmed());
        filter.result = from_qt(result_->currentData().toString());
        return filter;
    }

    bool told(const std::optional<BooksFault>& fault)
    {
        if (fault)
            totals_->setText(to_qt(fault_text(*fault).in(shell_.language_is_english)));
        return fault.has_value();
    }

    void look()
    {
        ChipFilter newest = filter();
        newest.at_most = rows_shown;
        const auto chips = books_.chips(newest);
        const auto hours = books_.hours(filter());
        if (told(chips.fault) || told(hours.fault))
            return;
        table_->setRowCount(int(chips.value.size()));
        int row = 0;
        for (auto record = chips.value.rbegin(); record != chips.value.rend(); ++record, ++row) {
            for (int column = 0; column < table_->columnCount(); ++column) {
                const QString text = to_qt((*record).*columns[column].field);
                auto* item = new QTableWidgetItem(text);
                item->setToolTip(text); // whole, where the column is too narrow for it
                table_->setItem(row, column, item);
            }
        }
        table_->resizeColumnsToContents();
        for (int column = 0; column < table_->columnCount(); ++column)
            table_->setColumnWidth(column, std::min(table_->columnWidth(column), widest_column));
        show_totals(hours.value);
        show_chart(hours.value);
    }

    void show_totals(const std::vector<HourTotal>& hours)
    {
        std::int64_t good = 0;
        std::int64_t bad = 0;
        for (const HourTotal& hour : hours) {
            good += hour.good;
            bad += hour.bad;
        }
        QString text = QString("%1 %2    %3 %4    %5 %6")
                           .arg(good + bad)
                           .arg(word(chips_word), word(good_word))
                           .arg(good)
                           .arg(word(bad_word))
                           .arg(bad);
        if (good + bad > 0)
            text +=
                QString("    %1 %2 %").arg(word(yield_word)).arg(100.0 * double(good) / double(good + bad), 0, 'f', 1);
        totals_->setText(text);
    }

    void show_chart(std::span<const HourTotal> all_hours)
    {
        const auto hours = all_hours.last(std::min(hours_shown, all_hours.size()));
        auto* good = new QBarSet(word(good_word));
        auto* bad = new QBarSet(word(bad_word));
        good->setColor(QColor(0x2E, 0x7D, 0x32));
        bad->setColor(QColor(0xC6, 0x28, 0x28));
        QStringList names;
        std::int64_t most = 1;
        for (const HourTotal& hour : hours) {
            *good << double(hour.good);
            *bad << double(hour.bad);
            names << to_qt(hour.hour.substr(std::min<std::size_t>(5, hour.hour.size()))); // the year is in the table
            most = std::max(most, hour.good + hour.bad);
        }
        auto* series = new QStackedBarSeries;
        series->append(good);
        series->append(bad);
        auto* chart = new QChart;
        chart->addSeries(series);
        auto* across = new QBarCategoryAxis;
        across->append(names);
        auto* upward = new QValueAxis;
        upward->setRange(0, double((most + steps_upward - 1) / steps_upward * steps_upward)); // each step whole chips
        upward->setTickCount(steps_upward + 1);
        upward->setLabelFormat("%d");
        across->setLabelsAngle(-90); // side by side they would not fit
        chart->addAxis(across, Qt::AlignBottom);
        chart->addAxis(upward, Qt::AlignLeft);
        series->attachAxis(across);
        series->attachAxis(upward);
        chart->legend()->setAlignment(Qt::AlignRight);
        chart->setBackgroundBrush(palette().brush(QPalette::Base));
        chart->legend()->setLabelBrush(palette().brush(QPalette::Text));
        for (QAbstractAxis* axis : {static_cast<QAbstractAxis*>(across), static_cast<QAbstractAxis*>(upward)}) {
            axis->setLabelsBrush(palette().brush(QPalette::Text));
            axis->setGridLineColor(palette().color(QPalette::Mid));
        }
        chart->setMargins({});
        const std::unique_ptr<QChart> before(chart_->chart());
        chart_->setChart(chart);
    }

    void export_records()
    {
        const QString path =
            QFileDialog::getSaveFileName(this, word(export_it), "log.csv", "CSV (*.csv);;JSON lines (*.jsonl)");
        if (path.isEmpty())
            return;
        const auto chips = books_.chips(filter());
        if (told(chips.fault))
            return;
        const bool csv = !path.endsWith(".jsonl");
        QSaveFile file(path);
        bool written = file.open(QIODevice::WriteOnly);
        if (csv)
            written = written && file.write((csv_head() + "\r\n").c_str()) > 0;
        for (const ChipRecord& record : chips.value)
            written = written && file.write((csv ? csv_line(record) + "\r\n" : json_line(record) + "\n").c_str()) > 0;
        if (!written || !file.commit())
            totals_->setText(word(not_written) + file.errorString());
    }

    Shell& shell_;
    Books& books_;
    std::array<QLineEdit*, std::size(wishes)> fields_{};
    QComboBox* result_ = new QComboBox;
    QTableWidget* table_ = nullptr;
    QLabel* totals_ = new QLabel;
    QChartView* chart_ = new QChartView;
};

} // namespace

void show_log(Shell& shell, QWidget* parent)
{
    if (Books* books = opened_books(shell))
        (new LogWindow(shell, *books, parent))->show();
}

} // namespace vrk
