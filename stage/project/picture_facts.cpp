#include "stage/project/picture_facts.h"

namespace stage {
namespace {

/// What all kinds have; colour, footage and layers are still to be filled in.
PictureFacts common_facts(const Item &item) {
    PictureFacts facts;
    facts.kind = item.kind;
    facts.width = item.width;
    facts.height = item.height;
    facts.par_num = item.par_num;
    facts.par_den = item.par_den;
    return facts;
}

}  // namespace

bool PictureFacts::operator==(const PictureFacts &) const = default;
bool PlacedFacts::operator==(const PlacedFacts &) const = default;

PictureFacts item_facts(const Project &project, ItemId item, std::int64_t frame) {
    const Item *found = project.item(item);
    if (found == nullptr) throw ProjectError("there is no item " + std::to_string(item));
    if (found->kind == ItemKind::kComp) return stack_facts(project, {item, -1, true}, frame);
    PictureFacts facts = common_facts(*found);
    if (found->kind == ItemKind::kSolid) facts.color = found->color;
    if (found->kind == ItemKind::kFootage) {
        facts.reader = found->reader;
        const bool still = found->frames == 1;
        facts.frame = still ? 0 : frame >= 0 && frame < found->frames ? frame : -1;
    }
    return facts;
}

PictureFacts stack_facts(const Project &project, const StackPart &part, std::int64_t frame) {
    const Item *comp = project.comp(part.comp);
    if (comp == nullptr) throw ProjectError("there is no composition " + std::to_string(part.comp));
    PictureFacts facts = common_facts(*comp);
    for (int i = static_cast<int>(comp->layers.size()) - 1; i > part.below && i >= 0; --i) {
        const Layer &layer = comp->layers[static_cast<std::size_t>(i)];
        if (project.item(layer.source) == nullptr || !is_drawn(layer, part.nested)) continue;
        facts.layers.push_back({layer.position_x, layer.position_y, layer.scale, opacity_of(layer),
                                item_facts(project, layer.source, frame)});
    }
    return facts;
}

}  // namespace stage
