#include "PrompterCore/telemetry/TelemetryEvent.h"
#include "PrompterCore/telemetry/TelemetryScrub.h"
#include "tests/golden/Forms.h"

namespace PrompterCore::Tests {

namespace {

constexpr bool isFirstRun = true;
constexpr bool isExternal = true;

const TelemetryEvent events[] = {
    TelemetryEvent::launched(isFirstRun),
    TelemetryEvent::launched(!isFirstRun),
    TelemetryEvent::modelInstalled(TelemetryTier::lowLatency),
    TelemetryEvent::readingStarted(TelemetryTier::balanced),
    TelemetryEvent::readingStarted(TelemetryTier::accurate),
    TelemetryEvent::readingFinished(59),
    TelemetryEvent::readingFinished(60),
    TelemetryEvent::readingFinished(300),
    TelemetryEvent::prompterShown(isExternal),
    TelemetryEvent::prompterShown(!isExternal),
    TelemetryEvent::takeRecorded(900),
    TelemetryEvent::takeRecorded(1800),
    TelemetryEvent::takeRecorded(3600),
    TelemetryEvent::draftGenerated(),
    TelemetryEvent::versionSaved(),
};

std::string shown(const TelemetryValue& value) {
    return value.visit(
        [](const TelemetryValue::Flag& flag) { return std::string(flag.isSet ? "true" : "false"); },
        [](const TelemetryValue::Name& name) { return "name " + name.name.utf8(); },
        [](const TelemetryValue::Bucket& bucket) { return "bucket " + bucket.label.utf8(); });
}

std::string eventLines() {
    std::string lines;
    for (const TelemetryEvent& event : events) {
        lines += event.name();
        for (const auto& [key, value] : event.properties())
            lines += ' ' + key.utf8() + " = " + shown(value);
        lines += '\n';
    }
    return lines;
}

std::string scrubbing() {
    std::string lines;
    PropertyMap sent;
    for (const std::string_view key : TelemetryScrub::removed) {
        lines.append("removed ").append(key) += '\n';
        sent[Text(key)] = "identifying";
    }
    for (const std::string_view key : TelemetryScrub::coarsened) {
        lines.append("coarsened ").append(key) += '\n';
        sent[Text(key)] = "14.4.1";
    }
    sent["$ip"] = "192.0.2.1";
    sent["minutes"] = "over_60";
    for (const auto& [key, value] : TelemetryScrub::scrub(sent))
        lines += "sent " + key.utf8() + " = " + value.text()->utf8() + '\n';
    return lines;
}

}  // namespace

std::vector<Form> telemetryForms() {
    return {{"telemetry-events.txt", eventLines()}, {"telemetry-scrubbing.txt", scrubbing()}};
}

}  // namespace PrompterCore::Tests
