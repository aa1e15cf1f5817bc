#pragma once

// A colour, its text form and its contrast with another one.
//
// Units: red, green, blue and alpha (opacity) are 0 ... 1; a contrast is a ratio, 1 ... 21.
//
//   const RGBA orange(1, 0.5, 0, 1);
//   orange.hex();                                        // "#FF8000FF"
//   RGBA::fromHex("#ff8000");                            // opaque: (1, 128/255, 0, 1)
//   RGBA(0, 0, 0, 1).contrastWith(RGBA(1, 1, 1, 1));     // 21
//   toJson(orange);   // {"red":1,"green":0.5,"blue":0,"alpha":1}

#include <optional>
#include <string>

#include "PrompterCore/records/Record.h"
#include "PrompterCore/text/Text.h"

namespace PrompterCore {

/// A value: two colours are equal when their four components are, exactly.
class RGBA {
public:
    /// Each component is clamped to 0 ... 1; one that is not a number stays what it is.
    constexpr RGBA(double red, double green, double blue, double alpha) noexcept
        : red_(clamped(red)),
          green_(clamped(green)),
          blue_(clamped(blue)),
          alpha_(clamped(alpha)) {}

    /// The colour that was stored: the components as they stand, also those outside 0 ... 1.
    [[nodiscard]] static constexpr RGBA unclamped(double red, double green, double blue,
                                                  double alpha) noexcept {
        RGBA colour(0, 0, 0, 0);
        colour.red_ = red;
        colour.green_ = green;
        colour.blue_ = blue;
        colour.alpha_ = alpha;
        return colour;
    }

    /// The colour of a stored record, its numbers as they stand. Throws RecordFailure unless all
    /// four keys hold a number.
    [[nodiscard]] static RGBA fromRecord(const Record& record);
    /// "red", "green", "blue", "alpha". Throws RecordFailure unless all are finite.
    [[nodiscard]] Record toRecord() const;

    /// Six hexadecimal digits (opaque) or eight, red first and alpha last, in either case, with or
    /// without one "#" in front. Absent for anything else.
    [[nodiscard]] static std::optional<RGBA> fromHex(const Text& text);

    [[nodiscard]] constexpr double red() const noexcept { return red_; }      ///< 0 ... 1
    [[nodiscard]] constexpr double green() const noexcept { return green_; }  ///< 0 ... 1
    [[nodiscard]] constexpr double blue() const noexcept { return blue_; }    ///< 0 ... 1
    /// 0 is transparent, 1 opaque.
    [[nodiscard]] constexpr double alpha() const noexcept { return alpha_; }

    /// "#" and eight upper-case digits, alpha included. Stops the program unless every component
    /// times 255 rounds to 0 ... 255, as it does for all but stored colours that never were one.
    [[nodiscard]] std::string hex() const;

    /// The relative luminance of WCAG 2.0: 0 for black, 1 for white. Alpha does not count.
    [[nodiscard]] double luminance() const noexcept;

    /// The contrast ratio of WCAG 2.0: 1 for equal luminances, 21 for black and white. Symmetric.
    [[nodiscard]] double contrastWith(const RGBA& other) const noexcept;

    friend constexpr bool operator==(const RGBA&, const RGBA&) = default;

private:
    static constexpr double clamped(double component) noexcept {
        if (component <= 0) return 0;
        return component > 1 ? 1 : component;
    }

    double red_, green_, blue_, alpha_;
};

}  // namespace PrompterCore
