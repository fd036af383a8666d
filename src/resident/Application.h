/// The running desktop program, from taking hold of the list to letting go of it.
#pragma once

#include "base/Result.h"
#include "base/Signal.h"
#include "control/Request.h"
#include "linux/SessionBusName.h"
#include "linux/TerminationSignals.h"
#include "resident/AppServices.h"

#include <QElapsedTimer>
#include <QTimer>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quillo {

/// Needs the event loop of an application object. Belongs to the main thread.
class Application {
public:
    /// `wanted` is the window that the program was started for, if any: should another one have the folder,
    /// it is asked for that.
    Application(std::filesystem::path folder, std::optional<control::Show::Window> wanted);

    /// Emitted once, when it is clear that no other program has the folder; it may still take some seconds
    /// until a command lets go of it.
    Signal<> staying;

    /// Emitted once, when the list is there.
    Signal<AppServices&> opened;

    /// A window is asked for through the session bus; with a token with which it may take the focus, or an
    /// empty one.
    Signal<control::Show::Window, const std::string& /*token*/> windowRequested;

    /// Ends the program with exit code 0, once everything is on disk.
    void quit();

    /// Begins, from the event loop. Ends it with exit code 0 when the program is asked to quit, or when it
    /// finds that another one has the folder (which is asked to come up instead); with 1 when it cannot have
    /// the folder.
    void start();

private:
    void takeFolder();
    void begin(PreferencesLock lock);
    void handOver();
    void fail(const Error& error);

    const std::filesystem::path folder_;
    const std::optional<control::Show::Window> wanted_;
    TerminationSignals terminationSignals_;
    SessionBusName busName_;
    QTimer retry_;
    QElapsedTimer waited_;
    std::unique_ptr<AppServices> services_;
    bool staying_ = false;
    bool quitting_ = false;
    std::vector<Connection> connections_;
};

} // namespace quillo
