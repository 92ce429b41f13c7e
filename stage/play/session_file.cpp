#include "stage/play/session_file.h"

#include <algorithm>
#include <fstream>
#include <sstream>

#include "stage/play/option_fields.h"
#include "stage/play/session_steps.h"
#include "stage/text/utf8_path.h"

namespace stage {
namespace {

const StepRow *find_step(const std::string &name) {
    for (const auto rows : {project_steps(), effect_steps(), pointer_steps(), view_steps()}) {
        const auto found = std::ranges::find(rows, name, &StepRow::name);
        if (found != rows.end()) return &*found;
    }
    return nullptr;
}

SessionStep read_step(const JsonValue &value) {
    const bool bare = value.is_string();
    if (!bare && !value.is_object()) value.fail("expected a step: its name, or {\"name\": ...}");
    const auto [name, body] = bare ? std::pair(value.string(), value) : value.members().front();
    const StepRow *row = find_step(name);
    if (row == nullptr) value.fail("there is no step \"" + name + "\"");
    if (!bare && value.members().size() != 1) value.fail("a step has one name only");
    if (row->bare && !bare) value.fail("\"" + name + "\" stands by itself, without {}");
    if (!row->bare && bare) value.fail("\"" + name + "\" needs a value: {\"" + name + "\": ...}");
    return {bare ? body.where() + "." + name : body.where(), row->kind, row->read(body)};
}

SessionFile read_session(const JsonValue &value) {
    value.only({"format", "version", "about", "options", "steps"});
    if (value["format"].string() != kSessionFormat) {
        value["format"].fail(std::string("must be \"") + kSessionFormat + "\"");
    }
    if (value["version"].integer(0, INT32_MAX) != kSessionVersion) {
        value["version"].fail("only version " + std::to_string(kSessionVersion) + " is known");
    }
    if (const auto about = value.find("about")) about->string();
    SessionFile file;
    if (const auto options = value.find("options")) {
        for (const OptionChange &change : read_options(*options, false)) change(file.options);
    }
    for (const JsonValue &step : value["steps"].elements()) file.steps.push_back(read_step(step));
    return file;
}

}  // namespace

SessionFile session_from_text(const std::string &text, const std::string &name) {
    try {
        const JsonDocument document(text, name, JsonDocument::Lines::kCounted);
        return read_session(document.root());
    } catch (const JsonError &error) {
        const JsonFault &fault = error.fault();
        throw SessionFileError(place_text(name, fault.line, fault.path) + ": " +
                               reason_text(fault));
    }
}

SessionFile read_session_file(const std::filesystem::path &file) {
    const std::string name = path_to_utf8(file);
    std::ifstream stream(file, std::ios::binary);
    std::ostringstream text;
    if (stream) text << stream.rdbuf();
    if (!stream) throw SessionFileError(name + ": the file cannot be read");
    return session_from_text(std::move(text).str(), name);
}

}  // namespace stage
