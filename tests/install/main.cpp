// One call into every room that an application meets first.

#include <iostream>
#include <string_view>

#include "PrompterCore/audio/AudioLevel.h"
#include "PrompterCore/platform/Keychain.h"
#include "PrompterCore/prompter/LineBreaker.h"
#include "PrompterCore/script/ReadingTime.h"
#include "PrompterCore/script/Script.h"
#include "PrompterCore/script/ScriptChapters.h"
#include "PrompterCore/takes/ChapterMarker.h"
#include "PrompterCore/takes/RecordingName.h"
#include "PrompterCore/voice/VoiceAligner.h"

using namespace PrompterCore;

int main() {
    const Script script("# Intro\nDon't stop.");
    const LineBreaker breaker{.width = 20, .measure = [](std::string_view text) {
                                  return static_cast<double>(text.size());
                              }};
    const auto lines = breaker.linesFor(script);
    std::cout << ReadingTime::summary(static_cast<std::int64_t>(script.words().size())) << '\n';
    ChapterMarker marker(ScriptChapters::chaptersOf(script));
    marker.update(0, 1.5);
    const bool isStored = toJson(marker.marks()) == R"([{"title":"Intro","seconds":1.5}])" &&
                          RecordingName::safe("a/b") == "a b";
    const bool isDescribed =
        Keychain::Failure(-1).errorDescription() == "Could not use the keychain: status -1";
    return isStored && isDescribed && lines.size() == 2 && script.tokens().size() == 3 ? 0 : 1;
}
