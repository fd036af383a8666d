#include "hotkey/HotKeyManager.h"

#include "model/HotKeyConfigJson.h"

#include <utility>

namespace quillo {

HotKeyManager::HotKeyManager(Preferences& preferences, HotKeyCenter& center, Executor& mainExecutor)
    : preferences_(preferences), center_(center), mainExecutor_(mainExecutor),
      current_(load().value_or(HotKeyConfig{})) {}

void HotKeyManager::registerHotKey(const HotKeyConfig& config) {
    unregister();
    eventHandler_ = center_.installHandler(handler());
    const auto reference =
        center_.registerHotKey(config, quickAddHotKey, scope_.guard([this](HotKeyStatus status) {
            status_ = status;
            if (status != HotKeyStatus::noError)
                hotKeyRef_.reset();
        }));
    if (status_.value_or(HotKeyStatus::noError) == HotKeyStatus::noError)
        hotKeyRef_ = reference;
}

void HotKeyManager::unregister() {
    status_.reset();
    if (const auto reference = std::exchange(hotKeyRef_, std::nullopt))
        center_.unregisterHotKey(*reference);
    if (const auto reference = std::exchange(eventHandler_, std::nullopt))
        center_.removeHandler(*reference);
}

void HotKeyManager::apply(const HotKeyConfig& config) {
    current_.set(config);
    registerHotKey(config);
    save(config);
}

void HotKeyManager::save(const HotKeyConfig& config) {
    preferences_.set(preference_keys::hotKey, Data(encodeHotKeyConfig(config)));
}

std::optional<HotKeyConfig> HotKeyManager::load() const {
    const std::optional<Data> stored = preferences_.data(preference_keys::hotKey);
    return stored ? decodeHotKeyConfig(stored->bytes()) : std::nullopt;
}

/// It may outlive this manager in the center: all it reaches of it is behind the scope.
HotKeyCenter::Handler HotKeyManager::handler() {
    return [&mainExecutor = mainExecutor_, trigger = scope_.guard([this](const std::string& token) {
        this->trigger(token);
    })](const HotKeyEvent* event) {
        if (!event)
            return HotKeyStatus::eventNotHandled;
        if (event->identifier && event->identifier->signature == quickAddHotKey.signature)
            mainExecutor.post([trigger, token = event->activationToken]() mutable { trigger(token); });
        return HotKeyStatus::noError;
    };
}

void HotKeyManager::trigger(const std::string& activationToken) {
    activationToken_ = activationToken;
    if (onTrigger)
        onTrigger();
    activationToken_.clear();
}

} // namespace quillo
