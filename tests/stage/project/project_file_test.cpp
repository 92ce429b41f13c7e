#include "stage/project/project_file.h"

#include <gmock/gmock.h>

#include <fstream>

namespace stage {
namespace {

using testing::HasSubstr;

/// A folder of the test's own, removed afterwards.
struct ProjectFileTest : testing::Test {
    std::filesystem::path folder =
        std::filesystem::temp_directory_path() /
        (std::string("kestrel-") + testing::UnitTest::GetInstance()->current_test_info()->name());

    void SetUp() override {
        std::filesystem::remove_all(folder);
        std::filesystem::create_directories(folder / "pictures");
    }
    void TearDown() override { std::filesystem::remove_all(folder); }
};

/// A project that uses every field.
void fill(Project &project, const std::filesystem::path &picture) {
    const ItemId comp = project.add_comp("Comp \xC3\xA4\xF0\x9F\x8E\xA8", 1920, 1080, 10, 11, 250);
    project.item(comp)->rate_num = 30000;
    project.item(comp)->rate_den = 1001;
    const ItemId footage = project.add_footage("clip", 720, 576, 16, 15, 25, {});
    project.item(footage)->path = picture.generic_string();
    const ItemId chart = project.add_footage("bars", 640, 480, 1, 1, 1, {});
    project.item(chart)->chart = "bars75";
    const ItemId solid = project.add_solid_item("solid", 30, 20, {0.5, 0.1, 1.0 / 3, -2.5});
    project.add_layer(comp, footage, -1, "clip layer");
    project.add_layer(comp, chart, -1, "chart layer");
    project.add_text_layer(comp, -1, "title");
    Layer &layer = *project.layer(project.add_layer(comp, solid, 0, "solid \"quoted\"\n"));
    layer.flags = layer_flag::kVideoActive | layer_flag::kGuide | layer_flag::kLocked;
    layer.selected = true;
    layer.position_x = 12.25;
    layer.position_y = -1.0 / 3;
    layer.scale = 33.3;
    layer.opacity = 0.1;
    layer.position_expression = "[thisComp.width / 2, thisComp.height / 2]";
    layer.separated_position = true;
    EffectState effect;
    effect.match_name = "an effect";
    effect.flat_sequence = {0x00, 0x01, 0xfe, 0xff};
    EffectStream stream;
    stream.id = 41;
    stream.name = "Amount";
    stream.hidden = true;
    stream.value.number = 1e-17;
    stream.value.x = 1234.5678901234567;
    stream.value.y = -0.0;
    stream.value.color = {255, 0, 128, 7};
    stream.value.layer = layer.id;
    effect.streams = {EffectStream{}, stream};
    layer.effects = {effect, EffectState{"another", {}, {}}};
}

void expect_same(const Project &a, const Project &b) {
    const ProjectData left = a.data();
    const ProjectData right = b.data();
    EXPECT_EQ(left.active_comp, right.active_comp);
    EXPECT_EQ(left.next_id, right.next_id);
    ASSERT_EQ(left.items.size(), right.items.size());
    for (std::size_t i = 0; i < left.items.size(); ++i) {
        SCOPED_TRACE(left.items[i].name);
        EXPECT_EQ(left.items[i].id, right.items[i].id);
        EXPECT_EQ(left.items[i].kind, right.items[i].kind);
        EXPECT_EQ(left.items[i].name, right.items[i].name);
        EXPECT_EQ(left.items[i].width, right.items[i].width);
        EXPECT_EQ(left.items[i].height, right.items[i].height);
        EXPECT_EQ(left.items[i].par_num, right.items[i].par_num);
        EXPECT_EQ(left.items[i].par_den, right.items[i].par_den);
        EXPECT_EQ(left.items[i].rate_num, right.items[i].rate_num);
        EXPECT_EQ(left.items[i].rate_den, right.items[i].rate_den);
        EXPECT_EQ(left.items[i].frames, right.items[i].frames);
        EXPECT_EQ(left.items[i].color, right.items[i].color);
        EXPECT_EQ(left.items[i].chart, right.items[i].chart);
        EXPECT_EQ(left.items[i].path, right.items[i].path);
        EXPECT_EQ(left.items[i].layers, right.items[i].layers);
    }
}

TEST_F(ProjectFileTest, EverythingSurvivesSaveAndLoad) {
    Project saved;
    fill(saved, std::filesystem::absolute(folder / "pictures" / "clip.%04d.exr"));
    save_project(saved, folder / "project.json");
    Project loaded;
    load_project(loaded, folder / "project.json", {});
    expect_same(saved, loaded);
}

TEST_F(ProjectFileTest, SavingTwiceGivesTheSameBytes) {
    Project saved;
    fill(saved, folder / "clip.png");
    const std::string text = project_to_text(saved, folder);
    Project loaded;
    project_from_text(loaded, text, "text", folder, {});
    EXPECT_EQ(project_to_text(loaded, folder), text);
}

TEST_F(ProjectFileTest, FootageBeneathTheProjectIsStoredRelative) {
    Project project;
    fill(project, std::filesystem::absolute(folder / "pictures" / "clip.png"));
    save_project(project, folder / "project.json");
    std::ifstream stream(folder / "project.json");
    const std::string text(std::istreambuf_iterator<char>(stream), {});
    EXPECT_THAT(text, HasSubstr("\"path\": \"pictures/clip.png\""));

    // Moved as a whole, the project still finds its footage.
    const std::filesystem::path moved = folder / "moved";
    std::filesystem::create_directories(moved);
    std::filesystem::copy(folder / "project.json", moved / "project.json");
    Project loaded;
    load_project(loaded, moved / "project.json", {});
    EXPECT_EQ(loaded.items()[1]->path,
              (std::filesystem::absolute(moved) / "pictures" / "clip.png").generic_string());
}

TEST_F(ProjectFileTest, FootageElsewhereIsStoredAbsolute) {
    Project project;
    const std::filesystem::path elsewhere = std::filesystem::absolute(folder / "clip.png");
    fill(project, elsewhere);
    std::filesystem::create_directories(folder / "sub");
    save_project(project, folder / "sub" / "project.json");
    Project loaded;
    load_project(loaded, folder / "sub" / "project.json", {});
    EXPECT_EQ(loaded.items()[1]->path, elsewhere.generic_string());
}

TEST_F(ProjectFileTest, FootageIsOpenedThroughTheCallback) {
    Project saved;
    fill(saved, std::filesystem::absolute(folder / "clip.png"));
    save_project(saved, folder / "project.json");
    std::vector<std::string> asked;
    Project loaded;
    load_project(loaded, folder / "project.json", [&](const FootageRequest &request) {
        asked.push_back(request.path.empty() ? "chart " + request.chart : "file");
        OpenedFootage opened{request.width, request.height, 7, {}};
        opened.reader = [](std::int64_t) { return make_picture(1, 1, SampleType::Float); };
        return opened;
    });
    EXPECT_THAT(asked, testing::ElementsAre("file", "chart bars75"));
    EXPECT_EQ(loaded.items()[1]->frames, 7);
    EXPECT_TRUE(loaded.items()[1]->reader);
    EXPECT_TRUE(loaded.items()[2]->reader);
}

TEST_F(ProjectFileTest, FootageThatCannotBeOpenedIsNamed) {
    Project saved;
    fill(saved, folder / "clip.png");
    save_project(saved, folder / "project.json");
    Project loaded;
    const auto open = [](const FootageRequest &) -> OpenedFootage {
        throw PictureError("clip.png: no such file");
    };
    try {
        load_project(loaded, folder / "project.json", open);
        FAIL();
    } catch (const ProjectError &error) {
        EXPECT_THAT(error.what(), HasSubstr("project.json: items[1]: clip.png: no such file"));
    }
    EXPECT_TRUE(loaded.items().empty());
}

TEST_F(ProjectFileTest, FailedSaveLeavesTheOldFile) {
    Project project;
    fill(project, folder / "clip.png");
    const std::filesystem::path file = folder / "project.json";
    save_project(project, file);
    const auto size = std::filesystem::file_size(file);
    project.layer(project.items()[0]->layers[0].id)->opacity = std::nan("");
    EXPECT_THROW(save_project(project, file), ProjectError);
    EXPECT_EQ(std::filesystem::file_size(file), size);
    EXPECT_THROW(save_project(project, folder / "none" / "project.json"), ProjectError);
    const auto entries = std::filesystem::directory_iterator(folder);
    EXPECT_EQ(std::distance(begin(entries), end(entries)), 2) << "the file and the picture folder";
}

TEST_F(ProjectFileTest, NamesThatAreNoUtf8AreRefusedOnSave) {
    Project project;
    project.add_comp("bad \xff name", 10, 10, 1, 1, 1);
    EXPECT_THROW(project_to_text(project, {}), ProjectError);
}

TEST_F(ProjectFileTest, MissingFileIsAClearError) {
    Project project;
    try {
        load_project(project, folder / "none.json", {});
        FAIL();
    } catch (const ProjectError &error) {
        EXPECT_THAT(error.what(), HasSubstr("none.json: the file cannot be read"));
    }
}

}  // namespace
}  // namespace stage
