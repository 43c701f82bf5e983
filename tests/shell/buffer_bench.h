// A shell with a selected model and no window: what the tests of the buffers and files at the form work on.
#pragma once

#include "catalog/isp_start.h"
#include "catalog/ranges.h"
#include "catalog/rows.h"
#include "form/named_controls.h"
#include "image/bench.h"
#include "platform/scripted_dialogs.h"
#include "platform/text_number.h"
#include "shell/buffer_view.h"
#include "shell/shell.h"
#include "sim/virtual_loop.h"

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

namespace buffer_test {

using image_test::catalogue;
using image_test::end_line;
using image_test::fixture;
using image_test::hex_line;
using image_test::model;

struct NoPorts final : vrk::PortDriver {
    std::vector<vrk::PortInfo> list() override { return {}; }
    std::unique_ptr<vrk::SerialPort> make(const std::string&) override { return nullptr; }
};

// The loop that a test wants, and all else that stands outside the program.
template <typename Loop> struct BenchOn {
    explicit BenchOn(std::string_view model_name)
    {
        std::filesystem::create_directories(folder);
        shell.loader.application_dir = folder;
        select(model_name);
        vrk::clear_buffer(shell, 0, shell.code_buffer);
        vrk::clear_buffer(shell, 0, shell.data_buffer);
    }
    ~BenchOn()
    {
        std::error_code fault;
        std::filesystem::remove_all(folder, fault);
    }
    BenchOn(const BenchOn&) = delete;
    BenchOn& operator=(const BenchOn&) = delete;

    void select(std::string_view name)
    {
        shell.selected = model(name);
        form.label("LabISP_reange", 1)
            .set_caption(vrk::four_hex_digits(vrk::derive_isp_start(shell.selected).shown_last));
    }

    std::string file(std::string_view name, std::string_view contents) const
    {
        const std::string path = folder + "/" + std::string{name};
        std::ofstream{path, std::ios::binary} << contents;
        return path;
    }

    const std::string& box_text(std::size_t n) { return dialogs.shown.at(n).box.text; }
    const std::string& box_title(std::size_t n) { return dialogs.shown.at(n).box.title; }

    const std::string folder = vrk::own_folder("shell");
    Loop loop;
    NoPorts ports;
    vrk::ScriptedDialogs dialogs;
    vrk::MemoryStore settings;
    vrk::Shell shell{vrk::Platform{loop, ports, dialogs, settings}};
    vrk::NamedControls form{shell.controls};
    vrk::FileBuffer& code = shell.code_buffer;
    vrk::FileBuffer& data = shell.data_buffer;
};
using Bench = BenchOn<sim::VirtualLoop>;

} // namespace buffer_test
