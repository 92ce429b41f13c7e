// Instances that go through a project file and come back in another session.
#include <filesystem>
#include <fstream>
#include <sstream>

#include "support/stage/rogue_session.h"

namespace stage_test {
namespace {

using testing::IsEmpty;

/// A file name in the temporary folder, the file removed at both ends.
class ScratchFile {
  public:
    ScratchFile()
        : path_(std::filesystem::temp_directory_path() /
                ("kestrel-" +
                 std::string(testing::UnitTest::GetInstance()->current_test_info()->name()) +
                 ".json")) {
        std::filesystem::remove(path_);
    }
    ~ScratchFile() {
        std::error_code ignored;
        std::filesystem::remove(path_, ignored);
    }
    ScratchFile(const ScratchFile &) = delete;
    ScratchFile &operator=(const ScratchFile &) = delete;
    const std::filesystem::path &path() const { return path_; }
    std::string text() const {
        std::ifstream stream(path_, std::ios::binary);
        std::ostringstream text;
        text << stream.rdbuf();
        return text.str();
    }

  private:
    std::filesystem::path path_;
};

/// A scene of solids, which a project file can hold without pictures.
void open_solid(RogueSession &rogue) {
    rogue.session.start();
    stage::Project &project = rogue.host().project;
    rogue.comp = project.add_comp("comp", 8, 6, 1, 1, 10);
    project.active_comp = rogue.comp;
    const stage::ItemId solid = project.add_solid_item("solid", 8, 6, {1, 0.2, 0.4, 0.6});
    rogue.layer = project.add_layer(rogue.comp, solid, 0, "layer");
    rogue.effect = rogue.session.apply(rogue.layer);
    ASSERT_NE(rogue.effect, nullptr);
}

TEST(ProjectFile, saving_flattens_and_goes_on_live) {
    const ScratchFile file;
    RogueSession rogue;
    open_solid(rogue);
    rogue.session.save(file.path());
    EXPECT_EQ(rogue.session.sequence_bytes(*rogue.effect).size(), 16u);
    EXPECT_EQ(rogue.host().project.layer(rogue.layer)->effects[0].flat_sequence,
              (std::vector<std::uint8_t>{'F', 4, 4, 4}));
    EXPECT_THAT(file.text(), testing::HasSubstr("46040404"));
    EXPECT_EQ(rogue.render().error, 0);
    EXPECT_THAT(rogue.host().strict.all(), IsEmpty());
}

TEST(ProjectFile, an_instance_survives_a_restart_with_its_values) {
    const ScratchFile file;
    std::vector<float> frame;
    {
        RogueSession rogue;
        open_solid(rogue);
        rogue.value(rogue::kAmount).number = 61;
        rogue.value(rogue::kMode).number = 4;
        rogue.set_point(1.25, -3.5);
        frame = rogue.render().picture.argb;
        rogue.session.save(file.path());
    }
    RogueSession rogue;
    rogue.session.start();
    rogue.host().trace.enable(true);
    rogue.session.load(file.path());
    Names commands;
    for (const std::string &call : rogue.host().trace.calls()) {
        if (call.starts_with("> ")) commands.push_back(call.substr(9));
    }
    EXPECT_THAT(commands, testing::ElementsAre("SEQUENCE_RESETUP"));  // no set-up
    ASSERT_EQ(rogue.host().instances.size(), 1u);
    rogue.effect = rogue.host().instances.front().get();
    rogue.layer = rogue.effect->layer;
    EXPECT_EQ(rogue.value(rogue::kAmount).number, 61);
    EXPECT_EQ(rogue.value(rogue::kMode).number, 4);
    EXPECT_EQ(rogue.value(rogue::kCentre).x, 1.25);
    EXPECT_EQ(rogue.value(rogue::kCentre).y, -3.5);
    EXPECT_EQ(rogue.effect->state, stage::SequenceState::kLive);
    EXPECT_EQ(rogue.render().picture.argb, frame);
    EXPECT_TRUE(rogue.seen().sequence_is_live);
    EXPECT_THAT(rogue.host().strict.all(), IsEmpty());
}

TEST(ProjectFile, loading_takes_the_present_instances_off_first) {
    const ScratchFile file;
    RogueSession rogue;
    open_solid(rogue);
    rogue.session.save(file.path());
    rogue.session.duplicate(*rogue.effect, rogue.layer);
    EXPECT_EQ(rogue.host().instances.size(), 2u);
    rogue.session.load(file.path());
    EXPECT_EQ(rogue.host().instances.size(), 1u);
    EXPECT_EQ(rogue.host().handles.live_count(), 1u);
    EXPECT_THAT(rogue.host().strict.all(), IsEmpty());
}

TEST(ProjectFile, effects_of_other_plug_ins_stay_as_they_are) {
    const ScratchFile file;
    RogueSession rogue;
    open_solid(rogue);
    stage::EffectState other;
    other.match_name = "somebody else's";
    other.flat_sequence = {1, 2, 3};
    rogue.host().project.layer(rogue.layer)->effects.push_back(other);
    rogue.session.save(file.path());
    rogue.session.load(file.path());
    ASSERT_EQ(rogue.host().instances.size(), 1u);
    const stage::Layer *layer = rogue.host().project.layer(rogue.host().instances[0]->layer);
    ASSERT_EQ(layer->effects.size(), 2u);
    EXPECT_EQ(layer->effects[1], other);
}

TEST(ProjectFile, that_cannot_be_read_leaves_everything_as_it_is) {
    const ScratchFile file;
    std::ofstream(file.path()) << "no project";
    RogueSession rogue;
    open_solid(rogue);
    EXPECT_THROW(rogue.session.load(file.path()), stage::ProjectError);
    EXPECT_EQ(rogue.host().instances.size(), 1u);
    EXPECT_EQ(rogue.render().error, 0);
}

TEST(ProjectFile, is_left_untouched_when_an_effect_will_not_flatten) {
    const ScratchFile file;
    std::ofstream(file.path()) << "old";
    RogueSession rogue("fail_flatten");
    open_solid(rogue);
    EXPECT_THROW(rogue.session.save(file.path()), stage::SessionError);
    EXPECT_EQ(file.text(), "old");
}

TEST(ProjectFile, with_an_effect_that_will_not_come_back_is_an_error) {
    const ScratchFile file;
    RogueSession rogue;
    open_solid(rogue);
    rogue.session.save(file.path());
    rogue.choose("fail_resetup");
    EXPECT_THROW(rogue.session.load(file.path()), stage::SessionError);
}

}  // namespace
}  // namespace stage_test
