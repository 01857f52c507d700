#include <desktop/x_server.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/prctl.h>
#include <xcb/xcb.h>

#include <QByteArray>
#include <QElapsedTimer>
#include <QFile>
#include <QProcessEnvironment>
#include <QRegularExpression>
#include <QThread>
#include <QtEndian>
#include <cstdint>
#include <cstdlib>

namespace nodeline::test {

namespace {

constexpr unsigned long kPollInterval = 10;  // milliseconds

// The head of the file in which the server keeps its screen: numbers of 32 bits, the most
// significant byte first.
enum HeadField {
    kHeadSize = 0,
    kPixelWidth = 4,
    kPixelHeight = 5,
    kByteOrder = 7,
    kBitsPerPixel = 11,
    kBytesPerLine = 12,
    kColorCount = 19,
    kHeadFields = 25
};
constexpr std::size_t kBytesPerColor = 12;

struct Freed {
    void operator()(void* data) const { std::free(data); }
};

xcb_atom_t AtomOf(xcb_connection_t* x, const QByteArray& name) {
    const auto length = static_cast<std::uint16_t>(name.size());
    const std::unique_ptr<xcb_intern_atom_reply_t, Freed> reply(
        xcb_intern_atom_reply(x, xcb_intern_atom(x, 0, length, name.constData()), nullptr));
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

std::size_t ReadField(const QByteArray& bytes, int field) {
    return qFromBigEndian<std::uint32_t>(bytes.constData() + 4 * field);
}

}  // namespace

bool WaitUntil(const std::function<bool()>& condition) {
    QElapsedTimer timer;
    timer.start();
    while (!condition()) {
        if (timer.elapsed() > kPatience) return false;
        QThread::msleep(kPollInterval);
    }
    return true;
}

std::unique_ptr<QProcess> MakeChild() {
    auto process = std::make_unique<QProcess>();
    process->setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
    return process;
}

XServer::XServer() : process_(MakeChild()) {
    const QString size = QStringLiteral("%1x%2x24").arg(kWidth).arg(kHeight);
    process_->start(QStringLiteral("Xvfb"), {"-displayfd", "1", "-screen", "0", size, "-nolisten",
                                             "tcp", "-noreset", "-fbdir", folder_.path()});
    // It tells the number of its display when it is ready.
    QByteArray number;
    while (!number.endsWith('\n') && process_->waitForReadyRead(kPatience)) {
        number += process_->readAllStandardOutput();
    }
    if (number.endsWith('\n')) {
        display_ = QLatin1Char(':') + QString::fromLatin1(number.trimmed());
    } else {
        ADD_FAILURE() << "Xvfb does not start: " << process_->errorString().toStdString() << '\n'
                      << process_->readAllStandardError().toStdString();
    }
}

XServer::~XServer() {
    process_->terminate();
    if (!process_->waitForFinished(kPatience)) process_->kill();
    process_->waitForFinished(kPatience);
}

QImage XServer::Screenshot() const {
    QFile file(folder_.filePath(QStringLiteral("Xvfb_screen0")));
    if (!file.open(QIODevice::ReadOnly)) return {};
    const QByteArray bytes = file.readAll();
    const auto size = static_cast<std::size_t>(bytes.size());
    if (size < 4 * kHeadFields) return {};
    const std::size_t start =
        ReadField(bytes, kHeadSize) + ReadField(bytes, kColorCount) * kBytesPerColor;
    const std::size_t line = ReadField(bytes, kBytesPerLine);
    const std::size_t width = ReadField(bytes, kPixelWidth);
    const std::size_t height = ReadField(bytes, kPixelHeight);
    const bool is_known =
        ReadField(bytes, kBitsPerPixel) == 32 && ReadField(bytes, kByteOrder) == 0;
    if (!is_known || line < 4 * width || size < start + line * height) return {};
    QImage image(static_cast<int>(width), static_cast<int>(height), QImage::Format_RGB32);
    for (std::size_t y = 0; y < height; ++y) {
        const char* const from = bytes.constData() + start + y * line;
        auto* const to = reinterpret_cast<QRgb*>(image.scanLine(static_cast<int>(y)));
        for (std::size_t x = 0; x < width; ++x) {
            to[x] = 0xff000000U | qFromLittleEndian<std::uint32_t>(from + 4 * x);
        }
    }
    return image;
}

QString XServer::Xdotool(const QStringList& arguments) const {
    const std::unique_ptr<QProcess> tool = MakeChild();
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DISPLAY"), display_);
    environment.remove(QStringLiteral("XAUTHORITY"));
    tool->setProcessEnvironment(environment);
    tool->start(QStringLiteral("xdotool"), arguments);
    const bool is_done = tool->waitForFinished(kPatience);
    if (is_done && tool->exitStatus() == QProcess::NormalExit && tool->exitCode() == 0) {
        return QString::fromUtf8(tool->readAllStandardOutput()).trimmed();
    }
    ADD_FAILURE() << "xdotool " << arguments.join(QLatin1Char(' ')).toStdString() << ": "
                  << tool->errorString().toStdString() << '\n'
                  << tool->readAllStandardError().toStdString();
    tool->kill();
    tool->waitForFinished(kPatience);
    return {};
}

QString XServer::WaitForWindow(const QString& title) const {
    const QString exactly = QLatin1Char('^') + QRegularExpression::escape(title) + QLatin1Char('$');
    const QString ids = Xdotool({"search", "--sync", "--onlyvisible", "--name", exactly});
    return ids.section(QLatin1Char('\n'), 0, 0);
}

void XServer::CloseWindow(const QString& id) const {
    const std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> x(
        xcb_connect(display_.toLatin1().constData(), nullptr), &xcb_disconnect);
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = id.toUInt();
    event.type = AtomOf(x.get(), "WM_PROTOCOLS");
    event.data.data32[0] = AtomOf(x.get(), "WM_DELETE_WINDOW");
    // Waits until the server has taken it.
    const std::unique_ptr<xcb_generic_error_t, Freed> error(xcb_request_check(
        x.get(), xcb_send_event_checked(x.get(), 0, event.window, XCB_EVENT_MASK_NO_EVENT,
                                        reinterpret_cast<const char*>(&event))));
    EXPECT_EQ(error, nullptr);
    EXPECT_EQ(xcb_connection_has_error(x.get()), 0);
}

}  // namespace nodeline::test
