// Names of kinds as the project file writes them: one table for both directions.
#pragma once

#include "stage/project/project.h"

namespace stage {

struct ItemKindName {
    ItemKind kind;
    const char *name;
};
inline constexpr ItemKindName kItemKindNames[] = {
    {ItemKind::kComp, "comp"}, {ItemKind::kFootage, "footage"}, {ItemKind::kSolid, "solid"}};

struct LayerKindName {
    LayerKind kind;
    const char *name;
};
inline constexpr LayerKindName kLayerKindNames[] = {{LayerKind::kAv, "av"},
                                                    {LayerKind::kText, "text"}};

}  // namespace stage
