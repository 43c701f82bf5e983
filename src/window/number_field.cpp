#include "window/number_field.h"

#include "shell/window_words.h"
#include "window/binder.h"

#include <QRegularExpressionValidator>
#include <QToolTip>

namespace vrk {

namespace {

struct Rule {
    NumberField field;
    const char* pattern;
    Text why;
};

// clang-format off
constexpr Rule rules[] = {
    { NumberField::hexadecimal,  "[0-9A-Fa-f]*", only_hexadecimal },
    { NumberField::whole,        "[0-9]*",       only_whole },
    { NumberField::signed_whole, "[+-]?[0-9]*",  only_signed_whole },
};
// clang-format on

} // namespace

void take_only(QLineEdit& line, NumberField field, bool english)
{
    for (const Rule& rule : rules) {
        if (rule.field != field)
            continue;
        line.setValidator(new QRegularExpressionValidator(QRegularExpression(rule.pattern), &line));
        const QString why = to_qt(in_language(english, rule.why));
        QObject::connect(&line, &QLineEdit::inputRejected, &line,
            [&line, why] { QToolTip::showText(line.mapToGlobal(QPoint(0, line.height())), why, &line); });
    }
}

} // namespace vrk
