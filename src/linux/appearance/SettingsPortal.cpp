#include "linux/appearance/SettingsPortal.h"

#include "base/Log.h"
#include "linux/portal/Portal.h"

#include <QDBusArgument>
#include <QDBusError>
#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QMap>
#include <QMetaType>
#include <QStringList>
#include <QVariantMap>
#include <algorithm>

namespace quillo {

namespace {

using Spaces = QMap<QString, QVariantMap>;

const QString interface = QStringLiteral("org.freedesktop.portal.Settings");

/// Nothing that we look for is longer.
constexpr qsizetype longestText = 256;

QString text(std::string_view name) {
    return QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()));
}

QDBusMessage call(const QString& method) {
    return QDBusMessage::createMethodCall(portal::service, portal::path, interface, method);
}

/// Without its wrappings: older portals' Read gives a variant in a variant.
QVariant unwrapped(QVariant value) {
    for (int depth = 0; depth < 4 && value.userType() == qMetaTypeId<QDBusVariant>(); ++depth)
        value = value.value<QDBusVariant>().variant();
    return value;
}

std::optional<SettingValue> settingValue(const QVariant& wrapped) {
    const QVariant value = unwrapped(wrapped);
    switch (value.userType()) {
    case QMetaType::Bool:
        return value.toBool();
    case QMetaType::UInt:
        return std::uint32_t{value.toUInt()};
    case QMetaType::Double:
        return value.toDouble();
    case QMetaType::QString:
        if (value.toString().size() > longestText)
            return std::nullopt;
        return value.toString().toStdString();
    default:
        break;
    }
    if (value.userType() != qMetaTypeId<QDBusArgument>())
        return std::nullopt;
    const auto argument = value.value<QDBusArgument>();
    if (argument.currentSignature() != QLatin1String("(ddd)"))
        return std::nullopt;
    std::array<double, 3> parts{};
    argument.beginStructure();
    for (double& part : parts)
        argument >> part;
    argument.endStructure();
    return parts;
}

} // namespace

SettingsPortal::SettingsPortal() {
    qDBusRegisterMetaType<Spaces>();
    qRegisterMetaType<QDBusVariant>(); // by its name, by which Qt looks for what a slot takes
    if (!bus_.isConnected()) {
        log("the desktop's look cannot be followed: there is no session bus");
        return;
    }
    // From whomever: naming the portal here would make Qt ask the bus for it, and wait. The slot looks
    // itself.
    bus_.connect(QString(), portal::path, interface, QStringLiteral("SettingChanged"), this,
                 SLOT(settingChanged(QString, QString, QDBusVariant, QDBusMessage)));
    watcher_.setConnection(bus_);
    watcher_.setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
    watcher_.addWatchedService(portal::service);
    connect(&watcher_, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString&, const QString&, const QString& owner) {
                if (!owner.isEmpty() && owner != owner_)
                    readAll();
            });
    readAll();
}

void SettingsPortal::readAll() {
    QStringList spaces;
    for (const auto& [space, key] : settings::all) {
        if (!spaces.contains(text(space)))
            spaces.append(text(space));
    }
    QDBusMessage question = call(QStringLiteral("ReadAll"));
    question << spaces;
    auto* reply = new QDBusPendingCallWatcher(bus_.asyncCall(question), this);
    connect(reply, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* finished) {
        finished->deleteLater();
        const QDBusPendingReply<Spaces> answer = *finished;
        if (answer.isError()) {
            const QDBusError error = answer.error();
            // A portal that cannot answer that, or answers in another form, may know the older questions.
            if (error.type() == QDBusError::UnknownMethod || error.type() == QDBusError::InvalidSignature)
                readEach(QStringLiteral("ReadOne"));
            else
                log("the desktop does not tell its look: " + error.message().toStdString());
            return;
        }
        owner_ = answer.reply().service();
        const Spaces all = answer.value();
        values_.clear();
        for (const SettingName& name : settings::all) {
            const auto value = settingValue(all.value(text(name.first)).value(text(name.second)));
            if (value)
                values_.insert_or_assign(name, *value);
        }
        changed.emit();
    });
}

void SettingsPortal::readEach(const QString& method) {
    for (const SettingName& name : settings::all)
        readOne(name, method);
}

void SettingsPortal::readOne(const SettingName& name, const QString& method) {
    QDBusMessage question = call(method);
    question << text(name.first) << text(name.second);
    auto* reply = new QDBusPendingCallWatcher(bus_.asyncCall(question), this);
    connect(reply, &QDBusPendingCallWatcher::finished, this,
            [this, name, method](QDBusPendingCallWatcher* finished) {
                finished->deleteLater();
                const QDBusPendingReply<QDBusVariant> answer = *finished;
                if (!answer.isError()) {
                    owner_ = answer.reply().service();
                    keep(text(name.first), text(name.second), answer.value().variant());
                } else if (answer.error().type() == QDBusError::UnknownMethod &&
                           method == QLatin1String("ReadOne")) {
                    readOne(name, QStringLiteral("Read")); // Version 1 had no other.
                }
            });
}

void SettingsPortal::keep(const QString& space, const QString& key, const QVariant& value) {
    const auto known = std::find_if(settings::all.begin(), settings::all.end(), [&](const SettingName& name) {
        return text(name.first) == space && text(name.second) == key;
    });
    if (known == settings::all.end())
        return;
    if (auto readable = settingValue(value))
        values_.insert_or_assign(*known, std::move(*readable));
    else
        values_.erase(*known);
    changed.emit();
}

void SettingsPortal::settingChanged(const QString& space, const QString& key, const QDBusVariant& value,
                                    const QDBusMessage& message) {
    if (message.service() == owner_)
        keep(space, key, value.variant());
}

} // namespace quillo

#include "moc_SettingsPortal.cpp"
