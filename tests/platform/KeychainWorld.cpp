#include "tests/platform/KeychainWorld.h"

#include <optional>

#include "tests/platform/KeychainUnderTest.h"

namespace PrompterCore::Tests {

namespace {

constexpr std::int32_t notFound = -25300;
constexpr std::int32_t duplicate = -25299;

std::optional<std::int32_t> refused(KeychainCall call) {
    keychainWorld().calls.push_back(call);
    const auto& refusals = keychainWorld().refusals;
    const auto found = refusals.find(call);
    return found == refusals.end() ? std::nullopt : std::optional(found->second);
}

}  // namespace

KeychainWorld& keychainWorld() {
    static KeychainWorld world;
    return world;
}

void startKeychain() { keychainWorld() = {}; }
void stopKeychain() {}
std::size_t storedItems() { return keychainWorld().items.size(); }
int lawCases() { return 200; }

std::int32_t copyFromWorld(const std::string& service, std::string& found) {
    if (const auto status = refused(KeychainCall::copyMatching)) return *status;
    const auto item = keychainWorld().items.find(service);
    if (item == keychainWorld().items.end()) return notFound;
    found = item->second;
    return 0;
}

std::int32_t updateInWorld(const std::string& service, const std::string& bytes) {
    if (const auto status = refused(KeychainCall::update)) return *status;
    const auto item = keychainWorld().items.find(service);
    if (item == keychainWorld().items.end()) return notFound;
    item->second = bytes;
    return 0;
}

std::int32_t addToWorld(const std::string& service, const std::string& bytes) {
    if (const auto status = refused(KeychainCall::add)) return *status;
    return keychainWorld().items.emplace(service, bytes).second ? 0 : duplicate;
}

std::int32_t removeFromWorld(const std::string& service) {
    if (const auto status = refused(KeychainCall::remove)) return *status;
    return keychainWorld().items.erase(service) == 1 ? 0 : notFound;
}

}  // namespace PrompterCore::Tests
