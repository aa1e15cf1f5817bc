#pragma once

// How our values look when a test fails, for GoogleTest and RapidCheck alike: both print what has a
// stream operator. Every test includes this header, so that a value prints the same everywhere.
//
// Texts print with everything but printable ASCII escaped, since what goes wrong is invisible:
// "cafe\u{301}\r\n". A record of your room gets one operator beside the others here:
//
//   inline std::ostream& operator<<(std::ostream& out, const ScriptToken& token) {
//       return Tests::printRecord(out, "ScriptToken", "index", token.index, "text", token.text);
//   }

#include <optional>
#include <ostream>
#include <string_view>

#include <gtest/gtest.h>

#include "PrompterCore/audio/AudioInput.h"
#include "PrompterCore/audio/ClapDetector.h"
#include "PrompterCore/camera/CameraAdjustment.h"
#include "PrompterCore/camera/FramePreviewLayout.h"
#include "PrompterCore/camera/LensMarker.h"
#include "PrompterCore/camera/ResolutionChoice.h"
#include "PrompterCore/colour/ColourPreset.h"
#include "PrompterCore/devices/CameraSource.h"
#include "PrompterCore/devices/ControllerPlacement.h"
#include "PrompterCore/devices/DisplayTarget.h"
#include "PrompterCore/library/LineDiff.h"
#include "PrompterCore/library/OpenSections.h"
#include "PrompterCore/library/ScriptItem.h"
#include "PrompterCore/prompter/PromptChapters.h"
#include "PrompterCore/prompter/PromptLine.h"
#include "PrompterCore/prompter/ReadingProgress.h"
#include "PrompterCore/records/Record.h"
#include "PrompterCore/script/ChapterExcerpt.h"
#include "PrompterCore/script/ChapterFocus.h"
#include "PrompterCore/script/Script.h"
#include "PrompterCore/script/ScriptChapters.h"
#include "PrompterCore/script/TextEdit.h"
#include "PrompterCore/support/Clamped.h"
#include "PrompterCore/support/ClosedRange.h"
#include "PrompterCore/support/Geometry.h"
#include "PrompterCore/support/IndexRange.h"
#include "PrompterCore/support/Required.h"
#include "PrompterCore/takes/ChapterMark.h"
#include "PrompterCore/takes/Confetti.h"
#include "PrompterCore/takes/ControllerStatus.h"
#include "PrompterCore/takes/StorageFolder.h"
#include "PrompterCore/takes/TakeBarLayout.h"
#include "PrompterCore/takes/TakeBarMode.h"
#include "PrompterCore/text/Characters.h"
#include "PrompterCore/text/Text.h"
#include "PrompterCore/text/Utf8.h"
#include "PrompterCore/voice/Alignment.h"

namespace PrompterCore {

namespace Tests {

/// In quotes. Bytes that are no well-formed UTF-8 print as \xFF.
inline void printEscaped(std::ostream& out, std::string_view bytes) {
    const auto hex = [&out](const char* before, unsigned value, const char* after) {
        const auto flags = out.flags();
        out << before << std::hex << std::uppercase << value << after;
        out.flags(flags);
    };
    out << '"';
    for (std::size_t at = 0; at < bytes.size();) {
        std::size_t bad = at;
        if (const std::size_t length = Utf8::illFormedPart(bytes, bad); length != 0 && bad == at) {
            for (const std::size_t end = at + length; at < end; ++at)
                hex("\\x", static_cast<unsigned char>(bytes[at]), "");
            continue;
        }
        const char32_t c = Utf8::next(bytes, at);
        if (c == '\n') {
            out << "\\n";
        } else if (c == '\r') {
            out << "\\r";
        } else if (c == '\t') {
            out << "\\t";
        } else if (c == '"' || c == '\\') {
            out << '\\' << static_cast<char>(c);
        } else if (c >= 0x20 && c < 0x7F) {
            out << static_cast<char>(c);
        } else {
            hex("\\u{", static_cast<unsigned>(c), "}");
        }
    }
    out << '"';
}

inline void printFields(std::ostream&, const char*) {}

template <class Value, class... Rest>
void printFields(std::ostream& out, const char* before, const char* name, const Value& value,
                 const Rest&... rest) {
    out << before << '.' << name << " = " << ::testing::PrintToString(value);
    printFields(out, ", ", rest...);
}

/// `Name{.field = value, ...}` out of a name and pairs of a field's name and value.
template <class... NamesAndValues>
std::ostream& printRecord(std::ostream& out, const char* type, const NamesAndValues&... fields) {
    out << type << '{';
    printFields(out, "", fields...);
    return out << '}';
}

}  // namespace Tests

inline std::ostream& operator<<(std::ostream& out, const Text& text) {
    Tests::printEscaped(out, text.utf8());
    return out;
}

inline std::ostream& operator<<(std::ostream& out, Character character) {
    Tests::printEscaped(out, character.utf8());
    return out;
}

template <class Unit>
std::ostream& operator<<(std::ostream& out, const IndexRange<Unit>& range) {
    return out << '[' << range.lower() << ", " << range.upper() << ')';
}

template <class T>
std::ostream& operator<<(std::ostream& out, const ClosedRange<T>& range) {
    return out << '[' << range.lower() << ", " << range.upper() << ']';
}

template <std::int64_t least, std::int64_t most>
std::ostream& operator<<(std::ostream& out, const Clamped<least, most>& value) {
    return out << static_cast<std::int64_t>(value);
}

inline std::ostream& operator<<(std::ostream& out, const Size& size) {
    return Tests::printRecord(out, "Size", "width", size.width, "height", size.height);
}

inline std::ostream& operator<<(std::ostream& out, const Point& point) {
    return Tests::printRecord(out, "Point", "x", point.x, "y", point.y);
}

inline std::ostream& operator<<(std::ostream& out, const Rectangle& rectangle) {
    return Tests::printRecord(out, "Rectangle", "origin", rectangle.origin, "size", rectangle.size);
}

template <class T>
std::ostream& operator<<(std::ostream& out, const Required<T>& field) {
    return out << static_cast<const T&>(field);
}

inline std::ostream& operator<<(std::ostream& out, const ScriptToken& token) {
    return Tests::printRecord(out, "ScriptToken", "index", token.index, "text", token.text,
                              "sourceRange", token.sourceRange);
}

inline std::ostream& operator<<(std::ostream& out, const ScriptWord& word) {
    return Tests::printRecord(out, "ScriptWord", "text", word.text, "tokenRange", word.tokenRange,
                              "breaksBefore", word.breaksBefore, "indent", word.indent);
}

inline std::ostream& operator<<(std::ostream& out, const ScriptHeading& heading) {
    return Tests::printRecord(out, "ScriptHeading", "title", heading.title, "sourceRange",
                              heading.sourceRange, "wordIndex", heading.wordIndex, "firstToken",
                              heading.firstToken, "breaksBefore", heading.breaksBefore);
}

inline std::ostream& operator<<(std::ostream& out, const Utf16Range& range) {
    return Tests::printRecord(out, "Utf16Range", "location", range.location, "length",
                              range.length);
}

inline std::ostream& operator<<(std::ostream& out, const ScriptChapter& chapter) {
    return Tests::printRecord(out, "ScriptChapter", "index", chapter.index, "title", chapter.title,
                              "sourceRange", chapter.sourceRange, "wordRange", chapter.wordRange,
                              "tokenRange", chapter.tokenRange, "startsAt", chapter.startsAt);
}

inline std::ostream& operator<<(std::ostream& out, const TextEdit& edit) {
    return Tests::printRecord(out, "TextEdit", "range", edit.range, "replacement", edit.replacement,
                              "selection", edit.selection);
}

inline std::ostream& operator<<(std::ostream& out, const ChapterFocus& focus) {
    return Tests::printRecord(out, "ChapterFocus", "index", focus.index, "titles", focus.titles,
                              "utf16Offset", focus.utf16Offset);
}

namespace ChapterExcerpt {
inline std::ostream& operator<<(std::ostream& out, const Excerpt& excerpt) {
    return Tests::printRecord(out, "Excerpt", "text", excerpt.text, "focus", excerpt.focus);
}
}  // namespace ChapterExcerpt

inline std::ostream& operator<<(std::ostream& out, const PromptLine& line) {
    return Tests::printRecord(out, "PromptLine", "text", line.text, "tokenRange", line.tokenRange,
                              "wordRange", line.wordRange, "indent", line.indent, "heading",
                              line.heading);
}

inline std::ostream& operator<<(std::ostream& out, const ReadingProgress& progress) {
    return Tests::printRecord(out, "ReadingProgress", "paragraph", progress.paragraph, "line",
                              progress.line, "lineCount", progress.lineCount, "paragraphLine",
                              progress.paragraphLine, "paragraphLineCount",
                              progress.paragraphLineCount, "fraction", progress.fraction);
}

inline std::ostream& operator<<(std::ostream& out, const AudioInput& input) {
    return Tests::printRecord(out, "AudioInput", "id", input.id, "name", input.name, "isDefault",
                              input.isDefault);
}

inline std::ostream& operator<<(std::ostream& out, const CameraSource& camera) {
    return Tests::printRecord(out, "CameraSource", "id", camera.id, "name", camera.name,
                              "isDefault", camera.isDefault, "isContinuity", camera.isContinuity);
}

inline std::ostream& operator<<(std::ostream& out, const DisplayTarget& display) {
    return Tests::printRecord(out, "DisplayTarget", "id", display.id, "name", display.name, "width",
                              display.width, "height", display.height, "isBuiltin",
                              display.isBuiltin, "vendorID", display.vendorID, "modelID",
                              display.modelID);
}

inline std::ostream& operator<<(std::ostream& out, const ControllerPlacement& placement) {
    return Tests::printRecord(out, "ControllerPlacement", "screen", placement.screen,
                              "sharesPrompterScreen", placement.sharesPrompterScreen);
}

inline std::ostream& operator<<(std::ostream& out, const PromptChapter& chapter) {
    return Tests::printRecord(out, "PromptChapter", "index", chapter.index, "title", chapter.title,
                              "firstToken", chapter.firstToken, "lineCount", chapter.lineCount,
                              "startsAt", chapter.startsAt);
}

inline std::ostream& operator<<(std::ostream& out, const ClapGesture& gesture) {
    return Tests::printRecord(out, "ClapGesture", "count", gesture.count, "firstClap",
                              gesture.firstClap, "lastClap", gesture.lastClap);
}

inline std::ostream& operator<<(std::ostream& out, const Record& record) {
    return out << toJson(record);
}

inline std::ostream& operator<<(std::ostream& out, const ChapterMark& mark) {
    return Tests::printRecord(out, "ChapterMark", "title", mark.title, "seconds", mark.seconds);
}

namespace Confetti {

inline std::ostream& operator<<(std::ostream& out, const Piece& piece) {
    return Tests::printRecord(out, "Piece", "colour", piece.colour, "width", piece.width, "height",
                              piece.height, "isRound", piece.isRound, "delay", piece.delay,
                              "duration", piece.duration, "drift", piece.drift, "rise", piece.rise,
                              "spin", piece.spin);
}

inline std::ostream& operator<<(std::ostream& out, const Piece::State& state) {
    return Tests::printRecord(out, "State", "x", state.x, "y", state.y, "rotation", state.rotation,
                              "opacity", state.opacity);
}

}  // namespace Confetti

inline std::ostream& operator<<(std::ostream& out, const ControllerStatus& status) {
    return out << "ControllerStatus(" << status.label() << ')';
}

inline std::ostream& operator<<(std::ostream& out, const TakeBarMode& mode) {
    mode.visit([&](TakeBarMode::CountingDown left) { out << "countingDown " << left.seconds; },
               [&](TakeBarMode::Rest) { out << "rest"; },
               [&](TakeBarMode::Preparing) { out << "preparing"; },
               [&](TakeBarMode::Recording) { out << "recording"; },
               [&](TakeBarMode::Practising) { out << "practising"; });
    return out;
}

inline std::ostream& operator<<(std::ostream& out, const TakeBarLayout& layout) {
    return Tests::printRecord(out, "TakeBarLayout", "density", caseName(layout.density), "width",
                              layout.width);
}

inline std::ostream& operator<<(std::ostream& out, const StorageFolder& folder) {
    return Tests::printRecord(out, "StorageFolder", "name", folder.name());
}

inline std::ostream& operator<<(std::ostream& out, const Alignment& alignment) {
    return Tests::printRecord(out, "Alignment", "tokenIndex", alignment.tokenIndex, "confidence",
                              alignment.confidence);
}

inline std::ostream& operator<<(std::ostream& out, const ScriptItem& item) {
    return Tests::printRecord(out, "ScriptItem", "id", item.id, "name", item.name, "kind",
                              caseName(item.kind), "children", item.children);
}

inline std::ostream& operator<<(std::ostream& out, const DiffSegment& segment) {
    return Tests::printRecord(out, "DiffSegment", "text", segment.text, "operation",
                              caseName(segment.operation));
}

inline std::ostream& operator<<(std::ostream& out, const DiffLine& line) {
    return Tests::printRecord(out, "DiffLine", "id", line.id, "change", caseName(line.change),
                              "segments", line.segments);
}

inline std::ostream& operator<<(std::ostream& out, const DiffSummary& summary) {
    return Tests::printRecord(out, "DiffSummary", "added", summary.added, "removed",
                              summary.removed);
}

inline std::ostream& operator<<(std::ostream& out, const RGBA& colour) {
    return Tests::printRecord(out, "RGBA", "red", colour.red(), "green", colour.green(), "blue",
                              colour.blue(), "alpha", colour.alpha());
}

inline std::ostream& operator<<(std::ostream& out, const UUID& id) { return out << id.text(); }

inline std::ostream& operator<<(std::ostream& out, const ColourPreset& preset) {
    return Tests::printRecord(out, "ColourPreset", "id", preset.id, "name", preset.name, "text",
                              preset.text, "highlight", preset.highlight, "marker", preset.marker);
}

inline std::ostream& operator<<(std::ostream& out, const CameraResolution& resolution) {
    return Tests::printRecord(out, "CameraResolution", "width", resolution.width, "height",
                              resolution.height);
}

inline std::ostream& operator<<(std::ostream& out, const FramedResolution& entry) {
    return Tests::printRecord(out, "FramedResolution", "sensor", entry.sensor, "output",
                              entry.output);
}

inline std::ostream& operator<<(std::ostream& out, const CameraBackground& background) {
    return out << "CameraBackground(" << toJson(background) << ')';
}

inline std::ostream& operator<<(std::ostream& out, const CameraAdjustment& adjustment) {
    return out << "CameraAdjustment(" << toJson(adjustment) << ')';
}

inline std::ostream& operator<<(std::ostream& out, const FrameOffset& offset) {
    return Tests::printRecord(out, "FrameOffset", "x", offset.x(), "y", offset.y());
}

inline std::ostream& operator<<(std::ostream& out, const LensMarker& marker) {
    return Tests::printRecord(out, "LensMarker", "x", marker.x(), "y", marker.y());
}

inline std::ostream& operator<<(std::ostream& out, const FramePreviewLayout& layout) {
    return Tests::printRecord(out, "FramePreviewLayout", "pane", layout.pane(), "window",
                              layout.window(), "picture", layout.picture(), "room", layout.room(),
                              "mirrored", layout.mirrored());
}

}  // namespace PrompterCore
