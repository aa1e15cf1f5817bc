#include "tests/platform/macos/Objects.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <stdexcept>
#include <utility>
#include <vector>

#include "PrompterCore/text/Text.h"

namespace {

enum class Kind : CFTypeID { boolean = 1, text, bytes, number, dictionary };

struct Object {
    Kind kind;
    std::string value = {};  // text in UTF-8, bytes, a boolean's name
    std::int64_t number = 0;
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

Object objectFor(const StandIn::Value& value) {
    if (const auto* const number = std::get_if<std::int64_t>(&value))
        return {.kind = Kind::number, .number = *number};
    return {.kind = Kind::text, .value = std::get<std::string>(value)};
}

Object* made(Object object) {
    ++live;
    return new Object(std::move(object));
}

template <class Ref>
Ref as(Object* object) {
    return static_cast<Ref>(static_cast<void*>(object));
}

std::string bytesOf(const UInt8* bytes, CFIndex count) { return {bytes, bytes + count}; }

// A UTF-16 unit for each byte but those that continue one, and another for the long ones.
CFIndex unitsOf(const std::string& text) {
    return std::count_if(text.begin(), text.end(),
                         [](char c) { return (static_cast<UInt8>(c) & 0xC0) != 0x80; }) +
           std::count_if(text.begin(), text.end(),
                         [](char c) { return static_cast<UInt8>(c) >= 0xF0; });
}

const void* retain(CFAllocatorRef, const void* value) { return CFRetain(value); }
void release(CFAllocatorRef, const void* value) { CFRelease(value); }

Object trueObject{.kind = Kind::boolean, .value = "true"};

}  // namespace

extern "C" {

const CFAllocatorRef kCFAllocatorDefault = nullptr;
const CFBooleanRef kCFBooleanTrue = as<CFBooleanRef>(&trueObject);
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

CFTypeID CFStringGetTypeID() { return static_cast<CFTypeID>(Kind::text); }
CFStringRef CFStringCreateWithBytes(CFAllocatorRef, const UInt8* bytes, CFIndex count,
                                    CFStringEncoding encoding, Boolean) {
    std::string utf8 = bytesOf(bytes, count);
    if (encoding != kCFStringEncodingUTF8 || !PrompterCore::Text::fromUtf8(utf8)) return nullptr;
    return as<CFStringRef>(made({.kind = Kind::text, .value = std::move(utf8)}));
}
CFIndex CFStringGetLength(CFStringRef text) { return unitsOf(objectOf(text).value); }
CFIndex CFStringGetMaximumSizeForEncoding(CFIndex length, CFStringEncoding) { return 3 * length; }
CFIndex CFStringGetBytes(CFStringRef text, CFRange range, CFStringEncoding, UInt8, Boolean,
                         UInt8* buffer, CFIndex capacity, CFIndex* used) {
    const std::string& utf8 = objectOf(text).value;
    if (range.location != 0 || range.length != unitsOf(utf8) ||
        capacity < static_cast<CFIndex>(utf8.size()))
        throw std::logic_error("the stand-in gives a text only whole");
    std::copy(utf8.begin(), utf8.end(), buffer);
    *used = static_cast<CFIndex>(utf8.size());
    return range.length;
}

CFTypeID CFDataGetTypeID() { return static_cast<CFTypeID>(Kind::bytes); }
CFDataRef CFDataCreate(CFAllocatorRef, const UInt8* bytes, CFIndex count) {
    return as<CFDataRef>(made({.kind = Kind::bytes, .value = bytesOf(bytes, count)}));
}
CFIndex CFDataGetLength(CFDataRef data) {
    return static_cast<CFIndex>(objectOf(data).value.size());
}
const UInt8* CFDataGetBytePtr(CFDataRef data) {
    return reinterpret_cast<const UInt8*>(objectOf(data).value.data());
}

CFTypeID CFNumberGetTypeID() { return static_cast<CFTypeID>(Kind::number); }
Boolean CFNumberGetValue(CFNumberRef number, CFNumberType type, void* value) {
    if (type != kCFNumberSInt64Type) return 0;
    *static_cast<std::int64_t*>(value) = objectOf(number).number;
    return 1;
}

CFDictionaryRef CFDictionaryCreate(CFAllocatorRef allocator, const void** keys, const void** values,
                                   CFIndex count, const CFDictionaryKeyCallBacks* keyCallBacks,
                                   const CFDictionaryValueCallBacks* valueCallBacks) {
    Object* const dictionary = made({.kind = Kind::dictionary});
    for (CFIndex i = 0; i < count; ++i) {
        dictionary->entries.emplace_back(keyCallBacks->retain(allocator, keys[i]),
                                         valueCallBacks->retain(allocator, values[i]));
    }
    return as<CFDictionaryRef>(dictionary);
}

}  // extern "C"

namespace StandIn {

long liveObjects() { return live; }

CFTypeRef made(const Value& value) { return ::made(objectFor(value)); }

CFTypeRef kept(const Value& value) {
    static std::vector<std::unique_ptr<Object>> constants;
    constants.push_back(std::make_unique<Object>(objectFor(value)));
    return constants.back().get();
}

std::string valueOf(CFTypeRef object) { return objectOf(object).value; }

std::map<std::string, std::string> entriesOf(CFDictionaryRef dictionary) {
    std::map<std::string, std::string> entries;
    for (const auto& [key, value] : objectOf(dictionary).entries)
        entries.emplace(valueOf(key), valueOf(value));
    return entries;
}

}  // namespace StandIn
