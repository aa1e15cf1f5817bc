// Against a real keyring, in sessions of the tests' own.

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "PrompterCore/platform/Keychain.h"
#include "tests/platform/KeychainUnderTest.h"
#include "tests/platform/PrivateKeyring.h"
#include "tests/platform/StoredSecrets.h"
#include "tests/support/Printing.h"

namespace PrompterCore {

namespace Tests {

namespace {

std::unique_ptr<PrivateKeyring>& theSession() {
    static std::unique_ptr<PrivateKeyring> session;
    return session;
}

}  // namespace

void startKeychain() {
    theSession() = std::make_unique<PrivateKeyring>();
    theSession()->startKeyring("password");
}
void stopKeychain() { theSession().reset(); }
std::size_t storedItems() { return itemsInKeyring(); }
int lawCases() { return 20; }

}  // namespace Tests

namespace {

using Tests::PrivateKeyring;

const Keychain keychain{"com.example.prompter"};

// What a change fails with; absent when it succeeds.
template <class Change>
std::optional<Keychain::Failure> failureOf(Change change) {
    try {
        change();
        return std::nullopt;
    } catch (const Keychain::Failure& failure) {
        return failure;
    }
}

// Reads, writes and removes: nothing is read, and both changes fail alike.
void expectRefused(std::int32_t status, const char* text) {
    EXPECT_EQ(keychain.read(), std::nullopt);
    for (const auto& failure :
         {failureOf([] { keychain.write("new"); }), failureOf([] { keychain.remove(); }),
          failureOf([] { keychain.write(" "); })}) {
        ASSERT_TRUE(failure);
        EXPECT_EQ(failure->status(), status);
        EXPECT_STREQ(failure->what(), text);
    }
}

TEST(KeychainItemsLinux, WrongPasswordLeavesTheKeyringLockedAndAsItIs) {
    PrivateKeyring session;
    session.startKeyring("right");
    keychain.write("before");
    session.startKeyring("wrong");
    expectRefused(-25308,
                  "Could not use the keychain: The keyring is locked; unlock it and try again.");
    session.startKeyring("right");
    EXPECT_EQ(keychain.read(), Text("before"));
    EXPECT_EQ(Tests::itemsInKeyring(), 1u);
}

TEST(KeychainItemsLinux, LockedKeyringTakesNoNewItem) {
    PrivateKeyring session;
    session.startKeyring("right");
    keychain.write("before");
    session.startKeyring("wrong");
    const auto failure = failureOf([] { Keychain{"another"}.write("new"); });
    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->status(), -25308);
    EXPECT_FALSE(failureOf([] { Keychain{"another"}.remove(); })) << "nothing is there to remove";
    session.startKeyring("right");
    EXPECT_EQ(Keychain{"another"}.read(), std::nullopt);
}

TEST(KeychainItemsLinux, KeyringThatWasNeverUnlockedIsNoDefaultOne) {
    PrivateKeyring session;
    session.startKeyring(std::nullopt);
    EXPECT_EQ(keychain.read(), std::nullopt);
    const auto failure = failureOf([] { keychain.write("new"); });
    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->status(), -25307);
    EXPECT_STREQ(failure->what(),
                 "Could not use the keychain: There is no default keyring; log in to the desktop "
                 "or create one.");
    EXPECT_FALSE(failureOf([] { keychain.remove(); })) << "nothing is there to remove";
}

TEST(KeychainItemsLinux, NobodyWhoAnswersForSecretsIsAFailure) {
    PrivateKeyring session;
    expectRefused(-25291,
                  "Could not use the keychain: No secret service answers on this session's bus.");
}

TEST(KeychainItemsLinux, NoBusIsAFailure) {
    PrivateKeyring session;
    session.stopBus();
    expectRefused(-25291,
                  "Could not use the keychain: No secret service answers on this session's bus.");
    session.set("DBUS_SESSION_BUS_ADDRESS", "no address");
    EXPECT_EQ(failureOf([] { keychain.write("new"); })->status(), -25291);
    session.set("DBUS_SESSION_BUS_ADDRESS", "");
    EXPECT_EQ(failureOf([] { keychain.write("new"); })->status(), -25291);
}

TEST(KeychainItemsLinux, BusThatForbidsIsADenial) {
    PrivateKeyring session(PrivateKeyring::Access::denied);
    session.startKeyring("password");
    expectRefused(-25293, "Could not use the keychain: Access to the secret service was denied.");
}

TEST(KeychainItemsLinux, KeepsWhatItStoredOverARestart) {
    PrivateKeyring session;
    session.startKeyring("password");
    keychain.write("abc");
    session.startKeyring("password");
    EXPECT_EQ(keychain.read(), Text("abc"));
}

TEST(KeychainItemsLinux, BusThatGoesAwayDoesNotEndTheProgram) {
    {
        PrivateKeyring session;
        session.startKeyring("password");
        keychain.write("abc");
        session.stopBus();
        EXPECT_EQ(keychain.read(), std::nullopt);
    }
    PrivateKeyring session;
    session.startKeyring("password");
    keychain.write("abc");
    EXPECT_EQ(keychain.read(), Text("abc"));
}

TEST(KeychainItemsLinux, ItemOfAnotherProgramIsLeftAlone) {
    PrivateKeyring session;
    session.startKeyring("password");
    const Tests::ForeignItem foreign(keychain.service.utf8());
    EXPECT_EQ(keychain.read(), std::nullopt);
    keychain.write("ours");
    EXPECT_EQ(foreign.value(), "theirs");
    EXPECT_EQ(Tests::itemsInKeyring(), 2u);
    keychain.remove();
    EXPECT_EQ(foreign.value(), "theirs");
    EXPECT_EQ(Tests::itemsInKeyring(), 1u);
}

TEST(KeychainItemsLinux, ThreadsThatWriteAtOnceLeaveOneItem) {
    PrivateKeyring session;
    session.startKeyring("password");
    std::vector<std::thread> writers;
    for (int writer = 0; writer < 8; ++writer) {
        writers.emplace_back([writer] {
            const auto failure =
                failureOf([writer] { keychain.write("value " + std::to_string(writer)); });
            EXPECT_FALSE(failure) << failure->what();
        });
    }
    for (std::thread& writer : writers)
        writer.join();
    EXPECT_EQ(Tests::itemsInKeyring(), 1u);
    ASSERT_TRUE(keychain.read());
    EXPECT_EQ(keychain.read()->utf8().substr(0, 6), "value ");
}

TEST(KeychainItemsLinux, ServiceNameWithAZeroIsRefused) {
    PrivateKeyring session;
    session.startKeyring("password");
    const Keychain cut{std::string("com.example.prompter\0x", 22)};
    keychain.write("abc");
    EXPECT_EQ(cut.read(), std::nullopt);
    const auto failure = failureOf([&] { cut.write("def"); });
    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->status(), -50);
    EXPECT_TRUE(failureOf([&] { cut.remove(); }));
    EXPECT_EQ(keychain.read(), Text("abc"));
}

TEST(KeychainItemsLinux, EachStatusOfOursHasItsText) {
    const std::pair<std::int32_t, const char*> texts[] = {
        {0, "No error."},
        {-36, "The secret service could not store or read the item."},
        {-50, "A service name holds no U+0000."},
        {-128, "The keyring's question was not answered."},
        {-25291, "No secret service answers on this session's bus."},
        {-25293, "Access to the secret service was denied."},
        {-25299, "There is such an item already."},
        {-25300, "There is no such item."},
        {-25307, "There is no default keyring; log in to the desktop or create one."},
        {-25308, "The keyring is locked; unlock it and try again."},
    };
    for (const auto& [status, text] : texts) {
        EXPECT_EQ(Keychain::Failure(status).what(),
                  std::string("Could not use the keychain: ") + text);
    }
}

}  // namespace
}  // namespace PrompterCore
