// From the main bundle, through CoreFoundation.

#include "PrompterCore/platform/CoreFoundationTexts.h"
#include "PrompterCore/platform/MainBundle.h"

namespace PrompterCore::MainBundle {

std::optional<Text> informationText(std::string_view key) {
    const CFBundleRef bundle = CFBundleGetMainBundle();
    if (bundle == nullptr) return std::nullopt;
    const CoreFoundationOwner<CFStringRef> name = coreFoundationText(key);
    if (name == nullptr) return std::nullopt;
    // Not ours to release.
    const CFTypeRef value = CFBundleGetValueForInfoDictionaryKey(bundle, name.get());
    if (value == nullptr || CFGetTypeID(value) != CFStringGetTypeID()) return std::nullopt;
    return utf8Of(static_cast<CFStringRef>(value));
}

}  // namespace PrompterCore::MainBundle
