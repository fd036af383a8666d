#include "sync/KeptPasswords.h"

#include "base/Log.h"

namespace quillo {

Result<std::optional<std::string>> KeptPasswords::find(const WebDavFolder& place) {
    {
        const std::lock_guard lock(mutex_);
        if (const auto found = inMemory_.find({place.url, place.user}); found != inMemory_.end())
            return std::optional(found->second);
        if (refused_)
            return *refused_;
    }
    Keyring* const keyring = load_();
    if (keyring == nullptr)
        return std::optional<std::string>();
    const Keyring::Ask ask = ask_;
    Result<std::optional<std::string>> found = keyring->find(place, ask);
    if (!found) {
        const std::lock_guard lock(mutex_);
        if (ask == Keyring::Ask::Yes)
            refused_ = found.error();
    } else if (*found && !checkPassword(**found)) {
        return std::optional<std::string>(); // Somebody else has put it there.
    }
    return found;
}

Result<Passwords::Kept> KeptPasswords::keep(const WebDavFolder& place, std::string password) {
    if (const Outcome checked = checkPassword(password); !checked)
        return checked.error();
    Keyring* const keyring = load_();
    const Result<bool> told = keyring != nullptr ? keyring->keep(place, password) : false;
    if (!told)
        log("the password is kept until the program ends: " + told.error().message);
    const bool kept = told && *told;
    const std::lock_guard lock(mutex_);
    refused_.reset();
    if (kept)
        inMemory_.erase({place.url, place.user});
    else
        inMemory_.insert_or_assign({place.url, place.user}, std::move(password));
    return kept ? Kept::ForGood : Kept::UntilTheEnd;
}

Outcome KeptPasswords::forget(const WebDavFolder& place) {
    {
        const std::lock_guard lock(mutex_);
        inMemory_.erase({place.url, place.user});
    }
    Keyring* const keyring = load_();
    return keyring != nullptr ? keyring->forget(place) : success();
}

bool KeptPasswords::isInKeyring(const WebDavFolder& place) {
    Keyring* const keyring = load_();
    return keyring != nullptr && keyring->has(place);
}

} // namespace quillo
