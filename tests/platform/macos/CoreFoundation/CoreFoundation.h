#pragma once

// The declarations of CoreFoundation that our sources for macOS use, written from its reference, so
// that those sources compile and run on any system. Objects.cpp and StandIn.cpp are behind them.

#include <cstdint>

using Boolean = unsigned char;
using UInt8 = unsigned char;
using UInt32 = std::uint32_t;
using OSStatus = std::int32_t;
using CFIndex = long;
using CFTypeID = unsigned long;
using CFHashCode = unsigned long;
using CFStringEncoding = UInt32;
using CFNumberType = CFIndex;

using CFTypeRef = const void*;
using CFAllocatorRef = const struct StandInAllocator*;
using CFStringRef = const struct StandInString*;
using CFBooleanRef = const struct StandInBoolean*;
using CFDataRef = const struct StandInData*;
using CFDictionaryRef = const struct StandInDictionary*;
using CFNumberRef = const struct StandInNumber*;
using CFURLRef = const struct StandInUrl*;
using CFBundleRef = struct StandInBundle*;
using CFErrorRef = struct StandInError*;

struct CFRange {
    CFIndex location;
    CFIndex length;
};
inline CFRange CFRangeMake(CFIndex location, CFIndex length) { return {location, length}; }

inline constexpr CFStringEncoding kCFStringEncodingUTF8 = 0x08000100;
inline constexpr CFNumberType kCFNumberSInt64Type = 4;

extern "C" {

extern const CFAllocatorRef kCFAllocatorDefault;
extern const CFStringRef kCFURLVolumeAvailableCapacityForImportantUsageKey;

extern const CFBooleanRef kCFBooleanTrue;

CFTypeRef CFRetain(CFTypeRef object);
void CFRelease(CFTypeRef object);
CFTypeID CFGetTypeID(CFTypeRef object);

CFTypeID CFStringGetTypeID(void);
CFStringRef CFStringCreateWithBytes(CFAllocatorRef allocator, const UInt8* bytes, CFIndex count,
                                    CFStringEncoding encoding, Boolean isExternal);
CFIndex CFStringGetLength(CFStringRef string);
CFIndex CFStringGetMaximumSizeForEncoding(CFIndex length, CFStringEncoding encoding);
CFIndex CFStringGetBytes(CFStringRef string, CFRange range, CFStringEncoding encoding,
                         UInt8 lossByte, Boolean isExternal, UInt8* buffer, CFIndex capacity,
                         CFIndex* used);

CFTypeID CFDataGetTypeID(void);
CFDataRef CFDataCreate(CFAllocatorRef allocator, const UInt8* bytes, CFIndex count);
CFIndex CFDataGetLength(CFDataRef data);
const UInt8* CFDataGetBytePtr(CFDataRef data);

struct CFDictionaryKeyCallBacks {
    CFIndex version;
    const void* (*retain)(CFAllocatorRef allocator, const void* value);
    void (*release)(CFAllocatorRef allocator, const void* value);
    CFStringRef (*copyDescription)(const void* value);
    Boolean (*equal)(const void* a, const void* b);
    CFHashCode (*hash)(const void* value);
};
struct CFDictionaryValueCallBacks {
    CFIndex version;
    const void* (*retain)(CFAllocatorRef allocator, const void* value);
    void (*release)(CFAllocatorRef allocator, const void* value);
    CFStringRef (*copyDescription)(const void* value);
    Boolean (*equal)(const void* a, const void* b);
};
extern const CFDictionaryKeyCallBacks kCFTypeDictionaryKeyCallBacks;
extern const CFDictionaryValueCallBacks kCFTypeDictionaryValueCallBacks;
CFDictionaryRef CFDictionaryCreate(CFAllocatorRef allocator, const void** keys, const void** values,
                                   CFIndex count, const CFDictionaryKeyCallBacks* keyCallBacks,
                                   const CFDictionaryValueCallBacks* valueCallBacks);

CFTypeID CFNumberGetTypeID(void);
Boolean CFNumberGetValue(CFNumberRef number, CFNumberType type, void* value);

CFBundleRef CFBundleGetMainBundle(void);
CFTypeRef CFBundleGetValueForInfoDictionaryKey(CFBundleRef bundle, CFStringRef key);

CFURLRef CFURLCreateFromFileSystemRepresentation(CFAllocatorRef allocator, const UInt8* bytes,
                                                 CFIndex count, Boolean isDirectory);
Boolean CFURLCopyResourcePropertyForKey(CFURLRef url, CFStringRef key, void* value,
                                        CFErrorRef* error);

}  // extern "C"
