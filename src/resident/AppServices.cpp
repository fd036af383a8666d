#include "resident/AppServices.h"

#include "base/Log.h"
#include "base/Product.h"
#include "classifier/EmbeddedClassifier.h"
#include "control/Client.h"
#include "languagemodel/MakeLanguageModel.h"
#include "languagemodel/PreferredLanguageModel.h"
#include "sync/MakeCarrier.h"
#include "unicode/SystemPlace.h"

#include <QCoreApplication>
#include <QString>
#include <QTimer>
#include <cstddef>
#include <utility>
#include <variant>

namespace quillo {

namespace {

/// What could not be written stays in memory, unlike where a command works by itself.
control::Answer notWritten(const Error& error) {
    return Error{error.message + "; the running Quillo keeps the change and tries again with the next one"};
}

/// One text for one, as there may be no catalogue to choose the form.
std::string moreRemindersText(std::size_t count) {
    const int number = static_cast<int>(count);
    const QString text =
        number == 1 ? QCoreApplication::translate("Quillo", "1 more reminder was due")
                    : QCoreApplication::translate("Quillo", "%n more reminders were due", nullptr, number);
    return text.toStdString();
}

NotificationContent wantedPassword(const WebDavFolder& place) {
    const QString body = QCoreApplication::translate(
        "Quillo",
        "The password for %1 at %2 is not known. Give it in the settings, and your list is in step again.");
    return {.title = QCoreApplication::translate("Quillo", "Sync needs your password").toStdString(),
            .body =
                body.arg(QString::fromStdString(place.user), QString::fromStdString(place.url)).toStdString(),
            .sound = false};
}

} // namespace

Result<std::unique_ptr<AppServices>> AppServices::open(const std::filesystem::path& folder,
                                                       PreferencesLock lock) {
    auto preferences = SqlitePreferences::open(folder, SqlitePreferences::Access::ReadWrite);
    if (!preferences)
        return preferences.error();
    auto calendar = unicode::CivilCalendar::create(unicode::systemTimeZone(), unicode::systemLocale());
    if (!calendar)
        return Error{"unknown time zone \"" + unicode::systemTimeZone() + "\""};
    std::unique_ptr<AppServices> services(
        new AppServices(folder, std::move(lock), std::move(*preferences), std::move(*calendar)));
    // A list that could not be read because of the disk is not an empty one.
    if (const Outcome read = services->preferences_->flush(); !read)
        return read.error();

    auto server = ControlServer::listen(
        folder, [raw = services.get()](const auto& request, auto reply) { raw->serve(request, reply); });
    if (!server)
        log(server.error().message); // The program works, commands do not reach it.
    else
        services->server_ = std::move(*server);
    return services;
}

AppServices::AppServices(const std::filesystem::path& folder, PreferencesLock lock,
                         std::unique_ptr<SqlitePreferences> preferences, unicode::CivilCalendar calendar)
    : lock_(std::move(lock)), preferences_(std::move(preferences)),
      cloud_(folder, mainExecutor_, clock_,
             makeCarrier(chosenSyncPlace(*preferences_), PlaceIs::SetUp, *preferences_, passwords_)),
      languageModel_([this] {
          return makeLanguageModel(preferredLanguageModel(preferences_.get()).choice, mainExecutor_,
                                   makeEmbeddedClassifier);
      }),
      backups_(folder, clock_), calendar_(std::move(calendar)),
      services_(
          Surroundings{*preferences_, cloud_, clock_, calendar_, mainExecutor_, backups_, &languageModel_}),
      syncCommands_(SyncCommandsDependencies{*preferences_, cloud_, services_.todoStore(), clock_,
                                             mainExecutor_, passwords_}),
      desktopNotifications_(product::desktopFile),
      alignment_(ReminderAlignmentDependencies{services_.todoStore(), services_.reminderBook(), clock_,
                                               calendar_, mainExecutor_}),
      aligned_(alignment_.aligned.connect([this] {
          if (!delivery_)
              delivery_.emplace(ReminderDeliveryDependencies{services_.reminderBook(), clock_, calendar_,
                                                             timer_, desktopNotifications_,
                                                             moreRemindersText});
      })),
      zoneWatched_(timeZoneWatch_.changed.connect([this] { followTimeZone(); })),
      exchanged_(cloud_.exchanged.connect([this] { askForPassword(); })) {}

/// Where no keyring keeps it, it has to be given at each start.
void AppServices::askForPassword() {
    const SyncPlace place = chosenSyncPlace(*preferences_);
    const auto* const server = std::get_if<WebDavFolder>(&place);
    if (askedForPassword_ || server == nullptr ||
        cloud_.status().problem != passwordIsWanted(*server).message)
        return;
    askedForPassword_ = true;
    desktopNotifications_.show("Quillo.sync.password", wantedPassword(*server), [](bool) {});
}

void AppServices::serve(const control::Request& request, const ControlServer::Reply& reply) {
    if (std::holds_alternative<control::Quit>(request.command)) {
        // First, as whoever is told may start another at once, which must not find us listening.
        quitRequested.emit();
        reply(std::vector<control::NumberedItem>{});
        return;
    }
    if (const auto* window = std::get_if<control::Show>(&request.command)) {
        reply(show(*window));
        return;
    }
    if (const auto* model = std::get_if<control::UseModel>(&request.command)) {
        replyOnceSaved(use(*model), reply);
        return;
    }
    const auto replyLater = [this, reply](const control::Answer& answer) { replyOnceSaved(answer, reply); };
    if (const auto* sync = std::get_if<control::UseSync>(&request.command))
        syncCommands_.use(*sync, replyLater);
    else if (const auto* now = std::get_if<control::SyncNow>(&request.command))
        syncCommands_.now(*now, replyLater);
    else if (const auto* forget = std::get_if<control::ForgetDevice>(&request.command))
        syncCommands_.forget(*forget, replyLater);
    else
        services_.commands().answer(request, replyLater);
}

/// Whoever asked may rely on what is answered: it is on disk by then.
void AppServices::replyOnceSaved(const control::Answer& answer, const ControlServer::Reply& reply) {
    if (!answer) {
        reply(answer);
        return;
    }
    services_.whenSaved([this, reply, answer](const Outcome& saved) {
        commits_.post([this, reply, answer, saved] {
            const Outcome outcome = saved ? preferences_->flush() : saved;
            mainExecutor_.post(
                [reply, answer = outcome ? answer : notWritten(outcome.error())] { reply(answer); });
        });
    });
}

control::Answer AppServices::show(const control::Show& what) const {
    if (!show_)
        return Error{"the running Quillo has no screen"};
    const Outcome shown = show_(what.window);
    return shown ? control::Answer(std::vector<control::NumberedItem>{}) : control::Answer(shown.error());
}

control::Answer AppServices::use(const control::UseModel& what) {
    if (const Outcome kept = preferLanguageModel(*preferences_, what.choice); !kept)
        return kept.error();
    languageModel_.choiceChanged();
    return std::vector<control::NumberedItem>{};
}

void AppServices::addTask(const std::string& text) {
    // The zone is one that is known already.
    if (const auto place = places_.at(calendar_.zone(), calendar_.locale()))
        services_.addTask().add(text, *place);
}

void AppServices::prewarmLanguageModel() {
    if (const auto place = places_.at(calendar_.zone(), calendar_.locale()))
        (*place)->parser().prewarm(clock_.now());
}

void AppServices::stop(const std::function<void()>& done) {
    desktopNotifications_.stop();
    if (server_)
        server_->stop();
    services_.giveUpWaiting(); // Also what the server has just handed over.
    if (!busy()) {
        done();
        return;
    }
    const auto settle = [this, done] {
        if (!busy())
            done();
    };
    if (server_)
        idle_.push_back(server_->idle.connect(settle));
    idle_.push_back(desktopNotifications_.idle.connect(settle));
    QObject::connect(&giveUp_, &QTimer::timeout, [this, done] {
        log("what is still not answered is given up");
        idle_.clear();
        done();
    });
    giveUp_.setSingleShot(true);
    giveUp_.start(control::patience);
}

/// Whether commands are still to be answered, or a notification may be shown without being noted as such.
bool AppServices::busy() const {
    return (server_ && server_->busy()) || desktopNotifications_.busy();
}

void AppServices::followTimeZone() {
    auto calendar = unicode::CivilCalendar::create(unicode::systemTimeZone(), calendar_.locale());
    if (!calendar || calendar->zone() == calendar_.zone())
        return;
    calendar_ = std::move(*calendar);
    if (delivery_)
        delivery_->calendarChanged();
    zoneChanged.emit();
}

} // namespace quillo
