// The two images that a download writes, and the plan of one download.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vrk {

struct FileBuffer {
    static constexpr std::int32_t code_last = 0x12000; // highest address of the code buffer
    static constexpr std::int32_t data_last = 0x10000; // and of the EEPROM buffer

    FileBuffer(std::string_view its_name, std::int32_t last)
        : name(its_name)
        , data(static_cast<std::size_t>(last) + 1, std::uint8_t{0})
    {
    }

    std::string name; // "AP_FILE" or "Data_File"
    std::int32_t low = 0; // first address that the last load wrote
    std::int32_t high = 1023; // effective last address; high + 1 is the effective length
    std::int32_t first = 0; // from which the board image and the programmer read
    std::int32_t view_low = 0; // lowest address of all merged loads
    std::int32_t view_high = 1023;
    std::vector<std::uint8_t> data; // the image; index is the address
    std::int32_t checksum = 0; // sum of the bytes of the last load
    std::int32_t start = 0; // taken from the control when a load begins
    bool clear_first = false; // state of the clear check box when a load begins
    bool loaded = false; // a load has finished
    std::uint32_t changes = 0; // counts clears and loads: a load that serves events sees that a later act overtook it
    int view_lines = 20; // lines of the dump that fit; the window keeps it up to date

    std::int32_t last() const { return static_cast<std::int32_t>(data.size()) - 1; }
};

struct DownloadPlan {
    std::string name; // empty: no plan
    std::int32_t ap_from = 0;
    std::int32_t ap_to = 0;
    std::int32_t file_from = 0;
    std::int32_t file_to = 0;
    std::int32_t data_from = 0;
    std::int32_t data_to = 0;
    std::int32_t erase_from = 0;
    std::int32_t erase_to = 0;
    std::int32_t spill_from = 0; // the part of the file that lies in the data flash
    std::int32_t spill_to = 0;
    bool spill = false; // the file reaches past the application area
    std::int32_t rest_from = 0; // the part of the data flash that the file leaves alone
    std::int32_t rest_to = 0;
    bool erase_by_firmware = false;
};

// What the file loader keeps between loads. Held by Shell as `loader`.
struct LoaderState {
    std::string application_dir; // where the program lies: what the stored paths begin with. Set by the program
    std::string documents_dir; // of the user: for what cannot be written beside the program. Set by the program
    bool code_is_project = false; // the code buffer came with a project: no file may be loaded over it unasked
    std::string current_path; // the last file chosen in any dialog, whichever buffer it went to
    std::string reload_watch_path; // what Timer12 watches
    std::string reload_watch_stamp; // last modification time seen
};

} // namespace vrk
