// Bytes of a target as text, and text as bytes for it. A target sends in the encoding of its own time and place.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vrk {

enum class CodePage { utf8, gbk, latin1 };

// Text comes as UTF-8. A character that is split between two calls is held back until it is whole; bytes that fit no
// character come as the replacement character, so none vanishes. Carriage return, line feed and tab come as they are,
// every other control character as its picture.
class TextDecoder {
public:
    class Converter;

    explicit TextDecoder(CodePage page);
    ~TextDecoder();
    TextDecoder(TextDecoder&&) noexcept;
    TextDecoder& operator=(TextDecoder&&) noexcept;

    std::string decode(std::span<const std::uint8_t> bytes);
    std::string end(); // what is held back, when nothing more will come

private:
    std::unique_ptr<Converter> converter_;
    std::string held_;
};

// What the page has no character for goes out as '?'.
std::vector<std::uint8_t> encode_text(CodePage page, std::string_view text);

std::string hex_pairs_text(std::span<const std::uint8_t> bytes); // "0A FF ": two digits and a blank each

} // namespace vrk
