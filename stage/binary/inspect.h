// What a plug-in file says about itself without being run.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "stage/binary/pe_file.h"
#include "stage/binary/pipl.h"
#include "stage/binary/version_resource.h"

namespace stage {

struct PluginReport {
    std::filesystem::path file;
    std::uint64_t file_bytes = 0;
    std::string kind;     // "Windows library (PE32+)", "ELF library", ...
    std::string machine;  // "x86-64" or "machine 0x...."
    std::vector<std::string> exports;
    std::vector<PeImport> imports;  // of an ELF file the libraries only, without functions
    std::optional<Pipl> pipl;       // Windows files that have one
    std::vector<std::uint8_t> pipl_bytes;
    std::vector<std::string> pipl_findings;  // from check_pipl, and an entry point not exported
    std::optional<VersionResource> version;
};

// Reads a PE or ELF file. Throws BinaryError, file name included, when it is neither or is damaged.
PluginReport inspect_plugin(const std::filesystem::path &file);

// The report for people: several lines of text, the last one ended.
std::string report_text(const PluginReport &report);

// The same as one JSON object, indented by two, last line ended. "pipl" and "version" are null
// where the file has none.
std::string report_json(const PluginReport &report);

}  // namespace stage
