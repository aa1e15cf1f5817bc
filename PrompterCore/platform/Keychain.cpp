#include "PrompterCore/platform/Keychain.h"

#include <string>
#include <string_view>
#include <utility>

#include "PrompterCore/platform/KeychainItems.h"
#include "PrompterCore/text/Trims.h"

namespace PrompterCore {

namespace {

std::string describe(std::int32_t status) {
    return "Could not use the keychain: " +
           KeychainItems::messageOf(status).value_or("status " + std::to_string(status));
}

// Equal service names name one item, however they are written.
std::string nameOf(const Text& service) { return service.composed().utf8(); }

void succeed(std::int32_t status) {
    if (status != KeychainItems::success) throw Keychain::Failure(status);
}

}  // namespace

Keychain::Failure::Failure(std::int32_t status)
    : std::runtime_error(describe(status)), status_(status) {}

std::optional<Text> Keychain::read() const {
    KeychainItems::Found found = KeychainItems::copyMatching(nameOf(service));
    if (found.status != KeychainItems::success || !found.bytes) return std::nullopt;
    std::optional<Text> text = Text::fromUtf8(*std::move(found.bytes));
    if (text && text->isEmpty()) return std::nullopt;
    return text;
}

void Keychain::write(const Text& value) const {
    const std::string_view bytes = trimmedOfWhiteSpace(value.utf8());
    if (bytes.empty()) return remove();
    const std::string name = nameOf(service);
    const std::int32_t updated = KeychainItems::update(name, bytes);
    succeed(updated == KeychainItems::itemNotFound ? KeychainItems::add(name, bytes) : updated);
}

void Keychain::remove() const {
    const std::int32_t status = KeychainItems::remove(nameOf(service));
    if (status != KeychainItems::itemNotFound) succeed(status);
}

}  // namespace PrompterCore
