// Between values and JSON. The only place that knows the JSON library.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <nlohmann/json.hpp>

#include "PrompterCore/records/Record.h"
#include "PrompterCore/support/Overloaded.h"

namespace PrompterCore {

namespace {

using Json = nlohmann::json;
using Kind = RecordFailure::Kind;

}  // namespace

// Takes what the parser finds, piece by piece; its names are the parser's.
class RecordReader {
public:
    RecordValue takeWhole() { return std::move(*whole_); }

    bool null() { return add(RecordValue()); }
    bool boolean(bool truth) { return add(RecordValue(truth)); }
    bool number_integer(std::int64_t integer) { return add(RecordValue(integer)); }
    // A number without a sign; those that need all 64 bits are kept as they are rounded.
    bool number_unsigned(std::uint64_t integer) {
        return std::in_range<std::int64_t>(integer)
                   ? add(RecordValue(static_cast<std::int64_t>(integer)))
                   : add(RecordValue(static_cast<double>(integer)));
    }
    bool number_float(double number, const std::string& written) {
        // Digits alone need more than 64 bits, and must not become the least integer by rounding.
        const bool isWhole = written.find_first_not_of("-0123456789") == std::string::npos;
        if (isWhole && number == -0x1p63) number = std::nextafter(number, -HUGE_VAL);
        return add(RecordValue(number));
    }
    bool string(std::string& text) { return add(RecordValue(Text(std::move(text)))); }
    // Only in formats other than JSON.
    bool binary(Json::binary_t&) { return false; }

    bool start_object(std::size_t) { return open(true); }
    bool key(std::string& key) {
        open_.back().key = std::move(key);
        return true;
    }
    bool end_object() {
        Record record = std::move(open_.back().record);
        open_.pop_back();
        refuseRepeatedKeys(record);
        return add(RecordValue(std::move(record)));
    }
    bool start_array(std::size_t) { return open(false); }
    bool end_array() {
        RecordValue::List list = std::move(open_.back().list);
        open_.pop_back();
        return add(RecordValue(std::move(list)));
    }

    [[noreturn]] bool parse_error(std::size_t position, const std::string&,
                                  const Json::exception& exception) {
        if (dynamic_cast<const Json::out_of_range*>(&exception) == nullptr) refuse(position);
        throw RecordFailure(Kind::malformed,
                            "a number beyond all doubles before byte " + std::to_string(position));
    }
    // `position` counts from 1.
    [[noreturn]] static void refuse(std::size_t position) {
        throw RecordFailure(Kind::malformed,
                            "no well-formed JSON at byte " + std::to_string(position));
    }

private:
    struct Open {
        bool isRecord;
        Record record;
        std::string key;  // of what comes next in the record
        RecordValue::List list;
    };

    bool open(bool isRecord) {
        if (open_.size() == RecordValue::deepest)
            throw RecordFailure(Kind::malformed, "nested deeper than " +
                                                     std::to_string(RecordValue::deepest) +
                                                     " lists and records");
        open_.push_back({isRecord, {}, {}, {}});
        return true;
    }

    bool add(RecordValue value) {
        if (open_.empty()) {
            whole_ = std::move(value);
        } else if (open_.back().isRecord) {
            open_.back().record.fields_.push_back({std::move(open_.back().key), std::move(value)});
        } else {
            open_.back().list.push_back(std::move(value));
        }
        return true;
    }

    static void refuseRepeatedKeys(const Record& record) {
        std::vector<std::string_view> keys = record.keys();
        std::ranges::sort(keys);
        if (const auto twice = std::ranges::adjacent_find(keys); twice != keys.end())
            throw RecordFailure(Kind::malformed,
                                "the key " + Json(*twice).dump() + " stands twice in a record");
    }

    std::vector<Open> open_;  // from the outermost
    std::optional<RecordValue> whole_;
};

RecordValue RecordValue::fromJson(std::string_view json) {
    // The parser would take a zero byte for the end. JSON has none, not even in texts.
    if (const std::size_t zero = json.find('\0'); zero != std::string_view::npos)
        RecordReader::refuse(zero + 1);
    RecordReader reader;
    Json::sax_parse(json.begin(), json.end(), &reader);
    return reader.takeWhole();
}

void RecordValue::appendJson(std::string& json) const {
    const auto appendAll = [&json](char open, const auto& entries, char close, auto&& append) {
        json += open;
        for (const auto& entry : entries) {
            if (&entry != entries.data()) json += ',';
            append(entry);
        }
        json += close;
    };
    std::visit(
        Overloaded{[&](std::monostate) { json += "null"; },
                   [&](bool truth) { json += truth ? "true" : "false"; },
                   [&](std::int64_t integer) { json += std::to_string(integer); },
                   [&](double number) { json += Json(number).dump(); },
                   [&](const Text& text) { json += Json(text.utf8()).dump(); },
                   [&](const List& list) {
                       appendAll('[', list, ']',
                                 [&json](const RecordValue& entry) { entry.appendJson(json); });
                   },
                   [&](const Record& record) {
                       appendAll('{', record.fields_, '}', [&json](const RecordField& field) {
                           json += Json(field.key).dump() + ':';
                           field.value.appendJson(json);
                       });
                   }},
        held_);
}

std::string RecordValue::json() const {
    std::string json;
    appendJson(json);
    return json;
}

}  // namespace PrompterCore
