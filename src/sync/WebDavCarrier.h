/// Lists that travel through a folder on a server that speaks WebDAV.
#pragma once

#include "base/Descriptor.h"
#include "sync/Carrier.h"
#include "sync/DeviceFiles.h"
#include "sync/LookTimes.h"
#include "sync/Passwords.h"
#include "sync/WebDavServer.h"

#include <atomic>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace quillo {

/// The files lie in `<url>/quillo/v1`. The folder is made when it is set up and never again. A listing of the
/// folder tells which files have changed; only those are fetched.
///
/// A password that the server has refused is not tried again by itself, as some servers lock out whoever errs
/// too often: only once another one is kept, or when somebody asks for an exchange, once a minute at most.
class WebDavCarrier final : public Carrier {
public:
    enum class SetUp { Yes, No };
    using Connect = std::function<Result<std::unique_ptr<WebDavServer>>(const std::string& url)>;

    /// With SetUp::Yes the first exchange makes the folder; the one that the address names must be there. The
    /// passwords may be null where the place has no user.
    WebDavCarrier(WebDavFolder place, Device self, SetUp setUp, std::shared_ptr<Passwords> passwords,
                  Connect connect = loadWebDavServer);

    Exchange exchange(Mirror& mirror) override;
    void awaitNews(int wake) override;
    void setShown(bool shown) override;
    void giveUp() override;
    Result<DeviceFile> fileOf(const Uuid& device) override;
    Outcome forget(const Uuid& device, double stamp) override;

private:
    /// A file, as the folder was listed last.
    struct Seen {
        ListedFile listed;
        LookTimes::Moment since{0}; ///< when it was listed so first
        bool settled = false;       ///< whatever changes it from now on changes how it is listed
        std::string etag;           ///< what it was fetched with
    };

    struct Refusal {
        LookTimes::Moment when;
        Error why;
    };

    void attempt(Mirror& mirror, Exchange& exchange);
    Outcome reach();
    Outcome connect();
    Outcome logIn();
    Outcome makeFolders();
    Outcome look();
    Outcome lookAt(const Uuid& device, ListedFile listed);
    DeviceFiles::Bytes fetch(const Uuid& device);
    DeviceFiles::Bytes bytesOf(const Uuid& device, FromWebDav<FetchedFile> fetched, LookTimes::Moment began);
    Outcome send(const StampedBytes& list);
    FromWebDav<DeviceFile> readAnew(const Uuid& device);
    Error failed(WebDavFailure failure);

    const WebDavFolder place_;
    const std::string folder_; ///< for people
    const std::shared_ptr<Passwords> passwords_;
    const Connect connect_;
    bool toBeMade_;
    LookTimes times_;
    bool asked_ = true;                    ///< somebody wants the next exchange
    std::optional<WebDavFailure> failure_; ///< of the last attempt
    std::optional<Error> lastProblem_;
    std::optional<std::string> password_; ///< what the server was told last
    bool loggedIn_ = false;               ///< by that, as far as is known
    std::optional<Refusal> refusal_;      ///< of that
    std::map<Uuid, Seen> seen_;
    DeviceFiles files_;
    Descriptor timer_;

    std::mutex mutex_; ///< for the server's coming and going
    std::unique_ptr<WebDavServer> server_;
    bool givenUp_ = false;

    std::atomic<bool> shown_ = false;
    Descriptor shownChanged_;
};

} // namespace quillo
