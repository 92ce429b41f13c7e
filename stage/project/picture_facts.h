// What the pixels of an item depend on, to tell whether a picture made earlier is still right.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "stage/project/composite.h"
#include "stage/project/project.h"

namespace stage {

struct PlacedFacts;

/// Facts of an item at a frame. Equal facts mean equal pictures at the same resolution, whatever
/// happened to the project in between; a still has the same facts at every frame.
struct PictureFacts {
    ItemKind kind = ItemKind::kComp;
    int width = 0, height = 0;
    int par_num = 1, par_den = 1;
    std::array<double, 4> color{};    ///< solids
    FrameReader reader;               ///< footage
    std::int64_t frame = -1;          ///< footage: the frame that is read, -1 outside its duration
    std::vector<PlacedFacts> layers;  ///< comps: those that are drawn, the bottom first

    bool operator==(const PictureFacts &) const;
};

/// Facts of a drawn layer.
struct PlacedFacts {
    double position_x = 0, position_y = 0, scale = 0;
    float opacity = 0;
    PictureFacts source;

    bool operator==(const PlacedFacts &) const;
};

/// Of the picture that item_picture() gives. Throws ProjectError as that does.
PictureFacts item_facts(const Project &project, ItemId item, std::int64_t frame);
/// Of the picture that composite() gives.
PictureFacts stack_facts(const Project &project, const StackPart &part, std::int64_t frame);

}  // namespace stage
