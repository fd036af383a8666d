#include "linux/hotkey/PortalShortcutBinding.h"

#include "base/Log.h"
#include "linux/hotkey/PortalTrigger.h"
#include "linux/portal/Portal.h"
#include "linux/portal/PortalRequest.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QList>
#include <algorithm>
#include <string>
#include <utility>

namespace quillo {

namespace {

/// A shortcut as the bus carries it: (sa{sv}).
struct PortalShortcut {
    QString id;
    QVariantMap properties;
};

QDBusArgument& operator<<(QDBusArgument& argument, const PortalShortcut& shortcut) {
    argument.beginStructure();
    argument << shortcut.id << shortcut.properties;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, PortalShortcut& shortcut) {
    argument.beginStructure();
    argument >> shortcut.id >> shortcut.properties;
    argument.endStructure();
    return argument;
}

const QString connectionName = QStringLiteral("quillo-shortcuts");
const QString registry = QStringLiteral("org.freedesktop.host.portal.Registry");
const QString globalShortcuts = QStringLiteral("org.freedesktop.portal.GlobalShortcuts");
const QString sessionInterface = QStringLiteral("org.freedesktop.portal.Session");

const QString shortcutId = QStringLiteral("quick-add");

/// The version of the portal that has ConfigureShortcuts.
constexpr uint configuringVersion = 2;

/// Of what comes from the bus, nothing useful is longer.
constexpr qsizetype longestText = 1024;

/// The words of an error, from whoever made it.
std::string words(const std::string& error) {
    return QString::fromStdString(error).simplified().left(longestText).toStdString();
}

/// Our shortcut in a list of them, if it is there.
std::optional<PortalShortcut> ourShortcut(const QVariant& list) {
    if (list.userType() != qMetaTypeId<QDBusArgument>())
        return std::nullopt;
    const auto argument = list.value<QDBusArgument>();
    if (argument.currentSignature() != QLatin1String("a(sa{sv})"))
        return std::nullopt;
    const auto bound = qdbus_cast<QList<PortalShortcut>>(argument);
    const auto found = std::find_if(bound.begin(), bound.end(),
                                    [](const PortalShortcut& shortcut) { return shortcut.id == shortcutId; });
    return found != bound.end() ? std::optional(*found) : std::nullopt;
}

/// The same in an answer to ListShortcuts or BindShortcuts.
std::optional<PortalShortcut> ourShortcut(const QVariantMap& results) {
    return ourShortcut(results.value(QStringLiteral("shortcuts")));
}

/// What the portal says of its keys, in words for people; empty where it says nothing.
QString keysOf(const std::optional<PortalShortcut>& shortcut) {
    return shortcut ? shortcut->properties.value(QStringLiteral("trigger_description")).toString()
                    : QString();
}

/// Whether there is a key for it. A portal that says nothing of keys is believed.
bool hasKey(const PortalShortcut& shortcut) {
    const QVariant description = shortcut.properties.value(QStringLiteral("trigger_description"));
    return !description.isValid() || !description.toString().isEmpty();
}

/// It may still be given a key in the desktop's settings, at any time; so we go on listening.
void reportMissingKey(const std::optional<PortalShortcut>& shortcut) {
    if (!shortcut || !hasKey(*shortcut))
        log("the desktop has given the global shortcut no key; its settings may");
}

} // namespace

PortalShortcutBinding::PortalShortcutBinding(QString applicationId, QString description)
    : applicationId_(std::move(applicationId)), description_(std::move(description)) {
    qDBusRegisterMetaType<PortalShortcut>();
    qDBusRegisterMetaType<QList<PortalShortcut>>();
    watcher_.setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
    connect(&watcher_, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString&, const QString&, const QString& owner) { portalOwnerChanged(owner); });
}

/// The portal gives back what belonged to the connection.
PortalShortcutBinding::~PortalShortcutBinding() {
    if (bus_)
        QDBusConnection::disconnectFromBus(connectionName);
}

void PortalShortcutBinding::bind(const HotKeyConfig& config,
                                 std::function<void(const BindingOutcome&)> answer) {
    release();
    trigger_ = portalTrigger(config);
    if (!trigger_) {
        answer({HotKeyStatus::unavailable, "it is no shortcut: it needs a modifier and a key"});
        return;
    }
    answer_ = std::move(answer);
    findPortal();
}

void PortalShortcutBinding::release() {
    ++attempt_;
    trigger_.reset();
    answer_ = nullptr;
    sessionWanted_ = false;
    desktopKeys.set(std::nullopt);
    if (!session_.isEmpty())
        closeSession(std::exchange(session_, {}));
}

/// What becomes of it, the signal ShortcutsChanged tells.
void PortalShortcutBinding::configure() {
    if (session_.isEmpty() || !configurable_)
        return;
    const QString noWindow;
    QDBusMessage wish = call(globalShortcuts, QStringLiteral("ConfigureShortcuts"));
    wish << QVariant::fromValue(QDBusObjectPath(session_)) << noWindow << QVariantMap();
    auto* reply = new QDBusPendingCallWatcher(bus_->asyncCall(wish), this);
    connect(reply, &QDBusPendingCallWatcher::finished, this, [](QDBusPendingCallWatcher* finished) {
        finished->deleteLater();
        if (finished->isError())
            log("the desktop shows no settings of its shortcuts: " +
                words(finished->error().message().toStdString()));
    });
}

/// A connection of our own: its first call to the portal has to say who we are, and Qt may have used the
/// shared one before.
void PortalShortcutBinding::findPortal() {
    if (!bus_ || !bus_->isConnected()) {
        forgetPortal();
        QDBusConnection::disconnectFromBus(connectionName);
        bus_ = QDBusConnection::connectToBus(QDBusConnection::SessionBus, connectionName);
        if (!bus_->isConnected()) {
            finish({HotKeyStatus::unavailable, "there is no session bus"});
            return;
        }
        watcher_.setConnection(*bus_);
        watcher_.setWatchedServices({portal::service});
    }
    if (introducing_)
        return;
    if (portal_.isEmpty())
        introduceOurselves();
    else
        createSession();
}

/// Portals before version 1.19 have no registry, and need none. Either way the answer tells who the portal
/// is; the call starts it where it does not run yet.
void PortalShortcutBinding::introduceOurselves() {
    introducing_ = true;
    QDBusMessage introduction =
        QDBusMessage::createMethodCall(portal::service, portal::path, registry, QStringLiteral("Register"));
    introduction << applicationId_ << QVariantMap();
    auto* reply = new QDBusPendingCallWatcher(bus_->asyncCall(introduction), this);
    connect(reply, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* finished) {
        finished->deleteLater();
        introducing_ = false;
        if (!trigger_)
            return;
        const QDBusPendingReply<> answer = *finished;
        if (!answer.reply().service().startsWith(QLatin1Char(':'))) {
            finish({HotKeyStatus::unavailable,
                    "the desktop has no portal: " + words(answer.error().message().toStdString())});
            return;
        }
        portal_ = answer.reply().service();
        bus_->connect(portal_, portal::path, globalShortcuts, QStringLiteral("Activated"), this,
                      SLOT(activated(QDBusObjectPath, QString, qulonglong, QVariantMap)));
        bus_->connect(portal_, portal::path, globalShortcuts, QStringLiteral("ShortcutsChanged"), this,
                      SLOT(shortcutsChanged(QDBusMessage)));
        askVersion();
        createSession();
    });
}

void PortalShortcutBinding::askVersion() {
    QDBusMessage question = call(portal::properties, QStringLiteral("Get"));
    question << globalShortcuts << QStringLiteral("version");
    auto* reply = new QDBusPendingCallWatcher(bus_->asyncCall(question), this);
    connect(reply, &QDBusPendingCallWatcher::finished, this,
            [this, portal = portal_](QDBusPendingCallWatcher* finished) {
                finished->deleteLater();
                const QDBusPendingReply<QDBusVariant> version = *finished;
                if (portal != portal_ || version.isError())
                    return;
                configurable_ = version.value().variant().toUInt() >= configuringVersion;
                if (const auto keys = desktopKeys.get())
                    desktopKeys.set(DesktopKeys{keys->description, configurable_});
            });
}

/// The portal of Plasma 5.27 keeps the keys of programs that it has no name for under the session's name, for
/// ever, and gives none of them to another: so the same shortcut has the same session at each start, and
/// there is only one of it at a time. It takes the shortcuts from here, and ignores those that come later.
void PortalShortcutBinding::createSession() {
    sessionWanted_ = creatingSession_ || closingSessions_ > 0;
    if (sessionWanted_)
        return;
    creatingSession_ = true;
    const QString token = PortalRequest::newToken();
    QDBusMessage question = call(globalShortcuts, QStringLiteral("CreateSession"));
    question << QVariantMap{{QStringLiteral("handle_token"), token},
                            {QStringLiteral("session_handle_token"), sessionToken()},
                            {QStringLiteral("shortcuts"), shortcuts()}};
    const auto answer = [this, attempt = attempt_](const Result<PortalResponse>& outcome) {
        creatingSession_ = false;
        const QString session =
            outcome ? outcome->results.value(QStringLiteral("session_handle")).toString() : QString();
        if (attempt != attempt_) {
            if (!session.isEmpty())
                closeSession(session);
            createWantedSession();
        } else if (!outcome) {
            finish({HotKeyStatus::unavailable,
                    "the desktop's portal offers no shortcuts: " + words(outcome.error().message)});
        } else if (outcome->code != PortalResponse::success || session.isEmpty()) {
            finish({HotKeyStatus::unavailable, "the desktop's portal made no session"});
        } else {
            session_ = session;
            findShortcut();
        }
    };
    new PortalRequest(*bus_, question, token, answer, this);
}

void PortalShortcutBinding::createWantedSession() {
    if (sessionWanted_)
        createSession();
}

/// The portals of Plasma may know it from before. Binding it nevertheless makes that of Plasma 5.27 open the
/// desktop's settings.
void PortalShortcutBinding::findShortcut() {
    const QString token = PortalRequest::newToken();
    QDBusMessage question = call(globalShortcuts, QStringLiteral("ListShortcuts"));
    question << QVariant::fromValue(QDBusObjectPath(session_))
             << QVariantMap{{QStringLiteral("handle_token"), token}};
    const auto answer = [this, attempt = attempt_](const Result<PortalResponse>& outcome) {
        if (attempt != attempt_)
            return;
        const auto shortcut = outcome && outcome->code == PortalResponse::success
                                  ? ourShortcut(outcome->results)
                                  : std::nullopt;
        if (!shortcut) {
            bindShortcut();
            return;
        }
        reportMissingKey(shortcut);
        tellKeys(keysOf(shortcut));
        finish({});
    };
    new PortalRequest(*bus_, question, token, answer, this);
}

void PortalShortcutBinding::bindShortcut() {
    const QString token = PortalRequest::newToken();
    const QString noWindow;
    QDBusMessage question = call(globalShortcuts, QStringLiteral("BindShortcuts"));
    question << QVariant::fromValue(QDBusObjectPath(session_)) << shortcuts() << noWindow
             << QVariantMap{{QStringLiteral("handle_token"), token}};
    const auto answer = [this, attempt = attempt_](const Result<PortalResponse>& outcome) {
        if (attempt != attempt_)
            return;
        if (!outcome) {
            finish({HotKeyStatus::unavailable,
                    "the desktop's portal binds no shortcuts: " + words(outcome.error().message)});
        } else if (outcome->code == PortalResponse::cancelledByUser) {
            finish({HotKeyStatus::taken, "it was not allowed"});
        } else if (outcome->code != PortalResponse::success) {
            finish({HotKeyStatus::unavailable, "the desktop's portal did not bind it"});
        } else {
            const auto shortcut = ourShortcut(outcome->results);
            reportMissingKey(shortcut);
            tellKeys(keysOf(shortcut));
            finish({});
        }
    };
    new PortalRequest(*bus_, question, token, answer, this);
}

void PortalShortcutBinding::closeSession(const QString& session) {
    if (portal_.isEmpty())
        return;
    ++closingSessions_;
    const QDBusMessage close =
        QDBusMessage::createMethodCall(portal_, session, sessionInterface, QStringLiteral("Close"));
    auto* reply = new QDBusPendingCallWatcher(bus_->asyncCall(close), this);
    connect(reply, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* finished) {
        finished->deleteLater();
        --closingSessions_;
        createWantedSession();
    });
}

/// Its sessions and its answers are gone with it.
void PortalShortcutBinding::forgetPortal() {
    qDeleteAll(findChildren<PortalRequest*>(Qt::FindDirectChildrenOnly));
    portal_.clear();
    configurable_ = false;
    desktopKeys.set(std::nullopt);
    session_.clear();
    creatingSession_ = false;
    sessionWanted_ = false;
}

void PortalShortcutBinding::portalOwnerChanged(const QString& owner) {
    if (owner == portal_)
        return;
    if (!portal_.isEmpty()) {
        ++attempt_;
        forgetPortal();
        if (trigger_)
            finish({HotKeyStatus::unavailable, "the desktop's portal is gone"});
    }
    if (!owner.isEmpty() && trigger_)
        findPortal();
}

void PortalShortcutBinding::tellKeys(const QString& description) {
    desktopKeys.set(DesktopKeys{words(description.toStdString()), configurable_});
}

/// What was bound once stays wanted; whoever waits for an answer gets it and may try another way.
void PortalShortcutBinding::finish(const BindingOutcome& outcome) {
    const bool bound = outcome.status == HotKeyStatus::noError;
    if (!bound && !session_.isEmpty())
        closeSession(std::exchange(session_, {}));
    const auto answer = std::exchange(answer_, nullptr);
    if (!answer) {
        if (!bound)
            log("the global shortcut is lost: " + outcome.reason);
        return;
    }
    if (!bound)
        trigger_.reset();
    answer(outcome);
}

QDBusMessage PortalShortcutBinding::call(const QString& interface, const QString& method) const {
    return QDBusMessage::createMethodCall(portal_, portal::path, interface, method);
}

QString PortalShortcutBinding::sessionToken() const {
    return QStringLiteral("quillo_") +
           QString::fromStdString(*trigger_).replace(QLatin1Char('+'), QLatin1Char('_'));
}

QVariant PortalShortcutBinding::shortcuts() const {
    return QVariant::fromValue(
        QList<PortalShortcut>{{shortcutId,
                               {{QStringLiteral("description"), description_},
                                {QStringLiteral("preferred_trigger"), QString::fromStdString(*trigger_)}}}});
}

void PortalShortcutBinding::activated(const QDBusObjectPath& session, const QString& shortcut, qulonglong,
                                      const QVariantMap& options) {
    if (session_.isEmpty() || session.path() != session_ || shortcut != shortcutId)
        return;
    const QString token = options.value(QStringLiteral("activation_token")).toString();
    pressed.emit(token.size() <= longestText ? token.toStdString() : std::string());
}

void PortalShortcutBinding::shortcutsChanged(const QDBusMessage& message) {
    const QVariantList arguments = message.arguments();
    if (!desktopKeys.get() || message.signature() != QLatin1String("oa(sa{sv})") ||
        arguments.at(0).value<QDBusObjectPath>().path() != session_)
        return;
    if (const auto shortcut = ourShortcut(arguments.at(1)))
        tellKeys(keysOf(shortcut));
}

} // namespace quillo

#include "moc_PortalShortcutBinding.cpp"
