#include "host/words/JsonObjects.h"

#include <utility>

namespace Varnelle {

bool JsonObjects::isPlace() const {
    if (where_ == Where::inItsList) return open_ == "{[";
    return open_.empty() || open_ == "[";
}

void JsonObjects::cutOff() {
    if (inside_ > 0) {
        object_.isWhole = false;
        found_.push_back(std::move(object_));
    } else if (!open_.empty()) {
        found_.push_back({.line = line_, .text = {}, .isWhole = false});
    }
    object_ = {};
    open_.clear();
    inside_ = 0;
}

void JsonObjects::take(char byte) {
    if (inside_ > 0) object_.text += byte;
    if (byte != ' ' && byte != '\t') last_ = byte;
    if (inText_) {
        inText_ = escaped_ || byte != '"';
        escaped_ = !escaped_ && byte == '\\';
        return;
    }
    switch (byte) {
        case '"': inText_ = !open_.empty(); break;
        case '{':
        case '[':
            if (byte == '{' && inside_ == 0 && isPlace()) {
                object_ = {.line = line_, .text = "{", .isWhole = true};
                inside_ = open_.size() + 1;
            }
            open_ += byte;
            return;
        case '}':
        case ']':
            if (open_.empty()) break;
            open_.pop_back();
            if (inside_ > open_.size()) {
                found_.push_back(std::exchange(object_, {}));
                inside_ = 0;
            }
            return;
        default: break;
    }
    constexpr std::string_view betweenObjects = " \t\r,";
    if (open_.empty() && betweenObjects.find(byte) == std::string_view::npos) isStray_ = true;
}

std::vector<JsonObjects::Found> JsonObjects::take(std::string_view line) {
    if (where_ == Where::outermost && line.starts_with('{') && open_.ends_with('{') && last_ != ':')
        cutOff();
    ++line_;
    isStray_ = false;
    for (const char byte : line) {
        take(byte);
    }
    inText_ = false;  // no text goes on behind a line's end
    escaped_ = false;
    if (inside_ > 0) object_.text += '\n';
    if (isStray_) found_.push_back({.line = line_, .text = std::string(line), .isWhole = false});
    return std::exchange(found_, {});
}

std::vector<JsonObjects::Found> JsonObjects::finish() {
    cutOff();
    return std::exchange(found_, {});
}

}  // namespace Varnelle
