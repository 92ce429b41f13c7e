// Extra records of PF_Cmd_EVENT and PF_Cmd_USER_CHANGED_PARAM.
//
// `cbs` is embedded in PF_EventExtra; the window type is (*contextH)->w_type; continue_refcon holds
// 64-bit slots; send_drag and last_time are single bytes.
#pragma once

#include "in_out_data.h"

struct PF_UserChangedParamExtra {
    PF_ParamIndex param_index;
};

struct PF_DoClickEventInfo {
    A_u_long when;
    PF_Point screen_point;
    A_long num_clicks;
    PF_Modifiers modifiers;
    A_intptr_t continue_refcon[4];
    PF_Boolean send_drag;
    PF_Boolean last_time;
};

struct PF_DrawEventInfo {
    PF_UnionableRect update_rect;
    A_long depth;
};

struct PF_KeyDownEvent {
    A_u_long when;
    PF_Point screen_point;
    PF_KeyCode keycode;
    PF_Modifiers modifiers;
};

struct PF_AdjustCursorEventInfo {
    PF_Point screen_point;
    PF_Modifiers modifiers;
    PF_CursorType set_cursor;
};

union PF_EventUnion {
    PF_DoClickEventInfo do_click;
    PF_DrawEventInfo draw;
    PF_KeyDownEvent key_down;
    PF_AdjustCursorEventInfo adjust_cursor;
};

struct PF_EffectWindowInfo {
    PF_ParamIndex index;
    PF_EffectArea area;
    PF_UnionableRect current_frame;
    PF_UnionableRect param_title_frame;
    A_long horiz_offset;
};

struct PF_EventCallbacks {
    void *refcon;
    PF_Err (*layer_to_comp)(void *refcon, PF_ContextH context, A_long curr_time, A_long time_scale,
                            PF_FixedPoint *pt);
    PF_Err (*comp_to_layer)(void *refcon, PF_ContextH context, A_long curr_time, A_long time_scale,
                            PF_FixedPoint *pt);
    PF_Err (*get_comp2layer_xform)(void *refcon, PF_ContextH context, A_long curr_time,
                                   A_long time_scale, A_long *exists, PF_FloatMatrix *c2l);
    PF_Err (*get_layer2comp_xform)(void *refcon, PF_ContextH context, A_long curr_time,
                                   A_long time_scale, PF_FloatMatrix *l2c);
    PF_Err (*source_to_frame)(void *refcon, PF_ContextH context, PF_FixedPoint *pt);
    PF_Err (*frame_to_source)(void *refcon, PF_ContextH context, PF_FixedPoint *pt);
    PF_Err (*info_draw_color)(void *refcon, PF_Pixel color);
    PF_Err (*info_draw_text)(void *refcon, const A_char *text1Z0, const A_char *text2Z0);
};

struct PF_EventExtra {
    PF_ContextH contextH;
    PF_EventType e_type;
    PF_EventUnion u;
    PF_EffectWindowInfo effect_win;
    PF_EventCallbacks cbs;
    PF_EventInFlags evt_in_flags;
    PF_EventOutFlags evt_out_flags;
};

struct PF_Context {
    A_u_long magic;
    PF_WindowType w_type;
    PF_ContextRefcon reserved_flt;
    A_intptr_t plugin_state[4];
    DRAWBOT_DrawRef reserved_drawref;
    void *reserved_paneP;
    void *reserved_job_manageP;
};
