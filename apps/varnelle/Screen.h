#pragma once

// The full-screen prompter in a terminal: the script scrolls under a fixed eye line.
//
// Units: columns and rows of the terminal.
//
//   Screen screen({.colour = true});
//   reading.layOut(screen.linesFor(script));
//   for (ScreenEvent event : screen.events()) ...      // keys and wheel since the last call
//   screen.draw({.reading = reading, .frame = frame, .duration = 62.5, .paused = false});

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/ReadThrough.h"

namespace Varnelle {

/// What a key asks for.
enum class ScreenCommand {
    pause,
    lineUp,
    lineDown,
    paragraphUp,
    paragraphDown,
    chapterUp,
    chapterDown,
    restart,
    quit,
    resized,  ///< the terminal has another size: lay the lines out anew
};

/// A key, or a turn of the wheel.
struct ScreenEvent {
    std::optional<ScreenCommand> command;  ///< absent for the wheel
    double wheel = 0;                      ///< rows of scrolling, positive for down; 0 for a key
};

/// What is to be seen. Refers to the reading for the time of the call.
struct ScreenView {
    const ReadThrough& reading;
    Frame frame;
    bool paused = false;
    bool ended = false;  ///< the sound or the words are over
};

/// Holds the terminal from its construction to its destruction. One at a time.
class Screen {
public:
    struct Options {
        bool colour = true;  ///< false under NO_COLOR: bold, dim and reverse only
    };

    /// Takes the terminal over. Throws Unavailable when it cannot show a screen (an unknown TERM).
    explicit Screen(Options options);
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;
    ~Screen();

    /// The script in lines of the terminal's present width.
    [[nodiscard]] std::vector<PromptLine> linesFor(const Script& script) const;
    /// What was pressed and turned since the last call, in order. Never waits.
    [[nodiscard]] std::vector<ScreenEvent> events();
    /// Draws one frame.
    void draw(const ScreenView& view);

private:
    class Terminal;
    std::unique_ptr<Terminal> terminal_;
};

}  // namespace Varnelle
