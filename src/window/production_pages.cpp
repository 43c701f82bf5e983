#include "window/production_pages.h"

#include "form/main_form.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

namespace vrk {

namespace {

// The controls of one buffer's number; the window has two of each, side by side.
struct NumberControls {
    Frame& frame;
    CheckBox& box;
    Label (&labels)[5];
    TextBox (&fields)[4];
    OptionButton (&systems)[3];
};

QGroupBox* make_number_frame(Binder& binder, const NumberControls& number)
{
    QGroupBox* frame = binder.frame(number.frame);
    auto* grid = new QGridLayout(frame);
    grid->setContentsMargins(6, 6, 6, 6); // two frames fit under the dump without making the window wider
    grid->addWidget(binder.check(number.box), 0, 0, 1, 2);
    int row = 1;
    constexpr NumberField kinds[] = {
        NumberField::hexadecimal, NumberField::whole, NumberField::whole, NumberField::signed_whole};
    for (int i = 0; i < 4; ++i, ++row) {
        grid->addWidget(binder.label(number.labels[i]), row, 0);
        QLineEdit* field = binder.number(number.fields[i], kinds[i]);
        field->setMinimumWidth(field->fontMetrics().horizontalAdvance("00000") + 2); // four digits and the rim
        grid->addWidget(field, row, 1);
    }
    grid->addWidget(binder.label(number.labels[4]), row++, 0, 1, 2);
    auto* systems = new QHBoxLayout;
    systems->setSpacing(2);
    for (OptionButton& system : number.systems)
        systems->addWidget(binder.option(system));
    grid->addLayout(systems, row++, 0, 1, 2, Qt::AlignLeft);
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(row, 1);
    return frame;
}

// The books of a line, beside the numbers.
QGroupBox* make_line_frame(Binder& binder)
{
    MainForm& form = binder.shell().form;
    QGroupBox* frame = binder.frame(form.fraLine);
    auto* grid = new QGridLayout(frame);
    grid->setContentsMargins(6, 6, 6, 6);
    grid->addWidget(binder.check(form.cheLedger), 0, 0, 1, 2);
    grid->addWidget(binder.label(form.LabLine[0]), 1, 0);
    grid->addWidget(binder.line(form.texOrder), 1, 1);
    grid->addWidget(binder.check(form.cheRecord), 2, 0, 1, 2);
    grid->addWidget(binder.label(form.LabLine[1]), 3, 0);
    grid->addWidget(binder.line(form.texStation), 3, 1);
    grid->addWidget(binder.label(form.LabLine[2]), 4, 0);
    grid->addWidget(binder.line(form.texLedger), 4, 1);
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(5, 1);
    return frame;
}

} // namespace

QWidget* make_increase_page(Binder& binder)
{
    MainForm& form = binder.shell().form;
    QLabel* caption = nullptr;
    QWidget* page = binder.page(form.fraAuto_Increase, caption);
    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(caption);
    layout->addWidget(binder.label(form.LabIncrease_Clew));
    auto* frames = new QHBoxLayout;
    frames->setSpacing(4);
    frames->addWidget(make_number_frame(binder,
        {form.frmAP_FileIncrease, form.cheAuto_Increase, form.LabAuto_Increase, form.texAuto_Increase,
            form.optAuto_Increase}));
    frames->addWidget(make_number_frame(binder,
        {form.frmDtat_FileIncrease, form.cheData_Auto_Increase, form.LabData_Auto_Increase, form.texData_Auto_Increase,
            form.optData_Auto_Increase}));
    frames->addWidget(make_line_frame(binder));
    layout->addLayout(frames);
    layout->addStretch(1);
    return page;
}

QWidget* make_store_page(Binder& binder)
{
    MainForm& form = binder.shell().form;
    QLabel* caption = nullptr;
    QWidget* page = binder.page(form.Frame9, caption);
    QLineEdit* start = binder.number(form.txt_Start_Address, NumberField::hexadecimal);
    QLineEdit* length = binder.number(form.txt_length, NumberField::hexadecimal);
    start->setMaxLength(4);
    length->setMaxLength(5);
    for (QLineEdit* field : {start, length})
        field->setMaximumWidth(10 * field->fontMetrics().averageCharWidth());
    auto* grid = new QGridLayout(page);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->addWidget(caption, 0, 0, 1, 3);
    grid->addWidget(binder.label(form.LabStore[0]), 1, 0);
    grid->addWidget(start, 1, 1);
    grid->addWidget(binder.label(form.LabStore[1]), 2, 0);
    grid->addWidget(length, 2, 1);
    grid->addWidget(binder.button(form.comStoreFile), 3, 0, 1, 2);
    grid->setColumnStretch(2, 1);
    grid->setRowStretch(4, 1);
    return page;
}

} // namespace vrk
