// Where the window stands, in units of which 15 make a pixel. Held by MainForm as `window`: read from the settings at
// start, kept up by the window while it is moved and sized.
#pragma once

#include <algorithm>

namespace vrk {

struct WindowPlace {
    static constexpr float units_per_pixel = 15;
    static constexpr float standard_width = 12000;
    static constexpr float standard_height = 9045;

    float left = 0; // may lie off the screen
    float top = 0;
    float width = standard_width;
    float height = standard_height;
    float frame24_width = 2000; // right pane of the terminal, beside the splitter
    float debug_width = 6300; // fraDebug: what the steps leave of a window of standard width
};

// The right pane keeps 300 units and leaves the left one 100, where there is room for both.
constexpr float splitter_held(float wanted, const WindowPlace& place)
{
    constexpr float narrowest = 300;
    constexpr float margin = 100;
    return std::max(narrowest, std::min(wanted, place.debug_width - margin));
}

} // namespace vrk
