#include "apps/varnelle/FollowCommand.h"

#include <utility>
#include <vector>

#include "host/PocketSphinxRecogniser.h"
#include "host/RecogniserProcess.h"
#include "host/SoundFileSource.h"
#include "host/TextFile.h"

namespace Varnelle {

std::unique_ptr<Listener> soundListener(const Script& script, std::unique_ptr<SoundSource> sound,
                                        Complaints& complaints) {
    std::vector<Text> tokens;
    for (const ScriptToken& token : script.tokens()) {
        tokens.push_back(token.text);
    }
    return std::make_unique<SoundListener>(
        std::move(sound), std::make_unique<RecogniserProcess>(
                              [tokens = std::move(tokens)] {
                                  return std::make_unique<PocketSphinxRecogniser>(tokens);
                              },
                              [&complaints](const std::string& why) { complaints.say(why); }));
}

ExitStatus followCommand(const std::string& scriptFile, const std::optional<std::string>& audio,
                         const std::optional<std::string>& words, const FollowOptions& options) {
    const Script script(readText(scriptFile));
    Complaints complaints(options.display);
    const auto hearBroken = [&](const std::string& why) { complaints.say(why); };
    const std::unique_ptr<Listener> listener =
        audio ? soundListener(script, std::make_unique<SoundFileSource>(*audio), complaints)
              : std::make_unique<WordsListener>(*words, hearBroken);
    const FollowResult result = follow(script, *listener, options);
    if (result.trouble) complaints.say(*result.trouble);
    if (result.wasInterrupted) return ExitStatus::interrupted;
    return result.trouble ? ExitStatus::badData : ExitStatus::done;
}

}  // namespace Varnelle
