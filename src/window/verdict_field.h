// The verdict over the report, to be read from two metres: a shape, a word and a colour, the last chip below. The
// shape and the word say it too, for who does not tell red from green.
#pragma once

#include "window/binder.h"

#include "shell/verdict.h"

#include <QWidget>

namespace vrk {

class VerdictField final : public QWidget {
public:
    explicit VerdictField(Binder& binder);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

private:
    void paintEvent(QPaintEvent* event) override;
    void show_verdict();

    Shell& shell_;
    VerdictState state_ = VerdictState::ready;
    QString word_;
    QString last_; // of the last chip
};

} // namespace vrk
