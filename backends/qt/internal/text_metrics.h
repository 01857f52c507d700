// The measures of texts, shared by all painters of this backend, so that what was measured while a
// layout ran is what is drawn.
#pragma once

#include <paintcore/geometry.h>
#include <paintcore/style.h>

#include <QByteArray>
#include <QCache>
#include <QFont>
#include <QFontMetricsF>
#include <QString>
#include <memory>
#include <string_view>
#include <vector>

namespace nodeline::qt {

// Well-formed text for one line: control characters become U+FFFD, tabulators and line ends blanks.
[[nodiscard]] QString PrintableText(std::string_view text);

// `text` in pieces that Qt can shape and measure, usually one.
[[nodiscard]] std::vector<QString> CutText(const QString& text);

// The height of a font in pixels; 0 for a font that draws nothing, and never more than 16384.
[[nodiscard]] double PixelSize(const paintcore::font& f);

// Used on the interface thread alone. Fonts and texts that were not asked for lately are forgotten.
//
// A font of Qt has whole pixels. So everything is measured in one size, without hinting, and
// scaled, and a text twice as large is twice as wide.
class TextMetrics {
public:
    // The bytes of texts kept for one font, and the fonts.
    static constexpr int kMaxBytes = 1 << 22;
    static constexpr int kMaxFonts = 32;

    struct Statistics {
        int hits = 0;
        int misses = 0;
    };

    // The object that all painters hold. It goes with the last of them.
    [[nodiscard]] static std::shared_ptr<TextMetrics> Shared();

    TextMetrics();

    // The width and height of a text on one line, in pixels; both 0 for a font without size.
    [[nodiscard]] paintcore::size<double> Measure(const paintcore::font& f, std::string_view text);
    // The way from the top of a line to its baseline.
    [[nodiscard]] double GetBaseline(const paintcore::font& f);
    // The width of a piece.
    [[nodiscard]] double GetWidth(const paintcore::font& f, const QString& piece);

    // The font that texts are measured in, and drawn in under a scale of `GetScale`.
    [[nodiscard]] const QFont& GetFont(const paintcore::font& f) { return use(f).face; }
    [[nodiscard]] static double GetScale(const paintcore::font& f);

    [[nodiscard]] const Statistics& GetStatistics() const { return statistics_; }

private:
    struct Entry {
        explicit Entry(const QFont& font) : face(font), metrics(font) {}

        QFont face;
        QFontMetricsF metrics;
        // In the size of `face`.
        QCache<QByteArray, paintcore::size<double>> texts{kMaxBytes};
    };

    [[nodiscard]] Entry& use(const paintcore::font& f);

    QCache<QByteArray, Entry> fonts_{kMaxFonts};
    Statistics statistics_;
};

}  // namespace nodeline::qt
