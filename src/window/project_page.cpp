#include "window/project_page.h"

#include "form/main_form.h"

#include <QGridLayout>

namespace vrk {

QWidget* make_project_page(Binder& binder)
{
    MainForm& form = binder.shell().form;
    QLabel* caption = nullptr;
    QWidget* page = binder.page(form.fra_Batch_quantity, caption);
    auto* grid = new QGridLayout(page);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->addWidget(caption, 0, 0, 1, 3);
    grid->addWidget(binder.line(form.texBatchFileName), 1, 0, 1, 3);
    grid->addWidget(binder.button(form.comOpenBatchFile), 2, 0);
    grid->addWidget(binder.button(form.comSaveBatchFile), 2, 1);
    QPushButton* unlock = binder.button(form.comUnlockOptions); // the longest caption
    grid->addWidget(binder.button(form.comLockOptions), 3, 0);
    grid->addWidget(unlock, 3, 1);
    grid->addWidget(binder.button(form.Command1), 4, 0);
    grid->addWidget(binder.path(form.Label2[6]), 5, 0, 1, 3);
    grid->setColumnMinimumWidth(0, unlock->sizeHint().width());
    grid->setColumnStretch(2, 1);
    grid->setRowStretch(6, 1); // everything at the top
    return page;
}

} // namespace vrk
