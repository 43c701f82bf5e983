#include "window/dump_view.h"

#include "image/buffer_view.h"
#include "shell/events.h"

#include <QEvent>
#include <QGridLayout>
#include <QWheelEvent>

#include <algorithm>

namespace vrk {

namespace {

constexpr int lines_per_notch = 3; // of the wheel

}

DumpView::DumpView(Binder& binder, int index)
    : form_(binder.form())
    , index_(index)
    , pane_(binder.pane(index == 0 ? form_.txtBuffer2 : form_.tetDataFlash2))
{
    auto* address = binder.line(form_.txtBufferAddress[index == 0 ? 0 : 2]);
    auto* columns = binder.line(form_.txtBufferAddress[index == 0 ? 1 : 3]);
    for (QLineEdit* head : {address, columns}) {
        head->setReadOnly(true);
        head->setFrame(false);
        head->setFocusPolicy(Qt::NoFocus);
        head->setFont(pane_->font());
        head->setStyleSheet("background: transparent");
    }
    const int digit = pane_->fontMetrics().horizontalAdvance('0');
    address->setFixedWidth(digit * 9 - 2);
    pane_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    pane_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    const int margins = 2 * (static_cast<int>(pane_->document()->documentMargin()) + pane_->frameWidth());
    pane_->setMinimumWidth(digit * dump_line_size + margins);
    pane_->viewport()->installEventFilter(this);

    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(address, 0, 0);
    layout->addWidget(columns, 0, 1);
    layout->addWidget(pane_, 1, 0, 1, 2);
    layout->addWidget(binder.scroll(form_.vscFile[index]), 1, 2);
    layout->setColumnStretch(1, 1);
    layout->setRowStretch(1, 1);
}

void DumpView::fit_lines()
{
    FileBuffer& buffer = index_ == 0 ? form_.code_buffer : form_.data_buffer;
    const int margins = 2 * static_cast<int>(pane_->document()->documentMargin());
    const int lines = std::max((pane_->viewport()->height() - margins) / pane_->fontMetrics().lineSpacing(), 1);
    if (lines == buffer.view_lines)
        return;
    buffer.view_lines = lines;
    vscFile_Change(form_, index_);
}

bool DumpView::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize)
        fit_lines();
    if (event->type() == QEvent::Wheel) {
        const int notches = static_cast<QWheelEvent*>(event)->angleDelta().y() / 120;
        ScrollBar& bar = form_.vscFile[index_];
        scroll_to(form_, bar, bar.value() - notches * lines_per_notch);
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace vrk
