// Suites of the effect interface. The structs carry the interface generation, the numbers passed to
// AcquireSuite stand in suite_names.h: PF_HandleSuite1 has number 2.
#pragma once

#include "in_out_data.h"
#include "smart_render.h"

// "PF Handle Suite", number 2.
struct PF_HandleSuite1 {
    PF_Handle (*host_new_handle)(A_HandleSize size);
    void *(*host_lock_handle)(PF_Handle pf_handle);
    void (*host_unlock_handle)(PF_Handle pf_handle);
    void (*host_dispose_handle)(PF_Handle pf_handle);
    A_HandleSize (*host_get_handle_size)(PF_Handle pf_handle);
    PF_Err (*host_resize_handle)(A_HandleSize new_sizeL, PF_Handle *handlePH);
};

// "PF World Suite", number 2.
struct PF_WorldSuite2 {
    PF_Err (*PF_NewWorld)(PF_ProgPtr effect_ref, A_long widthL, A_long heightL,
                          PF_Boolean clear_pixB, PF_PixelFormat pixel_format,
                          PF_EffectWorld *worldP);
    PF_Err (*PF_DisposeWorld)(PF_ProgPtr effect_ref, PF_EffectWorld *worldP);
    PF_Err (*PF_GetPixelFormat)(const PF_EffectWorld *worldP, PF_PixelFormat *pixel_formatP);
};

// "PF World Transform Suite", number 1.
struct PF_WorldTransformSuite1 {
    PF_Err (*composite_rect)(PF_ProgPtr effect_ref, PF_Rect *src_rect, A_long src_opacity,
                             PF_EffectWorld *source_wld, A_long dest_x, A_long dest_y,
                             PF_Field field_rdr, PF_XferMode xfer_mode, PF_EffectWorld *dest_wld);
    PF_Err (*blend)(PF_ProgPtr effect_ref, const PF_EffectWorld *src1, const PF_EffectWorld *src2,
                    PF_Fixed ratio, PF_EffectWorld *dst);
    PF_Err (*convolve)(PF_ProgPtr effect_ref, PF_EffectWorld *src, const PF_Rect *area,
                       PF_KernelFlags flags, A_long kernel_size, void *a_kernel, void *r_kernel,
                       void *g_kernel, void *b_kernel, PF_EffectWorld *dst);
    PF_Err (*copy)(PF_ProgPtr effect_ref, PF_EffectWorld *src, PF_EffectWorld *dst, PF_Rect *src_r,
                   PF_Rect *dst_r);
    PF_Err (*copy_hq)(PF_ProgPtr effect_ref, PF_EffectWorld *src, PF_EffectWorld *dst,
                      PF_Rect *src_r, PF_Rect *dst_r);
    PF_Err (*transfer_rect)(PF_ProgPtr effect_ref, PF_Quality quality, PF_ModeFlags m_flags,
                            PF_Field field, const PF_Rect *src_rec, const PF_EffectWorld *src_world,
                            const PF_CompositeMode *comp_mode, const PF_MaskWorld *mask_world0,
                            A_long dest_x, A_long dest_y, PF_EffectWorld *dst_world);
    PF_Err (*transform_world)(PF_ProgPtr effect_ref, PF_Quality quality, PF_ModeFlags m_flags,
                              PF_Field field, const PF_EffectWorld *src_world,
                              const PF_CompositeMode *comp_mode, const PF_MaskWorld *mask_world0,
                              const PF_FloatMatrix *matrices, A_long num_matrices,
                              PF_Boolean src2dst_matrix, const PF_Rect *dest_rect,
                              PF_EffectWorld *dst_world);
};

// "PF Iterate8 Suite", number 1.
struct PF_Iterate8Suite1 {
    PF_Err (*iterate)(PF_InData *in_data, A_long progress_base, A_long progress_final,
                      PF_EffectWorld *src, const PF_Rect *area, void *refcon,
                      PF_Err (*pix_fn)(void *refcon, A_long x, A_long y, PF_Pixel *in,
                                       PF_Pixel *out),
                      PF_EffectWorld *dst);
    PF_Err (*iterate_origin)(PF_InData *in_data, A_long progress_base, A_long progress_final,
                             PF_EffectWorld *src, const PF_Rect *area, const PF_Point *origin,
                             void *refcon,
                             PF_Err (*pix_fn)(void *refcon, A_long x, A_long y, PF_Pixel *in,
                                              PF_Pixel *out),
                             PF_EffectWorld *dst);
    PF_Err (*iterate_lut)(PF_InData *in_data, A_long progress_base, A_long progress_final,
                          PF_EffectWorld *src, const PF_Rect *area, A_u_char *a_lut0,
                          A_u_char *r_lut0, A_u_char *g_lut0, A_u_char *b_lut0,
                          PF_EffectWorld *dst);
    PF_Err (*iterate_origin_non_clip_src)(PF_InData *in_data, A_long progress_base,
                                          A_long progress_final, PF_EffectWorld *src,
                                          const PF_Rect *area, const PF_Point *origin, void *refcon,
                                          PF_Err (*pix_fn)(void *refcon, A_long x, A_long y,
                                                           PF_Pixel *in, PF_Pixel *out),
                                          PF_EffectWorld *dst);
    PF_Err (*iterate_generic)(A_long iterationsL, void *refconPV,
                              PF_Err (*fn_func)(void *refconPV, A_long thread_indexL, A_long i,
                                                A_long iterationsL));
};

// "PF Iterate8 Suite", number 2.
struct PF_Iterate8Suite2 {
    PF_Err (*iterate)(PF_InData *in_data, A_long progress_base, A_long progress_final,
                      PF_EffectWorld *src, const PF_Rect *area, void *refcon,
                      PF_Err (*pix_fn)(void *refcon, A_long x, A_long y, PF_Pixel *in,
                                       PF_Pixel *out),
                      PF_EffectWorld *dst);
    PF_Err (*iterate_origin)(PF_InData *in_data, A_long progress_base, A_long progress_final,
                             PF_EffectWorld *src, const PF_Rect *area, const PF_Point *origin,
                             void *refcon,
                             PF_Err (*pix_fn)(void *refcon, A_long x, A_long y, PF_Pixel *in,
                                              PF_Pixel *out),
                             PF_EffectWorld *dst);
    PF_Err (*iterate_lut)(PF_InData *in_data, A_long progress_base, A_long progress_final,
                          PF_EffectWorld *src, const PF_Rect *area, A_u_char *a_lut0,
                          A_u_char *r_lut0, A_u_char *g_lut0, A_u_char *b_lut0,
                          PF_EffectWorld *dst);
    PF_Err (*iterate_origin_non_clip_src)(PF_InData *in_data, A_long progress_base,
                                          A_long progress_final, PF_EffectWorld *src,
                                          const PF_Rect *area, const PF_Point *origin, void *refcon,
                                          PF_Err (*pix_fn)(void *refcon, A_long x, A_long y,
                                                           PF_Pixel *in, PF_Pixel *out),
                                          PF_EffectWorld *dst);
    PF_Err (*iterate_generic)(A_long iterationsL, void *refconPV,
                              PF_Err (*fn_func)(void *refconPV, A_long thread_indexL, A_long i,
                                                A_long iterationsL));
};

// "PF iterate16 Suite", number 1.
struct PF_iterate16Suite1 {
    PF_Err (*iterate)(PF_InData *in_data, A_long progress_base, A_long progress_final,
                      PF_EffectWorld *src, const PF_Rect *area, void *refcon,
                      PF_Err (*pix_fn)(void *refcon, A_long x, A_long y, PF_Pixel16 *in,
                                       PF_Pixel16 *out),
                      PF_EffectWorld *dst);
    PF_Err (*iterate_origin)(PF_InData *in_data, A_long progress_base, A_long progress_final,
                             PF_EffectWorld *src, const PF_Rect *area, const PF_Point *origin,
                             void *refcon,
                             PF_Err (*pix_fn)(void *refcon, A_long x, A_long y, PF_Pixel16 *in,
                                              PF_Pixel16 *out),
                             PF_EffectWorld *dst);
    PF_Err (*iterate_origin_non_clip_src)(PF_InData *in_data, A_long progress_base,
                                          A_long progress_final, PF_EffectWorld *src,
                                          const PF_Rect *area, const PF_Point *origin, void *refcon,
                                          PF_Err (*pix_fn)(void *refcon, A_long x, A_long y,
                                                           PF_Pixel16 *in, PF_Pixel16 *out),
                                          PF_EffectWorld *dst);
};

// "PF iterate16 Suite", number 2.
struct PF_iterate16Suite2 {
    PF_Err (*iterate)(PF_InData *in_data, A_long progress_base, A_long progress_final,
                      PF_EffectWorld *src, const PF_Rect *area, void *refcon,
                      PF_Err (*pix_fn)(void *refcon, A_long x, A_long y, PF_Pixel16 *in,
                                       PF_Pixel16 *out),
                      PF_EffectWorld *dst);
    PF_Err (*iterate_origin)(PF_InData *in_data, A_long progress_base, A_long progress_final,
                             PF_EffectWorld *src, const PF_Rect *area, const PF_Point *origin,
                             void *refcon,
                             PF_Err (*pix_fn)(void *refcon, A_long x, A_long y, PF_Pixel16 *in,
                                              PF_Pixel16 *out),
                             PF_EffectWorld *dst);
    PF_Err (*iterate_origin_non_clip_src)(PF_InData *in_data, A_long progress_base,
                                          A_long progress_final, PF_EffectWorld *src,
                                          const PF_Rect *area, const PF_Point *origin, void *refcon,
                                          PF_Err (*pix_fn)(void *refcon, A_long x, A_long y,
                                                           PF_Pixel16 *in, PF_Pixel16 *out),
                                          PF_EffectWorld *dst);
};

// "PF iterateFloat Suite", number 1.
struct PF_iterateFloatSuite1 {
    PF_Err (*iterate)(PF_InData *in_data, A_long progress_base, A_long progress_final,
                      PF_EffectWorld *src, const PF_Rect *area, void *refcon,
                      PF_IteratePixelFloatFunc pix_fn, PF_EffectWorld *dst);
    PF_Err (*iterate_origin)(PF_InData *in_data, A_long progress_base, A_long progress_final,
                             PF_EffectWorld *src, const PF_Rect *area, const PF_Point *origin,
                             void *refcon, PF_IteratePixelFloatFunc pix_fn, PF_EffectWorld *dst);
    PF_Err (*iterate_origin_non_clip_src)(PF_InData *in_data, A_long progress_base,
                                          A_long progress_final, PF_EffectWorld *src,
                                          const PF_Rect *area, const PF_Point *origin, void *refcon,
                                          PF_IteratePixelFloatFunc pix_fn, PF_EffectWorld *dst);
};

// "PF iterateFloat Suite", number 2.
struct PF_iterateFloatSuite2 {
    PF_Err (*iterate)(PF_InData *in_data, A_long progress_base, A_long progress_final,
                      PF_EffectWorld *src, const PF_Rect *area, void *refcon,
                      PF_IteratePixelFloatFunc pix_fn, PF_EffectWorld *dst);
    PF_Err (*iterate_origin)(PF_InData *in_data, A_long progress_base, A_long progress_final,
                             PF_EffectWorld *src, const PF_Rect *area, const PF_Point *origin,
                             void *refcon, PF_IteratePixelFloatFunc pix_fn, PF_EffectWorld *dst);
    PF_Err (*iterate_origin_non_clip_src)(PF_InData *in_data, A_long progress_base,
                                          A_long progress_final, PF_EffectWorld *src,
                                          const PF_Rect *area, const PF_Point *origin, void *refcon,
                                          PF_IteratePixelFloatFunc pix_fn, PF_EffectWorld *dst);
};

// "PF Param Utils Suite", number 2.
struct PF_ParamUtilsSuite1 {
    PF_Err (*PF_UpdateParamUI)(PF_ProgPtr effect_ref, PF_ParamIndex param_index,
                               const PF_ParamDef *defP);
    PF_Err (*PF_GetCurrentStateObsolete)(PF_ProgPtr effect_ref, PF_State *stateP);
    PF_Err (*PF_HasParamChangedObsolete)(PF_ProgPtr effect_ref, const PF_State *stateP,
                                         PF_ParamIndex param_index, PF_Boolean *changedPB);
    PF_Err (*PF_HaveInputsChangedOverTimeSpanObsolete)(PF_ProgPtr effect_ref,
                                                       const PF_State *stateP,
                                                       const A_Time *startPT0,
                                                       const A_Time *durationPT0,
                                                       PF_Boolean *changedPB);
    PF_Err (*PF_IsIdenticalCheckout)(PF_ProgPtr effect_ref, PF_ParamIndex param_index,
                                     A_long what_time1, A_long time_step1, A_u_long time_scale1,
                                     A_long what_time2, A_long time_step2, A_u_long time_scale2,
                                     PF_Boolean *identicalPB);
    PF_Err (*PF_FindKeyframeTime)(PF_ProgPtr effect_ref, PF_ParamIndex param_index,
                                  A_long what_time, A_u_long time_scale, PF_TimeDir time_dir,
                                  PF_Boolean *foundPB, PF_KeyIndex *key_indexP0, A_long *key_timeP0,
                                  A_u_long *key_timescaleP0);
    PF_Err (*PF_GetKeyframeCount)(PF_ProgPtr effect_ref, PF_ParamIndex param_index,
                                  PF_KeyIndex *key_countP);
    PF_Err (*PF_CheckoutKeyframe)(PF_ProgPtr effect_ref, PF_ParamIndex param_index,
                                  PF_KeyIndex key_index, A_long *key_timeP0,
                                  A_u_long *key_timescaleP0, PF_ParamDef *paramP0);
    PF_Err (*PF_CheckinKeyframe)(PF_ProgPtr effect_ref, PF_ParamDef *paramP);
    PF_Err (*PF_KeyIndexToTime)(PF_ProgPtr effect_ref, PF_ParamIndex param_index,
                                PF_KeyIndex key_indexP, A_long *key_timeP,
                                A_u_long *key_timescaleP);
};

// "PF Param Utils Suite", number 3.
struct PF_ParamUtilsSuite3 {
    PF_Err (*PF_UpdateParamUI)(PF_ProgPtr effect_ref, PF_ParamIndex param_index,
                               const PF_ParamDef *defP);
    PF_Err (*PF_GetCurrentState)(PF_ProgPtr effect_ref, PF_ParamIndex param_index,
                                 const A_Time *startPT0, const A_Time *durationPT0,
                                 PF_State *stateP);
    PF_Err (*PF_AreStatesIdentical)(PF_ProgPtr effect_ref, const PF_State *state1P,
                                    const PF_State *state2P, A_Boolean *samePB);
    PF_Err (*PF_IsIdenticalCheckout)(PF_ProgPtr effect_ref, PF_ParamIndex param_index,
                                     A_long what_time1, A_long time_step1, A_u_long time_scale1,
                                     A_long what_time2, A_long time_step2, A_u_long time_scale2,
                                     PF_Boolean *identicalPB);
    PF_Err (*PF_FindKeyframeTime)(PF_ProgPtr effect_ref, PF_ParamIndex param_index,
                                  A_long what_time, A_u_long time_scale, PF_TimeDir time_dir,
                                  PF_Boolean *foundPB, PF_KeyIndex *key_indexP0, A_long *key_timeP0,
                                  A_u_long *key_timescaleP0);
    PF_Err (*PF_GetKeyframeCount)(PF_ProgPtr effect_ref, PF_ParamIndex param_index,
                                  PF_KeyIndex *key_countP);
    PF_Err (*PF_CheckoutKeyframe)(PF_ProgPtr effect_ref, PF_ParamIndex param_index,
                                  PF_KeyIndex key_index, A_long *key_timeP0,
                                  A_u_long *key_timescaleP0, PF_ParamDef *paramP0);
    PF_Err (*PF_CheckinKeyframe)(PF_ProgPtr effect_ref, PF_ParamDef *paramP);
    PF_Err (*PF_KeyIndexToTime)(PF_ProgPtr effect_ref, PF_ParamIndex param_index,
                                PF_KeyIndex key_indexP, A_long *key_timeP,
                                A_u_long *key_timescaleP);
};

// "PF ANSI Suite", number 1.
struct PF_ANSICallbacksSuite1 {
    A_FpLong (*atan)(A_FpLong);
    A_FpLong (*atan2)(A_FpLong y, A_FpLong x);
    A_FpLong (*ceil)(A_FpLong);
    A_FpLong (*cos)(A_FpLong);
    A_FpLong (*exp)(A_FpLong);
    A_FpLong (*fabs)(A_FpLong);
    A_FpLong (*floor)(A_FpLong);
    A_FpLong (*fmod)(A_FpLong x, A_FpLong y);
    A_FpLong (*hypot)(A_FpLong x, A_FpLong y);
    A_FpLong (*log)(A_FpLong);
    A_FpLong (*log10)(A_FpLong);
    A_FpLong (*pow)(A_FpLong x, A_FpLong y);
    A_FpLong (*sin)(A_FpLong);
    A_FpLong (*sqrt)(A_FpLong);
    A_FpLong (*tan)(A_FpLong);
    int (*sprintf)(A_char *, const A_char *, ...);
    A_char *(*strcpy)(A_char *, const A_char *);
    A_FpLong (*asin)(A_FpLong);
    A_FpLong (*acos)(A_FpLong);
};

// "PF Effect Custom UI Suite", number 1.
struct PF_EffectCustomUISuite1 {
    PF_Err (*PF_GetDrawingReference)(PF_ContextH effect_contextH, DRAWBOT_DrawRef *referenceP0);
};

// "PF Effect Custom UI Suite", number 2.
struct PF_EffectCustomUISuite2 {
    PF_Err (*PF_GetDrawingReference)(PF_ContextH effect_contextH, DRAWBOT_DrawRef *referenceP0);
    PF_Err (*PF_GetContextAsyncManager)(PF_InData *in_data, PF_EventExtra *extra,
                                        PF_AsyncManagerP *managerPP0);
};

// "PF Effect Custom UI Overlay Theme Suite", number 1.
struct PF_EffectCustomUIOverlayThemeSuite1 {
    PF_Err (*PF_GetPreferredForegroundColor)(DRAWBOT_ColorRGBA *foreground_colorP);
    PF_Err (*PF_GetPreferredShadowColor)(DRAWBOT_ColorRGBA *shadow_colorP);
    PF_Err (*PF_GetPreferredStrokeWidth)(float *stroke_widthPF);
    PF_Err (*PF_GetPreferredVertexSize)(float *vertex_sizePF);
    PF_Err (*PF_GetPreferredShadowOffset)(A_LPoint *shadow_offsetP);
    PF_Err (*PF_StrokePath)(DRAWBOT_DrawRef drawbot_ref, DRAWBOT_PathRef path_ref,
                            PF_Boolean draw_shadowB);
    PF_Err (*PF_FillPath)(DRAWBOT_DrawRef drawbot_ref, DRAWBOT_PathRef path_ref,
                          PF_Boolean draw_shadowB);
    PF_Err (*PF_FillVertex)(DRAWBOT_DrawRef drawbot_ref, const A_FloatPoint *center_pointP,
                            PF_Boolean draw_shadowB);
};
