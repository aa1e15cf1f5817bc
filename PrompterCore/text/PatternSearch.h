#pragma once

// Looking for one text in many. What is found begins and ends between user-perceived characters and
// is canonically equivalent to the pattern.
//
//   PatternSearch("e").isIn("cafe");            // true
//   PatternSearch("e").isIn("caf\u00E9");       // false: another character
//   PatternSearch::ignoringCase("STRASSE", Locale()).isIn("Alte Straße");   // true

#include <string>

#include "PrompterCore/text/Locale.h"
#include "PrompterCore/text/Text.h"

namespace PrompterCore {

/// A pattern, prepared once. A value.
class PatternSearch {
public:
    /// Looks for exactly these characters. The empty pattern is in every text.
    explicit PatternSearch(const Text& pattern);
    /// Case does not count: both sides are case-folded by Unicode, for Turkish and Azerbaijani with
    /// their dotted and dotless i.
    [[nodiscard]] static PatternSearch ignoringCase(const Text& pattern, const Locale& locale);

    /// O(n) for usual texts; a pattern that repeats itself may cost its length times more.
    [[nodiscard]] bool isIn(const Text& text) const;

    friend bool operator==(const PatternSearch&, const PatternSearch&) = default;

private:
    enum class Case { counts, ignored, ignoredWithDotlessI };

    PatternSearch(const Text& pattern, Case letterCase);
    [[nodiscard]] std::string prepared(const Text& text) const;

    Case case_ = Case::counts;
    std::string pattern_;  // prepared
};

}  // namespace PrompterCore
