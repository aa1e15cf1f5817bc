#include "host/TextFile.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

#include <sys/stat.h>

#include "PrompterCore/text/Utf8.h"
#include "host/Failures.h"

namespace Varnelle {

namespace {

[[noreturn]] void cannotRead(const std::string& name, int error) {
    throw NoInput(shownName(name) + ": " + std::strerror(error));
}

struct Closer {
    void operator()(std::FILE* file) const {
        if (file != stdin) std::fclose(file);
    }
};

using File = std::unique_ptr<std::FILE, Closer>;

File opened(const std::string& name) {
    File file(name == "-" ? stdin : std::fopen(name.c_str(), "rb"));
    if (!file) cannotRead(name, errno);
    struct stat status {};
    if (fstat(fileno(file.get()), &status) == 0 && S_ISDIR(status.st_mode))
        cannotRead(name, EISDIR);
    return file;
}

}  // namespace

std::string shownName(const std::string& name) { return name == "-" ? "standard input" : name; }

void requireReadable(const std::string& name) { opened(name); }

std::string readFile(const std::string& name) {
    const File file = opened(name);
    std::string bytes;
    std::array<char, 1 << 16> buffer{};
    while (const std::size_t got = std::fread(buffer.data(), 1, buffer.size(), file.get())) {
        bytes.append(buffer.data(), got);
    }
    if (std::ferror(file.get()) != 0) cannotRead(name, errno);
    return bytes;
}

PrompterCore::Text readText(const std::string& name) {
    std::string bytes = readFile(name);
    if (std::string_view(bytes).starts_with("\xEF\xBB\xBF")) bytes.erase(0, 3);
    std::size_t bad = 0;
    if (PrompterCore::Utf8::illFormedPart(bytes, bad) != 0) {
        const auto line =
            1 + std::count(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(bad), '\n');
        throw BadData(shownName(name) + ":" + std::to_string(line) +
                      ": the text is not UTF-8; save it as UTF-8 and try again");
    }
    return PrompterCore::Text(std::move(bytes));
}

}  // namespace Varnelle
