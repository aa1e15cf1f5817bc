#pragma once

// One secret text for each service name, in the system's own keychain: on macOS its generic
// passwords, on Linux the Secret Service of the session. The text is in no file of ours.
//
//   Keychain keychain{"com.example.transcripts"};
//   keychain.write("  abc\n");    // stores "abc"
//   keychain.read();              // "abc"
//   keychain.write("   ");        // a blank value is none: removes it
//   keychain.remove();            // nothing there to remove: no failure
//
// On Linux no operation waits for a person: a keychain that would have to ask for its password
// fails. The bus's library starts threads of its own there, at the first operation.

#include <cstdint>
#include <optional>
#include <stdexcept>

#include "PrompterCore/text/Text.h"

namespace PrompterCore {

/// A value that only names the item. Equal ones share it, in every process of the user: whoever
/// writes last wins, and there is never more than one item.
struct Keychain {
    Text service;  ///< the item's service; any text, though on Linux without U+0000

    class Failure;

    /// The stored text. Absent when there is none, when it is empty or no well-formed UTF-8, and
    /// for whatever keeps the keychain from telling: locked, denied, not there. Never fails.
    [[nodiscard]] std::optional<Text> read() const;

    /// Stores `value` without the white space and line breaks around it, in place of what was
    /// stored; removes that when nothing is left of `value`. Throws Failure when the system
    /// refuses; what was stored is then unchanged.
    void write(const Text& value) const;

    /// Removes what is stored; nothing stored is fine. Throws Failure when the system refuses.
    void remove() const;

    friend bool operator==(const Keychain&, const Keychain&) = default;
};

/// The keychain could not be used. Says nothing of the value.
class Keychain::Failure : public std::runtime_error {
public:
    /// `status` is a result code of macOS's Security framework; Linux answers with the nearest one.
    explicit Failure(std::int32_t status);

    /// The result code.
    [[nodiscard]] std::int32_t status() const noexcept { return status_; }
    /// "Could not use the keychain: " and the system's text for the status; without one, "status "
    /// and its number. The same as what(). Never absent: optional as other errors' descriptions
    /// are.
    [[nodiscard]] std::optional<Text> errorDescription() const { return Text(what()); }

private:
    std::int32_t status_;
};

}  // namespace PrompterCore
