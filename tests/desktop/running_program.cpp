#include <desktop/running_program.h>
#include <gtest/gtest.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcessEnvironment>
#include <algorithm>

namespace nodeline::test {

namespace {

// Only its owner may get at it: Qt insists.
QString MakeFolder(const QString& home, const QString& name) {
    const QString path = QDir(home).filePath(name);
    QDir().mkpath(path);
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return path;
}

QProcessEnvironment MakeEnvironment(const XServer& server, const QString& home) {
    QProcessEnvironment made = QProcessEnvironment::systemEnvironment();
    made.remove(QStringLiteral("XAUTHORITY"));
    made.remove(QStringLiteral("WAYLAND_DISPLAY"));
    made.remove(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"));
    made.insert(QStringLiteral("DISPLAY"), server.GetDisplay());
    made.insert(QStringLiteral("HOME"), home);
    made.insert(QStringLiteral("XDG_CONFIG_HOME"), MakeFolder(home, QStringLiteral("config")));
    made.insert(QStringLiteral("XDG_DATA_HOME"), MakeFolder(home, QStringLiteral("data")));
    made.insert(QStringLiteral("XDG_CACHE_HOME"), MakeFolder(home, QStringLiteral("cache")));
    made.insert(QStringLiteral("XDG_RUNTIME_DIR"), MakeFolder(home, QStringLiteral("runtime")));
    made.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    // Otherwise messages may go to the log of the machine.
    made.insert(QStringLiteral("QT_ASSUME_STDERR_HAS_CONSOLE"), QStringLiteral("1"));
    return made;
}

}  // namespace

RunningProgram::RunningProgram(const XServer& server, const QString& path, const Options& options)
    : process_(MakeChild()) {
    QProcessEnvironment environment =
        MakeEnvironment(server, options.home.isEmpty() ? folder_.path() : options.home);
    for (const QString& variable : options.environment) {
        environment.insert(variable.section(QLatin1Char('='), 0, 0),
                           variable.section(QLatin1Char('='), 1));
    }
    process_->setProcessEnvironment(environment);
    process_->setProcessChannelMode(QProcess::MergedChannels);
    process_->start(path, options.arguments);
    if (!process_->waitForStarted(kPatience)) {
        ADD_FAILURE() << path.toStdString()
                      << " does not start: " << process_->errorString().toStdString();
    }
}

RunningProgram::~RunningProgram() {
    if (!IsRunning()) return;
    process_->kill();
    process_->waitForFinished(kPatience);
}

void RunningProgram::take_lines() {
    rest_ += process_->readAll();
    for (qsizetype end = rest_.indexOf('\n'); end >= 0; end = rest_.indexOf('\n')) {
        lines_ << QString::fromUtf8(rest_.left(end));
        rest_.remove(0, end + 1);
    }
}

const QStringList& RunningProgram::GetLines() {
    process_->waitForReadyRead(0);
    take_lines();
    return lines_;
}

bool RunningProgram::WaitForLine(const QString& text) {
    QElapsedTimer timer;
    timer.start();
    while (true) {
        take_lines();
        while (looked_at_ < lines_.size()) {
            if (lines_[looked_at_++].contains(text)) return true;
        }
        const auto left = static_cast<int>(kPatience - timer.elapsed());
        if (left <= 0) return false;
        // What came before the end is still to be looked at.
        if (!process_->waitForReadyRead(left) && process_->bytesAvailable() == 0) return false;
    }
}

bool RunningProgram::IsRunning() {
    // Learns of an end that has come since.
    if (process_->state() != QProcess::NotRunning) process_->waitForFinished(0);
    return process_->state() != QProcess::NotRunning;
}

std::optional<int> RunningProgram::WaitForExit() {
    if (IsRunning() && !process_->waitForFinished(kPatience)) return std::nullopt;
    take_lines();
    if (process_->exitStatus() != QProcess::NormalExit) return std::nullopt;
    return process_->exitCode();
}

}  // namespace nodeline::test
