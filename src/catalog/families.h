// All families of the catalogue, and what the device tree calls them.
#pragma once

#include "catalog/family.h"

#include <array>

namespace vrk {

extern const Family alder; // families/alder.cpp, and so on
extern const Family aspen;
extern const Family birch;
extern const Family cedar;
extern const Family elm;
extern const Family elm_unreleased; // the rows of Elm when unreleased models are shown
extern const Family fir;
extern const Family hazel;
extern const Family juniper;
extern const Family larch;
extern const Family maple;
extern const Family oak;
extern const Family pine;
extern const Family rowan;
extern const Family spruce;
extern const Family poplar;
extern const Family holly;
extern const Family willow;
extern const Family teak;

// By series. Series 14 is reserved.
inline constexpr std::array families_by_series = {
    &alder,
    &aspen,
    &birch,
    &cedar,
    &elm,
    &fir,
    &hazel,
    &juniper,
    &larch,
    &maple,
    &oak,
    &pine,
    &rowan,
    &spruce,
    static_cast<const Family*>(nullptr),
    &poplar,
    &holly,
    &willow,
    &teak,
};

const Family* family_of_series(int series); // null where there is none

} // namespace vrk
