// Every enumeration table of the library. A new one is a line in `AllEnumerations`.

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "PrompterCore/appearance/AppAppearance.h"
#include "PrompterCore/audio/ClapCommand.h"
#include "PrompterCore/audio/MicrophoneAccess.h"
#include "PrompterCore/camera/CameraBackground.h"
#include "PrompterCore/camera/CameraFraming.h"
#include "PrompterCore/camera/CameraRotation.h"
#include "PrompterCore/library/DiffOperation.h"
#include "PrompterCore/library/LineDiff.h"
#include "PrompterCore/library/ScriptItem.h"
#include "PrompterCore/support/Enumeration.h"
#include "PrompterCore/takes/CelebrationLog.h"
#include "PrompterCore/takes/ControllerStatus.h"
#include "PrompterCore/takes/RecordingMode.h"
#include "PrompterCore/takes/RecordingName.h"
#include "PrompterCore/takes/TakeBarLayout.h"
#include "PrompterCore/telemetry/TelemetryTier.h"
#include "PrompterCore/text/StoredSetting.h"
#include "tests/support/Printing.h"

namespace PrompterCore {
namespace {

// clang-format off
using AllEnumerations = ::testing::Types<
    AppAppearance,
    AppAppearanceScheme,
    CameraBackground::Kind,
    CameraFraming,
    CameraRotation,
    CaptureKind,
    Celebration,
    ClapCommand,
    ControllerStatus::Tone,
    DiffOperation,
    LineChange,
    MicrophoneAccess,
    MicrophoneRemedy,
    RecordingMode,
    RecordingName::Kind,
    ScriptItem::Kind,
    TakeBarLayout::Density,
    TelemetryTier>;
// clang-format on

template <class E>
concept HasRawValues = requires(E value) {
    rawValue(value);
};
template <class E>
concept HasTitles = requires(E value) {
    title(value);
};
template <class E>
concept IsSetting = Enumeration<E>::isSetting;

template <class Values>
bool areDistinct(const Values& values) {
    return std::set(values.begin(), values.end()).size() == values.size();
}

template <class E>
class EnumerationTables : public ::testing::Test {};
TYPED_TEST_SUITE(EnumerationTables, AllEnumerations);

TYPED_TEST(EnumerationTables, HaveEachCaseOnceInTheDeclaredOrder) {
    std::int64_t expected = 0;
    for (const TypeParam value : allCases<TypeParam>)
        EXPECT_EQ(static_cast<std::int64_t>(value), expected++);
}

TYPED_TEST(EnumerationTables, NameTheirCasesApart) {
    std::vector<std::string_view> names;
    for (const TypeParam value : allCases<TypeParam>)
        names.push_back(caseName(value));
    EXPECT_TRUE(areDistinct(names));
    for (const std::string_view name : names) {
        ASSERT_FALSE(name.empty());
        EXPECT_TRUE('a' <= name[0] && name[0] <= 'z') << name;
        EXPECT_TRUE(std::all_of(name.begin(), name.end(), [](unsigned char c) {
            return std::isalnum(c) != 0;
        })) << name;
    }
}

TYPED_TEST(EnumerationTables, ReadTheirRawValuesAndNoOthers) {
    if constexpr (HasRawValues<TypeParam>) {
        using Raw = decltype(rawValue(TypeParam()));
        std::vector<Raw> raws;
        for (const TypeParam value : allCases<TypeParam>) {
            const Raw raw = rawValue(value);
            raws.push_back(raw);
            EXPECT_EQ(fromRawValue<TypeParam>(raw), value);
        }
        EXPECT_TRUE(areDistinct(raws));
        if constexpr (std::is_integral_v<Raw>) {
            const Raw next = *std::max_element(raws.begin(), raws.end()) + 1;
            EXPECT_EQ(fromRawValue<TypeParam>(next), std::nullopt);
            EXPECT_EQ(fromRawValue<TypeParam>(-next), std::nullopt);
        } else {
            for (const Raw& raw : raws) {
                std::string other(raw);
                EXPECT_EQ(fromRawValue<TypeParam>(Text(other)), fromRawValue<TypeParam>(raw));
                EXPECT_EQ(fromRawValue<TypeParam>(other + " "), std::nullopt);
                other[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(other[0])));
                EXPECT_EQ(fromRawValue<TypeParam>(other), std::nullopt);
            }
            EXPECT_EQ(fromRawValue<TypeParam>(""), std::nullopt);
        }
    }
}

TYPED_TEST(EnumerationTables, TitleTheirCases) {
    if constexpr (HasTitles<TypeParam>) {
        using Title = decltype(title(TypeParam()));
        std::vector<Title> titles;
        for (const TypeParam value : allCases<TypeParam>)
            titles.push_back(title(value));
        for (const Title& each : titles) {
            if constexpr (std::is_convertible_v<Title, std::string_view>) {
                EXPECT_FALSE(std::string_view(each).empty());
            } else {
                EXPECT_TRUE(!each || !each->empty());
            }
        }
        EXPECT_TRUE(areDistinct(titles));
    }
}

TYPED_TEST(EnumerationTables, FallBackToTheirFirstCaseWhereTheyAreSettings) {
    if constexpr (IsSetting<TypeParam>) {
        for (const TypeParam value : allCases<TypeParam>)
            EXPECT_EQ(fromStored<TypeParam>(Text(rawValue(value))), value);
        EXPECT_EQ(fromStored<TypeParam>(std::nullopt), allCases<TypeParam>[0]);
        EXPECT_EQ(fromStored<TypeParam>("of another version"), allCases<TypeParam>[0]);
    }
}

template <class... Enums>
std::set<std::string> typeNames(::testing::Types<Enums...>) {
    return {::testing::internal::GetTypeName<Enums>()...};
}

// A table that is not in the list above would not be tested.
TEST(EnumerationTablesList, IsComplete) {
    const std::string_view before = "struct Enumeration<";
    std::set<std::string> found;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(PROMPTERCORE_HEADERS)) {
        if (entry.path().extension() != ".h") continue;
        std::ifstream header(entry.path());
        for (std::string line; std::getline(header, line);)
            if (line.starts_with(before) && line.find('>') != std::string::npos)
                found.insert("PrompterCore::" +
                             line.substr(before.size(), line.find('>') - before.size()));
    }
    EXPECT_EQ(found, typeNames(AllEnumerations())) << "a new table is a line in AllEnumerations";
}

}  // namespace
}  // namespace PrompterCore
