#include "windows/UpdaterController.h"

#include <QRandomGenerator>
#include <algorithm>
#include <optional>
#include <utility>
#include <variant>

namespace quillo {

namespace {

constexpr double day = 86400;
/// Later by up to so much, so that not everybody asks at the same time.
constexpr double spread = 3600;
/// The first seconds of a session belong to others.
constexpr double settling = 60;

} // namespace

UpdaterController::UpdaterController(UpdaterControllerDependencies dependencies)
    : with_(std::move(dependencies)), model_(with_.updater, with_.version) {
    connections_.push_back(with_.timer.fired.connect([this] { checkInBackground(); }));
    connections_.push_back(with_.timer.clockChanged.connect([this] { schedule(); }));
    QObject::connect(&model_, &UpdateModel::finished, &model_, [this] { with_.hideWindow(); });
    QObject::connect(&model_, &UpdateModel::skipped, &model_, [this](const std::string& build) {
        with_.preferences.set(preference_keys::updatesSkipped, build);
    });
}

void UpdaterController::start() {
    schedule();
}

void UpdaterController::checkForUpdates() {
    noteCheck();
    model_.check();
    with_.showWindow();
}

bool UpdaterController::automaticallyChecksForUpdates() const {
    return with_.preferences.boolean(preference_keys::updatesAutomatic).value_or(false);
}

void UpdaterController::setAutomaticallyChecksForUpdates(bool automatic) {
    with_.preferences.set(preference_keys::updatesAutomatic, automatic);
    schedule();
}

/// Arms the timer for the next look, or lets it rest.
void UpdaterController::schedule() {
    if (!automaticallyChecksForUpdates()) {
        with_.timer.disarm();
        return;
    }
    const Instant now = with_.clock.now();
    const Instant soon = now + settling;
    const auto last = with_.preferences.real(preference_keys::updatesLastCheck);
    // A check in the future is one from before the clock was set back.
    if (!last || Instant::fromUnixSeconds(*last) > now) {
        with_.timer.arm(soon);
        return;
    }
    const double later = QRandomGenerator::global()->bounded(spread);
    with_.timer.arm(std::max(soon, Instant::fromUnixSeconds(*last) + (day + later)));
}

void UpdaterController::checkInBackground() {
    noteCheck();
    if (model_.stage() != UpdateModel::Idle)
        return; // The user is at it.
    // Nothing is said of what goes wrong; the updater logs it.
    with_.updater.check([this](const Updater::CheckResult& result) {
        const auto* offer = std::get_if<UpdateOffer>(&result);
        if (offer == nullptr ||
            with_.preferences.text(preference_keys::updatesSkipped) == std::optional(offer->build))
            return;
        model_.offer(*offer);
        with_.offerWindow();
    });
}

void UpdaterController::noteCheck() {
    with_.preferences.set(preference_keys::updatesLastCheck, with_.clock.now().unixSeconds());
    schedule();
}

} // namespace quillo
