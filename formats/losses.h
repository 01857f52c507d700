// What a format holds that a graph does not keep.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace nodeline::formats {

// Collects what is passed over while a file is read or written, to be told at once at the end.
class Losses {
public:
    // An attribute, member or element that means nothing here; counts once, however often it
    // stands in the file.
    void AddAttribute(std::string_view name);
    // A colour that cannot be told.
    void AddColor(std::string_view value);
    // What is said once, in the order of the calls.
    void AddRemark(const std::string& remark);
    // A remark on a number of things: "2 captions WHAT", or "1 caption WHAT".
    void AddCount(int count, const std::string& thing, const std::string& what);

    // "3 attributes ignored: color, shape, rank; 1 colour unknown: mauve", and remarks behind it;
    // empty if nothing was lost.
    [[nodiscard]] std::string Describe() const;

private:
    std::vector<std::string> attributes_;
    std::vector<std::string> colors_;
    std::vector<std::string> remarks_;
};

}  // namespace nodeline::formats
