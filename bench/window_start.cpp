// window_start REFERENCE PROGRAM [ARGUMENT...]: the time from the start of a program until its window is mapped and
// painted, taken from outside, on the X server that DISPLAY names; and its resident memory a second later. Beside it
// the same for a reference program. One run of each warms up and does not count.
#include "bench/figures.h"
#include "bench/times.h"

#include <xcb/xcb.h>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <memory>
#include <sstream>

namespace {

constexpr double longest_seconds = 20;
constexpr std::uint16_t least_size = 100; // smaller ones are helpers of the tool kit

void pause_ms(long ms)
{
    const timespec time{ms / 1000, ms % 1000 * 1'000'000};
    nanosleep(&time, nullptr);
}

template <typename T> using Owned = std::unique_ptr<T, decltype(&std::free)>;
template <typename T> Owned<T> owned(T* reply) { return {reply, &std::free}; }

class Screen {
public:
    Screen()
        : connection_(xcb_connect(nullptr, nullptr))
    {
        bench::require(xcb_connection_has_error(connection_) == 0, "no X server on DISPLAY");
        root_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
        const std::uint32_t events = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
        xcb_change_window_attributes(connection_, root_, XCB_CW_EVENT_MASK, &events);
        xcb_flush(connection_);
    }
    ~Screen() { xcb_disconnect(connection_); }
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;

    void forget_events()
    {
        while (auto event = owned(xcb_poll_for_event(connection_))) { }
    }

    // The next window of a program that is mapped. 0: none came in time.
    xcb_window_t wait_for_map(double until)
    {
        while (bench::wall_seconds() < until) {
            const auto event = owned(xcb_poll_for_event(connection_));
            if (!event) {
                pause_ms(1);
                continue;
            }
            if ((event->response_type & 0x7F) != XCB_MAP_NOTIFY)
                continue;
            const xcb_window_t window = reinterpret_cast<const xcb_map_notify_event_t*>(event.get())->window;
            const auto shape = geometry(window);
            if (shape && shape->width >= least_size && shape->height >= least_size)
                return window;
        }
        return 0;
    }

    // Painted: the middle line of the window, or the one a third down, is no longer of one colour.
    bool wait_for_paint(xcb_window_t window, double until)
    {
        while (bench::wall_seconds() < until) {
            const auto shape = geometry(window);
            if (!shape)
                return false;
            for (const int part : {2, 3, 8}) {
                if (has_colours(window, *shape, static_cast<std::int16_t>(shape->height / part)))
                    return true;
            }
            pause_ms(1);
        }
        return false;
    }

private:
    Owned<xcb_get_geometry_reply_t> geometry(xcb_window_t window)
    {
        return owned(xcb_get_geometry_reply(connection_, xcb_get_geometry(connection_, window), nullptr));
    }
    bool has_colours(xcb_window_t window, const xcb_get_geometry_reply_t& shape, std::int16_t line)
    {
        const auto image = owned(xcb_get_image_reply(connection_,
            xcb_get_image(connection_, XCB_IMAGE_FORMAT_Z_PIXMAP, window, 0, line, shape.width, 1, ~0U), nullptr));
        if (!image)
            return false;
        const std::uint8_t* bytes = xcb_get_image_data(image.get());
        const int size = xcb_get_image_data_length(image.get());
        for (int i = 4; i < size; ++i) {
            if (bytes[i] != bytes[i % 4])
                return true;
        }
        return false;
    }

    xcb_connection_t* connection_;
    xcb_window_t root_ = 0;
};

double resident_mb(pid_t process)
{
    std::ifstream status{"/proc/" + std::to_string(process) + "/status"};
    for (std::string word; status >> word;) {
        double kilobytes = 0;
        if (word == "VmRSS:" && status >> kilobytes)
            return kilobytes / 1024;
    }
    return 0;
}

struct Start {
    double painted_ms = 0;
    double resident_mb = 0;
};

Start start(Screen& screen, const std::vector<char*>& command)
{
    screen.forget_events();
    const double began = bench::wall_seconds();
    const pid_t process = fork();
    if (process == 0) {
        const int nowhere = open("/dev/null", O_RDWR);
        dup2(nowhere, STDIN_FILENO);
        dup2(nowhere, STDOUT_FILENO);
        dup2(nowhere, STDERR_FILENO);
        execv(command[0], command.data());
        _exit(127);
    }
    Start result;
    bool painted = false;
    while (!painted &&
        bench::wall_seconds() < began + longest_seconds) { // a window may come and go before the one that stays
        const xcb_window_t window = screen.wait_for_map(began + longest_seconds);
        painted = window != 0 && screen.wait_for_paint(window, began + longest_seconds);
    }
    result.painted_ms = (bench::wall_seconds() - began) * 1000;
    if (painted) {
        pause_ms(1000);
        result.resident_mb = resident_mb(process);
    }
    kill(process, SIGTERM);
    waitpid(process, nullptr, 0);
    bench::require(painted, std::string{command[0]} + " showed no window");
    return result;
}

} // namespace

int main(int argc, char** argv)
{
    bench::require(argc >= 3, "window_start REFERENCE PROGRAM [ARGUMENT...]");
    Screen screen;
    const std::vector<char*> reference = {argv[1], nullptr};
    const std::vector<char*> program(argv + 2, argv + argc + 1); // with the null behind the last
    std::vector<double> times;
    std::vector<double> sizes;
    std::vector<double> reference_times;
    std::vector<double> reference_sizes;
    start(screen, reference);
    start(screen, program);
    for (int run = 0; run < bench::runs; ++run) {
        const Start bare = start(screen, reference);
        const Start full = start(screen, program);
        reference_times.push_back(bare.painted_ms);
        reference_sizes.push_back(bare.resident_mb);
        times.push_back(full.painted_ms);
        sizes.push_back(full.resident_mb);
    }
    bench::print({"start to painted window, warm", bench::median(times), "ms", "bare Qt window",
        bench::median(reference_times), "below 150 ms"});
    bench::print({"resident memory with its window", bench::median(sizes), "MB", "bare Qt window",
        bench::median(reference_sizes), "below 90 MB"});
}
