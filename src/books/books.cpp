#include "books/books.h"

#include <algorithm>
#include <iterator>

namespace vrk {

namespace {

using Kind = BooksFault::Kind;

// clang-format off
struct FaultText { Kind kind; Text text; };
constexpr FaultText fault_texts[] = { // behind each stands where, then the reason
    { Kind::unreachable, { "无法打开台账: ",                "The ledger cannot be opened: " } },
    { Kind::gone,        { "台账已不在原处, 请放回原处: ",  "The ledger is not there any more; put it back: " } },
    { Kind::read_only,   { "台账只能读, 不能写: ",          "The ledger can be read and not written: " } },
    { Kind::full,        { "磁盘已满, 台账无法写入: ",      "The disk is full, the ledger cannot be written: " } },
    { Kind::busy,        { "台账正被其它程序占用: ",        "Another program holds the ledger: " } },
    { Kind::newer,       { "台账由更新版本的软件建立: ",    "The ledger was made by a later version of this program: " } },
    { Kind::no_ledger,   { "该文件不是台账或已损坏: ",      "This is no ledger, or it is damaged: " } },
    { Kind::refused,     { "台账出错: ",                    "The ledger refuses: " } },
    { Kind::other_rule,  { "该订单的编号规则与此不同: ",    "The numbers of this order count in another way: " } },
    { Kind::used_up,     { "该订单的编号已用完: ",          "The numbers of this order are used up: " } },
    { Kind::lost,        { "编号已被他人处理, 请核对: ",    "Somebody else has settled this number; look at both chips: " } },
    { Kind::not_unsure,  { "该编号不是待定状态: ",          "This number is not open to be settled: " } },
};

struct StateWord { NumberState state; std::string_view word; };
constexpr StateWord state_words[] = {
    { NumberState::free,     "free" },
    { NumberState::reserved, "reserved" },
    { NumberState::at_work,  "at-work" },
    { NumberState::unsure,   "unsure" },
    { NumberState::spent,    "spent" },
};
// clang-format on

} // namespace

Line fault_text(const BooksFault& fault)
{
    const auto* row = std::ranges::find(fault_texts, fault.kind, &FaultText::kind);
    const std::string reason = fault.reason.empty() ? "" : " (" + fault.reason + ")";
    return (Line{row->text} + fault.where + reason).as(Tone::bad);
}

std::string_view word_of(NumberState state) { return std::ranges::find(state_words, state, &StateWord::state)->word; }

std::optional<NumberState> number_state(std::string_view word)
{
    const auto* row = std::ranges::find(state_words, word, &StateWord::word);
    return row == std::end(state_words) ? std::nullopt : std::optional{row->state};
}

} // namespace vrk
