// One run of a script: what the engine's callbacks share. Internal to the script library.
#pragma once

#include <duktape.h>

#include <chrono>
#include <cstddef>

#include "stage/script/script.h"

namespace stage {

/// The engine's user data. Engine errors unwind by longjmp, so no callback may hold an object with
/// a destructor while it calls into the engine.
struct ScriptRun {
    Project &project;
    const ScriptOptions &options;
    std::chrono::steady_clock::time_point deadline;
    std::size_t used = 0;  ///< bytes
    unsigned allocations = 0;
    bool out_of_memory = false;
    bool out_of_time = false;
    bool changed = false;

    /// True from the deadline on.
    bool late();
};

/// The engine's allocator, which keeps to the limits.
void *script_allocate(void *run, std::size_t size);
void *script_reallocate(void *run, void *block, std::size_t size);
void script_free(void *run, void *block);

/// The run behind an engine.
ScriptRun &run_of(duk_context *engine);

/// Defines app, CompItem and AVLayer. May raise an engine error.
void define_project_objects(duk_context *engine);

}  // namespace stage
