// `quillo-modelservers`: see languagemodel/ModelServers.h.
#include "modelservers/HttpModelServers.h"

extern "C" __attribute__((visibility("default"))) quillo::ModelServers* quilloGetModelServers();

quillo::ModelServers* quilloGetModelServers() {
    static quillo::HttpModelServers servers;
    return &servers;
}
