// `quillo-webdav`: see sync/WebDavServer.h.
#include "webdav/HttpWebDavServer.h"

extern "C" __attribute__((visibility("default"))) quillo::WebDavServer*
quilloMakeWebDavServer(const std::string& url);

quillo::WebDavServer* quilloMakeWebDavServer(const std::string& url) {
    return new quillo::HttpWebDavServer(url);
}
