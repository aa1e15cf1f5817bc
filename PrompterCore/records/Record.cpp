#include "PrompterCore/records/Record.h"

#include <algorithm>
#include <cmath>

#include "PrompterCore/support/Overloaded.h"
#include "PrompterCore/support/Require.h"

namespace PrompterCore {

namespace {

using Kind = RecordFailure::Kind;

// Up to here each whole number is a double of its own.
constexpr double largestExactWhole = 0x1p53;

}  // namespace

Record::Record() noexcept = default;
Record::Record(const Record&) = default;
Record::Record(Record&&) noexcept = default;
Record& Record::operator=(const Record&) = default;
Record& Record::operator=(Record&&) noexcept = default;
Record::~Record() = default;

std::vector<std::string_view> Record::keys() const {
    std::vector<std::string_view> keys;
    for (const RecordField& field : fields_)
        keys.emplace_back(field.key);
    return keys;
}

const RecordValue* Record::find(std::string_view key) const noexcept {
    const auto found = std::ranges::find(fields_, key, &RecordField::key);
    return found == fields_.end() ? nullptr : &found->value;
}

void Record::add(std::string_view key, RecordValue value) {
    require(find(key) == nullptr, "a record's key is written once");
    fields_.push_back({std::string(key), std::move(value)});
}

bool operator==(const Record& a, const Record& b) { return a.fields_ == b.fields_; }

RecordValue::RecordValue(double number) {
    if (!std::isfinite(number)) throw RecordFailure(Kind::notFinite, "a number that is not finite");
    if (std::abs(number) <= largestExactWhole && number == std::trunc(number)) {
        held_ = static_cast<std::int64_t>(number);
    } else {
        held_ = number;
    }
}

bool RecordValue::isNull() const noexcept { return std::holds_alternative<std::monostate>(held_); }

namespace {

const char* nameOf(const auto& held) {
    return std::visit(
        Overloaded{[](std::monostate) { return "null"; }, [](bool) { return "true or false"; },
                   [](std::int64_t) { return "a number"; }, [](double) { return "a number"; },
                   [](const Text&) { return "a text"; },
                   [](const RecordValue::List&) { return "a list"; },
                   [](const Record&) { return "a record"; }},
        held);
}

template <class T>
const T& held(const auto& variant, const char* wanted) {
    if (const T* value = std::get_if<T>(&variant)) return *value;
    throw RecordFailure(Kind::mismatch,
                        std::string(nameOf(variant)) + " where " + wanted + " is required");
}

}  // namespace

bool RecordValue::truth() const { return held<bool>(held_, "true or false"); }

std::int64_t RecordValue::integer() const {
    if (const double* number = std::get_if<double>(&held_)) {
        // 2^63 itself does not fit; -2^63 does.
        const bool fits = *number >= -0x1p63 && *number < 0x1p63;
        if (!fits) throw RecordFailure(Kind::mismatch, json() + " does not fit 64 bits");
        if (*number != std::trunc(*number))
            throw RecordFailure(Kind::mismatch, json() + " where a whole number is required");
        return static_cast<std::int64_t>(*number);
    }
    return held<std::int64_t>(held_, "a whole number");
}

double RecordValue::number() const {
    if (const auto* integer = std::get_if<std::int64_t>(&held_))
        return static_cast<double>(*integer);
    return held<double>(held_, "a number");
}

const Text& RecordValue::text() const { return held<Text>(held_, "a text"); }

const RecordValue::List& RecordValue::list() const { return held<List>(held_, "a list"); }

const Record& RecordValue::record() const { return held<Record>(held_, "a record"); }

}  // namespace PrompterCore
