/// What the settings window shows and does.
#pragma once

#include "base/CallbackScope.h"
#include "base/Signal.h"
#include "entry/MenuActions.h"
#include "ports/LoginItem.h"
#include "ports/Preferences.h"
#include "stats/StatsStore.h"
#include "store/TodoStore.h"
#include "ui/recorder/HotKeyRecorder.h"
#include "ui/sync/SyncModel.h"

#include <QtQml/qqmlregistration.h>

#include <QObject>
#include <QString>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace quillo {

/// What a SettingsModel works with; all of it outlives the model.
struct SettingsModelDependencies {
    Preferences& preferences;
    TodoStore& store;
    LoginItem& loginItem;
    HotKeyRecorderDependencies recorder;
    SyncModelDependencies sync;
    std::function<StatsStore&()> statsStore;
    const MenuActions& actions;
    std::function<bool()> automaticallyChecksForUpdates;
    std::function<void(bool)> setAutomaticallyChecksForUpdates;
    std::function<void(const std::string& address)> openUrl;
};

/// Every change acts at once. Belongs to the main thread.
class SettingsModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the shell.")

    Q_PROPERTY(bool launchAtLogin READ launchAtLogin WRITE setLaunchAtLogin NOTIFY launchAtLoginChanged)
    Q_PROPERTY(bool cloudSync READ cloudSync WRITE setCloudSync NOTIFY cloudSyncChanged)
    Q_PROPERTY(bool statisticsEnabled READ statisticsEnabled WRITE setStatisticsEnabled NOTIFY
                   statisticsEnabledChanged)
    Q_PROPERTY(
        bool automaticUpdates READ automaticUpdates WRITE setAutomaticUpdates NOTIFY automaticUpdatesChanged)
    Q_PROPERTY(bool anyDone READ anyDone NOTIFY anyDoneChanged)
    Q_PROPERTY(QString version READ version CONSTANT)
    Q_PROPERTY(quillo::HotKeyRecorder* recorder READ recorder CONSTANT)
    Q_PROPERTY(quillo::SyncModel* sync READ sync CONSTANT)

public:
    explicit SettingsModel(SettingsModelDependencies dependencies);

    /// Reads everything anew: the window is about to be shown.
    Q_INVOKABLE void refresh();

    /// Whether the program starts at login; as it was last known, until the desktop has told how it is.
    bool launchAtLogin() const { return launchAtLogin_; }

    /// What the desktop does not let happen goes back to what it was.
    void setLaunchAtLogin(bool launch);

    bool cloudSync() const { return cloudSync_; }

    /// Turning it on puts the list into the cloud store at once.
    void setCloudSync(bool on);

    bool statisticsEnabled() const { return statisticsEnabled_; }
    void setStatisticsEnabled(bool enabled);

    bool automaticUpdates() const { return automaticUpdates_; }
    void setAutomaticUpdates(bool automatic);

    /// Whether there are done tasks.
    bool anyDone() const { return with_.store.doneCount().get() > 0; }

    /// Of the program, for people; may be empty.
    QString version() const;

    HotKeyRecorder* recorder() { return &recorder_; }
    SyncModel* sync() { return &sync_; }

    Q_INVOKABLE void clearCompleted();
    Q_INVOKABLE void resetStatistics();

    Q_INVOKABLE void exportMarkdown();
    Q_INVOKABLE void exportJson();
    Q_INVOKABLE void checkForUpdates();

    Q_INVOKABLE void visitWebsite();
    Q_INVOKABLE void contactSupport();

Q_SIGNALS:
    void launchAtLoginChanged();
    void cloudSyncChanged();
    void statisticsEnabledChanged();
    void automaticUpdatesChanged();
    void anyDoneChanged();

private:
    using Notification = void (SettingsModel::*)();

    void showValue(bool& shown, bool value, Notification changed);
    void keepLaunchAtLogin(bool launch);

    const SettingsModelDependencies with_;
    HotKeyRecorder recorder_;
    SyncModel sync_;
    bool launchAtLogin_ = false;
    bool cloudSync_ = true;
    bool statisticsEnabled_ = true;
    bool automaticUpdates_ = false;
    std::uint64_t launchChange_ = 0; ///< counts them: answers to earlier ones come too late
    std::vector<Connection> connections_;
    CallbackScope scope_;
};

} // namespace quillo
