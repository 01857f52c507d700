#include <backends/cairo/internal/svg_text.h>

#include <paintcore/number_text.h>

#include <cmath>

namespace nodeline::cairo {

using paintcore::_color;

namespace {

std::string HexColor(const _color& color) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string text = "#";
    for (const unsigned char byte : {color.red, color.green, color.blue}) {
        text += kDigits[byte >> 4];
        text += kDigits[byte & 0x0F];
    }
    return text;
}

void AppendColorAndOpacity(std::string& out, std::string_view color_name,
                           std::string_view opacity_name, const _color& color) {
    AppendAttribute(out, color_name, HexColor(color));
    if (color.alpha != 255) AppendAttribute(out, opacity_name, color.alpha / 255.0);
}

void AppendQuotedName(std::string& out, std::string_view name) {
    out += '\'';
    for (const char c : name) {
        if (c == '\'' || c == '\\') out += '\\';
        out += c;
    }
    out += "', ";
}

}  // namespace

void AppendCoordinate(std::string& out, double value) {
    const double rounded = std::fabs(value) < 1.0e12 ? std::round(value * 1000.0) / 1000.0 : value;
    paintcore::AppendNumber(out, rounded == 0.0 ? 0.0 : rounded);
}

void AppendAttribute(std::string& out, std::string_view name, double value) {
    out.append(" ").append(name).append("=\"");
    AppendCoordinate(out, value);
    out += '"';
}

void AppendAttribute(std::string& out, std::string_view name, std::string_view value) {
    out.append(" ").append(name).append("=\"");
    AppendEscaped(out, value);
    out += '"';
}

void AppendColor(std::string& out, std::string_view name, const _color& color) {
    AppendColorAndOpacity(out, name, std::string(name) + "-opacity", color);
}

void AppendStopColor(std::string& out, const _color& color) {
    AppendColorAndOpacity(out, "stop-color", "stop-opacity", color);
}

void AppendEscaped(std::string& out, std::string_view text) {
    for (const char c : text) {
        switch (c) {
            case '&':
                out += "&amp;";
                break;
            case '<':
                out += "&lt;";
                break;
            case '>':
                out += "&gt;";
                break;
            case '"':
                out += "&quot;";
                break;
            case '\'':
                out += "&apos;";
                break;
            default:
                out += c;
        }
    }
}

std::string FamilyList(std::string_view first, std::string_view second) {
    std::string list;
    if (!first.empty()) AppendQuotedName(list, first);
    if (!second.empty() && second != first) AppendQuotedName(list, second);
    return list + "sans-serif";
}

}  // namespace nodeline::cairo
