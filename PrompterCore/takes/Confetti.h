#pragma once

// A burst of confetti: where each piece is at each moment. The host only draws.
//
// Units: points from the origin of the burst, x to the right and y downwards; seconds since it
// began; degrees.
//
//   const auto pieces = Confetti::pieces(120, seed);
//   for (const Confetti::Piece& piece : pieces)
//       draw(piece, piece.stateAt(1.2));
//
// The same seed gives the same pieces, to the bit, and a larger count only adds some behind.

#include <cstdint>
#include <vector>

namespace PrompterCore::Confetti {

inline constexpr double lifetime = 3.5;          ///< seconds; all pieces have landed before
inline constexpr std::int64_t paletteCount = 7;  ///< colours that the host has

/// One piece of paper and how it flies.
struct Piece {
    /// Where it is, and how much of it is seen.
    struct State {
        double x = 0;         ///< points
        double y = 0;         ///< points
        double rotation = 0;  ///< degrees
        double opacity = 0;   ///< 0 to 1

        friend bool operator==(const State&, const State&) = default;
    };

    std::int64_t colour = 0;  ///< 0 to 6, in the host's palette
    double width = 0;         ///< points
    double height = 0;        ///< points
    bool isRound = false;     ///< a disc; otherwise a rectangle
    double delay = 0;         ///< seconds before it moves
    double duration = 0;      ///< seconds in flight
    double drift = 0;         ///< points to the right when it has landed
    double rise = 0;          ///< points below the origin at the top of its throw: negative
    double spin = 0;          ///< degrees over the whole flight

    /// Where it is at `time`. Nothing is seen of it before `delay` and after its flight; a `time`
    /// that is no number is before.
    [[nodiscard]] State stateAt(double time) const noexcept;

    friend bool operator==(const Piece&, const Piece&) = default;
};

/// The first `count` pieces of `seed`. A seed of 0 is the same as 0x9E3779B97F4A7C15. Stops the
/// program unless `count` is 0 or more.
[[nodiscard]] std::vector<Piece> pieces(std::int64_t count, std::uint64_t seed);

}  // namespace PrompterCore::Confetti
