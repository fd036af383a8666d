#include "app/Application.h"

#include "base/Log.h"
#include "control/Client.h"

#include <QCoreApplication>
#include <utility>

namespace quillo {

namespace {

/// How long a command may hold the list before the program gives up.
constexpr std::chrono::seconds longestCommand{5};

} // namespace

Application::Application(std::filesystem::path folder) : folder_(std::move(folder)) {
    retry_.setInterval(PreferencesLock::interval);
    QObject::connect(&retry_, &QTimer::timeout, [this] { takeFolder(); });
    connections_.push_back(terminationSignals_.received.connect([this] { quit(); }));
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
    } else if (*lock) {
        begin(*std::move(*lock));
    } else if (control::isServed(folder_)) {
        SessionBusName::activateOwner();
        QCoreApplication::exit(0);
    } else if (std::chrono::milliseconds(waited_.elapsed()) < longestCommand) {
        retry_.start();
    } else {
        fail(PreferencesLock::heldByAnother(folder_));
    }
}

void Application::begin(PreferencesLock lock) {
    auto services = AppServices::open(folder_, std::move(lock));
    if (!services) {
        fail(services.error());
        return;
    }
    services_ = std::move(*services);
    connections_.push_back(services_->quitRequested.connect([this] { quit(); }));
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
