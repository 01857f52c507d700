#include <nodeline/ops/internal/load_fields.h>

#include <cstdint>
#include <limits>

namespace nodeline::internal {

namespace {

// The white space of the classic locale.
bool is_blank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
bool is_digit(char c) { return c >= '0' && c <= '9'; }

// A line cut at its first and its last quotation mark. Positions wrap where there is none, so that
// each of the three texts then is the whole line.
struct Cut {
    explicit Cut(std::string_view line)
        : first(line.find('"')),
          last(line.rfind('"')),
          before(line.substr(0, first)),
          caption(line.substr(first + 1, last - first - 1)),
          after(line.substr(last + 1)) {}

    std::size_t first;
    std::size_t last;
    std::string_view before;
    std::string_view caption;
    std::string_view after;
};

}  // namespace

void IntReader::Read(int& value) {
    if (!is_good_) return;
    std::size_t i = 0;
    while (i < rest_.size() && is_blank(rest_[i])) ++i;
    if (i == rest_.size()) {
        is_good_ = false;
        return;
    }
    const bool is_negative = rest_[i] == '-';
    if (is_negative || rest_[i] == '+') ++i;
    is_good_ = i < rest_.size() && is_digit(rest_[i]);

    constexpr std::int64_t kMax = std::numeric_limits<int>::max();
    const std::int64_t limit = is_negative ? kMax + 1 : kMax;
    std::int64_t magnitude = 0;
    for (; i < rest_.size() && is_digit(rest_[i]); ++i) {
        magnitude = magnitude * 10 + (rest_[i] - '0');
        if (magnitude > limit) {
            magnitude = limit;
            is_good_ = false;
            is_out_of_range_ = true;
        }
    }
    value = static_cast<int>(is_negative ? -magnitude : magnitude);
    rest_.remove_prefix(i);
}

NodeLine::NodeLine(std::string_view line) {
    const Cut cut(line);
    caption = cut.caption;
    IntReader before(cut.before);
    before.Read(id);
    IntReader after(cut.after);
    int type = -1;
    after.Read(type);
    after.Read(owner);
    is_out_of_range = before.is_out_of_range() || after.is_out_of_range();
}

EdgeLine::EdgeLine(std::string_view line) {
    const Cut cut(line);
    caption = cut.caption;
    IntReader before(cut.before);
    before.Read(from);
    before.Read(to);
    is_out_of_range = before.is_out_of_range();
}

}  // namespace nodeline::internal
