// The parameters that the plug-in has added, as the host keeps them.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "hostapi/param_def.h"
#include "stage/project/param_value.h"

namespace stage {

/// One parameter: the definition as added, with the texts copied.
struct ParamInfo {
    PF_ParamDef def{};                 ///< with its label or choices pointing into this record
    int id = 0;                        ///< permanent id; `def.uu` changes its meaning at run time
    std::string name;                  ///< def.name
    std::string path;                  ///< groups and name, "Scopes/Vectorscope/Scope Position"
    std::string text;                  ///< checkbox label or popup string
    std::vector<std::string> choices;  ///< popup: split at "|", separators included
    bool is_separator(int choice) const;  ///< 1-based
};

/// What the host takes over from a definition in the parameter-UI call; each instance has its own.
struct ParamLook {
    PF_ParamUIFlags ui_flags = 0;
    PF_ParamFlags flags = 0;
    float slider_min = 0, slider_max = 0;
    PF_Precision precision = 0;
    PF_ValueDisplayFlags display_flags = 0;
    std::string name;
};

/// The look that `def` asks for.
ParamLook look_of(const PF_ParamDef &def);
/// The reverse: writes `look` into `def`.
void put_look(const ParamLook &look, PF_ParamDef &def);

/// Appended to by add_param in PARAMS_SETUP, read-only afterwards.
class ParamCatalog {
  public:
    ParamCatalog();

    /// Copies `def` and its texts. Throws std::runtime_error with one line when the host would
    /// refuse it (id twice, unterminated name, default outside its range, wrong count of choices,
    /// unbalanced group end).
    void append(const PF_ParamDef &def);

    int count() const {
        return static_cast<int>(params_.size());
    }  ///< with the input layer, index 0
    const ParamInfo &at(int index) const { return *params_.at(static_cast<std::size_t>(index)); }
    /// Looks of all parameters as added: what a new instance starts with.
    const std::vector<ParamLook> &looks() const { return looks_; }
    int open_groups() const { return static_cast<int>(groups_.size()); }

    /// Index of the parameter called `name`: an index ("28"), a name that occurs once, or as many
    /// trailing parts of the path as make it unique ("Vectorscope/Scope Position"). Group starts
    /// and ends have no value and are not found. Throws std::runtime_error that lists near names or
    /// the candidates.
    int find(std::string_view name) const;

    /// Value a new instance on a layer of `width` × `height` pixels starts with. Percentages of
    /// points become layer pixels in 16.16, computed in double and rounded to the nearest 1/65536.
    ParamValue initial_value(int index, int width, int height) const;

    /// Parses text as a value of parameter `index`: number, "on"/"off", choice text or number,
    /// "x,y" or "x%,y%", "#rrggbb" or "r,g,b" (0..255). Layer parameters are not set by text.
    /// Checks the valid range. Throws std::runtime_error that names the parameter and lists range
    /// or choices.
    ParamValue parse(int index, std::string_view text, int width, int height) const;

    /// `value` limited to the valid range, as the host does with values that a plug-in writes.
    /// Points are left alone: their bounds hold in the panel only.
    ParamValue clamped(int index, const ParamValue &value) const;

    /// Readable form of a value: "Four-Way Classic", "on", "200", "(15, 305.5)".
    std::string to_text(int index, const ParamValue &value) const;

    /// True for types that carry a value (not groups).
    static bool has_value(const PF_ParamDef &def);

  private:
    std::string group_path() const;

    std::vector<std::unique_ptr<ParamInfo>> params_;
    std::vector<ParamLook> looks_;
    std::vector<std::string> groups_;
};

/// "float slider", "popup" ...
const char *param_type_name(PF_ParamType type);

/// Factor from layer pixels at full resolution to the pixels of the buffer being rendered.
struct PointScale {
    double x = 1, y = 1;
};

/// Writes `value` into the union of `def`, whose type says how; points are scaled and rounded to
/// 16.16, layer parameters are left alone.
void store_value(PF_ParamDef &def, const ParamValue &value, PointScale scale);
/// The value in the union of `def`; the reverse of store_value.
ParamValue load_value(const PF_ParamDef &def, PointScale scale);

}  // namespace stage
