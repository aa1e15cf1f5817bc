#include "apps/varnelle/FollowCommand.h"

#include <utility>
#include <vector>

#include "apps/varnelle/Devices.h"
#include "host/Microphone.h"
#include "host/PocketSphinxRecogniser.h"
#include "host/RecogniserProcess.h"
#include "host/SoundFileSource.h"
#include "host/TextFile.h"

namespace Varnelle {

std::unique_ptr<Recogniser> machineRecogniser(const Script& script, Complaints& complaints) {
    std::vector<Text> tokens;
    for (const ScriptToken& token : script.tokens()) {
        tokens.push_back(token.text);
    }
    return std::make_unique<RecogniserProcess>(
        [tokens = std::move(tokens)] { return std::make_unique<PocketSphinxRecogniser>(tokens); },
        [&complaints](const std::string& why) { complaints.say(why); });
}

std::unique_ptr<Listener> soundListener(const Script& script, std::unique_ptr<SoundSource> sound,
                                        Complaints& complaints) {
    return std::make_unique<SoundListener>(std::move(sound), machineRecogniser(script, complaints));
}

namespace {

std::unique_ptr<Listener> listenerTo(const FollowSource& source, const Script& script,
                                     Complaints& complaints) {
    const auto say = [&complaints](const std::string& why) { complaints.say(why); };
    if (source.words) return std::make_unique<WordsListener>(*source.words, say, source.format);
    if (source.audio)
        return soundListener(script, std::make_unique<SoundFileSource>(*source.audio), complaints);
    return soundListener(script, std::make_unique<Microphone>(askedInput(*source.microphone), say),
                         complaints);
}

}  // namespace

ExitStatus followCommand(const std::string& scriptFile, const FollowSource& source,
                         const FollowOptions& options) {
    const Script script(readText(scriptFile));
    Complaints complaints(options.display);
    const std::unique_ptr<Listener> listener = listenerTo(source, script, complaints);
    const FollowResult result = follow(script, *listener, options);
    if (result.trouble) complaints.say(*result.trouble);
    if (result.wasInterrupted) return ExitStatus::interrupted;
    return result.trouble ? ExitStatus::badData : ExitStatus::done;
}

}  // namespace Varnelle
