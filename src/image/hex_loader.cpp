#include "image/hex_loader.h"

#include "image/hex_digits.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace vrk {

namespace {

// clang-format off
//                              Chinese                                        English
constexpr Text wrong_checksum = { "校验和错:\n\n",                               "The checksum is incorrect:\n\n" };
constexpr Text go_on_without  = { "不再检测校验和, 继续加载文件请输入 Y\n\n"
                                  "中止加载文件, 立即返回请输入 N",               "Not test Checksum any more. Continue loading the file, Please input Y.\n\n"
                                                                               "Stop loading the file. Return immediately, please input N" };
// clang-format on

constexpr int faults_shown = 3; // then the user decides for the rest of the file
constexpr std::string_view padding{" \t\0", 3}; // that editors and terminals leave behind a record
constexpr std::int64_t least_high = 511;
constexpr std::int64_t most_high = std::numeric_limits<std::int32_t>::max();

std::string_view without_padding(std::string_view line) { return line.substr(0, line.find_last_not_of(padding) + 1); }

std::size_t halved_to_even(std::size_t length) { return length / 2 + (length % 4 == 3 ? 1 : 0); }

enum class OnFault { go_on, refuse, overtaken };

// Shows a line with a wrong checksum. After the third the user is asked whether the rest of the file may go unchecked.
OnFault show_fault(
    const std::string& title, std::string_view line, int failures, Boxes& boxes, const StillWanted& still_wanted)
{
    boxes.show_box(Line{wrong_checksum} + Line{std::string{without_padding(line)}}, title);
    const bool go_on = failures < faults_shown || boxes.ask(go_on_without, title);
    if (!still_wanted())
        return OnFault::overtaken;
    return go_on ? OnFault::go_on : OnFault::refuse;
}

} // namespace

HexRecord parse_hex_line(std::string_view line)
{
    HexRecord record;
    line = without_padding(line);
    line.remove_prefix(std::min<std::size_t>(line.size(), 1)); // the colon
    const std::size_t count = std::min<std::size_t>(halved_to_even(line.size()), HexRecord::max_bytes);
    const std::size_t whole_pairs = std::min(count, line.size() / 2);
    std::uint32_t sum = 0;
    for (std::size_t i = 0; i < whole_pairs; ++i) {
        record.bytes[i] = pair_value(line[2 * i], line[2 * i + 1]);
        sum += record.bytes[i];
    }
    if (count > whole_pairs) {
        record.bytes[whole_pairs] = pair_value('0', line.back());
        sum += record.bytes[whole_pairs];
    }
    record.checksum_ok = (sum & 0xFF) == 0;
    for (std::size_t i = count; i < HexRecord::header_bytes; ++i)
        record.bytes[i] = 0;
    record.address = static_cast<std::uint16_t>(record.bytes[1] * 256 + record.bytes[2]);
    record.type = record.bytes[3];
    if (count > HexRecord::header_bytes) {
        record.data_count = static_cast<int>(count) - HexRecord::header_bytes - 1;
        record.data_sum =
            sum - record.bytes[count - 1] - record.bytes[0] - record.bytes[1] - record.bytes[2] - record.bytes[3];
    }
    return record;
}

void store_record(const HexRecord& record, HexTarget& target)
{
    if (record.data_count == 0)
        return;
    const std::int64_t first = std::int64_t{target.base} + record.address;
    const std::int64_t end = first + record.data_count;
    target.checksum += record.data_sum;
    target.highest = std::max(target.highest, end - 1);

    const std::int64_t stored_first = std::max<std::int64_t>(first, 0);
    const std::int64_t stored_end =
        std::min({end, std::int64_t{target.limit}, static_cast<std::int64_t>(target.image.size())});
    if (stored_first < stored_end) {
        std::memcpy(target.image.data() + stored_first, record.data().data() + (stored_first - first),
            static_cast<std::size_t>(stored_end - stored_first));
    }
}

HexContents look_through(HexLines& lines)
{
    HexContents contents;
    while (const auto line = lines.next()) {
        if (!line->starts_with(':'))
            continue;
        const HexRecord record = parse_hex_line(*line);
        if (record.type == HexRecord::end_of_file) {
            contents.end_record = record.checksum_ok;
            break;
        }
        contents.data = contents.data || record.data_count > 0;
    }
    return contents;
}

HexFigures parse_hex(
    HexLines& lines, const std::string& title, HexTarget target, Boxes& boxes, const StillWanted& still_wanted)
{
    int failures = 0;
    while (true) {
        if (!still_wanted())
            return {LoadEnd::overtaken};
        const auto line = lines.next();
        if (!line)
            break;
        if (!line->starts_with(':'))
            continue;
        const HexRecord record = parse_hex_line(*line);
        if (!record.checksum_ok && failures < faults_shown) {
            const OnFault answer = show_fault(title, *line, ++failures, boxes, still_wanted);
            if (answer == OnFault::overtaken)
                return {LoadEnd::overtaken};
            if (answer == OnFault::refuse)
                return {LoadEnd::refused};
        }
        if (record.type == HexRecord::end_of_file)
            break;
        store_record(record, target);
    }
    if (lines.failed())
        return {LoadEnd::unreadable};
    if (target.highest < 0)
        return {LoadEnd::no_data};
    const auto high = static_cast<std::int32_t>(std::clamp(target.highest, least_high, most_high));
    return {LoadEnd::done, high, target.checksum};
}

} // namespace vrk
