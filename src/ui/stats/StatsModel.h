/// What the statistics window shows.
#pragma once

#include "base/Signal.h"
#include "model/SpeedRecord.h"
#include "stats/StatsStore.h"

#include <QtQml/qqmlregistration.h>

#include <QObject>
#include <QString>
#include <QTimer>
#include <QVariantList>
#include <optional>
#include <vector>

namespace quillo {

/// A task that was completed faster or slower than all others.
class ShownRecord {
    Q_GADGET
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString duration MEMBER duration)

public:
    QString title;
    QString duration;
};

/// An award, earned or not.
class ShownAward {
    Q_GADGET
    Q_PROPERTY(QString symbol MEMBER symbol)
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString subtitle MEMBER subtitle)
    Q_PROPERTY(bool earned MEMBER earned)
    Q_PROPERTY(bool sparkles MEMBER sparkles)

public:
    QString symbol; ///< name of its icon
    QString title;
    QString subtitle;
    bool earned = false;
    bool sparkles = false; ///< earned since the program started
};

/// The statistics in words, as they are at each moment while somebody looks: they follow completions, and the
/// days that pass. Texts are translated. Belongs to the main thread.
class StatsModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the shell.")

    Q_PROPERTY(QString today READ today NOTIFY changed)
    Q_PROPERTY(QString thisWeek READ thisWeek NOTIFY changed)
    Q_PROPERTY(QString allTime READ allTime NOTIFY changed)
    Q_PROPERTY(QString streak READ streak NOTIFY changed)
    Q_PROPERTY(QString bestStreak READ bestStreak NOTIFY changed)
    Q_PROPERTY(QString averageTime READ averageTime NOTIFY changed)
    Q_PROPERTY(QString rank READ rank NOTIFY changed)
    Q_PROPERTY(QString progress READ progress NOTIFY changed)
    Q_PROPERTY(bool drawsCrown READ drawsCrown NOTIFY changed)
    Q_PROPERTY(double climbed READ climbed NOTIFY changed)
    Q_PROPERTY(bool hasRecords READ hasRecords NOTIFY changed)
    Q_PROPERTY(quillo::ShownRecord fastest READ fastest NOTIFY changed)
    Q_PROPERTY(quillo::ShownRecord slowest READ slowest NOTIFY changed)
    Q_PROPERTY(int awardCount READ awardCount CONSTANT)
    Q_PROPERTY(QVariantList awards READ awards NOTIFY changed)
    Q_PROPERTY(bool active READ active WRITE setActive NOTIFY activeChanged)

public:
    /// `store` outlives this.
    explicit StatsModel(const StatsStore& store);

    QString today() const;
    QString thisWeek() const;
    QString allTime() const;

    /// Lengths of streaks, in days: "3d".
    QString streak() const;
    QString bestStreak() const;

    /// A dash before the first record.
    QString averageTime() const;

    QString rank() const;

    /// How many tasks have been completed, and how many it takes to the next rank.
    QString progress() const;

    /// Whether progress() has a crown that no font has, so that a symbol has to stand for it.
    bool drawsCrown() const;

    /// The part of the way from this rank to the next one that is done, 0 to 1; 1 at the top.
    double climbed() const;

    /// Whether there is one; then, as a rule, there are both. One that is not there has no duration.
    bool hasRecords() const { return summary_.fastest || summary_.slowest; }
    ShownRecord fastest() const;
    ShownRecord slowest() const;

    /// All of them, each a ShownAward, always in the same order.
    QVariantList awards() const;
    static int awardCount();

    /// Whether somebody looks; whoever shows and hides the window says so. Nothing is renewed while not.
    bool active() const { return active_; }
    void setActive(bool active);

Q_SIGNALS:
    void changed();
    void activeChanged();

private:
    void renewSoon();
    void renew();

    const StatsStore& store_;
    StatisticsSummary summary_;
    bool active_ = false;
    QTimer soon_;   ///< one completion changes several things: they are shown together
    QTimer minute_; ///< a day may have passed
    std::vector<Connection> connections_;
};

} // namespace quillo
