#include "window/production_pages.h"

#include "form/main_form.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include <optional>
#include <utility>
#include <vector>

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

// Frames side by side; the last one goes below the others where the window is too narrow for all.
class FramesInARow final : public QWidget {
public:
    explicit FramesInARow(std::vector<QWidget*> frames)
        : frames_(std::move(frames))
        , grid_(new QGridLayout(this))
    {
        grid_->setContentsMargins(0, 0, 0, 0);
        grid_->setSpacing(4);
        grid_->setSizeConstraint(QLayout::SetNoConstraint); // the narrow width is enough
        for (int i = 0; i + 1 < count(); ++i)
            grid_->addWidget(frames_[static_cast<std::size_t>(i)], 0, i);
        put_last(false);
    }
    QSize minimumSizeHint() const override { return {width_of(count() - 1), grid_->totalMinimumSize().height()}; }

private:
    void resizeEvent(QResizeEvent*) override { put_last(width() >= width_of(count())); }
    int count() const { return static_cast<int>(frames_.size()); }
    int width_of(int first_frames) const
    {
        int width = (first_frames - 1) * grid_->spacing();
        for (int i = 0; i < first_frames; ++i)
            width += frames_[static_cast<std::size_t>(i)]->minimumSizeHint().width();
        return width;
    }
    void put_last(bool beside)
    {
        if (beside_ == beside)
            return;
        beside_ = beside;
        grid_->removeWidget(frames_.back());
        if (beside)
            grid_->addWidget(frames_.back(), 0, count() - 1);
        else
            grid_->addWidget(frames_.back(), 1, 0, 1, count() - 1);
        updateGeometry();
    }

    std::vector<QWidget*> frames_;
    QGridLayout* grid_;
    std::optional<bool> beside_;
};

} // namespace

QWidget* make_increase_page(Binder& binder)
{
    MainForm& form = binder.shell().form;
    QLabel* caption = nullptr;
    QWidget* page = binder.page(form.fraAuto_Increase, caption);
    QVBoxLayout* layout = stack_on(page, caption);
    layout->addWidget(binder.label(form.LabIncrease_Clew));
    layout->addWidget(new FramesInARow({make_number_frame(binder,
                                            {form.frmAP_FileIncrease, form.cheAuto_Increase, form.LabAuto_Increase,
                                                form.texAuto_Increase, form.optAuto_Increase}),
        make_number_frame(binder,
            {form.frmDtat_FileIncrease, form.cheData_Auto_Increase, form.LabData_Auto_Increase,
                form.texData_Auto_Increase, form.optData_Auto_Increase}),
        make_line_frame(binder)}));
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
