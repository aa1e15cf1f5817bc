#include <optional>
#include <span>
#include <string>
#include <vector>

#include "PrompterCore/devices/CameraSource.h"
#include "PrompterCore/devices/SelectableDevice.h"
#include "tests/support/Generators.h"
#include "tests/support/Properties.h"

namespace PrompterCore {

struct Unnamed {
    Text id;
    bool isDefault;
    friend bool operator==(const Unnamed&, const Unnamed&) = default;
};

namespace {

using Cameras = std::vector<CameraSource>;
using DeviceSelection::isMissing;
using DeviceSelection::preferred;

static_assert(SelectableDevice<CameraSource>);
static_assert(std::copyable<CameraSource> && std::equality_comparable<CameraSource>);

static_assert(!SelectableDevice<Unnamed>, "a user could not pick what has no name");

std::optional<Text> nameOf(const std::optional<CameraSource>& camera) {
    return camera ? std::optional(camera->name) : std::nullopt;
}

TEST(DeviceSelection, DoesWhatItsManualShows) {
    const Cameras cameras{{.id = "a", .name = "Front"},
                          {.id = "b", .name = "Desk", .isDefault = true}};
    EXPECT_EQ(preferred(cameras, "a")->name, "Front");
    EXPECT_EQ(preferred(cameras, "x")->name, "Desk");
    EXPECT_TRUE(isMissing("x", cameras));
}

TEST(DeviceSelection, PrefersTheChosenThenTheDefaultThenTheFirst) {
    const Cameras plain{{.id = "a", .name = "A"}, {.id = "b", .name = "B"}};
    const Cameras marked{{.id = "a", .name = "A"},
                         {.id = "b", .name = "B", .isDefault = true},
                         {.id = "c", .name = "C", .isDefault = true}};
    struct Case {
        const char* what;
        Cameras cameras;
        std::optional<Text> remembered;
        std::optional<Text> name;
    };
    const Case cases[] = {
        {"the chosen one over the default", marked, "a", "A"},
        {"unplugged: the default", marked, "x", "B"},
        {"nothing chosen: the first default", marked, std::nullopt, "B"},
        {"an empty id is nobody's: the default", marked, "", "B"},
        {"unplugged, no default: the first", plain, "x", "A"},
        {"nothing chosen, no default: the first", plain, std::nullopt, "A"},
        {"ids are told apart by case", plain, "B", "A"},
        {"no devices", {}, "a", std::nullopt},
        {"no devices, nothing chosen", {}, std::nullopt, std::nullopt},
        {"two of one id: the first",
         {{.id = "b", .name = "1"}, {.id = "b", .name = "2"}},
         "b",
         "1"},
        {"ids are equal as texts are",
         {{.id = "a", .name = "A"}, {.id = "cafe\u0301", .name = "Caf\u00E9"}},
         "caf\u00E9",
         "Caf\u00E9"},
    };
    for (const auto& [what, cameras, remembered, name] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(nameOf(preferred(cameras, remembered)), name);
        EXPECT_EQ(nameOf(preferred(std::span<const CameraSource>(cameras), remembered)), name);
    }
}

TEST(DeviceSelection, MissingIsOnlyWhatWasChosen) {
    const Cameras cameras{{.id = "a", .name = "A"}};
    EXPECT_TRUE(isMissing("b", cameras));
    EXPECT_TRUE(isMissing("b", Cameras()));
    EXPECT_FALSE(isMissing("a", cameras));
    EXPECT_FALSE(isMissing("", cameras));
    EXPECT_FALSE(isMissing("", Cameras()));
    EXPECT_FALSE(isMissing(std::nullopt, cameras));
    EXPECT_FALSE(isMissing(std::nullopt, Cameras()));
}

TEST(DeviceSelection, WhatIsChosenAndNotMissingIsPreferred) {
    Tests::forAll([](const std::vector<std::pair<Text, bool>>& made, const Text& remembered) {
        Cameras cameras;
        for (const auto& [id, isDefault] : made)
            cameras.push_back({.id = id, .name = id, .isDefault = isDefault});
        if (!cameras.empty() && *rc::gen::arbitrary<bool>()) cameras.back().id = remembered;
        const std::optional<CameraSource> camera = preferred(cameras, remembered);
        RC_ASSERT(camera.has_value() == !cameras.empty());
        if (!camera || remembered.isEmpty()) return;
        RC_ASSERT((camera->id == remembered) == !isMissing(remembered, cameras));
    });
}

TEST(CameraSource, ComparesAllFields) {
    const CameraSource camera{.id = "a", .name = "A", .isDefault = true, .isContinuity = true};
    EXPECT_EQ(camera, (CameraSource{"a", "A", true, true}));
    EXPECT_NE(camera, (CameraSource{"b", "A", true, true}));
    EXPECT_NE(camera, (CameraSource{"a", "B", true, true}));
    EXPECT_NE(camera, (CameraSource{"a", "A", false, true}));
    EXPECT_NE(camera, (CameraSource{"a", "A", true, false}));
}

}  // namespace
}  // namespace PrompterCore
