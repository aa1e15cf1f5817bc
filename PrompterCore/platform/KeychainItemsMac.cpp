// The keychain of macOS: generic passwords, each identified by its class and its service alone.
// Account, access group, label and accessibility stay unset, so that the system's defaults apply.

#include <initializer_list>
#include <utility>
#include <vector>

#include <Security/Security.h>

#include "PrompterCore/platform/CoreFoundationTexts.h"
#include "PrompterCore/platform/KeychainItems.h"
#include "PrompterCore/support/Integers.h"

namespace PrompterCore::KeychainItems {

static_assert(success == errSecSuccess && itemNotFound == errSecItemNotFound);

namespace {

using Entry = std::pair<CFStringRef, CFTypeRef>;

CoreFoundationOwner<CFDictionaryRef> dictionary(std::initializer_list<Entry> entries) {
    std::vector<const void*> keys;
    std::vector<const void*> values;
    for (const auto& [key, value] : entries) {
        keys.push_back(key);
        values.push_back(value);
    }
    return CoreFoundationOwner<CFDictionaryRef>(CFDictionaryCreate(
        kCFAllocatorDefault, keys.data(), values.data(), signedCount(entries.size()),
        &kCFTypeDictionaryKeyCallBacks, &kCFTypeDictionaryValueCallBacks));
}

CoreFoundationOwner<CFDataRef> data(std::string_view bytes) {
    return CoreFoundationOwner<CFDataRef>(CFDataCreate(kCFAllocatorDefault,
                                                       reinterpret_cast<const UInt8*>(bytes.data()),
                                                       signedCount(bytes.size())));
}

CoreFoundationOwner<CFDictionaryRef> itemOf(std::string_view service) {
    const auto name = coreFoundationText(service);
    return dictionary({{kSecClass, kSecClassGenericPassword}, {kSecAttrService, name.get()}});
}

}  // namespace

Found copyMatching(std::string_view service) {
    const auto name = coreFoundationText(service);
    const auto query = dictionary({{kSecClass, kSecClassGenericPassword},
                                   {kSecAttrService, name.get()},
                                   {kSecReturnData, kCFBooleanTrue},
                                   {kSecMatchLimit, kSecMatchLimitOne}});
    CFTypeRef result = nullptr;
    const OSStatus status = SecItemCopyMatching(query.get(), &result);
    const CoreFoundationOwner<CFTypeRef> owned(result);
    if (status != errSecSuccess || result == nullptr || CFGetTypeID(result) != CFDataGetTypeID())
        return {.status = status, .bytes = {}};
    const auto found = static_cast<CFDataRef>(result);
    const auto* const first = reinterpret_cast<const char*>(CFDataGetBytePtr(found));
    return {.status = status, .bytes = std::string(first, first + CFDataGetLength(found))};
}

std::int32_t update(std::string_view service, std::string_view bytes) {
    const auto value = data(bytes);
    const auto change = dictionary({{kSecValueData, value.get()}});
    return SecItemUpdate(itemOf(service).get(), change.get());
}

std::int32_t add(std::string_view service, std::string_view bytes) {
    const auto name = coreFoundationText(service);
    const auto value = data(bytes);
    const auto item = dictionary({{kSecClass, kSecClassGenericPassword},
                                  {kSecAttrService, name.get()},
                                  {kSecValueData, value.get()}});
    return SecItemAdd(item.get(), nullptr);
}

std::int32_t remove(std::string_view service) { return SecItemDelete(itemOf(service).get()); }

std::optional<std::string> messageOf(std::int32_t status) {
    const CoreFoundationOwner<CFStringRef> message(SecCopyErrorMessageString(status, nullptr));
    if (!message) return std::nullopt;
    return utf8Of(message.get());
}

}  // namespace PrompterCore::KeychainItems
