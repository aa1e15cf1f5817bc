#include <algorithm>
#include <string_view>

#include "PrompterCore/appearance/AppAppearance.h"
#include "PrompterCore/audio/MicrophoneAccess.h"
#include "PrompterCore/takes/CelebrationLog.h"
#include "PrompterCore/takes/RecordingMode.h"
#include "PrompterCore/takes/StorageFolder.h"
#include "PrompterCore/telemetry/TelemetryTier.h"
#include "tests/golden/Forms.h"

namespace PrompterCore::Tests {

namespace {

// "Name: raw value, raw value"; read by fromRawValue and written by rawValue.
template <class E>
std::string rawValues(std::string_view name) {
    std::string line(name);
    std::string_view before = ": ";
    for (const E value : allCases<E>) {
        line.append(before).append(rawValue(value));
        before = ", ";
    }
    return line + '\n';
}

template <class E>
std::string rawValuesReadAndWritten(const std::string& line) {
    const std::size_t colon = line.find(": ");
    std::string written = line.substr(0, colon);
    std::string before = ": ";
    for (std::size_t at = colon + 2; at <= line.size();) {
        const std::size_t end = std::min(line.find(", ", at), line.size());
        written += before;
        written += rawValue(fromRawValue<E>(Text(line.substr(at, end - at))).value());
        before = ", ";
        at = end + 2;
    }
    return written + '\n';
}

std::string readAndWritten(const std::string& file) {
    const std::vector<std::string> lines = linesOf(file);
    return rawValuesReadAndWritten<AppAppearance>(lines.at(0)) +
           rawValuesReadAndWritten<MicrophoneAccess>(lines.at(1)) +
           rawValuesReadAndWritten<RecordingMode>(lines.at(2)) +
           rawValuesReadAndWritten<TelemetryTier>(lines.at(3)) +
           rawValuesReadAndWritten<Celebration>(lines.at(4));
}

}  // namespace

std::vector<Form> settingForms() {
    return {
        {"settings.txt",
         rawValues<AppAppearance>("AppAppearance") +
             rawValues<MicrophoneAccess>("MicrophoneAccess") +
             rawValues<RecordingMode>("RecordingMode") + rawValues<TelemetryTier>("TelemetryTier") +
             rawValues<Celebration>("Celebration"),
         readAndWritten},
        {"storage-folder.txt", std::string("key: ").append(StorageFolder::infoKey) +
                                   "\nnothing declared: " +
                                   StorageFolder::fromDeclared(std::nullopt).name().utf8() + '\n'},
    };
}

}  // namespace PrompterCore::Tests
