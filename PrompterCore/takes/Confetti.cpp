#include "PrompterCore/takes/Confetti.h"

#include <cmath>
#include <cstddef>

#include "PrompterCore/support/Require.h"

namespace PrompterCore::Confetti {

namespace {

constexpr double ground = 560;  // points below the origin

// A 64-bit xorshift generator (Marsaglia 2003, shifts 13, 7 and 17).
class Draws {
public:
    // From nought it would never move.
    explicit Draws(std::uint64_t seed) noexcept : state_(seed != 0 ? seed : 0x9E3779B97F4A7C15) {}

    // From 0 up to, not including, 1, in millionths.
    double next() noexcept {
        state_ ^= state_ << 13;
        state_ ^= state_ >> 7;
        state_ ^= state_ << 17;
        return static_cast<double>(state_ % 1'000'000) / 1'000'000;
    }

private:
    std::uint64_t state_;
};

// The order of the draws is what a seed means.
Piece drawn(Draws& draws) noexcept {
    Piece piece;
    piece.isRound = draws.next() < 0.3;
    const double count = static_cast<double>(paletteCount);
    piece.colour = static_cast<std::int64_t>(std::floor(draws.next() * count)) % paletteCount;
    piece.width = piece.isRound ? 8 : 6 + 4 * draws.next();
    piece.height = piece.isRound ? 8 : 9 + 6 * draws.next();
    piece.delay = 0.18 * draws.next();
    piece.duration = 2.0 + 1.1 * draws.next();
    piece.drift = (draws.next() - 0.5) * 900;
    piece.rise = -140 - 320 * draws.next();
    piece.spin = (draws.next() - 0.5) * 1440;
    return piece;
}

}  // namespace

std::vector<Piece> pieces(std::int64_t count, std::uint64_t seed) {
    require(count >= 0, "a number of pieces is not negative");
    Draws draws(seed);
    std::vector<Piece> result;
    result.reserve(static_cast<std::size_t>(count));
    for (std::int64_t i = 0; i < count; ++i)
        result.push_back(drawn(draws));
    return result;
}

Piece::State Piece::stateAt(double time) const noexcept {
    const double progress = (time - delay) / duration;
    if (!(progress >= 0)) return {};
    if (progress >= 1) return {.x = drift, .y = ground, .rotation = spin, .opacity = 0};
    State state{.x = 0,
                .y = 0,
                .rotation = progress * spin,
                .opacity = progress < 0.7 ? 1 : 1 - (progress - 0.7) / 0.3};
    if (progress < 0.3) {
        // Thrown: slower and slower up to the top.
        const double left = 1 - progress / 0.3;
        const double eased = 1 - left * left;
        state.x = eased * 0.55 * drift;
        state.y = eased * rise;
    } else {
        // Falling: faster and faster down to the ground.
        const double fallen = (progress - 0.3) / 0.7;
        state.x = (0.55 + 0.45 * fallen) * drift;
        state.y = rise + fallen * fallen * (ground - rise);
    }
    return state;
}

}  // namespace PrompterCore::Confetti
