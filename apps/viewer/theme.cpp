#include <apps/viewer/theme.h>
#include <apps/viewer/viewer_edge_handler.h>
#include <apps/viewer/viewer_node_handler.h>
#include <paintcore/painter.h>

#include <QApplication>
#include <QColor>
#include <QPalette>
#include <QString>
#include <QStyle>

namespace nodeline::app {

using paintcore::_color;

namespace {

constexpr int kFontSize = 9;
constexpr int kLongestCaption = 32;

// The colours of a graph. Captions stand on all fills, lightened ones as well, in one colour: that
// is what keeps the fills of the dark look so dark.
struct Look {
    _color background;
    _color text;
    _color fill;
    _color border;
    _color selected_fill;
    _color new_fill;
    _color mark;
    _color port_visible;
    _color port_hidden;
    _color port_partial;
    _color edge;
    _color marked_edge;
    StateLook states;
};

Look LightLook() {
    return {_color(251, 252, 253),
            _color(24, 32, 44),
            _color(206, 219, 236),
            _color(124, 142, 166),
            _color(133, 180, 242),
            _color(172, 218, 172),
            _color(200, 30, 30),
            _color(230, 235, 239),
            _color(246, 186, 170),
            _color(248, 221, 150),
            _color(156, 166, 180),
            _color(200, 30, 30),
            {_color(238, 241, 245), _color(248, 249, 251), _color(176, 186, 199),
             _color(56, 68, 84), _color(10, 77, 180), _color(28, 110, 44), _color(40, 56, 78)}};
}

Look DarkLook() {
    return {_color(24, 27, 31),
            _color(243, 246, 249),
            _color(44, 53, 64),
            _color(96, 111, 130),
            _color(22, 62, 128),
            _color(66, 44, 104),
            _color(255, 138, 116),
            _color(34, 42, 50),
            _color(124, 44, 32),
            _color(96, 74, 16),
            _color(92, 102, 117),
            _color(255, 138, 116),
            {_color(31, 35, 41), _color(38, 43, 50), _color(72, 82, 95), _color(200, 208, 218),
             _color(140, 186, 255), _color(196, 164, 255), _color(214, 222, 232)}};
}

void SetColor(QPalette& palette, QPalette::ColorRole role, const QColor& color,
              const QColor& disabled) {
    palette.setColor(QPalette::Active, role, color);
    palette.setColor(QPalette::Inactive, role, color);
    palette.setColor(QPalette::Disabled, role, disabled);
}

// The few colours of which a palette is made.
struct Tones {
    QColor window;
    QColor base;
    QColor alternate;
    QColor button;
    QColor text;
    QColor dimmed;
    QColor accent;
    QColor on_accent;
    QColor link;
    QColor visited;
    QColor tooltip;
    // What edges and grooves are made of, from light to dark.
    QColor light;
    QColor midlight;
    QColor mid;
    QColor dark;
    QColor shadow;
};

Tones LightTones() {
    return {
        QColor(243, 245, 247), QColor(255, 255, 255), QColor(247, 248, 250), QColor(248, 249, 250),
        QColor(24, 32, 44),    QColor(92, 102, 116),  QColor(20, 92, 196),   QColor(255, 255, 255),
        QColor(14, 80, 180),   QColor(104, 60, 150),  QColor(255, 255, 255), QColor(255, 255, 255),
        QColor(232, 235, 239), QColor(196, 202, 210), QColor(160, 168, 178), QColor(96, 104, 116)};
}

Tones DarkTones() {
    return {
        QColor(36, 40, 46),    QColor(27, 30, 35),    QColor(33, 37, 42),   QColor(52, 58, 66),
        QColor(232, 236, 241), QColor(160, 169, 181), QColor(54, 112, 204), QColor(255, 255, 255),
        QColor(138, 184, 255), QColor(196, 164, 255), QColor(52, 58, 66),   QColor(78, 86, 97),
        QColor(64, 71, 80),    QColor(44, 49, 56),    QColor(24, 27, 31),   QColor(10, 12, 14)};
}

QPalette MakePalette(const Tones& t) {
    QPalette palette;
    SetColor(palette, QPalette::Window, t.window, t.window);
    SetColor(palette, QPalette::WindowText, t.text, t.dimmed);
    SetColor(palette, QPalette::Base, t.base, t.window);
    SetColor(palette, QPalette::AlternateBase, t.alternate, t.window);
    SetColor(palette, QPalette::Text, t.text, t.dimmed);
    SetColor(palette, QPalette::PlaceholderText, t.dimmed, t.dimmed);
    SetColor(palette, QPalette::Button, t.button, t.window);
    SetColor(palette, QPalette::ButtonText, t.text, t.dimmed);
    SetColor(palette, QPalette::BrightText, t.on_accent, t.on_accent);
    SetColor(palette, QPalette::Highlight, t.accent, t.mid);
    SetColor(palette, QPalette::HighlightedText, t.on_accent, t.text);
    SetColor(palette, QPalette::Link, t.link, t.dimmed);
    SetColor(palette, QPalette::LinkVisited, t.visited, t.dimmed);
    SetColor(palette, QPalette::ToolTipBase, t.tooltip, t.tooltip);
    SetColor(palette, QPalette::ToolTipText, t.text, t.text);
    SetColor(palette, QPalette::Light, t.light, t.light);
    SetColor(palette, QPalette::Midlight, t.midlight, t.midlight);
    SetColor(palette, QPalette::Mid, t.mid, t.mid);
    SetColor(palette, QPalette::Dark, t.dark, t.dark);
    SetColor(palette, QPalette::Shadow, t.shadow, t.shadow);
    return palette;
}

// What the desktop gave the application.
struct Original {
    QString style;
    QPalette palette;
};

}  // namespace

bool IsDark(const QPalette& palette) {
    return palette.color(QPalette::WindowText).lightness() >
           palette.color(QPalette::Window).lightness();
}

void ApplyAppearance(Appearance appearance) {
    static const Original original{QApplication::style()->name(), QApplication::palette()};
    static Appearance current = Appearance::kSystem;
    if (appearance == current) return;
    current = appearance;
    if (appearance == Appearance::kSystem) {
        QApplication::setStyle(original.style);
        QApplication::setPalette(original.palette);
        return;
    }
    QApplication::setStyle(QStringLiteral("Fusion"));
    const bool dark = appearance == Appearance::kDark;
    QApplication::setPalette(MakePalette(dark ? DarkTones() : LightTones()));
}

void ApplyLook(bool dark, PortNodeHandler& nodes, DummyEdgeHandler& edges) {
    const Look look = dark ? DarkLook() : LightLook();
    CPortNodeDrawInfo& info = nodes.GetDrawInfo();
    info.font = {"", paintcore::FontPlain, kFontSize, 0, 0, 1.0};
    info.text_color = look.text;
    info.border_color = look.border;
    info.fill_top = info.fill_bottom = look.fill;
    info.selected_fill_top = info.selected_fill_bottom = look.selected_fill;
    info.new_fill_top = info.new_fill_bottom = look.new_fill;
    info.selected_border_color = look.mark;
    info.port_visible_color = look.port_visible;
    info.port_hidden_color = look.port_hidden;
    info.port_partial_color = look.port_partial;
    info.max_caption_length = kLongestCaption;
    info.fixed_width = false;
    edges.color = look.edge;
    edges.marked_color = look.marked_edge;
    edges.pen_width = 1;
    if (auto* const own = dynamic_cast<ViewerNodeHandler*>(&nodes)) {
        own->GetStateLook() = look.states;
    }
    if (auto* const own = dynamic_cast<ViewerEdgeHandler*>(&edges)) {
        own->background = look.background;
        own->strong_color = look.states.selected_border;
    }

    paintcore::SysPalette palette = paintcore::GetSysPalette();
    palette.Set(paintcore::SysPalette::kBackground, look.background);
    paintcore::SetSysPalette(palette);
}

}  // namespace nodeline::app
