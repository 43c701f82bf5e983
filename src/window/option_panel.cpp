#include "window/option_panel.h"

#include "form/main_form.h"
#include "window/colors.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QScrollArea>

#include <algorithm>
#include <array>
#include <numeric>

namespace vrk {

namespace {

constexpr std::size_t first_lower = 8; // strip
constexpr std::size_t strip_count = 14;
constexpr std::size_t most_buttons = 3; // of one strip
constexpr int gap = 10;
constexpr int as_wide_as_wanted = 10'000;

// As the controls say, not as the screen shows: a page that is hidden is laid out all the same.
bool is_shown(const QWidget* widget) { return widget != nullptr && !widget->isHidden(); }

bool has_choice(const std::vector<QWidget*>& buttons, const QWidget* box)
{
    return is_shown(box) || std::any_of(buttons.begin(), buttons.end(), is_shown);
}

void dim(QLabel& label, bool note)
{
    QPalette palette; // takes all but the colour of its text from the window
    if (note)
        palette.setColor(QPalette::WindowText, note_color(label.window()->palette()));
    label.setPalette(palette);
}

// A label keeps the size that it has once wished for, its least width with it, until something makes it measure anew.
void hold_to(QLabel& label, int least_width)
{
    if (label.minimumWidth() == least_width)
        return;
    label.setMinimumWidth(least_width);
    label.setIndent(label.indent());
}

QHBoxLayout* row_of(QWidget* line) { return static_cast<QHBoxLayout*>(line->layout()); }

} // namespace

OptionPanel::OptionPanel(Binder& binder)
    : binder_(binder)
    , shell_(binder.shell())
{
    align_timer_.setSingleShot(true);
    connect(&align_timer_, &QTimer::timeout, this, [this] {
        align(upper_, upper_guests_);
        align(lower_, lower_guests_);
    });
}

void OptionPanel::fill_upper(QVBoxLayout* stack)
{
    add_options(stack, upper_, 0, first_lower);
    upper_.push_back(make_strip(nullptr, shell_.form.Label8[0], {}, nullptr));
    stack->addWidget(upper_.back().line);
    for (Label& note : shell_.form.LabOptionC)
        stack->addWidget(binder_.label(note));
    upper_guests_ = {{binder_.list(shell_.form.com_RC_frequency[0]), &shell_.form.Label8[0], first_lower, 0}};
    upper_[7].box = binder_.list(shell_.form.comWDT_Prescalar[1]);
    row_of(upper_[7].line)->insertWidget(1, upper_[7].box);
    align(upper_, upper_guests_);
}

void OptionPanel::fill_lower(QVBoxLayout* stack)
{
    add_options(stack, lower_, first_lower, strip_count);
    const std::size_t low_voltage = lower_.size();
    lower_.push_back(make_strip(nullptr, shell_.form.Label8[3], {}, nullptr));
    stack->addWidget(lower_.back().line);
    lower_.push_back(make_strip(nullptr, shell_.form.Label8[4], {}, &shell_.form.com_RC_frequency[5]));
    stack->addWidget(lower_.back().line);
    lower_guests_ = {
        {binder_.list(shell_.form.com_RC_frequency[4]), &shell_.form.Label8[3], low_voltage, 10 - first_lower},
        {binder_.list(shell_.form.comWDT_Prescalar[0]), &shell_.form.Picture2[13], 13 - first_lower, 12 - first_lower},
    };

    auto* transceiver = new QWidget;
    auto* lines = new QVBoxLayout(transceiver);
    lines->setContentsMargins(0, 0, 0, 0);
    lines->setSpacing(stack->spacing());
    lower_.push_back(
        make_strip(&shell_.form.Picture4, shell_.form.Lab_485_pin, shell_.form.opt_485_pin, &shell_.form.comb_485_pin));
    lines->addWidget(lower_.back().line);
    lower_.push_back(make_strip(&shell_.form.Picture4, shell_.form.Lab__485_logic, shell_.form.opt_485_logic, nullptr));
    lines->addWidget(lower_.back().line);
    stack->addWidget(transceiver);
    binder_.bind(shell_.form.Picture4, transceiver, [] {});

    lower_.push_back(make_strip(
        &shell_.form.Picture7, shell_.form.Label9, shell_.form.opt_External_WDT, &shell_.form.comb_External_WDT));
    stack->addWidget(lower_.back().line);
    binder_.bind(shell_.form.Picture7, lower_.back().line, [] {});
    align(lower_, lower_guests_);
}

void OptionPanel::add_options(QVBoxLayout* stack, Stack& strips, std::size_t first, std::size_t end)
{
    const std::array<std::span<OptionButton>, strip_count> groups = {shell_.form.Option0, shell_.form.Option1,
        shell_.form.Option2, shell_.form.Option3, shell_.form.Option4, shell_.form.Option5, shell_.form.Option6,
        shell_.form.Option7, shell_.form.Option8, shell_.form.Option9, shell_.form.Option10, shell_.form.Option11,
        shell_.form.Option12, shell_.form.Option13};
    for (std::size_t index = first; index < end; ++index) {
        strips.push_back(
            make_strip(&shell_.form.Picture2[index], shell_.form.LabOption[index], groups[index], nullptr));
        stack->addWidget(strips.back().line);
        binder_.bind(shell_.form.Picture2[index], strips.back().line, [] {});
    }
}

OptionPanel::Strip OptionPanel::make_strip(
    const Frame* frame, Label& label, std::span<OptionButton> buttons, ComboBox* box)
{
    auto* line = new QWidget;
    auto* row = new QHBoxLayout(line);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(gap);
    Strip strip{frame, line, binder_.label(label), {}, nullptr};
    row->addWidget(strip.label);
    for (OptionButton& button : buttons) {
        strip.buttons.push_back(binder_.option(button));
        row->addWidget(strip.buttons.back());
    }
    if (box != nullptr) {
        strip.box = binder_.list(*box);
        row->addWidget(strip.box);
    }
    row->addStretch(1);
    line->installEventFilter(this);
    return strip;
}

// How wide the place is that the strips are shown in. It is looked at from then on.
int OptionPanel::room_for(const Stack& strips)
{
    for (QWidget* around = strips.front().line->parentWidget(); around != nullptr; around = around->parentWidget()) {
        if (auto* area = qobject_cast<QScrollArea*>(around)) {
            area->viewport()->installEventFilter(this);
            return area->viewport()->width();
        }
    }
    return as_wide_as_wanted; // not in its place yet
}

// Labels of strips that have a choice share a column, and so do their first, second and third buttons, as long as there
// is room for that; without it each strip is as wide as its own words. A strip without one is a note: it takes the
// whole line, dimmed, and none if it has no words.
void OptionPanel::align(Stack& strips, const std::vector<Guest>& guests)
{
    for (const Guest& guest : guests) {
        Strip& home = strips[guest.sign->visible() ? guest.first : guest.second];
        Strip& other = strips[guest.sign->visible() ? guest.second : guest.first];
        if (home.box == guest.box)
            continue;
        other.box = nullptr;
        home.box = guest.box;
        row_of(home.line)->insertWidget(row_of(home.line)->count() - 1, guest.box); // before the stretch
    }

    int label_width = 0;
    int box_width = 0;
    int longest = 0; // of what stands behind a label
    std::array<int, most_buttons> widths{};
    for (const Strip& strip : strips) {
        const bool hidden = strip.label->isHidden() || (strip.frame != nullptr && !strip.frame->visible());
        if (hidden || !has_choice(strip.buttons, strip.box))
            continue;
        label_width = std::max(label_width, strip.label->fontMetrics().size(0, strip.label->text()).width());
        const int box = is_shown(strip.box) ? gap + strip.box->sizeHint().width() : 0;
        box_width = std::max(box_width, box);
        int length = box;
        for (std::size_t i = 0; i < strip.buttons.size(); ++i) {
            if (!is_shown(strip.buttons[i]))
                continue;
            const int width = gap + strip.buttons[i]->sizeHint().width();
            widths[i] = std::max(widths[i], width);
            length += width;
        }
        longest = std::max(longest, length);
    }
    const int room = room_for(strips);
    if (std::accumulate(widths.begin(), widths.end(), label_width + box_width) > room)
        widths = {};
    if (label_width + longest > room)
        label_width = 0;
    for (const Strip& strip : strips) {
        const bool note = !has_choice(strip.buttons, strip.box);
        dim(*strip.label, note);
        hold_to(*strip.label, note ? 0 : label_width);
        for (std::size_t i = 0; i < strip.buttons.size(); ++i)
            strip.buttons[i]->setMinimumWidth(note ? 0 : std::max(widths[i] - gap, 0));
        if (strip.frame != nullptr)
            strip.line->setVisible(strip.frame->visible() && !(note && strip.label->text().isEmpty()));
    }
}

bool OptionPanel::eventFilter(QObject* watched, QEvent* event)
{
    // A caption has changed or a choice has come or gone: all of it is put in line once.
    // The place has another width: likewise.
    if (event->type() == QEvent::LayoutRequest || event->type() == QEvent::Resize)
        align_timer_.start(0);
    return QObject::eventFilter(watched, event);
}

} // namespace vrk
