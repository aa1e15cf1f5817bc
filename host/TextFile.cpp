#include "host/TextFile.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "PrompterCore/text/Utf8.h"
#include "host/Failures.h"

namespace Varnelle {

std::string readFile(const std::string& name) { return InputFile(name).rest(); }

FileText readFileText(const std::string& name) {
    std::string bytes = readFile(name);
    const bool hasMark = bytes.starts_with(FileText::mark);
    if (hasMark) bytes.erase(0, FileText::mark.size());
    std::size_t bad = 0;
    if (PrompterCore::Utf8::illFormedPart(bytes, bad) != 0) {
        const auto line =
            1 + std::count(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(bad), '\n');
        throw BadData(shownName(name) + ":" + std::to_string(line) +
                      ": the text is not UTF-8; save it as UTF-8 and try again");
    }
    return {.text = PrompterCore::Text(std::move(bytes)), .hasMark = hasMark};
}

PrompterCore::Text readText(const std::string& name) { return readFileText(name).text; }

}  // namespace Varnelle
