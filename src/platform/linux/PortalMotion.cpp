#include "platform/linux/PortalMotion.h"

#include <QDBusArgument>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QMap>
#include <QStringList>
#include <QVariantMap>

#include <utility>

namespace veltrano {

namespace {

constexpr auto kPortal = QLatin1StringView("org.freedesktop.portal.Desktop");
constexpr auto kPortalPath = QLatin1StringView("/org/freedesktop/portal/desktop");
constexpr auto kSettings = QLatin1StringView("org.freedesktop.portal.Settings");
constexpr auto kBus = QLatin1StringView("org.freedesktop.DBus");
constexpr auto kBusPath = QLatin1StringView("/org/freedesktop/DBus");

constexpr auto kAppearance = QLatin1StringView("org.freedesktop.appearance");
constexpr auto kReducedMotion = QLatin1StringView("reduced-motion"); // a number; 0 is no wish
constexpr auto kInterface = QLatin1StringView("org.gnome.desktop.interface");
constexpr auto kEnableAnimations = QLatin1StringView("enable-animations"); // yes or no

constexpr uint kReduced = 1;

using Settings = QMap<QString, QVariantMap>; ///< By name space, then by key.

/// The value of a key, out of the variants it is wrapped in; invalid where there is none.
QVariant valueOf(const Settings& settings, const QString& space, const QString& key) {
    QVariant value = settings.value(space).value(key);
    while (value.metaType() == QMetaType::fromType<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value;
}

/// Nothing where no setting tells.
std::optional<bool> isReducedBy(const Settings& settings) {
    const QVariant reduced = valueOf(settings, kAppearance, kReducedMotion);
    if (reduced.typeId() == QMetaType::UInt)
        return reduced.toUInt() == kReduced;
    const QVariant animated = valueOf(settings, kInterface, kEnableAnimations);
    if (animated.typeId() == QMetaType::Bool)
        return !animated.toBool();
    return std::nullopt;
}

} // namespace

PortalMotion::PortalMotion(QDBusConnection bus) : m_bus(std::move(bus)) {
    // No sender is named: a watch on a name would wait for the bus to tell its owner. What a stranger sends
    // here costs a question and changes nothing.
    m_bus.connect({}, kPortalPath, kSettings, QStringLiteral("SettingChanged"), this,
                  SLOT(settingChanged(QDBusMessage)));
    m_bus.connect({}, kBusPath, kBus, QStringLiteral("NameOwnerChanged"), {kPortal}, {}, this,
                  SLOT(ownerChanged(QString, QString, QString)));
}

void PortalMotion::observe(Observer observer) {
    m_observer = std::move(observer);
    m_bReduced.reset();
    if (m_observer)
        ask();
}

void PortalMotion::settingChanged(const QDBusMessage& message) {
    const QString space = message.arguments().value(0).toString();
    const QString key = message.arguments().value(1).toString();
    if (m_observer && ((space == kAppearance && key == kReducedMotion) ||
                       (space == kInterface && key == kEnableAnimations)))
        ask();
}

void PortalMotion::ownerChanged(const QString& name, const QString& /*oldOwner*/, const QString& newOwner) {
    if (m_observer && name == kPortal && !newOwner.isEmpty())
        ask();
}

void PortalMotion::ask() {
    auto question =
        QDBusMessage::createMethodCall(kPortal, kPortalPath, kSettings, QStringLiteral("ReadAll"));
    question << QStringList{kAppearance, kInterface};
    // An older answer is out of date.
    delete m_pQuestion;
    m_pQuestion = new QDBusPendingCallWatcher(m_bus.asyncCall(question), this);
    connect(m_pQuestion, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* asked) {
        m_pQuestion = nullptr;
        asked->deleteLater();
        take(asked->reply());
    });
}

void PortalMotion::take(const QDBusMessage& answer) {
    if (!m_observer || answer.type() != QDBusMessage::ReplyMessage ||
        answer.signature() != QLatin1StringView("a{sa{sv}}"))
        return;
    const auto reduced = isReducedBy(qdbus_cast<Settings>(answer.arguments().constFirst()));
    if (!reduced || reduced == m_bReduced)
        return;
    m_bReduced = reduced;
    const Observer observer = m_observer; // It may be replaced while it is told.
    observer(*reduced);
}

} // namespace veltrano
