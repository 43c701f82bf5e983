#include "window/main_window.h"

#include "form/main_form.h"

#include "shell/about.h"
#include "shell/events.h"
#include "shell/messages.h"
#include "shell/open_path.h"
#include "shell/settings.h"
#include "shell/start_up.h"
#include "shell/window_words.h"
#include "window/both_languages.h"
#include "window/colors.h"
#include "window/debug_pages.h"
#include "window/dump_view.h"
#include "window/icon.h"
#include "window/keys.h"
#include "window/menu.h"
#include "window/page_stack.h"
#include "window/production_pages.h"
#include "window/project_page.h"
#include "window/spoken_names.h"
#include "window/tool_pages.h"
#include "window/verdict_field.h"

#include <QApplication>
#include <QCloseEvent>
#include <QGridLayout>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QScreen>
#include <QSplitter>
#include <QTimer>
#include <QUrl>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

namespace vrk {

namespace {

constexpr int strip_spacing = 2;
constexpr int margin = 5; // 1024 by 768 pixels are to be enough for both halves
constexpr int least_report_lines = 5;
constexpr QSize frame_about_it(16, 44); // of a window manager, which makes it after the window has its size
constexpr auto close_question = "closeQuestion";

QLabel* right_aligned(QLabel* label, int characters)
{
    label->setMinimumWidth(characters * label->fontMetrics().averageCharWidth());
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    return label;
}

// A place that no screen shows, or only a corner of it, is one that no hand can reach: the second screen is gone, or
// the store holds nonsense. The nearest place that is whole on a screen takes its place.
QPoint brought_onto_a_screen(const QRect& place)
{
    constexpr int grip = 60; // so much of the window's head has to be in reach
    const QRect head(place.topLeft(), QSize(place.width(), grip));
    for (const QScreen* screen : QGuiApplication::screens()) {
        const QRect seen = head.intersected(screen->availableGeometry());
        if (seen.width() >= grip && seen.top() == head.top())
            return place.topLeft();
    }
    const QScreen* nearest = QGuiApplication::screenAt(place.center());
    const QRect area = (nearest != nullptr ? nearest : QGuiApplication::primaryScreen())->availableGeometry();
    return {std::clamp(place.left(), area.left(), std::max(area.left(), area.right() + 1 - place.width())),
        std::clamp(place.top(), area.top(), std::max(area.top(), area.bottom() + 1 - place.height()))};
}

// Where the window is narrow this part scrolls: its lines of text are the longest of its half.
QWidget* in_width_of_its_own(QWidget* contents)
{
    auto* area = new PageArea(contents, {100, 4}, {40, 3});
    area->setMinimumHeight(contents->sizeHint().height());
    area->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    return area;
}

// Empty: none, or more than one.
std::string one_file_of(const QMimeData& dragged)
{
    const QList<QUrl> urls = dragged.urls();
    return urls.size() == 1 ? from_qt(urls.front().toLocalFile()) : std::string{};
}

} // namespace

MainWindow::MainWindow(Shell& shell)
    : shell_(shell)
    , binder_(shell)
    , option_panel_(binder_)
{
    setPalette(readable_when_disabled(palette()));
    setWindowIcon(program_icon());
    auto* halves = new QSplitter(Qt::Horizontal);
    halves->setChildrenCollapsible(false);
    setCentralWidget(halves);
    halves->addWidget(make_left());
    halves->addWidget(make_right());
    make_menus(*menuBar(), shell_);
    halves->setStretchFactor(0, 3);
    halves->setStretchFactor(1, 4);
    for (const QGroupBox* frame : findChildren<QGroupBox*>())
        frame->layout()->setContentsMargins(2 * margin, margin, 2 * margin, margin);
    const Frame* const fixed[] = {
        &shell_.form.FrameX[0], &shell_.form.FrameX[1], &shell_.form.FrameX[2], &shell_.form.FrameX[4]};
    for (const Frame* frame : fixed)
        keep_room_for_both(shell_, *findChild<QWidget*>(to_qt(frame->full_name())));
    tie_keys(*this);
    give_spoken_names(binder_, *this);
    take_stored_place();
    follow_title();
    binder_.follow(shell_.form.comMastWindow, [this] { show_shrunk(); });
    shell_.on_unload = [this] { close(); };
    setAcceptDrops(true);
}

// Where it stood when it was last used, as far as that can be reached. No larger than the screens together, whatever is
// stored. The first time it comes up as large as its contents like it and in the middle of the
// screen, as far as that goes.
void MainWindow::take_stored_place()
{
    const WindowPlace& place = shell_.form.window;
    const bool never_sized = place.width == WindowPlace::standard_width && place.height == WindowPlace::standard_height;
    const QSize stored(pixels(place.width), pixels(place.height));
    if (never_sized) {
        const QRect area = screen()->availableGeometry();
        resize(sizeHint().boundedTo(area.size() - frame_about_it));
        const QSize left = area.size() - frame_about_it - size();
        move(area.topLeft() + QPoint(left.width(), left.height()) / 2);
        return;
    }
    resize(stored.boundedTo(screen()->virtualSize()));
    move(brought_onto_a_screen(QRect(QPoint(pixels(place.left), pixels(place.top)), size())));
}

// The title names what the window works on: whatever changes that is followed.
void MainWindow::follow_title()
{
    const MainForm& form = shell_.form;
    const Control* const named[] = {&form.Frame7, &form.txtDevice, &form.combCommPort, &form.txtBuffer2};
    for (const Control* control : named)
        binder_.follow(*control, [this] { setWindowTitle(to_qt(window_title(shell_))); });
}

// Without its right half the window is as narrow as the download group lets it be; then it has its stored size again.
void MainWindow::show_shrunk()
{
    if (narrow_ == shell_.shrunk)
        return;
    if (shell_.shrunk)
        store_place();
    narrow_ = true; // until it is whole again
    static_cast<QSplitter*>(centralWidget())->widget(1)->setHidden(shell_.shrunk);
    QTimer::singleShot(0, this, [this] { // when all that goes or comes back has been shown
        QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
        resize(shell_.shrunk ? minimumSizeHint().width() : pixels(shell_.form.window.width), height());
        narrow_ = shell_.shrunk;
    });
}

void MainWindow::note_place()
{
    if (isVisible() && !narrow_) // what is stored is the place of the whole window
        store_place();
}

void MainWindow::store_place()
{
    shell_.form.window.left = units(x());
    shell_.form.window.top = units(y());
    shell_.form.window.width = units(width());
    shell_.form.window.height = units(height());
}

void MainWindow::moveEvent(QMoveEvent* event)
{
    QMainWindow::moveEvent(event);
    note_place();
}

void MainWindow::resizeEvent(QResizeEvent* event)
{
    QMainWindow::resizeEvent(event);
    note_place();
    arm_save(shell_); // one save for the whole pull at the frame
}

void MainWindow::add_panel(QWidget* panel)
{
    auto* halves = static_cast<QSplitter*>(centralWidget());
    halves->addWidget(panel);
    halves->setStretchFactor(halves->count() - 1, 0);
    halves->setSizes({halves->widget(0)->sizeHint().width(), halves->widget(1)->sizeHint().width(), 0}); // 0: its least
}

QWidget* MainWindow::make_left()
{
    auto* left = new QWidget;
    auto* layout = new QVBoxLayout(left);
    layout->setContentsMargins(margin, margin, margin, margin);
    layout->setSpacing(6);
    layout->addWidget(make_model_step());
    layout->addWidget(make_file_step());
    layout->addWidget(make_line_step());
    layout->addWidget(make_option_step());
    layout->addWidget(make_download_step(), 1);
    return left;
}

QWidget* MainWindow::make_model_step()
{
    QGroupBox* frame = binder_.frame(shell_.form.FrameX[0]);
    device_box_ = std::make_unique<DeviceBox>(binder_, this);
    auto* layout = new QHBoxLayout(frame);
    layout->addWidget(binder_.label(shell_.form.Label2[0]));
    layout->addWidget(device_box_->box(), 1);
    layout->addWidget(device_box_->arrow());
    layout->addSpacing(12);
    layout->addWidget(binder_.label(shell_.form.Label2[1]));
    layout->addWidget(binder_.label(shell_.form.LabISP_reange[0]));
    layout->addWidget(binder_.label(shell_.form.Label2[2]));
    layout->addWidget(binder_.label(shell_.form.LabISP_reange[1]));
    return frame;
}

QWidget* MainWindow::make_file_step()
{
    QGroupBox* frame = binder_.frame(shell_.form.FrameX[1]);
    auto* grid = new QGridLayout(frame);
    QLineEdit* code_start = binder_.number(shell_.form.txtAP_FileStart, NumberField::hexadecimal);
    QLineEdit* data_start = binder_.number(shell_.form.txtDataFileStart, NumberField::hexadecimal);
    for (QLineEdit* start : {code_start, data_start}) {
        start->setMaxLength(4);
        start->setFixedWidth(8 * start->fontMetrics().averageCharWidth());
    }
    grid->addWidget(binder_.label(shell_.form.Label2[3]), 0, 0);
    grid->addWidget(code_start, 0, 1);
    grid->addWidget(binder_.check(shell_.form.cheClearAP_Buffer), 0, 2);
    grid->addWidget(binder_.button(shell_.form.comLoadFile), 0, 3);
    grid->addWidget(binder_.label(shell_.form.Label2[4]), 1, 0);
    grid->addWidget(data_start, 1, 1);
    grid->addWidget(binder_.check(shell_.form.cheClearDataBuffer), 1, 2);
    grid->addWidget(binder_.button(shell_.form.comLoadDataFile), 1, 3);
    grid->setColumnStretch(2, 1);
    return frame;
}

QWidget* MainWindow::make_line_step()
{
    QGroupBox* frame = binder_.frame(shell_.form.FrameX[2]);
    auto* grid = new QGridLayout(frame);
    grid->addWidget(binder_.label(shell_.form.Label2[5]), 0, 0);
    grid->addWidget(binder_.list(shell_.form.combCommPort), 0, 1, 1, 2);
    QLabel* open = binder_.lamp(shell_.form.imgOpen_sys, "\u25CF", "#2e9e44");
    QLabel* closed = binder_.lamp(shell_.form.imgNotOpen_sys, "\u25CB", "#808080");
    QHBoxLayout* beside = row_of({open, closed, binder_.button(shell_.form.comOtherPort)});
    beside->addStretch(1);
    grid->addLayout(beside, 0, 3, 1, 2);
    grid->addWidget(binder_.label(shell_.form.LabMaxBaud), 1, 0);
    grid->addWidget(binder_.list(shell_.form.cobBaudMax), 1, 1);
    grid->addWidget(binder_.label(shell_.form.Label4), 1, 2);
    grid->addWidget(binder_.list(shell_.form.cobBaudMin), 1, 3);
    grid->addWidget(binder_.check(shell_.form.cheTL), 1, 4);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);
    return frame;
}

QWidget* MainWindow::make_option_step()
{
    QGroupBox* frame = binder_.frame(shell_.form.FrameX[3]);
    auto* strips = new QWidget;
    auto* stack = new QVBoxLayout(strips);
    stack->setContentsMargins(0, 0, 0, 0);
    stack->setSpacing(strip_spacing);
    option_panel_.fill_upper(stack);
    stack->addStretch(1);
    auto* layout = new QVBoxLayout(frame);
    layout->addWidget(new PageArea(strips, {134, 7}, {40, 3}));
    return frame;
}

QWidget* MainWindow::make_download_step()
{
    QGroupBox* frame = binder_.frame(shell_.form.FrameX[4]);
    auto* layout = new QVBoxLayout(frame);
    QPushButton* download = binder_.button(shell_.form.comDownload[0]);
    QFont bold = download->font();
    bold.setBold(true);
    download->setFont(bold);
    layout->addLayout(
        row_of({download, binder_.button(shell_.form.comStop_Download), binder_.button(shell_.form.comDownload[1])}));

    layout->addWidget(new VerdictField(binder_));

    auto* progress = new QHBoxLayout;
    progress->addWidget(binder_.progress(shell_.form.ProgressBar1), 1);
    progress->addWidget(right_aligned(binder_.label(shell_.form.labTimeLeft), 12));
    progress->addWidget(right_aligned(binder_.label(shell_.form.labKbyte), 10));
    layout->addLayout(progress);

    QPlainTextEdit* report = binder_.report(shell_.form.textMsg);
    report->setMinimumHeight(least_report_lines * QFontMetrics(report->font()).lineSpacing());
    layout->addWidget(report, 1);
    binder_.set_resting_place(report);

    auto* counter = row_of({binder_.label(shell_.form.labWrite_OK_Count), counter_of(shell_.form.txtWrite_OK_Count),
        binder_.label(shell_.form.labWrite_Bad_Count), counter_of(shell_.form.txtWrite_Bad_Count),
        binder_.button(shell_.form.comClear_OK_Count)});
    counter->addStretch(1);
    counter->addWidget(binder_.button(shell_.form.comMastWindow));
    layout->addLayout(counter);
    return frame;
}

QLineEdit* MainWindow::counter_of(TextBox& control)
{
    QLineEdit* count = binder_.line(control);
    count->setReadOnly(true);
    count->setMaximumWidth(10 * count->fontMetrics().averageCharWidth());
    return count;
}

QWidget* MainWindow::make_right()
{
    auto* parts = new QSplitter(Qt::Vertical);
    parts->setChildrenCollapsible(false);
    parts->addWidget(make_buffers());
    parts->addWidget(make_tools());
    parts->setStretchFactor(0, 1);
    parts->setStretchFactor(1, 0);
    parts->setCollapsible(1, true); // who works with the terminal alone pulls the tools away
    return parts;
}

QWidget* MainWindow::make_buffers()
{
    auto* part = new QWidget;
    auto* layout = new QVBoxLayout(part);
    layout->setContentsMargins(margin, margin, margin, margin);
    layout->addWidget(binder_.tabs(shell_.form.TabStrip2));
    auto* pages = new PageStack({134, 14}, {40, 7});
    for (QWidget* page : {make_buffer_page(0), make_buffer_page(1), make_terminal_page(binder_),
             make_registers_page(binder_), make_memory_page(binder_), make_project_page(binder_)})
        pages->add(page);
    layout->addWidget(pages, 1);
    layout->addWidget(make_edit_hint(binder_));
    // Model and files decide what a download writes.
    const Control* const deciding[] = {&shell_.form.txtDevice, &shell_.form.Label7[1], &shell_.form.Label7[2]};
    for (const Control* control : deciding) {
        binder_.follow(*control, [this] {
            for (DumpView* dump : dumps_)
                dump->show_marks();
        });
    }
    return part;
}

QWidget* MainWindow::make_tools()
{
    auto* part = new QWidget;
    auto* layout = new QVBoxLayout(part);
    layout->setContentsMargins(margin, margin, margin, margin);
    layout->addWidget(binder_.tabs(shell_.form.TabStrip1));
    auto* pages = new PageStack({134, 11}, {40, 4});
    for (QWidget* page : {make_option_page(), make_user_command_page(binder_), make_board_page(binder_),
             make_check_page(), make_increase_page(binder_), make_demo_page(binder_), make_store_page(binder_),
             make_hardware_page(binder_)})
        pages->add(page);
    layout->addWidget(pages, 1);
    layout->addWidget(in_width_of_its_own(make_beeps()));
    return part;
}

QWidget* MainWindow::make_option_page()
{
    QLabel* caption = nullptr;
    QWidget* page = binder_.page(shell_.form.Frame12, caption);
    QVBoxLayout* stack = stack_on(page, caption);
    stack->setSpacing(strip_spacing);
    option_panel_.fill_lower(stack);
    stack->addStretch(1);
    return page;
}

QWidget* MainWindow::make_check_page()
{
    QWidget* page = binder_.page(shell_.form.Frame4);
    auto* stack = new QVBoxLayout(page);
    stack->setContentsMargins(0, 0, 0, 0);
    stack->setSpacing(strip_spacing);
    auto* head = row_of({binder_.label(shell_.form.LabLock[0]), binder_.button(shell_.form.comReadChipLock)});
    head->insertStretch(1, 1);
    stack->addLayout(head);
    for (std::size_t line = 1; line < std::size(shell_.form.LabLock); ++line)
        stack->addWidget(binder_.label(shell_.form.LabLock[line]));
    return page;
}

QWidget* MainWindow::make_beeps()
{
    QGroupBox* beeps = binder_.frame(shell_.form.Frame16);
    auto* grid = new QGridLayout(beeps);
    auto* delay = row_of({binder_.label(shell_.form.Label10[0]), binder_.option(shell_.form.optBeepYes),
        binder_.option(shell_.form.optBeepNo), binder_.label(shell_.form.Label10[1]),
        binder_.list(shell_.form.comDalay_ReDownLoad), binder_.label(shell_.form.Label10[2])});
    delay->insertSpacing(3, 12);
    delay->addStretch(1);
    grid->addLayout(delay, 0, 0);
    grid->addWidget(binder_.check(shell_.form.cekReloadFile), 1, 0);
    grid->addWidget(binder_.check(shell_.form.cekReloadFileWhileFileChange), 2, 0);
    keep_room_for_both(shell_, *beeps);
    return beeps;
}

QWidget* MainWindow::make_buffer_page(int index)
{
    const bool code = index == 0;
    QLabel* caption = nullptr;
    QWidget* page = binder_.page(code ? shell_.form.Frame7 : shell_.form.frmDataFlash, caption);
    QVBoxLayout* layout = stack_on(page, caption);
    dumps_.push_back(new DumpView(binder_, index));
    layout->addWidget(dumps_.back(), 1);
    layout->addWidget(make_search_row(binder_, index));

    QLineEdit* checksum = binder_.line(code ? shell_.form.txtFileCheckSum : shell_.form.txtDataFileCheckSum);
    checksum->setReadOnly(true);
    checksum->setMaximumWidth(18 * checksum->fontMetrics().averageCharWidth());
    auto* foot = row_of({binder_.label(shell_.form.LabFileCheckSum[index]), checksum});
    foot->addWidget(binder_.label(shell_.form.labEditedCheckSum[index]));
    foot->addSpacing(12);
    foot->addWidget(binder_.label(shell_.form.Label7[index + 1]));
    foot->addStretch(1);
    layout->addLayout(foot);
    return page;
}

// The first request stops what runs, and asks before; the window goes when that has wound down.
void MainWindow::closeEvent(QCloseEvent* event)
{
    if (shell_.unloaded) {
        event->accept();
        return;
    }
    event->ignore();
    if (shell_.closing)
        return;
    if (shell_.running)
        ask_before_closing();
    else
        close_request(shell_);
}

// A box may also come up while a sequence winds down; under it that would never end.
void MainWindow::leave()
{
    if (!shell_.closing)
        close_request(shell_);
    constexpr int glance_ms = 50;
    auto* boxes = new QTimer(this);
    connect(boxes, &QTimer::timeout, this, [] {
        if (QWidget* box = QApplication::activeModalWidget())
            box->close();
    });
    boxes->start(glance_ms);
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event)
{
    if (may_drop(shell_, one_file_of(*event->mimeData())) == Touch::taken)
        event->acceptProposedAction();
}

// Behind the drop: a box that asks something must not hold up the program that the file comes from.
void MainWindow::dropEvent(QDropEvent* event)
{
    event->acceptProposedAction();
    QTimer::singleShot(0, this, [this, path = one_file_of(*event->mimeData())] { drop_file(shell_, path); });
}

// The box lets the sequence go on underneath: a chip that is being written does not wait for an answer.
void MainWindow::ask_before_closing()
{
    if (findChild<QMessageBox*>(close_question) != nullptr)
        return;
    auto* box = new QMessageBox(QMessageBox::Question, to_qt(program_name), to_qt(in_language(shell_, stop_and_close)),
        QMessageBox::Yes | QMessageBox::No, this);
    box->setObjectName(close_question);
    box->setDefaultButton(QMessageBox::No);
    box->setAttribute(Qt::WA_DeleteOnClose);
    connect(box, &QMessageBox::finished, this, [this](int button) {
        if (button == QMessageBox::Yes && !shell_.closing)
            close_request(shell_);
    });
    box->open();
}

} // namespace vrk
