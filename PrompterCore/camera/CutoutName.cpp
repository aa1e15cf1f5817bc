#include "PrompterCore/camera/CutoutName.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string>
#include <string_view>

#include "PrompterCore/text/Text.h"
#include "PrompterCore/text/Utf8.h"

namespace PrompterCore::CutoutName {

namespace {

constexpr std::string_view suffix = " cut-out";

// What cannot stand in an extension: the blank, and what steers the direction of writing, which
// could make another extension appear at the end.
bool isBarredFromExtensions(char32_t c) noexcept {
    constexpr char32_t barred[] = {U' ',      U'\u061C', U'\u200E', U'\u200F', U'\u202A',
                                   U'\u202B', U'\u202C', U'\u202D', U'\u202E', U'\u2066',
                                   U'\u2067', U'\u2068', U'\u2069'};
    return std::ranges::find(barred, c) != std::end(barred);
}

std::string_view withoutExtension(std::string_view name) {
    const std::size_t stop = name.rfind('.');
    if (stop == std::string_view::npos || stop == 0 || stop + 1 == name.size()) return name;
    const Text extension(name.substr(stop + 1));
    const std::string& utf8 = extension.utf8();
    for (std::size_t at = 0; at < utf8.size();) {
        if (isBarredFromExtensions(Utf8::next(utf8, at))) return name;
    }
    return name.substr(0, stop);
}

struct Location {
    std::string folder;  // with the separator behind it; empty for a name alone
    std::string stem;    // the file's name without its extension
};

Location locationOf(const std::filesystem::path& file) {
    std::string written = file.native();
    while (written.size() > 1 && written.ends_with('/')) {
        written.pop_back();
    }
    const std::size_t name = written.rfind('/') + 1;  // 0 without a separator
    return {.folder = written.substr(0, name),
            .stem = std::string(withoutExtension(std::string_view(written).substr(name)))};
}

}  // namespace

std::filesystem::path fileFor(const std::filesystem::path& recording) {
    const Location location = locationOf(recording);
    return location.folder + location.stem + std::string(suffix) + ".mov";
}

bool isCutout(const std::filesystem::path& file) { return locationOf(file).stem.ends_with(suffix); }

}  // namespace PrompterCore::CutoutName
