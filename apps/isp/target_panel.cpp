#include "isp/target_panel.h"

#include "form/named_controls.h"

#include "rehearsal/chip_of_model.h"
#include "shell/messages.h"
#include "shell/ports.h"
#include "window/binder.h"

#include <QVBoxLayout>

#include <algorithm>

namespace vrk {

namespace {

constexpr Text power_on = {"电源: 开", "Power: on"};
constexpr Text power_off = {"电源: 关", "Power: off"};
constexpr Text state_word = {"状态: ", "State: "};
constexpr Text flash_word = {"Flash 程序区", "Flash"};
constexpr Text data_flash_word = {"EEPROM 数据区", "Data flash"};
constexpr Text summary = {"%1: %3 字节中 %2 字节不是 FF, 校验和 %4H", "%1: %2 of %3 bytes are not FF, sum %4H"};
constexpr Text complaints_word = {"模拟单片机发现的错误:", "Complaints of the chip:"};
constexpr Text no_complaints = {"无", "none"};

// What the chip is about, in the order of its states.
// clang-format off
constexpr Text state_texts[] = {
    { "没有电",             "off" },
    { "正在起振",           "starting" },
    { "等待联络",           "listening" },
    { "已被呼叫",           "called" },
    { "型号已确认",         "named" },
    { "正在测量 RC 频率",   "testing RC" },
    { "波特率已确定",       "speed set" },
    { "已擦除",             "erased" },
    { "正在写入",           "writing" },
    { "程序已写完",         "code ended" },
    { "选项已写入",         "options written" },
    { "正在运行用户程序",   "user code" },
};
// clang-format on

// What a hand sees on the bench: how much of the flash is written, and its sum.
QString summary_of(const QString& pattern, const QString& what, const std::vector<std::uint8_t>& flash)
{
    const auto used = std::count_if(flash.begin(), flash.end(), [](std::uint8_t byte) { return byte != 0xFF; });
    std::uint32_t sum = 0;
    for (const std::uint8_t byte : flash)
        sum += byte;
    return pattern.arg(what).arg(used).arg(flash.size()).arg(QString::number(sum, 16).toUpper());
}

} // namespace

TargetPanel::TargetPanel(MainWindow& window, PortsWithTarget& ports, const std::string& model)
    : QGroupBox(to_qt(in_language(window.binder().shell(), simulated_target)))
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
    layout->addWidget(new QLabel(text(complaints_word)));
    layout->addWidget(complaints_, 1);

    connect(model_, &QComboBox::activated, this, [this] {
        picked_ = true;
        put_in(from_qt(model_->currentText()));
    });
    connect(power_, &QPushButton::toggled, this, [this](bool on) {
        ports_.chip().power(on);
        show_chip();
    });

    put_in(model);
    window.add_panel(this);
    const NamedControls form{shell_.controls};
    const ComboBox& port = form.list("combCommPort");
    window.binder().follow(port, [this] { setVisible(chosen_port(shell_) == PortsWithTarget::path); });
    window.binder().follow(form.text_box("txtDevice"), [this] { follow_model(); });
}

QString TargetPanel::text(const Text& text) const { return to_qt(in_language(shell_, text)); }

// Whoever tries the program means the model that is chosen in it, until another chip has been picked by hand. What is
// under power stays where it is.
void TargetPanel::follow_model()
{
    const std::string& model = NamedControls{shell_.controls}.text_box("txtDevice").text();
    if (!picked_ && !power_->isChecked() && to_qt(model) != model_->currentText() &&
        model_->findText(to_qt(model)) >= 0)
        put_in(model);
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
    model_->setEnabled(!power_->isChecked()); // a chip is not pulled out under power
    power_->setText(text(power_->isChecked() ? power_on : power_off));
    state_->setText(text(state_word) + text(state_texts[static_cast<std::size_t>(chip.state())]));
    QString contents = summary_of(text(summary), text(flash_word), chip.flash());
    if (!chip.data_flash().empty())
        contents += "\n" + summary_of(text(summary), text(data_flash_word), chip.data_flash());
    contents_->setText(contents);
    complaints_->setPlainText(chip.violations().empty() ? text(no_complaints) : to_qt(chip.violations()));
}

} // namespace vrk
