// Controls of the window by their names, as a script knows them: for those who need a few of them and not the whole
// form.
#pragma once

#include "form/registry.h"

#include <stdexcept>
#include <string>
#include <vector>

namespace vrk {

class NamedControls {
public:
    explicit NamedControls(const ControlRegistry& controls)
        : controls_(controls)
    {
    }

    TextBox& text_box(std::string_view name, auto... index) const { return find<TextBox>(name, index...); }
    ComboBox& list(std::string_view name, auto... index) const { return find<ComboBox>(name, index...); }
    CheckBox& check_box(std::string_view name, auto... index) const { return find<CheckBox>(name, index...); }
    OptionButton& option(std::string_view name, auto... index) const { return find<OptionButton>(name, index...); }
    std::vector<OptionButton*> options(const std::string& name) const // of a group, in their order
    {
        std::vector<OptionButton*> group;
        for (int i = 0; Control* control = controls_.find(name, i); ++i)
            group.push_back(&dynamic_cast<OptionButton&>(*control));
        return group;
    }
    Button& button(std::string_view name, auto... index) const { return find<Button>(name, index...); }
    Label& label(std::string_view name, auto... index) const { return find<Label>(name, index...); }
    Frame& frame(std::string_view name, auto... index) const { return find<Frame>(name, index...); }
    Image& image(std::string_view name) const { return find<Image>(name); }
    Tree& tree(std::string_view name) const { return find<Tree>(name); }
    TabStrip& tabs(std::string_view name) const { return find<TabStrip>(name); }
    ProgressBar& progress(std::string_view name) const { return find<ProgressBar>(name); }
    ScrollBar& scroll_bar(std::string_view name, auto... index) const { return find<ScrollBar>(name, index...); }

private:
    // A story that names a control that is not there is wrong, and ends.
    template <typename Type> Type& find(std::string_view name, auto... index) const
    {
        auto* control = dynamic_cast<Type*>(controls_.find(name, static_cast<int>(index)...));
        if (control == nullptr)
            throw std::out_of_range("no such control: " + std::string{name});
        return *control;
    }

    const ControlRegistry& controls_;
};

} // namespace vrk
