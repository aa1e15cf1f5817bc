#include "PrompterCore/telemetry/TelemetryEvent.h"

#include "PrompterCore/telemetry/TelemetryBucket.h"

namespace PrompterCore {

namespace {

using Properties = std::map<Text, TelemetryValue>;

Properties model(TelemetryTier tier) { return {{"model", TelemetryValue::name(rawValue(tier))}}; }

Properties duration(std::int64_t seconds) {
    return {{"minutes", TelemetryValue::bucket(TelemetryBucket::minutes(seconds))}};
}

struct Name {
    std::string_view operator()(const TelemetryEvent::Launched&) { return "launched"; }
    std::string_view operator()(const TelemetryEvent::ModelInstalled&) { return "model_installed"; }
    std::string_view operator()(const TelemetryEvent::ReadingStarted&) { return "reading_started"; }
    std::string_view operator()(const TelemetryEvent::ReadingFinished&) {
        return "reading_finished";
    }
    std::string_view operator()(const TelemetryEvent::PrompterShown&) { return "prompter_shown"; }
    std::string_view operator()(const TelemetryEvent::TakeRecorded&) { return "take_recorded"; }
    std::string_view operator()(const TelemetryEvent::DraftGenerated&) { return "draft_generated"; }
    std::string_view operator()(const TelemetryEvent::VersionSaved&) { return "version_saved"; }
};

struct PropertiesOf {
    Properties operator()(const TelemetryEvent::Launched& event) {
        return {{"first_run", TelemetryValue::flag(event.firstRun)}};
    }
    Properties operator()(const TelemetryEvent::ModelInstalled& event) { return model(event.tier); }
    Properties operator()(const TelemetryEvent::ReadingStarted& event) { return model(event.tier); }
    Properties operator()(const TelemetryEvent::ReadingFinished& event) {
        return duration(event.seconds);
    }
    Properties operator()(const TelemetryEvent::PrompterShown& event) {
        return {{"external_display", TelemetryValue::flag(event.external)}};
    }
    Properties operator()(const TelemetryEvent::TakeRecorded& event) {
        return duration(event.seconds);
    }
    Properties operator()(const TelemetryEvent::DraftGenerated&) { return {}; }
    Properties operator()(const TelemetryEvent::VersionSaved&) { return {}; }
};

}  // namespace

std::string_view TelemetryEvent::name() const noexcept { return visit(Name{}); }

Properties TelemetryEvent::properties() const { return visit(PropertiesOf{}); }

}  // namespace PrompterCore
