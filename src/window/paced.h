// Draws what changes all the time as often as an eye can follow it: the first change at once, what follows soon behind
// it together.
#pragma once

#include <QElapsedTimer>
#include <QTimer>

#include <functional>

namespace vrk {

class Paced {
public:
    explicit Paced(std::function<void()> draw)
        : draw_(std::move(draw))
    {
        again_.setSingleShot(true);
        QObject::connect(&again_, &QTimer::timeout, &again_, [this] { draw_now(); });
    }
    void changed()
    {
        const qint64 rest_ms = since_drawn_.isValid() ? between_pictures_ms - since_drawn_.elapsed() : 0;
        if (rest_ms <= 0)
            draw_now();
        else if (!again_.isActive())
            again_.start(static_cast<int>(rest_ms));
    }
    void draw_now()
    {
        again_.stop();
        since_drawn_.start();
        draw_();
    }

private:
    static constexpr qint64 between_pictures_ms = 100;

    std::function<void()> draw_;
    QElapsedTimer since_drawn_;
    QTimer again_;
};

} // namespace vrk
