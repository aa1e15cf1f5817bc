#include "apps/varnelle/Output.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <string>

#include <unistd.h>

#include "PrompterCore/text/Text.h"
#include "apps/varnelle/TerminalText.h"
#include "host/Failures.h"

namespace Varnelle {

namespace {

[[noreturn]] void failed() {
    if (errno == EPIPE) throw OutputClosed();
    throw CannotWrite(std::string("the output cannot be written: ") + std::strerror(errno));
}

std::string shownOn(int stream, std::string_view bytes) {
    return isatty(stream) != 0 ? terminalText(PrompterCore::Text(bytes).utf8())
                               : std::string(bytes);
}

}  // namespace

void Output::write(std::string_view bytes) {
    if (std::fwrite(bytes.data(), 1, bytes.size(), stdout) != bytes.size()) failed();
}

void Output::line(std::string_view bytes) {
    write(bytes);
    write("\n");
}

void Output::text(std::string_view bytes) {
    if (!isTerminal()) return write(bytes);
    for (std::size_t at = 0; at < bytes.size();) {
        const std::size_t end = std::min(bytes.find('\n', at), bytes.size());
        line(shown(bytes.substr(at, end - at)));
        at = end + 1;
    }
}

void Output::flush() {
    if (std::fflush(stdout) != 0) failed();
}

void complain(std::string_view why) noexcept {
    const std::string line = shownOn(STDERR_FILENO, why);
    std::fprintf(stderr, "varnelle: %s\n", line.c_str());
}

bool isTerminal() { return isatty(STDOUT_FILENO) != 0; }

std::string shown(std::string_view bytes) { return shownOn(STDOUT_FILENO, bytes); }

}  // namespace Varnelle
