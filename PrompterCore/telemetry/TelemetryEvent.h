#pragma once

// Everything that is ever reported about how the application is used: a closed set of events, each
// with at most one property. Nothing is sent here.
//
//   const TelemetryEvent event = TelemetryEvent::readingFinished(59);
//   event.name();         // "reading_finished"
//   event.properties();   // {"minutes": bucket "under_1"}

#include <cstdint>
#include <map>
#include <string_view>
#include <utility>
#include <variant>

#include "PrompterCore/support/Overloaded.h"
#include "PrompterCore/telemetry/TelemetryTier.h"
#include "PrompterCore/telemetry/TelemetryValue.h"
#include "PrompterCore/text/Text.h"

namespace PrompterCore {

/// One event, made at the moment when it happens.
class TelemetryEvent {
public:
    /// What `launched` reports.
    struct Launched {
        bool firstRun = false;  ///< the very first start
        friend bool operator==(const Launched&, const Launched&) = default;
    };
    /// What `modelInstalled` reports.
    struct ModelInstalled {
        TelemetryTier tier{};  ///< of that model
        friend bool operator==(const ModelInstalled&, const ModelInstalled&) = default;
    };
    /// What `readingStarted` reports.
    struct ReadingStarted {
        TelemetryTier tier{};  ///< of the model in use
        friend bool operator==(const ReadingStarted&, const ReadingStarted&) = default;
    };
    /// What `readingFinished` reports, as a range.
    struct ReadingFinished {
        std::int64_t seconds = 0;  ///< how long it took
        friend bool operator==(const ReadingFinished&, const ReadingFinished&) = default;
    };
    /// What `prompterShown` reports.
    struct PrompterShown {
        bool external = false;  ///< on an external display
        friend bool operator==(const PrompterShown&, const PrompterShown&) = default;
    };
    /// What `takeRecorded` reports, as a range.
    struct TakeRecorded {
        std::int64_t seconds = 0;  ///< how long it is
        friend bool operator==(const TakeRecorded&, const TakeRecorded&) = default;
    };
    /// `draftGenerated` reports nothing else.
    struct DraftGenerated {
        friend bool operator==(const DraftGenerated&, const DraftGenerated&) = default;
    };
    /// `versionSaved` reports nothing else.
    struct VersionSaved {
        friend bool operator==(const VersionSaved&, const VersionSaved&) = default;
    };

    /// The application started.
    [[nodiscard]] static TelemetryEvent launched(bool firstRun) {
        return TelemetryEvent(Launched{firstRun});
    }
    /// A speech model is in place.
    [[nodiscard]] static TelemetryEvent modelInstalled(TelemetryTier tier) {
        return TelemetryEvent(ModelInstalled{tier});
    }
    /// A reading began that the voice leads.
    [[nodiscard]] static TelemetryEvent readingStarted(TelemetryTier tier) {
        return TelemetryEvent(ReadingStarted{tier});
    }
    /// It ended after `seconds`.
    [[nodiscard]] static TelemetryEvent readingFinished(std::int64_t seconds) {
        return TelemetryEvent(ReadingFinished{seconds});
    }
    /// The prompter's window came up.
    [[nodiscard]] static TelemetryEvent prompterShown(bool external) {
        return TelemetryEvent(PrompterShown{external});
    }
    /// A take of `seconds` is finished.
    [[nodiscard]] static TelemetryEvent takeRecorded(std::int64_t seconds) {
        return TelemetryEvent(TakeRecorded{seconds});
    }
    /// A draft of a script was generated.
    [[nodiscard]] static TelemetryEvent draftGenerated() {
        return TelemetryEvent(DraftGenerated{});
    }
    /// A version of a script was saved.
    [[nodiscard]] static TelemetryEvent versionSaved() { return TelemetryEvent(VersionSaved{}); }

    /// What the event is called when it is sent.
    [[nodiscard]] std::string_view name() const noexcept;
    /// Its property, or none.
    [[nodiscard]] std::map<Text, TelemetryValue> properties() const;

    /// Calls the one of `cases` that takes what this is: one of the records above.
    template <class... Cases>
    decltype(auto) visit(Cases&&... cases) const {
        return std::visit(Overloaded{std::forward<Cases>(cases)...}, event_);
    }

    friend bool operator==(const TelemetryEvent&, const TelemetryEvent&) = default;

private:
    using Event = std::variant<Launched, ModelInstalled, ReadingStarted, ReadingFinished,
                               PrompterShown, TakeRecorded, DraftGenerated, VersionSaved>;
    explicit TelemetryEvent(Event event) noexcept : event_(event) {}

    Event event_;
};

}  // namespace PrompterCore
