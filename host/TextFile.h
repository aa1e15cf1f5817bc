#pragma once

// Whole files and the texts in them; standard input goes under the name "-".
//
//   Text script = readText("talk.txt");   // throws NoInput("talk.txt: No such file or directory")

#include <string>

#include "PrompterCore/text/Text.h"
#include "host/InputFile.h"

namespace Varnelle {

/// The bytes of the file `name`, or of standard input for "-". Throws NoInput when it is missing,
/// a directory or unreadable.
[[nodiscard]] std::string readFile(const std::string& name);

/// The text of the file `name`, a byte order mark at its start dropped. Throws NoInput as readFile
/// does, and BadData with the line of the first byte that is not UTF-8.
[[nodiscard]] PrompterCore::Text readText(const std::string& name);

}  // namespace Varnelle
