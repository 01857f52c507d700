// A small reader of XML that accepts less than the standard, never more: elements, attributes, text
// and the predefined entities.
#pragma once

#include <paintcore/utf8.h>

#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace test_support {

struct XmlElement {
    std::string name;
    std::map<std::string, std::string> attributes;
    // All the text inside, without that of the children.
    std::string text;
    std::vector<XmlElement> children;

    [[nodiscard]] std::string Get(const std::string& attribute) const {
        const auto found = attributes.find(attribute);
        return found != attributes.end() ? found->second : std::string();
    }

    // The elements of that name at any depth, in the order of the document.
    [[nodiscard]] std::vector<const XmlElement*> FindAll(std::string_view wanted) const {
        std::vector<const XmlElement*> found;
        Collect(wanted, found);
        return found;
    }

private:
    void Collect(std::string_view wanted, std::vector<const XmlElement*>& found) const {
        if (name == wanted) found.push_back(this);
        for (const XmlElement& child : children) child.Collect(wanted, found);
    }
};

class XmlReader {
public:
    // Throws `std::runtime_error` that says what is not well-formed.
    static XmlElement Read(std::string_view document) {
        XmlReader reader(document);
        reader.CheckCharacters();
        reader.Expect("<?xml version=\"1.0\" encoding=\"UTF-8\"?>");
        reader.SkipBlanks();
        XmlElement root = reader.ReadElement();
        reader.SkipBlanks();
        if (!reader.rest_.empty()) Fail("something after the root");
        return root;
    }

private:
    explicit XmlReader(std::string_view document) : rest_(document) {}

    [[noreturn]] static void Fail(const std::string& what) { throw std::runtime_error(what); }

    void CheckCharacters() const {
        std::string again;
        for (std::string_view rest = rest_; !rest.empty();) {
            const char32_t c = paintcore::TakeCodePoint(rest);
            const bool is_allowed =
                c == 0x9 || c == 0xA || c == 0xD || (c >= 0x20 && c < 0xFFFE) || c >= 0x10000;
            if (!is_allowed) Fail("a character that no document may hold");
            paintcore::AppendCodePoint(again, c);
        }
        if (again != rest_) Fail("bytes that are no UTF-8");
    }

    void Expect(std::string_view text) {
        if (rest_.substr(0, text.size()) != text) Fail("expected " + std::string(text));
        rest_.remove_prefix(text.size());
    }

    [[nodiscard]] bool Accept(std::string_view text) {
        if (rest_.substr(0, text.size()) != text) return false;
        rest_.remove_prefix(text.size());
        return true;
    }

    void SkipBlanks() {
        while (!rest_.empty() && (rest_.front() == ' ' || rest_.front() == '\n')) {
            rest_.remove_prefix(1);
        }
    }

    std::string ReadName() {
        std::size_t n = 0;
        const auto is_letter = [](char c) {
            return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
        };
        while (n < rest_.size() &&
               (is_letter(rest_[n]) || (n > 0 && (rest_[n] == '-' || rest_[n] == ':')) ||
                (n > 0 && rest_[n] >= '0' && rest_[n] <= '9'))) {
            ++n;
        }
        if (n == 0) Fail("expected a name");
        std::string name(rest_.substr(0, n));
        rest_.remove_prefix(n);
        return name;
    }

    char ReadEntity() {
        if (Accept("&amp;")) return '&';
        if (Accept("&lt;")) return '<';
        if (Accept("&gt;")) return '>';
        if (Accept("&quot;")) return '"';
        if (Accept("&apos;")) return '\'';
        Fail("an ampersand that begins no entity");
    }

    std::string ReadUntil(char end) {
        std::string text;
        while (!rest_.empty() && rest_.front() != end) {
            if (rest_.front() == '<') Fail("a less-than sign in an attribute");
            if (rest_.front() == '&') {
                text += ReadEntity();
            } else {
                text += rest_.front();
                rest_.remove_prefix(1);
            }
        }
        return text;
    }

    void ReadAttributes(XmlElement& element) {
        while (Accept(" ")) {
            const std::string name = ReadName();
            Expect("=\"");
            const bool is_new = element.attributes.emplace(name, ReadUntil('"')).second;
            if (!is_new) Fail("attribute " + name + " twice");
            Expect("\"");
        }
    }

    XmlElement ReadElement() {
        XmlElement element;
        Expect("<");
        element.name = ReadName();
        ReadAttributes(element);
        if (Accept("/>")) return element;
        Expect(">");
        while (!Accept("</")) {
            if (rest_.empty()) Fail("the end is missing of " + element.name);
            if (rest_.front() == '<') {
                element.children.push_back(ReadElement());
            } else {
                element.text += ReadUntil('<');
            }
        }
        Expect(element.name);
        Expect(">");
        return element;
    }

    std::string_view rest_;
};

}  // namespace test_support
