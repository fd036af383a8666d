#include "resident/Application.h"

#include "base/Log.h"
#include "control/Client.h"

#include <QCoreApplication>
#include <utility>

namespace quillo {

namespace {

/// How long a command may hold the list before the program gives up.
constexpr std::chrono::seconds longestCommand{5};

} // namespace

Application::Application(std::filesystem::path folder, std::optional<control::Show::Window> wanted)
    : folder_(std::move(folder)), wanted_(wanted) {
    retry_.setInterval(PreferencesLock::interval);
    QObject::connect(&retry_, &QTimer::timeout, [this] { takeFolder(); });
    connections_.push_back(terminationSignals_.received.connect([this] { quit(); }));
    connections_.push_back(busName_.activated.connect(
        [this](const std::string& token) { windowRequested.emit(control::Show::Window::popover, token); }));
    connections_.push_back(
        busName_.actionActivated.connect([this](const std::string& action, const std::string& token) {
            if (const auto window = control::windowNamed(action))
                windowRequested.emit(*window, token);
            else
                log("there is no action \"" + action + "\"");
        }));
    connections_.push_back(busName_.busLost.connect([this] {
        log("the session bus is gone");
        quit();
    }));
}

void Application::start() {
    waited_.start();
    QTimer::singleShot(0, [this] { takeFolder(); });
}

void Application::takeFolder() {
    retry_.stop();
    if (quitting_)
        return;
    auto lock = PreferencesLock::tryAcquire(folder_);
    if (!lock) {
        fail(lock.error());
        return;
    }
    if (!*lock && control::isServed(folder_)) {
        handOver();
        return;
    }
    if (!std::exchange(staying_, true))
        staying.emit();
    if (*lock) {
        begin(*std::move(*lock));
    } else if (std::chrono::milliseconds(waited_.elapsed()) < longestCommand) {
        retry_.start();
    } else {
        fail(PreferencesLock::heldByAnother(folder_));
    }
}

/// To the program that has the folder.
void Application::handOver() {
    if (wanted_) {
        const auto answer = control::ask(folder_, {control::Show{*wanted_}, "UTC", "en_US"});
        if (answer && !*answer)
            log(answer->error().message);
    }
    QCoreApplication::exit(0);
}

void Application::begin(PreferencesLock lock) {
    auto services = AppServices::open(folder_, std::move(lock));
    if (!services) {
        fail(services.error());
        return;
    }
    services_ = std::move(*services);
    connections_.push_back(services_->quitRequested.connect([this] { quit(); }));
    opened.emit(*services_);
    switch (busName_.acquire()) {
    case SessionBusName::Outcome::Owned:
        break;
    case SessionBusName::Outcome::OwnedByAnother:
        log("another Quillo, with another folder, has the name on the session bus");
        break;
    case SessionBusName::Outcome::Refused:
        log("the session bus does not give us our name");
        break;
    case SessionBusName::Outcome::NoBus:
        log("there is no session bus: no notifications are shown");
        break;
    }
}

void Application::quit() {
    if (std::exchange(quitting_, true))
        return;
    busName_.release();
    if (services_)
        services_->stop([] { QCoreApplication::exit(0); });
    else
        QCoreApplication::exit(0);
}

void Application::fail(const Error& error) {
    log(error.message);
    QCoreApplication::exit(1);
}

} // namespace quillo
