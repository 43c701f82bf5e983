#include "host/qt_dialogs.h"

#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QFileDialog>
#include <QLabel>
#include <QMessageBox>
#include <QScreen>

#include <algorithm>

namespace vrk {

namespace {

QMessageBox::StandardButtons qt_buttons(Buttons buttons)
{
    switch (buttons) {
    case Buttons::ok_cancel:
        return QMessageBox::Ok | QMessageBox::Cancel;
    case Buttons::yes_no:
        return QMessageBox::Yes | QMessageBox::No;
    case Buttons::ok:
        break;
    }
    return QMessageBox::Ok;
}

QMessageBox::StandardButton qt_button(Reply reply)
{
    switch (reply) {
    case Reply::cancel:
        return QMessageBox::Cancel;
    case Reply::yes:
        return QMessageBox::Yes;
    case Reply::no:
        return QMessageBox::No;
    case Reply::ok:
        break;
    }
    return QMessageBox::Ok;
}

Reply reply_of(int button)
{
    switch (button) {
    case QMessageBox::Cancel:
        return Reply::cancel;
    case QMessageBox::Yes:
        return Reply::yes;
    case QMessageBox::No:
        return Reply::no;
    default:
        return Reply::ok;
    }
}

QMessageBox::Icon qt_icon(BoxIcon icon)
{
    switch (icon) {
    case BoxIcon::question:
        return QMessageBox::Question;
    case BoxIcon::warning:
        return QMessageBox::Warning;
    case BoxIcon::error:
        return QMessageBox::Critical;
    case BoxIcon::information:
        break;
    }
    return QMessageBox::Information;
}

// Qt breaks the lines of a box at half of the screen; a text that is laid out in lines is read as it was written.
void keep_lines_whole(QMessageBox& dialog)
{
    auto* label = dialog.findChild<QLabel*>("qt_msgbox_label");
    if (label == nullptr)
        return;
    constexpr int longest_line = 130; // characters; a longer one is broken
    const int line = label->fontMetrics().size(Qt::TextExpandTabs, dialog.text()).width();
    label->setMinimumWidth(std::min({line + 2, longest_line * label->fontMetrics().averageCharWidth(),
        dialog.screen()->availableSize().width() * 4 / 5}));
}

// What patterns without a caption are called: "*.hex *.bin" is "HEX, BIN".
QString name_of(const QString& patterns) { return patterns.simplified().remove("*.").replace(' ', ", ").toUpper(); }

// "caption|*.hex;*.bin|caption|*.*" becomes "caption (*.hex *.bin);;caption (*)".
QString qt_filter(const std::string& filter)
{
    const QStringList parts = QString::fromStdString(filter).split('|');
    QStringList entries;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        QString patterns = parts[i + 1];
        patterns.replace(';', ' ').replace("*.*", "*");
        const QString caption = parts[i].section('(', 0, 0).trimmed();
        const bool named = !caption.isEmpty() && !caption.startsWith('*');
        entries << (named ? caption : name_of(patterns)) + " (" + patterns.trimmed() + ")";
    }
    return entries.join(";;");
}

} // namespace

Reply QtDialogs::show(const MessageBox& box)
{
    QMessageBox dialog(parent);
    dialog.setObjectName("MessageBox");
    dialog.setWindowTitle(QString::fromStdString(box.title));
    dialog.setIcon(qt_icon(box.icon));
    dialog.setTextFormat(Qt::PlainText);
    dialog.setText(QString::fromStdString(box.text));
    dialog.setStandardButtons(qt_buttons(box.buttons));
    dialog.setDefaultButton(qt_button(box.default_reply));
    keep_lines_whole(dialog);
    return reply_of(dialog.exec());
}

std::optional<std::string> QtDialogs::choose(const FileDialog& dialog)
{
    QFileDialog box(parent, QString::fromStdString(dialog.title), QString::fromStdString(dialog.initial_dir),
        qt_filter(dialog.filter));
    box.setObjectName("FileDialog");
    box.setAcceptMode(dialog.kind == FileDialog::Kind::save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    box.setFileMode(dialog.must_exist ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
    if (dialog.devices)
        box.setFilter(box.filter() | QDir::System);
    if (!dialog.file_name.empty())
        box.selectFile(QString::fromStdString(dialog.file_name));
    if (box.exec() != QDialog::Accepted || box.selectedFiles().isEmpty())
        return std::nullopt;
    return box.selectedFiles().constFirst().toStdString();
}

void QtDialogs::beep() { QApplication::beep(); }

void QtDialogs::set_busy(bool busy)
{
    if (busy)
        QApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QApplication::restoreOverrideCursor();
}

void QtDialogs::copy_text(const std::string& text)
{
    QGuiApplication::clipboard()->setText(QString::fromStdString(text));
}

} // namespace vrk
