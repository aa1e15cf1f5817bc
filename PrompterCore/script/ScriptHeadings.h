#pragma once

// The marker that makes a line a heading: "# Title", after any spaces and tabs.

#include <string_view>

namespace PrompterCore::ScriptHeadings {

/// Number sign and space. What finds headings reads it, what writes them writes it.
inline constexpr std::string_view marker = "# ";

}  // namespace PrompterCore::ScriptHeadings
