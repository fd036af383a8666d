#include "ui/stats/StatsModel.h"

#include "stats/Awards.h"
#include "stats/DurationText.h"
#include "stats/Ranks.h"
#include "ui/row/RowText.h"

#include <QCoreApplication>
#include <QFontMetrics>
#include <QGuiApplication>
#include <string>
#include <string_view>

namespace quillo {

namespace {

constexpr int oneMinute = 60'000; // milliseconds

// What src/stats calls ranks and awards, for translators to find.
[[maybe_unused]] constexpr const char* translatable[] = {
    QT_TRANSLATE_NOOP("Quillo", "Tadpole"),          QT_TRANSLATE_NOOP("Quillo", "Hopper"),
    QT_TRANSLATE_NOOP("Quillo", "Leaper"),           QT_TRANSLATE_NOOP("Quillo", "Bullfrog"),
    QT_TRANSLATE_NOOP("Quillo", "Croak Master"),     QT_TRANSLATE_NOOP("Quillo", "Pondsmith"),
    QT_TRANSLATE_NOOP("Quillo", "Lightning Fast"),   QT_TRANSLATE_NOOP("Quillo", "Done in under a minute"),
    QT_TRANSLATE_NOOP("Quillo", "Quick Draw"),       QT_TRANSLATE_NOOP("Quillo", "Done in under five"),
    QT_TRANSLATE_NOOP("Quillo", "Long Game"),        QT_TRANSLATE_NOOP("Quillo", "Patience pays off"),
    QT_TRANSLATE_NOOP("Quillo", "Week-long Winner"), QT_TRANSLATE_NOOP("Quillo", "Seven days in a row"),
    QT_TRANSLATE_NOOP("Quillo", "Monthly Maven"),    QT_TRANSLATE_NOOP("Quillo", "Thirty days strong"),
    QT_TRANSLATE_NOOP("Quillo", "Early Bird"),       QT_TRANSLATE_NOOP("Quillo", "Crushed before 8 AM"),
    QT_TRANSLATE_NOOP("Quillo", "Night Owl"),        QT_TRANSLATE_NOOP("Quillo", "Burned the midnight oil"),
};

QString translated(std::string_view text) {
    return QCoreApplication::translate("Quillo", std::string(text).c_str());
}

QString symbolOf(Award award) {
    switch (award) {
    case Award::lightningFast:
        return QStringLiteral("bolt.fill");
    case Award::quickDraw:
        return QStringLiteral("scope");
    case Award::longGame:
        return QStringLiteral("hourglass");
    case Award::weekLongWinner:
        return QStringLiteral("flame.fill");
    case Award::monthlyMaven:
        return QStringLiteral("crown.fill");
    case Award::earlyBird:
        return QStringLiteral("sunrise.fill");
    case Award::nightOwl:
        return QStringLiteral("moon.stars.fill");
    }
    return {};
}

ShownRecord shown(const std::optional<SpeedRecord>& record) {
    ShownRecord shown;
    if (record) {
        shown.title = RowText::title(record->title);
        shown.duration = QString::fromStdString(durationText(record->durationSeconds));
    }
    return shown;
}

} // namespace

StatsModel::StatsModel(const StatsStore& store) : store_(store), summary_(store.summary()) {
    soon_.setSingleShot(true);
    soon_.setInterval(0);
    minute_.setInterval(oneMinute);
    connect(&soon_, &QTimer::timeout, this, &StatsModel::renew);
    connect(&minute_, &QTimer::timeout, this, &StatsModel::renew);
    const auto follow = [this](const auto& value) {
        connections_.push_back(value.observe([this](const auto&) { renewSoon(); }));
    };
    follow(store.lifetimeCompletions());
    follow(store.fastest());
    follow(store.slowest());
    follow(store.dailyCounts());
    follow(store.earnedAwards());
    follow(store.newlyEarnedThisSession());
}

QString StatsModel::today() const {
    return QString::number(summary_.today);
}

QString StatsModel::thisWeek() const {
    return QString::number(summary_.thisWeek);
}

QString StatsModel::allTime() const {
    return QString::number(summary_.allTime);
}

QString StatsModel::streak() const {
    return QString::fromStdString(streakText(summary_.streak));
}

QString StatsModel::bestStreak() const {
    return QString::fromStdString(streakText(summary_.bestStreak));
}

QString StatsModel::averageTime() const {
    return summary_.averageSeconds ? QString::fromStdString(durationText(*summary_.averageSeconds))
                                   : QStringLiteral("–");
}

QString StatsModel::rank() const {
    return translated(summary_.rank);
}

QString StatsModel::progress() const {
    const RankProgress ladder = rankProgress(summary_.allTime);
    if (!ladder.next)
        return QCoreApplication::translate("Quillo", "%1 tasks completed · top rank reached 👑")
            .arg(summary_.allTime);
    return QCoreApplication::translate("Quillo", "%1 tasks completed · %2 more to reach %3")
        .arg(QString::number(summary_.allTime), QString::number(ladder.missing),
             translated(ladder.next->title));
}

bool StatsModel::drawsCrown() const {
    constexpr char32_t crown = U'👑';
    return !rankProgress(summary_.allTime).next && !QFontMetrics(QGuiApplication::font()).inFontUcs4(crown);
}

double StatsModel::climbed() const {
    const RankProgress ladder = rankProgress(summary_.allTime);
    if (!ladder.next)
        return 1;
    // The lowest rank is shown from the start.
    const std::int64_t from =
        ladder.current.title == rankProgress(0).current.title ? 0 : ladder.current.reachedAt;
    return static_cast<double>(summary_.allTime - from) / static_cast<double>(ladder.next->reachedAt - from);
}

ShownRecord StatsModel::fastest() const {
    return shown(summary_.fastest);
}

ShownRecord StatsModel::slowest() const {
    return shown(summary_.slowest);
}

QVariantList StatsModel::awards() const {
    const std::set<Award>& earned = store_.earnedAwards().get();
    const std::set<Award>& fresh = store_.newlyEarnedThisSession().get();
    QVariantList awards;
    for (const Award award : allAwards) {
        ShownAward shown;
        shown.symbol = symbolOf(award);
        shown.title = translated(titleOf(award));
        shown.subtitle = translated(subtitleOf(award));
        shown.earned = earned.contains(award);
        shown.sparkles = fresh.contains(award);
        awards.append(QVariant::fromValue(shown));
    }
    return awards;
}

int StatsModel::awardCount() {
    return static_cast<int>(allAwards.size());
}

void StatsModel::setActive(bool active) {
    if (active_ == active)
        return;
    active_ = active;
    if (active) {
        renew();
        minute_.start();
    } else {
        minute_.stop();
    }
    Q_EMIT activeChanged();
}

void StatsModel::renewSoon() {
    if (active_)
        soon_.start();
}

void StatsModel::renew() {
    summary_ = store_.summary();
    Q_EMIT changed();
}

} // namespace quillo
