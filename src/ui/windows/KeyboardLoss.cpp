#include "ui/windows/KeyboardLoss.h"

#include <QTimer>
#include <chrono>
#include <utility>

namespace quillo {

namespace {

constexpr std::chrono::milliseconds settling(600);

} // namespace

KeyboardLoss::KeyboardLoss(std::function<bool()> hasKeyboard, std::function<void()> lost)
    : hasKeyboard_(std::move(hasKeyboard)), lost_(std::move(lost)) {}

bool KeyboardLoss::isSettling() const {
    return sinceShown_.isValid() && sinceShown_.elapsed() < settling.count();
}

void KeyboardLoss::check() {
    if (hasKeyboard_())
        return;
    if (isSettling())
        QTimer::singleShot(settling, &later_, [this] { check(); });
    else
        lost_();
}

} // namespace quillo
