#pragma once

// A file to read from, whatever it is: on a disk, a named pipe, standard input under the name "-".
//
//   InputFile input("talk.wav");     // throws NoInput("talk.wav: No such file or directory")
//   read(input.descriptor(), ...);

#include <string>

namespace Varnelle {

/// Opens once: a named pipe that were opened a second time would have lost its writer. Neither
/// copied nor moved.
class InputFile {
public:
    /// Opens the file `name`, or takes standard input for "-". Throws NoInput when it is missing,
    /// a directory, unreadable or closed. Waits for the writer of a named pipe.
    explicit InputFile(const std::string& name);
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;
    ~InputFile();

    [[nodiscard]] int descriptor() const noexcept { return descriptor_; }
    /// True for a file that can be read from any place, false for a pipe or a terminal.
    [[nodiscard]] bool isSeekable() const;
    /// The bytes from here to the end, which it waits for. Throws NoInput when one cannot be read.
    [[nodiscard]] std::string rest() const;

private:
    std::string name_;  // as messages show it
    int descriptor_;
};

/// `name` as messages show it: "standard input" for "-".
[[nodiscard]] std::string shownName(const std::string& name);

}  // namespace Varnelle
