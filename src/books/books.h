// The books of a line: which serial numbers of an order have been given out, and what became of each chip. This is what
// a station asks of them; where they are kept is the business of another room.
//
// A number is free or reserved for one chip; from the moment on when that chip may have been written it is at work;
// then spent, in a chip that is good, or free again. What was at work when its station died is unsure: nobody can know
// whether that chip holds it, so it is given to no other until somebody has looked and settled it.
#pragma once

#include "books/chip_record.h"

#include "image/auto_increase.h"
#include "report/text.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vrk {

// Why the books do not do what is asked. Nothing has changed in them then, but where Books says otherwise.
struct BooksFault {
    enum class Kind {
        unreachable, // no such server, no such folder, no driver
        gone, // there was a ledger in this place, and it is not there any more
        read_only,
        full, // the disk
        busy, // another program holds it longer than anybody should
        newer, // made by a later version of this program
        no_ledger, // something else stands there, or it is damaged
        refused, // anything else that the store refuses; the reason tells
        other_rule, // the order counts in another way than is asked
        used_up, // no number of this rule is left
        lost, // the number does not belong to this chip any more: somebody has settled it
        not_unsure, // what is to be settled is not open
    };
    Kind kind = Kind::refused;
    std::string where; // the file, the server or the order
    std::string reason; // in the store's own words; may be empty
};
Line fault_text(const BooksFault& fault);

template <typename Value> struct BooksAnswer {
    Value value{};
    std::optional<BooksFault> fault; // there: the value counts for nothing
};

// What a run of numbers is drawn by. Numbers in the code and in the EEPROM image of one order are two runs.
struct Order {
    std::string name;
    AutoIncrease rule; // its next_value begins an order that the books do not have yet; later the books know better
};

enum class NumberState { free, reserved, at_work, unsure, spent };
std::string_view word_of(NumberState state); // stable, for records and for those who read them by program
std::optional<NumberState> number_state(std::string_view word);

// A number in the hands of one chip.
struct GivenNumber {
    std::int64_t id = 0; // in the books
    std::string value; // decimal, padded to the width of its rule
    std::string token; // of this giving: the same number given to another chip has another
};

// How it ended for one chip.
struct ClosedChip {
    std::vector<GivenNumber> numbers;
    bool good = false; // the numbers are spent; else they go back
    std::optional<ChipRecord> record; // its key and its user are given by the books
};

// Where the end of a chip stands now.
struct EndKept {
    enum class Place { in_books, beside, nowhere };
    Place place = Place::in_books;
    std::optional<BooksFault> fault; // why not in the books; of one that does: its number was not the chip's any more
    std::string beside_reason; // why not beside them either, in the system's words
};

// A number that is not spent and not free, or any where all are asked for.
struct NumberRow {
    std::string order;
    BufferKind kind = BufferKind::code;
    std::string value;
    NumberState state = NumberState::free;
    std::string changed; // local time
    std::string station; // that had it last
};

// Empty fields ask for all. Times are compared as texts: "2025-03-09" begins that day.
struct ChipFilter {
    std::string from; // inclusive
    std::string to; // exclusive
    std::string result; // its word; "bad": all but good
    std::string model;
    std::string station;
    std::string order;
    std::string number; // decimal, padding does not count
    std::string factory_number;
    int at_most = 0; // of the newest; 0: all
};

struct HourTotal {
    std::string hour; // "2025-03-09 17"
    std::int64_t good = 0;
    std::int64_t bad = 0;
};

struct SettleWish {
    std::string order;
    BufferKind kind = BufferKind::code;
    std::string value; // decimal, padding does not count
    NumberState state = NumberState::spent; // or free
};

class Books {
public:
    virtual ~Books() = default;

    // Where they are kept, and the name of this place in them. No address: the user's own file. What was open before is
    // closed if it is another.
    virtual void keep_at(const std::string& address, const std::string& station) = 0;
    virtual std::string where() const = 0; // for people

    // Before each chip: the books can be written, and what had to be kept beside them has been taken in. Else no chip
    // may begin.
    virtual std::optional<BooksFault> open() = 0;

    // The number that the next reserve would give, if nobody came in between. Reserves nothing.
    virtual BooksAnswer<std::string> next_number(const Order& order) = 0;
    // One that came back goes before a new one, so that none is skipped. On the disk when this returns.
    virtual BooksAnswer<GivenNumber> reserve(const Order& order) = 0;
    // The chip is about to be erased. A fault: it must not be, the number may be another's.
    virtual std::optional<BooksFault> begin_work(std::span<const GivenNumber> numbers) = 0;
    // Numbers and record in one step, on the disk when this returns: in the books, else in a file beside them, which
    // the next `open` takes in.
    virtual EndKept end_chip(const ClosedChip& end) = 0;

    // Open numbers, those whose station has died as unsure; `all`: every number ever begun. No order: of all orders.
    virtual BooksAnswer<std::vector<NumberRow>> numbers(const std::string& order, bool all) = 0;
    // Somebody has looked at the chip. For unsure numbers, and for those that a station has which cannot be asked.
    virtual std::optional<BooksFault> settle(const SettleWish& wish) = 0;

    virtual BooksAnswer<std::vector<ChipRecord>> chips(const ChipFilter& filter) = 0; // oldest first
    virtual BooksAnswer<std::vector<HourTotal>> hours(const ChipFilter& filter) = 0;
    // The last good record of this very chip for the same images.
    virtual BooksAnswer<std::optional<ChipRecord>> earlier_good(const ChipRecord& chip) = 0;
};

} // namespace vrk
