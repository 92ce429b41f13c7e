// "AEGP Comp Suite". AEGP_CreateSolidInComp takes an AEGP_ColorVal and a zero-terminated UTF-16
// name; it is slot 16 in struct 7 and slot 22 from struct 10 on.
#pragma once

#include "aegp_types.h"

// "AEGP Comp Suite", number 15.
struct AEGP_CompSuite7 {
    A_Err (*AEGP_GetCompFromItem)(AEGP_ItemH itemH, AEGP_CompH *compPH);
    A_Err (*AEGP_GetItemFromComp)(AEGP_CompH compH, AEGP_ItemH *itemPH);
    A_Err (*AEGP_GetCompDownsampleFactor)(AEGP_CompH compH, AEGP_DownsampleFactor *dsfP);
    A_Err (*AEGP_SetCompDownsampleFactor)(AEGP_CompH compH, const AEGP_DownsampleFactor *dsfP);
    A_Err (*AEGP_GetCompBGColor)(AEGP_CompH compH, AEGP_ColorVal *bg_colorP);
    A_Err (*AEGP_SetCompBGColor)(AEGP_CompH compH, const AEGP_ColorVal *bg_colorP);
    A_Err (*AEGP_GetCompFlags)(AEGP_CompH compH, AEGP_CompFlags *comp_flagsP);
    A_Err (*AEGP_GetCompFramerate)(AEGP_CompH compH, A_FpLong *fpsPF);
    A_Err (*AEGP_SetCompFrameRate)(AEGP_CompH compH, const A_FpLong *fpsPF);
    A_Err (*AEGP_GetCompShutterAnglePhase)(AEGP_CompH compH, A_Ratio *angle, A_Ratio *phase);
    A_Err (*AEGP_GetCompShutterFrameRange)(AEGP_CompH compH, const A_Time *comp_timeP,
                                           A_Time *start, A_Time *duration);
    A_Err (*AEGP_GetCompSuggestedMotionBlurSamples)(AEGP_CompH compH, A_long *samplesPL);
    A_Err (*AEGP_SetCompSuggestedMotionBlurSamples)(AEGP_CompH compH, A_long samplesL);
    A_Err (*AEGP_GetCompWorkAreaStart)(AEGP_CompH compH, A_Time *work_area_startPT);
    A_Err (*AEGP_GetCompWorkAreaDuration)(AEGP_CompH compH, A_Time *work_area_durationPT);
    A_Err (*AEGP_SetCompWorkAreaStartAndDuration)(AEGP_CompH compH, const A_Time *work_area_startPT,
                                                  const A_Time *work_area_durationPT);
    A_Err (*AEGP_CreateSolidInComp)(const A_UTF16Char *utf_nameZ, A_long width, A_long height,
                                    const AEGP_ColorVal *color, AEGP_CompH parent_compH,
                                    const A_Time *durationPT0, AEGP_LayerH *new_solidPH);
    A_Err (*AEGP_CreateCameraInComp)(const A_UTF16Char *utf_nameZ, A_FloatPoint center_point,
                                     AEGP_CompH parent_compH, AEGP_LayerH *new_cameraPH);
    A_Err (*AEGP_CreateLightInComp)(const A_UTF16Char *utf_nameZ, A_FloatPoint center_point,
                                    AEGP_CompH parent_compH, AEGP_LayerH *new_lightPH);
    A_Err (*AEGP_CreateComp)(AEGP_ItemH parent_folderH0, const A_UTF16Char *utf_nameZ,
                             A_long widthL, A_long heightL, const A_Ratio *pixel_aspect_ratioPRt,
                             const A_Time *durationPT, const A_Ratio *frameratePRt,
                             AEGP_CompH *new_compPH);
    A_Err (*AEGP_GetNewCollectionFromCompSelection)(AEGP_PluginID plugin_id, AEGP_CompH compH,
                                                    AEGP_Collection2H *collectionPH);
    A_Err (*AEGP_SetSelection)(AEGP_CompH compH, AEGP_Collection2H collectionH);
    A_Err (*AEGP_GetCompDisplayStartTime)(AEGP_CompH compH, A_Time *start_timePT);
    A_Err (*AEGP_SetCompDisplayStartTime)(AEGP_CompH compH, const A_Time *start_timePT);
    A_Err (*AEGP_SetCompDuration)(AEGP_CompH compH, const A_Time *durationPT);
    A_Err (*AEGP_CreateNullInComp)(const A_UTF16Char *utf_nameZ, AEGP_CompH parent_compH,
                                   const A_Time *durationPT0, AEGP_LayerH *new_null_solidPH);
    A_Err (*AEGP_SetCompPixelAspectRatio)(AEGP_CompH compH, const A_Ratio *pix_aspectratioPRt);
    A_Err (*AEGP_CreateTextLayerInComp)(AEGP_CompH parent_compH, AEGP_LayerH *new_text_layerPH);
    A_Err (*AEGP_SetCompDimensions)(AEGP_CompH compH, A_long widthL, A_long heightL);
    A_Err (*AEGP_DuplicateComp)(AEGP_CompH compH, AEGP_CompH *new_compPH);
    A_Err (*AEGP_GetCompFrameDuration)(AEGP_CompH compH, A_Time *timeP);
    A_Err (*AEGP_GetMostRecentlyUsedComp)(AEGP_CompH *compPH);
    A_Err (*AEGP_CreateVectorLayerInComp)(AEGP_CompH parent_compH, AEGP_LayerH *new_vector_layerPH);
    A_Err (*AEGP_GetNewCompMarkerStream)(AEGP_PluginID aegp_plugin_id, AEGP_CompH parent_compH,
                                         AEGP_StreamRefH *streamPH);
};

// "AEGP Comp Suite", number 21.
struct AEGP_CompSuite10 {
    A_Err (*AEGP_GetCompFromItem)(AEGP_ItemH itemH, AEGP_CompH *compPH);
    A_Err (*AEGP_GetItemFromComp)(AEGP_CompH compH, AEGP_ItemH *itemPH);
    A_Err (*AEGP_GetCompDownsampleFactor)(AEGP_CompH compH, AEGP_DownsampleFactor *dsfP);
    A_Err (*AEGP_SetCompDownsampleFactor)(AEGP_CompH compH, const AEGP_DownsampleFactor *dsfP);
    A_Err (*AEGP_GetCompBGColor)(AEGP_CompH compH, AEGP_ColorVal *bg_colorP);
    A_Err (*AEGP_SetCompBGColor)(AEGP_CompH compH, const AEGP_ColorVal *bg_colorP);
    A_Err (*AEGP_GetCompFlags)(AEGP_CompH compH, AEGP_CompFlags *comp_flagsP);
    A_Err (*AEGP_GetShowLayerNameOrSourceName)(AEGP_CompH compH, A_Boolean *layer_names_shownPB);
    A_Err (*AEGP_SetShowLayerNameOrSourceName)(AEGP_CompH compH, A_Boolean show_layer_namesB);
    A_Err (*AEGP_GetShowBlendModes)(AEGP_CompH compH, A_Boolean *blend_modes_shownPB);
    A_Err (*AEGP_SetShowBlendModes)(AEGP_CompH compH, A_Boolean show_blend_modesB);
    A_Err (*AEGP_GetCompFramerate)(AEGP_CompH compH, A_FpLong *fpsPF);
    A_Err (*AEGP_SetCompFrameRate)(AEGP_CompH compH, const A_FpLong *fpsPF);
    A_Err (*AEGP_GetCompShutterAnglePhase)(AEGP_CompH compH, A_Ratio *angle, A_Ratio *phase);
    A_Err (*AEGP_GetCompShutterFrameRange)(AEGP_CompH compH, const A_Time *comp_timeP,
                                           A_Time *start, A_Time *duration);
    A_Err (*AEGP_GetCompSuggestedMotionBlurSamples)(AEGP_CompH compH, A_long *samplesPL);
    A_Err (*AEGP_SetCompSuggestedMotionBlurSamples)(AEGP_CompH compH, A_long samplesL);
    A_Err (*AEGP_GetCompMotionBlurAdaptiveSampleLimit)(AEGP_CompH compH, A_long *samplesPL);
    A_Err (*AEGP_SetCompMotionBlurAdaptiveSampleLimit)(AEGP_CompH compH, A_long samplesL);
    A_Err (*AEGP_GetCompWorkAreaStart)(AEGP_CompH compH, A_Time *work_area_startPT);
    A_Err (*AEGP_GetCompWorkAreaDuration)(AEGP_CompH compH, A_Time *work_area_durationPT);
    A_Err (*AEGP_SetCompWorkAreaStartAndDuration)(AEGP_CompH compH, const A_Time *work_area_startPT,
                                                  const A_Time *work_area_durationPT);
    A_Err (*AEGP_CreateSolidInComp)(const A_UTF16Char *utf_nameZ, A_long width, A_long height,
                                    const AEGP_ColorVal *color, AEGP_CompH parent_compH,
                                    const A_Time *durationPT0, AEGP_LayerH *new_solidPH);
    A_Err (*AEGP_CreateCameraInComp)(const A_UTF16Char *utf_nameZ, A_FloatPoint center_point,
                                     AEGP_CompH parent_compH, AEGP_LayerH *new_cameraPH);
    A_Err (*AEGP_CreateLightInComp)(const A_UTF16Char *utf_nameZ, A_FloatPoint center_point,
                                    AEGP_CompH parent_compH, AEGP_LayerH *new_lightPH);
    A_Err (*AEGP_CreateComp)(AEGP_ItemH parent_folderH0, const A_UTF16Char *utf_nameZ,
                             A_long widthL, A_long heightL, const A_Ratio *pixel_aspect_ratioPRt,
                             const A_Time *durationPT, const A_Ratio *frameratePRt,
                             AEGP_CompH *new_compPH);
    A_Err (*AEGP_GetNewCollectionFromCompSelection)(AEGP_PluginID plugin_id, AEGP_CompH compH,
                                                    AEGP_Collection2H *collectionPH);
    A_Err (*AEGP_SetSelection)(AEGP_CompH compH, AEGP_Collection2H collectionH);
    A_Err (*AEGP_GetCompDisplayStartTime)(AEGP_CompH compH, A_Time *start_timePT);
    A_Err (*AEGP_SetCompDisplayStartTime)(AEGP_CompH compH, const A_Time *start_timePT);
    A_Err (*AEGP_SetCompDuration)(AEGP_CompH compH, const A_Time *durationPT);
    A_Err (*AEGP_CreateNullInComp)(const A_UTF16Char *utf_nameZ, AEGP_CompH parent_compH,
                                   const A_Time *durationPT0, AEGP_LayerH *new_null_solidPH);
    A_Err (*AEGP_SetCompPixelAspectRatio)(AEGP_CompH compH, const A_Ratio *pix_aspectratioPRt);
    A_Err (*AEGP_CreateTextLayerInComp)(AEGP_CompH parent_compH, A_Boolean select_new_layerB,
                                        AEGP_LayerH *new_text_layerPH);
    A_Err (*AEGP_CreateBoxTextLayerInComp)(AEGP_CompH parent_compH, A_Boolean select_new_layerB,
                                           A_FloatPoint box_dimensions,
                                           AEGP_LayerH *new_text_layerPH);
    A_Err (*AEGP_SetCompDimensions)(AEGP_CompH compH, A_long widthL, A_long heightL);
    A_Err (*AEGP_DuplicateComp)(AEGP_CompH compH, AEGP_CompH *new_compPH);
    A_Err (*AEGP_GetCompFrameDuration)(AEGP_CompH compH, A_Time *timeP);
    A_Err (*AEGP_GetMostRecentlyUsedComp)(AEGP_CompH *compPH);
    A_Err (*AEGP_CreateVectorLayerInComp)(AEGP_CompH parent_compH, AEGP_LayerH *new_vector_layerPH);
    A_Err (*AEGP_GetNewCompMarkerStream)(AEGP_PluginID aegp_plugin_id, AEGP_CompH parent_compH,
                                         AEGP_StreamRefH *streamPH);
    A_Err (*AEGP_GetCompDisplayDropFrame)(AEGP_CompH compH, A_Boolean *dropFramePB);
    A_Err (*AEGP_SetCompDisplayDropFrame)(AEGP_CompH compH, A_Boolean dropFrameB);
};

// "AEGP Comp Suite", number 25.
struct AEGP_CompSuite11 {
    A_Err (*AEGP_GetCompFromItem)(AEGP_ItemH itemH, AEGP_CompH *compPH);
    A_Err (*AEGP_GetItemFromComp)(AEGP_CompH compH, AEGP_ItemH *itemPH);
    A_Err (*AEGP_GetCompDownsampleFactor)(AEGP_CompH compH, AEGP_DownsampleFactor *dsfP);
    A_Err (*AEGP_SetCompDownsampleFactor)(AEGP_CompH compH, const AEGP_DownsampleFactor *dsfP);
    A_Err (*AEGP_GetCompBGColor)(AEGP_CompH compH, AEGP_ColorVal *bg_colorP);
    A_Err (*AEGP_SetCompBGColor)(AEGP_CompH compH, const AEGP_ColorVal *bg_colorP);
    A_Err (*AEGP_GetCompFlags)(AEGP_CompH compH, AEGP_CompFlags *comp_flagsP);
    A_Err (*AEGP_GetShowLayerNameOrSourceName)(AEGP_CompH compH, A_Boolean *layer_names_shownPB);
    A_Err (*AEGP_SetShowLayerNameOrSourceName)(AEGP_CompH compH, A_Boolean show_layer_namesB);
    A_Err (*AEGP_GetShowBlendModes)(AEGP_CompH compH, A_Boolean *blend_modes_shownPB);
    A_Err (*AEGP_SetShowBlendModes)(AEGP_CompH compH, A_Boolean show_blend_modesB);
    A_Err (*AEGP_GetCompFramerate)(AEGP_CompH compH, A_FpLong *fpsPF);
    A_Err (*AEGP_SetCompFrameRate)(AEGP_CompH compH, const A_FpLong *fpsPF);
    A_Err (*AEGP_GetCompShutterAnglePhase)(AEGP_CompH compH, A_Ratio *angle, A_Ratio *phase);
    A_Err (*AEGP_GetCompShutterFrameRange)(AEGP_CompH compH, const A_Time *comp_timeP,
                                           A_Time *start, A_Time *duration);
    A_Err (*AEGP_GetCompSuggestedMotionBlurSamples)(AEGP_CompH compH, A_long *samplesPL);
    A_Err (*AEGP_SetCompSuggestedMotionBlurSamples)(AEGP_CompH compH, A_long samplesL);
    A_Err (*AEGP_GetCompMotionBlurAdaptiveSampleLimit)(AEGP_CompH compH, A_long *samplesPL);
    A_Err (*AEGP_SetCompMotionBlurAdaptiveSampleLimit)(AEGP_CompH compH, A_long samplesL);
    A_Err (*AEGP_GetCompWorkAreaStart)(AEGP_CompH compH, A_Time *work_area_startPT);
    A_Err (*AEGP_GetCompWorkAreaDuration)(AEGP_CompH compH, A_Time *work_area_durationPT);
    A_Err (*AEGP_SetCompWorkAreaStartAndDuration)(AEGP_CompH compH, const A_Time *work_area_startPT,
                                                  const A_Time *work_area_durationPT);
    A_Err (*AEGP_CreateSolidInComp)(const A_UTF16Char *utf_nameZ, A_long width, A_long height,
                                    const AEGP_ColorVal *color, AEGP_CompH parent_compH,
                                    const A_Time *durationPT0, AEGP_LayerH *new_solidPH);
    A_Err (*AEGP_CreateCameraInComp)(const A_UTF16Char *utf_nameZ, A_FloatPoint center_point,
                                     AEGP_CompH parent_compH, AEGP_LayerH *new_cameraPH);
    A_Err (*AEGP_CreateLightInComp)(const A_UTF16Char *utf_nameZ, A_FloatPoint center_point,
                                    AEGP_CompH parent_compH, AEGP_LayerH *new_lightPH);
    A_Err (*AEGP_CreateComp)(AEGP_ItemH parent_folderH0, const A_UTF16Char *utf_nameZ,
                             A_long widthL, A_long heightL, const A_Ratio *pixel_aspect_ratioPRt,
                             const A_Time *durationPT, const A_Ratio *frameratePRt,
                             AEGP_CompH *new_compPH);
    A_Err (*AEGP_GetNewCollectionFromCompSelection)(AEGP_PluginID plugin_id, AEGP_CompH compH,
                                                    AEGP_Collection2H *collectionPH);
    A_Err (*AEGP_SetSelection)(AEGP_CompH compH, AEGP_Collection2H collectionH);
    A_Err (*AEGP_GetCompDisplayStartTime)(AEGP_CompH compH, A_Time *start_timePT);
    A_Err (*AEGP_SetCompDisplayStartTime)(AEGP_CompH compH, const A_Time *start_timePT);
    A_Err (*AEGP_SetCompDuration)(AEGP_CompH compH, const A_Time *durationPT);
    A_Err (*AEGP_CreateNullInComp)(const A_UTF16Char *utf_nameZ, AEGP_CompH parent_compH,
                                   const A_Time *durationPT0, AEGP_LayerH *new_null_solidPH);
    A_Err (*AEGP_SetCompPixelAspectRatio)(AEGP_CompH compH, const A_Ratio *pix_aspectratioPRt);
    A_Err (*AEGP_CreateTextLayerInComp)(AEGP_CompH parent_compH, A_Boolean select_new_layerB,
                                        AEGP_LayerH *new_text_layerPH);
    A_Err (*AEGP_CreateBoxTextLayerInComp)(AEGP_CompH parent_compH, A_Boolean select_new_layerB,
                                           A_FloatPoint box_dimensions,
                                           AEGP_LayerH *new_text_layerPH);
    A_Err (*AEGP_SetCompDimensions)(AEGP_CompH compH, A_long widthL, A_long heightL);
    A_Err (*AEGP_DuplicateComp)(AEGP_CompH compH, AEGP_CompH *new_compPH);
    A_Err (*AEGP_GetCompFrameDuration)(AEGP_CompH compH, A_Time *timeP);
    A_Err (*AEGP_GetMostRecentlyUsedComp)(AEGP_CompH *compPH);
    A_Err (*AEGP_CreateVectorLayerInComp)(AEGP_CompH parent_compH, AEGP_LayerH *new_vector_layerPH);
    A_Err (*AEGP_GetNewCompMarkerStream)(AEGP_PluginID aegp_plugin_id, AEGP_CompH parent_compH,
                                         AEGP_StreamRefH *streamPH);
    A_Err (*AEGP_GetCompDisplayDropFrame)(AEGP_CompH compH, A_Boolean *dropFramePB);
    A_Err (*AEGP_SetCompDisplayDropFrame)(AEGP_CompH compH, A_Boolean dropFrameB);
    A_Err (*AEGP_ReorderCompSelection)(AEGP_CompH compH, A_long index);
};

// "AEGP Comp Suite", number 26.
struct AEGP_CompSuite12 {
    A_Err (*AEGP_GetCompFromItem)(AEGP_ItemH itemH, AEGP_CompH *compPH);
    A_Err (*AEGP_GetItemFromComp)(AEGP_CompH compH, AEGP_ItemH *itemPH);
    A_Err (*AEGP_GetCompDownsampleFactor)(AEGP_CompH compH, AEGP_DownsampleFactor *dsfP);
    A_Err (*AEGP_SetCompDownsampleFactor)(AEGP_CompH compH, const AEGP_DownsampleFactor *dsfP);
    A_Err (*AEGP_GetCompBGColor)(AEGP_CompH compH, AEGP_ColorVal *bg_colorP);
    A_Err (*AEGP_SetCompBGColor)(AEGP_CompH compH, const AEGP_ColorVal *bg_colorP);
    A_Err (*AEGP_GetCompFlags)(AEGP_CompH compH, AEGP_CompFlags *comp_flagsP);
    A_Err (*AEGP_GetShowLayerNameOrSourceName)(AEGP_CompH compH, A_Boolean *layer_names_shownPB);
    A_Err (*AEGP_SetShowLayerNameOrSourceName)(AEGP_CompH compH, A_Boolean show_layer_namesB);
    A_Err (*AEGP_GetShowBlendModes)(AEGP_CompH compH, A_Boolean *blend_modes_shownPB);
    A_Err (*AEGP_SetShowBlendModes)(AEGP_CompH compH, A_Boolean show_blend_modesB);
    A_Err (*AEGP_GetCompFramerate)(AEGP_CompH compH, A_FpLong *fpsPF);
    A_Err (*AEGP_SetCompFrameRate)(AEGP_CompH compH, const A_FpLong *fpsPF);
    A_Err (*AEGP_GetCompShutterAnglePhase)(AEGP_CompH compH, A_Ratio *angle, A_Ratio *phase);
    A_Err (*AEGP_GetCompShutterFrameRange)(AEGP_CompH compH, const A_Time *comp_timeP,
                                           A_Time *start, A_Time *duration);
    A_Err (*AEGP_GetCompSuggestedMotionBlurSamples)(AEGP_CompH compH, A_long *samplesPL);
    A_Err (*AEGP_SetCompSuggestedMotionBlurSamples)(AEGP_CompH compH, A_long samplesL);
    A_Err (*AEGP_GetCompMotionBlurAdaptiveSampleLimit)(AEGP_CompH compH, A_long *samplesPL);
    A_Err (*AEGP_SetCompMotionBlurAdaptiveSampleLimit)(AEGP_CompH compH, A_long samplesL);
    A_Err (*AEGP_GetCompWorkAreaStart)(AEGP_CompH compH, A_Time *work_area_startPT);
    A_Err (*AEGP_GetCompWorkAreaDuration)(AEGP_CompH compH, A_Time *work_area_durationPT);
    A_Err (*AEGP_SetCompWorkAreaStartAndDuration)(AEGP_CompH compH, const A_Time *work_area_startPT,
                                                  const A_Time *work_area_durationPT);
    A_Err (*AEGP_CreateSolidInComp)(const A_UTF16Char *utf_nameZ, A_long width, A_long height,
                                    const AEGP_ColorVal *color, AEGP_CompH parent_compH,
                                    const A_Time *durationPT0, AEGP_LayerH *new_solidPH);
    A_Err (*AEGP_CreateCameraInComp)(const A_UTF16Char *utf_nameZ, A_FloatPoint center_point,
                                     AEGP_CompH parent_compH, AEGP_LayerH *new_cameraPH);
    A_Err (*AEGP_CreateLightInComp)(const A_UTF16Char *utf_nameZ, A_FloatPoint center_point,
                                    AEGP_CompH parent_compH, AEGP_LayerH *new_lightPH);
    A_Err (*AEGP_CreateComp)(AEGP_ItemH parent_folderH0, const A_UTF16Char *utf_nameZ,
                             A_long widthL, A_long heightL, const A_Ratio *pixel_aspect_ratioPRt,
                             const A_Time *durationPT, const A_Ratio *frameratePRt,
                             AEGP_CompH *new_compPH);
    A_Err (*AEGP_GetNewCollectionFromCompSelection)(AEGP_PluginID plugin_id, AEGP_CompH compH,
                                                    AEGP_Collection2H *collectionPH);
    A_Err (*AEGP_SetSelection)(AEGP_CompH compH, AEGP_Collection2H collectionH);
    A_Err (*AEGP_GetCompDisplayStartTime)(AEGP_CompH compH, A_Time *start_timePT);
    A_Err (*AEGP_SetCompDisplayStartTime)(AEGP_CompH compH, const A_Time *start_timePT);
    A_Err (*AEGP_SetCompDuration)(AEGP_CompH compH, const A_Time *durationPT);
    A_Err (*AEGP_CreateNullInComp)(const A_UTF16Char *utf_nameZ, AEGP_CompH parent_compH,
                                   const A_Time *durationPT0, AEGP_LayerH *new_null_solidPH);
    A_Err (*AEGP_SetCompPixelAspectRatio)(AEGP_CompH compH, const A_Ratio *pix_aspectratioPRt);
    A_Err (*AEGP_CreateTextLayerInComp)(AEGP_CompH parent_compH, A_Boolean select_new_layerB,
                                        A_Boolean horzB, AEGP_LayerH *new_text_layerPH);
    A_Err (*AEGP_CreateBoxTextLayerInComp)(AEGP_CompH parent_compH, A_Boolean select_new_layerB,
                                           A_FloatPoint box_dimensions, A_Boolean horzB,
                                           AEGP_LayerH *new_text_layerPH);
    A_Err (*AEGP_SetCompDimensions)(AEGP_CompH compH, A_long widthL, A_long heightL);
    A_Err (*AEGP_DuplicateComp)(AEGP_CompH compH, AEGP_CompH *new_compPH);
    A_Err (*AEGP_GetCompFrameDuration)(AEGP_CompH compH, A_Time *timeP);
    A_Err (*AEGP_GetMostRecentlyUsedComp)(AEGP_CompH *compPH);
    A_Err (*AEGP_CreateVectorLayerInComp)(AEGP_CompH parent_compH, AEGP_LayerH *new_vector_layerPH);
    A_Err (*AEGP_GetNewCompMarkerStream)(AEGP_PluginID aegp_plugin_id, AEGP_CompH parent_compH,
                                         AEGP_StreamRefH *streamPH);
    A_Err (*AEGP_GetCompDisplayDropFrame)(AEGP_CompH compH, A_Boolean *dropFramePB);
    A_Err (*AEGP_SetCompDisplayDropFrame)(AEGP_CompH compH, A_Boolean dropFrameB);
    A_Err (*AEGP_ReorderCompSelection)(AEGP_CompH compH, A_long index);
};
