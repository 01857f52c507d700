// Replay scripts as tests make and take apart: a line each.
#pragma once

#include <functional>
#include <iosfwd>
#include <string>
#include <vector>

namespace nodeline::test {

using Script = std::vector<std::string>;

[[nodiscard]] Script ReadScript(std::istream& in);
[[nodiscard]] std::string TextOf(const Script& script);

// The script without the lines that cannot be carried out.
[[nodiscard]] Script WithoutFaultyLines(const Script& script);

// What is wrong with the session of a script, in words; empty if nothing is. Lines that cannot be
// carried out do nothing, so it may be asked about parts of a script.
using Judge = std::function<std::string(const Script&)>;

// A script that is wrong as well and from which no single line can be taken, made from one that is
// wrong by leaving out lines. Every line of it can be carried out.
[[nodiscard]] Script Shrink(const Script& script, const Judge& judge);

}  // namespace nodeline::test
