// hand TITLE close|KEY...: what a hand does to a window from outside of its program. Waits until a window shows whose
// title fits the pattern, then asks it to close, as a window manager does, or presses the keys on it one after the
// other: y, F5, ctrl+o, alt+7. Ends with 1 where no such window comes.
#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/keysym.h>

#include <fnmatch.h>
#include <unistd.h>

#include <algorithm>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>

namespace {

constexpr int glances = 200;
constexpr unsigned between_glances_us = 100'000;
constexpr unsigned to_settle_us = 300'000; // the focus goes round by the program

std::string title_of(Display* display, Window window)
{
    XTextProperty title;
    if (XGetWMName(display, window, &title) == 0 || title.value == nullptr)
        return {};
    std::string text(reinterpret_cast<const char*>(title.value), title.nitems);
    XFree(title.value);
    return text;
}

std::optional<Window> shown_window(Display* display, const char* pattern)
{
    Window root = 0;
    Window parent = 0;
    Window* windows = nullptr;
    unsigned count = 0;
    if (XQueryTree(display, DefaultRootWindow(display), &root, &parent, &windows, &count) == 0)
        return std::nullopt;
    std::optional<Window> found;
    for (unsigned i = 0; i < count && !found; ++i) {
        XWindowAttributes attributes;
        if (XGetWindowAttributes(display, windows[i], &attributes) != 0 && attributes.map_state == IsViewable &&
            fnmatch(pattern, title_of(display, windows[i]).c_str(), 0) == 0)
            found = windows[i];
    }
    XFree(windows);
    return found;
}

std::optional<Window> wait_for(Display* display, const char* pattern)
{
    for (int glance = 0; glance < glances; ++glance) {
        if (const auto window = shown_window(display, pattern))
            return window;
        usleep(between_glances_us);
    }
    return std::nullopt;
}

void ask_to_close(Display* display, Window window)
{
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.window = window;
    event.xclient.message_type = XInternAtom(display, "WM_PROTOCOLS", False);
    event.xclient.format = 32;
    event.xclient.data.l[0] = static_cast<long>(XInternAtom(display, "WM_DELETE_WINDOW", False));
    event.xclient.data.l[1] = CurrentTime;
    XSendEvent(display, window, False, NoEventMask, &event);
}

unsigned take_modifier(std::string_view& key)
{
    const std::size_t plus = key.find('+');
    const std::string_view modifier = key.substr(0, plus == std::string_view::npos ? 0 : plus);
    key.remove_prefix(modifier.empty() ? 0 : plus + 1);
    if (modifier == "ctrl")
        return ControlMask;
    return modifier == "alt" ? Mod1Mask : 0;
}

bool press(Display* display, Window window, std::string_view key)
{
    const unsigned modifier = take_modifier(key);
    const KeySym symbol = XStringToKeysym(std::string{key}.c_str());
    if (symbol == NoSymbol)
        return false;
    XSetInputFocus(display, window, RevertToPointerRoot, CurrentTime);
    XSync(display, False);
    usleep(to_settle_us);
    XEvent event{};
    event.xkey.display = display;
    event.xkey.window = window;
    event.xkey.root = DefaultRootWindow(display);
    event.xkey.time = CurrentTime;
    event.xkey.same_screen = True;
    event.xkey.keycode = XKeysymToKeycode(display, symbol);
    event.xkey.state = modifier;
    for (const auto& [type, mask] : {std::pair{KeyPress, KeyPressMask}, std::pair{KeyRelease, KeyReleaseMask}}) {
        event.xkey.type = type;
        XSendEvent(display, window, True, mask, &event);
    }
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    Display* display = XOpenDisplay(nullptr);
    if (argc < 3 || display == nullptr) {
        std::cerr << "hand TITLE close|KEY..., with a display\n";
        return 2;
    }
    // A window may go while it is being looked at.
    XSetErrorHandler([](Display*, XErrorEvent*) { return 0; });
    const auto window = wait_for(display, argv[1]);
    bool done = window.has_value();
    if (!done)
        std::cerr << "no window shows whose title is like '" << argv[1] << "'\n";
    else if (std::string_view{argv[2]} == "close")
        ask_to_close(display, *window);
    else
        done = std::all_of(argv + 2, argv + argc, [&](const char* key) { return press(display, *window, key); });
    XCloseDisplay(display);
    return done ? 0 : 1;
}
