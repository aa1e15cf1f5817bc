#include <array>
#include <functional>
#include <optional>

#include "PrompterCore/audio/MicrophoneAccess.h"
#include "PrompterCore/text/Text.h"
#include "tests/support/Printing.h"

namespace PrompterCore {
namespace {

using enum MicrophoneAccess;

static_assert(allCases<CaptureKind> == std::array{CaptureKind::microphone, CaptureKind::camera});
static_assert(allCases<MicrophoneAccess> ==
              std::array{notDetermined, authorized, denied, restricted});
static_assert(allCases<MicrophoneRemedy> == std::array{MicrophoneRemedy::none,
                                                       MicrophoneRemedy::prompt,
                                                       MicrophoneRemedy::openSettings});

TEST(MicrophoneAccess, SaysWhatIsWrongAndWhatHelps) {
    struct Case {
        MicrophoneAccess access;
        MicrophoneRemedy remedy;
        const char* microphone;
        const char* camera;
    };
    const Case cases[] = {
        {notDetermined, MicrophoneRemedy::prompt,
         "Varnelle needs the microphone to follow your voice",
         "Varnelle needs the camera to show a preview"},
        {authorized, MicrophoneRemedy::none, "Microphone access granted", "Camera access granted"},
        {denied, MicrophoneRemedy::openSettings, "Microphone access is turned off for Varnelle",
         "Camera access is turned off for Varnelle"},
        {restricted, MicrophoneRemedy::openSettings,
         "Microphone access is blocked by a system policy",
         "Camera access is blocked by a system policy"},
    };
    for (const auto& [access, expected, microphone, camera] : cases) {
        SCOPED_TRACE(caseName(access));
        EXPECT_EQ(remedy(access), expected);
        EXPECT_EQ(summary(access, CaptureKind::microphone), microphone);
        EXPECT_EQ(summary(access, CaptureKind::camera), camera);
        EXPECT_EQ(summary(access), microphone);
    }
}

TEST(MicrophoneAccess, IsStoredUnderItsCaseNames) {
    for (const MicrophoneAccess access : allCases<MicrophoneAccess>) {
        EXPECT_EQ(rawValue(access), caseName(access));
        EXPECT_EQ(fromRawValue<MicrophoneAccess>(rawValue(access)), access);
    }
    EXPECT_EQ(rawValue(notDetermined), "notDetermined");
    EXPECT_EQ(fromRawValue<MicrophoneAccess>(Text("restricted")), restricted);
    EXPECT_EQ(fromRawValue<MicrophoneAccess>("Denied"), std::nullopt);
}

TEST(MicrophoneRemedy, HasATitleUnlessThereIsNothingToDo) {
    EXPECT_EQ(title(MicrophoneRemedy::none), std::nullopt);
    EXPECT_EQ(title(MicrophoneRemedy::prompt), "Allow Microphone Access");
    EXPECT_EQ(title(MicrophoneRemedy::openSettings), "Open System Settings");
}

TEST(CaptureKind, IsHashableAsTheRemedyIs) {
    EXPECT_NE(std::hash<CaptureKind>()(CaptureKind::microphone),
              std::hash<CaptureKind>()(CaptureKind::camera));
    EXPECT_NE(std::hash<MicrophoneRemedy>()(MicrophoneRemedy::none),
              std::hash<MicrophoneRemedy>()(MicrophoneRemedy::prompt));
}

TEST(MicrophoneAccessDeathTest, RefusesAValueThatIsNoCase) {
    EXPECT_DEATH(static_cast<void>(remedy(static_cast<MicrophoneAccess>(9))),
                 "the access is a case of its enumeration");
}

}  // namespace
}  // namespace PrompterCore
