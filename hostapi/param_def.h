// Parameter definitions: one 176-byte PF_ParamDef per parameter, its union by type at offset 56.
//
// uu.id and uu.change_flags share the same four bytes: an id while adding, change flags at run
// time. Point defaults are percentages of the layer in 16.16, point values pixels in 16.16.
#pragma once

#include "effect_types.h"

struct PF_SliderDef {
    PF_ParamValue value;
    A_char value_str[32];
    A_char value_desc[32];
    PF_ParamValue valid_min;
    PF_ParamValue valid_max;
    PF_ParamValue slider_min;
    PF_ParamValue slider_max;
    PF_ParamValue dephault;
};

struct PF_FixedSliderDef {
    PF_Fixed value;
    A_char value_str[32];
    A_char value_desc[32];
    PF_Fixed valid_min;
    PF_Fixed valid_max;
    PF_Fixed slider_min;
    PF_Fixed slider_max;
    PF_Fixed dephault;
    PF_Precision precision;
    PF_ValueDisplayFlags display_flags;
};

struct PF_AngleDef {
    PF_Fixed value;
    PF_Fixed dephault;
    PF_Fixed valid_min;
    PF_Fixed valid_max;
};

struct PF_CheckBoxDef {
    PF_ParamValue value;
    PF_Boolean dephault;
    A_char reserved;
    A_short reserved1;
    union {
        const A_char *nameptr;
    } u;
};

struct PF_ColorDef {
    PF_UnionablePixel value;
    PF_UnionablePixel dephault;
};

struct PF_PointDef {
    PF_Fixed x_value;
    PF_Fixed y_value;
    A_char reserved[3];
    PF_Boolean restrict_bounds;
    PF_Fixed x_dephault;
    PF_Fixed y_dephault;
};

struct PF_PopupDef {
    PF_ParamValue value;
    A_short num_choices;
    A_short dephault;
    union {
        const A_char *namesptr;
    } u;
};

struct PF_FloatSliderDef {
    PF_FpLong value;
    PF_FpLong phase;
    A_char value_desc[32];
    PF_FpShort valid_min;
    PF_FpShort valid_max;
    PF_FpShort slider_min;
    PF_FpShort slider_max;
    PF_FpShort dephault;
    PF_Precision precision;
    PF_ValueDisplayFlags display_flags;
    PF_FSliderFlags fs_flags;
    PF_FpShort curve_tolerance;
    PF_Boolean useExponent;
    PF_FpShort exponent;
};

struct PF_ArbitraryDef {
    A_short id;
    A_short pad;
    PF_ArbitraryH dephault;
    PF_ArbitraryH value;
    void *refconPV;
};

struct PF_PathDef {
    PF_PathID path_id;
    A_long reserved0;
    A_long dephault;
};

struct PF_ButtonDef {
    PF_ParamValue value;
    union {
        const A_char *namesptr;
    } u;
};

struct PF_Point3DDef {
    PF_FpLong x_value;
    PF_FpLong y_value;
    PF_FpLong z_value;
    PF_FpLong x_dephault;
    PF_FpLong y_dephault;
    PF_FpLong z_dephault;
    char reserved[16];
};

union PF_ParamDefUnion {
    PF_LayerDef ld;
    PF_SliderDef sd;
    PF_FixedSliderDef fd;
    PF_AngleDef ad;
    PF_CheckBoxDef bd;
    PF_ColorDef cd;
    PF_PointDef td;
    PF_PopupDef pd;
    PF_FloatSliderDef fs_d;
    PF_ArbitraryDef arb_d;
    PF_PathDef path_d;
    PF_ButtonDef button_d;
    PF_Point3DDef point3d_d;
};

struct PF_ParamDef {
    union {
        A_long id;
        PF_ChangeFlags change_flags;
    } uu;
    PF_ParamUIFlags ui_flags;
    A_short ui_width;
    A_short ui_height;
    PF_ParamType param_type;
    A_char name[32];
    PF_ParamFlags flags;
    A_long unused;
    PF_ParamDefUnion u;
};

struct PF_CustomUIInfo {
    A_long reserved;
    PF_CustomEventFlags events;
    A_long comp_ui_width;
    A_long comp_ui_height;
    PF_UIAlignment comp_ui_alignment;
    A_long layer_ui_width;
    A_long layer_ui_height;
    PF_UIAlignment layer_ui_alignment;
    A_long preview_ui_width;
    A_long preview_ui_height;
    PF_UIAlignment preview_ui_alignment;
};
