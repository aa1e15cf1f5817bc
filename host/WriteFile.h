#pragma once

// A file's content replaced as a whole: whoever looks sees the old one or the new one, never a
// part.
//
//   writeFile("talk.txt", "# Intro\n");   // throws CannotWrite("talk.txt: Permission denied")

#include <filesystem>
#include <string_view>

namespace Varnelle {

/// Writes `bytes` beside `name`, and once they would survive a power failure renames them to it. A
/// symbolic link is followed and stays one; owner and permissions stay where the system lets us.
/// Other hard links of the file keep the old content. Throws CannotWrite when it fails or when
/// `name` is no regular file; then the file is what it was, and nothing is left beside it. An
/// interrupt ends the program when the file is whole.
void writeFile(const std::filesystem::path& name, std::string_view bytes);

}  // namespace Varnelle
