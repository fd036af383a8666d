#include "linux/loginitem/AutostartLoginItem.h"

#include <utility>

namespace quillo {

AutostartLoginItem::AutostartLoginItem(const std::filesystem::path& folder, Executor& mainExecutor)
    : entry_(folder), mainExecutor_(mainExecutor) {}

void AutostartLoginItem::read(std::function<void(std::optional<bool>)> answer) {
    queue_.post([entry = entry_, &executor = mainExecutor_, answer = scope_.guard(std::move(answer))] {
        executor.post([answer, isOn = entry.isOn()]() mutable { answer(isOn); });
    });
}

void AutostartLoginItem::change(bool startsAtLogin, std::function<void(Outcome)> answer) {
    queue_.post(
        [entry = entry_, startsAtLogin, &executor = mainExecutor_, answer = scope_.guard(std::move(answer))] {
            const Outcome outcome = startsAtLogin ? entry.turnOn() : entry.turnOff();
            executor.post([answer, outcome]() mutable { answer(outcome); });
        });
}

} // namespace quillo
