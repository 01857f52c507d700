#include <backends/qt/overview_widget.h>
#include <gtest/gtest.h>
#include <nodeline/viewer/overview.h>
#include <qt/graph_widget_stage.h>

#include <cmath>
#include <memory>

namespace nodeline::qt {
namespace {

using namespace nodeline::test;

class OverviewWidgetTest : public GraphWidgetTest {
protected:
    void SetUp() override {
        GraphWidgetTest::SetUp();
        overview = std::make_unique<OverviewWidget>(widget);
        overview->resize(200, 150);
        overview->show();
        Settle();
    }

    [[nodiscard]] COverviewContent* Content() const {
        return dynamic_cast<COverviewContent*>(overview->GetRoot()->GetChildren().at(0));
    }

    std::unique_ptr<OverviewWidget> overview;
};

TEST_F(OverviewWidgetTest, FollowsTheViewAndMovesIt) {
    widget->zoomTo(4.0);
    EXPECT_EQ(Content()->GetViewRect().left, Start().x);
    EXPECT_EQ(Content()->GetViewRect().top, Start().y);
    Click(overview.get(), {100, 75});
    const double before = Start().x;
    Key(overview.get(), QEvent::KeyPress, Qt::Key_Right);
    EXPECT_EQ(std::abs(Start().x - before), 10.0);
}

TEST_F(OverviewWidgetTest, OutlivesTheGraphWidget) {
    delete widget;
    EXPECT_EQ(overview->graphWidget(), nullptr);
    Settle();
    Drag(overview.get(), {100, 75}, {120, 80});
    Key(overview.get(), QEvent::KeyPress, Qt::Key_Right);
    overview->resize(300, 100);
    Settle();
    EXPECT_EQ(Content()->GetViewRect(), (rectangle<double>{0.0, 0.0, 0.0, 0.0}));
}

TEST_F(OverviewWidgetTest, GoesBeforeTheGraphWidget) {
    overview.reset();
    widget->zoomTo(2.0);
    Settle();
    EXPECT_EQ(widget->viewer()->GetScale(), 2.0);
}

TEST_F(OverviewWidgetTest, TurnsToAnotherGraphWidget) {
    GraphWidget other(graph);
    overview->setGraphWidget(&other);
    other.viewer()->SetStartX(77.0);
    EXPECT_EQ(Content()->GetViewRect().left, 77.0);
    widget->viewer()->SetStartX(5.0);
    EXPECT_EQ(Content()->GetViewRect().left, 77.0);
    overview->setGraphWidget(nullptr);
    EXPECT_EQ(overview->graphWidget(), nullptr);
}

}  // namespace
}  // namespace nodeline::qt
