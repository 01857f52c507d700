#include <paintcore/utf8.h>

namespace paintcore {
namespace {

// How a sequence goes on after its first byte. The bounds of the second byte keep out overlong
// forms, surrogates and what lies beyond U+10FFFF.
struct Lead {
    int more;
    char32_t bits;
    unsigned char low = 0x80;
    unsigned char high = 0xBF;
};

Lead ReadLead(unsigned char byte) {
    if (byte < 0x80) return {0, byte};
    if (byte >= 0xC2 && byte <= 0xDF) return {1, static_cast<char32_t>(byte & 0x1F)};
    if (byte >= 0xE0 && byte <= 0xEF) {
        const unsigned char low = byte == 0xE0 ? 0xA0 : 0x80;
        const unsigned char high = byte == 0xED ? 0x9F : 0xBF;
        return {2, static_cast<char32_t>(byte & 0x0F), low, high};
    }
    if (byte >= 0xF0 && byte <= 0xF4) {
        const unsigned char low = byte == 0xF0 ? 0x90 : 0x80;
        const unsigned char high = byte == 0xF4 ? 0x8F : 0xBF;
        return {3, static_cast<char32_t>(byte & 0x07), low, high};
    }
    return {0, kReplacementCharacter};
}

}  // namespace

char32_t TakeCodePoint(std::string_view& text) {
    Lead lead = ReadLead(static_cast<unsigned char>(text.front()));
    text.remove_prefix(1);
    for (; lead.more > 0; --lead.more) {
        if (text.empty()) return kReplacementCharacter;
        const auto byte = static_cast<unsigned char>(text.front());
        if (byte < lead.low || byte > lead.high) return kReplacementCharacter;
        text.remove_prefix(1);
        lead = {lead.more, (lead.bits << 6) | static_cast<char32_t>(byte & 0x3F)};
    }
    return lead.bits;
}

std::size_t CountCodePoints(std::string_view text) {
    std::size_t count = 0;
    for (; !text.empty(); ++count) static_cast<void>(TakeCodePoint(text));
    return count;
}

void AppendCodePoint(std::string& out, char32_t code_point) {
    const auto append = [&out](char32_t byte) { out.push_back(static_cast<char>(byte)); };
    if (code_point > 0x10FFFF || (code_point >= 0xD800 && code_point <= 0xDFFF)) {
        code_point = kReplacementCharacter;
    }
    if (code_point < 0x80) {
        append(code_point);
    } else if (code_point < 0x800) {
        append(0xC0 | (code_point >> 6));
        append(0x80 | (code_point & 0x3F));
    } else if (code_point < 0x10000) {
        append(0xE0 | (code_point >> 12));
        append(0x80 | ((code_point >> 6) & 0x3F));
        append(0x80 | (code_point & 0x3F));
    } else {
        append(0xF0 | (code_point >> 18));
        append(0x80 | ((code_point >> 12) & 0x3F));
        append(0x80 | ((code_point >> 6) & 0x3F));
        append(0x80 | (code_point & 0x3F));
    }
}

}  // namespace paintcore
