#include "PrompterCore/takes/StorageFolder.h"

#include "PrompterCore/platform/MainBundle.h"
#include "PrompterCore/text/Trims.h"

namespace PrompterCore {

StorageFolder StorageFolder::fromDeclared(const std::optional<Text>& declared) {
    const std::string_view name = declared ? trimmedOfWhiteSpace(declared->utf8()) : "";
    return StorageFolder(name.empty() ? shipping : name);
}

StorageFolder StorageFolder::current() {
    return fromDeclared(MainBundle::informationText(infoKey));
}

}  // namespace PrompterCore
