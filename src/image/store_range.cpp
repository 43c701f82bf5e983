#include "image/store_range.h"

#include <algorithm>
#include <iterator>

namespace vrk {

namespace {

constexpr std::int64_t highest_address = 0xFFFF;

// clang-format off
struct StoreText { StoreFault fault; Text text; };
constexpr StoreText store_texts[] = {
//    fault                           Chinese (both languages), English
    { StoreFault::start_too_small,  { "The start address is too small.\n      起始地址小于 0。",
                                      "The start address is too small." } },
    { StoreFault::start_too_big,    { "The start Address is too big.\n起始地址太大。",
                                      "The start Address is too big." } },
    { StoreFault::too_short,        { "The file size is too small.\n文件长度不能小于 0。",
                                      "The file size is too small." } },
    { StoreFault::too_long,         { "The file size is too big.\n文件长度太大。",
                                      "The file size is too big." } },
};
// clang-format on

} // namespace

StoreFault store_fault(std::int64_t start, std::int64_t length)
{
    if (start < 0)
        return StoreFault::start_too_small;
    if (start > highest_address)
        return StoreFault::start_too_big;
    if (length <= 0)
        return StoreFault::too_short;
    return start + length - 1 > highest_address ? StoreFault::too_long : StoreFault::none;
}

const Text& store_text(StoreFault fault)
{
    return std::find_if(std::begin(store_texts), std::end(store_texts) - 1, [fault](const StoreText& row) {
        return row.fault == fault;
    })->text;
}

} // namespace vrk
