#include "cli/PasswordPrompt.h"

#include "cli/LineReader.h"
#include "cli/Terminal.h"
#include "sync/Passwords.h"

#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdio>
#include <utility>

namespace quillo::cli {

namespace {

volatile std::sig_atomic_t caught = 0;

/// While it lives, the terminal does not show what is typed, and signals that would end or stop the program
/// interrupt its reading instead.
class Unseen {
public:
    Unseen() {
        tcgetattr(STDIN_FILENO, &before_);
        caught = 0;
        struct sigaction note {};
        note.sa_handler = [](int signal) { caught = signal; };
        for (std::size_t at = 0; at < signals.size(); ++at)
            sigaction(signals[at], &note, &handled_[at]);
        termios unseen = before_;
        unseen.c_lflag &= ~static_cast<tcflag_t>(ECHO);
        unseen.c_lflag |= ECHONL;
        tcsetattr(STDIN_FILENO, TCSAFLUSH, &unseen);
    }
    ~Unseen() {
        tcsetattr(STDIN_FILENO, TCSAFLUSH, &before_);
        for (std::size_t at = 0; at < signals.size(); ++at)
            sigaction(signals[at], &handled_[at], nullptr);
    }
    Unseen(const Unseen&) = delete;
    Unseen& operator=(const Unseen&) = delete;

private:
    static constexpr std::array signals{SIGHUP, SIGINT, SIGQUIT, SIGTERM, SIGTSTP, SIGALRM};

    termios before_{};
    std::array<struct sigaction, signals.size()> handled_{};
};

/// False where a signal came.
bool readLine(std::string& line) {
    const Unseen unseen;
    line.clear();
    for (char c = 0; caught == 0;) {
        const ssize_t count = read(STDIN_FILENO, &c, 1);
        if (count == 0 || c == '\n')
            return true;
        if (count < 0 && errno != EINTR)
            return true;
        if (count > 0 && line.size() <= longestPassword)
            line.push_back(c);
    }
    return false;
}

Result<std::string> checked(std::string password) {
    const Outcome outcome = checkPassword(password);
    return outcome ? Result<std::string>(std::move(password)) : outcome.error();
}

} // namespace

bool canAskForPassword() {
    return isatty(STDIN_FILENO) != 0;
}

Result<std::string> askForPassword(const std::string& question) {
    for (std::string line;;) {
        std::fputs((onOneLine(question) + ": ").c_str(), stderr);
        if (readLine(line))
            return checked(std::move(line));
        std::fputc('\n', stderr);
        std::raise(caught); // The program ends, or stops here until it is to go on.
    }
}

Result<std::string> passwordFromInput() {
    LineReader reader(stdin);
    std::string line;
    reader.next(line);
    return checked(std::move(line));
}

} // namespace quillo::cli
