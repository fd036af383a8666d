#include "ui/settings/SettingsModel.h"

#include "base/Log.h"
#include "base/Product.h"

#include <QCoreApplication>
#include <optional>
#include <utility>

namespace quillo {

namespace {

/// Where the translation leads; the product's page where there is none.
std::string websiteAddress() {
    const QString translated = QCoreApplication::translate("Quillo", "WEBSITE_URL");
    return translated != QLatin1String("WEBSITE_URL") ? translated.toStdString() : product::website;
}

} // namespace

SettingsModel::SettingsModel(SettingsModelDependencies dependencies)
    : with_(std::move(dependencies)), recorder_(with_.recorder), sync_(with_.sync) {
    connections_.push_back(
        with_.store.doneCount().observe([this](std::int64_t) { Q_EMIT anyDoneChanged(); }));
    launchAtLogin_ = with_.preferences.boolean(preference_keys::launchAtLogin).value_or(false);
}

void SettingsModel::refresh() {
    showValue(launchAtLogin_, with_.preferences.boolean(preference_keys::launchAtLogin).value_or(false),
              &SettingsModel::launchAtLoginChanged);
    showValue(cloudSync_, with_.preferences.boolean(preference_keys::cloudSync).value_or(true),
              &SettingsModel::cloudSyncChanged);
    showValue(statisticsEnabled_, with_.statsStore().isEnabled(), &SettingsModel::statisticsEnabledChanged);
    showValue(automaticUpdates_, with_.automaticallyChecksForUpdates(),
              &SettingsModel::automaticUpdatesChanged);
    with_.loginItem.read(scope_.guard([this, change = launchChange_](std::optional<bool> startsAtLogin) {
        if (startsAtLogin && change == launchChange_)
            keepLaunchAtLogin(*startsAtLogin);
    }));
}

void SettingsModel::setLaunchAtLogin(bool launch) {
    if (launchAtLogin_ == launch)
        return;
    keepLaunchAtLogin(launch);
    with_.loginItem.change(launch,
                           scope_.guard([this, launch, change = ++launchChange_](const Outcome& outcome) {
                               if (outcome)
                                   return;
                               log("starting at login stays as it is: " + outcome.error().message);
                               if (change == launchChange_)
                                   keepLaunchAtLogin(!launch);
                           }));
}

void SettingsModel::setCloudSync(bool on) {
    if (cloudSync_ == on)
        return;
    with_.preferences.set(preference_keys::cloudSync, on);
    showValue(cloudSync_, on, &SettingsModel::cloudSyncChanged);
    if (on)
        with_.store.pushToCloud();
}

void SettingsModel::setStatisticsEnabled(bool enabled) {
    if (statisticsEnabled_ == enabled)
        return;
    with_.preferences.set(preference_keys::statsEnabled, enabled);
    showValue(statisticsEnabled_, enabled, &SettingsModel::statisticsEnabledChanged);
}

void SettingsModel::setAutomaticUpdates(bool automatic) {
    if (automaticUpdates_ == automatic)
        return;
    with_.setAutomaticallyChecksForUpdates(automatic);
    showValue(automaticUpdates_, automatic, &SettingsModel::automaticUpdatesChanged);
}

QString SettingsModel::version() const {
    return QString::fromLatin1(product::version);
}

void SettingsModel::clearCompleted() {
    with_.store.clearCompleted();
}

void SettingsModel::resetStatistics() {
    with_.statsStore().reset();
}

void SettingsModel::exportMarkdown() {
    with_.actions.exportMarkdown();
}

void SettingsModel::exportJson() {
    with_.actions.exportJson();
}

void SettingsModel::checkForUpdates() {
    with_.actions.checkForUpdates();
}

void SettingsModel::visitWebsite() {
    with_.openUrl(websiteAddress());
}

void SettingsModel::contactSupport() {
    with_.openUrl(std::string("mailto:") + product::supportAddress);
}

void SettingsModel::showValue(bool& shown, bool value, Notification changed) {
    if (std::exchange(shown, value) != value)
        Q_EMIT(this->*changed)();
}

/// Shows it, and remembers it where it is news.
void SettingsModel::keepLaunchAtLogin(bool launch) {
    if (with_.preferences.boolean(preference_keys::launchAtLogin).value_or(false) != launch)
        with_.preferences.set(preference_keys::launchAtLogin, launch);
    showValue(launchAtLogin_, launch, &SettingsModel::launchAtLoginChanged);
}

} // namespace quillo
