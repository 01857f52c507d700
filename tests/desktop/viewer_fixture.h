// The desktop program as a person has it before him, with a graph of the test.
#pragma once

#include <desktop/running_program.h>
#include <desktop/x_server.h>
#include <gtest/gtest.h>

#include <QByteArray>
#include <QColor>
#include <QImage>
#include <QPoint>
#include <QRect>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <memory>
#include <vector>

namespace nodeline::test {

// The program keeps its settings over all runs of a test. It draws in the light colours unless told
// otherwise, at one pixel to the unit, and nothing glides.
class ViewerTest : public testing::Test {
protected:
    // What things are filled with in the light look.
    static constexpr QRgb kGround = qRgb(251, 252, 253);
    static constexpr QRgb kNode = qRgb(206, 219, 236);
    static constexpr QRgb kSelectedNode = qRgb(133, 180, 242);
    static constexpr QRgb kNewNode = qRgb(172, 218, 172);
    static constexpr QRgb kOpenPort = qRgb(230, 235, 239);
    static constexpr QRgb kClosedPort = qRgb(246, 186, 170);

    // alpha goes to beta, and beta to gamma and delta.
    static const QByteArray kFork;

    void SetUp() override;

    // A file of the test; answers its path.
    QString Write(const QString& name, const QByteArray& text) const;
    [[nodiscard]] QString PathOf(const QString& name) const { return files_.filePath(name); }

    // Starts the program anew. Options come in front of those of all tests.
    void Start(const QStringList& arguments, const QStringList& environment = {});
    // Gives the window of that title, up to the name of the program, the keyboard, once it is
    // there, and answers its id.
    QString TakeWindow(const QString& title) const;
    // Starts the program with a file and waits until its picture is there and hears the keyboard.
    void Show(const QString& name, const QStringList& options = {});

    // Waits for a line of the program, behind the one that was waited for last.
    [[nodiscard]] testing::AssertionResult Says(const QString& text);
    // Ends the program by its key, and expects that it ends well.
    void Quit();

    void Point(const QPoint& at) const;
    void Click(const QPoint& at, int button = 1) const;
    void Drag(const QPoint& from, const QPoint& to) const;
    // The same, and waits for the outline that such a drag draws before it lets go.
    void DragOutline(const QPoint& from, const QPoint& to) const;
    void Press(const QStringList& keys) const;
    void Type(const QString& text) const;
    // Moves the pointer where it touches nothing.
    void PointAway() const { Point({XServer::kWidth - 1, XServer::kHeight - 1}); }

    // What of the picture is filled with a colour, from left to right, and then from top to bottom.
    // Waits until there are so many such places and they stand still; else fails the test and
    // answers that many empty ones.
    std::vector<QRect> WaitForPlaces(QRgb color, std::size_t count) const;
    [[nodiscard]] QImage Shot(const QRect& area) const { return server.Screenshot().copy(area); }
    // How many windows of the program are on the screen; menus and dialogs count.
    [[nodiscard]] qsizetype CountWindows() const;

    // The part of the window that shows the picture.
    static constexpr QRect kPicture{0, 50, 930, 700};

    XServer server;
    std::unique_ptr<RunningProgram> program;

private:
    QTemporaryDir files_;
    QTemporaryDir home_;
};

// Parts of the image filled with one colour that are not much smaller than a port.
[[nodiscard]] std::vector<QRect> FindPlaces(const QImage& image, QRgb color);

}  // namespace nodeline::test
