#include "PrompterCore/script/TextEdit.h"

#include <string>
#include <utility>

#include "PrompterCore/support/Require.h"
#include "PrompterCore/text/Characters.h"

namespace PrompterCore {

Text TextEdit::appliedTo(const Text& text) const {
    const Characters characters(text);
    require(0 <= range.lower() && range.upper() <= characters.count(),
            "the edit's range lies within the text");
    std::string edited;
    edited.reserve(text.utf8().size() + replacement.utf8().size());
    edited.append(characters.slice(CharacterRange(0, range.lower())));
    edited.append(replacement.utf8());
    edited.append(characters.slice(CharacterRange(range.upper(), characters.count())));
    return Text(std::move(edited));
}

}  // namespace PrompterCore
