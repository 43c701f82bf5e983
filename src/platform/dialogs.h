// What the program asks and tells outside its window: message boxes, file dialogs, the beep, the busy pointer, the
// clipboard.
#pragma once

#include <optional>
#include <string>

namespace vrk {

enum class Buttons { ok, ok_cancel, yes_no };
enum class Reply { ok, cancel, yes, no };
enum class BoxIcon { information, question, warning, error };

struct MessageBox {
    std::string title;
    std::string text;
    BoxIcon icon = BoxIcon::information;
    Buttons buttons = Buttons::ok;
    Reply default_reply = Reply::ok; // the button that Enter presses
};

struct FileDialog {
    enum class Kind { open, save };
    Kind kind = Kind::open;
    std::string title;
    std::string filter; // "caption|patterns|caption|patterns", patterns parted by ';'
    std::string initial_dir;
    std::string file_name; // proposed; may be empty
    bool must_exist = false;
    bool devices = false; // are shown too
};

// All calls return when the user has answered; the event loop goes on meanwhile.
class Dialogs {
public:
    virtual ~Dialogs() = default;
    virtual Reply show(const MessageBox& box) = 0;
    virtual std::optional<std::string> choose(const FileDialog& dialog) = 0; // nothing: cancelled
    virtual void beep() = 0; // starts one short sound and returns
    virtual void set_busy(bool busy) = 0; // hourglass pointer
    virtual void copy_text(const std::string& text) = 0; // for other programs to paste
};

} // namespace vrk
