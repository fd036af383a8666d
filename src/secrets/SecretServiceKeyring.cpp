#include "secrets/SecretServiceKeyring.h"

#include "base/Product.h"
#include "secrets/Deadline.h"

#include <libsecret/secret.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <system_error>
#include <utility>

namespace quillo {

namespace {

struct Unreference {
    void operator()(gpointer object) const { g_object_unref(object); }
};
template <class Object>
using Reference = std::unique_ptr<Object, Unreference>;

struct FreeError {
    void operator()(GError* error) const { g_error_free(error); }
};
using Failure = std::unique_ptr<GError, FreeError>;

struct FreeTable {
    void operator()(GHashTable* table) const { g_hash_table_unref(table); }
};
using Attributes = std::unique_ptr<GHashTable, FreeTable>;

struct FreeObjects {
    void operator()(GList* list) const { g_list_free_full(list, g_object_unref); }
};
using Objects = std::unique_ptr<GList, FreeObjects>;

struct FreeSecret {
    void operator()(SecretValue* value) const { secret_value_unref(value); }
};
using Secret = std::unique_ptr<SecretValue, FreeSecret>;

const SecretSchema& schema() {
    static const SecretSchema schema = [] {
        SecretSchema made{};
        static const std::string name = std::string(product::desktopFile) + ".Sync";
        made.name = name.c_str();
        made.flags = SECRET_SCHEMA_NONE;
        made.attributes[0] = {"url", SECRET_SCHEMA_ATTRIBUTE_STRING};
        made.attributes[1] = {"user", SECRET_SCHEMA_ATTRIBUTE_STRING};
        return made;
    }();
    return schema;
}

Attributes attributesOf(const WebDavFolder& place) {
    return Attributes(
        secret_attributes_build(&schema(), "url", place.url.c_str(), "user", place.user.c_str(), nullptr));
}

const Error staysLocked{"the keyring stays locked, and the password is in it"};

Error errorOf(const Failure& failure) {
    if (!failure)
        return staysLocked; // The user said no.
    if (g_error_matches(failure.get(), G_IO_ERROR, G_IO_ERROR_CANCELLED))
        return Error{"the keyring does not answer"};
    if (g_error_matches(failure.get(), SECRET_ERROR, SECRET_ERROR_IS_LOCKED))
        return staysLocked;
    g_dbus_error_strip_remote_error(failure.get());
    return Error{std::string("the keyring says: ") + failure->message};
}

/// Whether there is a session bus. Where none is named, looking for one would start one.
bool hasSessionBus() {
    if (const char* const address = std::getenv("DBUS_SESSION_BUS_ADDRESS"); address != nullptr)
        return *address != '\0';
    const char* const runtime = std::getenv("XDG_RUNTIME_DIR");
    std::error_code unreadable;
    return runtime != nullptr && std::filesystem::exists(std::filesystem::path(runtime) / "bus", unreadable);
}

/// The service, for one call; null where there is none.
class Service {
public:
    explicit Service(GCancellable* cancellable) {
        if (!hasSessionBus())
            return;
        bus_.reset(g_bus_get_sync(G_BUS_TYPE_SESSION, cancellable, nullptr));
        if (!bus_)
            return;
        // By itself the program would end with the bus.
        g_dbus_connection_set_exit_on_close(bus_.get(), FALSE);
        service_.reset(secret_service_open_sync(SECRET_TYPE_SERVICE, nullptr, SECRET_SERVICE_OPEN_SESSION,
                                                cancellable, nullptr));
    }

    SecretService* get() const { return service_.get(); }

private:
    Reference<GDBusConnection> bus_;
    Reference<SecretService> service_;
};

Result<Objects> search(const Service& service, const WebDavFolder& place, SecretSearchFlags flags,
                       GCancellable* cancellable) {
    GError* error = nullptr;
    Objects found(secret_service_search_sync(service.get(), &schema(), attributesOf(place).get(), flags,
                                             cancellable, &error));
    if (error != nullptr)
        return errorOf(Failure(error));
    return found;
}

Outcome unlock(const Service& service, const Objects& items, GCancellable* cancellable) {
    GError* error = nullptr;
    const gint count = secret_service_unlock_sync(service.get(), items.get(), cancellable, nullptr, &error);
    const Failure failure(error);
    return count > 0 ? success() : Outcome(errorOf(failure));
}

} // namespace

Result<std::optional<std::string>> SecretServiceKeyring::find(const WebDavFolder& place, Ask ask) {
    const Deadline deadline(patience);
    const Service service(deadline.cancellable());
    if (service.get() == nullptr)
        return std::optional<std::string>();
    const Result<Objects> found = search(service, place, SECRET_SEARCH_NONE, deadline.cancellable());
    if (!found)
        return found.error();
    if (!*found)
        return std::optional<std::string>();
    auto* const item = static_cast<SecretItem*>((*found)->data);
    if (secret_item_get_locked(item) != FALSE) {
        if (ask == Ask::No)
            return Error{"the keyring is locked, and the password is in it"};
        const Deadline ofUser(patienceWithUser);
        if (const Outcome unlocked = unlock(service, *found, ofUser.cancellable()); !unlocked)
            return unlocked.error();
    }
    const Deadline toRead(patience);
    GError* error = nullptr;
    if (secret_item_load_secret_sync(item, toRead.cancellable(), &error) == FALSE)
        return errorOf(Failure(error));
    const Secret value(secret_item_get_secret(item));
    if (!value)
        return staysLocked;
    gsize length = 0;
    const gchar* const bytes = secret_value_get(value.get(), &length);
    return std::optional(std::string(bytes, length));
}

bool SecretServiceKeyring::has(const WebDavFolder& place) {
    const Deadline deadline(patience);
    const Service service(deadline.cancellable());
    if (service.get() == nullptr)
        return false;
    const Result<Objects> found = search(service, place, SECRET_SEARCH_NONE, deadline.cancellable());
    return found && *found;
}

Result<bool> SecretServiceKeyring::keep(const WebDavFolder& place, const std::string& password) {
    const Deadline deadline(patience);
    const Service service(deadline.cancellable());
    if (service.get() == nullptr)
        return false;
    const Deadline ofUser(patienceWithUser);
    const Secret value(secret_value_new(password.data(), static_cast<gssize>(password.size()), "text/plain"));
    GError* error = nullptr;
    const gboolean kept = secret_service_store_sync(
        service.get(), &schema(), attributesOf(place).get(), SECRET_COLLECTION_DEFAULT,
        ("Quillo: " + place.url).c_str(), value.get(), ofUser.cancellable(), &error);
    const Failure failure(error);
    return kept != FALSE ? Result<bool>(true) : errorOf(failure);
}

Outcome SecretServiceKeyring::forget(const WebDavFolder& place) {
    const Deadline deadline(patience);
    const Service service(deadline.cancellable());
    if (service.get() == nullptr)
        return success();
    const Result<Objects> found = search(service, place, SECRET_SEARCH_ALL, deadline.cancellable());
    if (!found)
        return found.error();
    for (const GList* entry = found->get(); entry != nullptr; entry = entry->next) {
        auto* const item = static_cast<SecretItem*>(entry->data);
        const Deadline ofUser(patienceWithUser);
        if (secret_item_get_locked(item) != FALSE) {
            if (const Outcome unlocked = unlock(service, *found, ofUser.cancellable()); !unlocked)
                return unlocked.error();
        }
        GError* error = nullptr;
        if (secret_item_delete_sync(item, ofUser.cancellable(), &error) == FALSE)
            return errorOf(Failure(error));
    }
    return success();
}

} // namespace quillo
