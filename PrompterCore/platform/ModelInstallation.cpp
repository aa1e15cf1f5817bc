#include "PrompterCore/platform/ModelInstallation.h"

#include <algorithm>

#include "PrompterCore/text/PatternSearch.h"

namespace PrompterCore::ModelInstallation {

ModelInstallState stateOf(const ModelAsset& asset, const std::vector<ModelEntry>& entries) {
    const PatternSearch marker(asset.marker);
    const auto encoder = std::ranges::find_if(
        entries, [&](const ModelEntry& entry) { return marker.isIn(entry.name); });
    if (encoder == entries.end()) return ModelInstallState::missing();
    const bool isWhole =
        static_cast<double>(asset.encoderBytes) * 0.95 <= static_cast<double>(encoder->bytes);
    return isWhole ? ModelInstallState::installed(encoder->bytes)
                   : ModelInstallState::partial(encoder->bytes);
}

}  // namespace PrompterCore::ModelInstallation
