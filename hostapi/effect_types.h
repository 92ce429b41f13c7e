// Types of the effect interface: pixels, worlds, geometry. Every name is the host's own.
//
// Pixels are alpha, red, green, blue in memory at each depth. PF_Fixed is 16.16. PF_Handle is a
// pointer to the data pointer.
#pragma once

#include "base.h"
#include "drawbot_refs.h"

struct PF_ProgressInfo;
struct PF_LayerAudio_tag;
struct PF_YouMustCastThisToActualFunctionType;
struct PF_ContextRefcon_tag;
struct PF_AsyncManager;
struct PF_InData;
struct PF_InteractCallbacks;
struct PF_ParamDef;
union PF_ParamDefUnion;
struct PF_LayerDef;
struct PF_Pixel;
struct PF_LRect;
struct PF_RationalScale;
struct PF_SliderDef;
struct PF_FixedSliderDef;
struct PF_AngleDef;
struct PF_CheckBoxDef;
struct PF_ColorDef;
struct PF_PointDef;
struct PF_PopupDef;
struct PF_FloatSliderDef;
struct PF_ArbitraryDef;
struct PF_PathDef;
struct PF_ButtonDef;
struct PF_Point3DDef;
struct PF_CustomUIInfo;
struct PF_UtilCallbacks;
struct PF_SampPB;
struct PF_CompositeMode;
struct PF_Point;
struct PF_MaskWorld;
struct PF_FloatMatrix;
struct PF_ANSICallbacksBlock;
struct PF_ColorCallbacks;
struct PF_Pixel16;
struct PF_SpecVersion;
struct PF_SoundWorld;
struct PF_SoundFormatInfo;
struct PF_OutData;
struct PF_UserChangedParamExtra;
struct PF_EventExtra;
struct PF_Context;
union PF_EventUnion;
struct PF_DoClickEventInfo;
struct PF_DrawEventInfo;
struct PF_KeyDownEvent;
struct PF_AdjustCursorEventInfo;
struct PF_EffectWindowInfo;
struct PF_EventCallbacks;
struct PF_FixedPoint;
struct PF_PreRenderExtra;
struct PF_PreRenderInput;
struct PF_RenderRequest;
struct PF_PreRenderOutput;
struct PF_PreRenderCallbacks;
struct PF_CheckoutResult;
struct PF_SmartRenderExtra;
struct PF_SmartRenderInput;
struct PF_SmartRenderCallbacks;
struct PF_PixelFloat;
struct PF_State;

using PF_Err = A_long;
using PF_ProgPtr = PF_ProgressInfo *;
using PF_ParamIndex = A_long;
using PF_ChangeFlags = A_long;
using PF_ParamUIFlags = A_long;
using PF_ParamType = A_long;
using PF_ParamFlags = A_long;
using PF_WorldFlags = A_long;
using PF_PixelPtr = PF_Pixel *;
using PF_Rect = PF_LRect;
using PF_UnionableRect = PF_Rect;
using PF_ParamValue = A_long;
using PF_Fixed = A_long;
using PF_Precision = A_short;
using PF_ValueDisplayFlags = A_short;
using PF_Boolean = A_char;
using PF_UnionablePixel = PF_Pixel;
using PF_FpLong = A_FpLong;
using PF_FpShort = A_FpShort;
using PF_FSliderFlags = A_u_long;
using PF_Handle = void **;
using PF_ArbitraryH = PF_Handle;
using PF_PathID = A_u_long;
using PF_ParamDefPtr = PF_ParamDef *;
using PF_CustomEventFlags = A_long;
using PF_UIAlignment = A_long;
using PF_UFixed = A_u_long;
using PF_LayerAudio = PF_LayerAudio_tag *;
using PF_SndSamplePtr = void *;
using PF_Quality = A_long;
using PF_ModeFlags = A_long;
using PF_EffectWorld = PF_LayerDef;
using PF_SampleEdgeBehav = A_u_long;
using PF_TransferMode = A_long;
using PF_Field = A_long;
using PF_XferMode = PF_TransferMode;
using PF_KernelFlags = A_u_long;
using PF_IteratePixel8Func = PF_Err (*)(void *refconP, A_long xL, A_long yL, PF_Pixel *inP,
                                        PF_Pixel *outP);
using PF_NewWorldFlags = A_long;
using PF_MaskFlags = A_long;
using PF_CallbackID = A_long;
using PF_CallbackFunc = PF_YouMustCastThisToActualFunctionType *;
using PF_PlatDataID = A_long;
using PF_IteratePixel16Func = PF_Err (*)(void *refconP, A_long xL, A_long yL, PF_Pixel16 *inP,
                                         PF_Pixel16 *outP);
using PF_Pixel8 = PF_Pixel;
using PF_InFlags = A_long;
using PF_SoundChannels = A_short;
using PF_SoundFormat = A_short;
using PF_SoundSampleSize = A_short;
using PF_OutFlags = A_long;
using PF_OutFlags2 = A_long;
using PF_ContextH = PF_Context **;
using PF_WindowType = A_long;
using PF_ContextRefcon = PF_ContextRefcon_tag *;
using PF_EventType = A_long;
using PF_Modifiers = A_long;
using PF_KeyCode = A_u_long;
using PF_CursorType = A_long;
using PF_EffectArea = A_long;
using PF_EventInFlags = A_long;
using PF_EventOutFlags = A_long;
using PF_ChannelMask = A_long;
using PF_GPU_Framework = A_long;
using PF_RenderOutputFlags = short;
using PF_DeletePreRenderDataFunc = void (*)(void *pre_render_data);
using PF_Cmd = A_long;
using PF_ParamList = PF_ParamDef **;
using PF_PixelFormat = A_long;
using PF_Stage = A_long;
using PF_IteratePixelFloatFunc = PF_Err (*)(void *refconP, A_long xL, A_long yL, PF_PixelFloat *inP,
                                            PF_PixelFloat *outP);
using PF_TimeDir = A_long;
using PF_KeyIndex = A_long;
using PF_AsyncManagerP = PF_AsyncManager *;

struct PF_SpecVersion {
    A_short major;
    A_short minor;
};

struct PF_LRect {
    A_long left;
    A_long top;
    A_long right;
    A_long bottom;
};

struct PF_RationalScale {
    A_long num;
    A_u_long den;
};

struct PF_SoundFormatInfo {
    PF_FpLong rateF;
    PF_SoundChannels num_channels;
    PF_SoundFormat format;
    PF_SoundSampleSize sample_size;
};

struct PF_SoundWorld {
    PF_SoundFormatInfo fi;
    A_long num_samples;
    void *dataP;
};

struct PF_LayerDef {
    void *reserved0;
    void *reserved1;
    PF_WorldFlags world_flags;
    PF_PixelPtr data;
    A_long rowbytes;
    A_long width;
    A_long height;
    PF_UnionableRect extent_hint;
    void *platform_ref;
    A_long reserved_long1;
    void *reserved_long4;
    PF_RationalScale pix_aspect_ratio;
    void *reserved_long2;
    A_long origin_x;
    A_long origin_y;
    A_long reserved_long3;
    A_long dephault;
};

struct PF_Pixel {
    A_u_char alpha;
    A_u_char red;
    A_u_char green;
    A_u_char blue;
};

struct PF_CompositeMode {
    PF_TransferMode xfer;
    A_long rand_seed;
    A_u_char opacity;
    PF_Boolean rgb_only;
    A_u_short opacitySu;
};

struct PF_SampPB {
    PF_Fixed x_radius;
    PF_Fixed y_radius;
    PF_Fixed area;
    PF_EffectWorld *src;
    PF_SampleEdgeBehav samp_behave;
    A_long allow_asynch;
    A_long motion_blur;
    PF_CompositeMode comp_mode;
    PF_PixelPtr mask0;
    A_u_char *fcm_table;
    A_u_char *fcd_table;
    A_long reserved[8];
};

struct PF_Point {
    union {
        A_long h;
        A_long x;
    };
    union {
        A_long v;
        A_long y;
    };
};

struct PF_MaskWorld {
    PF_EffectWorld mask;
    PF_Point offset;
    PF_MaskFlags what_is_mask;
};

struct PF_FloatMatrix {
    PF_FpLong mat[3][3];
};

struct PF_Pixel16 {
    A_u_short alpha;
    A_u_short red;
    A_u_short green;
    A_u_short blue;
};

struct PF_FixedPoint {
    PF_Fixed x;
    PF_Fixed y;
};

struct PF_PixelFloat {
    PF_FpShort alpha;
    PF_FpShort red;
    PF_FpShort green;
    PF_FpShort blue;
};

struct PF_State {
    A_long reservedAL[4];
};
