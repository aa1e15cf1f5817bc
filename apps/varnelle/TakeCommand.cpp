#include "apps/varnelle/TakeCommand.h"

#include <cerrno>
#include <chrono>
#include <cstring>
#include <memory>
#include <system_error>
#include <utility>
#include <vector>

#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include "PrompterCore/takes/Countdown.h"
#include "apps/varnelle/Complaints.h"
#include "apps/varnelle/Devices.h"
#include "apps/varnelle/FollowCommand.h"
#include "apps/varnelle/Session.h"
#include "host/Failures.h"
#include "host/Microphone.h"
#include "host/SoundFileSource.h"
#include "host/TextFile.h"

namespace Varnelle {

namespace {

using Moment = std::chrono::system_clock::time_point;

constexpr std::int64_t bytesPerMinute = 2 * 60 * 128'000 / 8;  // as recorded and as saved
constexpr std::int64_t scarceMinutes = 30;

void prepare(const std::filesystem::path& folder) {
    const auto refuse = [&](int error) {
        throw CannotWrite(folder.string() + ": no takes can be stored here (" +
                          std::strerror(error) + ")");
    };
    if (mkdir(folder.c_str(), 0777) != 0 && errno != EEXIST) refuse(errno);
    struct stat status {};
    if (stat(folder.c_str(), &status) != 0) refuse(errno);
    if (!S_ISDIR(status.st_mode)) refuse(ENOTDIR);
    if (access(folder.c_str(), W_OK | X_OK) != 0) refuse(errno);
}

std::string room(std::int64_t minutes) {
    if (minutes < 1) return "less than a minute";
    return minutes == 1 ? "about a minute" : fmt::format("about {} minutes", minutes);
}

void warnWhenSpaceIsScarce(const std::filesystem::path& folder, std::optional<std::int64_t> bytes,
                           Complaints& complaints) {
    if (!bytes) return;
    const std::int64_t minutes = *bytes / bytesPerMinute;
    if (minutes >= scarceMinutes) return;
    complaints.say(fmt::format("{}: room for {} of takes", folder.string(), room(minutes)));
}

std::optional<Text> titleOf(const std::string& scriptFile, const Script& script) {
    if (scriptFile != "-") return Text(std::filesystem::path(scriptFile).stem().string());
    if (script.headings().empty()) return std::nullopt;
    return script.headings().front().title;
}

// When a file's sound began: a recorder writes the file's date at its end.
Moment beginningOf(const std::string& name, double duration) {
    struct stat status {};
    if (name == "-" || stat(name.c_str(), &status) != 0 || !S_ISREG(status.st_mode))
        return std::chrono::system_clock::now();
    const auto end = std::chrono::seconds(status.st_mtim.tv_sec) +
                     std::chrono::nanoseconds(status.st_mtim.tv_nsec);
    return Moment(std::chrono::duration_cast<Moment::duration>(
        end - std::chrono::duration<double>(duration)));
}

}  // namespace

ExitStatus takeCommand(const TakeArguments& arguments, const FollowOptions& options,
                       const FreeBytes& freeBytes) {
    const Script script(readText(arguments.script));
    Complaints complaints(options.display);
    std::unique_ptr<SoundSource> sound;
    std::optional<Moment> beginning;  // absent for what sounds now
    if (arguments.audio) {
        auto file = std::make_unique<SoundFileSource>(*arguments.audio);
        beginning = beginningOf(*arguments.audio, file->duration());
        sound = std::move(file);
    } else {
        sound = std::make_unique<Microphone>(
            askedInput(*arguments.microphone),
            [&complaints](const std::string& why) { complaints.say(why); });
    }
    prepare(arguments.folder);
    warnWhenSpaceIsScarce(arguments.folder, freeBytes(arguments.folder), complaints);
    const std::vector<SavedTake> recovered = TakeWriter::recover(arguments.folder);

    const bool isSeen = arguments.microphone && arguments.listensForClaps;
    const TakePlan plan{
        .folder = arguments.folder,
        .title = titleOf(arguments.script, script),
        .timeZone = arguments.timeZone,
        .countdown = arguments.countdown.value_or(isSeen ? PrompterCore::Countdown::standard : 0),
        .listensForClaps = arguments.listensForClaps,
        .goesOn = arguments.goesOn,
        .dateAt =
            [beginning](double time, double ago) {
                const auto span = [](double seconds) {
                    return std::chrono::duration_cast<Moment::duration>(
                        std::chrono::duration<double>(seconds));
                };
                return beginning ? *beginning + span(time)
                                 : std::chrono::system_clock::now() - span(ago);
            },
        .recogniser = [&] { return machineRecogniser(script, complaints); }};
    const SessionResult result = runSession(script, *sound, plan, options, recovered);

    for (const SavedTake& take : recovered) {
        if (take.trouble) complaints.say(*take.trouble);
    }
    // A microphone has said its own at the time.
    const auto trouble = arguments.audio ? sound->trouble() : std::nullopt;
    if (trouble) complaints.say(*trouble);
    if (result.trouble) {
        complaints.say(*result.trouble);
        return ExitStatus::cannotWrite;
    }
    if (result.wasInterrupted) return ExitStatus::interrupted;
    if (trouble) return ExitStatus::badData;
    if (result.takes > 0 || result.wasQuit || !arguments.audio) return ExitStatus::done;
    const std::string why =
        arguments.listensForClaps
            ? fmt::format("nowhere in its {:.0f} seconds are two claps to begin one",
                          result.seconds)
            : "there is no sound in it";
    complaints.say(fmt::format("{}: no take; {}", shownName(*arguments.audio), why));
    return ExitStatus::badData;
}

}  // namespace Varnelle
