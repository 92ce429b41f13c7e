// Drawbot: the host's vector drawing for custom UI. Colours are red, green, blue, alpha (another
// order than pixels); rectangles are left, top, width, height; coordinates are window pixels.
#pragma once

#include "drawbot_refs.h"

struct DRAWBOT_ColorRGBA {
    float red;
    float green;
    float blue;
    float alpha;
};

struct DRAWBOT_PointF32 {
    float x;
    float y;
};

struct DRAWBOT_RectF32 {
    float left;
    float top;
    float width;
    float height;
};

struct DRAWBOT_Rect32 {
    int left;
    int top;
    int width;
    int height;
};

struct DRAWBOT_MatrixF32 {
    float mat[3][3];
};

// "DRAWBOT Draw Suite", number 1.
struct DRAWBOT_DrawbotSuite1 {
    SPErr (*GetSupplier)(DRAWBOT_DrawRef in_drawbot_ref, DRAWBOT_SupplierRef *out_supplierP);
    SPErr (*GetSurface)(DRAWBOT_DrawRef in_drawbot_ref, DRAWBOT_SurfaceRef *out_surfaceP);
};

// "DRAWBOT Supplier Suite", number 1.
struct DRAWBOT_SupplierSuite1 {
    SPErr (*NewPen)(DRAWBOT_SupplierRef in_supplier_ref, const DRAWBOT_ColorRGBA *in_colorP,
                    float in_size, DRAWBOT_PenRef *out_penP);
    SPErr (*NewBrush)(DRAWBOT_SupplierRef in_supplier_ref, const DRAWBOT_ColorRGBA *in_colorP,
                      DRAWBOT_BrushRef *out_brushP);
    SPErr (*SupportsText)(DRAWBOT_SupplierRef in_supplier_ref,
                          DRAWBOT_Boolean *out_supports_textPB);
    SPErr (*GetDefaultFontSize)(DRAWBOT_SupplierRef in_supplier_ref, float *out_font_sizeF);
    SPErr (*NewDefaultFont)(DRAWBOT_SupplierRef in_supplier_ref, float in_font_sizeF,
                            DRAWBOT_FontRef *out_fontP);
    SPErr (*NewImageFromBuffer)(DRAWBOT_SupplierRef in_supplier_ref, int in_width, int in_height,
                                int in_row_bytes, DRAWBOT_PixelLayout in_pl, const void *in_dataP,
                                DRAWBOT_ImageRef *out_imageP);
    SPErr (*NewPath)(DRAWBOT_SupplierRef in_supplier_ref, DRAWBOT_PathRef *out_pathP);
    SPErr (*SupportsPixelLayoutBGRA)(DRAWBOT_SupplierRef in_supplier_ref,
                                     DRAWBOT_Boolean *out_supports_bgraPB);
    SPErr (*PrefersPixelLayoutBGRA)(DRAWBOT_SupplierRef in_supplier_ref,
                                    DRAWBOT_Boolean *out_prefers_bgraPB);
    SPErr (*SupportsPixelLayoutARGB)(DRAWBOT_SupplierRef in_supplier_ref,
                                     DRAWBOT_Boolean *out_supports_argbPB);
    SPErr (*PrefersPixelLayoutARGB)(DRAWBOT_SupplierRef in_supplier_ref,
                                    DRAWBOT_Boolean *out_prefers_argbPB);
    SPErr (*RetainObject)(DRAWBOT_ObjectRef in_obj_ref);
    SPErr (*ReleaseObject)(DRAWBOT_ObjectRef in_obj_ref);
};

// "DRAWBOT Surface Suite", number 1.
struct DRAWBOT_SurfaceSuite1 {
    SPErr (*PushStateStack)(DRAWBOT_SurfaceRef in_surface_ref);
    SPErr (*PopStateStack)(DRAWBOT_SurfaceRef in_surface_ref);
    SPErr (*PaintRect)(DRAWBOT_SurfaceRef in_surface_ref, const DRAWBOT_ColorRGBA *in_colorP,
                       const DRAWBOT_RectF32 *in_rectPR);
    SPErr (*FillPath)(DRAWBOT_SurfaceRef in_surface_ref, DRAWBOT_BrushRef in_brush_ref,
                      DRAWBOT_PathRef in_path_ref, DRAWBOT_FillType in_fill_type);
    SPErr (*StrokePath)(DRAWBOT_SurfaceRef in_surface_ref, DRAWBOT_PenRef in_pen_ref,
                        DRAWBOT_PathRef in_path_ref);
    SPErr (*Clip)(DRAWBOT_SurfaceRef in_surface_ref, DRAWBOT_SupplierRef in_supplier_ref,
                  const DRAWBOT_Rect32 *in_rectPR);
    SPErr (*GetClipBounds)(DRAWBOT_SurfaceRef in_surface_ref, DRAWBOT_Rect32 *out_rectPR);
    SPErr (*IsWithinClipBounds)(DRAWBOT_SurfaceRef in_surface_ref, const DRAWBOT_Rect32 *in_rectPR,
                                DRAWBOT_Boolean *out_withinPB);
    SPErr (*Transform)(DRAWBOT_SurfaceRef in_surface_ref, const DRAWBOT_MatrixF32 *in_matrixP);
    SPErr (*DrawString)(DRAWBOT_SurfaceRef in_surface_ref, DRAWBOT_BrushRef in_brush_ref,
                        DRAWBOT_FontRef in_font_ref, const DRAWBOT_UTF16Char *in_stringP,
                        const DRAWBOT_PointF32 *in_originP,
                        DRAWBOT_TextAlignment in_alignment_style,
                        DRAWBOT_TextTruncation in_truncation_style, float in_truncation_width);
    SPErr (*DrawImage)(DRAWBOT_SurfaceRef in_surface_ref, DRAWBOT_ImageRef in_image_ref,
                       const DRAWBOT_PointF32 *in_originP, float in_alpha);
    SPErr (*SetInterpolationPolicy)(DRAWBOT_SurfaceRef in_surface_ref,
                                    DRAWBOT_InterpolationPolicy in_interp);
    SPErr (*GetInterpolationPolicy)(DRAWBOT_SurfaceRef in_surface_ref,
                                    DRAWBOT_InterpolationPolicy *out_interpP);
    SPErr (*SetAntiAliasPolicy)(DRAWBOT_SurfaceRef in_surface_ref,
                                DRAWBOT_AntiAliasPolicy in_policy);
    SPErr (*GetAntiAliasPolicy)(DRAWBOT_SurfaceRef in_surface_ref,
                                DRAWBOT_AntiAliasPolicy *out_policyP);
    SPErr (*Flush)(DRAWBOT_SurfaceRef in_surface_ref);
    SPErr (*GetTransformToScreenScale)(DRAWBOT_SurfaceRef in_surface_ref, float *out_scale);
};

// "DRAWBOT Surface Suite", number 2.
struct DRAWBOT_SurfaceSuite2 {
    SPErr (*PushStateStack)(DRAWBOT_SurfaceRef in_surface_ref);
    SPErr (*PopStateStack)(DRAWBOT_SurfaceRef in_surface_ref);
    SPErr (*PaintRect)(DRAWBOT_SurfaceRef in_surface_ref, const DRAWBOT_ColorRGBA *in_colorP,
                       const DRAWBOT_RectF32 *in_rectPR);
    SPErr (*FillPath)(DRAWBOT_SurfaceRef in_surface_ref, DRAWBOT_BrushRef in_brush_ref,
                      DRAWBOT_PathRef in_path_ref, DRAWBOT_FillType in_fill_type);
    SPErr (*StrokePath)(DRAWBOT_SurfaceRef in_surface_ref, DRAWBOT_PenRef in_pen_ref,
                        DRAWBOT_PathRef in_path_ref);
    SPErr (*Clip)(DRAWBOT_SurfaceRef in_surface_ref, DRAWBOT_SupplierRef in_supplier_ref,
                  const DRAWBOT_Rect32 *in_rectPR);
    SPErr (*GetClipBounds)(DRAWBOT_SurfaceRef in_surface_ref, DRAWBOT_Rect32 *out_rectPR);
    SPErr (*IsWithinClipBounds)(DRAWBOT_SurfaceRef in_surface_ref, const DRAWBOT_Rect32 *in_rectPR,
                                DRAWBOT_Boolean *out_withinPB);
    SPErr (*Transform)(DRAWBOT_SurfaceRef in_surface_ref, const DRAWBOT_MatrixF32 *in_matrixP);
    SPErr (*DrawString)(DRAWBOT_SurfaceRef in_surface_ref, DRAWBOT_BrushRef in_brush_ref,
                        DRAWBOT_FontRef in_font_ref, const DRAWBOT_UTF16Char *in_stringP,
                        const DRAWBOT_PointF32 *in_originP,
                        DRAWBOT_TextAlignment in_alignment_style,
                        DRAWBOT_TextTruncation in_truncation_style, float in_truncation_width);
    SPErr (*DrawImage)(DRAWBOT_SurfaceRef in_surface_ref, DRAWBOT_ImageRef in_image_ref,
                       const DRAWBOT_PointF32 *in_originP, float in_alpha);
    SPErr (*SetInterpolationPolicy)(DRAWBOT_SurfaceRef in_surface_ref,
                                    DRAWBOT_InterpolationPolicy in_interp);
    SPErr (*GetInterpolationPolicy)(DRAWBOT_SurfaceRef in_surface_ref,
                                    DRAWBOT_InterpolationPolicy *out_interpP);
    SPErr (*SetAntiAliasPolicy)(DRAWBOT_SurfaceRef in_surface_ref,
                                DRAWBOT_AntiAliasPolicy in_policy);
    SPErr (*GetAntiAliasPolicy)(DRAWBOT_SurfaceRef in_surface_ref,
                                DRAWBOT_AntiAliasPolicy *out_policyP);
    SPErr (*Flush)(DRAWBOT_SurfaceRef in_surface_ref);
    SPErr (*GetTransformToScreenScale)(DRAWBOT_SurfaceRef in_surface_ref, float *out_scale);
};

// "DRAWBOT Path Suite", number 1.
struct DRAWBOT_PathSuite1 {
    SPErr (*MoveTo)(DRAWBOT_PathRef in_path_ref, float in_x, float in_y);
    SPErr (*LineTo)(DRAWBOT_PathRef in_path_ref, float in_x, float in_y);
    SPErr (*BezierTo)(DRAWBOT_PathRef in_path_ref, const DRAWBOT_PointF32 *in_pt1P,
                      const DRAWBOT_PointF32 *in_pt2P, const DRAWBOT_PointF32 *in_pt3P);
    SPErr (*AddRect)(DRAWBOT_PathRef in_path_ref, const DRAWBOT_RectF32 *in_rectPR);
    SPErr (*AddArc)(DRAWBOT_PathRef in_path_ref, const DRAWBOT_PointF32 *in_centerP,
                    float in_radius, float in_start_angle, float in_sweep);
    SPErr (*Close)(DRAWBOT_PathRef in_path_ref);
};

// "DRAWBOT Pen Suite", number 1.
struct DRAWBOT_PenSuite1 {
    SPErr (*SetDashPattern)(DRAWBOT_PenRef in_pen_ref, const float *in_dashesP,
                            int in_pattern_size);
};

// "DRAWBOT Image Suite", number 1.
struct DRAWBOT_ImageSuite1 {
    SPErr (*SetScaleFactor)(DRAWBOT_ImageRef in_image_ref, float in_scale_factor);
};
