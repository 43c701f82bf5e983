#include "terminal/receive_log.h"

namespace vrk {

bool ReceiveLog::begin(const std::string& path, Kind kind, CodePage page)
{
    end();
    path_ = path;
    kind_ = kind;
    decoder_ = TextDecoder{page};
    times_ = {};
    file_.clear();
    file_.open(path, std::ios::binary | std::ios::app);
    return file_.is_open();
}

bool ReceiveLog::write(std::span<const std::uint8_t> bytes, std::string_view time)
{
    if (!is_on())
        return true;
    if (kind_ == Kind::bytes)
        return put({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
    return put(times_.stamp(decoder_.decode(bytes), time));
}

void ReceiveLog::end()
{
    if (!is_on())
        return;
    file_ << decoder_.end();
    file_.close();
}

// At once: a program that is cut off has lost nothing of what it had received.
bool ReceiveLog::put(std::string_view text)
{
    file_.write(text.data(), static_cast<std::streamsize>(text.size()));
    file_.flush();
    if (file_)
        return true;
    file_.close();
    return false;
}

} // namespace vrk
