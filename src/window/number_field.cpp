#include "window/number_field.h"

#include <QRegularExpressionValidator>
#include <QToolTip>

namespace vrk {

namespace {

struct Rule {
    NumberField field;
    const char* pattern;
    const char* zh;
    const char* en;
};

// clang-format off
constexpr Rule rules[] = {
    { NumberField::hexadecimal,  "[0-9A-Fa-f]*", "只能输入 0-9 和 A-F",     "Only 0 to 9 and A to F" },
    { NumberField::whole,        "[0-9]*",       "只能输入 0-9",            "Only 0 to 9" },
    { NumberField::signed_whole, "[+-]?[0-9]*",  "只能输入 0-9 和正负号",   "Only 0 to 9, with a sign before them" },
};
// clang-format on

} // namespace

void take_only(QLineEdit& line, NumberField field, bool english)
{
    for (const Rule& rule : rules) {
        if (rule.field != field)
            continue;
        line.setValidator(new QRegularExpressionValidator(QRegularExpression(rule.pattern), &line));
        const QString why = QString::fromUtf8(english ? rule.en : rule.zh);
        QObject::connect(&line, &QLineEdit::inputRejected, &line,
            [&line, why] { QToolTip::showText(line.mapToGlobal(QPoint(0, line.height())), why, &line); });
    }
}

} // namespace vrk
