/// The running desktop program, from taking hold of the list to letting go of it.
#pragma once

#include "app/AppServices.h"
#include "base/Result.h"
#include "base/Signal.h"
#include "linux/SessionBusName.h"
#include "linux/TerminationSignals.h"

#include <QElapsedTimer>
#include <QTimer>
#include <filesystem>
#include <memory>
#include <optional>

namespace quillo {

/// Needs the event loop of an application object. Belongs to the main thread.
class Application {
public:
    explicit Application(std::filesystem::path folder);

    /// Begins, from the event loop. Ends it with exit code 0 when the program is asked to quit, or when it
    /// finds that another one has the folder (which is asked to come up instead); with 1 when it cannot have
    /// the folder.
    void start();

private:
    void takeFolder();
    void begin(PreferencesLock lock);
    void quit();
    void fail(const Error& error);

    const std::filesystem::path folder_;
    TerminationSignals terminationSignals_;
    SessionBusName busName_;
    QTimer retry_;
    QElapsedTimer waited_;
    std::unique_ptr<AppServices> services_;
    bool quitting_ = false;
    std::vector<Connection> connections_;
};

} // namespace quillo
