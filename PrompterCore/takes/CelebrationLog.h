#pragma once

// Milestones that are celebrated once for each user.
//
//   CelebrationLog log{.stored = {}};
//   log.claim(Celebration::firstTake);   // true: celebrate, and keep log.stored
//   log.claim(Celebration::firstTake);   // false

#include <string_view>
#include <vector>

#include "PrompterCore/support/Enumeration.h"
#include "PrompterCore/text/Text.h"

namespace PrompterCore {

/// What is celebrated; the raw values are stored.
enum class Celebration { finishedSetup, firstTake };

template <>
struct Enumeration<Celebration> {
    struct Row {
        Celebration value;
        std::string_view caseName, rawValue;
    };
    static constexpr Row rows[] = {
        {Celebration::finishedSetup, "finishedSetup", "finishedSetup"},
        {Celebration::firstTake, "firstTake", "firstTake"},
    };
};

/// A value; the host keeps `stored` from one launch to the next.
struct CelebrationLog {
    std::vector<Text> stored;  ///< the raw values of what was celebrated, in the order of claiming

    /// True, and `celebration` is stored, when it was not there yet.
    bool claim(Celebration celebration);

    friend bool operator==(const CelebrationLog&, const CelebrationLog&) = default;
};

}  // namespace PrompterCore
