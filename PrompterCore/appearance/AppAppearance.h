#pragma once

// Light or dark: a setting, and what it comes to.
//
//   const bool systemIsDark = true;
//   resolved(AppAppearance::system, systemIsDark);   // AppAppearanceScheme::dark
//   resolved(AppAppearance::light, systemIsDark);    // AppAppearanceScheme::light
//   fromStored<AppAppearance>("dark");               // AppAppearance::dark

#include <string>
#include <string_view>

#include "PrompterCore/support/Enumeration.h"
#include "PrompterCore/text/StoredSetting.h"

namespace PrompterCore {

/// What the user chose; the first is what counts where nothing is stored.
enum class AppAppearance { system, light, dark };

template <>
struct Enumeration<AppAppearance> {
    struct Row {
        AppAppearance value;
        std::string_view caseName, rawValue, title;
    };
    static constexpr Row rows[] = {
        {AppAppearance::system, "system", "system", "System"},
        {AppAppearance::light, "light", "light", "Light"},
        {AppAppearance::dark, "dark", "dark", "Dark"},
    };
    static constexpr bool isSetting = true;
};

/// The appearance that is in force.
enum class AppAppearanceScheme { light, dark };

template <>
struct Enumeration<AppAppearanceScheme> {
    struct Row {
        AppAppearanceScheme value;
        std::string_view caseName;
    };
    static constexpr Row rows[] = {
        {AppAppearanceScheme::light, "light"},
        {AppAppearanceScheme::dark, "dark"},
    };
};

/// The system's scheme for `system`, else the chosen one.
[[nodiscard]] AppAppearanceScheme resolved(AppAppearance appearance, bool systemIsDark) noexcept;

/// A sentence or two below the choice that say what it does.
[[nodiscard]] std::string note(AppAppearance appearance, bool systemIsDark);

}  // namespace PrompterCore
