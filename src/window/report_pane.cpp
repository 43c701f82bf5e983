#include "window/report_pane.h"

#include "form/controls.h"
#include "window/colors.h"

#include <QSyntaxHighlighter>
#include <QTextBlock>

#include <algorithm>

namespace vrk {

namespace {

class Tones final : public QSyntaxHighlighter {
public:
    Tones(QPlainTextEdit& pane, const TextBox& control)
        : QSyntaxHighlighter(pane.document())
        , pane_(pane)
        , control_(control)
    {
    }

private:
    void highlightBlock(const QString& text) override
    {
        const int begin = currentBlock().position();
        const int end = begin + static_cast<int>(text.size());
        for (const TextBox::Toned& part : control_.toned()) {
            const int from = std::max(begin, part.from);
            const int to = std::min(end, part.end);
            if (from < to)
                setFormat(from - begin, to - from, format_of(part.tone));
        }
    }

    QTextCharFormat format_of(Tone tone) const
    {
        QTextCharFormat format;
        format.setForeground(tone_color(tone, pane_.palette()));
        if (tone == Tone::good || tone == Tone::bad)
            format.setFontWeight(QFont::Bold);
        return format;
    }

    QPlainTextEdit& pane_;
    const TextBox& control_;
};

} // namespace

ReportPane::ReportPane(const TextBox& control) { new Tones(*this, control); }

void ReportPane::resizeEvent(QResizeEvent* event)
{
    QPlainTextEdit::resizeEvent(event);
    ensureCursorVisible();
}

} // namespace vrk
