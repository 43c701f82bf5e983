// The strips of the option panel: a line each, a label and its choices. The upper stack stands in step 4, the lower one
// on the first page of the tool tabs, with the pins behind it.
#pragma once

#include "window/binder.h"

#include <QVBoxLayout>

#include <span>
#include <vector>

namespace vrk {

class OptionPanel final : public QObject {
public:
    explicit OptionPanel(Binder& binder);

    void fill_upper(QVBoxLayout* stack);
    void fill_lower(QVBoxLayout* stack);

private:
    struct Strip {
        const Frame* frame; // hides it; null: nothing does
        QWidget* line;
        QLabel* label;
        std::vector<QWidget*> buttons;
        QWidget* box = nullptr; // behind the buttons
    };
    // A box that stands in one strip or another, as the page has it.
    struct Guest {
        QWidget* box;
        const Control* sign; // shown: it stands in the first strip
        std::size_t first, second; // of one stack
    };
    using Stack = std::vector<Strip>;

    Strip make_strip(const Frame* frame, Label& label, std::span<OptionButton> buttons, ComboBox* box);
    void add_options(QVBoxLayout* stack, Stack& strips, std::size_t first, std::size_t end);
    int room_for(const Stack& strips);
    void align(Stack& strips, const std::vector<Guest>& guests);
    bool eventFilter(QObject* watched, QEvent* event) override;

    Binder& binder_;
    Shell& shell_;
    Stack upper_;
    Stack lower_;
    std::vector<Guest> upper_guests_;
    std::vector<Guest> lower_guests_;
    QTimer align_timer_;
};

} // namespace vrk
