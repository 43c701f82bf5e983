// The whole load of a file, on values: what the file brings into an image, and what the selected model can take of it.
// Nothing outside is touched: who asked for the load takes its result over, or leaves it.
#pragma once

#include "catalog/mcu_record.h"
#include "image/file_buffer.h"
#include "image/hex_loader.h"
#include "image/image_file.h"
#include "image/range_rules.h"
#include "report/report.h"

#include <cstdint>
#include <string>
#include <vector>

namespace vrk {

// The address at which a load begins: four digits from 8000 up come out negative, and get their 0x10000 back.
std::int32_t load_base(std::int32_t start);
// False: `start`, as it came out, lies past the device.
bool start_address_fits(std::int32_t start, BufferKind kind, const McuRecord& model);
const Text& start_refused(BufferKind kind); // what the user is told then

// A load adds to what earlier loads left if a file is open, in whichever buffer, and the clear box is off; otherwise it
// replaces it.
bool load_adds(const FileBuffer& buffer, bool file_open);

struct LoadTerms {
    McuRecord model; // the selected one
    std::int32_t shown_ap_last; // as in RangeQuestion
    bool file_open; // a file was open before
    bool end_record_wanted = false; // a HEX file without one may still be being written
};

struct Loaded {
    LoadEnd end;
    // From here on only of a load that is done.
    FileBuffer buffer; // with the file in it
    std::vector<RangeReport> reports; // what the rules of the model have found, one box each
    std::string checksum; // as it is shown
    bool checksum_beside_code = false; // the older families have one image, and one box for its checksum
};

// `buffer` is a copy with `start` and `clear_first` of this load. The boxes are those about wrong checksums. The model
// is the one of the beginning, whatever is selected meanwhile. `file` has no fault; its text is read once.
Loaded load_image(
    FileBuffer buffer, ImageFile& file, const LoadTerms& terms, Boxes& boxes, const StillWanted& still_wanted);

// Seven digits; of larger sums the last seven. Then "H", and blanks that keep it clear of the box's edge.
std::string checksum_text(std::int32_t checksum);

} // namespace vrk
