#include <backends/qt/internal/text_metrics.h>

#include <QChar>
#include <QGuiApplication>
#include <algorithm>
#include <limits>

namespace nodeline::qt {

using paintcore::font;
using paintcore::size;

namespace {

constexpr double kPixelsPerInch = 96.0;
constexpr double kPointsPerInch = 72.0;
constexpr int kReferenceSize = 64;
constexpr double kMaxPixelSize = 16384.0;
// Qt measures in 64ths of a pixel and 32 bits.
constexpr qsizetype kMaxPiece = 1024;

QString FamilyOf(const font& f) {
    return f.face.empty() ? QGuiApplication::font().family() : PrintableText(f.face);
}

QByteArray KeyOf(const font& f) {
    return ((f.style & paintcore::FontBold) != 0 ? 'b' : 'p') + FamilyOf(f).toUtf8();
}

QFont ReferenceFont(const font& f) {
    QFont made(FamilyOf(f));
    made.setBold((f.style & paintcore::FontBold) != 0);
    made.setPixelSize(kReferenceSize);
    made.setHintingPreference(QFont::PreferNoHinting);
    return made;
}

}  // namespace

QString PrintableText(std::string_view text) {
    const auto most = static_cast<std::size_t>(std::numeric_limits<int>::max() / 4);
    text = text.substr(0, most);
    QString printable = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    for (QChar& c : printable) {
        if (c.isSpace()) {
            if (c < QChar(0x20) || (c.unicode() >= 0x2028 && c.unicode() <= 0x2029)) c = u' ';
        } else if (c.category() == QChar::Other_Control) {
            c = QChar(QChar::ReplacementCharacter);
        }
    }
    return printable;
}

std::vector<QString> CutText(const QString& text) {
    std::vector<QString> pieces;
    for (qsizetype from = 0; from < text.size();) {
        qsizetype to = std::min(from + kMaxPiece, text.size());
        if (to < text.size() && text[to - 1].isHighSurrogate()) --to;
        pieces.push_back(text.mid(from, to - from));
        from = to;
    }
    return pieces;
}

double PixelSize(const font& f) {
    const double pixels = f.size * f.scale * kPixelsPerInch / kPointsPerInch;
    return pixels > 0.0 ? std::min(pixels, kMaxPixelSize) : 0.0;
}

std::shared_ptr<TextMetrics> TextMetrics::Shared() {
    static std::weak_ptr<TextMetrics> shared;
    std::shared_ptr<TextMetrics> metrics = shared.lock();
    if (metrics == nullptr) {
        metrics = std::make_shared<TextMetrics>();
        shared = metrics;
    }
    return metrics;
}

TextMetrics::TextMetrics() = default;

TextMetrics::Entry& TextMetrics::use(const font& f) {
    const QByteArray key = KeyOf(f);
    if (Entry* known = fonts_.object(key)) return *known;
    auto* entry = new Entry(ReferenceFont(f));
    fonts_.insert(key, entry);
    return *entry;
}

double TextMetrics::GetScale(const font& f) { return PixelSize(f) / kReferenceSize; }

size<double> TextMetrics::Measure(const font& f, std::string_view text) {
    const double scale = GetScale(f);
    if (scale == 0.0) return {0.0, 0.0};
    Entry& entry = use(f);
    const auto length = static_cast<qsizetype>(text.size());
    if (const auto* known = entry.texts.object(QByteArray::fromRawData(text.data(), length))) {
        ++statistics_.hits;
        return {known->cx * scale, known->cy * scale};
    }
    ++statistics_.misses;
    size<double> extent{0.0, entry.metrics.height()};
    for (const QString& piece : CutText(PrintableText(text))) {
        extent.cx += entry.metrics.horizontalAdvance(piece);
    }
    if (length < kMaxBytes) {
        // The empty text costs something as well.
        entry.texts.insert(QByteArray(text.data(), length), new size<double>(extent), length + 1);
    }
    return {extent.cx * scale, extent.cy * scale};
}

double TextMetrics::GetBaseline(const font& f) { return use(f).metrics.ascent() * GetScale(f); }

double TextMetrics::GetWidth(const font& f, const QString& piece) {
    return use(f).metrics.horizontalAdvance(piece) * GetScale(f);
}

}  // namespace nodeline::qt
