#include "apps/varnelle/FollowCommand.h"

#include <utility>
#include <vector>

#include "apps/varnelle/Output.h"
#include "host/PocketSphinxRecogniser.h"
#include "host/SoundFileSource.h"
#include "host/TextFile.h"

namespace Varnelle {

std::unique_ptr<Listener> soundListener(const Script& script, const std::string& name) {
    auto sound = std::make_unique<SoundFileSource>(name);
    std::vector<Text> tokens;
    for (const ScriptToken& token : script.tokens()) {
        tokens.push_back(token.text);
    }
    return std::make_unique<SoundListener>(std::move(sound),
                                           std::make_unique<PocketSphinxRecogniser>(tokens));
}

ExitStatus followCommand(const std::string& scriptFile, const std::optional<std::string>& audio,
                         const std::optional<std::string>& words, const FollowOptions& options) {
    const Script script(readText(scriptFile));
    // A screen would be written over: what is wrong with a line is said when it is gone.
    std::vector<std::string> complaints;
    const auto hearBroken = [&](const std::string& why) {
        if (options.display == FollowDisplay::screen) {
            complaints.push_back(why);
        } else {
            complain(why);
        }
    };
    const std::unique_ptr<Listener> listener =
        audio ? soundListener(script, *audio) : std::make_unique<WordsListener>(*words, hearBroken);
    const FollowResult result = follow(script, *listener, options);
    for (const std::string& complaint : complaints) {
        complain(complaint);
    }
    if (result.trouble) complain(*result.trouble);
    if (result.wasInterrupted) return ExitStatus::interrupted;
    return result.trouble ? ExitStatus::badData : ExitStatus::done;
}

}  // namespace Varnelle
