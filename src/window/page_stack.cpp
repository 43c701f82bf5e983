#include "window/page_stack.h"

#include <QEvent>
#include <QGridLayout>
#include <QRadioButton>

#include <algorithm>

namespace vrk {

namespace {

constexpr int line_spacing = 2;

QWidget* area_of(const QWidget* page) { return page->parentWidget()->parentWidget(); } // past the viewport

} // namespace

PageArea::PageArea(QWidget* contents, QSize wanted, QSize least)
    : wanted_(wanted)
    , least_(least)
{
    setWidget(contents);
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus); // what stands in it is gone to by itself
    viewport()->setAutoFillBackground(false);
    contents->setAutoFillBackground(false);
}

// A line of choices is a little higher than its text.
QSize PageArea::pixels_of(QSize in_text) const
{
    const int line = std::max(fontMetrics().lineSpacing(), QRadioButton("8").sizeHint().height()) + line_spacing;
    return {in_text.width() * fontMetrics().averageCharWidth(), in_text.height() * line};
}

PageStack::PageStack(QSize wanted, QSize least)
    : wanted_(wanted)
    , least_(least)
{
    auto* one_place = new QGridLayout(this);
    one_place->setContentsMargins(0, 0, 0, 0);
}

void PageStack::add(QWidget* page)
{
    const bool hidden = page->isHidden() && page->testAttribute(Qt::WA_WState_ExplicitShowHide);
    auto* area = new PageArea(page, wanted_, least_); // shows what it is given
    page->setVisible(!hidden);
    QSizePolicy keeps_place = area->sizePolicy();
    keeps_place.setRetainSizeWhenHidden(true);
    area->setSizePolicy(keeps_place);
    static_cast<QGridLayout*>(layout())->addWidget(area, 0, 0);
    area->setVisible(!hidden);
    page->installEventFilter(this);
}

bool PageStack::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::ShowToParent || event->type() == QEvent::HideToParent)
        area_of(static_cast<QWidget*>(watched))->setVisible(event->type() == QEvent::ShowToParent);
    return QWidget::eventFilter(watched, event);
}

} // namespace vrk
