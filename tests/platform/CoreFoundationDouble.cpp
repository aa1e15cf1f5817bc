#include "tests/platform/CoreFoundationDouble.h"

#include <algorithm>
#include <cstddef>
#include <stdexcept>
#include <utility>
#include <vector>

#include "PrompterCore/text/Text.h"

namespace {

enum class Kind : CFTypeID { boolean = 1, text, bytes, dictionary };

struct Object {
    Object(Kind ofKind, std::string holds) : kind(ofKind), value(std::move(holds)) {}

    Kind kind;
    std::string value;  // text in UTF-8, bytes, a boolean's name
    std::vector<std::pair<CFTypeRef, CFTypeRef>> entries = {};
    long owners = 1;
};

long live = 0;

Object& objectOf(CFTypeRef reference) {
    auto* const object = const_cast<Object*>(static_cast<const Object*>(reference));
    if (object == nullptr || object->owners < 1)
        throw std::logic_error("no live object of CoreFoundation");
    return *object;
}

Object* made(Kind kind, std::string value) {
    ++live;
    return new Object(kind, std::move(value));
}

template <class Ref>
Ref as(Object* object) {
    return static_cast<Ref>(static_cast<void*>(object));
}

// UTF-16 code units of well-formed UTF-8.
CFIndex lengthOf(const std::string& utf8) {
    CFIndex length = 0;
    for (const char byte : utf8) {
        const auto value = static_cast<unsigned char>(byte);
        if ((value & 0xC0u) != 0x80u) length += value >= 0xF0u ? 2 : 1;
    }
    return length;
}

const void* retain(CFAllocatorRef, const void* value) { return CFRetain(value); }
void release(CFAllocatorRef, const void* value) { CFRelease(value); }

Object trueObject(Kind::boolean, "true");
Object falseObject(Kind::boolean, "false");

}  // namespace

extern "C" {

const CFAllocatorRef kCFAllocatorDefault = nullptr;
const CFBooleanRef kCFBooleanTrue = as<CFBooleanRef>(&trueObject);
const CFBooleanRef kCFBooleanFalse = as<CFBooleanRef>(&falseObject);
const CFDictionaryKeyCallBacks kCFTypeDictionaryKeyCallBacks = {0,       retain,  release,
                                                                nullptr, nullptr, nullptr};
const CFDictionaryValueCallBacks kCFTypeDictionaryValueCallBacks = {0, retain, release, nullptr,
                                                                    nullptr};

CFTypeRef CFRetain(CFTypeRef object) {
    ++objectOf(object).owners;
    return object;
}

void CFRelease(CFTypeRef reference) {
    Object& object = objectOf(reference);
    if (--object.owners > 0) return;
    for (const auto& [key, value] : object.entries) {
        CFRelease(key);
        CFRelease(value);
    }
    --live;
    delete &object;
}

CFTypeID CFGetTypeID(CFTypeRef object) { return static_cast<CFTypeID>(objectOf(object).kind); }
CFTypeID CFBooleanGetTypeID() { return static_cast<CFTypeID>(Kind::boolean); }
CFTypeID CFStringGetTypeID() { return static_cast<CFTypeID>(Kind::text); }
CFTypeID CFDataGetTypeID() { return static_cast<CFTypeID>(Kind::bytes); }
CFTypeID CFDictionaryGetTypeID() { return static_cast<CFTypeID>(Kind::dictionary); }

CFStringRef CFStringCreateWithBytes(CFAllocatorRef, const UInt8* bytes, CFIndex count,
                                    CFStringEncoding encoding, Boolean) {
    std::string utf8(bytes, bytes + count);
    if (encoding != kCFStringEncodingUTF8 || !PrompterCore::Text::fromUtf8(utf8)) return nullptr;
    return as<CFStringRef>(made(Kind::text, std::move(utf8)));
}

CFIndex CFStringGetLength(CFStringRef text) { return lengthOf(objectOf(text).value); }

CFIndex CFStringGetMaximumSizeForEncoding(CFIndex length, CFStringEncoding) { return 3 * length; }

CFIndex CFStringGetBytes(CFStringRef text, CFRange range, CFStringEncoding, UInt8, Boolean,
                         UInt8* buffer, CFIndex capacity, CFIndex* used) {
    const std::string& utf8 = objectOf(text).value;
    if (range.location != 0 || range.length != lengthOf(utf8) ||
        capacity < static_cast<CFIndex>(utf8.size()))
        throw std::logic_error("the double gives a text only whole");
    std::copy(utf8.begin(), utf8.end(), buffer);
    *used = static_cast<CFIndex>(utf8.size());
    return range.length;
}

CFDataRef CFDataCreate(CFAllocatorRef, const UInt8* bytes, CFIndex count) {
    return as<CFDataRef>(made(Kind::bytes, std::string(bytes, bytes + count)));
}

CFIndex CFDataGetLength(CFDataRef data) {
    return static_cast<CFIndex>(objectOf(data).value.size());
}

const UInt8* CFDataGetBytePtr(CFDataRef data) {
    return reinterpret_cast<const UInt8*>(objectOf(data).value.data());
}

CFDictionaryRef CFDictionaryCreate(CFAllocatorRef allocator, const void** keys, const void** values,
                                   CFIndex count, const CFDictionaryKeyCallBacks* keyCallBacks,
                                   const CFDictionaryValueCallBacks* valueCallBacks) {
    Object* const dictionary = made(Kind::dictionary, {});
    for (CFIndex i = 0; i < count; ++i) {
        dictionary->entries.emplace_back(keyCallBacks->retain(allocator, keys[i]),
                                         valueCallBacks->retain(allocator, values[i]));
    }
    return as<CFDictionaryRef>(dictionary);
}

}  // extern "C"

namespace PrompterCore::Tests {

long liveObjects() { return live; }

CFStringRef constantText(const char* utf8) { return as<CFStringRef>(new Object(Kind::text, utf8)); }

std::string valueOf(CFTypeRef object) { return objectOf(object).value; }

std::map<std::string, std::string> entriesOf(CFDictionaryRef dictionary) {
    std::map<std::string, std::string> entries;
    for (const auto& [key, value] : objectOf(dictionary).entries)
        entries.emplace(valueOf(key), valueOf(value));
    return entries;
}

}  // namespace PrompterCore::Tests
