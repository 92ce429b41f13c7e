// Values as a user types them for an effect.
#pragma once

#include <string>

#include "stage/project/param_value.h"
#include "stage/project/project.h"

namespace stage {

class EffectInstance;
class Session;

/// The one layer of `comp` that is called `name`. Throws SessionError that lists the layers when
/// there is none, and when there are several.
LayerId layer_called(const Item &comp, const std::string &name);

/// What `text` means for parameter `index`: "none" or the name of a layer of the effect's
/// composition for a layer, everything else as ParamCatalog::parse says; points in percent refer to
/// the picture that the effect is on. Throws std::runtime_error.
ParamValue typed_value(const Session &session, const EffectInstance &effect, int index,
                       const std::string &text);

/// Makes the edit "NAME=VALUE", NAME as ParamCatalog::find takes it. Throws std::runtime_error when
/// it is none, or the effect answers with an error.
void assign(Session &session, EffectInstance &effect, const std::string &assignment);

}  // namespace stage
