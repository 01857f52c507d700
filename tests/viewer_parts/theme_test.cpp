#include <apps/viewer/theme.h>
#include <apps/viewer/viewer_node_handler.h>
#include <gtest/gtest.h>
#include <viewer_parts/contrast.h>

#include <QApplication>
#include <QPalette>
#include <QStyle>
#include <utility>
#include <vector>

namespace nodeline::app {
namespace {

using paintcore::_color;
using test::Contrast;

constexpr double kReadable = 4.5;
constexpr double kNoticeable = 3.0;

class ThemeLook : public testing::TestWithParam<bool> {
protected:
    void SetUp() override { ApplyLook(GetParam(), nodes, edges); }
    void TearDown() override { paintcore::SetSysPalette(before); }

    paintcore::SysPalette before = paintcore::GetSysPalette();
    ViewerNodeHandler nodes;
    DummyEdgeHandler edges;
    const CPortNodeDrawInfo& look = std::as_const(nodes).GetDrawInfo();
    const StateLook& states = std::as_const(nodes).GetStateLook();
};

TEST_P(ThemeLook, CaptionsAreReadableInEveryState) {
    const std::vector<_color> fills{look.fill_top,          look.fill_bottom,
                                    look.selected_fill_top, look.selected_fill_bottom,
                                    look.new_fill_top,      look.new_fill_bottom};
    for (const _color& fill : fills) {
        EXPECT_GE(Contrast(look.text_color, fill), kReadable);
        EXPECT_GE(Contrast(look.text_color, fill.Lightened()), kReadable) << "hovered";
    }
}

TEST_P(ThemeLook, CaptionsOfOwnersAreReadable) {
    EXPECT_GE(Contrast(states.owner_text, states.outer_fill), kReadable);
    EXPECT_GE(Contrast(states.owner_text, states.inner_fill), kReadable);
}

TEST_P(ThemeLook, MarksOfPortsAreReadable) {
    const std::vector<_color> ports{look.port_visible_color, look.port_hidden_color,
                                    look.port_partial_color};
    for (const _color& port : ports) EXPECT_GE(Contrast(look.text_color, port), kReadable);
}

TEST_P(ThemeLook, OutlinesOfStatesStandOutFromTheirSurroundings) {
    for (const _color& around : {states.outer_fill, states.inner_fill}) {
        EXPECT_GE(Contrast(states.selected_border, around), kReadable);
        EXPECT_GE(Contrast(states.hovered_border, around), kReadable);
        EXPECT_GE(Contrast(states.new_border, around), kReadable);
        EXPECT_GE(Contrast(look.selected_border_color, around), kReadable);
    }
}

TEST_P(ThemeLook, StatesDifferInLightnessOfFillOrOutline) {
    const auto outline_stands_out = [this](const _color& outline) {
        return Contrast(outline, look.border_color) >= 1.7;
    };
    EXPECT_TRUE(outline_stands_out(states.selected_border));
    EXPECT_TRUE(outline_stands_out(states.hovered_border));
    EXPECT_TRUE(outline_stands_out(states.new_border));
    EXPECT_GE(Contrast(look.fill_top, look.selected_fill_top), 1.2);
    EXPECT_GE(Contrast(look.fill_top, look.fill_top.Lightened()), 1.1);
}

TEST_P(ThemeLook, EdgesAreSeenButQuieterThanCaptions) {
    const _color background = paintcore::GetSysPalette()[paintcore::SysPalette::kBackground];
    EXPECT_GE(Contrast(edges.color, background), 2.0);
    EXPECT_LE(Contrast(edges.color, background), kReadable);
    EXPECT_GE(Contrast(edges.marked_color, background), kReadable);
    EXPECT_GE(Contrast(edges.marked_color, edges.color), 1.7);
}

TEST_P(ThemeLook, LeavesStandOutFromOwnersAndThoseFromEachOther) {
    EXPECT_GE(Contrast(look.border_color, states.outer_fill), 2.5);
    EXPECT_NE(states.outer_fill, states.inner_fill);
    EXPECT_NE(states.outer_fill, look.fill_top);
    EXPECT_NE(states.outer_fill, paintcore::GetSysPalette()[paintcore::SysPalette::kBackground]);
}

TEST_P(ThemeLook, FillsAreFlatAndTheFontIsOfNinePoints) {
    EXPECT_EQ(look.fill_top, look.fill_bottom);
    EXPECT_EQ(look.selected_fill_top, look.selected_fill_bottom);
    EXPECT_EQ(look.new_fill_top, look.new_fill_bottom);
    EXPECT_EQ(look.font.size, 9);
    EXPECT_EQ(look.font.style & paintcore::FontBold, 0);
}

TEST_P(ThemeLook, BackgroundTellsLightFromDark) {
    const _color background = paintcore::GetSysPalette()[paintcore::SysPalette::kBackground];
    EXPECT_EQ(Contrast(background, _color(255, 255, 255)) > 10.0, GetParam());
}

TEST_P(ThemeLook, IsGivenToPlainPortHandlersAsWell) {
    PortNodeHandler plain;
    ApplyLook(GetParam(), plain, edges);
    EXPECT_EQ(plain.GetDrawInfo().fill_top, look.fill_top);
    EXPECT_EQ(plain.GetDrawInfo().font, look.font);
}

INSTANTIATE_TEST_SUITE_P(LightAndDark, ThemeLook, testing::Bool(),
                         [](const auto& mode) { return mode.param ? "Dark" : "Light"; });

TEST(Theme, ApplyLookLeavesOtherHandlersAsTheyAre) {
    const PortNodeHandler untouched;
    const paintcore::SysPalette before = paintcore::GetSysPalette();
    PortNodeHandler nodes;
    DummyEdgeHandler edges;
    ApplyLook(true, nodes, edges);
    paintcore::SetSysPalette(before);
    const PortNodeHandler fresh;
    EXPECT_EQ(fresh.GetDrawInfo().fill_top, untouched.GetDrawInfo().fill_top);
    EXPECT_EQ(fresh.GetDrawInfo().font, untouched.GetDrawInfo().font);
    EXPECT_NE(fresh.GetDrawInfo().fill_top, nodes.GetDrawInfo().fill_top);
}

TEST(Theme, SizesOfNodesDoNotDependOnLightAndDark) {
    const paintcore::SysPalette before = paintcore::GetSysPalette();
    const graph_ptr2<Graph> graph(new Graph, true);
    Node node = graph->GetRoot().AddNode();
    node.SetCaption("a caption");
    ViewerNodeHandler nodes;
    DummyEdgeHandler edges;
    ApplyLook(false, nodes, edges);
    const size<double> light = nodes.GetSize(node);
    ApplyLook(true, nodes, edges);
    paintcore::SetSysPalette(before);
    EXPECT_GT(light.cx, 0.0);
    EXPECT_EQ(nodes.GetSize(node), light);
}

class ThemePalette : public testing::TestWithParam<Appearance> {
protected:
    void TearDown() override { ApplyAppearance(Appearance::kSystem); }
};

TEST_P(ThemePalette, TextsAreReadable) {
    ApplyAppearance(GetParam());
    const QPalette p = QApplication::palette();
    const std::vector<std::pair<QPalette::ColorRole, QPalette::ColorRole>> pairs{
        {QPalette::WindowText, QPalette::Window},
        {QPalette::Text, QPalette::Base},
        {QPalette::Text, QPalette::AlternateBase},
        {QPalette::ButtonText, QPalette::Button},
        {QPalette::HighlightedText, QPalette::Highlight},
        {QPalette::ToolTipText, QPalette::ToolTipBase},
        {QPalette::Link, QPalette::Window},
        {QPalette::LinkVisited, QPalette::Window},
        {QPalette::PlaceholderText, QPalette::Base},
        {QPalette::PlaceholderText, QPalette::Window}};
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
        for (const auto& [text, ground] : pairs) {
            EXPECT_GE(Contrast(p.color(group, text), p.color(group, ground)), kReadable)
                << "roles " << text << " and " << ground;
        }
    }
    EXPECT_GE(Contrast(p.color(QPalette::Disabled, QPalette::ButtonText),
                       p.color(QPalette::Disabled, QPalette::Button)),
              kNoticeable);
}

TEST_P(ThemePalette, IsAsDarkAsItWasAskedFor) {
    ApplyAppearance(GetParam());
    EXPECT_EQ(IsDark(QApplication::palette()), GetParam() == Appearance::kDark);
}

INSTANTIATE_TEST_SUITE_P(LightAndDark, ThemePalette,
                         testing::Values(Appearance::kLight, Appearance::kDark));

TEST(Theme, SystemGoesBackToTheStyleAndPaletteOfTheDesktop) {
    ApplyAppearance(Appearance::kSystem);
    const QString style = QApplication::style()->name();
    const QPalette palette = QApplication::palette();
    ApplyAppearance(Appearance::kDark);
    ASSERT_NE(QApplication::palette().color(QPalette::Window), palette.color(QPalette::Window));
    ApplyAppearance(Appearance::kLight);
    ApplyAppearance(Appearance::kSystem);
    EXPECT_EQ(QApplication::style()->name(), style);
    for (const QPalette::ColorRole role : {QPalette::Window, QPalette::Text, QPalette::Highlight,
                                           QPalette::Button, QPalette::ToolTipBase}) {
        EXPECT_EQ(QApplication::palette().color(role), palette.color(role)) << role;
    }
}

TEST(Theme, PaletteWithLightTextsIsDark) {
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(40, 40, 40));
    palette.setColor(QPalette::WindowText, QColor(230, 230, 230));
    EXPECT_TRUE(IsDark(palette));
    palette.setColor(QPalette::Window, QColor(250, 250, 250));
    palette.setColor(QPalette::WindowText, QColor(20, 20, 20));
    EXPECT_FALSE(IsDark(palette));
}

}  // namespace
}  // namespace nodeline::app
