#include "support/PrivateDisplay.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <string>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace support {

namespace {

/// Becomes the display, which writes its number to `number` when it can be connected to.
[[noreturn]] void becomeServer(int number, pid_t parent) {
    // The death of a test, by a time limit for instance, is the server's too.
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (getppid() != parent)
        _exit(1);
    // Whoever waits for the end of the test's output need not wait for the server's.
    const int nothing = open("/dev/null", O_RDWR);
    dup2(nothing, STDIN_FILENO);
    dup2(nothing, STDOUT_FILENO);
    dup2(nothing, STDERR_FILENO);
    const std::string descriptor = std::to_string(number);
    // Without -noreset it starts anew when the last program leaves, and for a moment turns away
    // the next one.
    execlp("Xvfb", "Xvfb", "-displayfd", descriptor.c_str(), "-screen", "0", "1600x1200x24",
           "-nolisten", "tcp", "-noreset", "+extension", "GLX", "+extension", "XTEST",
           static_cast<char*>(nullptr));
    _exit(127);
}

std::string readLine(int descriptor) {
    std::string line;
    char c = 0;
    for (;;) {
        const ssize_t got = read(descriptor, &c, 1);
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0)
            return {};
        if (c == '\n')
            return line;
        line += c;
    }
}

} // namespace

PrivateDisplay::PrivateDisplay() {
    setenv("LIBGL_ALWAYS_SOFTWARE", "1", 1);
    setenv("QT_QPA_PLATFORM", "xcb", 1);
    setenv("XDG_SESSION_TYPE", "x11", 1);
    if (const char* given = std::getenv("VELLUM_TEST_DISPLAY")) {
        setenv("DISPLAY", given, 1);
        ready_ = true;
        return;
    }
    ready_ = start();
    if (!ready_)
        std::fputs("No virtual display: Xvfb is missing or does not start.\n", stderr);
}

bool PrivateDisplay::start() {
    int ends[2];
    if (pipe(ends) != 0)
        return false;
    fcntl(ends[0], F_SETFD, FD_CLOEXEC);
    const pid_t parent = getpid();
    server_ = fork();
    if (server_ == 0)
        becomeServer(ends[1], parent);
    close(ends[1]);
    const std::string number = server_ > 0 ? readLine(ends[0]) : std::string();
    close(ends[0]);
    if (number.empty())
        return false;
    setenv("DISPLAY", (":" + number).c_str(), 1);
    unsetenv("XAUTHORITY"); // another display's
    return true;
}

PrivateDisplay::~PrivateDisplay() {
    if (server_ <= 0)
        return;
    kill(server_, SIGTERM);
    while (waitpid(server_, nullptr, 0) < 0 && errno == EINTR) {
    }
}

} // namespace support
