#pragma once

// What `follow` and `demo` listen to, from their arguments.

#include <memory>
#include <optional>
#include <string>

#include "apps/varnelle/Complaints.h"
#include "apps/varnelle/ExitStatus.h"
#include "apps/varnelle/Follow.h"
#include "host/Listener.h"
#include "host/Recogniser.h"
#include "host/SoundSource.h"

namespace Varnelle {

/// The recogniser of this machine, which is told the script and runs in a process of its own; what
/// ends it is told to `complaints`. Throws Unavailable without one.
[[nodiscard]] std::unique_ptr<Recogniser> machineRecogniser(const Script& script,
                                                            Complaints& complaints);

/// `sound`, heard by machineRecogniser.
[[nodiscard]] std::unique_ptr<Listener> soundListener(const Script& script,
                                                      std::unique_ptr<SoundSource> sound,
                                                      Complaints& complaints);

/// What a reading is followed from. Exactly one of sound, words and microphone is present.
struct FollowSource {
    std::optional<std::string> audio;       ///< a sound file
    std::optional<std::string> words;       ///< a file of recognised words
    std::optional<WordsFormat> format;      ///< of the words; absent: they say it themselves
    std::optional<std::string> microphone;  ///< an input's id or name; empty: the default
};

/// `varnelle follow`.
ExitStatus followCommand(const std::string& scriptFile, const FollowSource& source,
                         const FollowOptions& options);

}  // namespace Varnelle
