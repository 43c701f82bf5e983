// The controls of the window as plain state: what a text box holds, whether a button can be pressed. The window shows
// them and passes events in; scripts and tests read and set them directly. A setter marks its control as changed.
#pragma once

#include "report/tone.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace vrk {

enum class ControlKind {
    TextBox,
    CheckBox,
    OptionButton,
    ComboBox,
    Label,
    Button,
    Frame,
    TabStrip,
    Tree,
    ProgressBar,
    ScrollBar,
    Image,
    ListBox,
};

std::string_view kind_name(ControlKind kind); // "TextBox" and so on

struct Control;

// What the window still has to redraw.
struct ChangeList {
    std::vector<Control*> changed;
    std::function<void()> on_change; // called for each change

    void add(Control& control);
    std::vector<Control*> take(); // hands the list over and starts a new one
};

struct Control {
    static constexpr int no_index = -1;

    explicit Control(ControlKind its_kind)
        : kind(its_kind)
    {
    }
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;
    virtual ~Control() = default;

    const ControlKind kind;
    std::string name;
    int index = no_index; // place in its control array
    bool is_marked = false; // stands in the change list
    ChangeList* changes = nullptr;

    std::string full_name() const; // "comDownload(0)", "textMsg"
    bool enabled() const { return enabled_; }
    bool visible() const { return visible_; }
    void set_enabled(bool enabled) { assign(enabled_, enabled); }
    void set_visible(bool visible) { assign(visible_, visible); }

protected:
    void mark();
    template <typename Value> void assign(Value& field, const Value& value)
    {
        if (field == value)
            return;
        field = value;
        mark();
    }

private:
    bool enabled_ = true;
    bool visible_ = true;
};

// A control with a caption and nothing else that changes.
struct CaptionControl : Control {
    using Control::Control;
    const std::string& caption() const { return caption_; }
    void set_caption(std::string_view caption) { assign(caption_, std::string{caption}); }

private:
    std::string caption_;
};

struct Label : CaptionControl {
    Label()
        : CaptionControl(ControlKind::Label)
    {
    }
};

struct Button : CaptionControl {
    Button()
        : CaptionControl(ControlKind::Button)
    {
    }
};

struct Frame : CaptionControl {
    Frame()
        : CaptionControl(ControlKind::Frame)
    {
    }
};

// A picture that is shown or hidden.
struct Image : Control {
    Image()
        : Control(ControlKind::Image)
    {
    }
};

struct CheckBox : CaptionControl {
    CheckBox()
        : CaptionControl(ControlKind::CheckBox)
    {
    }
    bool value() const { return value_; }
    void set_value(bool value) { assign(value_, value); }

private:
    bool value_ = false;
};

// One of a group of which one is chosen: setting it clears the others.
struct OptionButton : CaptionControl {
    OptionButton()
        : CaptionControl(ControlKind::OptionButton)
    {
    }
    bool value() const { return value_; }
    void set_value(bool value);

    std::vector<OptionButton*> group; // all of the group, this one too

private:
    bool value_ = false;
};

// Caret and selection count characters, not bytes.
struct TextBox : Control {
    TextBox()
        : Control(ControlKind::TextBox)
    {
    }
    int max_length = 0; // characters that a hand can type; 0: as many as it likes

    const std::string& text() const { return text_; }
    int length() const { return length_; } // characters
    void set_text(std::string_view text); // caret to the start
    void append(std::string_view text, Tone tone = Tone::plain); // caret to the end
    int sel_start() const { return sel_start_; }
    int sel_length() const { return sel_length_; }
    void select(int start, int length);
    // What was appended in a tone of its own. Characters; the end is not part of it.
    struct Toned {
        int from = 0;
        int end = 0;
        Tone tone = Tone::plain;
    };
    const std::vector<Toned>& toned() const { return toned_; }
    // Grows whenever the text is replaced; what is appended leaves it, so whoever shows the text needs only the rest.
    int version() const { return version_; }
    const std::string& hint() const { return hint_; } // shown while the pointer rests on the box
    void set_hint(std::string_view hint) { assign(hint_, std::string{hint}); }

private:
    std::string text_;
    std::string hint_;
    std::vector<Toned> toned_;
    int version_ = 0;
    int length_ = 0;
    int sel_start_ = 0;
    int sel_length_ = 0;
};

struct ComboBox : Control {
    ComboBox()
        : Control(ControlKind::ComboBox)
    {
    }
    bool editable = false; // text beside the list can be typed

    const std::vector<std::string>& items() const { return items_; }
    int index_chosen() const { return chosen_; } // -1: none
    const std::string& text() const { return text_; }
    void set_items(std::vector<std::string> items); // nothing chosen afterwards
    // What each item is, shown beside it while the list is open; those behind the end have none.
    const std::vector<std::string>& notes() const { return notes_; }
    void set_notes(std::vector<std::string> notes) { assign(notes_, notes); }
    void choose(int item); // -1 or out of range: none
    void set_text(std::string_view text); // chooses the first item of that text, if there is one

private:
    std::vector<std::string> items_;
    std::vector<std::string> notes_;
    int chosen_ = -1;
    std::string text_;
};

// Lines to look at, one above the other, in columns.
struct ListBox : Control {
    ListBox()
        : Control(ControlKind::ListBox)
    {
    }
    const std::vector<std::string>& items() const { return items_; }
    const std::vector<bool>& stands_out() const { return stands_out_; } // item by item; those behind its end do not
    void set_items(std::vector<std::string> items, std::vector<bool> stands_out = {});

private:
    std::vector<std::string> items_;
    std::vector<bool> stands_out_;
};

struct TabStrip : Control {
    struct Tab {
        std::string key;
        std::string caption;
        friend bool operator==(const Tab&, const Tab&) = default;
    };
    static constexpr std::string_view hidden_caption = "_no_"; // a tab with this caption is not shown

    TabStrip()
        : Control(ControlKind::TabStrip)
    {
    }
    const std::vector<Tab>& tabs() const { return tabs_; }
    int selected() const { return selected_; } // from 0
    std::string_view selected_key() const;
    int find(std::string_view key) const; // -1: no such tab
    void set_tabs(std::vector<Tab> tabs);
    void set_caption(std::string_view key, std::string_view caption);
    void select(int tab);

private:
    std::vector<Tab> tabs_;
    int selected_ = 0;
};

struct Tree : Control {
    struct Node {
        std::string key;
        std::string text;
        std::string parent; // key of the family node; empty: a top node
        friend bool operator==(const Node&, const Node&) = default;
    };

    Tree()
        : Control(ControlKind::Tree)
    {
    }
    const std::vector<Node>& nodes() const { return nodes_; }
    const Node* find(std::string_view key) const;
    const std::string& selected_key() const { return selected_; } // empty: none
    void set_nodes(std::vector<Node> nodes);
    void select(std::string_view key);

private:
    std::vector<Node> nodes_;
    std::string selected_;
};

struct ProgressBar : Control {
    ProgressBar()
        : Control(ControlKind::ProgressBar)
    {
    }
    int min() const { return min_; }
    int max() const { return max_; }
    int value() const { return value_; }
    void set_range(int min, int max);
    void set_value(int value); // held inside the range

private:
    int min_ = 0;
    int max_ = 100;
    int value_ = 0;
};

struct ScrollBar : Control {
    ScrollBar()
        : Control(ControlKind::ScrollBar)
    {
    }
    int small_step = 1;
    int large_step = 16;
    int min() const { return min_; }
    int max() const { return max_; }
    int value() const { return value_; }
    void set_range(int min, int max);
    void set_value(int value); // held inside the range

private:
    int min_ = 0;
    int max_ = 64;
    int value_ = 0;
};

} // namespace vrk
