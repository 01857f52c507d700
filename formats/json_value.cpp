#include <formats/json_value.h>
#include <formats/read_error.h>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <utility>

namespace nodeline::formats {

namespace {

// A tree so deep is taken apart by functions that call themselves.
constexpr std::size_t kDeepest = 200;

// Walks over the bytes of a text and counts the lines that it has begun.
class LineCounter {
public:
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char*;
    using reference = const char&;

    LineCounter(const char* at, int* line) : at_(at), line_(line) {}

    reference operator*() const { return *at_; }
    LineCounter& operator++() {
        *line_ += *at_ == '\n' ? 1 : 0;
        ++at_;
        return *this;
    }
    LineCounter operator++(int) {
        const LineCounter before = *this;
        ++*this;
        return before;
    }
    friend bool operator==(const LineCounter& a, const LineCounter& b) { return a.at_ == b.at_; }

private:
    const char* at_;
    int* line_;
};

using Kind = JsonValue::Kind;
using Json = nlohmann::json;

// Builds the tree from the events of the parser. Its functions have the names that the parser asks
// for.
class TreeBuilder : public nlohmann::json_sax<Json> {
public:
    TreeBuilder(const std::string& name, std::string_view text) : name_(name), text_(text) {}

    JsonValue Build() {
        const char* begin = text_.data();
        Json::sax_parse(LineCounter(begin, &line_), LineCounter(begin + text_.size(), &line_),
                        this);
        return std::move(root_);
    }

    bool null() override {
        add(Kind::kNull);
        return true;
    }
    bool boolean(bool value) override {
        add(Kind::kBoolean).boolean = value;
        return true;
    }
    bool number_integer(std::int64_t value) override { return add_integer(value); }
    bool number_unsigned(std::uint64_t value) override { return add_integer(value); }
    bool number_float(double value, const std::string& text) override {
        JsonValue& made = add(Kind::kNumber);
        made.number = value;
        made.text = text;
        return true;
    }
    bool string(std::string& value) override {
        add(Kind::kString).text = std::move(value);
        return true;
    }
    bool binary(Json::binary_t& /*value*/) override { return false; }
    bool start_object(std::size_t /*size*/) override { return open(Kind::kObject); }
    bool start_array(std::size_t /*size*/) override { return open(Kind::kArray); }
    bool end_object() override { return close(); }
    bool end_array() override { return close(); }
    bool key(std::string& value) override {
        path_.back()->keys.push_back(std::move(value));
        return true;
    }
    // The position is that of the byte behind the one that is wrong.
    bool parse_error(std::size_t position, const std::string& /*token*/,
                     const Json::exception& error) override {
        const std::string_view reason = error.what();
        const std::size_t place = reason.find("column ");
        const std::size_t start =
            place == std::string_view::npos ? place : reason.find(": ", place);
        throw ReadError(
            name_, LineAt(text_, position - std::min<std::size_t>(position, 1)),
            std::string(start == std::string_view::npos ? reason : reason.substr(start + 2)));
    }

private:
    template <class Integer>
    bool add_integer(Integer value) {
        JsonValue& made = add(Kind::kNumber);
        made.number = static_cast<double>(value);
        made.text = std::to_string(value);
        return true;
    }

    JsonValue& add(Kind kind) {
        JsonValue* made = &root_;
        if (!path_.empty()) made = &path_.back()->items.emplace_back();
        made->kind = kind;
        made->line = line_;
        return *made;
    }

    // Only the last item of each list is open, so none of those on the path is moved.
    bool open(Kind kind) {
        if (path_.size() == kDeepest) {
            throw ReadError(name_, line_,
                            "values are nested more than " + std::to_string(kDeepest) + " deep");
        }
        path_.push_back(&add(kind));
        return true;
    }
    bool close() {
        path_.pop_back();
        return true;
    }

    const std::string& name_;
    std::string_view text_;
    int line_ = 1;
    JsonValue root_;
    std::vector<JsonValue*> path_;
};

}  // namespace

const JsonValue* JsonValue::Find(std::string_view key) const {
    const auto found = std::find(keys.begin(), keys.end(), key);
    return found == keys.end() ? nullptr : &items[static_cast<std::size_t>(found - keys.begin())];
}

JsonValue ParseJson(const std::string& name, std::string_view text) {
    return TreeBuilder(name, text).Build();
}

}  // namespace nodeline::formats
