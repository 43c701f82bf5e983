#include "host/qt_port.h"

#include "host/line_driver.h"
#include "host/port_refusal.h"

#include <QFileInfo>

#include <algorithm>
#include <array>
#include <cmath>

namespace vrk {

namespace {

constexpr std::size_t most_at_once = 32768; // in one call to the driver: a flood comes in few turns of the loop

QSerialPort::Parity qt_parity(Parity parity)
{
    switch (parity) {
    case Parity::even:
        return QSerialPort::EvenParity;
    case Parity::odd:
        return QSerialPort::OddParity;
    case Parity::mark:
        return QSerialPort::MarkParity;
    case Parity::space:
        return QSerialPort::SpaceParity;
    case Parity::none:
        break;
    }
    return QSerialPort::NoParity;
}

constexpr std::size_t many_bytes = 1024; // in the time that bytes may gather: the line is too fast to be held back

bool leads_to_pseudo_terminal(const std::string& path)
{
    return QFileInfo(QString::fromStdString(path)).canonicalFilePath().startsWith("/dev/pts/");
}

} // namespace

QtPort::QtPort(std::string path)
    : path_(std::move(path))
{
    gather_.setSingleShot(true);
    gather_.setTimerType(Qt::PreciseTimer);
    QObject::connect(&gather_, &QTimer::timeout, &port_, [this] { read_on(); });
    QObject::connect(
        &port_, &QSerialPort::errorOccurred, &port_,
        [this](QSerialPort::SerialPortError error) {
            if (error == QSerialPort::ResourceError)
                lose();
        },
        Qt::QueuedConnection);
}

// The device was pulled out, or the other end has hung up. It reads as ready from then on, with nothing to read, and
// keeps the loop awake until it is closed; but not under the feet of a receiver that waits.
void QtPort::lose()
{
    gone_ = true;
    hang_up_.reset();
    readable_.reset();
    if (!receiving_)
        port_.close();
}

// By what came in the last while: a single short piece among long ones tells nothing.
bool QtPort::is_slow(std::size_t count)
{
    came_ += count;
    if (paced_.isValid() && paced_.elapsed() < gather_.interval())
        return slow_;
    slow_ = came_ < many_bytes;
    came_ = 0;
    paced_.start();
    return slow_;
}

// A wake-up for each byte costs a tenth of a processor at 115200 baud. What has come waits in the driver meanwhile; a
// hang-up is told by another notifier.
void QtPort::hold_back_reading()
{
    readable_->setEnabled(false);
    gather_.start();
}

void QtPort::read_on()
{
    if (readable_)
        readable_->setEnabled(true);
}

bool QtPort::open(const LineSettings& line)
{
    close();
    gather_.setInterval(0);
    paced_.invalidate();
    came_ = 0;
    gone_ = !QFileInfo::exists(QString::fromStdString(path_));
    if (gone_)
        return false;
    is_pseudo_terminal_ = leads_to_pseudo_terminal(path_);
    LineSettings taken = line;
    if (!open_with(taken) && is_pseudo_terminal_) {
        taken.parity = Parity::none; // it carries none
        open_with(taken);
    }
    refusal_ = is_open() ? PortRefusal{} : why_refused(path_, port_.error() == QSerialPort::PermissionError);
    return is_open();
}

bool QtPort::open_with(const LineSettings& line)
{
    port_.setPortName(QString::fromStdString(path_));
    port_.setBaudRate(line.baud);
    port_.setDataBits(static_cast<QSerialPort::DataBits>(line.data_bits));
    port_.setParity(qt_parity(line.parity));
    port_.setStopBits(line.stop_bits == 2 ? QSerialPort::TwoStop : QSerialPort::OneStop);
    port_.setFlowControl(QSerialPort::NoFlowControl);
    if (!port_.open(QIODevice::ReadWrite))
        return false;
    if (!driver_took(line)) {
        port_.close();
        return false;
    }
    ask_for_low_latency(port_.handle());
    port_.clear(); // what an earlier owner of the line has left
    // QSerialPort takes a hang-up for a read of nothing and says no word of it.
    hang_up_ = std::make_unique<QSocketNotifier>(port_.handle(), QSocketNotifier::Exception);
    QObject::connect(
        hang_up_.get(), &QSocketNotifier::activated, &port_, [this] { lose(); }, Qt::QueuedConnection);
    receive_straight();
    return true;
}

// Bytes come by a notifier of our own in place of that of QSerialPort, whose buffer costs a third of the time between a
// reply and the next frame. Its own would take some of them: it is switched off, and stays so, since nobody reads by
// it.
void QtPort::receive_straight()
{
    for (auto* notifier : port_.findChildren<QSocketNotifier*>()) {
        if (notifier->type() == QSocketNotifier::Read)
            notifier->setEnabled(false);
    }
    readable_ = std::make_unique<QSocketNotifier>(port_.handle(), QSocketNotifier::Read);
    QObject::connect(readable_.get(), &QSocketNotifier::activated, &port_, [this] { take_in(); });
}

// At once, not queued: a queued event costs the loop another turn. What comes while a receiver waits is put away for
// it: it is not told again before it returns.
void QtPort::take_in()
{
    std::array<std::uint8_t, most_at_once> piece;
    const auto count = read_now(port_.handle(), piece);
    if (!count) {
        readable_->setEnabled(false); // it would be ready for ever
        QMetaObject::invokeMethod(
            &port_, [this] { lose(); }, Qt::QueuedConnection);
        return;
    }
    input_.insert(input_.end(), piece.begin(), piece.begin() + static_cast<std::ptrdiff_t>(*count));
    if (*count == 0 || receiving_)
        return;
    const bool gathers = gather_.interval() > 0 && is_slow(*count);
    tell();
    if (gathers && readable_) // unless the event has closed the port
        hold_back_reading();
}

void QtPort::tell()
{
    const auto event = on_receive; // a copy: the event may close, reopen or replace it
    if (!event)
        return;
    receiving_ = true;
    event();
    receiving_ = false;
    if (gone_)
        lose();
}

// A driver that cannot make a speed may quietly take another one. Up to 2 % is rounding of its divisor, and leaves the
// chip the rest of what a line can bear.
bool QtPort::driver_took(const LineSettings& line) const
{
    const int taken = line_speed(port_.handle());
    return taken <= 0 || std::abs(taken - line.baud) <= line.baud * 0.02;
}

void QtPort::close()
{
    hang_up_.reset();
    gather_.stop();
    readable_.reset();
    input_.clear();
    if (!port_.isOpen())
        return;
    if (gone_)
        return port_.close();
    port_.flush();
    wait_until_sent(port_.handle()); // closing drops what still waits, and puts the old speed back at once
    port_.close();
}

bool QtPort::set_line(const LineSettings& line)
{
    port_.setDataBits(static_cast<QSerialPort::DataBits>(line.data_bits));
    port_.setStopBits(line.stop_bits == 2 ? QSerialPort::TwoStop : QSerialPort::OneStop);
    const bool parity_set = port_.setParity(qt_parity(line.parity)) || is_pseudo_terminal_;
    return port_.setBaudRate(line.baud) && parity_set && driver_took(line);
}

std::size_t QtPort::bytes_available() const { return input_.size(); }

std::size_t QtPort::read(std::span<std::uint8_t> into)
{
    const std::size_t count = std::min(into.size(), input_.size());
    std::copy_n(input_.begin(), count, into.begin());
    input_.erase(input_.begin(), input_.begin() + static_cast<std::ptrdiff_t>(count));
    return count;
}

std::size_t QtPort::bytes_to_write() const { return static_cast<std::size_t>(port_.bytesToWrite()); }

// Straight to the driver: through Qt's buffer a frame costs two more turns of the loop. What the driver does not take
// at once goes that way.
void QtPort::write(std::span<const std::uint8_t> bytes)
{
    if (port_.bytesToWrite() == 0)
        bytes = bytes.subspan(write_now(port_.handle(), bytes));
    if (bytes.empty())
        return;
    port_.write(reinterpret_cast<const char*>(bytes.data()), static_cast<qint64>(bytes.size()));
    port_.flush();
}

void QtPort::set_outputs(bool dtr, bool rts)
{
    if (is_pseudo_terminal_)
        return;
    port_.setDataTerminalReady(dtr);
    port_.setRequestToSend(rts);
}

std::optional<ControlInputs> QtPort::inputs()
{
    if (is_pseudo_terminal_)
        return std::nullopt;
    const QSerialPort::PinoutSignals signals_on = port_.pinoutSignals();
    return ControlInputs{signals_on.testFlag(QSerialPort::ClearToSendSignal),
        signals_on.testFlag(QSerialPort::DataSetReadySignal),
        signals_on.testFlag(QSerialPort::DataCarrierDetectSignal)};
}

void QtPort::discard()
{
    port_.clear(); // both ways in one call to the driver, Qt's buffer for what goes out too
    input_.clear();
}

} // namespace vrk
