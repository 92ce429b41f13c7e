#include "stage/script/script.h"

#include <duktape.h>

#include <cstdio>
#include <cstdlib>
#include <memory>

#include "stage/script/script_run.h"
#include "stage/script/script_text.h"

namespace stage {
namespace {

/// Never reached: everything runs under duk_safe_call.
void fatal(void *, const char *message) {
    std::fprintf(stderr, "stage: script engine: %s\n", message);
    std::abort();
}

struct HeapDeleter {
    void operator()(duk_context *engine) const { duk_destroy_heap(engine); }
};

struct Source {
    const char *text;
    std::size_t length;
};

/// Leaves the text of the last statement's value on the stack, or raises the script's error.
duk_ret_t evaluate(duk_context *engine, void *user) {
    const auto &source = *static_cast<const Source *>(user);
    define_project_objects(engine);
    duk_push_string(engine, "script");
    duk_compile_lstring_filename(engine, DUK_COMPILE_EVAL, source.text, source.length);
    duk_call(engine, 0);
    duk_to_string(engine, -1);
    return 1;
}

/// Replaces the error on the stack by its text, with the line where it was raised.
duk_ret_t describe(duk_context *engine, void *) {
    int line = 0;
    if (duk_is_object(engine, -1)) {
        duk_get_prop_string(engine, -1, "lineNumber");
        line = duk_get_int(engine, -1);
        duk_pop(engine);
    }
    duk_push_sprintf(engine, "line %d: %s", line, duk_to_string(engine, -1));
    return 1;
}

std::string text_on_top(duk_context *engine) {
    duk_size_t length = 0;
    const char *text = duk_get_lstring(engine, -1, &length);
    return text == nullptr ? std::string() : utf8_from_engine({text, length});
}

std::string limit_text(const ScriptRun &run) {
    if (run.out_of_time) {
        return "the script was ended after " + std::to_string(run.options.time_limit.count()) +
               " ms";
    }
    return "the script needs more than " + std::to_string(run.options.memory_limit) + " bytes";
}

}  // namespace

ScriptResult run_script(Project &project, const std::string &source, const ScriptOptions &options) {
    ScriptRun run{project, options, std::chrono::steady_clock::now() + options.time_limit};
    const std::unique_ptr<duk_context, HeapDeleter> engine(
        duk_create_heap(script_allocate, script_reallocate, script_free, &run, fatal));
    if (!engine) return {false, "", limit_text(run)};
    Source text{source.data(), source.size()};
    if (duk_safe_call(engine.get(), evaluate, &text, 0, 1) == DUK_EXEC_SUCCESS) {
        return {true, text_on_top(engine.get()), ""};
    }
    if (run.out_of_time || run.out_of_memory) return {false, "", limit_text(run)};
    duk_safe_call(engine.get(), describe, nullptr, 1, 1);
    return {false, "", text_on_top(engine.get())};
}

}  // namespace stage
