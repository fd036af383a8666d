#include "linux/hotkey/DesktopHotKeyCenter.h"

#include "base/Log.h"
#include "base/Product.h"
#include "linux/hotkey/PortalShortcutBinding.h"
#include "linux/hotkey/X11ShortcutBinding.h"

#include <utility>

namespace quillo {

std::vector<DesktopHotKeyCenter::Way> DesktopHotKeyCenter::waysOfThisSession(const QString& description) {
    const bool wayland = !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
    Way x11{std::make_unique<X11ShortcutBinding>(), {}};
    Way portal{
        std::make_unique<PortalShortcutBinding>(QString::fromLatin1(product::desktopFile), description), {}};
    std::vector<Way> ways;
    if (wayland) {
        x11.drawback = "the global shortcut works only while a program that uses X11 has the keyboard";
        ways.push_back(std::move(portal));
        ways.push_back(std::move(x11));
    } else {
        ways.push_back(std::move(x11));
        ways.push_back(std::move(portal));
    }
    return ways;
}

DesktopHotKeyCenter::DesktopHotKeyCenter(std::vector<Way> ways) : ways_(std::move(ways)) {
    for (const Way& way : ways_) {
        connections_.push_back(
            way.binding->pressed.connect([this](const std::string& token) { handlePress(token); }));
        connections_.push_back(way.binding->desktopKeys.observe(
            [this](const std::optional<DesktopKeys>&) { updateDesktopKeys(); }));
    }
}

HotKeyCenter::HandlerReference DesktopHotKeyCenter::installHandler(Handler handler) {
    const HandlerReference reference{++lastReference_};
    handlers_.emplace(reference, std::move(handler));
    return reference;
}

void DesktopHotKeyCenter::removeHandler(HandlerReference reference) {
    handlers_.erase(reference);
}

HotKeyCenter::HotKeyReference DesktopHotKeyCenter::registerHotKey(const HotKeyConfig& config,
                                                                  const HotKeyIdentifier& identifier,
                                                                  Answer answer) {
    const HotKeyReference reference{++lastReference_};
    if (registration_) {
        answer(HotKeyStatus::unavailable);
        return reference;
    }
    registration_ = Registration{reference, config, identifier, std::move(answer), 0, {}};
    tryWay();
    return reference;
}

void DesktopHotKeyCenter::unregisterHotKey(HotKeyReference reference) {
    if (!registration_ || registration_->reference != reference)
        return;
    ways_[registration_->way].binding->release();
    registration_.reset();
    updateDesktopKeys();
}

void DesktopHotKeyCenter::configure() {
    if (registration_)
        ways_[registration_->way].binding->configure();
}

void DesktopHotKeyCenter::tryWay() {
    ways_[registration_->way].binding->bind(
        registration_->config, [this](const BindingOutcome& outcome) { handleOutcome(outcome); });
}

void DesktopHotKeyCenter::handleOutcome(const BindingOutcome& outcome) {
    Registration& registration = *registration_;
    if (outcome.status == HotKeyStatus::noError) {
        const std::string& drawback = ways_[registration.way].drawback;
        if (!drawback.empty())
            log(drawback + ": " + registration.reasons);
        const Answer answer = std::move(registration.answer);
        answer(outcome.status);
        return;
    }
    registration.reasons += (registration.reasons.empty() ? "" : "; ") + outcome.reason;
    if (outcome.status == HotKeyStatus::unavailable && registration.way + 1 < ways_.size()) {
        ++registration.way;
        tryWay();
        return;
    }
    log("no global shortcut: " + registration.reasons +
        " (a key can be bound to the command \"quillo quick-add\" in the desktop's settings)");
    const Answer answer = std::move(registration.answer);
    registration_.reset();
    updateDesktopKeys();
    answer(outcome.status);
}

void DesktopHotKeyCenter::handlePress(const std::string& activationToken) {
    if (!registration_)
        return;
    const HotKeyEvent event{registration_->identifier, activationToken};
    const auto handlers = handlers_; // A handler may install others.
    for (const auto& [reference, handler] : handlers) {
        if (handler(&event) != HotKeyStatus::eventNotHandled)
            return;
    }
}

void DesktopHotKeyCenter::updateDesktopKeys() {
    desktopKeys_.set(registration_ ? ways_[registration_->way].binding->desktopKeys.get() : std::nullopt);
}

} // namespace quillo
