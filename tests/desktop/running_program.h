// A program that runs under an X server of the tests.
#pragma once

#include <desktop/x_server.h>

#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <memory>
#include <optional>

namespace nodeline::test {

// Collects what the program prints, standard error too, line by line. If it still runs at the end,
// it is killed.
class RunningProgram {
public:
    struct Options {
        QStringList arguments;
        // More variables, as "NAME=value".
        QStringList environment;
        // The folder that holds the settings and whatever else the program keeps; empty for a fresh
        // one that goes with the object.
        QString home;
    };

    // The server outlives the program. If that cannot be started, fails the test.
    RunningProgram(const XServer& server, const QString& path, const Options& options);
    RunningProgram(const XServer& server, const QString& path)
        : RunningProgram(server, path, Options()) {}
    ~RunningProgram();

    RunningProgram(const RunningProgram&) = delete;
    RunningProgram& operator=(const RunningProgram&) = delete;

    // Waits for a line that contains a text, behind the one that was found last. False, with all
    // that was printed in `GetLines`, if it takes too long or the program ends before.
    [[nodiscard]] bool WaitForLine(const QString& text);
    // All whole lines so far.
    [[nodiscard]] const QStringList& GetLines();

    [[nodiscard]] bool IsRunning();
    // The exit code, once the program has ended by itself; none if it takes too long, or crashed.
    [[nodiscard]] std::optional<int> WaitForExit();

private:
    void take_lines();

    QTemporaryDir folder_;
    std::unique_ptr<QProcess> process_;
    QByteArray rest_;
    QStringList lines_;
    qsizetype looked_at_ = 0;
};

}  // namespace nodeline::test
