// The library alone, from a script's text to the line under the eye line: what an application does,
// without a microphone or a window. It prints a line for each word that it "hears".

#include <cstdio>
#include <string_view>
#include <vector>

#include "PrompterCore/prompter/LineBreaker.h"
#include "PrompterCore/prompter/PrompterGeometry.h"
#include "PrompterCore/script/Script.h"
#include "PrompterCore/voice/ScrollModel.h"
#include "PrompterCore/voice/VoiceAligner.h"

using namespace PrompterCore;

int main() {
    const Script script("# Intro\nDon't stop. The light is on, and the sea is calm.");

    // The application's font says how wide a text is; here a character is ten points wide.
    const LineBreaker breaker{.width = 160, .measure = [](std::string_view text) {
                                  return 10.0 * static_cast<double>(text.size());
                              }};
    const std::vector<PromptLine> lines = breaker.linesFor(script);

    VoiceAligner aligner(script, {.tailLength = 8,
                                  .lookBehind = 30,
                                  .lookAhead = 90,
                                  .acceptScore = 0.34,
                                  .fuzzyFloor = 0.7,
                                  .recencyDecay = 0.83,
                                  .backwardPenalty = 0.004,
                                  .forwardPenalty = 0.006});
    ScrollModel scroll({.defaultRate = 2.5,
                        .minRate = 1,
                        .maxRate = 5,
                        .rateSmoothing = 0.15,
                        .convergence = 5,
                        .maxLead = 2.5,
                        .holdAfterSilence = 0.8,
                        .predictionGain = 1,
                        .backStepThreshold = 3,
                        .backStepDelay = 0.5});

    // What a recogniser might hear, half a second a word: it is not perfect.
    std::vector<Text> heard;
    double now = 0;
    scroll.setSpeaking(true);
    for (const char* word : {"don't", "stop", "the", "lights", "is", "on"}) {
        heard.emplace_back(word);
        now += 0.5;
        if (const auto alignment = aligner.observe(heard))
            scroll.anchor(alignment->tokenIndex, now);
        double position = 0;
        for (int frame = 0; frame < 30; ++frame) {  // half a second on a display
            position = scroll.tickAt(now + frame / 60.0);
        }
        const double line = LineBreaker::lineIndexFor(position, lines);
        std::printf("%-6s token %2lld, line %.2f, the window's top at %.0f points\n", word,
                    static_cast<long long>(aligner.cursor()), line,
                    PrompterGeometry::contentOffset(line, 0, 40, 300));
    }
    return aligner.cursor() == 6 ? 0 : 1;
}
