// The Security framework over a world in memory.

#include <Security/Security.h>

#include "tests/platform/KeychainWorld.h"
#include "tests/platform/macos/Objects.h"

using namespace PrompterCore::Tests;
using StandIn::entriesOf;

namespace {

CFTypeRef copied(const std::string& bytes) {
    const auto* const first = reinterpret_cast<const UInt8*>(bytes.data());
    const auto count = static_cast<CFIndex>(bytes.size());
    if (keychainWorld().answersNothing) return nullptr;
    if (keychainWorld().answersWithText)
        return CFStringCreateWithBytes(kCFAllocatorDefault, first, count, kCFStringEncodingUTF8, 0);
    return CFDataCreate(kCFAllocatorDefault, first, count);
}

KeychainAttributes remembered(CFDictionaryRef query, CFDictionaryRef change = nullptr) {
    keychainWorld().queries.push_back(
        {entriesOf(query), change == nullptr ? KeychainAttributes{} : entriesOf(change)});
    return entriesOf(query);
}

}  // namespace

extern "C" {

const CFStringRef kSecClass = StandIn::constant<CFStringRef>("kSecClass");
const CFStringRef kSecClassGenericPassword =
    StandIn::constant<CFStringRef>("kSecClassGenericPassword");
const CFStringRef kSecAttrService = StandIn::constant<CFStringRef>("kSecAttrService");
const CFStringRef kSecReturnData = StandIn::constant<CFStringRef>("kSecReturnData");
const CFStringRef kSecMatchLimit = StandIn::constant<CFStringRef>("kSecMatchLimit");
const CFStringRef kSecMatchLimitOne = StandIn::constant<CFStringRef>("kSecMatchLimitOne");
const CFStringRef kSecValueData = StandIn::constant<CFStringRef>("kSecValueData");

OSStatus SecItemCopyMatching(CFDictionaryRef query, CFTypeRef* result) {
    std::string bytes;
    const OSStatus status = copyFromWorld(remembered(query).at("kSecAttrService"), bytes);
    if (status == errSecSuccess) *result = copied(bytes);
    return status;
}

OSStatus SecItemUpdate(CFDictionaryRef query, CFDictionaryRef attributesToUpdate) {
    return updateInWorld(remembered(query, attributesToUpdate).at("kSecAttrService"),
                         entriesOf(attributesToUpdate).at("kSecValueData"));
}

OSStatus SecItemAdd(CFDictionaryRef attributes, CFTypeRef*) {
    const KeychainAttributes item = remembered(attributes);
    return addToWorld(item.at("kSecAttrService"), item.at("kSecValueData"));
}

OSStatus SecItemDelete(CFDictionaryRef query) {
    return removeFromWorld(remembered(query).at("kSecAttrService"));
}

CFStringRef SecCopyErrorMessageString(OSStatus status, void*) {
    const auto& messages = keychainWorld().messages;
    const auto found = messages.find(status);
    if (found == messages.end()) return nullptr;
    return CFStringCreateWithBytes(
        kCFAllocatorDefault, reinterpret_cast<const UInt8*>(found->second.data()),
        static_cast<CFIndex>(found->second.size()), kCFStringEncodingUTF8, 0);
}

}  // extern "C"
