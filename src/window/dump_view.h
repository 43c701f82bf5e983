// A buffer page: its bytes as lines of hexadecimal digits, only as many as fit, with the scroll bar beside them.
#pragma once

#include "window/binder.h"

#include <QPlainTextEdit>
#include <QWidget>

namespace vrk {

class DumpView final : public QWidget {
public:
    // index: 0 the code buffer, 1 the EEPROM buffer
    DumpView(Binder& binder, int index);

private:
    void fit_lines();
    bool eventFilter(QObject* watched, QEvent* event) override;

    MainForm& form_;
    int index_;
    QPlainTextEdit* pane_;
};

} // namespace vrk
