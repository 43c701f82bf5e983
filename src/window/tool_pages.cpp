#include "window/tool_pages.h"

#include "form/main_form.h"
#include "window/lamp_table.h"

#include <QGridLayout>
#include <QScrollArea>
#include <QVBoxLayout>

namespace vrk {

namespace {

// Four lists that make up a line, each behind its label.
struct LineLists {
    ComboBox& baud;
    ComboBox& parity;
    ComboBox& data_bits;
    ComboBox& stop_bits;
};

QHBoxLayout* make_line(Binder& binder, Label* labels, const LineLists& lists)
{
    auto* row = new QHBoxLayout;
    row->setSpacing(4);
    for (ComboBox* list : {&lists.baud, &lists.parity, &lists.data_bits, &lists.stop_bits}) {
        row->addWidget(binder.label(*labels++));
        row->addWidget(binder.list(*list));
    }
    row->addStretch(1);
    return row;
}

} // namespace

QWidget* make_user_command_page(Binder& binder)
{
    MainForm& form = binder.shell().form;
    QLabel* caption = nullptr;
    QWidget* page = binder.page(form.Frame8, caption);
    QVBoxLayout* stack = stack_on(page, caption);
    stack->addLayout(row_of({binder.label(form.LabUserCode[0]), binder.line(form.txtUserCode)}));
    stack->addLayout(make_line(binder, form.LabUserCode + 1,
        {form.cobUserCodeBaud, form.cobUserCodeParity, form.cobUserCodeDataBits, form.cobUserCodeStopBits}));
    stack->addWidget(binder.check(form.cekReloadFileWhileFileChange1));
    QHBoxLayout* buttons =
        row_of({binder.button(form.comSendUserCode), binder.button(form.comHelp[0]), binder.button(form.comHelp[1])});
    buttons->addStretch(1);
    stack->addLayout(buttons);
    stack->addStretch(1);
    return page;
}

QWidget* make_board_page(Binder& binder)
{
    MainForm& form = binder.shell().form;
    QLabel* caption = nullptr;
    QWidget* page = binder.page(form.Frame18, caption);
    QVBoxLayout* stack = stack_on(page, caption);
    auto* sides = new QHBoxLayout;
    stack->addLayout(sides, 1);
    auto* controls = new QVBoxLayout;
    QLineEdit* quantity = binder.number(form.txt_download_max, NumberField::whole);
    quantity->setFixedWidth(9 * quantity->fontMetrics().averageCharWidth());
    QHBoxLayout* most = row_of({binder.label(form.labTJXZ[0]), quantity, binder.label(form.labTJXZ[1])});
    most->addStretch(1);
    controls->addLayout(most);
    QHBoxLayout* buttons =
        row_of({binder.button(form.comTJXZ), binder.button(form.Read24C512), binder.button(form.com_TJXZ_help)});
    buttons->addStretch(1);
    controls->addLayout(buttons);
    QHBoxLayout* pins = row_of({binder.label(form.labTJXZ[3]), binder.list(form.combPins)});
    pins->addStretch(1);
    controls->addLayout(pins);
    for (CheckBox& box : form.che_staple)
        controls->addWidget(binder.check(box));
    controls->addStretch(1);
    sides->addLayout(controls, 1);
    auto* lamps = new QScrollArea;
    auto* table = new LampTable(binder.shell().language_is_english);
    lamps->setObjectName("lampTable");
    lamps->setWidget(table);
    lamps->setFrameShape(QFrame::NoFrame);
    lamps->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn); // its width counts in what the table would like
    lamps->setMinimumWidth(table->sizeHint().width() / 3); // the lamps; on a small screen what they mean scrolls
    auto* meaning = new QVBoxLayout;
    meaning->addWidget(binder.label(form.labTJXZ[2]));
    meaning->addWidget(lamps, 1);
    sides->addLayout(meaning);
    return page;
}

QWidget* make_hardware_page(Binder& binder)
{
    MainForm& form = binder.shell().form;
    QLabel* caption = nullptr;
    QWidget* page = binder.page(form.fraAboutHardWare, caption);
    QVBoxLayout* stack = stack_on(page, caption);
    QLabel* text = binder.label(form.LabAboutHardWare);
    text->setTextInteractionFlags(Qt::TextSelectableByMouse);
    text->setWordWrap(true);
    text->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    auto* scrolled = new QScrollArea;
    scrolled->setObjectName("hardwareText");
    scrolled->setWidget(text);
    scrolled->setWidgetResizable(true);
    scrolled->setFrameShape(QFrame::NoFrame);
    stack->addWidget(scrolled, 1);
    return page;
}

QWidget* make_demo_page(Binder& binder)
{
    MainForm& form = binder.shell().form;
    QLabel* caption = nullptr;
    QWidget* page = binder.page(form.Frame11, caption);
    QVBoxLayout* stack = stack_on(page, caption);
    stack->addLayout(make_line(binder, form.LabDEMO,
        {form.cob_DEMO_DownLoad_Baud, form.cob_DEMO_DownLoad_Parity, form.cob_DEMO_DownLoad_DataBits,
            form.cob_DEMO_DownLoad_StopBits}));
    stack->addLayout(row_of({binder.check(form.che_Demo_DownLoad), binder.line(form.txt_DEMO_UserCode)}));
    stack->addLayout(make_line(binder, form.LabDEMO + 4,
        {form.cob_DEMO_UserCode_Baud, form.cob_DEMO_UserCode_Parity, form.cob_DEMO_UserCode_DataBits,
            form.cob_DEMO_UserCode_StopBits}));
    QHBoxLayout* watchdog = row_of({new QLabel(to_qt(form.Label9.caption())), binder.option(form.opt_ISP_DEMO_WDT[0]),
        binder.option(form.opt_ISP_DEMO_WDT[1]), binder.list(form.comb_WDT)});
    watchdog->addStretch(1);
    stack->addLayout(watchdog);
    QHBoxLayout* buttons = row_of({binder.button(form.com_Demo_DownLoad), binder.button(form.com_Demo_Re_DownLoad),
        binder.button(form.com_Demo_Stop)});
    buttons->addStretch(1);
    stack->addLayout(buttons);
    stack->addStretch(1);
    return page;
}

} // namespace vrk
