// The model's box with the tree that drops down from it. Letters typed into the tree move the highlight to the first
// model whose name begins with them, or else holds them; the pick itself is Enter or a click. Where no model has them
// the head of the tree says so, and Enter picks none: it was meant for another one than stands highlighted.
#pragma once

#include "window/binder.h"

#include <QElapsedTimer>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTreeWidget>

namespace vrk {

class DeviceBox final : public QObject {
public:
    // `over`: the widget that the open tree lies on.
    DeviceBox(Binder& binder, QWidget* over);

    QLineEdit* box() { return box_; }
    QPushButton* arrow() { return arrow_; }

private:
    void fill();
    void show_tree();
    void pick(QTreeWidgetItem* item);
    bool search(const QKeyEvent& key);
    void end_search();
    bool take_key(const QKeyEvent& key);
    bool eventFilter(QObject* watched, QEvent* event) override;

    Binder& binder_;
    Shell& shell_;
    QLineEdit* box_;
    QPushButton* arrow_;
    QTreeWidget* tree_;
    QString typed_; // letters of a model that is looked for
    QElapsedTimer since_typed_;
};

} // namespace vrk
