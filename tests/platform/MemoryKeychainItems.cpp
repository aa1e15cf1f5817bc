// In place of the system's file: linked into the test program itself, it is found before the
// library's.

#include "PrompterCore/platform/KeychainItems.h"
#include "tests/platform/KeychainWorld.h"

namespace PrompterCore::KeychainItems {

Found copyMatching(std::string_view service) {
    std::string bytes;
    const std::int32_t status = Tests::copyFromWorld(std::string(service), bytes);
    if (status != success || Tests::keychainWorld().answersNothing) return {status, {}};
    return {status, bytes};
}

std::int32_t update(std::string_view service, std::string_view bytes) {
    return Tests::updateInWorld(std::string(service), std::string(bytes));
}

std::int32_t add(std::string_view service, std::string_view bytes) {
    return Tests::addToWorld(std::string(service), std::string(bytes));
}

std::int32_t remove(std::string_view service) {
    return Tests::removeFromWorld(std::string(service));
}

std::optional<std::string> messageOf(std::int32_t status) {
    const auto& messages = Tests::keychainWorld().messages;
    const auto found = messages.find(status);
    return found == messages.end() ? std::nullopt : std::optional(found->second);
}

}  // namespace PrompterCore::KeychainItems
