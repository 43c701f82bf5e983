#include "recipe/batch.h"

#include "link/seal_job.h"

namespace vrk {

namespace {

bool move_on(AutoIncrease& number)
{
    if (!number.valid)
        return true;
    number.next_value = advanced_value(number);
    return value_fault(number) == ValueFault::none;
}

FileBuffer with_number(FileBuffer buffer, const AutoIncrease& number)
{
    if (number.valid)
        stamp(number, buffer);
    return buffer;
}

} // namespace

Job next_job(const Batch& batch)
{
    const FileBuffer code = with_number(batch.code, batch.code_number);
    const FileBuffer data = with_number(batch.data, batch.data_number);
    return seal_job({.model = batch.model,
        .model_name = batch.model.mcu_name,
        .english = batch.english,
        .line = batch.line,
        .code = {code, batch.code_number},
        .data = {data, batch.data_number},
        .options = batch.options,
        .guards_block_1 = false,
        .watchdog_pin = batch.watchdog_pin,
        .rc_target_mhz = batch.rc_target_mhz});
}

std::string next_number(const Batch& batch)
{
    if (batch.code_number.valid)
        return batch.code_number.next_value;
    return batch.data_number.valid ? batch.data_number.next_value : std::string{};
}

bool move_numbers(Batch& batch)
{
    const bool code = move_on(batch.code_number);
    return move_on(batch.data_number) && code;
}

std::optional<Line> put_number_in_use(const McuRecord& model, AutoIncrease& number)
{
    const PlaceFault place = place_fault(model, number.kind, number.address, number.bytes);
    if (place != PlaceFault::none)
        return place_text(place, model);
    if (const ValueFault value = value_fault(number); value != ValueFault::none)
        return value_text(value);
    number.valid = true;
    return std::nullopt;
}

} // namespace vrk
