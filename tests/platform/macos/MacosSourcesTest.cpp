// Our sources for macOS, over the stand-in for its CoreFoundation. They take the place of the
// sources for this system, for the rooms above too.

#include <optional>

#include "PrompterCore/platform/MainBundle.h"
#include "PrompterCore/platform/VolumeCapacity.h"
#include "PrompterCore/takes/FreeSpace.h"
#include "PrompterCore/takes/StorageFolder.h"
#include "tests/platform/macos/StandIn.h"
#include "tests/support/Printing.h"

namespace PrompterCore {
namespace {

using StandIn::System;

std::optional<Text> informationText(const System& system, std::string_view key) {
    std::optional<Text> text;
    EXPECT_EQ(StandIn::run(system, [&] { text = MainBundle::informationText(key); }), 0)
        << "everything is released, once";
    return text;
}

std::optional<std::int64_t> capacity(const System& system, const char* path) {
    std::optional<std::int64_t> bytes;
    EXPECT_EQ(StandIn::run(system, [&] { bytes = FreeSpace::bytesAt(path); }), 0)
        << "everything is released, once";
    return bytes;
}

TEST(MacosMainBundle, GivesTheTextUnderAKey) {
    const System system{.dictionary = {{"Name", "Varnelle"},
                                       {"Accents", "\u00C4\u8A9E\U0001F600"},
                                       {"Empty", ""},
                                       {"Number", std::int64_t{3}}}};
    EXPECT_EQ(informationText(system, "Name"), "Varnelle");
    EXPECT_EQ(informationText(system, "Accents"), "\u00C4\u8A9E\U0001F600");
    EXPECT_EQ(informationText(system, "Empty"), "");
    EXPECT_EQ(informationText(system, "Number"), std::nullopt) << "no text";
    EXPECT_EQ(informationText(system, "name"), std::nullopt);
    EXPECT_EQ(informationText({.hasBundle = false}, "Name"), std::nullopt);
}

TEST(MacosStorageFolder, IsTheOneThatTheBundleDeclares) {
    const auto name = [](const System& system) {
        Text found;
        StandIn::run(system, [&] { found = StorageFolder::current().name(); });
        return found;
    };
    EXPECT_EQ(name({.dictionary = {{"VarnelleStorageFolder", " Varnelle Beta "}}}),
              "Varnelle Beta");
    EXPECT_EQ(name({.dictionary = {{"VarnelleStorageFolder", "  "}}}), "Varnelle");
    EXPECT_EQ(name({.dictionary = {{"VarnelleStorageFolder", std::int64_t{1}}}}), "Varnelle");
    EXPECT_EQ(name({.dictionary = {{"OtherKey", "x"}}}), "Varnelle");
    EXPECT_EQ(name({.hasBundle = false}), "Varnelle");
}

TEST(MacosFreeSpace, AsksTheVolumeForImportantUsage) {
    const System system{.capacities = {{"/Users/ann", std::int64_t{5'000'000'000}},
                                       {"/full", std::int64_t{0}},
                                       {"/net", std::int64_t{-1}},
                                       {"/odd", "many"}}};
    EXPECT_EQ(capacity(system, "/Users/ann"), 5'000'000'000);
    EXPECT_EQ(capacity(system, "/full"), 0);
    EXPECT_EQ(capacity(system, "/net"), std::nullopt) << "the volume does not say";
    EXPECT_EQ(capacity(system, "/odd"), std::nullopt) << "no number";
    EXPECT_EQ(capacity(system, "/nowhere"), std::nullopt);
    EXPECT_EQ(capacity(system, ""), std::nullopt);
}

}  // namespace
}  // namespace PrompterCore
