#include "form/registry.h"

namespace vrk {

void ControlRegistry::add(Control& control, std::string name, int index)
{
    control.name = std::move(name);
    control.index = index;
    control.changes = &changes;
    controls_.push_back(&control);
    by_full_name_[control.full_name()] = &control;
}

Control* ControlRegistry::find(std::string_view name, int index) const
{
    if (index == Control::no_index)
        return find_full(name);
    return find_full(std::string{name} + "(" + std::to_string(index) + ")");
}

Control* ControlRegistry::find_full(std::string_view full_name) const
{
    const auto found = by_full_name_.find(full_name);
    return found == by_full_name_.end() ? nullptr : found->second;
}

} // namespace vrk
