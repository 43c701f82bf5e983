// The small panel of the simulated target: which chip it is, its power switch, what it holds.
#pragma once

#include "isp/ports_with_target.h"

#include "report/text.h"
#include "window/main_window.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>

namespace vrk {

class TargetPanel final : public QGroupBox {
public:
    // With a chip of the model in the ports, beside the window while the simulated target is the chosen port.
    TargetPanel(MainWindow& window, PortsWithTarget& ports, const std::string& model);

private:
    QString text(const Text& text) const;
    void put_in(const std::string& model);
    void follow_model();
    void show_chip();

    Shell& shell_;
    PortsWithTarget& ports_;
    bool picked_ = false; // the chip, by hand
    QComboBox* model_;
    QPushButton* power_;
    QLabel* state_;
    QLabel* contents_;
    QPlainTextEdit* complaints_;
};

} // namespace vrk
