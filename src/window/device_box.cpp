#include "window/device_box.h"

#include "form/main_form.h"

#include "shell/events.h"
#include "shell/messages.h"

#include <QEvent>

#include <algorithm>
#include <map>

namespace vrk {

namespace {

constexpr int key_role = Qt::UserRole;
constexpr int tree_rows = 18; // as high as so many lines, where the window allows it
constexpr Text no_such_model = {"找不到 MCU 型号: ", "No MCU type has: "};
constexpr qint64 typing_pause_ms = 1500; // after it the next letter begins a new name

QTreeWidgetItem* first_model(QTreeWidget& tree, const QString& typed)
{
    for (const Qt::MatchFlags how :
        {Qt::MatchStartsWith | Qt::MatchRecursive, Qt::MatchContains | Qt::MatchRecursive}) {
        for (QTreeWidgetItem* item : tree.findItems(typed, how)) {
            if (item->parent() != nullptr)
                return item;
        }
    }
    return nullptr;
}

bool begins_name(const QKeyEvent& key)
{
    return (key.modifiers() & ~Qt::ShiftModifier) == Qt::NoModifier && key.text().size() == 1 &&
        key.text()[0].isLetterOrNumber();
}

} // namespace

DeviceBox::DeviceBox(Binder& binder, QWidget* over)
    : binder_(binder)
    , shell_(binder.shell())
    , box_(binder.line(shell_.form.txtDevice))
    , arrow_(binder.button(shell_.form.Command3))
    , tree_(new QTreeWidget(over))
{
    box_->setReadOnly(true);
    box_->setCursor(Qt::PointingHandCursor);
    box_->installEventFilter(this);

    arrow_->setFixedWidth(box_->sizeHint().height() + 4); // a style makes every button as wide as a word
    arrow_->setFocusPolicy(Qt::TabFocus); // the tree goes when it loses the focus, and a click is to find it open

    tree_->setHeaderHidden(true);
    tree_->setFrameShape(QFrame::Box);
    tree_->setUniformRowHeights(true);
    tree_->installEventFilter(this);
    over->installEventFilter(this);
    connect(tree_, &QTreeWidget::itemClicked, this, [this](QTreeWidgetItem* item) { pick(item); });
    binder.bind(shell_.form.TreeViewDevice, tree_, [this] { show_tree(); });
}

void DeviceBox::fill()
{
    tree_->clear();
    std::map<std::string, QTreeWidgetItem*> families;
    for (const Tree::Node& node : shell_.form.TreeViewDevice.nodes()) {
        const auto family = families.find(node.parent);
        auto* item = family == families.end() ? new QTreeWidgetItem(tree_) : new QTreeWidgetItem(family->second);
        item->setText(0, to_qt(node.text));
        item->setData(0, key_role, to_qt(node.key));
        if (node.parent.empty())
            families[node.key] = item;
    }
}

void DeviceBox::show_tree()
{
    if (!shell_.form.TreeViewDevice.visible()) {
        if (tree_->hasFocus()) { // a tree that goes hands its focus to any neighbour
            box_->setEnabled(shell_.form.txtDevice.enabled()); // it may be shown behind the tree
            box_->setFocus();
        }
        tree_->hide();
        return;
    }
    if (!tree_->isVisible())
        end_search();
    if (tree_->topLevelItemCount() == 0)
        fill();
    QWidget* over = tree_->parentWidget();
    const QPoint below = box_->mapTo(over, QPoint(0, box_->height()));
    const int row_height = std::max(tree_->sizeHintForRow(0), 1);
    const int frame = 2 * tree_->frameWidth();
    const int rows = std::min(tree_rows, (over->height() - below.y() - frame) / row_height);
    const int height = rows * row_height + frame;
    tree_->setGeometry(below.x(), below.y(), std::max(box_->width(), 260), height);
    tree_->collapseAll();
    for (QTreeWidgetItemIterator it(tree_); *it != nullptr; ++it) {
        if ((*it)->data(0, key_role).toString() == to_qt(shell_.form.TreeViewDevice.selected_key()))
            tree_->setCurrentItem(*it);
    }
    tree_->scrollToItem(tree_->currentItem(), QAbstractItemView::PositionAtCenter);
    tree_->show();
    tree_->raise();
    tree_->setFocus();
}

void DeviceBox::pick(QTreeWidgetItem* item)
{
    if (item == nullptr)
        return;
    if (item->childCount() > 0)
        item->setExpanded(!item->isExpanded());
    choose_node(shell_, shell_.form.TreeViewDevice, from_qt(item->data(0, key_role).toString()));
}

void DeviceBox::end_search()
{
    typed_.clear();
    tree_->setHeaderHidden(true);
}

// True: the key was a letter of a name, or took one back.
bool DeviceBox::search(const QKeyEvent& key)
{
    const bool back = key.key() == Qt::Key_Backspace;
    const bool letter = key.text().size() == 1 && key.text()[0].isPrint() && key.text() != " ";
    if (!back && !letter)
        return false;
    if (!since_typed_.isValid() || since_typed_.elapsed() > typing_pause_ms)
        end_search();
    since_typed_.restart();
    if (back)
        typed_.chop(1);
    else
        typed_ += key.text();
    QTreeWidgetItem* item = typed_.isEmpty() ? nullptr : first_model(*tree_, typed_);
    tree_->setHeaderHidden(typed_.isEmpty() || item != nullptr);
    tree_->setHeaderLabel(to_qt(in_language(shell_, no_such_model)) + typed_);
    if (item != nullptr) {
        tree_->setCurrentItem(item);
        tree_->scrollToItem(item, QAbstractItemView::PositionAtCenter);
    }
    return true;
}

bool DeviceBox::take_key(const QKeyEvent& key)
{
    switch (key.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (tree_->isHeaderHidden())
            pick(tree_->currentItem());
        return true;
    case Qt::Key_Escape:
        press_key(shell_, shell_.form.TreeViewDevice, "Esc");
        return true;
    default:
        break;
    }
    if (search(key))
        return true;
    if (!key.text().isEmpty() || key.key() == Qt::Key_Shift)
        return false;
    end_search(); // an arrow: the highlight goes its own way from here
    return false;
}

bool DeviceBox::eventFilter(QObject* watched, QEvent* event)
{
    const auto key = event->type() == QEvent::KeyPress ? static_cast<QKeyEvent*>(event)->key() : 0;
    if (watched == box_ && box_->isEnabled() &&
        (event->type() == QEvent::MouseButtonPress || key == Qt::Key_Down || key == Qt::Key_Space ||
            key == Qt::Key_Return || key == Qt::Key_Enter)) {
        click(shell_, shell_.form.txtDevice);
        return true;
    }
    if (watched == box_ && box_->isEnabled() && key != 0 && begins_name(*static_cast<QKeyEvent*>(event))) {
        click(shell_, shell_.form.txtDevice);
        binder_.refresh(); // the tree is there for the first letter already
        return tree_->isVisible() && search(*static_cast<QKeyEvent*>(event));
    }
    if (watched == tree_->parentWidget() && event->type() == QEvent::MouseButtonPress && tree_->isVisible())
        press_key(shell_, shell_.form.TreeViewDevice, "Esc"); // on a place that takes no focus
    if (watched == tree_ && key != 0)
        return take_key(*static_cast<QKeyEvent*>(event)) || QObject::eventFilter(watched, event);
    if (watched == tree_ && event->type() == QEvent::FocusOut)
        press_key(shell_, shell_.form.TreeViewDevice, "Esc");
    return QObject::eventFilter(watched, event);
}

} // namespace vrk
