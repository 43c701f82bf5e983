#include "session/session.h"

#include "session/receive.h"

namespace vrk {

namespace {

constexpr int after_sending_ms = 3;
constexpr int settling_ms = 5; // trailing bytes of the exchange before
constexpr int before_demo_command_ms = 20;

} // namespace

bool LineChoice::is_one_speed() const { return std::to_string(max_baud).substr(0, 4) == std::to_string(contact_baud); }

Session::Session(EventLoop& its_loop, Port& its_port, const McuTable& its_catalogue, const McuRecord& its_selected,
    const LineChoice& its_line)
    : loop(its_loop)
    , port(its_port)
    , catalogue(its_catalogue)
    , selected(its_selected)
{
    line = its_line;
    port.close();
    port.path = line.port_path;
    port.on_receive = [this] { on_receive(*this); };
}

Session::~Session() { port.on_receive = nullptr; }

Check Session::check() const
{
    if (board_mode)
        return Check::crc16;
    return model().cap_long_frame ? Check::sum16 : Check::sum8;
}

std::string Session::reported_id() const { return chip.target_id_hi + chip.target_id_lo; }

bool Session::set_baud(std::int32_t baud)
{
    const Parity parity = !parity_on ? Parity::none : parity_even ? Parity::even : Parity::odd;
    return port.set_line({baud, parity, 8, 1});
}

bool Session::open() { return port.open(); }

void Session::close() { port.close(); }

void Session::drop_counts() { port.drop(); }

void Session::flush()
{
    drop_counts();
    if (port.is_open()) {
        port.take();
    } else if (port.open()) {
        port.take();
        if (!line.is_one_speed())
            port.close();
    }
    rx.count = 0;
    rx.reply_ok = false;
    rx.hdr_46_seen = false;
}

void Session::send(std::span<const std::uint8_t> bytes)
{
    port.send(bytes);
    if (port.queued() > 0)
        loop.run_due();
    wait(after_sending_ms);
}

void Session::expect_reply()
{
    rx.count = 0;
    rx.reply_ok = false;
    rx.accept_frames = true;
    wait(settling_ms);
}

bool Session::send_short_command(std::uint8_t code)
{
    const Bytes bytes = build_short_frame(code, check());
    if (bytes.empty())
        return false;
    drop_counts();
    if (!ensure_open())
        return false;
    flush();
    return port.send(bytes);
}

void Session::send_demo_command(std::uint8_t code)
{
    while (port.queued() > 0)
        loop.yield();
    wait(before_demo_command_ms);
    port.send(build_demo_frame(code, {}));
}

bool Session::wait_reply(int ms)
{
    const Deadline end(loop, ms);
    while (!stop_requested && !rx.reply_ok && !end.passed())
        loop.yield();
    return rx.reply_ok;
}

void Session::send_model_command(std::uint8_t code, std::uint8_t parameter)
{
    flush();
    rx.reply_timeout = false;
    rx.reply_bad = false;
    send(build_model_frame(code, parameter, model(), reported_id(), check()));
}

bool Session::ask_model(std::uint8_t code, int timeout_ms, std::uint8_t parameter)
{
    const Deadline end(loop, timeout_ms);
    send_model_command(code, parameter);
    while (!rx.reply_bad && !rx.reply_ok && !stop_requested && !end.passed())
        loop.yield();
    rx.reply_timeout = end.passed();
    return rx.reply_ok;
}

std::span<const std::uint8_t> Session::frame() const
{
    return std::span{rx.buffer}.first(static_cast<std::size_t>(rx.count));
}

} // namespace vrk
