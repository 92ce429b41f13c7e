// Drawbot reference types alone, for headers that only pass them on.
#pragma once

#include "base.h"

struct DRAWBOT_DrawRef_tag;
struct DRAWBOT_PathRef_tag;
struct DRAWBOT_SupplierRef_tag;
struct DRAWBOT_SurfaceRef_tag;
struct DRAWBOT_PenRef_tag;
struct DRAWBOT_BrushRef_tag;
struct DRAWBOT_FontRef_tag;
struct DRAWBOT_ImageRef_tag;
struct DRAWBOT_ObjectRef_tag;
struct DRAWBOT_ColorRGBA;
struct DRAWBOT_PointF32;
struct DRAWBOT_RectF32;
struct DRAWBOT_Rect32;
struct DRAWBOT_MatrixF32;

using DRAWBOT_DrawRef = DRAWBOT_DrawRef_tag *;
using DRAWBOT_UTF16Char = ADOBESDK_UTF16Char;
using DRAWBOT_Boolean = ADOBESDK_Boolean;
using DRAWBOT_PathRef = DRAWBOT_PathRef_tag *;
using DRAWBOT_SupplierRef = DRAWBOT_SupplierRef_tag *;
using DRAWBOT_SurfaceRef = DRAWBOT_SurfaceRef_tag *;
using DRAWBOT_PenRef = DRAWBOT_PenRef_tag *;
using DRAWBOT_BrushRef = DRAWBOT_BrushRef_tag *;
using DRAWBOT_FontRef = DRAWBOT_FontRef_tag *;
using DRAWBOT_PixelLayout = int;
using DRAWBOT_ImageRef = DRAWBOT_ImageRef_tag *;
using DRAWBOT_ObjectRef = DRAWBOT_ObjectRef_tag *;
using DRAWBOT_FillType = int;
using DRAWBOT_TextAlignment = int;
using DRAWBOT_TextTruncation = int;
using DRAWBOT_InterpolationPolicy = int;
using DRAWBOT_AntiAliasPolicy = int;
