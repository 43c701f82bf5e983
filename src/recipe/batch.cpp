#include "recipe/batch.h"

#include "link/seal_job.h"

namespace vrk {

namespace {

bool move_on(AutoIncrease& number, FileBuffer& buffer)
{
    if (!number.valid)
        return true;
    number.next_value = advanced_value(number);
    return stamp(number, buffer);
}

} // namespace

Job next_job(const Batch& batch)
{
    return seal_job({.model = batch.model,
        .model_name = batch.model.mcu_name,
        .english = batch.english,
        .line = batch.line,
        .code = {batch.code, batch.code_number},
        .data = {batch.data, batch.data_number},
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
    const bool code = move_on(batch.code_number, batch.code);
    return move_on(batch.data_number, batch.data) && code;
}

std::optional<Line> put_number_in_use(const McuRecord& model, AutoIncrease& number, FileBuffer& buffer)
{
    const PlaceFault place = place_fault(model, number.kind, number.address, number.bytes);
    if (place != PlaceFault::none)
        return place_text(place, model);
    if (const ValueFault value = value_fault(number); value != ValueFault::none)
        return value_text(value);
    number.valid = stamp(number, buffer);
    return std::nullopt;
}

} // namespace vrk
