// The sound of a verdict: good is high, bad is low and long, so that a worker who looks elsewhere knows.
#pragma once

#include <QAudioSink>
#include <QBuffer>

#include <memory>

namespace vrk::lanes {

class Tones final {
public:
    Tones(); // without a sound device the system's bell has to do

    void good();
    void bad();

private:
    void play(const QByteArray& samples);

    QByteArray good_;
    QByteArray bad_;
    QBuffer playing_;
    std::unique_ptr<QAudioSink> sink_;
};

} // namespace vrk::lanes
