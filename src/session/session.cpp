#include "session/session.h"

#include "session/receive.h"

#include <algorithm>
#include <utility>

namespace vrk {

namespace {

constexpr int after_sending_ms = 3;
constexpr int settling_ms = 5; // trailing bytes of the exchange before
constexpr int before_demo_command_ms = 20;
constexpr int leaving_margin_ms = 10; // a driver's queue and a converter's buffer
constexpr int least_silence_ms = 50;
constexpr int silence_patience_ms = 10000; // for a line that does not fall silent; 1200 baud need two
constexpr std::size_t acknowledgement_size = 16; // with its header, and room to spare

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

bool Session::open()
{
    if (port_gone())
        return false;
    const bool opened = port.open();
    was_open_ |= opened;
    return opened;
}

void Session::close() { port.close(); }

void Session::drop_counts() { port.drop(); }

void Session::flush()
{
    drop_counts();
    if (port.is_open()) {
        port.take();
    } else if (open()) {
        port.take();
        if (!line.is_one_speed())
            port.close();
    }
    rx.count = 0;
    rx.reply_ok = false;
    rx.hdr_46_seen = false;
}

int Session::on_wire_ms(std::size_t bytes) const
{
    const auto bits = static_cast<std::int64_t>(bytes) * bits_per_byte(port.line());
    return static_cast<int>((bits * 1000 + port.line().baud - 1) / port.line().baud);
}

int Session::leaving_ms(std::size_t bytes) const { return on_wire_ms(bytes) + leaving_margin_ms; }

int Session::exchange_ms(std::size_t bytes) const
{
    return std::max(on_wire_ms(bytes + acknowledgement_size), least_silence_ms);
}

void Session::send(std::span<const std::uint8_t> bytes)
{
    port.send(bytes);
    if (port.queued() > 0)
        loop.run_due();
    wait(after_sending_ms);
}

bool Session::make_way(std::size_t frame_size, bool again)
{
    const std::size_t longest = std::max(frame_size, std::exchange(last_size_, frame_size));
    if (again || sent_again_) {
        // A late answer can come while the repeat of its frame is still on its way: that goes out first.
        wait_ms(loop, static_cast<int>(std::max<std::int64_t>(sent_until_us_ - loop.now_us() + 999, 0) / 1000));
        if (!falls_silent(exchange_ms(longest)))
            return false;
    }
    sent_again_ = again;
    sent_until_us_ = loop.now_us() + std::int64_t{on_wire_ms(frame_size)} * 1000;
    return true;
}

bool Session::falls_silent(int quiet_ms)
{
    const Deadline patience(loop, silence_patience_ms);
    do {
        port.take();
        rx.heard = false;
        const Deadline quiet(loop, quiet_ms);
        while (!rx.heard && !quiet.passed() && !patience.passed() && !is_over())
            loop.yield();
    } while (rx.heard && !patience.passed() && !is_over());
    return !rx.heard && !patience.passed() && !is_over();
}

bool Session::expect_reply(std::size_t frame_size, bool again)
{
    if (!make_way(frame_size, again))
        return false;
    forget_reply();
    rx.accept_frames = true;
    wait(settling_ms);
    forget_reply(); // one that came only now is the last one's
    return true;
}

void Session::forget_reply()
{
    rx.count = 0;
    rx.reply_ok = false;
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
    while (!is_over() && !rx.reply_ok && !end.passed())
        loop.yield();
    return rx.reply_ok;
}

bool Session::wait_demo_reply(int ms)
{
    const Deadline end(loop, ms);
    while (!is_over() && !rx.demo_reply_ok && !end.passed())
        loop.yield();
    return rx.demo_reply_ok;
}

bool Session::wait_answer(const Deadline& end)
{
    while (!rx.reply_bad && !rx.reply_ok && !is_over() && !end.passed())
        loop.yield();
    rx.reply_timeout = end.passed();
    return rx.reply_ok;
}

bool Session::pause(int ms)
{
    const Deadline end(loop, ms);
    while (!is_over() && !end.passed())
        loop.yield();
    return !is_over();
}

void Session::send_model_command(std::uint8_t code, std::uint8_t parameter)
{
    flush();
    rx.reply_timeout = false;
    rx.reply_bad = false;
    send(build_model_frame(code, parameter, model(), reported_id(), check()));
}

bool Session::ask_model(std::uint8_t code, int timeout_ms, std::uint8_t parameter, bool again)
{
    if (!make_way(model_frame_size, again))
        return false;
    const Deadline end(loop, timeout_ms);
    send_model_command(code, parameter);
    return wait_answer(end);
}

std::span<const std::uint8_t> Session::frame() const
{
    return std::span{rx.buffer}.first(static_cast<std::size_t>(rx.count));
}

std::span<const std::uint8_t> Session::fields() const
{
    const std::size_t tail = check() == Check::sum8 ? 2 : 3;
    const std::size_t length = std::min<std::size_t>(rx.length(), frame().size());
    return frame().first(length < tail ? 0 : length - tail);
}

} // namespace vrk
