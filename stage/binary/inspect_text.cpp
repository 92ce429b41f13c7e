#include <fmt/format.h>

#include <nlohmann/json.hpp>
#include <sstream>

#include "stage/binary/inspect.h"

namespace stage {
namespace {

using nlohmann::ordered_json;

std::string hex(std::uint32_t value) {
    return fmt::format("0x{:08X}", value);
}

std::string dotted(const std::array<std::uint16_t, 4> &quad) {
    return fmt::format("{}.{}.{}.{}", quad[0], quad[1], quad[2], quad[3]);
}

std::string dotted(const PiplVersion &version) {
    return fmt::format("{}.{}", version.major, version.minor);
}

using Row = std::pair<const char *, std::optional<std::string>>;

template <typename T, typename Format>
std::optional<std::string> formatted(const std::optional<T> &value, Format format) {
    return value ? std::optional<std::string>(format(*value)) : std::nullopt;
}

// The decoded properties as label and text; both reports are made from these rows.
std::vector<Row> pipl_rows(const Pipl &pipl) {
    const auto versions = [](const PiplVersion &version) { return dotted(version); };
    return {
        {"kind", pipl.kind},
        {"name", pipl.name},
        {"category", pipl.category},
        {"entry point", pipl.entry_point},
        {"property list version", formatted(pipl.list_version, versions)},
        {"host interface version", formatted(pipl.spec_version, versions)},
        {"effect version", formatted(pipl.effect_version,
                                     [](std::uint32_t v) {
                                         return hex(v) + " (" + describe_effect_version(v) + ")";
                                     })},
        {"info flags", formatted(pipl.info_flags, hex)},
        {"out flags", formatted(pipl.out_flags, hex)},
        {"out flags 2", formatted(pipl.out_flags2, hex)},
        {"match name", pipl.match_name},
        {"reserved", formatted(pipl.reserved_info, hex)},
    };
}

void write_row(std::ostream &out, const std::string &label, const std::string &text) {
    out << "  " << label << ": " << text << '\n';
}

void write_pipl(std::ostream &out, const PluginReport &report) {
    if (!report.pipl) {
        out << "Property list: none\n";
        return;
    }
    out << "Property list: " << report.pipl->properties.size() << " properties, "
        << report.pipl_bytes.size() << " bytes\n";
    for (const auto &[label, text] : pipl_rows(*report.pipl)) {
        if (text) write_row(out, label, *text);
    }
    for (const std::string &finding : report.pipl_findings) out << "  ! " << finding << '\n';
}

void write_version(std::ostream &out, const PluginReport &report) {
    if (!report.version) {
        out << "Version resource: none\n";
        return;
    }
    out << "Version resource:\n";
    write_row(out, "file version", dotted(report.version->file_version));
    write_row(out, "product version", dotted(report.version->product_version));
    for (const auto &[key, text] : report.version->strings) write_row(out, key, text);
}

// Text of unknown origin may be no UTF-8; the JSON writer replaces what is not.
std::string dump(const ordered_json &json) {
    return json.dump(2, ' ', false, ordered_json::error_handler_t::replace) + "\n";
}

ordered_json pipl_json(const PluginReport &report) {
    ordered_json fields = ordered_json::object();
    for (const auto &[label, text] : pipl_rows(*report.pipl)) {
        fields[label] = text ? ordered_json(*text) : ordered_json(nullptr);
    }
    ordered_json properties = ordered_json::array();
    for (const PiplProperty &property : report.pipl->properties) {
        properties.push_back(
            {{"key", property.key}, {"offset", property.offset}, {"length", property.length}});
    }
    return {{"bytes", report.pipl_bytes.size()},
            {"fields", fields},
            {"properties", properties},
            {"findings", report.pipl_findings}};
}

ordered_json version_json(const VersionResource &version) {
    ordered_json strings = ordered_json::object();
    for (const auto &[key, text] : version.strings) strings[key] = text;
    return {{"file version", dotted(version.file_version)},
            {"product version", dotted(version.product_version)},
            {"strings", strings}};
}

}  // namespace

std::string report_text(const PluginReport &report) {
    std::ostringstream out;
    out << "File: " << report.file.string() << " (" << report.file_bytes << " bytes)\n"
        << "Kind: " << report.kind << ", " << report.machine << '\n';
    out << "Exports: " << report.exports.size() << '\n';
    for (const std::string &name : report.exports) out << "  " << name << '\n';
    out << "Imports: " << report.imports.size() << " libraries\n";
    for (const PeImport &import : report.imports) {
        out << "  " << import.dll;
        if (!import.functions.empty()) out << " (" << import.functions.size() << " functions)";
        out << '\n';
    }
    write_pipl(out, report);
    write_version(out, report);
    return out.str();
}

std::string report_json(const PluginReport &report) {
    ordered_json imports = ordered_json::array();
    for (const PeImport &import : report.imports) {
        imports.push_back({{"library", import.dll}, {"functions", import.functions}});
    }
    ordered_json json;
    json["file"] = report.file.string();
    json["bytes"] = report.file_bytes;
    json["kind"] = report.kind;
    json["machine"] = report.machine;
    json["exports"] = report.exports;
    json["imports"] = imports;
    json["pipl"] = report.pipl ? pipl_json(report) : ordered_json(nullptr);
    json["version"] = report.version ? version_json(*report.version) : ordered_json(nullptr);
    return dump(json);
}

}  // namespace stage
