// The bench with a place of its own on the disk, and the words of a project's story.
#pragma once

#include "bench.h"

#include "image/project_format.h"
#include "image/project_keys.h"
#include "options/codec.h"
#include "shell/project.h"
#include "shell/project_file.h"
#include "shell/project_values.h"
#include "shell/row_control.h"

#include <filesystem>
#include <map>
#include <set>
#include <span>

namespace vrk {

struct ProjectBench : Bench {
    explicit ProjectBench(const char* model = "Juniper-60Q", bool english = true)
        : Bench("Hazel-1", english)
    {
        std::filesystem::create_directories(folder);
        shell.loader.application_dir = folder;
        select(model);
        dialogs.shown.clear();
    }
    ~ProjectBench()
    {
        std::error_code fault;
        std::filesystem::remove_all(folder, fault);
    }

    const std::string folder = ::testing::TempDir() + "vrk_project_" + std::to_string(getpid());
    const std::string path = folder + "/job.VRK";

    void save() { save_project(shell, path); }
    void open() { open_project(shell, path); }
    // Opens a text as a project file of its own.
    void open_text(std::string_view text)
    {
        write(path, text);
        open();
    }
    static void write(const std::string& to, std::string_view text) { std::ofstream{to, std::ios::binary} << text; }
    static std::string contents(const std::string& of)
    {
        std::ifstream file{of, std::ios::binary};
        return {std::istreambuf_iterator<char>{file}, {}};
    }
    std::string saved() const { return contents(path); }

    Control& control(std::string_view full_name) { return *shell.controls.find_full(full_name); }
    bool chosen(std::string_view full_name) { return dynamic_cast<OptionButton&>(control(full_name)).value(); }

    // An image as if it had been loaded, whatever the model has room for.
    void put(FileBuffer& buffer, const std::vector<std::uint8_t>& bytes)
    {
        std::copy(bytes.begin(), bytes.end(), buffer.data.begin());
        buffer.high = static_cast<std::int32_t>(bytes.size()) - 1;
        buffer.view_high = buffer.high;
        buffer.loaded = true;
        shell.file_loaded = true;
    }

    // Of the next box, which must be there.
    std::string next_box()
    {
        if (boxes_read >= dialogs.shown.size())
            return "(no box)";
        return dialogs.shown[boxes_read++].box.text;
    }
    bool no_more_boxes() const { return boxes_read == dialogs.shown.size(); }
    std::size_t boxes_read = 0;

    // Everything that a project keeps, and some more that it must leave alone, as text. The labels of the panel go by
    // the models that were selected one after the other, the menu by the projects that were opened.
    std::map<std::string, std::string> state()
    {
        std::map<std::string, std::string> all;
        for (const Control* one : shell.controls.all()) {
            const std::string property = dynamic_cast<const CaptionControl*>(one) != nullptr ? "Caption" : "Text";
            all[one->full_name()] = std::string{trimmed(read_property(*one, property))};
            all[one->full_name() + ".Value"] = read_property(*one, "Value");
        }
        for (const char* shown_only :
            {"txtBuffer", "txtBuffer2", "txtDataFlash1", "tetDataFlash2", "textMsg", "texBatchFileName", "Label2(6)"})
            all.erase(shown_only);
        std::erase_if(all,
            [](const auto& one) { return one.first.starts_with("LabOption") || one.first.starts_with("mnuRecent"); });
        return all;
    }

    // "name: was, is", a line each.
    std::string changes_since(const std::map<std::string, std::string>& before)
    {
        std::string changes;
        for (const auto& [name, text] : state()) {
            if (text != before.at(name))
                changes += name + ": '" + before.at(name) + "', '" + text + "'\n";
        }
        return changes;
    }

    // Every pair of the panel the other way round.
    void turn_all_options()
    {
        for (int strip = 0; strip <= 13; ++strip) {
            const std::string name = "Option" + std::to_string(strip);
            auto& first = dynamic_cast<OptionButton&>(*shell.controls.find(name, 0));
            auto& second = dynamic_cast<OptionButton&>(*shell.controls.find(name, 1));
            if (first.value() || second.value()) // else no strip of this model
                (first.value() ? second : first).set_value(true);
        }
        form.list("comWDT_Prescalar", 0).set_text("16");
        form.list("comWDT_Prescalar", 1).set_text("8192");
    }
    void fill_in_numbers()
    {
        const char* code_fields[] = {"01FF", "4", "0123", "7"};
        const char* data_fields[] = {"0010", "6", "000999", "3"};
        for (std::size_t i = 0; i < 4; ++i) {
            form.text_box("texAuto_Increase", i).set_text(code_fields[i]);
            form.text_box("texData_Auto_Increase", i).set_text(data_fields[i]);
        }
        form.option("optAuto_Increase", 1).set_value(true);
        form.option("optData_Auto_Increase", 2).set_value(true);
    }
    // Another job altogether.
    void change_everything()
    {
        set_locked(shell, false);
        select(shell.selected.mcu_name == "Oak-32" ? "Birch-4" : "Oak-32");
        put(shell.code_buffer, pattern(700, 9));
        for (std::size_t i = 0; i < 4; ++i) {
            form.text_box("texAuto_Increase", i).set_text("1");
            form.text_box("texData_Auto_Increase", i).set_text("2");
        }
        form.option("optAuto_Increase", 0).set_value(true);
        form.option("optData_Auto_Increase", 0).set_value(true);
    }
};

} // namespace vrk
