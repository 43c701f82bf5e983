// Lines of text for a program that must go on serving its event loop while none comes.
#pragma once

#include <QSocketNotifier>

#include <deque>
#include <istream>
#include <optional>
#include <string>

namespace vrk {

std::string without_line_end(std::string line); // a CR off the end

class LineSource {
public:
    virtual ~LineSource() = default;
    virtual std::optional<std::string> take() = 0; // nothing: none now
    virtual bool ended() const = 0; // none now, and none will come
};

class FileLines final : public LineSource {
public:
    explicit FileLines(std::istream& stream)
        : stream_(stream)
    {
    }
    std::optional<std::string> take() override;
    bool ended() const override { return !stream_; }

private:
    std::istream& stream_;
};

class StandardInput final : public LineSource {
public:
    StandardInput();
    std::optional<std::string> take() override;
    bool ended() const override { return closed_ && lines_.empty(); }

private:
    void read_some();

    QSocketNotifier notifier_;
    std::string partial_;
    std::deque<std::string> lines_;
    bool closed_ = false;
};

} // namespace vrk
