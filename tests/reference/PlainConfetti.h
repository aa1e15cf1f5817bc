#pragma once

// Confetti piece by piece and number by number, its generator in 128 bits cut to 64.

#include <cmath>
#include <cstdint>
#include <vector>

#include "PrompterCore/takes/Confetti.h"

namespace PrompterCore::Tests {

inline std::vector<Confetti::Piece> plainPieces(std::int64_t count, std::uint64_t seed) {
    __extension__ using Wide = unsigned __int128;
    const Wide modulus = Wide(1) << 64;
    Wide x = seed == 0 ? Wide(11400714819323198485U) : Wide(seed);
    const auto draw = [&] {
        x = (x ^ (x * 8192)) % modulus;
        x = (x ^ (x / 128)) % modulus;
        x = (x ^ (x * 131072)) % modulus;
        return static_cast<double>(static_cast<std::uint64_t>(x % 1000000)) / 1e6;
    };
    std::vector<Confetti::Piece> pieces;
    while (static_cast<std::int64_t>(pieces.size()) < count) {
        Confetti::Piece piece;
        piece.isRound = draw() < 0.3;
        piece.colour = static_cast<std::int64_t>(std::fmod(std::floor(draw() * 7.0), 7.0));
        if (piece.isRound) {
            piece.width = piece.height = 8.0;
        } else {
            piece.width = 6.0 + 4.0 * draw();
            piece.height = 9.0 + 6.0 * draw();
        }
        piece.delay = 0.18 * draw();
        piece.duration = 2.0 + 1.1 * draw();
        piece.drift = (draw() - 0.5) * 900.0;
        piece.rise = -140.0 - 320.0 * draw();
        piece.spin = (draw() - 0.5) * 1440.0;
        pieces.push_back(piece);
    }
    return pieces;
}

inline Confetti::Piece::State plainState(const Confetti::Piece& piece, double t) {
    const double p = (t - piece.delay) / piece.duration;
    if (std::isnan(p) || p < 0) return {0, 0, 0, 0};
    if (p >= 1) return {piece.drift, 560, piece.spin, 0};
    const double opacity = p < 0.7 ? 1 : 1 - (p - 0.7) / 0.3;
    const double rotation = p * piece.spin;
    if (p < 0.3) {
        const double q = p / 0.3;
        const double e = 1 - (1 - q) * (1 - q);
        return {e * 0.55 * piece.drift, e * piece.rise, rotation, opacity};
    }
    const double s = (p - 0.3) / 0.7;
    return {(0.55 + 0.45 * s) * piece.drift, piece.rise + s * s * (560 - piece.rise), rotation,
            opacity};
}

}  // namespace PrompterCore::Tests
