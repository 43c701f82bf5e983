// two_terminals LINK LINK: makes two pseudo terminals that are joined as if by a cable, each under a name of its own,
// and carries bytes between them until its input ends. So two programs that open serial devices can talk.
#include <fcntl.h>
#include <poll.h>
#include <stdlib.h>
#include <termios.h>
#include <unistd.h>

#include <cstdio>

namespace {

// The near end of a terminal, without echo and line discipline, its far end under the name. -1: there is none.
int make_terminal(const char* link)
{
    const int near = posix_openpt(O_RDWR | O_NOCTTY);
    char name[128] = {};
    if (near < 0 || grantpt(near) != 0 || unlockpt(near) != 0 || ptsname_r(near, name, sizeof name) != 0)
        return -1;
    const int far = open(name, O_RDWR | O_NOCTTY); // stays open, so that the programs may come and go
    termios raw{};
    if (far < 0 || tcgetattr(far, &raw) != 0)
        return -1;
    cfmakeraw(&raw);
    return tcsetattr(far, TCSANOW, &raw) == 0 && symlink(name, link) == 0 ? near : -1;
}

bool carry(int from, int to)
{
    char bytes[4096];
    const ssize_t count = read(from, bytes, sizeof bytes);
    for (ssize_t sent = 0; sent < count;) {
        const ssize_t done = write(to, bytes + sent, static_cast<size_t>(count - sent));
        if (done <= 0)
            return false;
        sent += done;
    }
    return count > 0;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::fprintf(stderr, "usage: two_terminals LINK LINK\n");
        return 2;
    }
    const int one = make_terminal(argv[1]);
    const int other = make_terminal(argv[2]);
    if (one < 0 || other < 0) {
        std::perror("two_terminals");
        return 1;
    }
    for (;;) {
        pollfd waiting[] = {{one, POLLIN, 0}, {other, POLLIN, 0}, {STDIN_FILENO, POLLIN, 0}};
        if (poll(waiting, 3, -1) < 0)
            return 1;
        if (waiting[2].revents != 0)
            return 0;
        if ((waiting[0].revents & POLLIN) != 0 && !carry(one, other))
            return 1;
        if ((waiting[1].revents & POLLIN) != 0 && !carry(other, one))
            return 1;
    }
}
