// Step 4 without a panel: what can be chosen for a model, and what is chosen. The defaults are those of a panel that a
// hand has chosen the model in, on stored settings that nobody has changed.
#pragma once

#include "options/codec.h"
#include "options/option_pages.h"

#include "catalog/mcu_record.h"
#include "report/text.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vrk {

// One option as it is offered, by its words.
struct OfferedOption {
    std::string name; // "clock-source"
    std::vector<std::string> choices; // none: a number in a range, which `label` tells
    std::string chosen;
    Text label; // as the panel has it
};

class OptionSheet {
public:
    OptionSheet(const McuRecord& record, bool english);

    std::vector<OfferedOption> offered() const; // in the order of the panel; none where the options are fixed

    // Chooses by words, with what the choice brings along. A Line: there is no such option or choice, and what is near;
    // nothing has changed then.
    std::optional<Line> choose(std::string_view name, std::string_view choice);
    // By the key and the value of a project, which has been saved with what belongs together: nothing else changes. A
    // key that the model has no use for and a value that cannot be are passed over.
    void take_stored(std::string_view key, const std::string& value);

    OptionChoices choices() const;
    // The words that lead from this sheet to what is wanted, name and choice. What has no words is left out.
    std::vector<std::pair<std::string, std::string>> turned(
        const OptionChoices& wanted, const std::optional<std::string>& pin, double target_mhz) const;
    std::optional<std::string> watchdog_pin() const; // that the boot loader feeds, as "P1.0"; nothing: none
    double rc_target_mhz() const;

private:
    // What is chosen from a list, or typed as a number.
    struct Field {
        std::string_view name;
        std::string_view key; // in a project; empty: not part of one
        Text label;
        std::vector<std::string> items; // none: a number from `least` to `most`
        std::string chosen;
        bool offered = true;
        double least = 0;
        double most = 0;
    };

    void mark(int row); // of the table: chosen, and the others of its group not
    int row_of(int strip, int button) const; // -1: no such choice
    bool is_chosen(int strip, int button) const;
    bool holds(const OptionChoices& wanted, int strip, int button) const;
    bool strip_has_words(const Strip& strip) const;
    const Field* field(std::string_view name) const;
    int place_in(std::string_view field_name) const; // of what is chosen in the items; -1: none
    std::optional<Line> choose_in(Field& field, std::string_view choice);

    McuRecord record_;
    OptionPage page_;
    OptionTable table_; // its snapshots are what is chosen
    std::vector<Strip> strips_;
    std::vector<Field> fields_;
};

// A mark in a project: "True" or "False", or a number that is 0 or not. Nothing: the text says neither.
std::optional<bool> checked_by(std::string_view text);
// The place of an item in a list, by its text or by its number from 0. Nothing: there is no such item.
std::optional<int> item_by(const std::vector<std::string>& items, std::string_view text);

} // namespace vrk
