#include <backends/cairo/internal/extent_cache.h>
#include <backends/cairo/text_engine.h>

#include <paintcore/utf8.h>

#include <pango/pangocairo.h>
#include <algorithm>
#include <array>
#include <cmath>
#include <list>

namespace nodeline::cairo {

using paintcore::font;
using paintcore::point;
using paintcore::rectangle;

namespace {

constexpr const char* kDefaultFace = "DejaVu Sans";
constexpr double kPixelsPerInch = 96.0;
constexpr double kPointsPerInch = 72.0;
// Twice as much is the end of what FreeType takes.
constexpr double kMaxPixelSize = 16384.0;
// Fonts of a session; a wheel that zooms makes one per step.
constexpr std::size_t kMaxFonts = 32;
// Pango counts in 1024ths of a pixel and 32 bits, which is a width of two million pixels.
constexpr double kMaxPieceWidth = 1.0e6;
// No glyph of a usual font is wider than this many times its height.
constexpr double kWidestGlyph = 4.0;

struct Unref {
    void operator()(void* object) const { g_object_unref(object); }
    void operator()(PangoFontDescription* description) const {
        pango_font_description_free(description);
    }
    void operator()(cairo_font_options_t* options) const { cairo_font_options_destroy(options); }
};
template <class T>
using Handle = std::unique_ptr<T, Unref>;

char32_t Printable(char32_t c) {
    const bool is_gap = (c >= 0x09 && c <= 0x0D) || c == 0x85 || c == 0x2028 || c == 0x2029;
    if (is_gap) return U' ';
    const bool is_control = c < 0x20 || (c >= 0x7F && c < 0xA0);
    const bool is_no_character = (c & 0xFFFE) == 0xFFFE || (c >= 0xFDD0 && c <= 0xFDEF);
    return is_control || is_no_character ? paintcore::kReplacementCharacter : c;
}

// Colour glyphs are pictures and have no outlines.
bool HasPictograph(std::string_view text) {
    while (!text.empty()) {
        if (paintcore::TakeCodePoint(text) >= 0x1F000) return true;
    }
    return false;
}

// Takes a piece off `text` that Pango can measure, usually all of it.
std::string_view TakePiece(std::string_view& text, double pixel_size) {
    const auto most =
        static_cast<std::size_t>(std::max(1.0, kMaxPieceWidth / (kWidestGlyph * pixel_size)));
    std::string_view rest = text;
    for (std::size_t n = 0; n < most && !rest.empty(); ++n) {
        static_cast<void>(paintcore::TakeCodePoint(rest));
    }
    const std::string_view piece = text.substr(0, text.size() - rest.size());
    text = rest;
    return piece;
}

Handle<PangoFontDescription> Describe(const font& f) {
    Handle<PangoFontDescription> description(pango_font_description_new());
    // A face that is not installed is replaced by the default one and not by any.
    const std::string families =
        f.face.empty() ? kDefaultFace : PrintableText(f.face) + "," + kDefaultFace;
    pango_font_description_set_family(description.get(), families.c_str());
    if ((f.style & paintcore::FontBold) != 0) {
        pango_font_description_set_weight(description.get(), PANGO_WEIGHT_BOLD);
    }
    pango_font_description_set_absolute_size(description.get(), PixelSize(f) * PANGO_SCALE);
    return description;
}

Handle<PangoContext> MakeContext(PangoFontMap* map) {
    Handle<PangoContext> context(pango_font_map_create_context(map));
    const Handle<cairo_font_options_t> options(cairo_font_options_create());
    cairo_font_options_set_antialias(options.get(), CAIRO_ANTIALIAS_GRAY);
    cairo_font_options_set_hint_style(options.get(), CAIRO_HINT_STYLE_NONE);
    cairo_font_options_set_hint_metrics(options.get(), CAIRO_HINT_METRICS_OFF);
    pango_cairo_context_set_font_options(context.get(), options.get());
    pango_cairo_context_set_resolution(context.get(), kPixelsPerInch);
    pango_context_set_round_glyph_positions(context.get(), FALSE);
    // The language of the user would have a say in which font is taken.
    pango_context_set_language(context.get(), pango_language_from_string("en"));
    return context;
}

}  // namespace

std::string PrintableText(std::string_view text) {
    std::string printable;
    printable.reserve(text.size());
    while (!text.empty()) {
        paintcore::AppendCodePoint(printable, Printable(paintcore::TakeCodePoint(text)));
    }
    return printable;
}

double PixelSize(const font& f) {
    const double pixels = f.size * f.scale * kPixelsPerInch / kPointsPerInch;
    return pixels > 0.0 ? std::min(pixels, kMaxPixelSize) : 0.0;
}

class TextEngine::Fonts {
public:
    struct Entry {
        font key;
        Handle<PangoFontDescription> description;
        std::string family;
        ExtentCache extents;
    };

    Fonts()
        : map_(pango_cairo_font_map_new()),
          context_(MakeContext(map_.get())),
          layout_(pango_layout_new(context_.get())) {
        pango_layout_set_single_paragraph_mode(layout_.get(), TRUE);
    }

    // The entries stand in the order of their last use.
    Entry& Use(const font& f) {
        const auto found = std::find_if(entries_.begin(), entries_.end(),
                                        [&f](const Entry& entry) { return entry.key == f; });
        if (found != entries_.end()) {
            entries_.splice(entries_.begin(), entries_, found);
            return entries_.front();
        }
        if (entries_.size() == kMaxFonts) entries_.pop_back();
        entries_.push_front({f, Describe(f), {}, {}});
        return entries_.front();
    }

    PangoLayout* Layout(const Entry& entry, std::string_view piece) {
        pango_layout_set_font_description(layout_.get(), entry.description.get());
        pango_layout_set_text(layout_.get(), piece.data(), static_cast<int>(piece.size()));
        return layout_.get();
    }

    static TextExtent Measure(PangoLayout* layout) {
        PangoRectangle logical;
        pango_layout_get_extents(layout, nullptr, &logical);
        const double unit = PANGO_SCALE;
        const PangoLayoutLine* line = pango_layout_get_line_readonly(layout, 0);
        return {logical.width / unit, logical.height / unit,
                pango_layout_get_baseline(layout) / unit,
                line->resolved_dir == PANGO_DIRECTION_RTL};
    }

    TextExtent MeasureAll(const Entry& entry, std::string_view printable) {
        const double pixel_size = PixelSize(entry.key);
        TextExtent extent = Measure(Layout(entry, TakePiece(printable, pixel_size)));
        while (!printable.empty()) {
            const TextExtent piece = Measure(Layout(entry, TakePiece(printable, pixel_size)));
            extent.width += piece.width;
            extent.height = std::max(extent.height, piece.height);
            extent.baseline = std::max(extent.baseline, piece.baseline);
        }
        return extent;
    }

    const std::string& Family(Entry& entry) {
        if (entry.family.empty()) {
            const Handle<PangoFont> loaded(
                pango_font_map_load_font(map_.get(), context_.get(), entry.description.get()));
            if (loaded == nullptr) return entry.family = kDefaultFace;
            const Handle<PangoFontDescription> description(pango_font_describe(loaded.get()));
            entry.family = pango_font_description_get_family(description.get());
        }
        return entry.family;
    }

    Statistics statistics;

    void CountHeld(Statistics& counts) const {
        for (const Entry& entry : entries_) {
            counts.texts += entry.extents.CountTexts();
            counts.bytes += entry.extents.CountBytes();
        }
    }

private:
    Handle<PangoFontMap> map_;
    Handle<PangoContext> context_;
    Handle<PangoLayout> layout_;
    std::list<Entry> entries_;
};

TextEngine::TextEngine() : fonts_(std::make_unique<Fonts>()) {}

TextEngine::~TextEngine() = default;

TextEngine& TextEngine::ForThisThread() {
    static thread_local TextEngine engine;
    return engine;
}

TextExtent TextEngine::Measure(const font& f, std::string_view text) {
    if (PixelSize(f) == 0.0) return {};
    Fonts::Entry& entry = fonts_->Use(f);
    if (const TextExtent* known = entry.extents.Find(text)) {
        ++fonts_->statistics.hits;
        return *known;
    }
    ++fonts_->statistics.misses;
    const TextExtent extent = fonts_->MeasureAll(entry, PrintableText(text));
    entry.extents.Insert(text, extent);
    return extent;
}

const std::string& TextEngine::GetFamily(const font& f) { return fonts_->Family(fonts_->Use(f)); }

void TextEngine::Draw(cairo_t* context, const font& f, std::string_view text,
                      const point<double>& origin, const rectangle<double>& clip, bool outlines) {
    const double pixel_size = PixelSize(f);
    if (pixel_size == 0.0) return;
    const Fonts::Entry& entry = fonts_->Use(f);
    const std::string printable = PrintableText(text);
    const bool as_shapes = outlines && !HasPictograph(printable);
    double x = origin.x;
    for (std::string_view rest = printable; !rest.empty() && x < clip.right;) {
        const std::string_view piece = TakePiece(rest, pixel_size);
        PangoLayout* layout = fonts_->Layout(entry, piece);
        const double end = x + Fonts::Measure(layout).width;
        if (end > clip.left) {
            cairo_move_to(context, x, origin.y);
            if (as_shapes) {
                pango_cairo_layout_path(context, layout);
                cairo_fill(context);
            } else {
                pango_cairo_show_layout(context, layout);
            }
        }
        x = end;
    }
    cairo_new_path(context);
}

TextEngine::Statistics TextEngine::GetStatistics() const {
    Statistics counts = fonts_->statistics;
    fonts_->CountHeld(counts);
    return counts;
}

}  // namespace nodeline::cairo
