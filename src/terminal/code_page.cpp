#include "terminal/code_page.h"

#include "platform/text_number.h"

#include <algorithm>
#include <array>
#include <cerrno>

#include <iconv.h>

namespace vrk {

namespace {

constexpr std::string_view replacement = "\xEF\xBF\xBD"; // U+FFFD
constexpr std::size_t longest_character = 4; // bytes, in any of the pages

const char* name_of(CodePage page)
{
    switch (page) {
    case CodePage::gbk:
        return "GBK";
    case CodePage::latin1:
        return "ISO-8859-1";
    case CodePage::utf8:
        break;
    }
    return "UTF-8";
}

bool is_shown_as_picture(char c)
{
    const auto code = static_cast<unsigned char>(c);
    return (code < 0x20 && c != '\r' && c != '\n' && c != '\t') || code == 0x7F;
}

// U+2400 and what follows it: a picture for each control character; that of DEL stands at U+2421.
std::string with_pictures(const std::string& text)
{
    if (std::none_of(text.begin(), text.end(), is_shown_as_picture))
        return text;
    std::string shown;
    for (const char c : text) {
        if (is_shown_as_picture(c))
            shown += {'\xE2', '\x90', c == 0x7F ? '\xA1' : static_cast<char>(0x80 + c)};
        else
            shown += c;
    }
    return shown;
}

} // namespace

class TextDecoder::Converter {
public:
    Converter(const char* to, const char* from)
        : handle_(iconv_open(to, from))
    {
    }
    ~Converter()
    {
        if (handle_ != reinterpret_cast<iconv_t>(-1))
            iconv_close(handle_);
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    // Takes off the front of `bytes` what it could convert; a character that is not whole stays. `misfit` stands for
    // each byte that belongs to no character, and for a character that the other side does not have.
    std::string convert(std::string_view& bytes, std::string_view misfit)
    {
        std::string text;
        if (handle_ == reinterpret_cast<iconv_t>(-1)) {
            for (; !bytes.empty(); bytes.remove_prefix(1))
                text += misfit;
            return text;
        }
        std::array<char, 4096> chunk{};
        while (!bytes.empty()) {
            char* in = const_cast<char*>(bytes.data()); // the function's signature is older than const
            std::size_t in_left = bytes.size();
            char* out = chunk.data();
            std::size_t out_left = chunk.size();
            const bool converted = iconv(handle_, &in, &in_left, &out, &out_left) != static_cast<std::size_t>(-1);
            const int fault = errno;
            text.append(chunk.data(), static_cast<std::size_t>(out - chunk.data()));
            bytes.remove_prefix(bytes.size() - in_left);
            if (converted || fault == E2BIG)
                continue;
            if (fault == EINVAL && bytes.size() < longest_character)
                break;
            text += misfit;
            do
                bytes.remove_prefix(1);
            while (skips_characters_ && !bytes.empty() && !begins_character(bytes.front()));
        }
        return text;
    }
    void skip_characters() { skips_characters_ = true; }

private:
    iconv_t handle_;
    bool skips_characters_ = false; // a misfit is a character of UTF-8, not a byte
};

TextDecoder::TextDecoder(CodePage page)
    : converter_(std::make_unique<Converter>("UTF-8", name_of(page)))
{
}

TextDecoder::~TextDecoder() = default;
TextDecoder::TextDecoder(TextDecoder&&) noexcept = default;
TextDecoder& TextDecoder::operator=(TextDecoder&&) noexcept = default;

std::string TextDecoder::decode(std::span<const std::uint8_t> bytes)
{
    held_.append(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    std::string_view rest = held_;
    const std::string text = converter_->convert(rest, replacement);
    held_ = std::string{rest};
    return with_pictures(text);
}

std::string TextDecoder::end()
{
    std::string text;
    for (std::size_t i = 0; i < held_.size(); ++i)
        text += replacement;
    held_.clear();
    return text;
}

std::vector<std::uint8_t> encode_text(CodePage page, std::string_view text)
{
    if (page == CodePage::utf8)
        return {text.begin(), text.end()};
    TextDecoder::Converter converter(name_of(page), "UTF-8");
    converter.skip_characters();
    const std::string bytes = converter.convert(text, "?");
    return {bytes.begin(), bytes.end()};
}

std::string hex_pairs_text(std::span<const std::uint8_t> bytes)
{
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text;
    text.reserve(bytes.size() * 3);
    for (const std::uint8_t byte : bytes) {
        text += digits[byte >> 4U];
        text += digits[byte & 0xFU];
        text += ' ';
    }
    return text;
}

} // namespace vrk
