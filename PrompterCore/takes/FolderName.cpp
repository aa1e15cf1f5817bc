#include "PrompterCore/takes/FolderName.h"

#include <algorithm>
#include <cstdint>
#include <string>

#include "PrompterCore/text/Characters.h"

namespace PrompterCore::FolderName {

Text short_(const Text& path, const Text& home) {
    const Characters whole(path);
    const Characters folder(home);
    const std::int64_t length = folder.count();
    if (folder.isEmpty() || whole.count() < length ||
        !std::equal(folder.begin(), folder.end(), whole.begin()))
        return path;
    if (whole.count() > length && !whole[length].is('/')) return path;
    return "~" + path.utf8().substr(whole.byteOffset(length));
}

}  // namespace PrompterCore::FolderName
