// Scripts, undo groups and registration through the utility suite.
#include "stage/services/project_suite_fixture.h"

namespace stage {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr char kSetExpression[] =
    "app.project.activeItem.selectedLayers[0].position.expression = 'here'";

struct ScriptSuiteTest : SuiteTest {
    std::string take(AEGP_MemHandle handle) {
        void *data = nullptr;
        EXPECT_EQ(memory().AEGP_LockMemHandle(handle, &data), 0);
        const std::string text = static_cast<const char *>(data);
        EXPECT_EQ(memory().AEGP_UnlockMemHandle(handle), 0);
        EXPECT_EQ(memory().AEGP_FreeMemHandle(handle), 0);
        return text;
    }
    A_Err execute(const char *script, AEGP_MemHandle *result, AEGP_MemHandle *error) {
        return utility().AEGP_ExecuteScript(0, script, 0, result, error);
    }
};

TEST_F(ScriptSuiteTest, ScriptRunsAndItsResultIsFreedByTheCaller) {
    host.project.layer(title)->selected = true;
    AEGP_MemHandle result = nullptr;
    ASSERT_EQ(execute(kSetExpression, &result, nullptr), 0);
    EXPECT_EQ(host.project.layer(title)->position_expression, "here");
    EXPECT_THAT(host.mem_handles.leaks(), testing::SizeIs(1));
    EXPECT_EQ(take(result), "here");
    EXPECT_THAT(host.mem_handles.leaks(), IsEmpty());
    EXPECT_THAT(checks(), IsEmpty());
}

TEST_F(ScriptSuiteTest, BothHandlesAreOptional) {
    EXPECT_EQ(execute("1", nullptr, nullptr), 0);
    EXPECT_EQ(execute("throw 1", nullptr, nullptr), A_Err_GENERIC);
    EXPECT_EQ(execute(nullptr, nullptr, nullptr), A_Err_PARAMETER);
    EXPECT_EQ(host.mem_handles.live_count(), 0u);
}

TEST_F(ScriptSuiteTest, ThrowingScriptGivesItsErrorAndNoResult) {
    AEGP_MemHandle result = reinterpret_cast<AEGP_MemHandle>(this);
    AEGP_MemHandle error = nullptr;
    EXPECT_EQ(execute(kSetExpression, &result, &error), A_Err_GENERIC);
    EXPECT_EQ(result, nullptr);
    EXPECT_THAT(take(error), HasSubstr("line 1: TypeError"));
}

TEST_F(ScriptSuiteTest, ScriptsCanBeMadeToFail) {
    host.options.scripts_fail = true;
    host.project.layer(title)->selected = true;
    AEGP_MemHandle result = nullptr;
    EXPECT_EQ(execute(kSetExpression, &result, nullptr), A_Err_GENERIC);
    EXPECT_EQ(result, nullptr);
    EXPECT_EQ(host.project.layer(title)->position_expression, "");
    A_Boolean available = 1;
    ASSERT_EQ(utility().AEGP_IsScriptingAvailable(&available), 0);
    EXPECT_EQ(available, 0);
}

TEST_F(ScriptSuiteTest, LockedProjectMakesAChangingScriptFailOnly) {
    host.options.project_locked = true;
    host.project.layer(title)->selected = true;
    EXPECT_EQ(execute(kSetExpression, nullptr, nullptr), A_Err_GENERIC);
    EXPECT_EQ(host.project.layer(title)->position_expression, "");
    EXPECT_EQ(execute("app.project.activeItem.width", nullptr, nullptr), 0);
}

TEST_F(ScriptSuiteTest, ScriptIsOneStepOfUndo) {
    host.project.layer(title)->selected = true;
    ASSERT_EQ(execute(kSetExpression, nullptr, nullptr), 0);
    ASSERT_EQ(execute("1 + 1", nullptr, nullptr), 0);
    EXPECT_THAT(host.undo.steps(), ElementsAre("Script"));
    host.undo.undo();
    EXPECT_EQ(host.project.layer(title)->position_expression, "");
}

TEST_F(ScriptSuiteTest, OtherVersionExecutesToo) {
    const auto &utility6 = get<AEGP_UtilitySuite6>(kAEGPUtilitySuite, 13);
    AEGP_MemHandle result = nullptr;
    ASSERT_EQ(utility6.AEGP_ExecuteScript(0, "7 * 6", 0, &result, nullptr), 0);
    EXPECT_EQ(take(result), "42");
}

TEST_F(SuiteTest, UndoGroupGathersTheChanges) {
    ASSERT_EQ(utility().AEGP_StartUndoGroup("Set up"), 0);
    ASSERT_EQ(layers().AEGP_SetLayerFlag(layer_h(scopes), AEGP_LayerFlag_LOCKED, 1), 0);
    ASSERT_EQ(layers().AEGP_ReorderLayer(layer_h(scopes), 2), 0);
    ASSERT_EQ(utility().AEGP_EndUndoGroup(), 0);
    EXPECT_THAT(host.undo.steps(), ElementsAre("Set up"));
    EXPECT_NE(utility().AEGP_EndUndoGroup(), 0);
    EXPECT_THAT(checks(), ElementsAre("undo.unbalanced"));
}

TEST_F(SuiteTest, RegistrationBelongsIntoGlobalSetup) {
    AEGP_PluginID id = 0;
    host.trace.set_command("PF_Cmd_GLOBAL_SETUP");
    ASSERT_EQ(utility().AEGP_RegisterWithAEGP(nullptr, "name", &id), 0);
    EXPECT_NE(id, 0);
    EXPECT_THAT(checks(), IsEmpty());
    host.trace.set_command("PF_Cmd_SEQUENCE_SETUP");
    EXPECT_EQ(utility().AEGP_RegisterWithAEGP(nullptr, "name", &id), 0);
    EXPECT_THAT(checks(), ElementsAre("aegp.register"));
}

TEST_F(SuiteTest, ReportedInfoIsShown) {
    ASSERT_EQ(utility().AEGP_ReportInfo(1, "hello"), 0);
    ASSERT_EQ(host.messages.size(), 1u);
    EXPECT_EQ(host.messages[0].text, "hello");
    EXPECT_FALSE(host.messages[0].as_error);
}

}  // namespace
}  // namespace stage
