#include <concepts>
#include <limits>
#include <map>
#include <string_view>

#include "PrompterCore/telemetry/TelemetryBucket.h"
#include "PrompterCore/telemetry/TelemetryEvent.h"
#include "tests/support/Printing.h"

namespace PrompterCore {
namespace {

using Properties = std::map<Text, TelemetryValue>;

static_assert(std::copyable<TelemetryEvent> && std::equality_comparable<TelemetryEvent>);
static_assert(std::copyable<TelemetryValue> && std::equality_comparable<TelemetryValue>);

TEST(TelemetryBucket, ALowerBoundBelongsToItsRange) {
    struct Case {
        std::int64_t seconds;
        std::string_view label;
    };
    const Case cases[] = {
        {std::numeric_limits<std::int64_t>::min(), "under_1"},
        {-5, "under_1"},
        {0, "under_1"},
        {59, "under_1"},
        {60, "1_to_5"},
        {299, "1_to_5"},
        {300, "5_to_15"},
        {899, "5_to_15"},
        {900, "15_to_30"},
        {1799, "15_to_30"},
        {1800, "30_to_60"},
        {3599, "30_to_60"},
        {3600, "over_60"},
        {std::numeric_limits<std::int64_t>::max(), "over_60"},
    };
    for (const auto& [seconds, label] : cases)
        EXPECT_EQ(TelemetryBucket::minutes(seconds), label) << seconds;
}

TEST(TelemetryEvent, HasANameAndAtMostOneProperty) {
    const auto tierName = [](const char* name) { return TelemetryValue::name(name); };
    const auto range = [](const char* label) { return TelemetryValue::bucket(label); };
    struct Case {
        TelemetryEvent event;
        std::string_view name;
        Properties properties;
    };
    const Case cases[] = {
        {TelemetryEvent::launched(false), "launched", {{"first_run", TelemetryValue::flag(false)}}},
        {TelemetryEvent::launched(true), "launched", {{"first_run", TelemetryValue::flag(true)}}},
        {TelemetryEvent::modelInstalled(TelemetryTier::lowLatency),
         "model_installed",
         {{"model", tierName("lowLatency")}}},
        {TelemetryEvent::readingStarted(TelemetryTier::accurate),
         "reading_started",
         {{"model", tierName("accurate")}}},
        {TelemetryEvent::readingStarted(TelemetryTier::balanced),
         "reading_started",
         {{"model", tierName("balanced")}}},
        {TelemetryEvent::readingFinished(59), "reading_finished", {{"minutes", range("under_1")}}},
        {TelemetryEvent::readingFinished(60), "reading_finished", {{"minutes", range("1_to_5")}}},
        {TelemetryEvent::readingFinished(3599),
         "reading_finished",
         {{"minutes", range("30_to_60")}}},
        {TelemetryEvent::readingFinished(3600),
         "reading_finished",
         {{"minutes", range("over_60")}}},
        {TelemetryEvent::prompterShown(true),
         "prompter_shown",
         {{"external_display", TelemetryValue::flag(true)}}},
        {TelemetryEvent::takeRecorded(-5), "take_recorded", {{"minutes", range("under_1")}}},
        {TelemetryEvent::draftGenerated(), "draft_generated", {}},
        {TelemetryEvent::versionSaved(), "version_saved", {}},
    };
    for (const auto& [event, name, properties] : cases) {
        SCOPED_TRACE(name);
        EXPECT_EQ(event.name(), name);
        EXPECT_EQ(event.properties(), properties);
    }
}

TEST(TelemetryEvent, EqualsOnlyTheSameCaseWithTheSamePayload) {
    EXPECT_EQ(TelemetryEvent::readingFinished(60), TelemetryEvent::readingFinished(60));
    EXPECT_NE(TelemetryEvent::readingFinished(60), TelemetryEvent::readingFinished(61));
    EXPECT_NE(TelemetryEvent::readingFinished(60), TelemetryEvent::takeRecorded(60));
    EXPECT_NE(TelemetryEvent::draftGenerated(), TelemetryEvent::versionSaved());
    EXPECT_NE(TelemetryValue::name("over_60"), TelemetryValue::bucket("over_60"));
}

TEST(TelemetryTier, ReadsItsNamesExactly) {
    EXPECT_EQ(fromRawValue<TelemetryTier>("balanced"), TelemetryTier::balanced);
    EXPECT_EQ(fromRawValue<TelemetryTier>("Balanced"), std::nullopt);
}

}  // namespace
}  // namespace PrompterCore
