#include "apps/varnelle/HiddenLine.h"

#include <array>
#include <cstddef>
#include <cstdio>

#include <termios.h>
#include <unistd.h>

#include "apps/varnelle/Interrupt.h"

namespace Varnelle {

namespace {

// While it lives, the terminal shows nothing of what is typed but the end of the line.
class WithoutEcho {
public:
    WithoutEcho() {
        if (tcgetattr(STDIN_FILENO, &before_) != 0) return;
        termios silent = before_;
        silent.c_lflag = (silent.c_lflag & ~static_cast<tcflag_t>(ECHO)) | ECHONL;
        isSilent_ = tcsetattr(STDIN_FILENO, TCSAFLUSH, &silent) == 0;
    }
    WithoutEcho(const WithoutEcho&) = delete;
    WithoutEcho& operator=(const WithoutEcho&) = delete;
    ~WithoutEcho() {
        if (isSilent_) tcsetattr(STDIN_FILENO, TCSAFLUSH, &before_);
    }

private:
    termios before_{};
    bool isSilent_ = false;
};

}  // namespace

std::optional<std::string> hiddenLine(std::string_view question) {
    Interrupt interrupt;
    const WithoutEcho silence;
    std::fprintf(stderr, "%.*s", static_cast<int>(question.size()), question.data());
    std::string line;
    std::array<char, 4096> piece{};
    while (!line.ends_with('\n')) {
        if (interrupt.arrivesBeforeReadable(STDIN_FILENO)) {
            std::fputc('\n', stderr);
            return std::nullopt;
        }
        const ssize_t got = read(STDIN_FILENO, piece.data(), piece.size());
        if (got <= 0) {
            std::fputc('\n', stderr);  // no end of a line did it
            return line;
        }
        line.append(piece.data(), static_cast<std::size_t>(got));
    }
    line.pop_back();
    return line;
}

}  // namespace Varnelle
