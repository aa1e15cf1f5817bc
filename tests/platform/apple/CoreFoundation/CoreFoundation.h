#pragma once

// What our sources for macOS use of CoreFoundation, declared as Apple's documentation has it, so
// that they are compiled and run wherever the tests are. CoreFoundationDouble.cpp answers.

#include <cstdint>

extern "C" {

using Boolean = unsigned char;
using UInt8 = unsigned char;
using UInt32 = std::uint32_t;
using OSStatus = std::int32_t;
using CFIndex = long;
using CFTypeID = unsigned long;
using CFHashCode = unsigned long;
using CFStringEncoding = UInt32;

using CFTypeRef = const void*;
using CFAllocatorRef = const struct __CFAllocator*;
using CFBooleanRef = const struct __CFBoolean*;
using CFStringRef = const struct __CFString*;
using CFDataRef = const struct __CFData*;
using CFDictionaryRef = const struct __CFDictionary*;

extern const CFAllocatorRef kCFAllocatorDefault;
extern const CFBooleanRef kCFBooleanTrue;
extern const CFBooleanRef kCFBooleanFalse;

void CFRelease(CFTypeRef object);
CFTypeRef CFRetain(CFTypeRef object);
CFTypeID CFGetTypeID(CFTypeRef object);
CFTypeID CFBooleanGetTypeID();
CFTypeID CFStringGetTypeID();
CFTypeID CFDataGetTypeID();
CFTypeID CFDictionaryGetTypeID();

struct CFRange {
    CFIndex location;
    CFIndex length;
};
inline CFRange CFRangeMake(CFIndex location, CFIndex length) { return {location, length}; }

enum : CFStringEncoding { kCFStringEncodingUTF8 = 0x08000100 };
CFStringRef CFStringCreateWithBytes(CFAllocatorRef allocator, const UInt8* bytes, CFIndex count,
                                    CFStringEncoding encoding, Boolean isExternalRepresentation);
CFIndex CFStringGetLength(CFStringRef text);
CFIndex CFStringGetMaximumSizeForEncoding(CFIndex length, CFStringEncoding encoding);
CFIndex CFStringGetBytes(CFStringRef text, CFRange range, CFStringEncoding encoding, UInt8 lossByte,
                         Boolean isExternalRepresentation, UInt8* buffer, CFIndex capacity,
                         CFIndex* used);

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

}  // extern "C"
