#include "lanes/line_window.h"

#include "lanes/job_hash.h"
#include "lanes/texts.h"
#include "window/icon.h"

#include <QCloseEvent>
#include <QFileInfo>
#include <QMessageBox>
#include <QShortcut>

#include <algorithm>
#include <cmath>

namespace vrk::lanes {

namespace {

constexpr int lanes_with_keys = 9;
constexpr int shown_digits = 16; // of the hash: enough to compare by eye
constexpr double tile_shape = 1.5; // width to height, where a tile reads best

std::string key_of(int lane) { return "Lane" + std::to_string(lane); }

bool is_at_work(const std::unique_ptr<Tile>& tile)
{
    return tile->lane().runs && tile->lane().state == VerdictState::working;
}

} // namespace

LineWindow::LineWindow(const LineTerms& terms, SettingsStore& settings, int lanes, const QStringList& ports)
    : terms_(terms)
    , settings_(settings)
    , job_hash_(sha256_of_file(terms.job.toStdString()))
    , grid_(new QGridLayout)
    , job_(new QLabel)
    , totals_(new QLabel)
    , message_(new QLabel)
{
    setWindowTitle(QFileInfo(terms_.job).fileName() + " - VRK-ISP Line");
    setWindowIcon(program_icon());
    for (int number = 1; number <= lanes; ++number) {
        tiles_.push_back(std::make_unique<Tile>(terms_, number));
        Tile& tile = *tiles_.back();
        tile.offer_ports(ports_.list());
        const QString stored = QString::fromStdString(settings_.get("Line", key_of(number), ""));
        tile.choose_port(number <= ports.size() ? ports[number - 1] : stored);
        tile.on_port_chosen = [this] { store_ports(); };
        tile.on_change = [this] { look_at_lanes(); };
        tile.on_verdict = [this](bool good) { good ? tones_.good() : tones_.bad(); };
        tile.on_start_wanted = [this, &tile] { start(tile); };
    }
    make_head();
    make_keys();
    lay_out();
    look_at_lanes();
    ports_.on_list_changed = [this] {
        for (const auto& tile : tiles_)
            tile->offer_ports(ports_.list());
    };
}

void LineWindow::make_head()
{
    const bool english = terms_.english;
    job_->setText(
        said(english, job_text)
            .arg(QFileInfo(terms_.job).fileName(), QString::fromStdString(job_hash_.substr(0, shown_digits))));
    job_->setToolTip(terms_.job + "\n" + QString::fromStdString(job_hash_));
    job_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* start = new QPushButton(said(english, start_all_text));
    auto* stop = new QPushButton(said(english, stop_all_text));
    start->setObjectName("startAll");
    stop->setObjectName("stopAll");
    connect(start, &QPushButton::clicked, this, [this] { start_all(); });
    connect(stop, &QPushButton::clicked, this, [this] { stop_all(); });
    QFont large = font();
    large.setPointSizeF(large.pointSizeF() * 1.3);
    large.setBold(true);
    totals_->setFont(large);
    message_->setFont(large);
    message_->setWordWrap(true);
    message_->hide();

    auto* head = new QHBoxLayout;
    head->addWidget(job_, 1);
    head->addWidget(totals_);
    head->addSpacing(20);
    head->addWidget(start);
    head->addWidget(stop);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(head);
    layout->addWidget(message_);
    layout->addLayout(grid_, 1);
}

void LineWindow::make_keys()
{
    for (int i = 0; i < std::min(static_cast<int>(tiles_.size()), lanes_with_keys); ++i) {
        Tile& tile = *tiles_[static_cast<std::size_t>(i)];
        connect(
            new QShortcut(QKeySequence(Qt::Key_1 + i), this), &QShortcut::activated, this, [&tile] { tile.toggle(); });
    }
    connect(new QShortcut(QKeySequence(Qt::Key_F5), this), &QShortcut::activated, this, [this] { start_all(); });
    connect(new QShortcut(QKeySequence(Qt::Key_Escape), this), &QShortcut::activated, this, [this] { stop_all(); });
}

// As many columns as let the tiles come nearest to their best shape.
void LineWindow::lay_out()
{
    const int count = static_cast<int>(tiles_.size());
    int best = 1;
    double best_miss = 1e9;
    for (int columns = 1; columns <= count; ++columns) {
        const int rows = (count + columns - 1) / columns;
        const double shape = (double(width()) / columns) / (double(std::max(height(), 1)) / rows);
        const double miss = std::abs(std::log(shape / tile_shape)) + 0.5 * (columns * rows - count);
        if (miss < best_miss) {
            best = columns;
            best_miss = miss;
        }
    }
    if (best == columns_)
        return;
    columns_ = best;
    for (int i = 0; i < count; ++i)
        grid_->addWidget(tiles_[static_cast<std::size_t>(i)].get(), i / columns_, i % columns_);
    for (int i = 0; i < count; ++i) {
        grid_->setColumnStretch(i, i < columns_ ? 1 : 0);
        grid_->setRowStretch(i, i < (count + columns_ - 1) / columns_ ? 1 : 0);
    }
}

void LineWindow::resizeEvent(QResizeEvent*) { lay_out(); }

void LineWindow::store_ports()
{
    for (const auto& tile : tiles_)
        settings_.set("Line", key_of(tile->process().number()), tile->port().toStdString());
    settings_.set("Line", "Lanes", std::to_string(tiles_.size()));
    settings_.write_through();
}

bool LineWindow::job_is_unchanged()
{
    const bool unchanged = !job_hash_.empty() && sha256_of_file(terms_.job.toStdString()) == job_hash_;
    message_->setText(unchanged ? QString() : said(terms_.english, changed_job_text));
    message_->setVisible(!unchanged);
    return unchanged;
}

void LineWindow::start(Tile& tile)
{
    if (job_is_unchanged())
        tile.start();
}

void LineWindow::start_all()
{
    if (!job_is_unchanged())
        return;
    for (const auto& tile : tiles_)
        tile->start();
}

void LineWindow::stop_all()
{
    for (const auto& tile : tiles_)
        tile->stop();
}

void LineWindow::look_at_lanes()
{
    Lane all;
    std::string job;
    bool other_job = false;
    for (const auto& tile : tiles_) {
        const Lane& lane = tile->lane();
        all.good += lane.good;
        all.bad += lane.bad;
        if (!lane.runs || lane.job_sha256.empty())
            continue;
        other_job = other_job || (!job.empty() && job != lane.job_sha256);
        job = lane.job_sha256;
    }
    QString text = said(terms_.english, counts_text).arg(all.good).arg(all.bad);
    if (all.all() > 0)
        text += said(terms_.english, yield_text).arg(all.yield_percent(), 0, 'f', 1);
    totals_->setText(text);
    if (!other_job)
        return;
    message_->setText(said(terms_.english, other_job_text));
    message_->show();
    stop_all();
}

void LineWindow::closeEvent(QCloseEvent* event)
{
    if (std::any_of(tiles_.begin(), tiles_.end(), is_at_work)) {
        const auto answer = QMessageBox::question(this, windowTitle(), said(terms_.english, closing_text),
            QMessageBox::Yes | QMessageBox::No, QMessageBox::No);
        if (answer != QMessageBox::Yes)
            return event->ignore();
    }
    stop_all(); // all at once; each then has its time to close its port
    event->accept();
}

} // namespace vrk::lanes
