#include "form/controls.h"

#include "platform/text_number.h"

#include <algorithm>
#include <utility>

namespace vrk {

std::string_view kind_name(ControlKind kind)
{
    switch (kind) {
    case ControlKind::TextBox:
        return "TextBox";
    case ControlKind::CheckBox:
        return "CheckBox";
    case ControlKind::OptionButton:
        return "OptionButton";
    case ControlKind::ComboBox:
        return "ComboBox";
    case ControlKind::ListBox:
        return "ListBox";
    case ControlKind::Label:
        return "Label";
    case ControlKind::Button:
        return "Button";
    case ControlKind::Frame:
        return "Frame";
    case ControlKind::TabStrip:
        return "TabStrip";
    case ControlKind::Tree:
        return "Tree";
    case ControlKind::ProgressBar:
        return "ProgressBar";
    case ControlKind::ScrollBar:
        return "ScrollBar";
    case ControlKind::Image:
        return "Image";
    }
    return "";
}

void ChangeList::add(Control& control)
{
    if (!control.is_marked) {
        control.is_marked = true;
        changed.push_back(&control);
    }
    if (on_change)
        on_change();
}

std::vector<Control*> ChangeList::take()
{
    for (Control* control : changed)
        control->is_marked = false;
    return std::exchange(changed, {});
}

std::string Control::full_name() const { return index == no_index ? name : name + "(" + std::to_string(index) + ")"; }

void Control::mark()
{
    if (changes != nullptr)
        changes->add(*this);
}

void OptionButton::set_value(bool value)
{
    assign(value_, value);
    if (!value)
        return;
    for (OptionButton* other : group) {
        if (other != this)
            other->set_value(false);
    }
}

void TextBox::set_text(std::string_view text)
{
    if (text == text_)
        return;
    text_ = text;
    toned_.clear();
    length_ = character_count(text);
    ++version_;
    sel_start_ = 0;
    sel_length_ = 0;
    mark();
}

void TextBox::append(std::string_view text, Tone tone)
{
    text_ += text;
    const int from = length_;
    length_ += character_count(text);
    if (tone != Tone::plain)
        toned_.push_back({from, length_, tone});
    sel_start_ = length_;
    sel_length_ = 0;
    mark();
}

void TextBox::select(int start, int length)
{
    const int end = length_;
    start = std::clamp(start, 0, end);
    assign(sel_start_, start);
    assign(sel_length_, std::clamp(length, 0, end - start));
}

void ComboBox::set_items(std::vector<std::string> items)
{
    items_ = std::move(items);
    chosen_ = -1;
    text_.clear();
    mark();
}

void ComboBox::choose(int item)
{
    const bool exists = item >= 0 && static_cast<std::size_t>(item) < items_.size();
    assign(chosen_, exists ? item : -1);
    assign(text_, exists ? items_[static_cast<std::size_t>(item)] : std::string{});
}

void ComboBox::set_text(std::string_view text)
{
    const auto found = std::find(items_.begin(), items_.end(), text);
    assign(chosen_, found == items_.end() ? -1 : static_cast<int>(found - items_.begin()));
    assign(text_, std::string{text});
}

std::string_view TabStrip::selected_key() const
{
    return tabs_.empty() ? std::string_view{} : tabs_[static_cast<std::size_t>(selected_)].key;
}

int TabStrip::find(std::string_view key) const
{
    const auto found = std::find_if(tabs_.begin(), tabs_.end(), [&](const Tab& tab) { return tab.key == key; });
    return found == tabs_.end() ? -1 : static_cast<int>(found - tabs_.begin());
}

void TabStrip::set_tabs(std::vector<Tab> tabs)
{
    assign(tabs_, tabs);
    selected_ = 0;
}

void TabStrip::set_caption(std::string_view key, std::string_view caption)
{
    const int tab = find(key);
    if (tab >= 0)
        assign(tabs_[static_cast<std::size_t>(tab)].caption, std::string{caption});
}

void TabStrip::select(int tab)
{
    if (tab >= 0 && static_cast<std::size_t>(tab) < tabs_.size())
        assign(selected_, tab);
}

const Tree::Node* Tree::find(std::string_view key) const
{
    const auto found = std::find_if(nodes_.begin(), nodes_.end(), [&](const Node& node) { return node.key == key; });
    return found == nodes_.end() ? nullptr : &*found;
}

void Tree::set_nodes(std::vector<Node> nodes)
{
    assign(nodes_, nodes);
    selected_.clear();
}

void Tree::select(std::string_view key)
{
    if (find(key) != nullptr)
        assign(selected_, std::string{key});
}

void ProgressBar::set_range(int min, int max)
{
    assign(min_, min);
    assign(max_, std::max(min, max));
    set_value(value_);
}

void ProgressBar::set_value(int value) { assign(value_, std::clamp(value, min_, max_)); }

void ListBox::set_items(std::vector<std::string> items, std::vector<bool> stands_out)
{
    if (items == items_ && stands_out == stands_out_)
        return;
    items_ = std::move(items);
    stands_out_ = std::move(stands_out);
    mark();
}

void ScrollBar::set_range(int min, int max)
{
    assign(min_, min);
    assign(max_, std::max(min, max));
    set_value(value_);
}

void ScrollBar::set_value(int value) { assign(value_, std::clamp(value, min_, max_)); }

} // namespace vrk
