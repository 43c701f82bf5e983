// The model's box with the tree that drops down from it.
#pragma once

#include "window/binder.h"

#include <QLineEdit>
#include <QTreeWidget>

namespace vrk {

class DeviceBox final : public QObject {
public:
    // `over`: the widget that the open tree lies on.
    DeviceBox(Binder& binder, QWidget* over);

    QLineEdit* box() { return box_; }

private:
    void fill();
    void show_tree();
    void pick(QTreeWidgetItem* item);
    bool eventFilter(QObject* watched, QEvent* event) override;

    MainForm& form_;
    QLineEdit* box_;
    QTreeWidget* tree_;
};

} // namespace vrk
