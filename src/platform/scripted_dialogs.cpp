#include "platform/scripted_dialogs.h"

namespace vrk {

Reply ScriptedDialogs::show(const MessageBox& box)
{
    Reply reply = box.default_reply;
    if (!replies.empty()) {
        reply = replies.front();
        replies.pop_front();
    }
    shown.push_back({box, reply});
    return reply;
}

std::optional<std::string> ScriptedDialogs::choose(const FileDialog& dialog)
{
    asked.push_back(dialog);
    if (choices.empty())
        return std::nullopt;
    const auto choice = choices.front();
    choices.pop_front();
    return choice;
}

} // namespace vrk
