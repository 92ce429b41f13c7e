#include "stage/binary/inspect.h"

#include <fmt/format.h>

#include <algorithm>

#include "stage/binary/byte_view.h"
#include "stage/binary/elf_file.h"

namespace stage {
namespace {

constexpr std::uint32_t kVersionResourceType = 16;

std::string machine_name(std::uint16_t machine, std::uint16_t x86_64) {
    if (machine == x86_64) return "x86-64";
    return fmt::format("machine 0x{:04X}", machine);
}

void read_property_list(const PeFile &file, PluginReport &report) {
    const PeResource *const resource =
        file.find_resource(Pipl::kResourceType, Pipl::kResourceId, Pipl::kLanguage);
    if (!resource) return;
    report.pipl_bytes = resource->bytes;
    report.pipl = parse_pipl(report.pipl_bytes);
    report.pipl_findings = check_pipl(*report.pipl, report.pipl_bytes);
    const auto &entry = report.pipl->entry_point;
    if (entry &&
        std::find(file.exports.begin(), file.exports.end(), *entry) == file.exports.end()) {
        report.pipl_findings.push_back("entry point " + *entry + " is not exported");
    }
}

void inspect_pe(std::span<const std::uint8_t> bytes, PluginReport &report) {
    const PeFile file = read_pe(bytes);
    report.kind = file.is_dll ? "Windows library (PE32+)" : "Windows program (PE32+)";
    report.machine = machine_name(file.machine, PeFile::kMachineAmd64);
    report.exports = file.exports;
    report.imports = file.imports;
    read_property_list(file, report);
    if (const PeResource *const version = file.find_resource(kVersionResourceType)) {
        report.version = read_version_resource(version->bytes);
    }
}

void inspect_elf(std::span<const std::uint8_t> bytes, PluginReport &report) {
    const ElfFile file = read_elf(bytes);
    report.kind = file.type == ElfFile::kTypeShared ? "ELF library" : "ELF file";
    report.machine = machine_name(file.machine, ElfFile::kMachineX8664);
    report.exports = file.exports;
    for (const std::string &library : file.needed) report.imports.push_back({library, {}});
}

}  // namespace

PluginReport inspect_plugin(const std::filesystem::path &file) {
    const std::vector<std::uint8_t> bytes = read_whole_file(file);
    PluginReport report;
    report.file = file;
    report.file_bytes = bytes.size();
    try {
        if (looks_like_pe(bytes)) {
            inspect_pe(bytes, report);
        } else if (looks_like_elf(bytes)) {
            inspect_elf(bytes, report);
        } else {
            throw BinaryError("neither a Windows nor an ELF file");
        }
    } catch (const BinaryError &error) {
        throw BinaryError(file.string() + ": " + error.what());
    }
    return report;
}

}  // namespace stage
