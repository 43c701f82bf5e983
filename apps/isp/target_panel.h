// The small panel of the simulated target: which chip it is, its power switch, what it holds.
#pragma once

#include "isp/ports_with_target.h"

#include "form/main_form.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>

namespace vrk {

class TargetPanel final : public QGroupBox {
public:
    TargetPanel(const MainForm& form, PortsWithTarget& ports);

    void put_in(const std::string& model);

private:
    void show_chip();

    const MainForm& form_;
    PortsWithTarget& ports_;
    QComboBox* model_;
    QPushButton* power_;
    QLabel* state_;
    QLabel* contents_;
    QPlainTextEdit* complaints_;
};

} // namespace vrk
