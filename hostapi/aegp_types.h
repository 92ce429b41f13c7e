// Types of the project interface (layers, compositions, items, streams).
#pragma once

#include "effect_types.h"

struct AEGPp_Stream;
struct AEGP_MarkerVal_tag;
struct AEGP_MaskOutline;
struct AEGP_TextDocument;
struct AEGP_Layer;
struct AEGP_Effect;
struct AEGP_Comp;
struct AEGP_Item;
struct AEGP_Collection2;
struct AEGP_Project;
struct AEGP_ItemView;
struct AEGP_Mask;
struct AEGP_GlobalRefcon_tag;
struct AEGP_ColorVal;
struct AEGP_StreamValue2;
union AEGP_StreamVal2;
struct AEGP_ThreeDVal;
struct AEGP_TwoDVal;
struct AEGP_LayerTransferMode;
struct AEGP_DownsampleFactor;
struct AEGP_ErrReportState;

using AEGP_StreamRefH = AEGPp_Stream **;
using AEGP_FourDVal = A_FpLong[4];
using AEGP_OneDVal = A_FpLong;
using AEGP_ArbBlockVal = A_Handle;
using AEGP_MarkerValP = AEGP_MarkerVal_tag *;
using AEGP_LayerIDVal = A_long;
using AEGP_MaskIDVal = A_long;
using AEGP_MaskOutlineValH = AEGP_MaskOutline **;
using AEGP_TextDocumentH = AEGP_TextDocument **;
using AEGP_LayerFlags = A_long;
using AEGP_DynStreamFlags = A_u_long;
using AEGP_LayerH = AEGP_Layer **;
using AEGP_PluginID = A_long;
using AEGP_EffectRefH = AEGP_Effect **;
using AEGP_CompH = AEGP_Comp **;
using AEGP_ItemH = AEGP_Item **;
using AEGP_LayerQuality = A_short;
using AEGP_LTimeMode = A_short;
using AEGP_TransferFlags = A_long;
using AEGP_TrackMatte = A_long;
using AEGP_ObjectType = A_long;
using AEGP_MemHandle = Up_OpaqueMem **;
using AEGP_LabelID = A_char;
using AEGP_LayerSamplingQuality = A_short;
using AEGP_CompFlags = A_long;
using AEGP_Collection2H = AEGP_Collection2 **;
using AEGP_ItemType = A_short;
using AEGP_ItemFlags = A_long;
using AEGP_ProjectH = AEGP_Project **;
using AEGP_ItemViewP = AEGP_ItemView *;
using AEGP_LayerStream = A_long;
using AEGP_MaskRefH = AEGP_Mask **;
using AEGP_MaskStream = A_long;
using AEGP_StreamFlags = A_long;
using AEGP_StreamType = A_long;
using AEGP_KeyInterpolationMask = A_long;
using AEGP_StreamGroupingType = A_long;
using AEGP_GlobalRefcon = AEGP_GlobalRefcon_tag *;
using AEGP_GetPathTypes = A_u_long;
using AEGP_MemSize = A_u_long;
using AEGP_MemFlag = A_long;
using AEGP_EffectIndex = A_long;
using AEGP_InstalledEffectKey = A_long;
using AEGP_EffectFlags = A_long;

struct AEGP_ColorVal {
    A_FpLong alphaF;
    A_FpLong redF;
    A_FpLong greenF;
    A_FpLong blueF;
};

struct AEGP_ThreeDVal {
    A_FpLong x;
    A_FpLong y;
    A_FpLong z;
};

struct AEGP_TwoDVal {
    A_FpLong x;
    A_FpLong y;
};

union AEGP_StreamVal2 {
    AEGP_FourDVal four_d;
    AEGP_ThreeDVal three_d;
    AEGP_TwoDVal two_d;
    AEGP_OneDVal one_d;
    AEGP_ColorVal color;
    AEGP_ArbBlockVal arbH;
    AEGP_MarkerValP markerP;
    AEGP_LayerIDVal layer_id;
    AEGP_MaskIDVal mask_id;
    AEGP_MaskOutlineValH mask;
    AEGP_TextDocumentH text_documentH;
};

struct AEGP_StreamValue2 {
    AEGP_StreamRefH streamH;
    AEGP_StreamVal2 val;
};

struct AEGP_LayerTransferMode {
    PF_TransferMode mode;
    AEGP_TransferFlags flags;
    AEGP_TrackMatte track_matte;
};

struct AEGP_DownsampleFactor {
    A_short xS;
    A_short yS;
};

struct AEGP_ErrReportState {
    A_long reservedAL[12];
};
