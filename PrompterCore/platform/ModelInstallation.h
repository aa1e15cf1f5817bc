#pragma once

// Whether the speech model on this machine is there, as its store lists it.
//
//   const ModelAsset asset{.marker = "Encoder", .encoderBytes = 1000, .downloadBytes = 1500};
//   ModelInstallation::stateOf(asset, {{"AudioEncoder.bin", 949}});   // partial, 949 bytes
//   ModelInstallation::stateOf(asset, {{"AudioEncoder.bin", 950}});   // installed, 950 bytes

#include <cstdint>
#include <utility>
#include <variant>
#include <vector>

#include "PrompterCore/support/Overloaded.h"
#include "PrompterCore/text/Text.h"

namespace PrompterCore {

/// The model that is needed.
struct ModelAsset {
    Text marker;                     ///< a part of the name of the model's main file, the encoder
    std::int64_t encoderBytes = 0;   ///< that file's size
    std::int64_t downloadBytes = 0;  ///< of everything that is downloaded; only shown

    friend bool operator==(const ModelAsset&, const ModelAsset&) = default;
};

/// What the store has.
struct ModelEntry {
    Text name;               ///< as the store lists it
    std::int64_t bytes = 0;  ///< its size at this moment

    friend bool operator==(const ModelEntry&, const ModelEntry&) = default;
};

/// How far the model has come.
class ModelInstallState {
public:
    /// A download is under way, or was broken off.
    struct Partial {
        std::int64_t bytes = 0;  ///< there so far
        friend bool operator==(const Partial&, const Partial&) = default;
    };
    /// The model is whole.
    struct Installed {
        std::int64_t bytes = 0;  ///< the size that was found
        friend bool operator==(const Installed&, const Installed&) = default;
    };
    /// The store has nothing of it.
    struct Missing {
        friend bool operator==(const Missing&, const Missing&) = default;
    };

    /// Partial, with the bytes that are there.
    [[nodiscard]] static ModelInstallState partial(std::int64_t bytes) noexcept {
        return ModelInstallState(Partial{bytes});
    }
    /// Installed, with the size that was found.
    [[nodiscard]] static ModelInstallState installed(std::int64_t bytes) noexcept {
        return ModelInstallState(Installed{bytes});
    }
    /// Missing.
    [[nodiscard]] static ModelInstallState missing() noexcept {
        return ModelInstallState(Missing{});
    }

    /// True for Installed only.
    [[nodiscard]] bool isInstalled() const noexcept {
        return std::holds_alternative<Installed>(state_);
    }

    /// Calls the one of `cases` that takes what this is: Partial, Installed or Missing.
    template <class... Cases>
    decltype(auto) visit(Cases&&... cases) const {
        return std::visit(Overloaded{std::forward<Cases>(cases)...}, state_);
    }

    friend bool operator==(const ModelInstallState&, const ModelInstallState&) = default;

private:
    using State = std::variant<Partial, Installed, Missing>;
    explicit ModelInstallState(State state) noexcept : state_(state) {}

    State state_;
};

namespace ModelInstallation {

/// By the first entry whose name contains the marker, its case included. At least 95 % of the
/// expected size count as installed: a store's sizes differ a little from the catalogue's.
[[nodiscard]] ModelInstallState stateOf(const ModelAsset& asset,
                                        const std::vector<ModelEntry>& entries);

}  // namespace ModelInstallation

}  // namespace PrompterCore
