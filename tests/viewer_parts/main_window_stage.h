// The window of the desktop program with a small graph, and settings of its own.
#pragma once

#include <apps/viewer/find_panel.h>
#include <apps/viewer/main_window.h>
#include <apps/viewer/message_bar.h>
#include <gtest/gtest.h>
#include <qt/events.h>
#include <viewer_parts/graph_text.h>
#include <viewer_parts/waiting.h>

#include <QApplication>
#include <QSettings>
#include <QStringList>
#include <QTemporaryDir>
#include <memory>
#include <string>
#include <vector>

namespace nodeline::app::test {

//   first -> second -> third      box { inner }      third -> inner
inline const char* const kWindowText = R"(a text
[nodes]
1 "first" 0 0
2 "second" 0 0
3 "third" 0 0
4 "box" 0 0
5 "inner" 0 4
[edges]
1 2 ""
2 3 ""
3 5 ""
)";

class MainWindowTest : public testing::Test {
protected:
    void SetUp() override {
        // No settings of the user's count, nor are they written.
        qputenv("XDG_CONFIG_HOME", folder.path().toUtf8());
        qunsetenv("DBUS_SESSION_BUS_ADDRESS");
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, folder.path());
        QCoreApplication::setOrganizationName("nodeline");
        QCoreApplication::setApplicationName("viewer-parts-tests");
        Make();
    }
    void TearDown() override {
        window.reset();
        ApplyAppearance(Appearance::kSystem);
        paintcore::SetSysPalette(palette);
    }

    void Make(const WindowOptions& options = {}) {
        window.reset();
        told.clear();
        pictures = 0;
        window = std::make_unique<MainWindow>(options);
        QObject::connect(window.get(), &MainWindow::told,
                         [this](const QString& line) { told << line; });
        QObject::connect(window.get(), &MainWindow::pictureShown, [this] { ++pictures; });
        window->show();
        nodeline::test::Settle();
    }
    // Shows the graph without gliding, unless a test wants it.
    void Open(const std::string& text = kWindowText) {
        ASSERT_TRUE(Write(path, text));
        const int before = pictures;
        window->openFile(path);
        ASSERT_TRUE(WaitFor([&] { return pictures > before; }));
        Widget()->setGlideTime(0);
    }
    [[nodiscard]] bool IsTold(const QString& part) {
        return WaitFor([&] { return !told.filter(part).isEmpty(); });
    }

    [[nodiscard]] qt::GraphWidget* Widget() const { return window->graphWidget(); }
    [[nodiscard]] graph_ptr2<Graph> TheGraph() const { return Widget()->viewer()->GetGraph(); }
    [[nodiscard]] Node Named(const std::string& caption) const { return Find(TheGraph(), caption); }
    [[nodiscard]] std::vector<std::string> Shown() const { return ShownCaptions(TheGraph()); }
    [[nodiscard]] QAction* Action(Command command) const { return window->actionSet()[command]; }
    void Do(Command command) const {
        ASSERT_TRUE(Action(command)->isEnabled()) << Action(command)->text().toStdString();
        Action(command)->trigger();
    }
    [[nodiscard]] QString Message() const { return window->findChild<MessageBar*>()->text(); }

    [[nodiscard]] QPoint PixelAt(double x, double y) const {
        const point<int> p = Widget()->viewer()->GetContent()->ConvertL2P({x, y});
        return {p.x, p.y};
    }
    [[nodiscard]] QPoint MiddleOf(const std::string& caption) const {
        const Node node = Named(caption);
        const point<double> p = node.GetPosition();
        return PixelAt(p.x + node.GetSize().cx / 2.0, p.y + node.GetSize().cy / 2.0);
    }
    // Of an owner, where nothing lies that it owns.
    [[nodiscard]] QPoint TopOf(const std::string& caption) const {
        const point<double> p = Named(caption).GetPosition();
        return PixelAt(p.x + Named(caption).GetSize().cx / 2.0, p.y + 4.0);
    }
    void Click(const std::string& caption) const {
        nodeline::test::Click(Widget(), MiddleOf(caption));
    }
    [[nodiscard]] bool IsInTheMiddle(const std::string& caption) const {
        const QPoint way = MiddleOf(caption) - Widget()->rect().center();
        return std::abs(way.x()) <= 3 && std::abs(way.y()) <= 3;
    }

    paintcore::SysPalette palette = paintcore::GetSysPalette();
    QTemporaryDir folder;
    QString path = folder.filePath("graph.txt");
    std::unique_ptr<MainWindow> window;
    QStringList told;
    int pictures = 0;
};

}  // namespace nodeline::app::test
