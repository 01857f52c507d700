#include <formats/losses.h>
#include <formats/read_error.h>
#include <formats/wording.h>

#include <algorithm>

namespace nodeline::formats {

namespace {

// So many names are told; of more, the number has to do.
constexpr std::size_t kTold = 12;
// Different names beyond so many are not counted any more, so that looking for one stays cheap.
constexpr std::size_t kCounted = 1000;

void add_once(std::vector<std::string>& names, const std::string& name) {
    if (names.size() >= kCounted || std::count(names.begin(), names.end(), name) > 0) return;
    names.push_back(name);
}

void append(std::string& text, const std::string& remark) {
    if (!text.empty()) text += "; ";
    text += remark;
}

void append_names(std::string& text, const std::vector<std::string>& names,
                  const std::string& thing, const std::string& fate) {
    if (names.empty()) return;
    std::string remark = Counted(names.size(), thing) + " " + fate + ": ";
    for (std::size_t i = 0; i < std::min(names.size(), kTold); ++i) {
        remark += (i == 0 ? "" : ", ") + names[i];
    }
    if (names.size() > kTold) remark += " and " + std::to_string(names.size() - kTold) + " more";
    append(text, remark);
}

}  // namespace

void Losses::AddAttribute(std::string_view name) { add_once(attributes_, Quote(name)); }

void Losses::AddColor(std::string_view value) { add_once(colors_, Quote(value)); }

void Losses::AddRemark(const std::string& remark) { add_once(remarks_, remark); }

void Losses::AddCount(int count, const std::string& thing, const std::string& what) {
    if (count > 0) AddRemark(Counted(static_cast<std::size_t>(count), thing) + " " + what);
}

std::string Losses::Describe() const {
    std::string text;
    append_names(text, attributes_, "attribute", "ignored");
    append_names(text, colors_, "colour", "unknown");
    for (const std::string& remark : remarks_) append(text, remark);
    return text;
}

}  // namespace nodeline::formats
