#include "catalog/families.h"

namespace vrk {

const Family* family_of_series(int series)
{
    const bool known = series >= 0 && static_cast<std::size_t>(series) < families_by_series.size();
    return known ? families_by_series[static_cast<std::size_t>(series)] : nullptr;
}

} // namespace vrk
