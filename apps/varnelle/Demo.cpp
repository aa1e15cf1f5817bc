#include "apps/varnelle/Demo.h"

#include <filesystem>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "apps/varnelle/Complaints.h"
#include "apps/varnelle/FollowCommand.h"
#include "apps/varnelle/Measure.h"
#include "apps/varnelle/Output.h"
#include "host/Failures.h"
#include "host/Listener.h"
#include "host/SoundFileSource.h"
#include "host/TextFile.h"

namespace Varnelle {

std::string sampleFile(const std::string& name) {
    std::error_code error;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
    const std::filesystem::path installed =
        program.parent_path().parent_path() / "share" / "varnelle" / "sample" / name;
    return std::filesystem::exists(installed, error)
               ? installed.string()
               : (std::filesystem::path(VARNELLE_SAMPLE_DIRECTORY) / name).string();
}

namespace {

std::vector<HeardWord> spokenWords() {
    WordsListener listener(sampleFile("sample.words.jsonl"),
                           [](const std::string& why) { throw BadData(why); });
    HeardWords words;
    for (const Heard& heard : listener.until(std::numeric_limits<double>::infinity())) {
        words.apply(std::get<WordsUpdate>(heard));
    }
    return words.words();
}

}  // namespace

ExitStatus demo(const FollowOptions& options) {
    const Script script(readText(sampleFile("sample.txt")));
    Measure measure(script, spokenWords());
    Complaints complaints(options.display);
    const auto listener = soundListener(
        script, std::make_unique<SoundFileSource>(sampleFile("sample.flac")), complaints);
    const FollowResult result =
        follow(script, *listener, options,
               {.frame = [&](const ReadThrough& reading,
                             const Frame& frame) { measure.frame(reading, frame); },
                .aligned = [&](const Alignment& alignment,
                               double time) { measure.aligned(alignment, time); }});
    if (result.wasInterrupted) return ExitStatus::interrupted;
    // A caller that reads JSON Lines finds the same numbers in the frames.
    if (options.display == FollowDisplay::json) return ExitStatus::done;
    Output output;
    output.line(fmt::format("Read to token {} of {} in {:.1f} seconds of speech.\n{}",
                            result.last.cursor + 1, script.tokens().size(), result.last.time,
                            measure.summary()));
    output.flush();
    return ExitStatus::done;
}

}  // namespace Varnelle
