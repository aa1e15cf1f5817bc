#pragma once

// How each type that can be stored becomes a RecordValue and is read out of one. Included by
// Record.h, which is the one to read.

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "PrompterCore/records/Record.h"
#include "PrompterCore/support/Enumeration.h"

namespace PrompterCore {

/// How a T is read and written; specialised below for everything that can be stored.
template <class T>
struct RecordCoding;

template <>
struct RecordCoding<bool> {
    static bool read(const RecordValue& value) { return value.truth(); }
    static RecordValue write(bool truth) { return RecordValue(truth); }
};

template <>
struct RecordCoding<std::int64_t> {
    static std::int64_t read(const RecordValue& value) { return value.integer(); }
    static RecordValue write(std::int64_t integer) { return RecordValue(integer); }
};

template <>
struct RecordCoding<double> {
    static double read(const RecordValue& value) { return value.number(); }
    static RecordValue write(double number) { return RecordValue(number); }
};

template <>
struct RecordCoding<Text> {
    static Text read(const RecordValue& value) { return value.text(); }
    static RecordValue write(const Text& text) { return RecordValue(text); }
};

template <>
struct RecordCoding<Record> {
    static Record read(const RecordValue& value) { return value.record(); }
    static RecordValue write(const Record& record) { return RecordValue(record); }
};

template <class E>
requires std::is_enum_v<E>
struct RecordCoding<E> {
    using Raw = std::conditional_t<std::integral<decltype(rawValue(E()))>, std::int64_t, Text>;

    static E read(const RecordValue& value) {
        const std::optional<E> found = fromRawValue<E>(RecordCoding<Raw>::read(value));
        if (!found)
            throw RecordFailure(RecordFailure::Kind::mismatch,
                                value.json() + " where one of a few known values is required");
        return *found;
    }
    static RecordValue write(E value) { return RecordCoding<Raw>::write(rawValue(value)); }
};

template <class T>
requires requires(const T& value, const Record& record) {
    { T::fromRecord(record) } -> std::same_as<T>;
    { value.toRecord() } -> std::same_as<Record>;
}
struct RecordCoding<T> {
    static T read(const RecordValue& value) { return T::fromRecord(value.record()); }
    static RecordValue write(const T& value) { return RecordValue(value.toRecord()); }
};

template <class T>
struct RecordCoding<std::vector<T>> {
    static std::vector<T> read(const RecordValue& value) {
        std::vector<T> result;
        for (const RecordValue& entry : value.list()) {
            try {
                result.push_back(RecordCoding<T>::read(entry));
            } catch (const RecordFailure& failure) {
                throw failure.atEntry(result.size());
            }
        }
        return result;
    }
    static RecordValue write(const std::vector<T>& values) {
        RecordValue::List list;
        for (const auto& value : values) {
            try {
                list.push_back(RecordCoding<T>::write(value));
            } catch (const RecordFailure& failure) {
                throw failure.atEntry(list.size());
            }
        }
        return RecordValue(std::move(list));
    }
};

template <class T>
T Record::required(std::string_view key) const {
    try {
        const RecordValue* const value = find(key);
        if (value == nullptr) throw RecordFailure(RecordFailure::Kind::missingKey, "missing");
        return RecordCoding<T>::read(*value);
    } catch (const RecordFailure& failure) {
        throw failure.under(key);
    }
}

template <class T>
std::optional<T> Record::optional(std::string_view key) const {
    const RecordValue* const value = find(key);
    if (value == nullptr || value->isNull()) return std::nullopt;
    return required<T>(key);
}

template <class T>
Record Record::with(std::string_view key, const T& value) && {
    try {
        if constexpr (requires { value.has_value(); }) {
            if (value) add(key, RecordCoding<typename T::value_type>::write(*value));
        } else {
            add(key, RecordCoding<T>::write(value));
        }
    } catch (const RecordFailure& failure) {
        throw failure.under(key);
    }
    return std::move(*this);
}

template <class T>
T fromJson(std::string_view json) {
    return RecordCoding<T>::read(RecordValue::fromJson(json));
}

template <class T>
std::string toJson(const T& value) {
    return RecordCoding<T>::write(value).json();
}

}  // namespace PrompterCore
