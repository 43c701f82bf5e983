// What one page of scrolling costs in the window: from the turn of the bar to the picture, on Qt's screen in memory.
// Beside it a bare pane that is given a text of the same size and paints it.
#include "bench/figures.h"
#include "bench/qt_bench.h"

#include "shell/buffer_view.h"
#include "shell/events.h"
#include "window/dump_view.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFontDatabase>

namespace {

constexpr int pages = 200;
constexpr std::int32_t last_address = 0xFFFF;
const QSize size{700, 720}; // of a tall window, with room for the characters

struct NoPorts final : vrk::PortDriver {
    std::vector<vrk::PortInfo> list() override { return {}; }
    std::unique_ptr<vrk::SerialPort> make(const std::string&) override { return nullptr; }
};

template <typename Act> double ms_per_page(Act act)
{
    QElapsedTimer clock;
    clock.start();
    for (int page = 0; page < pages; ++page)
        act(page);
    return static_cast<double>(clock.nsecsElapsed()) / 1e6 / pages;
}

double page_of_the_dump(bench::QtBench& bench, vrk::Binder& binder)
{
    vrk::Shell& shell = bench.shell;
    vrk::ScrollBar& bar = bench.form.scroll_bar("vscFile", 0);
    return ms_per_page([&](int page) {
        vrk::scroll_to(shell, bar, page * 16 % bar.max());
        binder.refresh();
        QApplication::processEvents(); // paints what has changed
    });
}

double page_of_a_bare_pane(const QString& text)
{
    QPlainTextEdit pane;
    pane.setLineWrapMode(QPlainTextEdit::NoWrap);
    pane.setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    pane.resize(size);
    pane.show();
    QApplication::processEvents();
    QString digits = text;
    return ms_per_page([&](int page) {
        digits[9] = QChar('0' + page % 10);
        pane.setPlainText(digits);
        QApplication::processEvents();
    });
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    NoPorts ports;
    bench::QtBench bench{ports, "Juniper-60Q"};
    bench.shell.code_buffer.view_high = last_address;
    vrk::update_view(bench.shell, bench.shell.code_buffer);
    vrk::Binder binder(bench.shell);
    vrk::DumpView view(binder, 0);
    view.resize(size);
    view.show();
    QApplication::processEvents();

    std::vector<double> ours;
    std::vector<double> bare;
    for (int run = 0; run < bench::runs; ++run) {
        bare.push_back(page_of_a_bare_pane(vrk::to_qt(bench.form.text_box("txtBuffer2").text()).remove('\r')));
        ours.push_back(page_of_the_dump(bench, binder));
    }
    bench::print({"one page of the dump on the screen", bench::median(ours), "ms", "a bare pane of that text",
        bench::median(bare), "1.3x at most"});
}
