// Where the system has no bundles.

#include "PrompterCore/platform/MainBundle.h"

namespace PrompterCore::MainBundle {

std::optional<Text> informationText(std::string_view) { return std::nullopt; }

}  // namespace PrompterCore::MainBundle
