#include "PrompterCore/colour/ColourPreset.h"

namespace PrompterCore {

ColourPreset ColourPreset::fromRecord(const Record& record) {
    return {.id = record.required<UUID>("id"),
            .name = record.required<Text>("name"),
            .text = record.required<RGBA>("text"),
            .highlight = record.required<RGBA>("highlight"),
            .marker = record.optional<RGBA>("marker")};
}

Record ColourPreset::toRecord() const {
    return Record()
        .with("id", id)
        .with("name", name)
        .with("text", text)
        .with("highlight", highlight)
        .with("marker", marker);
}

}  // namespace PrompterCore
