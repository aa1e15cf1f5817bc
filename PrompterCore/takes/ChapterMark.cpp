#include "PrompterCore/takes/ChapterMark.h"

namespace PrompterCore {

ChapterMark ChapterMark::fromRecord(const Record& record) {
    return {.title = record.required<Text>("title"), .seconds = record.required<double>("seconds")};
}

Record ChapterMark::toRecord() const {
    return Record().with("title", title).with("seconds", seconds);
}

}  // namespace PrompterCore
