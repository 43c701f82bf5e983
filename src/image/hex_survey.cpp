#include "image/hex_survey.h"

#include "image/hex_loader.h"

#include <bitset>

namespace vrk {

namespace {

// A record begins at 16 bits and is no longer than a line.
constexpr std::size_t addresses = 0x10000 + HexRecord::max_bytes;

std::vector<AddressRange> ranges_of(const std::bitset<addresses>& marks)
{
    std::vector<AddressRange> ranges;
    for (std::size_t i = 0; i < addresses; ++i) {
        const auto address = static_cast<std::int32_t>(i);
        if (!marks[i])
            continue;
        if (!ranges.empty() && ranges.back().last == address - 1)
            ranges.back().last = address;
        else
            ranges.push_back({address, address});
    }
    return ranges;
}

} // namespace

HexSurvey survey(HexLines& lines)
{
    constexpr std::uint8_t data_type = 0;
    HexSurvey found;
    std::bitset<addresses> filled;
    std::bitset<addresses> filled_twice;
    int line_number = 0;
    while (const auto line = lines.next()) {
        ++line_number;
        if (!line->starts_with(':'))
            continue;
        const HexRecord record = parse_hex_line(*line);
        if (!record.checksum_ok && found.wrong_checksums++ == 0)
            found.first_wrong_line = line_number;
        if (record.type == HexRecord::end_of_file) {
            found.end_record = record.checksum_ok;
            break;
        }
        ++(record.type == data_type ? found.data_records : found.other_records);
        found.sum += record.data_sum;
        for (int i = 0; i < record.data_count; ++i) {
            const std::size_t address = std::size_t{record.address} + static_cast<std::size_t>(i);
            filled_twice[address] = filled_twice[address] || filled[address];
            filled[address] = true;
        }
    }
    found.ranges = ranges_of(filled);
    found.overlaps = ranges_of(filled_twice);
    return found;
}

} // namespace vrk
