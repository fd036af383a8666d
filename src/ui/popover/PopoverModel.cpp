#include "ui/popover/PopoverModel.h"

#include "ui/row/DateTimes.h"
#include "ui/row/ReminderChoices.h"
#include "unicode/Text.h"

#include <QMetaObject>
#include <algorithm>
#include <cstdint>
#include <limits>
#include <optional>
#include <utility>

namespace quillo {

namespace {

int shownCount(std::int64_t count) {
    return static_cast<int>(std::min<std::int64_t>(count, std::numeric_limits<int>::max()));
}

/// Without the white space at both ends, as UTF-8.
std::string trimmed(const QString& text) {
    return unicode::toUtf8(unicode::trim(
        {reinterpret_cast<const char16_t*>(text.utf16()), static_cast<std::size_t>(text.size())}));
}

std::optional<Uuid> idOf(const QString& task) {
    return Uuid::parse(task.toStdString());
}

} // namespace

PopoverModel::PopoverModel(PopoverModelDependencies dependencies)
    : with_(std::move(dependencies)), tasks_(with_.store, with_.clock, with_.calendar) {
    connect(&tasks_, &TaskListModel::showCompletedChanged, this, &PopoverModel::showCompletedChanged);
    connect(&tasks_, &TaskListModel::activeChanged, this, &PopoverModel::activeChanged);
    connections_.push_back(
        with_.store.activeCount().observe([this](std::int64_t) { Q_EMIT activeCountChanged(); }));
    connections_.push_back(
        with_.store.doneCount().observe([this](std::int64_t) { Q_EMIT doneCountChanged(); }));
    connections_.push_back(with_.notifications.observe(notifications::shouldRequestReview, [this] {
        if (active())
            askForFeedback();
    }));
}

void PopoverModel::setNewItemText(const QString& text) {
    if (newItemText_ == text)
        return;
    newItemText_ = text;
    Q_EMIT newItemTextChanged();
}

int PopoverModel::activeCount() const {
    return shownCount(with_.store.activeCount().get());
}

int PopoverModel::doneCount() const {
    return shownCount(with_.store.doneCount().get());
}

bool PopoverModel::statisticsEnabled() const {
    return with_.statsStore().isEnabled();
}

void PopoverModel::setFeedbackShown(bool shown) {
    if (feedbackShown_ == shown)
        return;
    feedbackShown_ = shown;
    Q_EMIT feedbackShownChanged();
}

void PopoverModel::setCreditsShown(bool shown) {
    if (creditsShown_ == shown)
        return;
    creditsShown_ = shown;
    Q_EMIT creditsShownChanged();
}

void PopoverModel::setActive(bool active) {
    if (tasks_.active() == active)
        return;
    tasks_.setActive(active);
    if (!active)
        return;
    Q_EMIT statisticsEnabledChanged();
    askForFeedback();
}

void PopoverModel::submit() {
    std::string text = trimmed(newItemText_);
    if (text.empty())
        return;
    setNewItemText({});
    with_.addTask(std::move(text));
}

void PopoverModel::clearCompleted() {
    changeList([this] { with_.store.clearCompleted(); });
}

bool PopoverModel::toggle(const QString& task) {
    const auto id = idOf(task);
    if (!id || !with_.store.indexOf(*id))
        return false;
    changeList([this, id = *id] { with_.store.toggle(id); });
    return true;
}

void PopoverModel::rename(const QString& task, const QString& title) {
    const auto id = idOf(task);
    std::string newTitle = trimmed(title);
    if (!id || newTitle.empty())
        return;
    changeList([this, id = *id, newTitle = std::move(newTitle)] {
        const auto index = with_.store.indexOf(id);
        if (!index)
            return;
        TodoItem item = with_.store.items()[*index];
        item.title = newTitle;
        with_.store.update(std::move(item));
    });
}

void PopoverModel::remove(const QString& task) {
    if (const auto id = idOf(task))
        changeList([this, id = *id] { with_.store.remove(id); });
}

void PopoverModel::setReminder(const QString& task, const QDateTime& when) {
    const auto id = idOf(task);
    const auto instant = toInstant(when);
    if (id && instant)
        changeList([this, id = *id, instant = *instant] { with_.setReminder.set(id, instant); });
}

void PopoverModel::clearReminder(const QString& task) {
    if (const auto id = idOf(task))
        changeList([this, id = *id] { with_.setReminder.set(id, std::nullopt); });
}

void PopoverModel::perform(Action action) {
    const MenuActions& actions = with_.actions;
    switch (action) {
    case QuickAdd:
        return actions.quickAdd();
    case ExportMarkdown:
        return actions.exportMarkdown();
    case ExportJson:
        return actions.exportJson();
    case OpenStatistics:
        return actions.openStatistics({});
    case OpenSettings:
        return actions.openSettings({});
    case CheckForUpdates:
        return actions.checkForUpdates();
    case Quit:
        return actions.quit();
    }
}

QDateTime PopoverModel::reminderChoice(ReminderChoice which) const {
    const ReminderChoices choices = reminderChoices(with_.clock.now(), with_.calendar);
    switch (which) {
    case InOneHour:
        return toDateTime(choices.inOneHour);
    case InThreeHours:
        return toDateTime(choices.inThreeHours);
    case Tonight:
        return toDateTime(choices.tonight);
    case TomorrowMorning:
        return toDateTime(choices.tomorrowMorning);
    }
    return {};
}

int PopoverModel::weekStart() const {
    const int sundayFirst = with_.calendar.firstWeekday();
    return sundayFirst == 1 ? Qt::Sunday : sundayFirst - 1;
}

/// A view that follows a change may ask for another one, for a row with the keyboard in it may go. That one
/// waits: the list does not change while views are told how it did.
void PopoverModel::changeList(std::function<void()> change) {
    if (tasks_.isAnnouncing())
        QMetaObject::invokeMethod(this, std::move(change), Qt::QueuedConnection);
    else
        change();
}

/// Somebody is looking: the request, if there is one, is taken.
void PopoverModel::askForFeedback() {
    if (with_.reviewPrompts.takePendingRequest())
        setFeedbackShown(true);
}

} // namespace quillo
