#include "host/line_source.h"

#include <unistd.h>

#include <array>

namespace vrk {

std::string without_line_end(std::string line)
{
    if (line.ends_with('\r'))
        line.pop_back();
    return line;
}

std::optional<std::string> FileLines::take()
{
    std::string line;
    if (!std::getline(stream_, line))
        return std::nullopt;
    return without_line_end(std::move(line));
}

StandardInput::StandardInput()
    : notifier_(STDIN_FILENO, QSocketNotifier::Read)
{
    QObject::connect(&notifier_, &QSocketNotifier::activated, &notifier_, [this] { read_some(); });
}

void StandardInput::read_some()
{
    std::array<char, 4096> bytes{};
    const ssize_t count = ::read(STDIN_FILENO, bytes.data(), bytes.size());
    if (count <= 0) {
        notifier_.setEnabled(false);
        closed_ = true;
        if (!partial_.empty())
            lines_.push_back(without_line_end(std::move(partial_)));
        partial_.clear();
        return;
    }
    partial_.append(bytes.data(), static_cast<std::size_t>(count));
    for (std::size_t end = partial_.find('\n'); end != std::string::npos; end = partial_.find('\n')) {
        lines_.push_back(without_line_end(partial_.substr(0, end)));
        partial_.erase(0, end + 1);
    }
}

std::optional<std::string> StandardInput::take()
{
    if (lines_.empty())
        return std::nullopt;
    std::string line = std::move(lines_.front());
    lines_.pop_front();
    return line;
}

} // namespace vrk
