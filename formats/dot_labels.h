// Labels of DOT files as plain texts.
#pragma once

#include <string>
#include <string_view>

namespace nodeline::formats {

// What the escapes of a label stand for: "\G" and "\N", and in the labels of edges "\T", "\H" and
// "\E". Those that stand for nothing leave their letter.
struct LabelNames {
    std::string graph = "G";
    std::string node = "N";
    std::string edge = "E";
    std::string tail = "T";
    std::string head = "H";
};

// An ordinary label: escapes and entities are replaced. The ends of lines, "\n", "\l" and "\r", are
// line feeds; the one that "\l" or "\r" puts behind the last line is dropped.
[[nodiscard]] std::string PlainLabel(std::string_view label, const LabelNames& names);

// The label of a record: its fields without their ports, with a bar between those that hold
// something. Blanks and ends of lines are one blank.
[[nodiscard]] std::string PlainRecord(std::string_view label, const LabelNames& names);

// The text of an HTML label. Blanks, ends of lines and the borders of cells are one blank.
[[nodiscard]] std::string PlainHtml(std::string_view html);

// The same label with the common entities of HTML, like "&amp;" and "&#97;", replaced.
[[nodiscard]] std::string ReplaceEntities(std::string_view text);

// Bytes of ISO 8859-1 as UTF-8.
[[nodiscard]] std::string FromLatin1(std::string_view text);

}  // namespace nodeline::formats
