#include "apps/varnelle/Doctor.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string_view>
#include <system_error>

#include <fmt/format.h>
#include <unistd.h>

#include "PrompterCore/platform/Keychain.h"
#include "PrompterCore/platform/ModelInstallation.h"
#include "PrompterCore/text/Text.h"
#include "apps/varnelle/CommandLine.h"
#include "apps/varnelle/Demo.h"
#include "apps/varnelle/Json.h"
#include "apps/varnelle/Output.h"
#include "host/AacEncoder.h"
#include "host/AudioInputs.h"
#include "host/Failures.h"
#include "host/RunProgram.h"
#include "host/SoundFileSource.h"
#include "host/SpeechModel.h"

namespace Varnelle {

namespace {

using PrompterCore::Keychain;
using PrompterCore::ModelAsset;
using PrompterCore::ModelEntry;
using PrompterCore::ModelInstallState;
namespace ModelInstallation = PrompterCore::ModelInstallation;

constexpr const char* reinstallModel = "on Debian: apt-get install --reinstall pocketsphinx-en-us";

// How common words are is the model's largest file; the rest is small beside it.
const ModelAsset model{
    .marker = "en-us.lm.bin", .encoderBytes = 27'114'385, .downloadBytes = 37'900'000};

std::vector<ModelEntry> entriesIn(const std::filesystem::path& folder) {
    std::vector<ModelEntry> entries;
    std::error_code unreadable;
    for (const auto& entry : std::filesystem::directory_iterator(folder, unreadable)) {
        std::error_code none;
        const auto size = entry.file_size(none);
        entries.push_back(
            {entry.path().filename().string(), none ? 0 : static_cast<std::int64_t>(size)});
    }
    return entries;
}

std::string megabytes(std::int64_t bytes) {
    return fmt::format("{:.1f} MB", static_cast<double>(bytes) / 1e6);
}

// A folder's name need not be UTF-8; JSON must.
std::string wellFormed(std::string_view bytes) { return PrompterCore::Text(bytes).utf8(); }

// What `look` finds; what is missing says so in its own sentence.
template <class Look>
Finding finding(const char* name, Look look) {
    try {
        return {.name = name, .isThere = true, .text = wellFormed(look())};
    } catch (const std::runtime_error& missing) {
        return {.name = name, .isThere = false, .text = wellFormed(missing.what())};
    }
}

std::string speechModel() {
    const std::filesystem::path folder = speechModelFolder();
    return ModelInstallation::stateOf(model, entriesIn(folder))
        .visit(
            [&](const ModelInstallState::Installed& installed) {
                static_cast<void>(SpeechModel(folder));  // throws when another file is missing
                return fmt::format("PocketSphinx with its English model, {} in {}",
                                   megabytes(installed.bytes), folder.string());
            },
            [&](const ModelInstallState::Partial& partial) -> std::string {
                throw Unavailable(fmt::format(
                    "only {} of {} of the English model are in {}; {}", megabytes(partial.bytes),
                    megabytes(model.encoderBytes), folder.string(), reinstallModel));
            },
            [&](const ModelInstallState::Missing&) -> std::string {
                throw Unavailable(fmt::format("the English model is not in {}; {}", folder.string(),
                                              reinstallModel));
            });
}

std::string pronunciations() {
    const auto answer = runProgram({"espeak-ng", "--version"}, "", std::chrono::seconds(2));
    if (!answer || !answer->complete)
        throw Unavailable(
            "without espeak-ng, words that the dictionary lacks are not heard; "
            "on Debian: apt-get install espeak-ng");
    return "espeak-ng, for the words that the dictionary lacks";
}

std::vector<AudioSource> audioSources() {
    try {
        return listAudioSources();
    } catch (const Unavailable& noServer) {
        throw Unavailable(std::string(noServer.what()) + "; start PulseAudio or PipeWire");
    }
}

std::string microphone() {
    const AudioInputs inputs = audioInputsFrom(audioSources(), std::nullopt);
    if (!inputs.chosen) throw Unavailable("there is no audio input; connect a microphone");
    return inputs.chosen->name.utf8();
}

constexpr std::int32_t noKeychainAvailable = -25291;

// A value of our own, there and back.
bool keepsAValue() {
    const Keychain ours{fmt::format("varnelle doctor {}", getpid())};
    ours.write("a value");
    const bool isKept = ours.read().has_value();
    ours.remove();
    return isKept;
}

std::string keychain() {
    try {
        if (!keepsAValue())
            throw Unavailable("the keychain takes a value and does not give it back");
    } catch (const Keychain::Failure& failure) {
        if (failure.status() != noKeychainAvailable) throw;
        throw Unavailable(std::string(failure.what()) +
                          " Start one, as gnome-keyring; on Debian: apt-get install gnome-keyring");
    }
    return "stores, reads and removes";
}

std::string soundFiles() {
    SoundFileSource sample(sampleFile("sample.flac"));
    if (sample.read().empty()) throw Unavailable("the sample's sound cannot be read");
    return fmt::format("reads the sample, {:.0f} s of FLAC", sample.duration());
}

std::string takes() {
    static_cast<void>(AacEncoder(AacEncoder::rateFor(48'000)));
    return "AAC in .m4a";
}

}  // namespace

std::vector<Finding> examine() {
    return {finding("speech", speechModel),     finding("pronunciations", pronunciations),
            finding("microphone", microphone),  finding("keychain", keychain),
            finding("sound files", soundFiles), finding("takes", takes)};
}

ExitStatus doctor(bool json) {
    const std::vector<Finding> findings = examine();
    const bool isAllThere = std::ranges::all_of(findings, &Finding::isThere);
    Output output;
    Json list = Json::array();
    for (const Finding& finding : findings) {
        const char* const verdict = finding.isThere ? "ok" : "missing";
        if (json) {
            list.push_back(
                Json{{"name", finding.name}, {"isThere", finding.isThere}, {"text", finding.text}});
        } else {
            output.line(fmt::format("{:<8} {:<15} {}", verdict, finding.name, shown(finding.text)));
        }
    }
    if (json) output.line(Json{{"isAllThere", isAllThere}, {"findings", list}}.dump());
    output.flush();
    return isAllThere ? ExitStatus::done : ExitStatus::unavailable;
}

void addDoctor(CLI::App& app, ExitStatus& exit) {
    const auto json = std::make_shared<bool>(false);
    CLI::App& doctorApp = *app.add_subcommand("doctor",
                                              "Examples:\n"
                                              "  varnelle doctor\n"
                                              "  varnelle doctor --json\n\n"
                                              "What this machine has of all that is needed, and "
                                              "what to do about the rest.");
    doctorApp.add_flag("--json", *json, "the findings as JSON");
    doctorApp.callback([json, &exit] { exit = doctor(*json); });
}

}  // namespace Varnelle
