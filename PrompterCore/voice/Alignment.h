#pragma once

// Where the presenter is, as the voice aligner judges it.
//
//   Alignment{.tokenIndex = 12, .confidence = 0.93};

#include <cstdint>

namespace PrompterCore {

/// The token judged to be the last word spoken.
struct Alignment {
    std::int64_t tokenIndex = 0;  ///< index into Script::tokens
    double confidence = 0;        ///< weighted likeness of the words (at most 1 with the usual
                                  ///< weights) minus the penalty for distance; never NaN

    friend bool operator==(const Alignment&, const Alignment&) = default;
};

}  // namespace PrompterCore
