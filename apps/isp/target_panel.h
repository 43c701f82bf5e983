// The small panel of the simulated target: which chip it is, its power switch, what it holds.
#pragma once

#include "isp/ports_with_target.h"

#include "shell/shell.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>

namespace vrk {

class TargetPanel final : public QGroupBox {
public:
    TargetPanel(const Shell& shell, PortsWithTarget& ports);

    void put_in(const std::string& model);

private:
    void show_chip();

    const Shell& shell_;
    PortsWithTarget& ports_;
    QComboBox* model_;
    QPushButton* power_;
    QLabel* state_;
    QLabel* contents_;
    QPlainTextEdit* complaints_;
};

} // namespace vrk
