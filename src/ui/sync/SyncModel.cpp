#include "ui/sync/SyncModel.h"

#include "sync/SyncPlace.h"
#include "sync/SyncStatus.h"
#include "sync/ThisDevice.h"

#include <QFile>
#include <filesystem>
#include <utility>
#include <variant>

namespace quillo {

namespace {

/// The text that readSyncPlace() reads.
std::string textOf(SyncModel::Place place, const QString& where, const QString& user) {
    const std::string trimmed = where.trimmed().toStdString();
    switch (place) {
    case SyncModel::Place::Nowhere:
        break;
    case SyncModel::Place::Folder:
        return "folder " + trimmed;
    case SyncModel::Place::Server:
        return "webdav " + trimmed + (user.isEmpty() ? "" : ' ' + user.toStdString());
    }
    return toText(NoPlace{});
}

std::optional<std::string> typed(const QString& password) {
    return password.isEmpty() ? std::nullopt : std::optional(password.toStdString());
}

} // namespace

SyncModel::SyncModel(const SyncModelDependencies& dependencies)
    : with_(dependencies), format_(with_.calendar.zone(), with_.calendar.locale()) {
    connections_.push_back(with_.cloud.exchanged.connect([this] { Q_EMIT changed(); }));
}

void SyncModel::refresh() {
    dismiss();
    format_ = unicode::DateFormat(with_.calendar.zone(), with_.calendar.locale());
    Q_EMIT changed();
    with_.store.listEarlier(scope_.guard([this](const std::vector<UtcMilliseconds>& times) {
        earlierLists_.clear();
        for (const UtcMilliseconds time : times)
            earlierLists_ += forPeople(
                Instant::fromUnixSeconds(static_cast<double>(time.time_since_epoch().count()) / 1000));
        Q_EMIT earlierListsChanged();
    }));
}

template <class Kind>
std::optional<Kind> SyncModel::chosen() const {
    const SyncPlace place = chosenSyncPlace(with_.preferences);
    const auto* const found = std::get_if<Kind>(&place);
    return found != nullptr ? std::optional(*found) : std::nullopt;
}

SyncModel::Place SyncModel::place() const {
    return chosen<SyncedFolder>() ? Place::Folder : chosen<WebDavFolder>() ? Place::Server : Place::Nowhere;
}

QString SyncModel::folder() const {
    const auto folder = chosen<SyncedFolder>();
    return folder ? QFile::decodeName(folder->root.c_str()) : QString();
}

QString SyncModel::address() const {
    const auto server = chosen<WebDavFolder>();
    return server ? QString::fromStdString(server->url) : QString();
}

QString SyncModel::user() const {
    const auto server = chosen<WebDavFolder>();
    return server ? QString::fromStdString(server->user) : QString();
}

QString SyncModel::lastInStep() const {
    const auto& last = with_.cloud.status().lastInStep;
    return last ? forPeople(*last) : QString();
}

QString SyncModel::problem() const {
    return QString::fromStdString(with_.cloud.status().problem.value_or(""));
}

QList<SyncedComputer> SyncModel::computers() const {
    const Uuid here = thisDevice(with_.preferences).id;
    QList<SyncedComputer> computers;
    for (const FoundDevice& found : with_.cloud.status().devices) {
        const bool isHere = found.device.id == here;
        computers += SyncedComputer{
            QString::fromStdString(found.device.id.toString()),
            isHere ? tr("This computer") : QString::fromStdString(found.device.name),
            found.stamp > 0 ? forPeople(Instant::fromUnixSeconds(found.stamp)) : QString(),
            !isHere && isSilent(found, with_.clock.now()),
        };
    }
    return computers;
}

void SyncModel::test(Place place, const QString& where, const QString& user, const QString& password) {
    begin();
    with_.commands.test(
        {textOf(place, where, user), "", typed(password)},
        scope_.guard([this](const Outcome& outcome) { endWith(outcome, tr("The place can be used.")); }));
}

void SyncModel::use(Place place, const QString& where, const QString& user, const QString& password) {
    wanted_ = {textOf(place, where, user), "", typed(password)};
    choose("");
}

void SyncModel::choose(std::string keep) {
    wanted_.keep = std::move(keep);
    begin();
    with_.commands.choose(wanted_, scope_.guard([this](const Result<std::optional<BothHaveTasks>>& chosen) {
        both_ = chosen ? *chosen : std::nullopt;
        if (!both_)
            wanted_ = {}; // The password is not kept longer than it is needed.
        end(chosen ? QString() : QString::fromStdString(chosen.error().message), !chosen);
        if (chosen && !both_) {
            Q_EMIT changed();
            Q_EMIT used();
        }
    }));
}

void SyncModel::dismiss() {
    wanted_ = {};
    both_.reset();
    answer_.clear();
    failed_ = false;
    Q_EMIT answered();
}

void SyncModel::syncNow() {
    begin();
    with_.commands.now({}, scope_.guard([this](const control::Answer& answer) {
        endWith(answer ? success() : Outcome(answer.error()), tr("In step."));
        Q_EMIT changed();
    }));
}

void SyncModel::forget(const QString& device) {
    begin();
    with_.commands.forget({device.toStdString()}, scope_.guard([this](const control::Answer& answer) {
        endWith(answer ? success() : Outcome(answer.error()), tr("The computer was forgotten."));
        Q_EMIT changed();
    }));
}

void SyncModel::restore(int which) {
    begin();
    with_.store.restoreEarlier(static_cast<std::size_t>(which) + 1,
                               scope_.guard([this](const Outcome& outcome) {
                                   refresh();
                                   endWith(outcome, tr("The earlier list is back."));
                               }));
}

void SyncModel::chooseFolder() {
    with_.folderPanel.ask({tr("Folder to Sync Through").toStdString(), folder().toStdString()},
                          scope_.guard([this](const std::optional<std::filesystem::path>& folder) {
                              if (folder)
                                  Q_EMIT folderChosen(QFile::decodeName(folder->c_str()));
                          }));
}

void SyncModel::begin() {
    busy_ = true;
    both_.reset();
    answer_.clear();
    failed_ = false;
    Q_EMIT answered();
}

void SyncModel::end(const QString& answer, bool failed) {
    busy_ = false;
    answer_ = answer;
    failed_ = failed;
    Q_EMIT answered();
}

void SyncModel::endWith(const Outcome& outcome, const QString& success) {
    end(outcome ? success : QString::fromStdString(outcome.error().message), !outcome);
}

QString SyncModel::forPeople(Instant instant) const {
    return QString::fromStdString(format_.dateAndTime(instant));
}

} // namespace quillo
