// "AEGP Item Suite", "AEGP Utility Suite", "AEGP Memory Suite" and "AEGP Iterate Suite".
#pragma once

#include "aegp_types.h"

// "AEGP Item Suite", number 13.
struct AEGP_ItemSuite8 {
    A_Err (*AEGP_GetFirstProjItem)(AEGP_ProjectH projectH, AEGP_ItemH *itemPH);
    A_Err (*AEGP_GetNextProjItem)(AEGP_ProjectH projectH, AEGP_ItemH itemH,
                                  AEGP_ItemH *next_itemPH);
    A_Err (*AEGP_GetActiveItem)(AEGP_ItemH *itemPH);
    A_Err (*AEGP_IsItemSelected)(AEGP_ItemH itemH, A_Boolean *selectedPB);
    A_Err (*AEGP_SelectItem)(AEGP_ItemH itemH, A_Boolean selectB, A_Boolean deselect_othersB);
    A_Err (*AEGP_GetItemType)(AEGP_ItemH itemH, AEGP_ItemType *item_typeP);
    A_Err (*AEGP_GetTypeName)(AEGP_ItemType item_type, A_char *nameZ);
    A_Err (*AEGP_GetItemName)(AEGP_PluginID pluginID, AEGP_ItemH itemH,
                              AEGP_MemHandle *unicode_namePH);
    A_Err (*AEGP_SetItemName)(AEGP_ItemH itemH, const A_UTF16Char *nameZ);
    A_Err (*AEGP_GetItemID)(AEGP_ItemH itemH, A_long *item_idPL);
    A_Err (*AEGP_GetItemFlags)(AEGP_ItemH itemH, AEGP_ItemFlags *item_flagsP);
    A_Err (*AEGP_SetItemUseProxy)(AEGP_ItemH itemH, A_Boolean use_proxyB);
    A_Err (*AEGP_GetItemParentFolder)(AEGP_ItemH itemH, AEGP_ItemH *parent_folder_itemPH);
    A_Err (*AEGP_SetItemParentFolder)(AEGP_ItemH itemH, AEGP_ItemH parent_folder_itemH);
    A_Err (*AEGP_GetItemDuration)(AEGP_ItemH itemH, A_Time *durationPT);
    A_Err (*AEGP_GetItemCurrentTime)(AEGP_ItemH itemH, A_Time *curr_timePT);
    A_Err (*AEGP_GetItemDimensions)(AEGP_ItemH itemH, A_long *widthPL, A_long *heightPL);
    A_Err (*AEGP_GetItemPixelAspectRatio)(AEGP_ItemH itemH, A_Ratio *pix_aspect_ratioPRt);
    A_Err (*AEGP_DeleteItem)(AEGP_ItemH itemH);
    A_Err (*AEGP_CreateNewFolder)(const A_UTF16Char *nameZ, AEGP_ItemH parent_folderH0,
                                  AEGP_ItemH *new_folderPH);
    A_Err (*AEGP_SetItemCurrentTime)(AEGP_ItemH itemH, const A_Time *new_timePT);
    A_Err (*AEGP_GetItemCommentLength)(AEGP_ItemH itemH, A_u_long *buf_sizePLu);
    A_Err (*AEGP_GetItemComment)(AEGP_ItemH itemH, A_u_long buf_sizeLu, A_char *commentZ);
    A_Err (*AEGP_SetItemComment)(AEGP_ItemH itemH, const A_char *commentZ);
    A_Err (*AEGP_GetItemLabel)(AEGP_ItemH itemH, AEGP_LabelID *labelP);
    A_Err (*AEGP_SetItemLabel)(AEGP_ItemH itemH, AEGP_LabelID label);
    A_Err (*AEGP_GetItemMRUView)(AEGP_ItemH itemH, AEGP_ItemViewP *mru_viewP);
};

// "AEGP Item Suite", number 14.
struct AEGP_ItemSuite9 {
    A_Err (*AEGP_GetFirstProjItem)(AEGP_ProjectH projectH, AEGP_ItemH *itemPH);
    A_Err (*AEGP_GetNextProjItem)(AEGP_ProjectH projectH, AEGP_ItemH itemH,
                                  AEGP_ItemH *next_itemPH);
    A_Err (*AEGP_GetActiveItem)(AEGP_ItemH *itemPH);
    A_Err (*AEGP_IsItemSelected)(AEGP_ItemH itemH, A_Boolean *selectedPB);
    A_Err (*AEGP_SelectItem)(AEGP_ItemH itemH, A_Boolean selectB, A_Boolean deselect_othersB);
    A_Err (*AEGP_GetItemType)(AEGP_ItemH itemH, AEGP_ItemType *item_typeP);
    A_Err (*AEGP_GetTypeName)(AEGP_ItemType item_type, A_char *nameZ);
    A_Err (*AEGP_GetItemName)(AEGP_PluginID pluginID, AEGP_ItemH itemH,
                              AEGP_MemHandle *unicode_namePH);
    A_Err (*AEGP_SetItemName)(AEGP_ItemH itemH, const A_UTF16Char *nameZ);
    A_Err (*AEGP_GetItemID)(AEGP_ItemH itemH, A_long *item_idPL);
    A_Err (*AEGP_GetItemFlags)(AEGP_ItemH itemH, AEGP_ItemFlags *item_flagsP);
    A_Err (*AEGP_SetItemUseProxy)(AEGP_ItemH itemH, A_Boolean use_proxyB);
    A_Err (*AEGP_GetItemParentFolder)(AEGP_ItemH itemH, AEGP_ItemH *parent_folder_itemPH);
    A_Err (*AEGP_SetItemParentFolder)(AEGP_ItemH itemH, AEGP_ItemH parent_folder_itemH);
    A_Err (*AEGP_GetItemDuration)(AEGP_ItemH itemH, A_Time *durationPT);
    A_Err (*AEGP_GetItemCurrentTime)(AEGP_ItemH itemH, A_Time *curr_timePT);
    A_Err (*AEGP_GetItemDimensions)(AEGP_ItemH itemH, A_long *widthPL, A_long *heightPL);
    A_Err (*AEGP_GetItemPixelAspectRatio)(AEGP_ItemH itemH, A_Ratio *pix_aspect_ratioPRt);
    A_Err (*AEGP_DeleteItem)(AEGP_ItemH itemH);
    A_Err (*AEGP_CreateNewFolder)(const A_UTF16Char *nameZ, AEGP_ItemH parent_folderH0,
                                  AEGP_ItemH *new_folderPH);
    A_Err (*AEGP_SetItemCurrentTime)(AEGP_ItemH itemH, const A_Time *new_timePT);
    A_Err (*AEGP_GetItemComment)(AEGP_ItemH itemH, AEGP_MemHandle *unicode_namePH);
    A_Err (*AEGP_SetItemComment)(AEGP_ItemH itemH, const A_UTF16Char *commentZ);
    A_Err (*AEGP_GetItemLabel)(AEGP_ItemH itemH, AEGP_LabelID *labelP);
    A_Err (*AEGP_SetItemLabel)(AEGP_ItemH itemH, AEGP_LabelID label);
    A_Err (*AEGP_GetItemMRUView)(AEGP_ItemH itemH, AEGP_ItemViewP *mru_viewP);
};

// "AEGP Utility Suite", number 11.
struct AEGP_UtilitySuite5 {
    A_Err (*AEGP_ReportInfo)(AEGP_PluginID aegp_plugin_id, const A_char *info_stringZ);
    A_Err (*AEGP_GetDriverPluginInitFuncVersion)(A_short *major_versionPS,
                                                 A_short *minor_versionPS);
    A_Err (*AEGP_GetDriverImplementationVersion)(A_short *major_versionPS,
                                                 A_short *minor_versionPS);
    A_Err (*AEGP_StartQuietErrors)(AEGP_ErrReportState *err_stateP);
    A_Err (*AEGP_EndQuietErrors)(A_Boolean report_quieted_errorsB, AEGP_ErrReportState *err_stateP);
    A_Err (*AEGP_GetLastErrorMessage)(A_long buffer_size, A_char *error_string, A_Err *error_num);
    A_Err (*AEGP_StartUndoGroup)(const A_char *undo_nameZ);
    A_Err (*AEGP_EndUndoGroup)(void);
    A_Err (*AEGP_RegisterWithAEGP)(AEGP_GlobalRefcon global_refcon, const A_char *plugin_nameZ,
                                   AEGP_PluginID *plugin_id);
    A_Err (*AEGP_GetMainHWND)(void *main_hwnd);
    A_Err (*AEGP_ShowHideAllFloaters)(A_Boolean include_tool_palB);
    A_Err (*AEGP_PaintPalGetForeColor)(AEGP_ColorVal *fore_colorP);
    A_Err (*AEGP_PaintPalGetBackColor)(AEGP_ColorVal *back_colorP);
    A_Err (*AEGP_PaintPalSetForeColor)(const AEGP_ColorVal *fore_colorP);
    A_Err (*AEGP_PaintPalSetBackColor)(const AEGP_ColorVal *back_colorP);
    A_Err (*AEGP_CharPalGetFillColor)(A_Boolean *is_fill_color_definedPB,
                                      AEGP_ColorVal *fill_colorP);
    A_Err (*AEGP_CharPalGetStrokeColor)(A_Boolean *is_stroke_color_definedPB,
                                        AEGP_ColorVal *stroke_colorP);
    A_Err (*AEGP_CharPalSetFillColor)(const AEGP_ColorVal *fill_colorP);
    A_Err (*AEGP_CharPalSetStrokeColor)(const AEGP_ColorVal *stroke_colorP);
    A_Err (*AEGP_CharPalIsFillColorUIFrontmost)(A_Boolean *is_fill_color_selectedPB);
    A_Err (*AEGP_ConvertFpLongToHSFRatio)(A_FpLong numberF, A_Ratio *ratioPR);
    A_Err (*AEGP_ConvertHSFRatioToFpLong)(A_Ratio ratioR, A_FpLong *numberPF);
    A_Err (*AEGP_CauseIdleRoutinesToBeCalled)(void);
    A_Err (*AEGP_GetSuppressInteractiveUI)(A_Boolean *ui_is_suppressedPB);
    A_Err (*AEGP_WriteToOSConsole)(const A_char *textZ);
    A_Err (*AEGP_WriteToDebugLog)(const A_char *subsystemZ, const A_char *event_typeZ,
                                  const A_char *infoZ);
    A_Err (*AEGP_IsScriptingAvailable)(A_Boolean *outAvailablePB);
    A_Err (*AEGP_ExecuteScript)(AEGP_PluginID inPlugin_id, const A_char *inScriptZ,
                                A_Boolean platform_encodingB, AEGP_MemHandle *outResultPH0,
                                AEGP_MemHandle *outErrorStringPH0);
    A_Err (*AEGP_HostIsActivated)(A_Boolean *is_activatedPB);
    A_Err (*AEGP_GetPluginPlatformRef)(AEGP_PluginID plug_id, void **plat_refPPV);
    A_Err (*AEGP_UpdateFontList)(void);
};

// "AEGP Utility Suite", number 13.
struct AEGP_UtilitySuite6 {
    A_Err (*AEGP_ReportInfo)(AEGP_PluginID aegp_plugin_id, const A_char *info_stringZ);
    A_Err (*AEGP_ReportInfoUnicode)(AEGP_PluginID aegp_plugin_id, const A_UTF16Char *info_stringP);
    A_Err (*AEGP_GetDriverPluginInitFuncVersion)(A_short *major_versionPS,
                                                 A_short *minor_versionPS);
    A_Err (*AEGP_GetDriverImplementationVersion)(A_short *major_versionPS,
                                                 A_short *minor_versionPS);
    A_Err (*AEGP_StartQuietErrors)(AEGP_ErrReportState *err_stateP);
    A_Err (*AEGP_EndQuietErrors)(A_Boolean report_quieted_errorsB, AEGP_ErrReportState *err_stateP);
    A_Err (*AEGP_GetLastErrorMessage)(A_long buffer_size, A_char *error_string, A_Err *error_num);
    A_Err (*AEGP_StartUndoGroup)(const A_char *undo_nameZ);
    A_Err (*AEGP_EndUndoGroup)(void);
    A_Err (*AEGP_RegisterWithAEGP)(AEGP_GlobalRefcon global_refcon, const A_char *plugin_nameZ,
                                   AEGP_PluginID *plugin_id);
    A_Err (*AEGP_GetMainHWND)(void *main_hwnd);
    A_Err (*AEGP_ShowHideAllFloaters)(A_Boolean include_tool_palB);
    A_Err (*AEGP_PaintPalGetForeColor)(AEGP_ColorVal *fore_colorP);
    A_Err (*AEGP_PaintPalGetBackColor)(AEGP_ColorVal *back_colorP);
    A_Err (*AEGP_PaintPalSetForeColor)(const AEGP_ColorVal *fore_colorP);
    A_Err (*AEGP_PaintPalSetBackColor)(const AEGP_ColorVal *back_colorP);
    A_Err (*AEGP_CharPalGetFillColor)(A_Boolean *is_fill_color_definedPB,
                                      AEGP_ColorVal *fill_colorP);
    A_Err (*AEGP_CharPalGetStrokeColor)(A_Boolean *is_stroke_color_definedPB,
                                        AEGP_ColorVal *stroke_colorP);
    A_Err (*AEGP_CharPalSetFillColor)(const AEGP_ColorVal *fill_colorP);
    A_Err (*AEGP_CharPalSetStrokeColor)(const AEGP_ColorVal *stroke_colorP);
    A_Err (*AEGP_CharPalIsFillColorUIFrontmost)(A_Boolean *is_fill_color_selectedPB);
    A_Err (*AEGP_ConvertFpLongToHSFRatio)(A_FpLong numberF, A_Ratio *ratioPR);
    A_Err (*AEGP_ConvertHSFRatioToFpLong)(A_Ratio ratioR, A_FpLong *numberPF);
    A_Err (*AEGP_CauseIdleRoutinesToBeCalled)(void);
    A_Err (*AEGP_GetSuppressInteractiveUI)(A_Boolean *ui_is_suppressedPB);
    A_Err (*AEGP_WriteToOSConsole)(const A_char *textZ);
    A_Err (*AEGP_WriteToDebugLog)(const A_char *subsystemZ, const A_char *event_typeZ,
                                  const A_char *infoZ);
    A_Err (*AEGP_IsScriptingAvailable)(A_Boolean *outAvailablePB);
    A_Err (*AEGP_ExecuteScript)(AEGP_PluginID inPlugin_id, const A_char *inScriptZ,
                                A_Boolean platform_encodingB, AEGP_MemHandle *outResultPH0,
                                AEGP_MemHandle *outErrorStringPH0);
    A_Err (*AEGP_HostIsActivated)(A_Boolean *is_activatedPB);
    A_Err (*AEGP_GetPluginPlatformRef)(AEGP_PluginID plug_id, void **plat_refPPV);
    A_Err (*AEGP_UpdateFontList)(void);
    A_Err (*AEGP_GetPluginPaths)(AEGP_PluginID aegp_plugin_id, AEGP_GetPathTypes path_type,
                                 AEGP_MemHandle *unicode_pathPH);
};

// "AEGP Memory Suite", number 1.
struct AEGP_MemorySuite1 {
    A_Err (*AEGP_NewMemHandle)(AEGP_PluginID plugin_id, const A_char *whatZ, AEGP_MemSize size,
                               AEGP_MemFlag flags, AEGP_MemHandle *memPH);
    A_Err (*AEGP_FreeMemHandle)(AEGP_MemHandle memH);
    A_Err (*AEGP_LockMemHandle)(AEGP_MemHandle memH, void **ptr_to_ptr);
    A_Err (*AEGP_UnlockMemHandle)(AEGP_MemHandle memH);
    A_Err (*AEGP_GetMemHandleSize)(AEGP_MemHandle memH, AEGP_MemSize *sizeP);
    A_Err (*AEGP_ResizeMemHandle)(const A_char *whatZ, AEGP_MemSize new_size, AEGP_MemHandle memH);
    A_Err (*AEGP_SetMemReportingOn)(A_Boolean turn_OnB);
    A_Err (*AEGP_GetMemStats)(AEGP_PluginID plugin_id, A_long *countPL, A_long *sizePL);
};

// "AEGP Iterate Suite", number 1.
struct AEGP_IterateSuite1 {
    A_Err (*AEGP_GetNumThreads)(A_long *num_threadsPL);
    A_Err (*AEGP_IterateGeneric)(A_long iterationsL, void *refconPV,
                                 A_Err (*fn_func)(void *refconPV, A_long thread_indexL, A_long i,
                                                  A_long iterationsL));
};

// "AEGP Iterate Suite", number 2.
struct AEGP_IterateSuite2 {
    A_Err (*AEGP_GetNumThreads)(A_long *num_threadsPL);
    A_Err (*AEGP_IterateGeneric)(A_long iterationsL, void *refconPV,
                                 A_Err (*fn_func)(void *refconPV, A_long thread_indexL, A_long i,
                                                  A_long iterationsL));
};
