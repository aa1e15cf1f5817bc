#pragma once

// What the sources for macOS share. Not installed.

#include <memory>
#include <type_traits>

#include <CoreFoundation/CoreFoundation.h>

namespace PrompterCore {

struct CoreFoundationRelease {
    void operator()(CFTypeRef object) const noexcept { CFRelease(object); }
};

/// Releases what a function with Create or Copy in its name gave; nothing where it gave null.
template <class Ref>
using CoreFoundationOwner = std::unique_ptr<std::remove_pointer_t<Ref>, CoreFoundationRelease>;

}  // namespace PrompterCore
