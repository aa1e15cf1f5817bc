#pragma once

// The audio inputs of this machine as a user chooses among them, and the sentences about the
// choice.
//
//   const AudioInputs inputs = audioInputsFrom(listAudioSources(), "Lavalier");
//   inputs.chosen->name;      // "Lavalier", or what is listened to instead
//   troubleWith(inputs);      // absent, or "Lavalier is not connected; listening to Built-in"

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "PrompterCore/audio/AudioInput.h"
#include "PrompterCore/text/Text.h"

namespace Varnelle {

using PrompterCore::AudioInput;
using PrompterCore::Text;

/// Something that the sound server records from.
struct AudioSource {
    AudioInput input;
    bool isMonitor = false;  ///< what a loudspeaker plays, and no microphone

    friend bool operator==(const AudioSource&, const AudioSource&) = default;
};

/// The inputs that are there, and which one to listen to.
struct AudioInputs {
    std::vector<AudioInput> inputs;    ///< in the server's order
    std::optional<Text> remembered;    ///< the id that was asked for. Absent when none was
    std::optional<AudioInput> chosen;  ///< absent when there is none
    bool isMissing = false;            ///< the one that was asked for is not there

    friend bool operator==(const AudioInputs&, const AudioInputs&) = default;
};

/// What `asked`, an id or a name, chooses among `sources`. A monitor is an input only when it is
/// the default or what was asked for. An id goes before a name; the first of several goes.
[[nodiscard]] AudioInputs audioInputsFrom(std::span<const AudioSource> sources,
                                          const std::optional<Text>& asked);

/// Why the chosen input was chosen, in a few words: "it was asked for".
[[nodiscard]] std::string reasonFor(const AudioInputs& inputs);

/// What a user should know about the choice. Absent when it is as asked.
[[nodiscard]] std::optional<std::string> troubleWith(const AudioInputs& inputs);

/// What the sound server has at present; waits five seconds at most. Throws Unavailable without a
/// server, or when it refuses us.
[[nodiscard]] std::vector<AudioSource> listAudioSources();

}  // namespace Varnelle
