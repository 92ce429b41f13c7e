#include "stage/script/script.h"

#include <gmock/gmock.h>

#include "stage/project/project_file.h"

namespace stage {
namespace {

using testing::HasSubstr;

constexpr char kLockScript[] =
    "{     var curComp = app.project.activeItem;     if(curComp && curComp instanceof CompItem) {  "
    "       var selectedLayers = curComp.selectedLayers;         if(selectedLayers) {             "
    "for(var l=0; l<selectedLayers.length; l++) {                 var curLayer = "
    "selectedLayers[l];                 curLayer.position.expression = '[thisComp.width / 2, "
    "thisComp.height / 2]';             }         }     } }";
constexpr char kUnlockScript[] =
    "{     var curComp = app.project.activeItem;     if(curComp && curComp instanceof CompItem) {  "
    "       var selectedLayers = curComp.selectedLayers;         if(selectedLayers) {             "
    "for(var l=0; l<selectedLayers.length; l++) {                 var curLayer = "
    "selectedLayers[l];                 curLayer.position.expression = '';             }         } "
    "    } }";
constexpr char kCentred[] = "[thisComp.width / 2, thisComp.height / 2]";

struct ScriptTest : testing::Test {
    Project project;
    ItemId comp = project.add_comp("Comp \xC3\xA4", 200, 100, 1, 1, 1);
    LayerId c = project.add_text_layer(comp, 0, "C");
    LayerId b = project.add_text_layer(comp, 0, "B");
    LayerId a = project.add_text_layer(comp, 0, "A");

    void select(std::initializer_list<LayerId> layers) {
        for (const LayerId id : layers) project.layer(id)->selected = true;
    }
    std::string expression(LayerId id) const { return project.layer(id)->position_expression; }
    std::string value_of(const std::string &source) {
        const ScriptResult result = run_script(project, source);
        EXPECT_TRUE(result.ok) << source << ": " << result.error;
        return result.value;
    }
    std::string error_of(const std::string &source, const ScriptOptions &options = {}) {
        const ScriptResult result = run_script(project, source, options);
        EXPECT_FALSE(result.ok) << source << " gave " << result.value;
        EXPECT_EQ(result.value, "");
        return result.error;
    }
};

TEST_F(ScriptTest, LockScriptChangesNothingWithoutSelection) {
    EXPECT_TRUE(run_script(project, kLockScript).ok);
    for (const LayerId id : {a, b, c}) EXPECT_EQ(expression(id), "");
}

TEST_F(ScriptTest, LockScriptSetsEverySelectedLayerAndNoOther) {
    select({a, c});
    EXPECT_TRUE(run_script(project, kLockScript).ok);
    EXPECT_EQ(expression(a), kCentred);
    EXPECT_EQ(expression(b), "");
    EXPECT_EQ(expression(c), kCentred);
}

TEST_F(ScriptTest, UnlockScriptClearsWhatTheLockScriptSet) {
    select({a, c});
    project.layer(b)->position_expression = "kept";
    EXPECT_TRUE(run_script(project, kLockScript).ok);
    EXPECT_TRUE(run_script(project, kUnlockScript).ok);
    EXPECT_EQ(expression(a), "");
    EXPECT_EQ(expression(b), "kept");
    EXPECT_EQ(expression(c), "");
}

TEST_F(ScriptTest, LockScriptWithoutActiveCompSucceedsAndDoesNothing) {
    select({a});
    project.active_comp = 0;
    EXPECT_TRUE(run_script(project, kLockScript).ok);
    EXPECT_EQ(expression(a), "");
}

TEST_F(ScriptTest, LockScriptActsOnTheActiveCompOnly) {
    select({a});
    const ItemId other = project.add_comp("Other", 10, 10, 1, 1, 1);
    const LayerId elsewhere = project.add_text_layer(other, 0, "X");
    select({elsewhere});
    project.active_comp = other;
    EXPECT_TRUE(run_script(project, kLockScript).ok);
    EXPECT_EQ(expression(a), "");
    EXPECT_EQ(expression(elsewhere), kCentred);
}

TEST_F(ScriptTest, SeparatedDimensionsMakeTheScriptThrowAfterTheLayersAbove) {
    select({a, b, c});
    project.layer(b)->separated_position = true;
    EXPECT_THAT(error_of(kLockScript), HasSubstr("separate dimensions"));
    EXPECT_EQ(expression(a), kCentred);
    EXPECT_EQ(expression(b), "");
    EXPECT_EQ(expression(c), "");
}

TEST_F(ScriptTest, SelectedLayersAreAnArrayFromTopToBottom) {
    select({c, a});
    EXPECT_EQ(value_of("var s = app.project.activeItem.selectedLayers;"
                       "s.map(function (l) { return l.name + l.index; }).join()"),
              "A1,C3");
    EXPECT_EQ(value_of("Array.isArray(app.project.activeItem.selectedLayers)"), "true");
}

TEST_F(ScriptTest, CompositionHasItsProperties) {
    EXPECT_EQ(value_of("app.project.activeItem instanceof CompItem"), "true");
    EXPECT_EQ(value_of("app.project.activeItem instanceof AVLayer"), "false");
    EXPECT_EQ(value_of("var c = app.project.activeItem; [c.width, c.height, c.numLayers].join()"),
              "200,100,3");
    EXPECT_EQ(value_of("app.project.activeItem.name"), "Comp \xC3\xA4");
}

TEST_F(ScriptTest, LayersAreFoundByIndexAndName) {
    EXPECT_EQ(value_of("app.project.activeItem.layer(1).name"), "A");
    EXPECT_EQ(value_of("app.project.activeItem.layer('C').index"), "3");
    for (const char *bad : {"0", "4", "1.5", "-1", "NaN", "1e300", "'none'"}) {
        EXPECT_THAT(error_of(std::string("app.project.activeItem.layer(") + bad + ")"),
                    HasSubstr("there is no such layer"));
    }
}

TEST_F(ScriptTest, ResultIsTheLastStatementsValueAsText) {
    EXPECT_EQ(value_of("1 + 2; 'a' + 'b'"), "ab");
    EXPECT_EQ(value_of("6 * 7"), "42");
    EXPECT_EQ(value_of("null"), "null");
    EXPECT_EQ(value_of(""), "undefined");
}

TEST_F(ScriptTest, NothingIsLeftFromOneScriptToTheNext) {
    value_of("var leftover = 1; CompItem = null;");
    EXPECT_EQ(value_of("typeof leftover + typeof CompItem"), "undefinedfunction");
}

TEST_F(ScriptTest, ThrownErrorsCarryTheLine) {
    EXPECT_EQ(error_of("\n\nthrow new Error('no')"), "line 3: Error: no");
    EXPECT_THAT(error_of("throw 'text'"), HasSubstr("text"));
    EXPECT_THAT(error_of("var = ;"), HasSubstr("SyntaxError"));
    EXPECT_THAT(error_of("nothing.here"), HasSubstr("ReferenceError"));
}

TEST_F(ScriptTest, ReadOnlyPropertiesAndForeignObjectsAreRefused) {
    EXPECT_THAT(error_of("'use strict'; app.project.activeItem.name = 'x'"),
                HasSubstr("TypeError"));
    EXPECT_THAT(error_of("new CompItem()"), HasSubstr("come from the project"));
    EXPECT_THAT(error_of("CompItem.prototype.name"), HasSubstr("TypeError"));
    EXPECT_THAT(error_of("Object.getOwnPropertyDescriptor(AVLayer.prototype, 'name')"
                         ".get.call(app.project.activeItem)"),
                HasSubstr("TypeError"));
}

TEST_F(ScriptTest, ExpressionIsReadBackAndConvertedToText) {
    EXPECT_EQ(value_of("var p = app.project.activeItem.layer(1).position; p.expression = 5;"
                       "p.expression"),
              "5");
    EXPECT_EQ(expression(a), "5");
}

TEST_F(ScriptTest, TextBeyondTheBasicPlaneStaysUtf8) {
    value_of("app.project.activeItem.layer(1).position.expression = '\xF0\x9F\x8E\xA8'");
    EXPECT_EQ(expression(a), "\xF0\x9F\x8E\xA8");
    value_of("app.project.activeItem.layer(1).position.expression = 'a\\ud83cb'");
    EXPECT_EQ(expression(a),
              "a\xEF\xBF\xBD"
              "b");
    EXPECT_NO_THROW(project_to_text(project, {}));
}

TEST_F(ScriptTest, ReadOnlyProjectMakesSettersThrow) {
    select({a});
    ScriptOptions options;
    options.read_only = true;
    EXPECT_THAT(error_of(kLockScript, options), HasSubstr("the project cannot be changed"));
    EXPECT_EQ(expression(a), "");
}

TEST_F(ScriptTest, ChangeIsAnnouncedOnceAndOnlyWhenThereIsOne) {
    int announced = 0;
    ScriptOptions options;
    options.before_change = [&] {
        ++announced;
        EXPECT_EQ(expression(a), "");
    };
    EXPECT_TRUE(run_script(project, kLockScript, options).ok);
    EXPECT_EQ(announced, 0);
    select({a, b});
    EXPECT_TRUE(run_script(project, kLockScript, options).ok);
    EXPECT_EQ(announced, 1);
}

TEST_F(ScriptTest, GreedyScriptIsEnded) {
    ScriptOptions options;
    options.memory_limit = std::size_t{4} << 20;
    EXPECT_THAT(error_of("var s = 'x'; while (true) s += s;", options), HasSubstr("bytes"));
    options.memory_limit = 100;
    EXPECT_THAT(error_of("1", options), HasSubstr("more than 100 bytes"));
}

TEST_F(ScriptTest, EndlessScriptIsEndedWhenItTouchesProjectOrMemory) {
    ScriptOptions options;
    options.time_limit = std::chrono::milliseconds(50);
    EXPECT_THAT(error_of("while (true) app.project.activeItem.width;", options),
                HasSubstr("ended after 50 ms"));
    EXPECT_THAT(error_of("while (true) try { app.project.activeItem } catch (e) { ({}) }", options),
                HasSubstr("ended after 50 ms"));
    EXPECT_THAT(error_of("while (true) [1, 2, 3].join();", options),
                HasSubstr("ended after 50 ms"));
}

TEST_F(ScriptTest, DeepRecursionIsAnError) {
    EXPECT_THAT(error_of("function f() { f(); } f();"), HasSubstr("RangeError"));
}

}  // namespace
}  // namespace stage
