// Takes the place of the frame's renderer in this test program.
#include "plugin/entry/entry_fixture.h"
#include "render/pipeline.h"

RenderDouble &render_double() {
    static RenderDouble instance;
    return instance;
}

PF_Err ks::render_frame(PF_InData *, PF_OutData *, PF_EffectWorld *input, PF_EffectWorld *original,
                        PF_EffectWorld *output) {
    RenderDouble &fake = render_double();
    fake.input = input;
    fake.original = original;
    fake.output = output;
    return fake.act();
}
