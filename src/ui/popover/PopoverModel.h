/// What the popover shows and does.
#pragma once

#include "base/Clock.h"
#include "base/NotificationCenter.h"
#include "base/Uuid.h"
#include "entry/MenuActions.h"
#include "entry/SetReminder.h"
#include "review/ReviewPromptService.h"
#include "stats/StatsStore.h"
#include "store/TodoStore.h"
#include "ui/feedback/Feedback.h"
#include "ui/popover/TaskListModel.h"
#include "unicode/CivilCalendar.h"

#include <QtQml/qqmlregistration.h>

#include <QDateTime>
#include <QObject>
#include <QString>
#include <functional>
#include <string>
#include <vector>

namespace quillo {

/// What a PopoverModel works with; all of it outlives the model.
struct PopoverModelDependencies {
    TodoStore& store;
    SetReminder& setReminder;
    ReviewPromptService& reviewPrompts;
    Feedback& feedback;
    NotificationCenter& notifications;
    const Clock& clock;
    const unicode::CivilCalendar& calendar;   ///< its owner may assign it another zone
    std::function<StatsStore&()> statsStore;  ///< not called before a menu asks for statisticsEnabled
    std::function<void(std::string)> addTask; ///< takes what was typed, trimmed; not blank
    const MenuActions& actions;
};

/// There from the launch on, before anything of the popover is loaded. Belongs to the main thread.
///
/// Tasks are named by the model's `taskId`. A name that no task has makes a function do nothing.
class PopoverModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the shell.")

    Q_PROPERTY(QString newItemText READ newItemText WRITE setNewItemText NOTIFY newItemTextChanged)
    Q_PROPERTY(int activeCount READ activeCount NOTIFY activeCountChanged)
    Q_PROPERTY(int doneCount READ doneCount NOTIFY doneCountChanged)
    Q_PROPERTY(bool showCompleted READ showCompleted WRITE setShowCompleted NOTIFY showCompletedChanged)
    Q_PROPERTY(bool statisticsEnabled READ statisticsEnabled NOTIFY statisticsEnabledChanged)
    Q_PROPERTY(bool feedbackShown READ feedbackShown WRITE setFeedbackShown NOTIFY feedbackShownChanged)
    Q_PROPERTY(bool creditsShown READ creditsShown WRITE setCreditsShown NOTIFY creditsShownChanged)
    Q_PROPERTY(bool active READ active WRITE setActive NOTIFY activeChanged)
    Q_PROPERTY(quillo::TaskListModel* tasks READ tasks CONSTANT)
    Q_PROPERTY(quillo::Feedback* feedback READ feedback CONSTANT)

public:
    enum ReminderChoice { InOneHour, InThreeHours, Tonight, TomorrowMorning };
    Q_ENUM(ReminderChoice)

    enum Action { QuickAdd, ExportMarkdown, ExportJson, OpenStatistics, OpenSettings, CheckForUpdates, Quit };
    Q_ENUM(Action)

    explicit PopoverModel(PopoverModelDependencies dependencies);

    /// What stands in the entry field.
    QString newItemText() const { return newItemText_; }
    void setNewItemText(const QString& text);

    int activeCount() const;
    int doneCount() const;

    bool showCompleted() const { return tasks_.showCompleted(); }
    void setShowCompleted(bool show) { tasks_.setShowCompleted(show); }

    /// Whether completions are counted. Announced anew each time the popover appears.
    bool statisticsEnabled() const;

    bool feedbackShown() const { return feedbackShown_; }
    void setFeedbackShown(bool shown);
    bool creditsShown() const { return creditsShown_; }
    void setCreditsShown(bool shown);

    /// Whether the popover is to be seen; whoever shows and hides it says so.
    bool active() const { return tasks_.active(); }
    void setActive(bool active);

    TaskListModel* tasks() { return &tasks_; }

    /// What the sheet that asks for feedback leads to.
    Feedback* feedback() { return &with_.feedback; }

    /// Hands over what stands in the entry field and empties it at once. A blank text stays where it is.
    Q_INVOKABLE void submit();

    Q_INVOKABLE void clearCompleted();

    /// Completes or reopens a task; false if there is none of that name.
    Q_INVOKABLE bool toggle(const QString& task);

    /// Gives a task another title, trimmed; a blank one changes nothing.
    Q_INVOKABLE void rename(const QString& task, const QString& title);

    Q_INVOKABLE void remove(const QString& task);

    /// Makes a task due at `when`, with a reminder; an invalid `when` changes nothing.
    Q_INVOKABLE void setReminder(const QString& task, const QDateTime& when);

    Q_INVOKABLE void clearReminder(const QString& task);

    Q_INVOKABLE void perform(quillo::PopoverModel::Action action);

    /// When that is, chosen now.
    Q_INVOKABLE QDateTime reminderChoice(quillo::PopoverModel::ReminderChoice which) const;

    /// The day with which the user's weeks begin, as Qt::DayOfWeek: 1 (Monday) ... 7 (Sunday).
    Q_INVOKABLE int weekStart() const;

Q_SIGNALS:
    void newItemTextChanged();
    void activeCountChanged();
    void doneCountChanged();
    void showCompletedChanged();
    void statisticsEnabledChanged();
    void feedbackShownChanged();
    void creditsShownChanged();
    void activeChanged();

    /// The popover is to go.
    void closeRequested();

private:
    void changeList(std::function<void()> change);
    void askForFeedback();

    const PopoverModelDependencies with_;
    QString newItemText_;
    bool feedbackShown_ = false;
    bool creditsShown_ = false;
    TaskListModel tasks_;
    std::vector<Connection> connections_;
};

} // namespace quillo
