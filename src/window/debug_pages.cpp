#include "window/debug_pages.h"

#include "form/main_form.h"
#include "shell/arm_save.h"
#include "shell/events.h"
#include "window/paced.h"
#include "window/terminal_view.h"

#include <QFontDatabase>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QListWidget>
#include <QScrollArea>
#include <QSplitter>
#include <QVBoxLayout>

#include <memory>

namespace vrk {

namespace {

constexpr int gap = 4;
constexpr int as_wide_as_can_be = 10000;

QLineEdit* short_line(Binder& binder, TextBox& control)
{
    QLineEdit* line = binder.number(control, NumberField::whole);
    line->setFixedWidth(9 * line->fontMetrics().averageCharWidth());
    return line;
}

// It changes with every piece that comes in.
QLabel* counter(Binder& binder, Label& control)
{
    auto* label = new QLabel;
    const auto picture = std::make_shared<Paced>([&control, label] { label->setText(to_qt(control.caption())); });
    binder.bind(control, label, [picture] { picture->changed(); });
    return label;
}

QWidget* make_line_settings(Binder& binder)
{
    MainForm& form = binder.shell().form;
    auto* settings = new QWidget;
    auto* grid = new QGridLayout(settings);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(gap / 2); // seven columns on a small screen
    const auto put = [&](int row, int column, Label& label, ComboBox& list) {
        grid->addWidget(binder.label(label), row, column);
        grid->addWidget(binder.list(list), row, column + 1);
    };
    put(0, 0, form.LabDebug[0], form.com_Debug_COM);
    put(0, 2, form.LabDebug[1], form.com_Debug_Baud);
    put(0, 4, form.LabDebug[3], form.com_Debug_ParityCheck);
    put(1, 0, form.LabDebug[2], form.com_Debug_DataBits);
    put(1, 2, form.LabDebug[4], form.com_Debug_StopBits);
    put(1, 4, form.LabDebug[5], form.combDebugCodePage);
    grid->addWidget(binder.button(form.comOpenCOM[0]), 0, 6, Qt::AlignLeft);
    grid->addWidget(binder.button(form.comDebugHelp[0]), 1, 6, Qt::AlignLeft);
    auto* lines = row_of({binder.lamp(form.imgOpen, "\u25CF", "#2e9e44"),
        binder.lamp(form.imgNotOpen, "\u25CB", "#808080"), binder.label(form.labDebugPort),
        binder.check(form.che_DebugDTR), binder.check(form.che_DebugRTS), binder.label(form.labDebugLines)});
    lines->insertSpacing(2, gap);
    lines->insertSpacing(4, gap);
    lines->addStretch(1);
    grid->addLayout(lines, 2, 0, 1, 7);
    grid->setColumnStretch(6, 1);
    return settings;
}

QHBoxLayout* make_search(Binder& binder)
{
    MainForm& form = binder.shell().form;
    QLineEdit* text = binder.line(form.texDebugFind);
    QPushButton* next = binder.button(form.comDebugFind);
    QObject::connect(text, &QLineEdit::returnPressed, text,
        [&binder, &form] { press_key(binder.shell(), form.texDebugFind, "Enter"); });
    QLabel* missed = binder.label(form.labDebugFound);
    missed->setFixedWidth(2 * missed->fontMetrics().averageCharWidth());
    return row_of({text, missed, next});
}

QWidget* make_conversation(Binder& binder)
{
    MainForm& form = binder.shell().form;
    auto* pane = new QWidget;
    auto* layout = new QVBoxLayout(pane);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(gap);
    layout->addWidget(new TerminalView(binder, form.texReceive), 1);
    QHBoxLayout* search = make_search(binder);
    search->addWidget(
        binder.check(form.che_DebugTime)); // beside the choice of text and HEX there is no room on a small screen
    layout->addLayout(search);
    auto* shown = row_of({binder.option(form.optReceiveHex[0]), binder.option(form.optReceiveHex[1])});
    shown->addStretch(1);
    layout->addLayout(shown);
    auto* counts = row_of({counter(binder, form.labReceiveCount), counter(binder, form.labSendCount)});
    counts->insertSpacing(1, 3 * gap);
    counts->addStretch(1);
    counts->addWidget(binder.button(form.comDebugClear[0]));
    layout->addLayout(counts);
    auto* log = row_of({binder.option(form.optDebugLog[0]), binder.option(form.optDebugLog[1])});
    log->addStretch(1);
    log->addWidget(binder.button(form.comDebugLog));
    layout->addLayout(log);
    auto* chip = row_of({binder.check(form.che_AutoOpenPort), binder.button(form.comComp)});
    chip->insertStretch(1, 1);
    layout->addLayout(chip);
    layout->addLayout(row_of({binder.line(form.texSend), binder.button(form.comDebugSend)}));
    auto* forms = row_of({binder.option(form.optHexSend[0]), binder.option(form.optHexSend[1])});
    forms->addStretch(1);
    layout->addLayout(forms);
    auto* cycle = row_of(
        {binder.label(form.LabDebug[6]), short_line(binder, form.texSendCycle), binder.button(form.comAutoSend)});
    cycle->addStretch(1);
    layout->addLayout(cycle);
    return pane;
}

QWidget* make_strings(Binder& binder)
{
    MainForm& form = binder.shell().form;
    QGroupBox* frame = binder.frame(form.Frame24);
    auto* layout = new QVBoxLayout(frame);
    layout->setContentsMargins(gap, gap, gap, gap);
    auto* rows = new QWidget;
    auto* grid = new QGridLayout(rows);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(2);
    for (int row = 0; row < static_cast<int>(std::size(form.texSpreadSend)); ++row) {
        grid->addWidget(binder.check(form.cheSpreadHex[row]), row, 0);
        grid->addWidget(binder.line(form.texSpreadSend[row]), row, 1);
        QPushButton* send = binder.button(form.comSpreadSendCom[row]);
        send->setFixedWidth(5 * send->fontMetrics().averageCharWidth());
        grid->addWidget(send, row, 2);
    }
    auto* scrolled = new QScrollArea;
    scrolled->setFocusPolicy(Qt::NoFocus); // each of its rows is gone to
    scrolled->setWidget(rows);
    scrolled->setWidgetResizable(true);
    scrolled->setFrameShape(QFrame::NoFrame);
    scrolled->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    layout->addWidget(scrolled, 1);
    auto* pause = row_of({binder.label(form.LabDebug[7]), short_line(binder, form.texSpreadSendCycle)});
    pause->addStretch(1);
    layout->addLayout(pause);
    layout->addWidget(binder.button(form.comSpreadAutoSend));
    return frame;
}

void show_lines(QListWidget& list, const ListBox& control)
{
    const int count = static_cast<int>(control.items().size());
    while (list.count() > count)
        delete list.takeItem(list.count() - 1);
    while (list.count() < count)
        list.addItem(QString{});
    for (int i = 0; i < count; ++i) {
        const auto line = static_cast<std::size_t>(i);
        QListWidgetItem* item = list.item(i);
        item->setText(to_qt(control.items()[line]));
        QFont font = list.font();
        font.setBold(line < control.stands_out().size() && control.stands_out()[line]);
        item->setFont(font);
        item->setForeground(font.bold() ? list.palette().link() : list.palette().text());
    }
}

QListWidget* make_list(Binder& binder, ListBox& control)
{
    auto* list = new QListWidget;
    list->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    list->setUniformItemSizes(true);
    list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    binder.bind(control, list, [&control, list] { show_lines(*list, control); });
    return list;
}

QVBoxLayout* titled_list(Binder& binder, Label& title, Label* head, ListBox& control)
{
    auto* column = new QVBoxLayout;
    column->setSpacing(2);
    column->addWidget(binder.label(title));
    if (head != nullptr) {
        QLabel* columns = binder.label(*head);
        columns->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
        columns->setContentsMargins(gap, 0, 0, 0); // where the list's lines begin
        column->addWidget(columns);
    }
    column->addWidget(make_list(binder, control), 1);
    return column;
}

// Two lists side by side, what else the page has, and its row of the buttons that the pages of the line share.
QWidget* make_monitor_page(
    Binder& binder, Frame& frame, int row, std::initializer_list<QVBoxLayout*> lists, QWidget* below = nullptr)
{
    MainForm& form = binder.shell().form;
    QWidget* page = binder.page(frame);
    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* columns = new QHBoxLayout;
    for (QVBoxLayout* list : lists)
        columns->addLayout(list);
    layout->addLayout(columns, 1);
    if (below != nullptr)
        layout->addWidget(below);
    auto* buttons = row_of({binder.button(form.comOpenCOM[row]), binder.button(form.comDebugContinue[row]),
        binder.button(form.comDebugClear[row]), binder.button(form.comDebugHelp[row])});
    buttons->addStretch(1);
    layout->addLayout(buttons);
    return page;
}

} // namespace

QWidget* make_terminal_page(Binder& binder)
{
    MainForm& form = binder.shell().form;
    QWidget* page = binder.page(form.fraDebug);
    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(gap);
    layout->addWidget(make_line_settings(binder));
    auto* panes = new QSplitter;
    panes->setChildrenCollapsible(false);
    panes->addWidget(make_conversation(binder));
    panes->addWidget(make_strings(binder));
    panes->setStretchFactor(0, 1);
    panes->setStretchFactor(1, 0);
    WindowPlace& place = form.window;
    panes->setSizes({as_wide_as_can_be, pixels(place.frame24_width)});
    QObject::connect(panes, &QSplitter::splitterMoved, panes, [&binder, &place, panes] {
        place.frame24_width = units(panes->sizes().at(1));
        arm_save(binder.shell()); // one save for the whole pull
    });
    layout->addWidget(panes, 1);
    return page;
}

QWidget* make_registers_page(Binder& binder)
{
    MainForm& form = binder.shell().form;
    return make_monitor_page(binder, form.Frame21, 1,
        {titled_list(binder, form.Label23[0], nullptr, form.lst_debug1),
            titled_list(binder, form.Label23[1], &form.Label24, form.lst_debug2)},
        binder.check(form.che_disable_Debug_SFR_232));
}

QWidget* make_memory_page(Binder& binder)
{
    MainForm& form = binder.shell().form;
    return make_monitor_page(binder, form.Frame22, 2,
        {titled_list(binder, form.Label23[2], &form.Label26, form.lst_debug3),
            titled_list(binder, form.Label23[3], &form.Label27, form.lst_debug4)});
}

} // namespace vrk
