// Damaged project files: an error that says where, and the project at hand stays as it was.
#include <gmock/gmock.h>

#include "stage/project/project_file.h"

namespace stage {
namespace {

using testing::HasSubstr;

std::string good_text() {
    Project project;
    const ItemId comp = project.add_comp("Comp", 64, 48, 1, 1, 5);
    const ItemId solid = project.add_solid_item("Solid", 64, 48, {1, 0, 0, 0});
    const LayerId layer = project.add_layer(comp, solid, 0, "Layer");
    EffectState effect;
    effect.match_name = "effect";
    effect.flat_sequence = {0xab, 0xcd};
    effect.streams.resize(1);
    project.layer(layer)->effects.push_back(effect);
    return project_to_text(project, {});
}

/// The error for `good_text()` with the first `from` replaced by `to`.
std::string error_with(const std::string &from, const std::string &to) {
    std::string text = good_text();
    const std::size_t at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    text.replace(at, from.size(), to);
    Project project;
    const ItemId own = project.add_comp("Own", 10, 10, 1, 1, 1);
    try {
        project_from_text(project, text, "FILE", {}, {});
    } catch (const ProjectError &error) {
        EXPECT_EQ(project.items().size(), 1u);
        EXPECT_NE(project.item(own), nullptr);
        EXPECT_EQ(std::string(error.what()).find('\n'), std::string::npos);
        return error.what();
    }
    return "no error";
}

struct Damage {
    const char *from;
    const char *to;
    const char *error;
};

/// Names the case in a failure; the default would print addresses.
void PrintTo(const Damage &damage, std::ostream *out) {
    *out << damage.error;
}

class DamagedFile : public testing::TestWithParam<Damage> {};

TEST_P(DamagedFile, IsRefusedWithItsPlace) {
    EXPECT_THAT(error_with(GetParam().from, GetParam().to), HasSubstr(GetParam().error));
}

constexpr Damage kDamages[] = {
    {"kestrel-stage-project", "other", "FILE: this is not a project file of the stage"},
    {"\"version\": 1", "\"version\": 2", "version: only version 1 can be read"},
    {"\"version\": 1", "\"version\": \"1\"", "version: expected a whole number"},
    {"\"next_id\": 4,", "", "next_id: is missing"},
    {"\"next_id\": 4", "\"next_id\": 3", "items[0].layers[0].id: the id is not below next_id"},
    {"\"active_comp\": 1", "\"active_comp\": 2", "active_comp: there is no such composition"},
    {"\"items\": [", "\"items\": 5, \"x\": [", "items: expected a list"},
    {"\"kind\": \"comp\"", "\"kind\": \"camera\"", "items[0].kind: \"camera\" is not a known kind"},
    {"\"width\": 64", "\"width\": 0", "items[0].width: is outside 1..30000"},
    {"\"width\": 64", "\"width\": 18446744073709551615", "items[0].width: is outside"},
    {"\"width\": 64", "\"width\": 64.5", "items[0].width: expected a whole number"},
    {"\"frames\": 5", "\"frames\": -5", "items[0].frames: is outside"},
    {"\"name\": \"Comp\"", "\"name\": 7", "items[0].name: expected text"},
    {"\"id\": 2", "\"id\": 1", "items[1].id: the id is used twice"},
    {"\"source\": 2", "\"source\": 9", "layers[0].source: there is no such item"},
    {"\"source\": 2", "\"source\": 1", "items: Comp: a composition cannot contain itself"},
    {"\"kind\": \"av\"", "\"kind\": \"text\"", "layers[0].source: a text layer has no source"},
    {"\"selected\": false", "\"selected\": 0", "layers[0].selected: expected true or false"},
    {"\"scale\": 100.0", "\"scale\": \"big\"", "layers[0].scale: expected a number"},
    {"\"scale\": 100.0", "\"scale\": 1e999", "FILE: "},
    {"\"abcd\"", "\"abc\"", "effects[0].flat_sequence: expected hexadecimal bytes"},
    {"\"abcd\"", "\"abxy\"", "effects[0].flat_sequence: expected hexadecimal bytes"},
    {"\"hidden\": false,", "", "streams[0].hidden: is missing"},
    {"{", "", "FILE: no valid JSON at byte"},
};

INSTANTIATE_TEST_SUITE_P(All, DamagedFile, testing::ValuesIn(kDamages));

TEST(ProjectFileErrors, EveryTruncationIsRefused) {
    const std::string text = good_text();
    for (std::size_t length = 0; length + 2 < text.size(); ++length) {
        Project project;
        EXPECT_THROW(project_from_text(project, text.substr(0, length), "FILE", {}, {}),
                     ProjectError)
            << length;
    }
}

TEST(ProjectFileErrors, RingOfNestedCompsIsRefused) {
    Project project;
    const ItemId outer = project.add_comp("Outer", 8, 8, 1, 1, 1);
    const ItemId inner = project.add_comp("Inner", 8, 8, 1, 1, 1);
    const ItemId solid = project.add_solid_item("Solid", 8, 8, {});
    project.add_layer(outer, inner, 0, "a");
    project.add_layer(inner, solid, 0, "b");
    std::string text = project_to_text(project, {});
    const std::string source = "\"source\": " + std::to_string(solid);
    text.replace(text.find(source), source.size(), "\"source\": " + std::to_string(outer));
    Project loaded;
    EXPECT_THROW(project_from_text(loaded, text, "FILE", {}, {}), ProjectError);
}

TEST(ProjectFileErrors, OpenedFootageMustHaveASize) {
    Project project;
    project.add_footage("chart", 8, 8, 1, 1, 1, {});
    project.item(1)->chart = "ramp";
    const std::string text = project_to_text(project, {});
    const auto open = [](const FootageRequest &) { return OpenedFootage{0, 8, 1, {}}; };
    EXPECT_THROW(project_from_text(project, text, "FILE", {}, open), ProjectError);
}

}  // namespace
}  // namespace stage
