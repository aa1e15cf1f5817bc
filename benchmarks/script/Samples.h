#pragma once

// Script texts to build, made from small paragraphs without any chance in it.

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace PrompterCore::Samples {

/// A text in one language, or of one kind of character.
struct Sample {
    std::string_view name;
    std::string_view paragraph;  ///< a heading line, some lines of text, an empty line
};

/// English first.
std::span<const Sample> samples();

/// The paragraph again and again, whole, up to the first length of at least `size` bytes.
std::string text(const Sample& sample, std::size_t size);

}  // namespace PrompterCore::Samples
