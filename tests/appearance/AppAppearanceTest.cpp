#include <array>

#include "PrompterCore/appearance/AppAppearance.h"
#include "tests/support/Printing.h"

namespace PrompterCore {
namespace {

constexpr bool systemIsDark = true;
constexpr bool systemIsLight = false;

TEST(AppAppearance, IsStoredByItsId) {
    EXPECT_EQ(allCases<AppAppearance>,
              (std::array{AppAppearance::system, AppAppearance::light, AppAppearance::dark}));
    EXPECT_EQ(id(AppAppearance::system), "system");
    EXPECT_EQ(id(AppAppearance::light), "light");
    EXPECT_EQ(id(AppAppearance::dark), "dark");
    for (const AppAppearance appearance : allCases<AppAppearance>)
        EXPECT_EQ(fromStored<AppAppearance>(Text(id(appearance))), appearance);
}

TEST(AppAppearance, WhatCannotBeReadFollowsTheSystem) {
    EXPECT_EQ(fromStored<AppAppearance>(std::nullopt), AppAppearance::system);
    EXPECT_EQ(fromStored<AppAppearance>("Dark"), AppAppearance::system);
    EXPECT_EQ(fromStored<AppAppearance>(""), AppAppearance::system);
    EXPECT_EQ(fromStored<AppAppearance>(" dark"), AppAppearance::system);
}

TEST(AppAppearance, HasTitles) {
    EXPECT_EQ(title(AppAppearance::system), "System");
    EXPECT_EQ(title(AppAppearance::light), "Light");
    EXPECT_EQ(title(AppAppearance::dark), "Dark");
}

TEST(AppAppearance, OnlySystemFollowsTheSystem) {
    EXPECT_EQ(resolved(AppAppearance::system, systemIsDark), AppAppearanceScheme::dark);
    EXPECT_EQ(resolved(AppAppearance::system, systemIsLight), AppAppearanceScheme::light);
    for (const bool isDark : {systemIsDark, systemIsLight}) {
        EXPECT_EQ(resolved(AppAppearance::light, isDark), AppAppearanceScheme::light);
        EXPECT_EQ(resolved(AppAppearance::dark, isDark), AppAppearanceScheme::dark);
    }
}

TEST(AppAppearance, NotesSayWhatAChoiceDoes) {
    EXPECT_EQ(note(AppAppearance::system, systemIsDark),
              "Follows your Mac, so it changes when macOS does. Right now it is dark.");
    EXPECT_EQ(note(AppAppearance::system, systemIsLight),
              "Follows your Mac, so it changes when macOS does. Right now it is light.");
    for (const bool isDark : {systemIsDark, systemIsLight}) {
        EXPECT_EQ(note(AppAppearance::light, isDark),
                  "Varnelle stays light whatever macOS is set to.");
        EXPECT_EQ(note(AppAppearance::dark, isDark),
                  "Varnelle stays dark whatever macOS is set to.");
    }
}

}  // namespace
}  // namespace PrompterCore
