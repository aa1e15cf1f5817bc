#pragma once

// A folder's path as a user knows it.
//
//   FolderName::short_("/Users/ann/Movies", "/Users/ann");   // "~/Movies"

#include "PrompterCore/text/Text.h"

namespace PrompterCore::FolderName {

/// `path` with ~ in place of `home`, where it is that folder or lies in it; otherwise, and where
/// `home` is empty, `path` itself. Character by character: a composed and a decomposed name of the
/// same folder are the same.
[[nodiscard]] Text short_(const Text& path, const Text& home);

}  // namespace PrompterCore::FolderName
