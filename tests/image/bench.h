// What the tests of the images have in common: models, made-up files, boxes that are written down, and a load.
#pragma once

#include "catalog/isp_start.h"
#include "catalog/ranges.h"
#include "catalog/rows.h"
#include "image/load.h"
#include "own_folder.h"
#include "platform/text_number.h"

#include <deque>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace image_test {

inline const vrk::McuTable& catalogue()
{
    static const vrk::McuTable table = [] {
        vrk::McuTable filled;
        vrk::load_mcu_tables(filled, false);
        return filled;
    }();
    return table;
}

inline vrk::McuRecord model(std::string_view name)
{
    const auto found = vrk::locate_mcu_by_name(catalogue(), name);
    EXPECT_TRUE(found) << name << " is not in the catalogue";
    return found ? vrk::read_mcu_row(catalogue(), found->series, found->row) : vrk::McuRecord{};
}

// One line of Intel HEX with a right checksum.
inline std::string hex_line(int address, const std::vector<int>& bytes, int type = 0)
{
    std::string line = ":";
    int sum = 0;
    const auto add = [&](int byte) {
        line += vrk::hex_text(byte & 0xFF, 2);
        sum += byte;
    };
    add(static_cast<int>(bytes.size()));
    add(address >> 8);
    add(address & 0xFF);
    add(type);
    for (const int byte : bytes)
        add(byte);
    add(-sum);
    return line + "\n";
}
inline const std::string end_line = ":00000001FF\n";

inline std::string fixture(std::string_view name) { return std::string{TEST_DATA} + "/" + std::string{name}; }

struct Folder : vrk::OwnFolder {
    Folder()
        : OwnFolder("image")
    {
    }
};

// Boxes as they came, answered from a queue; No once it is empty.
struct WrittenBoxes final : vrk::Boxes {
    struct Box {
        vrk::Line text;
        vrk::Line title;
        bool is_question;
    };
    std::vector<Box> shown;
    std::deque<bool> answers;
    std::function<void()> act; // while a box is open

    void show_box(const vrk::Line& text, const vrk::Line& title) override { show({text, title, false}); }
    bool ask(const vrk::Line& question, const vrk::Line& title) override
    {
        show({question, title, true});
        if (answers.empty())
            return false;
        const bool yes = answers.front();
        answers.pop_front();
        return yes;
    }

private:
    void show(Box box)
    {
        shown.push_back(std::move(box));
        if (act)
            act();
    }
};

// A buffer, a selected model, and a hand that opens files one after the other. A load that is done is taken over.
struct LoadBench : Folder {
    explicit LoadBench(std::string_view model_name, vrk::BufferKind kind = vrk::BufferKind::code)
        : record(model(model_name))
        , buffer(kind)
    {
    }

    vrk::LoadEnd load(const std::string& file_path)
    {
        vrk::ImageFile file = vrk::open_image_file(file_path, buffer.data.size());
        const std::int32_t shown_ap_last = vrk::derive_isp_start(record).shown_last & 0xFFFF;
        vrk::Loaded loaded = vrk::load_image(
            buffer, file, {record, shown_ap_last, file_open, end_record_wanted}, boxes, [this] { return wanted(); });
        if (loaded.end == vrk::LoadEnd::done) {
            buffer = loaded.buffer;
            file_open = true;
            checksum = loaded.checksum;
            checksum_beside_code = loaded.checksum_beside_code;
            reports = loaded.reports;
        }
        return loaded.end;
    }

    vrk::McuRecord record;
    vrk::FileBuffer buffer;
    bool file_open = false;
    bool end_record_wanted = false;
    WrittenBoxes boxes;
    std::function<bool()> wanted = [] { return true; };

    // Of the last load that was done.
    std::string checksum;
    bool checksum_beside_code = false;
    std::vector<vrk::RangeReport> reports;
};

} // namespace image_test
