#include "isp/target_panel.h"

#include "form/named_controls.h"

#include "rehearsal/chip_of_model.h"
#include "window/binder.h"

#include <QVBoxLayout>

#include <algorithm>

namespace vrk {

namespace {

// What a hand sees on the bench: how much of the flash is written, and its sum.
QString summary_of(const char* what, const std::vector<std::uint8_t>& flash)
{
    const auto used = std::count_if(flash.begin(), flash.end(), [](std::uint8_t byte) { return byte != 0xFF; });
    std::uint32_t sum = 0;
    for (const std::uint8_t byte : flash)
        sum += byte;
    return QString("%1: %2 of %3 bytes are not FF, sum %4H").arg(what).arg(used).arg(flash.size()).arg(sum, 0, 16);
}

} // namespace

TargetPanel::TargetPanel(MainWindow& window, PortsWithTarget& ports, const std::string& model)
    : QGroupBox(PortsWithTarget::path)
    , shell_(window.binder().shell())
    , ports_(ports)
    , model_(new QComboBox)
    , power_(new QPushButton)
    , state_(new QLabel)
    , contents_(new QLabel)
    , complaints_(new QPlainTextEdit)
{
    setObjectName("simulatedTarget");
    model_->setObjectName("simulatedModel");
    power_->setObjectName("simulatedPower");
    power_->setCheckable(true);
    contents_->setWordWrap(true);
    complaints_->setReadOnly(true);
    for (const Tree::Node& node : NamedControls{shell_.controls}.tree("TreeViewDevice").nodes()) {
        if (!node.parent.empty())
            model_->addItem(to_qt(node.key));
    }
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(model_);
    layout->addWidget(power_);
    layout->addWidget(state_);
    layout->addWidget(contents_);
    layout->addWidget(new QLabel("Complaints of the chip:"));
    layout->addWidget(complaints_, 1);

    connect(model_, &QComboBox::activated, this, [this] { put_in(from_qt(model_->currentText())); });
    connect(power_, &QPushButton::toggled, this, [this](bool on) {
        ports_.chip().power(on);
        show_chip();
    });

    put_in(model);
    window.add_panel(this);
    const ComboBox& port = NamedControls{shell_.controls}.list("combCommPort");
    window.binder().follow(port, [this, &port] { setVisible(port.text() == PortsWithTarget::path); });
}

void TargetPanel::put_in(const std::string& model)
{
    const auto setup = chip_setup_of(shell_.mcu_table, model);
    if (!setup)
        return;
    model_->setCurrentText(to_qt(model));
    power_->setChecked(false);
    ports_.put_in(*setup);
    ports_.chip().on_state_change.push_back([this](sim::Chip::State) { show_chip(); });
    show_chip();
}

void TargetPanel::show_chip()
{
    const sim::Chip& chip = ports_.chip();
    power_->setText(power_->isChecked() ? "Power: on" : "Power: off");
    state_->setText("State: " + to_qt(chip.state_name()));
    QString contents = summary_of("Flash", chip.flash());
    if (!chip.data_flash().empty())
        contents += "\n" + summary_of("Data flash", chip.data_flash());
    contents_->setText(contents);
    complaints_->setPlainText(chip.violations().empty() ? "none" : to_qt(chip.violations()));
}

} // namespace vrk
