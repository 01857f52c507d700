// Waiting for what happens on other threads or after a while, and files to be read.
#pragma once

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QString>
#include <QThread>
#include <string>

namespace nodeline::app::test {

// Far more than anything here takes.
constexpr int kMostWait = 60000;  // in milliseconds

// Runs the event loop until a condition holds. False if it never does.
template <class F>
[[nodiscard]] bool WaitFor(F&& condition) {
    QElapsedTimer clock;
    clock.start();
    while (!condition()) {
        if (clock.elapsed() > kMostWait) return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QThread::msleep(1);
    }
    return true;
}

// Runs the event loop for a time in which nothing is to happen.
inline void Rest(int milliseconds) {
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < milliseconds) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        QThread::msleep(1);
    }
}

[[nodiscard]] inline bool Write(const QString& path, const std::string& text) {
    QFile file(path);
    const auto size = static_cast<qint64>(text.size());
    return file.open(QIODevice::WriteOnly) && file.write(text.data(), size) == size;
}

// A graph file of a chain of nodes that branches.
[[nodiscard]] inline std::string LargeText(int count) {
    std::string text = "a large graph\n[nodes]\n";
    for (int i = 1; i <= count; ++i) {
        const std::string number = std::to_string(i);
        text += number + " \"node " + number + "\" 0 0\n";
    }
    text += "[edges]\n";
    for (int i = 2; i <= count; ++i) {
        text += std::to_string(i / 2) + " " + std::to_string(i) + " \"\"\n";
    }
    return text;
}

}  // namespace nodeline::app::test
