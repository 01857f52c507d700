// The measuring and drawing of texts, shared by all painters of this backend, so that a text is as
// wide in one output as in any other.
//
// Widths do not depend on what is drawn to or at which scale: glyphs are not hinted, their
// positions not rounded, and a text twice as large is twice as wide.
#pragma once

#include <cairo.h>
#include <corvex/export.h>
#include <paintcore/geometry.h>
#include <paintcore/style.h>

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace nodeline::cairo {

// The measures of a text on one line, in pixels. `baseline` is the way down from the top.
struct TextExtent {
    double width = 0.0;
    double height = 0.0;
    double baseline = 0.0;
    // The first letter that has a direction runs to the left, so the line begins at its right.
    bool is_right_to_left = false;

    // Member by member.
    friend bool operator==(const TextExtent&, const TextExtent&) = default;
};

// Well-formed UTF-8 for one line. Bytes that are no UTF-8, control characters and code points that
// no document may hold become U+FFFD; tabulators and line ends become blanks.
[[nodiscard]] NODELINE_API std::string PrintableText(std::string_view text);

// The height of a font in pixels; 0 for a font that draws nothing. Fonts higher than 16384 pixels
// count as that high.
[[nodiscard]] NODELINE_API double PixelSize(const paintcore::font& f);

// Finds fonts, and measures and draws texts of one line in them.
class NODELINE_API TextEngine {
public:
    // Counts since the engine was made.
    struct Statistics {
        std::size_t hits = 0;
        std::size_t misses = 0;
        // What is held now: texts, and their bytes.
        std::size_t texts = 0;
        std::size_t bytes = 0;
    };

    // An engine is used by one thread at a time.
    TextEngine();
    ~TextEngine();
    TextEngine(const TextEngine&) = delete;
    TextEngine& operator=(const TextEngine&) = delete;

    // The engine that the painters made on this thread share. It lives as long as the thread.
    [[nodiscard]] static TextEngine& ForThisThread();

    // All zero for a font without size. Measures are remembered, within a bound, so a text that was
    // measured lately costs one look-up.
    [[nodiscard]] TextExtent Measure(const paintcore::font& f, std::string_view text);

    // The name of the family that stands in for the face of `f` on this machine; the face itself
    // where it is installed.
    [[nodiscard]] const std::string& GetFamily(const paintcore::font& f);

    // Draws a text in the source colour of `context`; `origin` is its top left corner in the units
    // of the context. What lies left or right of `clip` may be left out. With `outlines` the glyphs
    // are filled as shapes, which keeps their distances even on a surface of pixels; pictographs
    // have no shapes, so a text with one is drawn as without.
    void Draw(cairo_t* context, const paintcore::font& f, std::string_view text,
              const paintcore::point<double>& origin, const paintcore::rectangle<double>& clip,
              bool outlines);

    // How well the memory of measures serves, and what it holds.
    [[nodiscard]] Statistics GetStatistics() const;

private:
    class Fonts;
    std::unique_ptr<Fonts> fonts_;
};

}  // namespace nodeline::cairo
