// Constants of the host interface, grouped as the host groups them.
//
// Pixel format codes are byte strings in memory order: the number of ARGB32 reads "argb" when
// stored little-endian. A multi-character literal gives the reverse.
#pragma once

#include "aegp_types.h"
#include "effect_types.h"

// PF_Vers
inline constexpr std::int32_t PF_Vers_BUILD_BITS = 511;
inline constexpr std::int32_t PF_Vers_BUILD_SHIFT = 0;
inline constexpr std::int32_t PF_Vers_STAGE_BITS = 3;
inline constexpr std::int32_t PF_Vers_STAGE_SHIFT = 9;
inline constexpr std::int32_t PF_Vers_BUGFIX_BITS = 15;
inline constexpr std::int32_t PF_Vers_BUGFIX_SHIFT = 11;
inline constexpr std::int32_t PF_Vers_SUBVERS_BITS = 15;
inline constexpr std::int32_t PF_Vers_SUBVERS_SHIFT = 15;
inline constexpr std::int32_t PF_Vers_VERS_BITS = 7;
inline constexpr std::int32_t PF_Vers_VERS_SHIFT = 19;
inline constexpr std::int32_t PF_Vers_VERS_HIGH_BITS = 15;
inline constexpr std::int32_t PF_Vers_VERS_HIGH_SHIFT = 26;
inline constexpr std::int32_t PF_Vers_VERS_LOW_SHIFT = 3;

// PF_MAX
inline constexpr std::int32_t PF_MAX_EFFECT_NAME_LEN = 31;
inline constexpr std::int32_t PF_MAX_EFFECT_CATEGORY_NAME_LEN = 31;
inline constexpr std::int32_t PF_MAX_EFFECT_PARAM_NAME_LEN = 31;
inline constexpr std::int32_t PF_MAX_PARAM_DESCRIPTION_LEN = 31;
inline constexpr std::int32_t PF_MAX_PARAM_VALUE_LEN = 31;
inline constexpr std::int32_t PF_MAX_EFFECT_MSG_LEN = 255;
inline constexpr std::int32_t PF_MAX_WORLD_WIDTH = 30000;
inline constexpr std::int32_t PF_MAX_WORLD_HEIGHT = 30000;
inline constexpr std::int32_t PF_MAX_CHAN8 = 255;
inline constexpr std::int32_t PF_MAX_CHAN16 = 32768;
inline constexpr std::int32_t PF_MAX_TIME_LEN = 31;

// PF_Iterations
inline constexpr std::int32_t PF_Iterations_ONCE_PER_PROCESSOR = -1;

// PF_MAX
inline constexpr std::int32_t PF_MAX_PATH_NAME_LEN = 31;

// PF_ParamIndex
inline constexpr PF_ParamIndex PF_ParamIndex_NONE = -1;
inline constexpr PF_ParamIndex PF_ParamIndex_CHECK_ALL = -2;
inline constexpr PF_ParamIndex PF_ParamIndex_CHECK_ALL_EXCEPT_LAYER_PARAMS = -3;
inline constexpr PF_ParamIndex PF_ParamIndex_CHECK_ALL_HONOR_EXCLUDE = -4;

// AEGP_LayerIDVal
inline constexpr AEGP_LayerIDVal AEGP_LayerIDVal_NONE = 0;

// AEGP_LayerIndex
inline constexpr std::int32_t AEGP_LayerIndex_UNKNOWN = -2;
inline constexpr std::int32_t AEGP_LayerIndex_MERGED = -1;

// A_Err
inline constexpr A_Err A_Err_NONE = 0;
inline constexpr A_Err A_Err_GENERIC = 1;
inline constexpr A_Err A_Err_STRUCT = 2;
inline constexpr A_Err A_Err_PARAMETER = 3;
inline constexpr A_Err A_Err_ALLOC = 4;
inline constexpr A_Err A_Err_WRONG_THREAD = 5;
inline constexpr A_Err A_Err_CONST_PROJECT_MODIFICATION = 6;
inline constexpr A_Err A_Err_RESERVED_7 = 7;
inline constexpr A_Err A_Err_RESERVED_8 = 8;
inline constexpr A_Err A_Err_RESERVED_9 = 9;
inline constexpr A_Err A_Err_RESERVED_10 = 10;
inline constexpr A_Err A_Err_RESERVED_11 = 11;
inline constexpr A_Err A_Err_RESERVED_12 = 12;
inline constexpr A_Err A_Err_MISSING_SUITE = 13;
inline constexpr A_Err A_Err_RESERVED_14 = 14;
inline constexpr A_Err A_Err_RESERVED_15 = 15;
inline constexpr A_Err A_Err_RESERVED_16 = 16;
inline constexpr A_Err A_Err_RESERVED_17 = 17;
inline constexpr A_Err A_Err_RESERVED_18 = 18;
inline constexpr A_Err A_Err_RESERVED_19 = 19;
inline constexpr A_Err A_Err_RESERVED_20 = 20;
inline constexpr A_Err A_Err_RESERVED_21 = 21;
inline constexpr A_Err A_Err_NOT_IN_CACHE_OR_COMPUTE_PENDING = 22;
inline constexpr A_Err A_Err_PROJECT_LOAD_FATAL = 23;
inline constexpr A_Err A_Err_EFFECT_APPLY_FATAL = 24;
inline constexpr A_Err A_Err_LAST = 25;

// PF_Stage
inline constexpr PF_Stage PF_Stage_DEVELOP = 0;
inline constexpr PF_Stage PF_Stage_ALPHA = 1;
inline constexpr PF_Stage PF_Stage_BETA = 2;
inline constexpr PF_Stage PF_Stage_RELEASE = 3;

// PF_Quality
inline constexpr PF_Quality PF_Quality_DRAWING_AUDIO = -1;
inline constexpr PF_Quality PF_Quality_LO = 0;
inline constexpr PF_Quality PF_Quality_HI = 1;

// PF_MF
inline constexpr PF_ModeFlags PF_MF_Alpha_PREMUL = 0;
inline constexpr PF_ModeFlags PF_MF_Alpha_STRAIGHT = 1;

// PF_Field
inline constexpr PF_Field PF_Field_FRAME = 0;
inline constexpr PF_Field PF_Field_UPPER = 1;
inline constexpr PF_Field PF_Field_LOWER = 2;

// PF_Param
inline constexpr PF_ParamType PF_Param_RESERVED = -1;
inline constexpr PF_ParamType PF_Param_LAYER = 0;
inline constexpr PF_ParamType PF_Param_SLIDER = 1;
inline constexpr PF_ParamType PF_Param_FIX_SLIDER = 2;
inline constexpr PF_ParamType PF_Param_ANGLE = 3;
inline constexpr PF_ParamType PF_Param_CHECKBOX = 4;
inline constexpr PF_ParamType PF_Param_COLOR = 5;
inline constexpr PF_ParamType PF_Param_POINT = 6;
inline constexpr PF_ParamType PF_Param_POPUP = 7;
inline constexpr PF_ParamType PF_Param_CUSTOM = 8;
inline constexpr PF_ParamType PF_Param_NO_DATA = 9;
inline constexpr PF_ParamType PF_Param_FLOAT_SLIDER = 10;
inline constexpr PF_ParamType PF_Param_ARBITRARY_DATA = 11;
inline constexpr PF_ParamType PF_Param_PATH = 12;
inline constexpr PF_ParamType PF_Param_GROUP_START = 13;
inline constexpr PF_ParamType PF_Param_GROUP_END = 14;
inline constexpr PF_ParamType PF_Param_BUTTON = 15;
inline constexpr PF_ParamType PF_Param_RESERVED2 = 16;
inline constexpr PF_ParamType PF_Param_RESERVED3 = 17;
inline constexpr PF_ParamType PF_Param_POINT_3D = 18;

// PF_Precision
inline constexpr PF_Precision PF_Precision_INTEGER = 0;
inline constexpr PF_Precision PF_Precision_TENTHS = 1;
inline constexpr PF_Precision PF_Precision_HUNDREDTHS = 2;
inline constexpr PF_Precision PF_Precision_THOUSANDTHS = 3;
inline constexpr PF_Precision PF_Precision_TEN_THOUSANDTHS = 4;

// PF_ParamFlag
inline constexpr PF_ParamFlags PF_ParamFlag_NONE = 0;
inline constexpr PF_ParamFlags PF_ParamFlag_RESERVED1 = 1 << 0;
inline constexpr PF_ParamFlags PF_ParamFlag_CANNOT_TIME_VARY = 1 << 1;
inline constexpr PF_ParamFlags PF_ParamFlag_CANNOT_INTERP = 1 << 2;
inline constexpr PF_ParamFlags PF_ParamFlag_RESERVED2 = 1 << 3;
inline constexpr PF_ParamFlags PF_ParamFlag_RESERVED3 = 1 << 4;
inline constexpr PF_ParamFlags PF_ParamFlag_COLLAPSE_TWIRLY = 1 << 5;
inline constexpr PF_ParamFlags PF_ParamFlag_SUPERVISE = 1 << 6;
inline constexpr PF_ParamFlags PF_ParamFlag_START_COLLAPSED = 1 << 5;
inline constexpr PF_ParamFlags PF_ParamFlag_USE_VALUE_FOR_OLD_PROJECTS = 1 << 7;
inline constexpr PF_ParamFlags PF_ParamFlag_LAYER_PARAM_IS_TRACKMATTE = 1 << 7;
inline constexpr PF_ParamFlags PF_ParamFlag_EXCLUDE_FROM_HAVE_INPUTS_CHANGED = 1 << 8;
inline constexpr PF_ParamFlags PF_ParamFlag_SKIP_REVEAL_WHEN_UNHIDDEN = 1 << 9;
inline constexpr PF_ParamFlags PF_ParamFlag_unused1 = 1 << 10;
inline constexpr PF_ParamFlags PF_ParamFlag_RESERVED4 = 1 << 11;

// PF_ParamFlags
inline constexpr PF_ParamFlags PF_ParamFlags_ALL = -1;

// PF_Err
inline constexpr PF_Err PF_Err_NONE = 0;
inline constexpr PF_Err PF_Err_OUT_OF_MEMORY = 4;
inline constexpr PF_Err PF_Err_INTERNAL_STRUCT_DAMAGED = 512;
inline constexpr PF_Err PF_Err_INVALID_INDEX = 513;
inline constexpr PF_Err PF_Err_UNRECOGNIZED_PARAM_TYPE = 514;
inline constexpr PF_Err PF_Err_INVALID_CALLBACK = 515;
inline constexpr PF_Err PF_Err_BAD_CALLBACK_PARAM = 516;

// PF_Interrupt
inline constexpr std::int32_t PF_Interrupt_CANCEL = 517;

// PF_Err
inline constexpr PF_Err PF_Err_CANNOT_PARSE_KEYFRAME_TEXT = 518;

// PF_WorldFlag
inline constexpr PF_WorldFlags PF_WorldFlag_DEEP = 1;
inline constexpr PF_WorldFlags PF_WorldFlag_WRITEABLE = 2;
inline constexpr PF_WorldFlags PF_WorldFlag_RESERVED0 = 16777216;
inline constexpr PF_WorldFlags PF_WorldFlag_RESERVED1 = 33554432;
inline constexpr PF_WorldFlags PF_WorldFlag_RESERVED2 = 67108864;
inline constexpr PF_WorldFlags PF_WorldFlag_RESERVED3 = 134217728;
inline constexpr PF_WorldFlags PF_WorldFlag_RESERVED4 = 268435456;
inline constexpr PF_WorldFlags PF_WorldFlag_RESERVED5 = 536870912;
inline constexpr PF_WorldFlags PF_WorldFlag_RESERVED6 = 1073741824;
inline constexpr PF_WorldFlags PF_WorldFlag_RESERVED = (-2147483647 - 1);

// PF_OutFlag
inline constexpr PF_OutFlags PF_OutFlag_NONE = 0;
inline constexpr PF_OutFlags PF_OutFlag_KEEP_RESOURCE_OPEN = 1 << 0;
inline constexpr PF_OutFlags PF_OutFlag_WIDE_TIME_INPUT = 1 << 1;
inline constexpr PF_OutFlags PF_OutFlag_NON_PARAM_VARY = 1 << 2;
inline constexpr PF_OutFlags PF_OutFlag_RESERVED6 = 1 << 3;
inline constexpr PF_OutFlags PF_OutFlag_SEQUENCE_DATA_NEEDS_FLATTENING = 1 << 4;
inline constexpr PF_OutFlags PF_OutFlag_I_DO_DIALOG = 1 << 5;
inline constexpr PF_OutFlags PF_OutFlag_USE_OUTPUT_EXTENT = 1 << 6;
inline constexpr PF_OutFlags PF_OutFlag_SEND_DO_DIALOG = 1 << 7;
inline constexpr PF_OutFlags PF_OutFlag_DISPLAY_ERROR_MESSAGE = 1 << 8;
inline constexpr PF_OutFlags PF_OutFlag_I_EXPAND_BUFFER = 1 << 9;
inline constexpr PF_OutFlags PF_OutFlag_PIX_INDEPENDENT = 1 << 10;
inline constexpr PF_OutFlags PF_OutFlag_I_WRITE_INPUT_BUFFER = 1 << 11;
inline constexpr PF_OutFlags PF_OutFlag_I_SHRINK_BUFFER = 1 << 12;
inline constexpr PF_OutFlags PF_OutFlag_WORKS_IN_PLACE = 1 << 13;
inline constexpr PF_OutFlags PF_OutFlag_RESERVED8 = 1 << 14;
inline constexpr PF_OutFlags PF_OutFlag_CUSTOM_UI = 1 << 15;
inline constexpr PF_OutFlags PF_OutFlag_RESERVED7 = 1 << 16;
inline constexpr PF_OutFlags PF_OutFlag_REFRESH_UI = 1 << 17;
inline constexpr PF_OutFlags PF_OutFlag_NOP_RENDER = 1 << 18;
inline constexpr PF_OutFlags PF_OutFlag_I_USE_SHUTTER_ANGLE = 1 << 19;
inline constexpr PF_OutFlags PF_OutFlag_I_USE_AUDIO = 1 << 20;
inline constexpr PF_OutFlags PF_OutFlag_I_AM_OBSOLETE = 1 << 21;
inline constexpr PF_OutFlags PF_OutFlag_FORCE_RERENDER = 1 << 22;
inline constexpr PF_OutFlags PF_OutFlag_PiPL_OVERRIDES_OUTDATA_OUTFLAGS = 1 << 23;
inline constexpr PF_OutFlags PF_OutFlag_I_HAVE_EXTERNAL_DEPENDENCIES = 1 << 24;
inline constexpr PF_OutFlags PF_OutFlag_DEEP_COLOR_AWARE = 1 << 25;
inline constexpr PF_OutFlags PF_OutFlag_SEND_UPDATE_PARAMS_UI = 1 << 26;
inline constexpr PF_OutFlags PF_OutFlag_AUDIO_FLOAT_ONLY = 1 << 27;
inline constexpr PF_OutFlags PF_OutFlag_AUDIO_IIR = 1 << 28;
inline constexpr PF_OutFlags PF_OutFlag_I_SYNTHESIZE_AUDIO = 1 << 29;
inline constexpr PF_OutFlags PF_OutFlag_AUDIO_EFFECT_TOO = 1 << 30;
inline constexpr PF_OutFlags PF_OutFlag_AUDIO_EFFECT_ONLY = (-2147483647 - 1);

// PF_OutFlag2
inline constexpr PF_OutFlags2 PF_OutFlag2_NONE = 0;
inline constexpr PF_OutFlags2 PF_OutFlag2_SUPPORTS_QUERY_DYNAMIC_FLAGS = 1 << 0;
inline constexpr PF_OutFlags2 PF_OutFlag2_I_USE_3D_CAMERA = 1 << 1;
inline constexpr PF_OutFlags2 PF_OutFlag2_I_USE_3D_LIGHTS = 1 << 2;
inline constexpr PF_OutFlags2 PF_OutFlag2_PARAM_GROUP_START_COLLAPSED_FLAG = 1 << 3;
inline constexpr PF_OutFlags2 PF_OutFlag2_I_AM_THREADSAFE = 1 << 4;
inline constexpr PF_OutFlags2 PF_OutFlag2_CAN_COMBINE_WITH_DESTINATION = 1 << 5;
inline constexpr PF_OutFlags2 PF_OutFlag2_DOESNT_NEED_EMPTY_PIXELS = 1 << 6;
inline constexpr PF_OutFlags2 PF_OutFlag2_REVEALS_ZERO_ALPHA = 1 << 7;
inline constexpr PF_OutFlags2 PF_OutFlag2_PRESERVES_FULLY_OPAQUE_PIXELS = 1 << 8;
inline constexpr PF_OutFlags2 PF_OutFlag2_SUPPORTS_SMART_RENDER = 1 << 10;
inline constexpr PF_OutFlags2 PF_OutFlag2_RESERVED9 = 1 << 11;
inline constexpr PF_OutFlags2 PF_OutFlag2_FLOAT_COLOR_AWARE = 1 << 12;
inline constexpr PF_OutFlags2 PF_OutFlag2_I_USE_COLORSPACE_ENUMERATION = 1 << 13;
inline constexpr PF_OutFlags2 PF_OutFlag2_I_AM_DEPRECATED = 1 << 14;
inline constexpr PF_OutFlags2 PF_OutFlag2_PPRO_DO_NOT_CLONE_SEQUENCE_DATA_FOR_RENDER = 1 << 15;
inline constexpr PF_OutFlags2 PF_OutFlag2_RESERVED10 = 1 << 16;
inline constexpr PF_OutFlags2 PF_OutFlag2_AUTOMATIC_WIDE_TIME_INPUT = 1 << 17;
inline constexpr PF_OutFlags2 PF_OutFlag2_I_USE_TIMECODE = 1 << 18;
inline constexpr PF_OutFlags2 PF_OutFlag2_DEPENDS_ON_UNREFERENCED_MASKS = 1 << 19;
inline constexpr PF_OutFlags2 PF_OutFlag2_OUTPUT_IS_WATERMARKED = 1 << 20;
inline constexpr PF_OutFlags2 PF_OutFlag2_I_MIX_GUID_DEPENDENCIES = 1 << 21;
inline constexpr PF_OutFlags2 PF_OutFlag2_AE13_5_THREADSAFE = 1 << 22;
inline constexpr PF_OutFlags2 PF_OutFlag2_SUPPORTS_GET_FLATTENED_SEQUENCE_DATA = 1 << 23;
inline constexpr PF_OutFlags2 PF_OutFlag2_CUSTOM_UI_ASYNC_MANAGER = 1 << 24;
inline constexpr PF_OutFlags2 PF_OutFlag2_SUPPORTS_GPU_RENDER_F32 = 1 << 25;
inline constexpr PF_OutFlags2 PF_OutFlag2_RESERVED12 = 1 << 26;
inline constexpr PF_OutFlags2 PF_OutFlag2_SUPPORTS_THREADED_RENDERING = 1 << 27;
inline constexpr PF_OutFlags2 PF_OutFlag2_MUTABLE_RENDER_SEQUENCE_DATA_SLOWER = 1 << 28;
inline constexpr PF_OutFlags2 PF_OutFlag2_SUPPORTS_DIRECTX_RENDERING = 1 << 29;

// PF_InFlag
inline constexpr PF_InFlags PF_InFlag_NONE = 0;
inline constexpr PF_InFlags PF_InFlag_PROJECT_IS_RENDER_ONLY = 1;

// PF_Cmd
inline constexpr PF_Cmd PF_Cmd_ABOUT = 0;
inline constexpr PF_Cmd PF_Cmd_GLOBAL_SETUP = 1;
inline constexpr PF_Cmd PF_Cmd_UNUSED_0 = 2;
inline constexpr PF_Cmd PF_Cmd_GLOBAL_SETDOWN = 3;
inline constexpr PF_Cmd PF_Cmd_PARAMS_SETUP = 4;
inline constexpr PF_Cmd PF_Cmd_SEQUENCE_SETUP = 5;
inline constexpr PF_Cmd PF_Cmd_SEQUENCE_RESETUP = 6;
inline constexpr PF_Cmd PF_Cmd_SEQUENCE_FLATTEN = 7;
inline constexpr PF_Cmd PF_Cmd_SEQUENCE_SETDOWN = 8;
inline constexpr PF_Cmd PF_Cmd_DO_DIALOG = 9;
inline constexpr PF_Cmd PF_Cmd_FRAME_SETUP = 10;
inline constexpr PF_Cmd PF_Cmd_RENDER = 11;
inline constexpr PF_Cmd PF_Cmd_FRAME_SETDOWN = 12;
inline constexpr PF_Cmd PF_Cmd_USER_CHANGED_PARAM = 13;
inline constexpr PF_Cmd PF_Cmd_UPDATE_PARAMS_UI = 14;
inline constexpr PF_Cmd PF_Cmd_EVENT = 15;
inline constexpr PF_Cmd PF_Cmd_GET_EXTERNAL_DEPENDENCIES = 16;
inline constexpr PF_Cmd PF_Cmd_COMPLETELY_GENERAL = 17;
inline constexpr PF_Cmd PF_Cmd_QUERY_DYNAMIC_FLAGS = 18;
inline constexpr PF_Cmd PF_Cmd_AUDIO_RENDER = 19;
inline constexpr PF_Cmd PF_Cmd_AUDIO_SETUP = 20;
inline constexpr PF_Cmd PF_Cmd_AUDIO_SETDOWN = 21;
inline constexpr PF_Cmd PF_Cmd_ARBITRARY_CALLBACK = 22;
inline constexpr PF_Cmd PF_Cmd_SMART_PRE_RENDER = 23;
inline constexpr PF_Cmd PF_Cmd_SMART_RENDER = 24;
inline constexpr PF_Cmd PF_Cmd_RESERVED1 = 25;
inline constexpr PF_Cmd PF_Cmd_RESERVED2 = 26;
inline constexpr PF_Cmd PF_Cmd_RESERVED3 = 27;
inline constexpr PF_Cmd PF_Cmd_GET_FLATTENED_SEQUENCE_DATA = 28;
inline constexpr PF_Cmd PF_Cmd_TRANSLATE_PARAMS_TO_PREFS = 29;
inline constexpr PF_Cmd PF_Cmd_RESERVED4 = 30;
inline constexpr PF_Cmd PF_Cmd_SMART_RENDER_GPU = 31;
inline constexpr PF_Cmd PF_Cmd_GPU_DEVICE_SETUP = 32;
inline constexpr PF_Cmd PF_Cmd_GPU_DEVICE_SETDOWN = 33;
inline constexpr PF_Cmd PF_Cmd_NUM_CMDS = 34;

// PF_LayerDefault
inline constexpr std::int32_t PF_LayerDefault_MYSELF = -1;
inline constexpr std::int32_t PF_LayerDefault_NONE = 0;

// PF_ValueDisplayFlag
inline constexpr PF_ValueDisplayFlags PF_ValueDisplayFlag_NONE = 0;
inline constexpr PF_ValueDisplayFlags PF_ValueDisplayFlag_PERCENT = 1;
inline constexpr PF_ValueDisplayFlags PF_ValueDisplayFlag_PIXEL = 2;
inline constexpr PF_ValueDisplayFlags PF_ValueDisplayFlag_RESERVED1 = 4;
inline constexpr PF_ValueDisplayFlags PF_ValueDisplayFlag_REVERSE = 8;

// PF_FSliderFlag
inline constexpr PF_FSliderFlags PF_FSliderFlag_NONE = 0u;
inline constexpr PF_FSliderFlags PF_FSliderFlag_WANT_PHASE = 1u;

// PF_PUI
inline constexpr PF_ParamUIFlags PF_PUI_NONE = 0;
inline constexpr PF_ParamUIFlags PF_PUI_TOPIC = 1;
inline constexpr PF_ParamUIFlags PF_PUI_CONTROL = 2;
inline constexpr PF_ParamUIFlags PF_PUI_STD_CONTROL_ONLY = 4;
inline constexpr PF_ParamUIFlags PF_PUI_NO_ECW_UI = 8;
inline constexpr PF_ParamUIFlags PF_PUI_ECW_SEPARATOR = 16;
inline constexpr PF_ParamUIFlags PF_PUI_DISABLED = 32;
inline constexpr PF_ParamUIFlags PF_PUI_DONT_ERASE_TOPIC = 64;
inline constexpr PF_ParamUIFlags PF_PUI_DONT_ERASE_CONTROL = 128;
inline constexpr PF_ParamUIFlags PF_PUI_RADIO_BUTTON = 256;
inline constexpr PF_ParamUIFlags PF_PUI_INVISIBLE = 512;
inline constexpr PF_ParamUIFlags PF_PUI_RESERVED = 1024;

// PF_ChangeFlag
inline constexpr PF_ChangeFlags PF_ChangeFlag_NONE = 0;
inline constexpr PF_ChangeFlags PF_ChangeFlag_CHANGED_VALUE = 1;
inline constexpr PF_ChangeFlags PF_ChangeFlag_RESERVED = 2;
inline constexpr PF_ChangeFlags PF_ChangeFlag_SET_TO_VARY = 4;
inline constexpr PF_ChangeFlags PF_ChangeFlag_SET_TO_CONSTANT = 8;

// PF_ChannelMask
inline constexpr PF_ChannelMask PF_ChannelMask_ALPHA = 1;
inline constexpr PF_ChannelMask PF_ChannelMask_RED = 2;
inline constexpr PF_ChannelMask PF_ChannelMask_GREEN = 4;
inline constexpr PF_ChannelMask PF_ChannelMask_BLUE = 8;
inline constexpr PF_ChannelMask PF_ChannelMask_ARGB = 15;

// PF_RenderOutputFlag
inline constexpr PF_RenderOutputFlags PF_RenderOutputFlag_RETURNS_EXTRA_PIXELS = 1;
inline constexpr PF_RenderOutputFlags PF_RenderOutputFlag_GPU_RENDER_POSSIBLE = 2;
inline constexpr PF_RenderOutputFlags PF_RenderOutputFlag_RESERVED1 = 4;

// DRAWBOT_FillType
inline constexpr DRAWBOT_FillType kDRAWBOT_FillType_EvenOdd = 0;
inline constexpr DRAWBOT_FillType kDRAWBOT_FillType_Winding = 1;
inline constexpr DRAWBOT_FillType kDRAWBOT_FillType_Default = 1;

// DRAWBOT_TextAlignment
inline constexpr DRAWBOT_TextAlignment kDRAWBOT_TextAlignment_Left = 0;
inline constexpr DRAWBOT_TextAlignment kDRAWBOT_TextAlignment_Center = 1;
inline constexpr DRAWBOT_TextAlignment kDRAWBOT_TextAlignment_Right = 2;
inline constexpr DRAWBOT_TextAlignment kDRAWBOT_TextAlignment_Default = 0;

// DRAWBOT_TextTruncation
inline constexpr DRAWBOT_TextTruncation kDRAWBOT_TextTruncation_None = 0;
inline constexpr DRAWBOT_TextTruncation kDRAWBOT_TextTruncation_End = 1;
inline constexpr DRAWBOT_TextTruncation kDRAWBOT_TextTruncation_EndEllipsis = 2;
inline constexpr DRAWBOT_TextTruncation kDRAWBOT_TextTruncation_PathEllipsis = 3;

// DRAWBOT_InterpolationPolicy
inline constexpr DRAWBOT_InterpolationPolicy kDRAWBOT_InterpolationPolicy_None = 0;
inline constexpr DRAWBOT_InterpolationPolicy kDRAWBOT_InterpolationPolicy_Med = 1;
inline constexpr DRAWBOT_InterpolationPolicy kDRAWBOT_InterpolationPolicy_High = 2;
inline constexpr DRAWBOT_InterpolationPolicy kDRAWBOT_InterpolationPolicy_Default = 0;

// DRAWBOT_AntiAliasPolicy
inline constexpr DRAWBOT_AntiAliasPolicy kDRAWBOT_AntiAliasPolicy_None = 0;
inline constexpr DRAWBOT_AntiAliasPolicy kDRAWBOT_AntiAliasPolicy_Med = 1;
inline constexpr DRAWBOT_AntiAliasPolicy kDRAWBOT_AntiAliasPolicy_High = 2;
inline constexpr DRAWBOT_AntiAliasPolicy kDRAWBOT_AntiAliasPolicy_Default = 0;

// PF_CustomEFlag
inline constexpr PF_CustomEventFlags PF_CustomEFlag_NONE = 0;
inline constexpr PF_CustomEventFlags PF_CustomEFlag_COMP = 1;
inline constexpr PF_CustomEventFlags PF_CustomEFlag_LAYER = 2;
inline constexpr PF_CustomEventFlags PF_CustomEFlag_EFFECT = 4;
inline constexpr PF_CustomEventFlags PF_CustomEFlag_PREVIEW = 8;

// PF_Window
inline constexpr PF_WindowType PF_Window_NONE = -1;
inline constexpr PF_WindowType PF_Window_COMP = 0;
inline constexpr PF_WindowType PF_Window_LAYER = 1;
inline constexpr PF_WindowType PF_Window_EFFECT = 2;
inline constexpr PF_WindowType PF_Window_PREVIEW = 3;

// PF_Event
inline constexpr PF_EventType PF_Event_NONE = -1;
inline constexpr PF_EventType PF_Event_NEW_CONTEXT = 0;
inline constexpr PF_EventType PF_Event_ACTIVATE = 1;
inline constexpr PF_EventType PF_Event_DO_CLICK = 2;
inline constexpr PF_EventType PF_Event_DRAG = 3;
inline constexpr PF_EventType PF_Event_DRAW = 4;
inline constexpr PF_EventType PF_Event_DEACTIVATE = 5;
inline constexpr PF_EventType PF_Event_CLOSE_CONTEXT = 6;
inline constexpr PF_EventType PF_Event_IDLE = 7;
inline constexpr PF_EventType PF_Event_KEYDOWN_OBSOLETE = 8;
inline constexpr PF_EventType PF_Event_ADJUST_CURSOR = 9;
inline constexpr PF_EventType PF_Event_KEYDOWN = 10;
inline constexpr PF_EventType PF_Event_MOUSE_EXITED = 11;
inline constexpr PF_EventType PF_Event_NUM_EVENTS = 12;

// PF_Cursor
inline constexpr PF_CursorType PF_Cursor_NONE = 0;
inline constexpr PF_CursorType PF_Cursor_CUSTOM = 1;
inline constexpr PF_CursorType PF_Cursor_RESIZE_VERTICAL = 21;
inline constexpr PF_CursorType PF_Cursor_RESIZE_HORIZONTAL = 22;
inline constexpr PF_CursorType PF_Cursor_LAYER_MOVE = 75;

// PF_MAX
inline constexpr std::int32_t PF_MAX_CURSOR_PLUS_ONE = 123;

// PF_Mod
inline constexpr std::int32_t PF_Mod_NONE = 0;
inline constexpr std::int32_t PF_Mod_CMD_CTRL_KEY = 256;
inline constexpr std::int32_t PF_Mod_SHIFT_KEY = 512;
inline constexpr std::int32_t PF_Mod_CAPS_LOCK_KEY = 1024;
inline constexpr std::int32_t PF_Mod_OPT_ALT_KEY = 2048;
inline constexpr std::int32_t PF_Mod_MAC_CONTROL_KEY = 4096;

// PF_EO
inline constexpr PF_EventOutFlags PF_EO_NONE = 0;
inline constexpr PF_EventOutFlags PF_EO_HANDLED_EVENT = 1;
inline constexpr PF_EventOutFlags PF_EO_ALWAYS_UPDATE = 2;
inline constexpr PF_EventOutFlags PF_EO_NEVER_UPDATE = 4;
inline constexpr PF_EventOutFlags PF_EO_UPDATE_NOW = 8;

// PF_EI
inline constexpr PF_EventInFlags PF_EI_NONE = 0;
inline constexpr PF_EventInFlags PF_EI_DONT_DRAW = 1;

// PF_UIAlignment
inline constexpr PF_UIAlignment PF_UIAlignment_NONE = 0;
inline constexpr PF_UIAlignment PF_UIAlignment_TOP = 1;
inline constexpr PF_UIAlignment PF_UIAlignment_LEFT = 2;
inline constexpr PF_UIAlignment PF_UIAlignment_BOTTOM = 4;
inline constexpr PF_UIAlignment PF_UIAlignment_RIGHT = 8;

// PF_Xfer
inline constexpr PF_TransferMode PF_Xfer_NONE = -1;
inline constexpr PF_TransferMode PF_Xfer_COPY = 0;
inline constexpr PF_TransferMode PF_Xfer_BEHIND = 1;
inline constexpr PF_TransferMode PF_Xfer_IN_FRONT = 2;
inline constexpr PF_TransferMode PF_Xfer_DISSOLVE = 3;
inline constexpr PF_TransferMode PF_Xfer_ADD = 4;
inline constexpr PF_TransferMode PF_Xfer_MULTIPLY = 5;
inline constexpr PF_TransferMode PF_Xfer_SCREEN = 6;
inline constexpr PF_TransferMode PF_Xfer_OVERLAY = 7;
inline constexpr PF_TransferMode PF_Xfer_SOFT_LIGHT = 8;
inline constexpr PF_TransferMode PF_Xfer_HARD_LIGHT = 9;
inline constexpr PF_TransferMode PF_Xfer_DARKEN = 10;
inline constexpr PF_TransferMode PF_Xfer_LIGHTEN = 11;
inline constexpr PF_TransferMode PF_Xfer_DIFFERENCE = 12;
inline constexpr PF_TransferMode PF_Xfer_HUE = 13;
inline constexpr PF_TransferMode PF_Xfer_SATURATION = 14;
inline constexpr PF_TransferMode PF_Xfer_COLOR = 15;
inline constexpr PF_TransferMode PF_Xfer_LUMINOSITY = 16;
inline constexpr PF_TransferMode PF_Xfer_MULTIPLY_ALPHA = 17;
inline constexpr PF_TransferMode PF_Xfer_MULTIPLY_ALPHA_LUMA = 18;
inline constexpr PF_TransferMode PF_Xfer_MULTIPLY_NOT_ALPHA = 19;
inline constexpr PF_TransferMode PF_Xfer_MULTIPLY_NOT_ALPHA_LUMA = 20;
inline constexpr PF_TransferMode PF_Xfer_ADDITIVE_PREMUL = 21;
inline constexpr PF_TransferMode PF_Xfer_ALPHA_ADD = 22;
inline constexpr PF_TransferMode PF_Xfer_COLOR_DODGE = 23;
inline constexpr PF_TransferMode PF_Xfer_COLOR_BURN = 24;
inline constexpr PF_TransferMode PF_Xfer_EXCLUSION = 25;
inline constexpr PF_TransferMode PF_Xfer_DIFFERENCE2 = 26;
inline constexpr PF_TransferMode PF_Xfer_COLOR_DODGE2 = 27;
inline constexpr PF_TransferMode PF_Xfer_COLOR_BURN2 = 28;
inline constexpr PF_TransferMode PF_Xfer_LINEAR_DODGE = 29;
inline constexpr PF_TransferMode PF_Xfer_LINEAR_BURN = 30;
inline constexpr PF_TransferMode PF_Xfer_LINEAR_LIGHT = 31;
inline constexpr PF_TransferMode PF_Xfer_VIVID_LIGHT = 32;
inline constexpr PF_TransferMode PF_Xfer_PIN_LIGHT = 33;
inline constexpr PF_TransferMode PF_Xfer_HARD_MIX = 34;
inline constexpr PF_TransferMode PF_Xfer_LIGHTER_COLOR = 35;
inline constexpr PF_TransferMode PF_Xfer_DARKER_COLOR = 36;
inline constexpr PF_TransferMode PF_Xfer_SUBTRACT = 37;
inline constexpr PF_TransferMode PF_Xfer_DIVIDE = 38;
inline constexpr PF_TransferMode PF_Xfer_RESERVED0 = 39;
inline constexpr PF_TransferMode PF_Xfer_RESERVED1 = 40;
inline constexpr PF_TransferMode PF_Xfer_NUM_MODES = 41;
inline constexpr PF_TransferMode PF_Xfer_TINT = 29;
inline constexpr PF_TransferMode PF_Xfer_SHADE = 30;
inline constexpr PF_TransferMode PF_Xfer_INTENSE_LIGHT = 32;

// PF_MaskFlag
inline constexpr PF_MaskFlags PF_MaskFlag_NONE = 0;
inline constexpr PF_MaskFlags PF_MaskFlag_INVERTED = 1;
inline constexpr PF_MaskFlags PF_MaskFlag_LUMINANCE = 2;

// PF_NewWorldFlag
inline constexpr PF_NewWorldFlags PF_NewWorldFlag_NONE = 0;
inline constexpr PF_NewWorldFlags PF_NewWorldFlag_CLEAR_PIXELS = 1;
inline constexpr PF_NewWorldFlags PF_NewWorldFlag_DEEP_PIXELS = 2;
inline constexpr PF_NewWorldFlags PF_NewWorldFlag_RESERVED0 = 4;
inline constexpr PF_NewWorldFlags PF_NewWorldFlag_RESERVED1 = 8;

// PF_PixelFormat
inline constexpr PF_PixelFormat PF_PixelFormat_ARGB32 = 1650946657;
inline constexpr PF_PixelFormat PF_PixelFormat_ARGB64 = 909206881;
inline constexpr PF_PixelFormat PF_PixelFormat_ARGB128 = 842229089;
inline constexpr PF_PixelFormat PF_PixelFormat_GPU_BGRA128 = 1094992704;
inline constexpr PF_PixelFormat PF_PixelFormat_RESERVED = 1631863616;
inline constexpr PF_PixelFormat PF_PixelFormat_BGRA32 = 1634887522;
inline constexpr PF_PixelFormat PF_PixelFormat_VUYA32 = 1635349878;
inline constexpr PF_PixelFormat PF_PixelFormat_NTSCDV25 = 846100068;
inline constexpr PF_PixelFormat PF_PixelFormat_PALDV25 = 846231140;
inline constexpr PF_PixelFormat PF_PixelFormat_INVALID = 1717854562;
inline constexpr PF_PixelFormat PF_PixelFormat_FORCE_LONG_INT = -1;

// PF_TimeDir
inline constexpr PF_TimeDir PF_TimeDir_GREATER_THAN = 0;
inline constexpr PF_TimeDir PF_TimeDir_LESS_THAN = 1;
inline constexpr PF_TimeDir PF_TimeDir_GREATER_THAN_OR_EQUAL = 4096;
inline constexpr PF_TimeDir PF_TimeDir_LESS_THAN_OR_EQUAL = 4097;

// AEGP_ItemType
inline constexpr AEGP_ItemType AEGP_ItemType_NONE = 0;
inline constexpr AEGP_ItemType AEGP_ItemType_FOLDER = 1;
inline constexpr AEGP_ItemType AEGP_ItemType_COMP = 2;
inline constexpr AEGP_ItemType AEGP_ItemType_SOLID_defunct = 3;
inline constexpr AEGP_ItemType AEGP_ItemType_FOOTAGE = 4;
inline constexpr AEGP_ItemType AEGP_ItemType_NUM_TYPES1 = 5;

// AEGP_ItemFlag
inline constexpr AEGP_ItemFlags AEGP_ItemFlag_MISSING = 1;
inline constexpr AEGP_ItemFlags AEGP_ItemFlag_HAS_PROXY = 2;
inline constexpr AEGP_ItemFlags AEGP_ItemFlag_USING_PROXY = 4;
inline constexpr AEGP_ItemFlags AEGP_ItemFlag_MISSING_PROXY = 8;
inline constexpr AEGP_ItemFlags AEGP_ItemFlag_HAS_VIDEO = 16;
inline constexpr AEGP_ItemFlags AEGP_ItemFlag_HAS_AUDIO = 32;
inline constexpr AEGP_ItemFlags AEGP_ItemFlag_STILL = 64;
inline constexpr AEGP_ItemFlags AEGP_ItemFlag_HAS_ACTIVE_AUDIO = 128;

// AEGP_CompFlag
inline constexpr AEGP_CompFlags AEGP_CompFlag_SHOW_ALL_SHY = 1;
inline constexpr AEGP_CompFlags AEGP_CompFlag_RESERVED_1 = 2;
inline constexpr AEGP_CompFlags AEGP_CompFlag_RESERVED_2 = 4;
inline constexpr AEGP_CompFlags AEGP_CompFlag_ENABLE_MOTION_BLUR = 8;
inline constexpr AEGP_CompFlags AEGP_CompFlag_ENABLE_TIME_FILTER = 16;
inline constexpr AEGP_CompFlags AEGP_CompFlag_GRID_TO_FRAMES = 32;
inline constexpr AEGP_CompFlags AEGP_CompFlag_GRID_TO_FIELDS = 64;
inline constexpr AEGP_CompFlags AEGP_CompFlag_USE_LOCAL_DSF = 128;
inline constexpr AEGP_CompFlags AEGP_CompFlag_DRAFT_3D = 256;
inline constexpr AEGP_CompFlags AEGP_CompFlag_SHOW_GRAPH = 512;
inline constexpr AEGP_CompFlags AEGP_CompFlag_RESERVED_3 = 1024;

// AEGP_MemFlag
inline constexpr AEGP_MemFlag AEGP_MemFlag_NONE = 0;
inline constexpr AEGP_MemFlag AEGP_MemFlag_CLEAR = 1;
inline constexpr AEGP_MemFlag AEGP_MemFlag_QUIET = 2;

// AEGP_LayerQual
inline constexpr std::int32_t AEGP_LayerQual_NONE = -1;
inline constexpr std::int32_t AEGP_LayerQual_WIREFRAME = 0;
inline constexpr std::int32_t AEGP_LayerQual_DRAFT = 1;
inline constexpr std::int32_t AEGP_LayerQual_BEST = 2;

// AEGP_LayerFlag
inline constexpr AEGP_LayerFlags AEGP_LayerFlag_NONE = 0;
inline constexpr AEGP_LayerFlags AEGP_LayerFlag_VIDEO_ACTIVE = 1;
inline constexpr AEGP_LayerFlags AEGP_LayerFlag_AUDIO_ACTIVE = 2;
inline constexpr AEGP_LayerFlags AEGP_LayerFlag_EFFECTS_ACTIVE = 4;
inline constexpr AEGP_LayerFlags AEGP_LayerFlag_MOTION_BLUR = 8;
inline constexpr AEGP_LayerFlags AEGP_LayerFlag_FRAME_BLENDING = 16;
inline constexpr AEGP_LayerFlags AEGP_LayerFlag_LOCKED = 32;
inline constexpr AEGP_LayerFlags AEGP_LayerFlag_SHY = 64;
inline constexpr AEGP_LayerFlags AEGP_LayerFlag_COLLAPSE = 128;
inline constexpr AEGP_LayerFlags AEGP_LayerFlag_AUTO_ORIENT_ROTATION = 256;
inline constexpr AEGP_LayerFlags AEGP_LayerFlag_ADJUSTMENT_LAYER = 512;
inline constexpr AEGP_LayerFlags AEGP_LayerFlag_TIME_REMAPPING = 1024;
inline constexpr AEGP_LayerFlags AEGP_LayerFlag_LAYER_IS_3D = 2048;
inline constexpr AEGP_LayerFlags AEGP_LayerFlag_LOOK_AT_CAMERA = 4096;
inline constexpr AEGP_LayerFlags AEGP_LayerFlag_LOOK_AT_POI = 8192;
inline constexpr AEGP_LayerFlags AEGP_LayerFlag_SOLO = 16384;
inline constexpr AEGP_LayerFlags AEGP_LayerFlag_MARKERS_LOCKED = 32768;
inline constexpr AEGP_LayerFlags AEGP_LayerFlag_NULL_LAYER = 65536;
inline constexpr AEGP_LayerFlags AEGP_LayerFlag_HIDE_LOCKED_MASKS = 131072;
inline constexpr AEGP_LayerFlags AEGP_LayerFlag_GUIDE_LAYER = 262144;
inline constexpr AEGP_LayerFlags AEGP_LayerFlag_ADVANCED_FRAME_BLENDING = 524288;
inline constexpr AEGP_LayerFlags AEGP_LayerFlag_SUBLAYERS_RENDER_SEPARATELY = 1048576;
inline constexpr AEGP_LayerFlags AEGP_LayerFlag_ENVIRONMENT_LAYER = 2097152;

// AEGP_ObjectType
inline constexpr AEGP_ObjectType AEGP_ObjectType_NONE = -1;
inline constexpr AEGP_ObjectType AEGP_ObjectType_AV = 0;
inline constexpr AEGP_ObjectType AEGP_ObjectType_LIGHT = 1;
inline constexpr AEGP_ObjectType AEGP_ObjectType_CAMERA = 2;
inline constexpr AEGP_ObjectType AEGP_ObjectType_TEXT = 3;
inline constexpr AEGP_ObjectType AEGP_ObjectType_VECTOR = 4;
inline constexpr AEGP_ObjectType AEGP_ObjectType_3D_MODEL = 5;
inline constexpr AEGP_ObjectType AEGP_ObjectType_RESERVED1 = 6;
inline constexpr AEGP_ObjectType AEGP_ObjectType_RESERVED2 = 7;
inline constexpr AEGP_ObjectType AEGP_ObjectType_RESERVED3 = 8;
inline constexpr AEGP_ObjectType AEGP_ObjectType_NUM_TYPES = 9;

// AEGP_LTimeMode
inline constexpr AEGP_LTimeMode AEGP_LTimeMode_LayerTime = 0;
inline constexpr AEGP_LTimeMode AEGP_LTimeMode_CompTime = 1;

// AEGP_StreamFlag
inline constexpr AEGP_StreamFlags AEGP_StreamFlag_NONE = 0;
inline constexpr AEGP_StreamFlags AEGP_StreamFlag_HAS_MIN = 1;
inline constexpr AEGP_StreamFlags AEGP_StreamFlag_HAS_MAX = 2;
inline constexpr AEGP_StreamFlags AEGP_StreamFlag_IS_SPATIAL = 4;

// AEGP_StreamType
inline constexpr AEGP_StreamType AEGP_StreamType_NO_DATA = 0;
inline constexpr AEGP_StreamType AEGP_StreamType_ThreeD_SPATIAL = 1;
inline constexpr AEGP_StreamType AEGP_StreamType_ThreeD = 2;
inline constexpr AEGP_StreamType AEGP_StreamType_TwoD_SPATIAL = 3;
inline constexpr AEGP_StreamType AEGP_StreamType_TwoD = 4;
inline constexpr AEGP_StreamType AEGP_StreamType_OneD = 5;
inline constexpr AEGP_StreamType AEGP_StreamType_COLOR = 6;
inline constexpr AEGP_StreamType AEGP_StreamType_ARB = 7;
inline constexpr AEGP_StreamType AEGP_StreamType_MARKER = 8;
inline constexpr AEGP_StreamType AEGP_StreamType_LAYER_ID = 9;
inline constexpr AEGP_StreamType AEGP_StreamType_MASK_ID = 10;
inline constexpr AEGP_StreamType AEGP_StreamType_MASK = 11;
inline constexpr AEGP_StreamType AEGP_StreamType_TEXT_DOCUMENT = 12;

// AEGP_StreamGroupingType
inline constexpr AEGP_StreamGroupingType AEGP_StreamGroupingType_NONE = -1;
inline constexpr AEGP_StreamGroupingType AEGP_StreamGroupingType_LEAF = 0;
inline constexpr AEGP_StreamGroupingType AEGP_StreamGroupingType_NAMED_GROUP = 1;
inline constexpr AEGP_StreamGroupingType AEGP_StreamGroupingType_INDEXED_GROUP = 2;

// AEGP_DynStreamFlag
inline constexpr AEGP_DynStreamFlags AEGP_DynStreamFlag_ACTIVE_EYEBALL = 1u;
inline constexpr AEGP_DynStreamFlags AEGP_DynStreamFlag_HIDDEN = 2u;
inline constexpr AEGP_DynStreamFlags AEGP_DynStreamFlag_DISABLED = 16u;
inline constexpr AEGP_DynStreamFlags AEGP_DynStreamFlag_ELIDED = 32u;
inline constexpr AEGP_DynStreamFlags AEGP_DynStreamFlag_SHOWN_WHEN_EMPTY = 1024u;
inline constexpr AEGP_DynStreamFlags AEGP_DynStreamFlag_SKIP_REVEAL_WHEN_UNHIDDEN = 65536u;
