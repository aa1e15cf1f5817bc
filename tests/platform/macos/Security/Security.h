#pragma once

// What our sources for macOS use of the Security framework, declared as Apple's documentation has
// it. SecurityStandIn.cpp is behind it.

#include <CoreFoundation/CoreFoundation.h>

extern "C" {

enum : OSStatus { errSecSuccess = 0, errSecItemNotFound = -25300 };

extern const CFStringRef kSecClass;
extern const CFStringRef kSecClassGenericPassword;
extern const CFStringRef kSecAttrService;
extern const CFStringRef kSecReturnData;
extern const CFStringRef kSecMatchLimit;
extern const CFStringRef kSecMatchLimitOne;
extern const CFStringRef kSecValueData;

OSStatus SecItemCopyMatching(CFDictionaryRef query, CFTypeRef* result);
OSStatus SecItemUpdate(CFDictionaryRef query, CFDictionaryRef attributesToUpdate);
OSStatus SecItemAdd(CFDictionaryRef attributes, CFTypeRef* result);
OSStatus SecItemDelete(CFDictionaryRef query);
CFStringRef SecCopyErrorMessageString(OSStatus status, void* reserved);

}  // extern "C"
