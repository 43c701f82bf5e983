// The report: failures and successes stand out, advice stands back, not a letter is changed; and its end, where the
// verdict is, stays in sight when the pane gets smaller.
#pragma once

#include <QPlainTextEdit>

namespace vrk {

struct TextBox;

class ReportPane final : public QPlainTextEdit {
public:
    explicit ReportPane(const TextBox& control);

private:
    void resizeEvent(QResizeEvent* event) override;
};

} // namespace vrk
