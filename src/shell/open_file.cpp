#include "shell/open_file.h"

#include "form/main_form.h"

#include "image/load.h"
#include "image/load_messages.h"
#include "image/project_read.h"
#include "image/range_messages.h"
#include "platform/text_number.h"
#include "shell/buffer_view.h"
#include "shell/event_service.h"
#include "shell/kept_settings.h"
#include "shell/messages.h"
#include "shell/recent.h"
#include "shell/screen_report.h"
#include "shell/serial_numbers.h"

namespace vrk {

namespace {

struct FileRole {
    const char* stored_path; // key in section Settings
    const char* dialog_title;
};
constexpr FileRole roles[] = {
    // by BufferKind
    {"FilePath", "Open file ( *.hex or *.bin )"},
    {"DataFilePath", "Open Data file ( *.hex or *.bin )"},
};
constexpr const char* file_filter = "(*.hex, *.bin)|*.hex;*.bin|(*.bin)|*.bin|(*.hex)|*.hex|All Files (*.*)|*.*";
constexpr const char* section = "Settings";

//                               Chinese                                   English
constexpr Text numbers_off = {"打开文件后自动增量已关闭，需要时请重新启用。",
    "Opening a file has switched the automatic increment off. Switch it on again where it is wanted."};
constexpr Text not_loaded_again = {
    "文件未能重新加载，未下载。", "The file could not be loaded again. Nothing was programmed."};

// How a file is brought in. HEX files in the field may lack their end record; where one is brought in again it is
// wanted, since a linker may be at work on it.
struct Manner {
    bool end_record_wanted = false;
    Asker asker = Asker::hand;
};

// False: the user has been told why the file is of no use.
bool is_usable(const ImageFile& file, Boxes& boxes)
{
    const std::optional<Line> why = fault_text(file);
    if (why)
        boxes.show_box(*why, file.fault == FileFault::not_found ? "" : file.path);
    return !why;
}

const FileRole& role_of(BufferKind kind) { return roles[index_of(kind)]; }

std::string stored_path(Shell& shell, BufferKind kind)
{
    return shell.platform.settings.get(section, role_of(kind).stored_path, shell.loader.application_dir);
}

void keep_path(Shell& shell, BufferKind kind, const std::string& path)
{
    shell.platform.settings.set(section, role_of(kind).stored_path, path);
    keep_settings(shell);
}

std::string path_caption(const BufferControls& controls, const std::string& path)
{
    return std::string{controls.path_caption} + path;
}

void show_path(Shell& shell, BufferKind kind, const std::string& path)
{
    const BufferControls controls = controls_of(shell, kind);
    shell.loader.current_path = path;
    controls.path_frame.set_caption(path_caption(controls, path));
}

void tell_end(Shell& shell, LoadEnd end, const std::string& path, Asker asker)
{
    const Text* const reason = end_text(end);
    if (reason == nullptr)
        return;
    if (asker == Asker::watch)
        return append_message(shell, *reason); // nobody stands by to press a button
    ScreenReport screen{shell};
    Boxes& boxes = screen;
    if (end == LoadEnd::unreadable)
        return boxes.show_box(*reason);
    boxes.show_box(*reason, path);
}

// The one place where a load becomes what the program holds and shows.
void take_over(Shell& shell, Loaded& loaded, FileBuffer& buffer)
{
    buffer = std::move(loaded.buffer);
    forget_edits(shell, buffer.kind);
    shell.file_loaded = true;
    if (buffer.kind == BufferKind::code)
        shell.loader.code_is_project = false;
    stop_stamping(shell); // one that was switched on meanwhile stamped the image that is gone now
    const BufferControls controls = controls_of(shell, buffer.kind);
    (loaded.checksum_beside_code ? shell.form.txtFileCheckSum : controls.checksum).set_text(loaded.checksum);
    show_from(shell, buffer, buffer.low); // where a program begins, and an eye looks first
    show_effective_lengths(shell);
}

// Under the boxes and in a long file events are served: a timer or the user may clear the buffer or load another file.
// That later act stands, and the rest of this load is dropped without a word.
LoadEnd load_into(Shell& shell, ImageFile& file, FileBuffer& buffer, const Manner& manner)
{
    const std::uint32_t& acts = shell.loader.acts[index_of(buffer.kind)];
    const std::uint32_t this_act = ++shell.loader.acts[index_of(buffer.kind)];
    const std::int32_t shown_ap_last = hex_address_4(shell.form.LabISP_reange[1].caption());
    const LoadTerms terms{shell.selected, shown_ap_last, shell.file_loaded, manner.end_record_wanted};
    if (!load_adds(buffer, terms.file_open))
        shell.file_loaded = false; // what stands in the buffer until this load is done is not to be downloaded

    ScreenReport boxes{shell};
    EventService events{shell.platform.loop};
    const auto still_wanted = [&] {
        events.serve_if_late();
        return acts == this_act;
    };
    Loaded loaded = load_image(buffer, file, terms, boxes, still_wanted);
    if (loaded.end == LoadEnd::refused) {
        stop_stamping(shell);
        clear_buffer(shell, 0, buffer);
        shell.file_loaded = false;
    } else if (loaded.end != LoadEnd::done && loaded.end != LoadEnd::overtaken) {
        shell.file_loaded = terms.file_open; // what was there is still there
    }
    if (buffer.kind == BufferKind::code && (loaded.end == LoadEnd::done || loaded.end == LoadEnd::refused))
        shell.loader.code_path = file.path; // the buffer is as it is for this file
    tell_end(shell, loaded.end, file.path, manner.asker);
    if (loaded.end != LoadEnd::done)
        return loaded.end;
    take_over(shell, loaded, buffer);
    if (buffer.kind == BufferKind::code) {
        shell.loader.reload_watch_path = file.path;
        shell.loader.reload_watch_stamp = file.stamp;
    }
    for (const RangeReport& report : loaded.reports) {
        if (acts != this_act)
            return LoadEnd::overtaken;
        boxes.show_box(range_message(report, file.kind), range_title(report, file.kind));
    }
    return LoadEnd::done;
}

bool load(Shell& shell, const std::string& path, FileBuffer& buffer, const Manner& manner)
{
    if (trimmed(path).empty())
        return false;
    read_load_parameters(shell, buffer);
    if (!start_address_fits(buffer.start, buffer.kind, shell.selected)) {
        show_box(shell, in_language(shell, start_refused(buffer.kind)));
        return false;
    }
    ImageFile file = open_image_file(path, buffer.data.size());
    ScreenReport boxes{shell};
    if (!is_usable(file, boxes))
        return false;
    shell.platform.dialogs.set_busy(true);
    const LoadEnd end = load_into(shell, file, buffer, manner);
    shell.platform.dialogs.set_busy(false);
    // A load that another one has overtaken has brought what that one did.
    return (end == LoadEnd::done || end == LoadEnd::overtaken) && buffer.loaded;
}

} // namespace

// The file that was chosen in the buffer's dialog, whose path stands over the buffer already. Where it brings nothing
// in, what stood there before stands there again: nobody is to take the old image for the new file. A buffer that was
// cleared meanwhile has no path, and another load its own.
Chosen load_chosen(Shell& shell, const std::string& path, FileBuffer& buffer, const std::string& caption_before)
{
    if (names_project(path))
        return Chosen::project;
    const bool had_numbers = numbers_in_use(shell).any();
    const BufferControls controls = controls_of(shell, buffer.kind);
    if (load_file(shell, path, buffer))
        note_recent(shell, Recent::file, path);
    else if (controls.path_frame.caption() == path_caption(controls, path))
        controls.path_frame.set_caption(caption_before);
    if (had_numbers && !numbers_in_use(shell).any())
        append_message(shell, numbers_off);
    return Chosen::file;
}

Chosen comLoadFile_Click(Shell& shell)
{
    const std::string caption_before = shell.form.Frame7.caption();
    const std::string path = choose_file(shell, BufferKind::code);
    if (path.empty()) {
        keep_path(shell, BufferKind::code, shell.loader.application_dir);
        return Chosen::nothing;
    }
    return load_chosen(shell, path, shell.code_buffer, caption_before);
}

Chosen comLoadDataFile_Click(Shell& shell)
{
    const std::string caption_before = shell.form.frmDataFlash.caption();
    const std::string path = choose_file(shell, BufferKind::data);
    if (path.empty())
        return Chosen::nothing;
    return load_chosen(shell, path, shell.data_buffer, caption_before);
}

std::string choose_file(Shell& shell, BufferKind kind)
{
    const std::string last = stored_path(shell, kind);
    FileDialog dialog;
    dialog.title = role_of(kind).dialog_title;
    dialog.filter = file_filter;
    dialog.must_exist = true;
    dialog.initial_dir = last;
    if (is_file(last) && last.back() != '\\')
        dialog.file_name = last;

    const auto path = choose_path(shell, dialog);
    if (!path || path->empty())
        return {};
    take_path(shell, kind, *path);
    return *path;
}

void take_path(Shell& shell, BufferKind kind, const std::string& path)
{
    show_path(shell, kind, path);
    keep_path(shell, kind, path);
}

void read_load_parameters(Shell& shell, FileBuffer& buffer)
{
    const BufferControls controls = controls_of(shell, buffer.kind);
    buffer.start = signed_hex_number(controls.start.text());
    buffer.clear_first = controls.clear_first.value();
}

bool load_file(Shell& shell, const std::string& path, FileBuffer& buffer) { return load(shell, path, buffer, {}); }

bool reload_code_file(Shell& shell, Asker asker)
{
    if (shell.loader.code_is_project || shell.loader.code_path.empty())
        return true; // what the project holds is in the buffer
    const FileBuffer before = shell.code_buffer;
    const bool was_edited = shell.loader.edited[index_of(before.kind)];
    const NumbersInUse numbers = numbers_in_use(shell);
    const std::string path = shell.loader.code_path; // a copy: the load may serve events
    if (load(shell, path, shell.code_buffer, {true, asker}) && put_numbers_back(shell, numbers))
        return true;
    append_message(shell, not_loaded_again);
    shell.code_buffer = before;
    shell.loader.edited[index_of(before.kind)] = was_edited;
    shell.file_loaded = true;
    keep_numbers(shell, numbers);
    update_view(shell, shell.code_buffer);
    shell.form.txtFileCheckSum.set_text(checksum_text(before.checksum));
    show_path(shell, BufferKind::code, path);
    show_effective_lengths(shell);
    return false;
}

} // namespace vrk
