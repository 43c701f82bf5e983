// From a name and an index to a control. The window binds through it, scripts drive through it, tables name through it.
#pragma once

#include "form/controls.h"

#include <cstddef>
#include <map>

namespace vrk {

class ControlRegistry {
public:
    void add(Control& control, std::string name, int index = Control::no_index);
    template <typename Type, std::size_t Count> void add(Type (&controls)[Count], const std::string& name)
    {
        for (std::size_t i = 0; i < Count; ++i)
            add(controls[i], name, static_cast<int>(i));
    }

    // A second name, for those who know an array's first element by the name of the array, or the other way round.
    void add_name(Control& control, const std::string& full_name) { by_full_name_[full_name] = &control; }

    // An array element by name and index, a single control by its name alone; null where there is none.
    Control* find(std::string_view name, int index = Control::no_index) const;
    Control* find_full(std::string_view full_name) const; // "comDownload(0)"
    const std::vector<Control*>& all() const { return controls_; } // in the order of the form

    ChangeList changes;

private:
    std::vector<Control*> controls_;
    std::map<std::string, Control*, std::less<>> by_full_name_;
};

} // namespace vrk
