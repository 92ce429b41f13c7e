#include "stage/effect/plugin.h"

#include <fmt/format.h>

#include <stdexcept>

#include "stage/binary/inspect.h"

namespace stage {
namespace {

constexpr const char *kDefaultEntry = "EntryPointFunc";

std::optional<Pipl> read_pipl(const std::filesystem::path &file) {
    return inspect_plugin(file).pipl;
}

void compare(std::vector<std::string> &lines, const char *what, std::uint32_t code,
             std::optional<std::uint32_t> listed) {
    if (!listed || *listed == code) return;
    lines.push_back(fmt::format("{}: code {:08x}, property list {:08x}", what, code, *listed));
}

}  // namespace

Plugin::Plugin(const std::filesystem::path &file) : library(file), pipl(read_pipl(file)) {
    const std::string name = pipl && pipl->entry_point ? *pipl->entry_point : kDefaultEntry;
    entry = reinterpret_cast<EntryPoint>(library.symbol(name.c_str()));
}

std::vector<std::string> Plugin::disagreements() const {
    std::vector<std::string> lines;
    if (!pipl) return lines;
    compare(lines, "version", reported.my_version, pipl->effect_version);
    compare(lines, "out_flags", static_cast<std::uint32_t>(reported.out_flags), pipl->out_flags);
    compare(lines, "out_flags2", static_cast<std::uint32_t>(reported.out_flags2), pipl->out_flags2);
    return lines;
}

}  // namespace stage
