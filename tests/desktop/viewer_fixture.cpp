#include <desktop/viewer_fixture.h>

#include <QDir>
#include <QFile>
#include <QPainter>
#include <algorithm>
#include <optional>

namespace nodeline::test {

namespace {

constexpr int kSmallest = 13;  // pixels; what letters enclose is smaller

QString Text(int n) { return QString::number(n); }

void WriteFile(const QString& path, const QByteArray& text) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
    ASSERT_EQ(file.write(text), text.size()) << path.toStdString();
}

// The rectangle around the pixels of one colour that hang together with one, which lose it.
QRect TakePlace(QImage& image, const QPoint& seed, QRgb color) {
    QRect place(seed, seed);
    std::vector<QPoint> pending{seed};
    image.setPixel(seed, 0);
    while (!pending.empty()) {
        const QPoint at = pending.back();
        pending.pop_back();
        place |= QRect(at, at);
        for (const QPoint& step : {QPoint(1, 0), QPoint(-1, 0), QPoint(0, 1), QPoint(0, -1)}) {
            const QPoint next = at + step;
            if (!image.rect().contains(next) || image.pixel(next) != color) continue;
            image.setPixel(next, 0);
            pending.push_back(next);
        }
    }
    return place;
}

}  // namespace

const QByteArray ViewerTest::kFork =
    "fork\n[nodes]\n1 \"alpha\" 0 0\n2 \"beta\" 0 0\n3 \"gamma\" 0 0\n4 \"delta\" 0 0\n"
    "[edges]\n1 2 \"\"\n2 3 \"\"\n2 4 \"\"\n";

std::vector<QRect> FindPlaces(const QImage& image, QRgb color) {
    QImage rest = image;
    std::vector<QRect> found;
    for (int x = 0; x < rest.width(); ++x) {
        for (int y = 0; y < rest.height(); ++y) {
            if (rest.pixel(x, y) != color) continue;
            const QRect place = TakePlace(rest, {x, y}, color);
            if (std::min(place.width(), place.height()) >= kSmallest) found.push_back(place);
        }
    }
    return found;
}

void ViewerTest::SetUp() {
    ASSERT_TRUE(server.IsRunning());
    ASSERT_TRUE(QDir(home_.path()).mkpath(QStringLiteral("config/nodeline")));
    WriteFile(home_.filePath(QStringLiteral("config/nodeline/nodeline-viewer.conf")),
              "[view]\nglide=false\nappearance=1\n");
}

QString ViewerTest::Write(const QString& name, const QByteArray& text) const {
    WriteFile(PathOf(name), text);
    return PathOf(name);
}

void ViewerTest::Start(const QStringList& arguments, const QStringList& environment) {
    RunningProgram::Options options;
    options.arguments = QStringList{QStringLiteral("--print-status")} + arguments;
    options.home = home_.path();
    // As little as can be of the machine's own desktop.
    options.environment = {"LC_ALL=C.UTF-8",       "QT_SCALE_FACTOR=1",   "QT_FONT_DPI=96",
                           "XDG_CURRENT_DESKTOP=", "DESKTOP_SESSION=",    "QT_QPA_PLATFORMTHEME=",
                           "QT_STYLE_OVERRIDE=",   "XDG_SESSION_TYPE=x11"};
    options.environment += environment;
    program = std::make_unique<RunningProgram>(server, NODELINE_VIEWER, options);
}

QString ViewerTest::TakeWindow(const QString& title) const {
    const QString window = server.WaitForWindow(title);
    if (!window.isEmpty()) server.Xdotool({"windowfocus", "--sync", window});
    return window;
}

void ViewerTest::Show(const QString& name, const QStringList& options) {
    Start(options + QStringList{PathOf(name)});
    ASSERT_TRUE(Says(QStringLiteral("picture after")));
    TakeWindow(name);
    PointAway();
}

testing::AssertionResult ViewerTest::Says(const QString& text) {
    if (program->WaitForLine(text)) return testing::AssertionSuccess();
    return testing::AssertionFailure()
           << "\"" << text.toStdString() << "\" does not come; the program said\n"
           << program->GetLines().join(QLatin1Char('\n')).toStdString();
}

void ViewerTest::Quit() {
    Press({QStringLiteral("ctrl+q")});
    EXPECT_EQ(program->WaitForExit(), 0) << program->GetLines().join('\n').toStdString();
}

void ViewerTest::Point(const QPoint& at) const {
    server.Xdotool({"mousemove", Text(at.x()), Text(at.y())});
}

void ViewerTest::Click(const QPoint& at, int button) const {
    server.Xdotool({"mousemove", Text(at.x()), Text(at.y()), "click", Text(button)});
}

void ViewerTest::Drag(const QPoint& from, const QPoint& to) const {
    const QPoint between = (from + to) / 2;
    server.Xdotool({"mousemove", Text(from.x()), Text(from.y()), "mousedown", "1", "mousemove",
                    Text(between.x()), Text(between.y()), "mousemove", Text(to.x()), Text(to.y()),
                    "mouseup", "1"});
}

void ViewerTest::DragOutline(const QPoint& from, const QPoint& to) const {
    Point(from);
    // Away from the pointer, which is seen as well.
    const QRect corner(to.x() - 5, from.y() - 5, 10, 10);
    const QImage before = Shot(corner);
    server.Xdotool({"mousedown", "1", "mousemove", Text(to.x()), Text(to.y())});
    EXPECT_TRUE(WaitUntil([&] { return Shot(corner) != before; })) << "there is no outline";
    server.Xdotool({"mouseup", "1"});
}

void ViewerTest::Press(const QStringList& keys) const { server.Xdotool(QStringList{"key"} + keys); }

void ViewerTest::Type(const QString& text) const { server.Xdotool({"type", text}); }

std::vector<QRect> ViewerTest::WaitForPlaces(QRgb color, std::size_t count) const {
    std::optional<std::vector<QRect>> last;
    const bool is_still = WaitUntil([&] {
        QImage picture(XServer::kWidth, XServer::kHeight, QImage::Format_RGB32);
        picture.fill(0);
        QPainter(&picture).drawImage(kPicture.topLeft(), Shot(kPicture));
        std::vector<QRect> places = FindPlaces(picture, color | 0xff000000U);
        const bool is_same = places.size() == count && last == places;
        last = std::move(places);
        return is_same;
    });
    if (is_still) return *last;
    ADD_FAILURE() << "there are " << last->size() << " places of the colour, not " << count << '\n'
                  << program->GetLines().join('\n').toStdString();
    return std::vector<QRect>(count);
}

qsizetype ViewerTest::CountWindows() const {
    const QString ids = server.Xdotool({"search", "--onlyvisible", "--class", "nodeline-viewer"});
    return ids.split(QLatin1Char('\n'), Qt::SkipEmptyParts).size();
}

}  // namespace nodeline::test
