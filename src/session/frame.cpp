#include "session/frame.h"

#include "session/crc16.h"

#include "platform/text_number.h"

#include <algorithm>
#include <numeric>
#include <string>

namespace vrk {

namespace {

constexpr std::uint8_t header_46 = 0x46;
constexpr std::uint8_t header_b9 = 0xB9;
constexpr std::uint8_t to_target = 0x6A;
constexpr std::uint8_t end_byte = 0x16;
constexpr std::size_t direction_index = 2; // the length and the check count from here
constexpr std::size_t length_index = 3;

Bytes begin_frame(std::uint8_t code) { return {header_46, header_b9, to_target, 0, 0, code}; }

void append_check(Bytes& frame, std::span<const std::uint8_t> checked, Check check)
{
    switch (check) {
    case Check::sum8:
        frame.push_back(low(byte_sum(checked)));
        break;
    case Check::sum16: {
        const std::uint32_t sum = byte_sum(checked);
        frame.insert(frame.end(), {high(sum), low(sum)});
        break;
    }
    case Check::crc16: {
        const std::uint16_t crc = crc16_of(checked);
        frame.insert(frame.end(), {low(crc), high(crc)});
        break;
    }
    }
}

Bytes finish_frame(Bytes frame, Check check)
{
    const std::size_t check_size = check == Check::sum8 ? 1 : 2;
    const auto length = static_cast<std::uint32_t>(frame.size() - direction_index + check_size + 1);
    frame[length_index] = high(length);
    frame[length_index + 1] = low(length);
    const Bytes checked(frame.begin() + direction_index, frame.end());
    append_check(frame, checked, check);
    frame.push_back(end_byte);
    return frame;
}

void append_address(Bytes& frame, std::uint32_t address)
{
    frame.insert(frame.end(), {high(address >> 16), low(address >> 16), high(address), low(address)});
}

void append_block(Bytes& frame, std::uint32_t address, std::span<const std::uint8_t> data)
{
    append_address(frame, address);
    const auto count = static_cast<std::uint32_t>(data.size());
    frame.insert(frame.end(), {high(count), low(count)});
    frame.insert(frame.end(), data.begin(), data.end());
}

Bytes finish_demo_frame(Bytes frame)
{
    const auto length = static_cast<std::uint32_t>(frame.size() + 3);
    frame[2] = high(length);
    frame[3] = low(length);
    const std::uint32_t sum = byte_sum(frame);
    frame.insert(frame.end(), {high(sum), low(sum), end_byte});
    return frame;
}

bool has_short_form(std::uint8_t code)
{
    constexpr std::array<std::uint8_t, 5> codes = {0x80, 0x81, command::leave_isp, command::probe, 0x95};
    return std::find(codes.begin(), codes.end(), code) != codes.end();
}

} // namespace

std::uint32_t byte_sum(std::span<const std::uint8_t> bytes)
{
    return std::accumulate(bytes.begin(), bytes.end(), std::uint32_t{0});
}

Bytes build_command_frame(std::uint8_t code, std::span<const std::uint8_t> parameters, Check check)
{
    Bytes frame = begin_frame(code);
    frame.insert(frame.end(), parameters.begin(), parameters.end());
    return finish_frame(std::move(frame), check);
}

Bytes build_short_frame(std::uint8_t code, Check check)
{
    if (!has_short_form(code))
        return {};
    const Bytes frame = finish_frame(begin_frame(code), check);
    Bytes whole(4, 0xFE);
    whole.insert(whole.end(), frame.begin(), frame.end());
    return whole;
}

std::array<std::uint8_t, 2> model_id_bytes(const McuRecord& model, std::string_view reported_id)
{
    std::string id = model.mcu_id;
    if (id.size() != 2) {
        if (model.mcu_id != reported_id && !model.alt_id.empty() && model.alt_id == reported_id)
            id = model.alt_id;
        id = (id + "FFFF").substr(0, 4);
    } else {
        id += "FF";
    }
    return {low(static_cast<std::uint32_t>(hex_number(std::string_view{id}.substr(0, 2)))),
        low(static_cast<std::uint32_t>(hex_number(std::string_view{id}.substr(2, 2))))};
}

Bytes build_model_frame(
    std::uint8_t code, std::uint8_t parameter, const McuRecord& model, std::string_view reported_id, Check check)
{
    const auto id = model_id_bytes(model, reported_id);
    const std::array<std::uint8_t, 6> parameters = {
        low(static_cast<std::uint32_t>(model.series)), parameter, 0x36, 0x01, id[0], id[1]};
    return build_command_frame(code, parameters, check);
}

DataFrame build_data_frame(std::uint8_t code, std::uint32_t address, std::span<const std::uint8_t> data, Check check)
{
    Bytes frame = begin_frame(code);
    append_block(frame, address, data);
    const std::uint32_t sum = byte_sum(data);
    return {finish_frame(std::move(frame), check), static_cast<std::uint16_t>(check == Check::sum8 ? low(sum) : sum)};
}

Bytes build_demo_frame(std::uint8_t code, std::span<const std::uint8_t> parameters)
{
    Bytes frame = {0x5A, 0xA5, 0, 0, code};
    frame.insert(frame.end(), parameters.begin(), parameters.end());
    return finish_demo_frame(std::move(frame));
}

DataFrame build_demo_data_frame(std::uint8_t code, std::uint32_t address, std::span<const std::uint8_t> data)
{
    Bytes frame = {0x5A, 0xA5, 0, 0, code};
    append_block(frame, address, data);
    return {finish_demo_frame(std::move(frame)), static_cast<std::uint16_t>(byte_sum(data))};
}

bool reply_check_good(std::span<const std::uint8_t> frame, Check check)
{
    const std::size_t tail = check == Check::sum8 ? 2 : 3; // check and end byte
    if (frame.size() < tail)
        return false;
    const auto checked = frame.first(frame.size() - tail);
    const auto found = frame.subspan(frame.size() - tail);
    switch (check) {
    case Check::sum8:
        return found[0] == low(byte_sum(checked));
    case Check::sum16:
        return found[0] == high(byte_sum(checked)) && found[1] == low(byte_sum(checked));
    case Check::crc16:
        return found[0] == low(crc16_of(checked)) && found[1] == high(crc16_of(checked));
    }
    return false;
}

bool demo_check_good(std::span<const std::uint8_t> frame)
{
    if (frame.size() < 3)
        return false;
    const std::uint32_t sum = byte_sum(frame.first(frame.size() - 3));
    return frame[frame.size() - 3] == high(sum) && frame[frame.size() - 2] == low(sum);
}

} // namespace vrk
