// The host as plug-ins find it: with every suite that there is.
#pragma once

#include "stage/host/host.h"
#include "stage/services/suites/suites.h"

namespace stage {

class ServingHost : public Host {
  public:
    explicit ServingHost(HostOptions host_options = {}) : Host(host_options) {
        add_all_suites(suites);
    }
};

}  // namespace stage
