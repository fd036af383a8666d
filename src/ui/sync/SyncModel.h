/// What the settings' sheet about keeping the list in step shows and does.
#pragma once

#include "base/CallbackScope.h"
#include "base/Clock.h"
#include "base/Signal.h"
#include "entry/SyncCommands.h"
#include "ports/FolderPanel.h"
#include "ports/Preferences.h"
#include "store/TodoStore.h"
#include "sync/SyncedCloudStore.h"
#include "unicode/CivilCalendar.h"
#include "unicode/DateFormat.h"

#include <QtQml/qqmlregistration.h>

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <optional>
#include <string>
#include <vector>

namespace quillo {

/// What a SyncModel works with; all of it outlives the model.
struct SyncModelDependencies {
    Preferences& preferences;
    SyncedCloudStore& cloud;
    SyncCommands& commands;
    TodoStore& store;
    FolderPanel& folderPanel;
    const Clock& clock;
    const unicode::CivilCalendar& calendar;
};

/// A computer that keeps the same list.
struct SyncedComputer {
    Q_GADGET
    Q_PROPERTY(QString device MEMBER device)
    Q_PROPERTY(QString name MEMBER name)
    Q_PROPERTY(QString changed MEMBER changed)
    Q_PROPERTY(bool forgettable MEMBER forgettable)

public:
    QString device;           ///< its identifier
    QString name;             ///< may be empty
    QString changed;          ///< when its list was changed last, for people; empty for never
    bool forgettable = false; ///< it has been silent for so long that its file may go
};

/// Belongs to the main thread.
class SyncModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the shell.")

    Q_PROPERTY(Place place READ place NOTIFY changed)
    Q_PROPERTY(QString folder READ folder NOTIFY changed)
    Q_PROPERTY(QString address READ address NOTIFY changed)
    Q_PROPERTY(QString user READ user NOTIFY changed)
    Q_PROPERTY(QString lastInStep READ lastInStep NOTIFY changed)
    Q_PROPERTY(QString problem READ problem NOTIFY changed)
    Q_PROPERTY(QList<quillo::SyncedComputer> computers READ computers NOTIFY changed)
    Q_PROPERTY(QStringList earlierLists READ earlierLists NOTIFY earlierListsChanged)

    Q_PROPERTY(bool busy READ busy NOTIFY answered)
    Q_PROPERTY(QString answer READ answer NOTIFY answered)
    Q_PROPERTY(bool failed READ failed NOTIFY answered)
    Q_PROPERTY(bool bothHaveTasks READ bothHaveTasks NOTIFY answered)
    Q_PROPERTY(int tasksHere READ tasksHere NOTIFY answered)
    Q_PROPERTY(int tasksThere READ tasksThere NOTIFY answered)

public:
    enum class Place { Nowhere, Folder, Server };
    Q_ENUM(Place)

    explicit SyncModel(const SyncModelDependencies& dependencies);

    /// Reads everything anew: the sheet is about to be shown.
    Q_INVOKABLE void refresh();

    /// The place that is used, and what is known of it; empty where it is of another kind.
    Place place() const;
    QString folder() const;
    QString address() const;
    QString user() const;

    /// When the list was in step last, for people; empty for never.
    QString lastInStep() const;
    /// Why it is not in step now; empty where it is.
    QString problem() const;
    QList<SyncedComputer> computers() const;

    /// When the lists were kept that can be brought back, for people, the latest first.
    QStringList earlierLists() const { return earlierLists_; }

    /// What was asked for last is still being done. Nothing else can be asked meanwhile.
    bool busy() const { return busy_; }
    /// What came of it, for people; empty where it says nothing, or was not asked yet.
    QString answer() const { return answer_; }
    bool failed() const { return failed_; }

    /// There are tasks here and at the place that was to be used: keepMine() or keepTheirs() goes on.
    bool bothHaveTasks() const { return both_.has_value(); }
    int tasksHere() const { return both_ ? static_cast<int>(both_->here) : 0; }
    int tasksThere() const { return both_ ? static_cast<int>(both_->there) : 0; }

    /// Whether that place can be used. `where` is a folder or an address; an empty password is the one that
    /// is known already.
    Q_INVOKABLE void test(quillo::SyncModel::Place place, const QString& where, const QString& user,
                          const QString& password);

    /// Keeps the list in step through that place from now on, unless both sides have tasks.
    Q_INVOKABLE void use(quillo::SyncModel::Place place, const QString& where, const QString& user,
                         const QString& password);
    Q_INVOKABLE void keepMine() { choose("mine"); }
    Q_INVOKABLE void keepTheirs() { choose("theirs"); }

    /// Forgets what was asked for and came of it. What is under way is done all the same.
    Q_INVOKABLE void dismiss();

    Q_INVOKABLE void syncNow();
    Q_INVOKABLE void forget(const QString& device);
    /// The list of that place among the earlier ones goes on, from 0.
    Q_INVOKABLE void restore(int which);

    /// Has the user choose a folder; folderChosen() tells which.
    Q_INVOKABLE void chooseFolder();

Q_SIGNALS:
    void changed();
    void earlierListsChanged();
    void answered();
    /// The place is used now.
    void used();
    void folderChosen(const QString& folder);

private:
    void choose(std::string keep);
    void begin();
    void end(const QString& answer, bool failed);
    void endWith(const Outcome& outcome, const QString& success);
    QString forPeople(Instant instant) const;
    template <class Kind>
    std::optional<Kind> chosen() const;

    const SyncModelDependencies with_;
    unicode::DateFormat format_; ///< of where the user is; renewed with each showing
    QStringList earlierLists_;
    control::UseSync wanted_; ///< what the user is asked about
    std::optional<BothHaveTasks> both_;
    bool busy_ = false;
    bool failed_ = false;
    QString answer_;
    std::vector<Connection> connections_;
    CallbackScope scope_;
};

} // namespace quillo
