#include "lanes/tones.h"

#include <QApplication>
#include <QMediaDevices>

#include <cmath>
#include <initializer_list>
#include <numbers>

namespace vrk::lanes {

namespace {

constexpr int rate_hz = 22'050;
constexpr double volume = 0.6; // of full scale
constexpr int fade = rate_hz / 100; // samples in and out, so that nothing clicks

struct Note {
    double hz;
    double seconds;
};

QByteArray samples_of(std::initializer_list<Note> notes)
{
    QByteArray bytes;
    for (const Note& note : notes) {
        const int count = static_cast<int>(note.seconds * rate_hz);
        for (int i = 0; i < count; ++i) {
            const double edge = std::min({1.0, double(i) / fade, double(count - i) / fade});
            const auto sample =
                static_cast<qint16>(32767 * volume * edge * std::sin(2 * std::numbers::pi * note.hz * i / rate_hz));
            bytes.append(reinterpret_cast<const char*>(&sample), sizeof sample);
        }
    }
    return bytes;
}

} // namespace

Tones::Tones()
    : good_(samples_of({{1047, 0.09}, {1568, 0.16}}))
    , bad_(samples_of({{196, 0.55}}))
{
    QAudioFormat format;
    format.setSampleRate(rate_hz);
    format.setChannelCount(1);
    format.setSampleFormat(QAudioFormat::Int16);
    const QAudioDevice device = QMediaDevices::defaultAudioOutput();
    if (!device.isNull() && device.isFormatSupported(format))
        sink_ = std::make_unique<QAudioSink>(device, format);
}

void Tones::good() { play(good_); }

void Tones::bad() { play(bad_); }

void Tones::play(const QByteArray& samples)
{
    if (sink_ == nullptr)
        return QApplication::beep();
    sink_->stop();
    playing_.close();
    playing_.setData(samples);
    playing_.open(QIODevice::ReadOnly);
    sink_->start(&playing_);
}

} // namespace vrk::lanes
