#include "apps/varnelle/Output.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string>

#include <unistd.h>

#include "apps/varnelle/TerminalText.h"
#include "host/Failures.h"

namespace Varnelle {

namespace {

[[noreturn]] void failed() {
    if (errno == EPIPE) throw OutputClosed();
    throw CannotWrite(std::string("the output cannot be written: ") + std::strerror(errno));
}

}  // namespace

void Output::write(std::string_view bytes) {
    if (std::fwrite(bytes.data(), 1, bytes.size(), stdout) != bytes.size()) failed();
}

void Output::line(std::string_view bytes) {
    write(bytes);
    write("\n");
}

void Output::flush() {
    if (std::fflush(stdout) != 0) failed();
}

void complain(std::string_view why) noexcept {
    std::fprintf(stderr, "varnelle: %.*s\n", static_cast<int>(why.size()), why.data());
}

bool isTerminal() { return isatty(STDOUT_FILENO) != 0; }

std::string shown(std::string_view wellFormed) {
    return isTerminal() ? terminalText(wellFormed) : std::string(wellFormed);
}

}  // namespace Varnelle
