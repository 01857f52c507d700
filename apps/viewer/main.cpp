#include <apps/viewer/main_window.h>

#include <QApplication>
#include <QCommandLineParser>
#include <QElapsedTimer>
#include <cstdio>
#include <cstdlib>
#include <optional>

namespace nodeline::app {

namespace {

constexpr int kWrongUsage = 2;

struct Arguments {
    QString file;
    WindowOptions window;
    bool prints_status = false;
};

std::optional<Appearance> ToAppearance(const QString& word) {
    if (word == QLatin1String("system")) return Appearance::kSystem;
    if (word == QLatin1String("light")) return Appearance::kLight;
    if (word == QLatin1String("dark")) return Appearance::kDark;
    return std::nullopt;
}

[[noreturn]] void Refuse(const QString& reason) {
    std::fprintf(stderr, "nodeline-viewer: %s\n", qPrintable(reason));
    std::exit(kWrongUsage);
}

Arguments Parse(const QApplication& application) {
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Shows a directed graph in a window, to be explored."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument(QStringLiteral("FILE"), QStringLiteral("the graph file"),
                                 QStringLiteral("[FILE]"));
    const QCommandLineOption layout(
        QStringLiteral("layout"),
        QStringLiteral("how the graph is laid out: stable, or inc, the plain incremental layout"),
        QStringLiteral("LAYOUT"), QStringLiteral("stable"));
    const QCommandLineOption colors(QStringLiteral("colours"),
                                    QStringLiteral("the palette: system, light or dark"),
                                    QStringLiteral("COLOURS"));
    const QCommandLineOption print(
        QStringLiteral("print-status"),
        QStringLiteral("print what the status line and messages say on standard output"));
    parser.addOptions({layout, colors, print});
    parser.process(application);

    Arguments arguments;
    const QStringList files = parser.positionalArguments();
    if (files.size() > 1) Refuse(QStringLiteral("there is more than one file"));
    if (!files.isEmpty()) arguments.file = files.front();
    const QString kind = parser.value(layout);
    if (kind != QLatin1String("stable") && kind != QLatin1String("inc")) {
        Refuse(QStringLiteral("%1 is neither stable nor inc").arg(kind));
    }
    arguments.window.layout = kind == QLatin1String("inc") ? LayoutKind::kInc : LayoutKind::kStable;
    if (parser.isSet(colors)) {
        arguments.window.appearance = ToAppearance(parser.value(colors));
        if (!arguments.window.appearance) {
            Refuse(
                QStringLiteral("%1 is none of system, light and dark").arg(parser.value(colors)));
        }
    }
    arguments.prints_status = parser.isSet(print);
    return arguments;
}

void Print(const QString& line) {
    std::puts(qPrintable(line));
    std::fflush(stdout);
}

int Run(const QApplication& application, const QElapsedTimer& since_start) {
    const Arguments arguments = Parse(application);
    MainWindow window(arguments.window);
    if (arguments.prints_status) {
        QObject::connect(&window, &MainWindow::told, Print);
        QObject::connect(&window, &MainWindow::pictureShown, [&since_start] {
            Print(QStringLiteral("picture after %1 ms").arg(since_start.elapsed()));
        });
    }
    window.show();
    if (!arguments.file.isEmpty()) window.openFile(arguments.file);
    return QApplication::exec();
}

}  // namespace

}  // namespace nodeline::app

int main(int argc, char** argv) {
    QElapsedTimer since_start;
    since_start.start();
    QApplication::setOrganizationName(QStringLiteral("nodeline"));
    QApplication::setApplicationName(QStringLiteral("nodeline-viewer"));
    QApplication::setApplicationDisplayName(QStringLiteral("nodeline"));
    QApplication::setApplicationVersion(QStringLiteral(NODELINE_VERSION));
    const QApplication application(argc, argv);
    return nodeline::app::Run(application, since_start);
}
