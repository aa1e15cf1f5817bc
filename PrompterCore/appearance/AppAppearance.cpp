#include "PrompterCore/appearance/AppAppearance.h"

namespace PrompterCore {

namespace {

// As it reads within a sentence.
std::string_view word(AppAppearanceScheme scheme) noexcept {
    return scheme == AppAppearanceScheme::dark ? "dark" : "light";
}

}  // namespace

AppAppearanceScheme resolved(AppAppearance appearance, bool systemIsDark) noexcept {
    const bool isDark =
        appearance == AppAppearance::dark || (appearance == AppAppearance::system && systemIsDark);
    return isDark ? AppAppearanceScheme::dark : AppAppearanceScheme::light;
}

std::string note(AppAppearance appearance, bool systemIsDark) {
    const std::string scheme(word(resolved(appearance, systemIsDark)));
    if (appearance == AppAppearance::system)
        return "Follows your Mac, so it changes when macOS does. Right now it is " + scheme + ".";
    return "Varnelle stays " + scheme + " whatever macOS is set to.";
}

}  // namespace PrompterCore
