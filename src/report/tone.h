// How a line of the report is meant: whoever shows it lets good and bad stand out, and what is only advice stand back.
#pragma once

namespace vrk {

enum class Tone {
    plain,
    good, // a chip, or what was asked for, is done
    bad, // it is not
    advice, // what to look at or to try; nothing has failed yet, or what failed has been said
};

} // namespace vrk
