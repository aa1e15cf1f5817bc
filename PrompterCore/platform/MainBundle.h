#pragma once

// What the application says of itself in its bundle's information dictionary.
//
//   MainBundle::informationText("CFBundleName");   // absent where there are no bundles

#include <optional>
#include <string_view>

#include "PrompterCore/text/Text.h"

namespace PrompterCore::MainBundle {

/// The text under `key`. Absent without a bundle, and where the key is missing or holds something
/// other than a text. Systems other than macOS have no bundles.
[[nodiscard]] std::optional<Text> informationText(std::string_view key);

}  // namespace PrompterCore::MainBundle
