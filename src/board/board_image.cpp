#include "board/board_image.h"

#include "board/quantity.h"

#include "platform/text_number.h"
#include "session/crc16.h"
#include "session/frame.h"

#include <algorithm>

namespace vrk {

namespace {

constexpr std::size_t header_at = 0xEC00;
constexpr std::size_t thousands_at = 0xED00;
constexpr std::size_t rest_at = 0xEE00;
constexpr std::size_t crc_table_at = 0xF000;
constexpr std::size_t crc_block = 128;
constexpr std::size_t id_at = 0xFFD0; // of a stamped source
constexpr std::size_t upper_options_at = 0xFFE0;
constexpr std::size_t lower_options_at = 0xFFF0;

// A part of the target's memory and its place on the board; of the board's own, what is to be written by it later.
struct Move {
    std::size_t first;
    std::size_t last;
    std::size_t to;
};
constexpr Move code_moves[] = {{0x0000, 0xABFF, 0x4000}, {0xAC00, 0xCBFF, 0x2000}};
constexpr Move second_bank = {0xAC00, 0xF7FF, second_bank_first};

struct Span {
    std::size_t first;
    std::size_t last;
};
constexpr Span notes[] = {{0xED40, 0xED5F}, {0xF400, 0xF5FF}};

void put(std::span<const std::uint8_t> bytes, std::size_t at, BoardImage& image)
{
    std::copy(bytes.begin(), bytes.end(), image.begin() + static_cast<std::ptrdiff_t>(at));
}

void copy(const BoardSource& source, const Move& move, BoardImage& image)
{
    put(std::span{source.bytes}.subspan(move.first, move.last - move.first + 1), move.to, image);
}

void put_crc_table(const BoardSource& source, BoardImage& image, const std::function<void(int block)>& summed)
{
    for (int block = 0; block < crc_blocks; ++block) {
        const auto i = static_cast<std::size_t>(block);
        const std::uint16_t crc = crc16_of(std::span{source.bytes}.subspan(i * crc_block, crc_block));
        image[crc_table_at + 2 * i] = low(crc);
        image[crc_table_at + 2 * i + 1] = high(crc);
        if (summed)
            summed(block);
    }
}

} // namespace

BoardImage begin_board_image(const BoardJob& job)
{
    BoardImage image(BoardSource::highest + 1);
    const QuantityRows quantity = quantity_rows(job);
    put(quantity.thousands, thousands_at, image);
    put(quantity.rest, rest_at, image);
    return image;
}

BoardImage build_board_image(
    const BoardJob& job, const BoardSource& source, const BoardFit& fit, const std::function<void(int block)>& summed)
{
    BoardImage image = begin_board_image(job);
    if (job.code_number.in_use || job.data_number.in_use) {
        for (const Span& span : notes)
            std::fill_n(image.begin() + static_cast<std::ptrdiff_t>(span.first), span.last - span.first + 1, 0xFF);
    }
    put(build_board_header(header_values(job, source, fit)), header_at, image);
    put_crc_table(source, image, summed);
    for (const Move& move : code_moves)
        copy(source, move, image);
    return image;
}

void put_second_bank(const BoardSource& source, BoardImage& image) { copy(source, second_bank, image); }

BoardImage stamped_source(const BoardJob& job, const BoardSource& source)
{
    BoardImage image = source.bytes;
    const std::string& id = job.model.mcu_id;
    if (id.size() >= 2) {
        image[id_at] = low(static_cast<std::uint32_t>(hex_number(std::string_view{id}.substr(0, 2))));
        image[id_at + 1] = low(static_cast<std::uint32_t>(hex_number(std::string_view{id}.substr(id.size() - 2))));
    }
    const OptionBytes options = job.options.wanted();
    put(std::span{options}.subspan(8, 8), upper_options_at, image);
    put(std::span{options}.first(8), lower_options_at, image);
    return image;
}

} // namespace vrk
