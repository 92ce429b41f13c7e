#include "support/paths.h"

namespace paths {

std::string source() {
    return KS_SOURCE_DIR;
}
std::string build() {
    return KS_BUILD_DIR;
}
std::string plugin() {
    return KS_PLUGIN_FILE;
}
std::string rogue() {
    return KS_ROGUE_FILE;
}
std::string stage() {
    return KS_STAGE_FILE;
}

}  // namespace paths
