// JSON as a tree that knows its lines and keeps the order of the file.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace nodeline::formats {

struct JsonValue {
    enum class Kind { kNull, kBoolean, kNumber, kString, kArray, kObject };

    Kind kind = Kind::kNull;
    // Where the value begins.
    int line = 1;
    bool boolean = false;
    double number = 0.0;
    // A string, or an integer as it stands in the file.
    std::string text;
    // Of an array or an object. The keys of an object are as many as its items.
    std::vector<JsonValue> items;
    std::vector<std::string> keys;

    [[nodiscard]] bool Is(Kind wanted) const { return kind == wanted; }
    // The first item under a key; null if there is none, or if this is no object.
    [[nodiscard]] const JsonValue* Find(std::string_view key) const;
};

// Parses a whole text. Throws `ReadError`, also where values are nested more than 200 deep. `name`
// is the file's name in messages.
[[nodiscard]] JsonValue ParseJson(const std::string& name, std::string_view text);

}  // namespace nodeline::formats
