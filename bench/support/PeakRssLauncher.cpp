// peak_rss: runs a command and prints its peak resident memory in kB on the last line of stdout.
//
// A benchmark cannot read this itself: a child started with fork or posix_spawn from a large
// process inherits that process's high-water mark at exec, so the child's ru_maxrss reports the
// benchmark's memory, not its own. This small program is started first, so the command it forks
// starts from a few hundred kB. Exit status: the command's, or 127 when it cannot be started.
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: peak_rss COMMAND [ARGUMENT ...]\n");
        return 2;
    }
    const pid_t pid = ::fork();
    if (pid == 0) {
        ::execv(argv[1], argv + 1);
        std::perror(argv[1]);
        ::_exit(127);
    }
    int status = 0;
    rusage usage{};
    if (pid < 0 || ::wait4(pid, &status, 0, &usage) != pid) {
        std::perror("peak_rss");
        return 127;
    }
    std::printf("%ld\n", usage.ru_maxrss);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}
