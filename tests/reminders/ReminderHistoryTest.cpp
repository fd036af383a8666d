// Random histories of a list and its reminders, and of all that happens to a machine meanwhile, beside a slow
// model: after every step both have shown the same, have the same booked, and wait for the same.
#include "reminders/AlignReminders.h"
#include "reminders/DeliveryWorld.h"
#include "reminders/NotificationManager.h"
#include "reminders/SlowReminders.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <array>
#include <cstddef>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace quillo {
namespace {

using support::numberedId;
using support::SlowReminders;
using support::Task;

enum class Kind {
    add,
    setDate,
    complete,
    reopen,
    remove,
    receive,
    pass,
    setClock,
    move,
    breakDesktop,
    repairDesktop,
    slowDesktop,
    answer,
    restart,
};
constexpr int kinds = static_cast<int>(Kind::restart) + 1;

struct Step {
    Kind kind = Kind::add;
    int which = 0;      ///< task, or zone
    double seconds = 0; ///< from now: the due date, or how far the clock goes
};

std::ostream& operator<<(std::ostream& out, const Step& step) {
    static constexpr std::array<const char*, kinds> names = {
        "add",      "setDate", "complete",     "reopen",        "remove",      "receive", "pass",
        "setClock", "move",    "breakDesktop", "repairDesktop", "slowDesktop", "answer",  "restart"};
    return out << names.at(static_cast<std::size_t>(step.kind)) << ' ' << step.which << ' ' << step.seconds;
}

constexpr std::array zones = {"Europe/Berlin", "Asia/Tokyo", "America/New_York", "Asia/Kathmandu",
                              "Pacific/Kiritimati"};

/// The program with its list, and the model.
class History : support::DeliveryWorld {
public:
    History() { start(); }

    void take(const Step& step) {
        const Instant then = clock.now() + step.seconds;
        const auto place = static_cast<std::size_t>(step.which);
        TodoItem* task = tasks_.empty() ? nullptr : &tasks_[place % tasks_.size()];
        switch (step.kind) {
        case Kind::add:
            tasks_.push_back(Task(std::to_string(made_)).id(numberedId(made_)));
            ++made_;
            setDate(tasks_.back(), then);
            break;
        case Kind::setDate:
            if (task && !task->isDone)
                setDate(*task, then);
            break;
        case Kind::complete:
            if (task && !task->isDone) {
                task->isDone = true;
                takeBack(*task);
            }
            break;
        case Kind::reopen:
            if (task)
                task->isDone = false;
            break;
        case Kind::remove:
            if (task) {
                takeBack(*task);
                tasks_.erase(tasks_.begin() + (task - tasks_.data()));
            }
            break;
        case Kind::receive: // where a task has another title, date or state
            if (task && step.which % 3 == 0)
                task->title += "'";
            else if (task && step.which % 3 == 1)
                task->dueDate = then;
            else if (task)
                task->isDone = !task->isDone;
            align();
            break;
        case Kind::pass:
            pass(std::abs(step.seconds));
            break;
        case Kind::setClock:
            if (model_.next(calendar))
                model_.forgetFailures();
            setClock(then);
            break;
        case Kind::move:
            model_.forgetFailures();
            moveTo(zones[place % zones.size()]);
            break;
        case Kind::breakDesktop:
            presenter.available = model_.available = false;
            break;
        case Kind::repairDesktop:
            presenter.available = model_.available = true;
            model_.forgetFailures();
            presenter.becameAvailable.emit();
            break;
        case Kind::slowDesktop:
            presenter.holding = model_.holding = true;
            break;
        case Kind::answer:
            presenter.holding = model_.holding = false;
            model_.answer();
            presenter.answerAll();
            break;
        case Kind::restart:
            restart(std::abs(step.seconds));
            break;
        }
        timer.look();
        model_.look(calendar, clock.now());
        check();
    }

    std::size_t shown() const { return presenter.shown.size(); }

private:
    void setDate(TodoItem& task, Instant dueDate) {
        takeBack(task);
        task.dueDate = dueDate;
        const bool isToCome = dueDate > clock.now();
        NotificationManager(*book, clock, calendar).schedule(task, [&](const auto& identifier) {
            RC_ASSERT(identifier.has_value() == isToCome);
            task.notificationID = identifier;
        });
        if (isToCome)
            model_.add(SlowReminders::reminderOf(task, calendar));
    }

    void takeBack(const TodoItem& task) {
        if (!task.notificationID)
            return;
        book->removePending(*task.notificationID);
        model_.remove(*task.notificationID);
    }

    void align() {
        alignReminders(*book, remindedTasks(tasks_), calendar, clock.now());
        model_.align(tasks_, calendar, clock.now());
    }

    /// Time passes for both: where it stops for the model, something is due.
    void pass(double seconds) {
        const Instant until = clock.now() + seconds;
        for (auto next = model_.next(calendar); next && *next <= until; next = model_.next(calendar)) {
            DeliveryWorld::pass(std::max(0.0, *next - clock.now()));
            model_.look(calendar, clock.now());
            check();
        }
        DeliveryWorld::pass(until - clock.now());
    }

    void restart(double seconds) {
        stop();
        const bool available = std::exchange(presenter.available, false);
        presenter.answerAll(); // Nobody is there to hear it.
        presenter.available = available;
        model_.stop();
        clock.advance(seconds);
        book.emplace(preferences);
        align();
        start();
    }

    void check() const {
        std::vector<std::string> tried;
        for (const auto& notification : presenter.tried)
            tried.push_back(notification.content.body);
        RC_ASSERT(tried == model_.tried);
        RC_ASSERT(timer.armed() == model_.next(calendar));
        RC_ASSERT(book->reminders().size() == model_.reminders.size());
        for (const SlowReminders::Reminder& reminder : model_.reminders) {
            const BookedReminder* booked = book->find(reminder.identifier);
            RC_ASSERT(booked);
            RC_ASSERT(booked->request.at == reminder.at);
            RC_ASSERT(booked->request.dueDate == reminder.dueDate);
            RC_ASSERT(booked->request.content.body == reminder.body);
            RC_ASSERT(booked->delivered == reminder.delivered);
        }
        RC_ASSERT(ReminderBook(const_cast<support::InMemoryPreferences&>(preferences)).reminders() ==
                  book->reminders());
    }

    std::vector<TodoItem> tasks_;
    std::uint32_t made_ = 0;
    SlowReminders model_;
};

rc::Gen<Step> anyStep() {
    // Adding is likely, so that there is something to remind of.
    const auto kind = rc::gen::weightedOneOf<Kind>(
        {{1, rc::gen::just(Kind::add)},
         {1, rc::gen::just(Kind::pass)},
         {4,
          rc::gen::map(rc::gen::inRange(0, kinds), [](int number) { return static_cast<Kind>(number); })}});
    // Quarters of a second, within minutes, hours or days.
    const auto seconds = rc::gen::map(
        rc::gen::pair(rc::gen::inRange(-100, 400), rc::gen::element(0.25, 1.0, 30.0, 60.0, 900.0)),
        [](const std::pair<int, double>& amount) { return amount.first * amount.second; });
    return rc::gen::build<Step>(rc::gen::set(&Step::kind, kind),
                                rc::gen::set(&Step::which, rc::gen::inRange(0, 30)),
                                rc::gen::set(&Step::seconds, seconds));
}

RC_GTEST_PROP(ReminderHistory, GoesAsTheModelSays, ()) {
    // Long ones, whose steps are not smaller at the beginning.
    const auto steps = *rc::gen::scale(
        3, rc::gen::container<std::vector<Step>>(rc::gen::resize(rc::kNominalSize, anyStep())));
    History history;
    for (const Step& step : steps)
        history.take(step);
    RC_CLASSIFY(history.shown() > 5, "more than five shown");
}

} // namespace
} // namespace quillo
