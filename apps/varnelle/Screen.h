#pragma once

// The full-screen prompter in a terminal: the script scrolls under a fixed eye line.
//
// Units: columns and rows of the terminal.
//
//   Screen screen({.colour = true});
//   reading.layOut(screen.linesFor(script));
//   for (ScreenEvent event : screen.events()) ...      // keys and wheel since the last call
//   screen.draw({.reading = reading, .frame = frame, .paused = false, .ended = false});

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "apps/varnelle/ScreenLayout.h"

namespace Varnelle {

/// What a key asks for.
enum class ScreenCommand {
    pause,          ///< space or p; the same key goes on
    lineUp,         ///< arrow up or k
    lineDown,       ///< arrow down or j
    paragraphUp,    ///< page up
    paragraphDown,  ///< page down
    chapterUp,      ///< arrow left or [
    chapterDown,    ///< arrow right or ]
    restart,        ///< home or r
    quit,           ///< q, escape or control-D
    interrupt,      ///< control-C, which the terminal reports as a key here, not as a signal
    resized,        ///< no key: the terminal has another size, lay the lines out anew
};

/// A key, or a turn of the wheel.
struct ScreenEvent {
    std::optional<ScreenCommand> command;  ///< absent for the wheel
    double wheel = 0;                      ///< rows of scrolling, positive for down; 0 for a key

    friend bool operator==(const ScreenEvent&, const ScreenEvent&) = default;
};

/// Holds the terminal from its construction to its destruction. One at a time. It shows on standard
/// output; keys come from standard input or, where that is no terminal, from the controlling one,
/// so that words can be piped in.
class Screen {
public:
    struct Options {
        bool colour = true;  ///< false under NO_COLOR: bold, dim and reverse only
    };

    /// Takes the terminal over, and the process's character set (LC_CTYPE) with it: the user's, or
    /// C.UTF-8 where that is not UTF-8. Throws Unavailable when it cannot show a screen, as with an
    /// unknown TERM.
    explicit Screen(Options options);
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;
    ~Screen();

    /// The script in lines of the terminal's present width.
    [[nodiscard]] std::vector<PromptLine> linesFor(const Script& script) const;
    /// What was pressed and turned since the last call, in order. Keys that mean nothing are left
    /// out. Never waits.
    [[nodiscard]] std::vector<ScreenEvent> events();
    /// Draws one frame; only what changed is sent to the terminal.
    void draw(const ScreenView& view);

private:
    class Terminal;
    std::unique_ptr<Terminal> terminal_;  // never null
};

}  // namespace Varnelle
