/// Looking for newer releases of the program.
#pragma once

#include "base/Clock.h"
#include "base/Signal.h"
#include "ports/Preferences.h"
#include "ports/Updater.h"
#include "ports/WallClockTimer.h"
#include "ui/updates/UpdateModel.h"

#include <functional>
#include <string>
#include <vector>

namespace quillo {

/// What an UpdaterController works with; all of it outlives the controller.
struct UpdaterControllerDependencies {
    Updater& updater;
    Preferences& preferences;
    const Clock& clock;
    WallClockTimer& timer;
    std::function<void()> showWindow;  ///< the one with model(), also where it is shown already
    std::function<void()> offerWindow; ///< the same, and nobody has asked: the keyboard stays where it is
    std::function<void()> hideWindow;
    std::string version; ///< of this program, for people
};

/// The single owner of it: looks when the user asks, and daily where the user wants that. One a process.
/// Belongs to the main thread.
class UpdaterController {
public:
    explicit UpdaterController(UpdaterControllerDependencies dependencies);

    /// Once, at launch: from now on it looks by itself, where that is on. Costs nothing where it is off.
    void start();

    /// Looks because the user asks, and shows what comes of it.
    void checkForUpdates();

    /// Whether it looks by itself. Off until the user turns it on: a program that nobody asked to call home
    /// does not.
    bool automaticallyChecksForUpdates() const;
    void setAutomaticallyChecksForUpdates(bool automatic);

    /// What its window shows.
    UpdateModel& model() { return model_; }

private:
    void schedule();
    void checkInBackground();
    void noteCheck();

    const UpdaterControllerDependencies with_;
    UpdateModel model_;
    std::vector<Connection> connections_;
};

} // namespace quillo
