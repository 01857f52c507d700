// An X server without a screen, for programs that are looked at and driven as a user does it.
#pragma once

#include <QImage>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <functional>
#include <memory>

namespace nodeline::test {

// How long anything may take before a test fails.
constexpr int kPatience = 20000;  // milliseconds

// Waits until a condition holds; false if that takes too long.
[[nodiscard]] bool WaitUntil(const std::function<bool()>& condition);

// A process that dies with this one, however this one ends.
[[nodiscard]] std::unique_ptr<QProcess> MakeChild();

// 1280 by 800 pixels and no window manager: windows come up at the left top, the last one above the
// others, and none has the keyboard until "windowfocus --sync" gives it away. Ends with the object.
class XServer {
public:
    static constexpr int kWidth = 1280;
    static constexpr int kHeight = 800;

    // Where no server can be started, fails the test, and `IsRunning` answers false.
    XServer();
    ~XServer();

    XServer(const XServer&) = delete;
    XServer& operator=(const XServer&) = delete;

    [[nodiscard]] bool IsRunning() const { return !display_.isEmpty(); }
    // As in the environment variable, such as ":1".
    [[nodiscard]] const QString& GetDisplay() const { return display_; }

    // What is on the screen now. Programs draw when they come to it: wait for what is expected.
    [[nodiscard]] QImage Screenshot() const;

    // Runs xdotool to its end and answers what it prints, without the blanks around it. Where it
    // answers with an error or takes too long, fails the test and answers an empty text.
    QString Xdotool(const QStringList& arguments) const;
    // The id of the visible window with exactly that title, once there is one. Empty, after the
    // test has failed, if none comes.
    [[nodiscard]] QString WaitForWindow(const QString& title) const;
    // Asks a window to close, as window managers do for a click on its cross.
    void CloseWindow(const QString& id) const;

private:
    QTemporaryDir folder_;
    std::unique_ptr<QProcess> process_;
    QString display_;
};

}  // namespace nodeline::test
