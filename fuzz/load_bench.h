// A main object for the loaders, and the head that both of their inputs begin with:
//   0     model, low four bits; buffer, bit 4: 1 the EEPROM buffer; language, bit 5: 1 English; bit 6: the clear box;
//         bit 7: a file was loaded before
//   1     answers to the boxes, bits 0 to 3, from the first box on: 1 Yes; what else goes on while the first box
//         stands, bits 4 and 5: see Meanwhile; name of the file, bit 6: 1 without an ending
//   2..4  start address, as typed: high byte first, hexadecimal without zeros in front
//   5..   the file
#pragma once

#include "fuzz/target.h"

#include "form/named_controls.h"
#include "image/load.h"
#include "platform/scripted_dialogs.h"
#include "shell/shell.h"
#include "sim/virtual_loop.h"

#include <filesystem>

namespace fuzz {

enum class Meanwhile { nothing, buffer_cleared, loaded_anew, other_model };

class LoadBench {
public:
    // `named` is the file's name, `unnamed` the one it gets by bit 6. Takes the head off the input; the rest is the
    // file.
    LoadBench(Input& input, const char* named, const char* unnamed);
    ~LoadBench();
    LoadBench(const LoadBench&) = delete;
    LoadBench& operator=(const LoadBench&) = delete;

    // Loads the file as the program does, looks at every end of the dump and plans the download of it.
    bool load(Input file);
    // The same load on values alone, into an empty buffer, its boxes answered in the same way.
    vrk::Loaded load_on_values();
    // What must hold after any load, whatever was in it. Empty: all does.
    std::string complaint(bool loaded) const;

    Meanwhile meanwhile() const { return dialogs_.meanwhile; }
    bool fresh() const { return fresh_; } // nothing was loaded before
    vrk::Shell& shell() { return shell_; }
    vrk::FileBuffer& buffer() { return *buffer_; }
    const vrk::FileBuffer& buffer() const { return *buffer_; }
    std::size_t boxes() const { return dialogs_.answered; }

private:
    struct NoPorts final : vrk::PortDriver {
        std::vector<vrk::PortInfo> list() override { return {}; }
        std::unique_ptr<vrk::SerialPort> make(const std::string&) override { return nullptr; }
    };
    // Answers by the bits of one byte, and acts on the form while the first box stands.
    struct Hands final : vrk::Dialogs {
        std::uint8_t answers = 0;
        Meanwhile meanwhile = Meanwhile::nothing;
        std::size_t answered = 0;
        std::function<void()> act;

        vrk::Reply show(const vrk::MessageBox& box) override;
        std::optional<std::string> choose(const vrk::FileDialog&) override { return std::nullopt; }
        void beep() override { }
        void set_busy(bool) override { }
        void copy_text(const std::string&) override { }
    };

    void act_meanwhile();

    sim::VirtualLoop loop_;
    NoPorts ports_;
    Hands dialogs_;
    vrk::MemoryStore settings_;
    vrk::Shell shell_;
    const vrk::NamedControls form_{shell_.controls};
    vrk::FileBuffer* buffer_;
    bool fresh_ = true;
    std::filesystem::path folder_;
    std::string path_;
};

} // namespace fuzz
