#include <apps/viewer/motion.h>

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusReply>
#include <QDBusVariant>
#include <QSettings>
#include <QStandardPaths>
#include <QStyle>
#include <optional>

namespace nodeline::app {

namespace {

constexpr int kMostWait = 200;  // in milliseconds

// What a settings file of the user says, in its own notation.
std::optional<QString> FromFile(const QString& file, const QString& key) {
    const QString path = QStandardPaths::locate(QStandardPaths::GenericConfigLocation, file);
    if (path.isEmpty()) return std::nullopt;
    const QSettings settings(path, QSettings::IniFormat);
    if (!settings.contains(key)) return std::nullopt;
    return settings.value(key).toString().toLower();
}

bool PortalReducesMotion() {
    if (qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS")) return false;
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) return false;
    QDBusMessage question = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.portal.Desktop"),
        QStringLiteral("/org/freedesktop/portal/desktop"),
        QStringLiteral("org.freedesktop.portal.Settings"), QStringLiteral("Read"));
    question << QStringLiteral("org.gnome.desktop.interface")
             << QStringLiteral("enable-animations");
    const QDBusReply<QDBusVariant> reply = bus.call(question, QDBus::Block, kMostWait);
    if (!reply.isValid()) return false;
    // The portal wraps the value twice.
    const QVariant value = reply.value().variant();
    const auto inner = value.value<QDBusVariant>().variant();
    const QVariant& is_animated = inner.isValid() ? inner : value;
    return is_animated.isValid() && !is_animated.toBool();
}

}  // namespace

bool DesktopReducesMotion() {
    if (QApplication::style()->styleHint(QStyle::SH_Widget_Animation_Duration) == 0) return true;
    const auto factor =
        FromFile(QStringLiteral("kdeglobals"), QStringLiteral("KDE/AnimationDurationFactor"));
    if (factor && factor->toDouble() == 0.0) return true;
    for (const char* file : {"gtk-4.0/settings.ini", "gtk-3.0/settings.ini"}) {
        const auto on =
            FromFile(QString::fromLatin1(file), QStringLiteral("Settings/gtk-enable-animations"));
        if (on) return *on == QLatin1String("0") || *on == QLatin1String("false");
    }
    return PortalReducesMotion();
}

}  // namespace nodeline::app
