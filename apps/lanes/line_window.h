// The line: a tile for each lane, the job that all of them put into their chips, and what they have done together.
#pragma once

#include "host/qt_ports.h"
#include "lanes/tile.h"
#include "lanes/tones.h"
#include "platform/settings_store.h"

#include <QGridLayout>
#include <QLabel>
#include <QWidget>

#include <memory>
#include <vector>

namespace vrk::lanes {

class LineWindow final : public QWidget {
public:
    // The ports chosen, in the order of the lanes; the others are as they were stored.
    LineWindow(const LineTerms& terms, SettingsStore& settings, int lanes, const QStringList& ports);

    void start_all();
    void stop_all();
    const std::vector<std::unique_ptr<Tile>>& tiles() const { return tiles_; }
    QString message() const { return message_->text(); }

protected:
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void make_head();
    void make_keys();
    void lay_out();
    void store_ports();
    void look_at_lanes();
    bool job_is_unchanged();
    void start(Tile& tile);

    LineTerms terms_;
    SettingsStore& settings_;
    QtPorts ports_;
    Tones tones_;
    std::string job_hash_;
    std::vector<std::unique_ptr<Tile>> tiles_;
    QGridLayout* grid_;
    int columns_ = 0;
    QLabel* job_;
    QLabel* totals_;
    QLabel* message_;
};

} // namespace vrk::lanes
