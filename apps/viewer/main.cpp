#include <apps/viewer/main_window.h>

#include <QApplication>
#include <QCommandLineParser>
#include <QElapsedTimer>
#include <algorithm>
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

Arguments Parse(const QStringList& words) {
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Shows a directed graph in a window, to be explored."));
    const QCommandLineOption help = parser.addHelpOption();
    const QCommandLineOption version = parser.addVersionOption();
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
    const bool is_understood = parser.parse(words);
    if (parser.isSet(help) || parser.isSet(QStringLiteral("help-all"))) parser.showHelp();
    if (parser.isSet(version)) parser.showVersion();
    if (!is_understood) Refuse(parser.errorText());

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

int Run(const Arguments& arguments, const QElapsedTimer& since_start) {
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

// Whether the program only says something on its output, for which it needs no screen.
bool OnlyPrints(int argc, char** argv) {
    return std::any_of(argv + 1, argv + argc, [](const char* word) {
        const QLatin1String option(word);
        return option == QLatin1String("-h") || option == QLatin1String("-v") ||
               option.startsWith(QLatin1String("--help")) || option == QLatin1String("--version");
    });
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
    if (nodeline::app::OnlyPrints(argc, argv)) {
        const QCoreApplication application(argc, argv);
        nodeline::app::Parse(QCoreApplication::arguments());
    }
    const QApplication application(argc, argv);
    return nodeline::app::Run(nodeline::app::Parse(QCoreApplication::arguments()), since_start);
}
