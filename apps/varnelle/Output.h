#pragma once

// Standard output that notices when it can no longer be written.
//
//   Output output;
//   output.line("158 words");   // throws OutputClosed once the reader of a pipe has gone

#include <exception>
#include <string>
#include <string_view>

namespace Varnelle {

/// Whoever read our output has gone. That is their choice: the command ends quietly.
class OutputClosed : public std::exception {};

/// Buffered: what must be seen at once is flushed.
class Output {
public:
    /// Throws OutputClosed or CannotWrite, as flush does.
    void write(std::string_view bytes);
    /// `bytes` and a line break.
    void line(std::string_view bytes);
    /// A text of several lines: as it stands into a file or a pipe; on a terminal each line as
    /// `shown`, the last one ended.
    void text(std::string_view bytes);
    void flush();
};

/// `why` as a sentence of this program on standard error; on a terminal without what could steer
/// it, since names from a disk stand in it. Where that cannot be written, nobody listens: the exit
/// status still tells.
void complain(std::string_view why) noexcept;

/// True when standard output is a terminal.
[[nodiscard]] bool isTerminal();

/// A text that is not ours as the output may be sent it: as it stands into a file or a pipe,
/// without anything that could steer it on a terminal. Bytes that are not UTF-8, as a path may
/// hold, show as U+FFFD there.
[[nodiscard]] std::string shown(std::string_view bytes);

}  // namespace Varnelle
