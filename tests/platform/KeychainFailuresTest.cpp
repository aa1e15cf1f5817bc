// What becomes of a system that refuses: in memory, and through our source for macOS.

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "PrompterCore/platform/Keychain.h"
#include "tests/platform/KeychainWorld.h"
#include "tests/support/Printing.h"

namespace PrompterCore {
namespace {

using Tests::KeychainCall;
using Tests::keychainWorld;
using Calls = std::vector<KeychainCall>;

constexpr std::int32_t refusals[] = {-25308, -25293, -25291, -25299,   -128,
                                     -34018, -1,     1,      INT32_MIN};

class KeychainFailuresTest : public ::testing::Test {
protected:
    KeychainFailuresTest() { keychainWorld() = {}; }

    const Keychain keychain{"service"};

    // The status that `change` fails with; absent when it succeeds.
    template <class Change>
    static std::optional<std::int32_t> statusOf(Change change) {
        try {
            change();
            return std::nullopt;
        } catch (const Keychain::Failure& failure) {
            return failure.status();
        }
    }
    std::optional<std::int32_t> statusOfWriting(const Text& value) const {
        return statusOf([&] { keychain.write(value); });
    }
    std::optional<std::int32_t> statusOfRemoving() const {
        return statusOf([&] { keychain.remove(); });
    }
};

TEST_F(KeychainFailuresTest, WriteUpdatesAndAddsOnlyWhatIsNotThere) {
    keychain.write("first");
    EXPECT_EQ(keychainWorld().calls, (Calls{KeychainCall::update, KeychainCall::add}));
    keychainWorld().calls.clear();
    keychain.write("second");
    EXPECT_EQ(keychainWorld().calls, Calls{KeychainCall::update});
}

TEST_F(KeychainFailuresTest, BlankWriteOnlyRemoves) {
    keychain.write(" \n");
    EXPECT_EQ(keychainWorld().calls, Calls{KeychainCall::remove});
}

TEST_F(KeychainFailuresTest, RefusedUpdateFailsWithItsStatusAndAddsNothing) {
    for (const std::int32_t refusal : refusals) {
        keychainWorld() = {};
        keychainWorld().items["service"] = "before";
        keychainWorld().refusals[KeychainCall::update] = refusal;
        EXPECT_EQ(statusOfWriting("abc"), refusal);
        EXPECT_EQ(keychainWorld().calls, Calls{KeychainCall::update});
        EXPECT_EQ(keychainWorld().items["service"], "before");
    }
}

TEST_F(KeychainFailuresTest, RefusedAddFailsWithItsStatus) {
    std::vector<std::int32_t> all(std::begin(refusals), std::end(refusals));
    all.push_back(-25300);  // not found counts as fine only where something is removed
    for (const std::int32_t refusal : all) {
        keychainWorld().refusals[KeychainCall::add] = refusal;
        EXPECT_EQ(statusOfWriting("abc"), refusal);
        EXPECT_TRUE(keychainWorld().items.empty());
    }
}

TEST_F(KeychainFailuresTest, RefusedRemovalFailsWithItsStatus) {
    for (const std::int32_t refusal : refusals) {
        keychainWorld().items["service"] = "before";
        keychainWorld().refusals[KeychainCall::remove] = refusal;
        EXPECT_EQ(statusOfRemoving(), refusal);
        EXPECT_EQ(statusOfWriting("  "), refusal) << "a blank write passes it on";
        EXPECT_EQ(keychainWorld().items["service"], "before");
    }
}

TEST_F(KeychainFailuresTest, NothingFoundToRemoveIsNoFailure) {
    keychainWorld().refusals[KeychainCall::remove] = -25300;
    EXPECT_EQ(statusOfRemoving(), std::nullopt);
    EXPECT_EQ(statusOfWriting(" "), std::nullopt);
}

TEST_F(KeychainFailuresTest, ReadFoldsEveryFailureIntoNoValue) {
    keychainWorld().items["service"] = "abc";
    for (const std::int32_t refusal : refusals) {
        keychainWorld().refusals[KeychainCall::copyMatching] = refusal;
        EXPECT_EQ(keychain.read(), std::nullopt);
    }
}

TEST_F(KeychainFailuresTest, SuccessWithoutAResultReadsAsNoValue) {
    keychainWorld().items["service"] = "abc";
    keychainWorld().answersNothing = true;
    EXPECT_EQ(keychain.read(), std::nullopt);
}

TEST_F(KeychainFailuresTest, DescriptionEndsWithTheSystemsText) {
    keychainWorld().messages[-25308] = "User interaction is not allowed.";
    keychainWorld().messages[-7] = "Nicht m\u00F6glich \U0001F512";
    keychainWorld().messages[-8] = "";
    EXPECT_EQ(Keychain::Failure(-25308).errorDescription(),
              Text("Could not use the keychain: User interaction is not allowed."));
    EXPECT_EQ(Keychain::Failure(-7).errorDescription(),
              Text("Could not use the keychain: Nicht m\u00F6glich \U0001F512"));
    EXPECT_EQ(Keychain::Failure(-8).errorDescription(), Text("Could not use the keychain: "));
    EXPECT_EQ(Keychain::Failure(-9).errorDescription(),
              Text("Could not use the keychain: status -9"));
}

TEST_F(KeychainFailuresTest, FailureOfAWriteDescribesItself) {
    keychainWorld().messages[-25308] = "User interaction is not allowed.";
    keychainWorld().refusals[KeychainCall::update] = -25308;
    try {
        keychain.write("the value");
        FAIL() << "a refused write does not fail";
    } catch (const Keychain::Failure& failure) {
        EXPECT_EQ(failure.errorDescription().value().utf8(), failure.what());
        EXPECT_STREQ(failure.what(),
                     "Could not use the keychain: User interaction is not allowed.");
    }
}

}  // namespace
}  // namespace PrompterCore
