// "AEGP Stream Suite", "AEGP Dynamic Stream Suite" and "AEGP Effect Suite". Every stream and effect
// reference obtained must be disposed of, the effect reference after its streams.
#pragma once

#include "aegp_types.h"
#include "events.h"
#include "in_out_data.h"
#include "param_def.h"

// "AEGP Stream Suite", number 9.
struct AEGP_StreamSuite4 {
    A_Err (*AEGP_IsStreamLegal)(AEGP_LayerH layerH, AEGP_LayerStream which_stream,
                                A_Boolean *is_legalP);
    A_Err (*AEGP_CanVaryOverTime)(AEGP_StreamRefH streamH, A_Boolean *can_varyPB);
    A_Err (*AEGP_GetValidInterpolations)(AEGP_StreamRefH streamH,
                                         AEGP_KeyInterpolationMask *valid_interpolationsP);
    A_Err (*AEGP_GetNewLayerStream)(AEGP_PluginID aegp_plugin_id, AEGP_LayerH layerH,
                                    AEGP_LayerStream which_stream, AEGP_StreamRefH *streamPH);
    A_Err (*AEGP_GetEffectNumParamStreams)(AEGP_EffectRefH effect_refH, A_long *num_paramsPL);
    A_Err (*AEGP_GetNewEffectStreamByIndex)(AEGP_PluginID aegp_plugin_id,
                                            AEGP_EffectRefH effect_refH, PF_ParamIndex param_index,
                                            AEGP_StreamRefH *streamPH);
    A_Err (*AEGP_GetNewMaskStream)(AEGP_PluginID aegp_plugin_id, AEGP_MaskRefH mask_refH,
                                   AEGP_MaskStream which_stream, AEGP_StreamRefH *mask_streamPH);
    A_Err (*AEGP_DisposeStream)(AEGP_StreamRefH streamH);
    A_Err (*AEGP_GetStreamName)(AEGP_PluginID pluginID, AEGP_StreamRefH streamH,
                                A_Boolean force_englishB, AEGP_MemHandle *utf_stream_namePH);
    A_Err (*AEGP_GetStreamUnitsText)(AEGP_StreamRefH streamH, A_Boolean force_englishB,
                                     A_char *unitsZ);
    A_Err (*AEGP_GetStreamProperties)(AEGP_StreamRefH streamH, AEGP_StreamFlags *flagsP,
                                      A_FpLong *minP0, A_FpLong *maxP0);
    A_Err (*AEGP_IsStreamTimevarying)(AEGP_StreamRefH streamH, A_Boolean *is_timevaryingPB);
    A_Err (*AEGP_GetStreamType)(AEGP_StreamRefH streamH, AEGP_StreamType *stream_typeP);
    A_Err (*AEGP_GetNewStreamValue)(AEGP_PluginID aegp_plugin_id, AEGP_StreamRefH streamH,
                                    AEGP_LTimeMode time_mode, const A_Time *timePT,
                                    A_Boolean pre_expressionB, AEGP_StreamValue2 *valueP);
    A_Err (*AEGP_DisposeStreamValue)(AEGP_StreamValue2 *valueP);
    A_Err (*AEGP_SetStreamValue)(AEGP_PluginID aegp_plugin_id, AEGP_StreamRefH streamH,
                                 AEGP_StreamValue2 *valueP);
    A_Err (*AEGP_GetLayerStreamValue)(AEGP_LayerH layerH, AEGP_LayerStream which_stream,
                                      AEGP_LTimeMode time_mode, const A_Time *timePT,
                                      A_Boolean pre_expressionB, AEGP_StreamVal2 *stream_valP,
                                      AEGP_StreamType *stream_typeP0);
    A_Err (*AEGP_GetExpressionState)(AEGP_PluginID aegp_plugin_id, AEGP_StreamRefH streamH,
                                     A_Boolean *enabledPB);
    A_Err (*AEGP_SetExpressionState)(AEGP_PluginID aegp_plugin_id, AEGP_StreamRefH streamH,
                                     A_Boolean enabledB);
    A_Err (*AEGP_GetExpression)(AEGP_PluginID aegp_plugin_id, AEGP_StreamRefH streamH,
                                AEGP_MemHandle *expressionHZ);
    A_Err (*AEGP_SetExpression)(AEGP_PluginID aegp_plugin_id, AEGP_StreamRefH streamH,
                                const A_char *expressionP);
    A_Err (*AEGP_DuplicateStreamRef)(AEGP_PluginID aegp_plugin_id, AEGP_StreamRefH streamH,
                                     AEGP_StreamRefH *dup_streamPH);
};

// "AEGP Stream Suite", number 10.
struct AEGP_StreamSuite5 {
    A_Err (*AEGP_IsStreamLegal)(AEGP_LayerH layerH, AEGP_LayerStream which_stream,
                                A_Boolean *is_legalP);
    A_Err (*AEGP_CanVaryOverTime)(AEGP_StreamRefH streamH, A_Boolean *can_varyPB);
    A_Err (*AEGP_GetValidInterpolations)(AEGP_StreamRefH streamH,
                                         AEGP_KeyInterpolationMask *valid_interpolationsP);
    A_Err (*AEGP_GetNewLayerStream)(AEGP_PluginID aegp_plugin_id, AEGP_LayerH layerH,
                                    AEGP_LayerStream which_stream, AEGP_StreamRefH *streamPH);
    A_Err (*AEGP_GetEffectNumParamStreams)(AEGP_EffectRefH effect_refH, A_long *num_paramsPL);
    A_Err (*AEGP_GetNewEffectStreamByIndex)(AEGP_PluginID aegp_plugin_id,
                                            AEGP_EffectRefH effect_refH, PF_ParamIndex param_index,
                                            AEGP_StreamRefH *streamPH);
    A_Err (*AEGP_GetNewMaskStream)(AEGP_PluginID aegp_plugin_id, AEGP_MaskRefH mask_refH,
                                   AEGP_MaskStream which_stream, AEGP_StreamRefH *mask_streamPH);
    A_Err (*AEGP_DisposeStream)(AEGP_StreamRefH streamH);
    A_Err (*AEGP_GetStreamName)(AEGP_PluginID pluginID, AEGP_StreamRefH streamH,
                                A_Boolean force_englishB, AEGP_MemHandle *utf_stream_namePH);
    A_Err (*AEGP_GetStreamUnitsText)(AEGP_StreamRefH streamH, A_Boolean force_englishB,
                                     A_char *unitsZ);
    A_Err (*AEGP_GetStreamProperties)(AEGP_StreamRefH streamH, AEGP_StreamFlags *flagsP,
                                      A_FpLong *minP0, A_FpLong *maxP0);
    A_Err (*AEGP_IsStreamTimevarying)(AEGP_StreamRefH streamH, A_Boolean *is_timevaryingPB);
    A_Err (*AEGP_GetStreamType)(AEGP_StreamRefH streamH, AEGP_StreamType *stream_typeP);
    A_Err (*AEGP_GetNewStreamValue)(AEGP_PluginID aegp_plugin_id, AEGP_StreamRefH streamH,
                                    AEGP_LTimeMode time_mode, const A_Time *timePT,
                                    A_Boolean pre_expressionB, AEGP_StreamValue2 *valueP);
    A_Err (*AEGP_DisposeStreamValue)(AEGP_StreamValue2 *valueP);
    A_Err (*AEGP_SetStreamValue)(AEGP_PluginID aegp_plugin_id, AEGP_StreamRefH streamH,
                                 AEGP_StreamValue2 *valueP);
    A_Err (*AEGP_GetLayerStreamValue)(AEGP_LayerH layerH, AEGP_LayerStream which_stream,
                                      AEGP_LTimeMode time_mode, const A_Time *timePT,
                                      A_Boolean pre_expressionB, AEGP_StreamVal2 *stream_valP,
                                      AEGP_StreamType *stream_typeP0);
    A_Err (*AEGP_GetExpressionState)(AEGP_PluginID aegp_plugin_id, AEGP_StreamRefH streamH,
                                     A_Boolean *enabledPB);
    A_Err (*AEGP_SetExpressionState)(AEGP_PluginID aegp_plugin_id, AEGP_StreamRefH streamH,
                                     A_Boolean enabledB);
    A_Err (*AEGP_GetExpression)(AEGP_PluginID aegp_plugin_id, AEGP_StreamRefH streamH,
                                AEGP_MemHandle *unicodeHZ);
    A_Err (*AEGP_SetExpression)(AEGP_PluginID aegp_plugin_id, AEGP_StreamRefH streamH,
                                const A_UTF16Char *expressionP);
    A_Err (*AEGP_DuplicateStreamRef)(AEGP_PluginID aegp_plugin_id, AEGP_StreamRefH streamH,
                                     AEGP_StreamRefH *dup_streamPH);
};

// "AEGP Stream Suite", number 11.
struct AEGP_StreamSuite6 {
    A_Err (*AEGP_IsStreamLegal)(AEGP_LayerH layerH, AEGP_LayerStream which_stream,
                                A_Boolean *is_legalP);
    A_Err (*AEGP_CanVaryOverTime)(AEGP_StreamRefH streamH, A_Boolean *can_varyPB);
    A_Err (*AEGP_GetValidInterpolations)(AEGP_StreamRefH streamH,
                                         AEGP_KeyInterpolationMask *valid_interpolationsP);
    A_Err (*AEGP_GetNewLayerStream)(AEGP_PluginID aegp_plugin_id, AEGP_LayerH layerH,
                                    AEGP_LayerStream which_stream, AEGP_StreamRefH *streamPH);
    A_Err (*AEGP_GetEffectNumParamStreams)(AEGP_EffectRefH effect_refH, A_long *num_paramsPL);
    A_Err (*AEGP_GetNewEffectStreamByIndex)(AEGP_PluginID aegp_plugin_id,
                                            AEGP_EffectRefH effect_refH, PF_ParamIndex param_index,
                                            AEGP_StreamRefH *streamPH);
    A_Err (*AEGP_GetNewMaskStream)(AEGP_PluginID aegp_plugin_id, AEGP_MaskRefH mask_refH,
                                   AEGP_MaskStream which_stream, AEGP_StreamRefH *mask_streamPH);
    A_Err (*AEGP_DisposeStream)(AEGP_StreamRefH streamH);
    A_Err (*AEGP_GetStreamName)(AEGP_PluginID pluginID, AEGP_StreamRefH streamH,
                                A_Boolean force_englishB, AEGP_MemHandle *utf_stream_namePH);
    A_Err (*AEGP_GetStreamUnitsText)(AEGP_StreamRefH streamH, A_Boolean force_englishB,
                                     A_char *unitsZ);
    A_Err (*AEGP_GetStreamProperties)(AEGP_StreamRefH streamH, AEGP_StreamFlags *flagsP,
                                      A_FpLong *minP0, A_FpLong *maxP0);
    A_Err (*AEGP_IsStreamTimevarying)(AEGP_StreamRefH streamH, A_Boolean *is_timevaryingPB);
    A_Err (*AEGP_GetStreamType)(AEGP_StreamRefH streamH, AEGP_StreamType *stream_typeP);
    A_Err (*AEGP_GetNewStreamValue)(AEGP_PluginID aegp_plugin_id, AEGP_StreamRefH streamH,
                                    AEGP_LTimeMode time_mode, const A_Time *timePT,
                                    A_Boolean pre_expressionB, AEGP_StreamValue2 *valueP);
    A_Err (*AEGP_DisposeStreamValue)(AEGP_StreamValue2 *valueP);
    A_Err (*AEGP_SetStreamValue)(AEGP_PluginID aegp_plugin_id, AEGP_StreamRefH streamH,
                                 AEGP_StreamValue2 *valueP);
    A_Err (*AEGP_GetLayerStreamValue)(AEGP_LayerH layerH, AEGP_LayerStream which_stream,
                                      AEGP_LTimeMode time_mode, const A_Time *timePT,
                                      A_Boolean pre_expressionB, AEGP_StreamVal2 *stream_valP,
                                      AEGP_StreamType *stream_typeP0);
    A_Err (*AEGP_GetExpressionState)(AEGP_PluginID aegp_plugin_id, AEGP_StreamRefH streamH,
                                     A_Boolean *enabledPB);
    A_Err (*AEGP_SetExpressionState)(AEGP_PluginID aegp_plugin_id, AEGP_StreamRefH streamH,
                                     A_Boolean enabledB);
    A_Err (*AEGP_GetExpression)(AEGP_PluginID aegp_plugin_id, AEGP_StreamRefH streamH,
                                AEGP_MemHandle *unicodeHZ);
    A_Err (*AEGP_SetExpression)(AEGP_PluginID aegp_plugin_id, AEGP_StreamRefH streamH,
                                const A_UTF16Char *expressionP);
    A_Err (*AEGP_DuplicateStreamRef)(AEGP_PluginID aegp_plugin_id, AEGP_StreamRefH streamH,
                                     AEGP_StreamRefH *dup_streamPH);
    A_Err (*AEGP_GetUniqueStreamID)(AEGP_StreamRefH streamH, int32_t *outID);
};

// "AEGP Dynamic Stream Suite", number 5.
struct AEGP_DynamicStreamSuite4 {
    A_Err (*AEGP_GetNewStreamRefForLayer)(AEGP_PluginID aegp_plugin_id, AEGP_LayerH layerH,
                                          AEGP_StreamRefH *streamPH);
    A_Err (*AEGP_GetNewStreamRefForMask)(AEGP_PluginID aegp_plugin_id, AEGP_MaskRefH maskH,
                                         AEGP_StreamRefH *streamPH);
    A_Err (*AEGP_GetStreamDepth)(AEGP_StreamRefH streamH, A_long *depthPL);
    A_Err (*AEGP_GetStreamGroupingType)(AEGP_StreamRefH streamH,
                                        AEGP_StreamGroupingType *group_typeP);
    A_Err (*AEGP_GetNumStreamsInGroup)(AEGP_StreamRefH streamH, A_long *num_streamsPL);
    A_Err (*AEGP_GetDynamicStreamFlags)(AEGP_StreamRefH streamH,
                                        AEGP_DynStreamFlags *stream_flagsP);
    A_Err (*AEGP_SetDynamicStreamFlag)(AEGP_StreamRefH streamH, AEGP_DynStreamFlags one_flag,
                                       A_Boolean undoableB, A_Boolean setB);
    A_Err (*AEGP_GetNewStreamRefByIndex)(AEGP_PluginID aegp_plugin_id,
                                         AEGP_StreamRefH parent_groupH, A_long indexL,
                                         AEGP_StreamRefH *streamPH);
    A_Err (*AEGP_GetNewStreamRefByMatchname)(AEGP_PluginID aegp_plugin_id,
                                             AEGP_StreamRefH parent_groupH,
                                             const A_char *utf8_match_nameZ,
                                             AEGP_StreamRefH *streamPH);
    A_Err (*AEGP_DeleteStream)(AEGP_StreamRefH streamH);
    A_Err (*AEGP_ReorderStream)(AEGP_StreamRefH streamH, A_long new_indexL);
    A_Err (*AEGP_DuplicateStream)(AEGP_PluginID aegp_plugin_id, AEGP_StreamRefH streamH,
                                  A_long *new_indexPL0);
    A_Err (*AEGP_SetStreamName)(AEGP_StreamRefH streamH, const A_UTF16Char *nameZ);
    A_Err (*AEGP_CanAddStream)(AEGP_StreamRefH group_streamH, const A_char *utf8_match_nameZ,
                               A_Boolean *can_addPB);
    A_Err (*AEGP_AddStream)(AEGP_PluginID aegp_plugin_id, AEGP_StreamRefH indexed_group_streamH,
                            const A_char *utf8_match_nameZ, AEGP_StreamRefH *streamPH0);
    A_Err (*AEGP_GetMatchName)(AEGP_StreamRefH streamH, A_char *utf8_match_nameZ);
    A_Err (*AEGP_GetNewParentStreamRef)(AEGP_PluginID aegp_plugin_id, AEGP_StreamRefH streamH,
                                        AEGP_StreamRefH *parent_streamPH);
    A_Err (*AEGP_GetStreamIsModified)(AEGP_StreamRefH streamH, A_Boolean *modifiedPB);
    A_Err (*AEGP_GetStreamIndexInParent)(AEGP_StreamRefH streamH, A_long *indexPL);
    A_Err (*AEGP_IsSeparationLeader)(AEGP_StreamRefH streamH, A_Boolean *leaderPB);
    A_Err (*AEGP_AreDimensionsSeparated)(AEGP_StreamRefH leader_streamH, A_Boolean *separatedPB);
    A_Err (*AEGP_SetDimensionsSeparated)(AEGP_StreamRefH leader_streamH, A_Boolean separatedB);
    A_Err (*AEGP_GetSeparationFollower)(AEGP_StreamRefH leader_streamH, A_short dimS,
                                        AEGP_StreamRefH *follower_streamPH);
    A_Err (*AEGP_IsSeparationFollower)(AEGP_StreamRefH streamH, A_Boolean *followerPB);
    A_Err (*AEGP_GetSeparationLeader)(AEGP_StreamRefH follower_streamH,
                                      AEGP_StreamRefH *leader_streamPH);
    A_Err (*AEGP_GetSeparationDimension)(AEGP_StreamRefH follower_streamH, A_short *dimPS);
};

// "AEGP Effect Suite", number 3.
struct AEGP_EffectSuite3 {
    A_Err (*AEGP_GetLayerNumEffects)(AEGP_LayerH layerH, A_long *num_effectsPL);
    A_Err (*AEGP_GetLayerEffectByIndex)(AEGP_PluginID aegp_plugin_id, AEGP_LayerH layerH,
                                        AEGP_EffectIndex layer_effect_indexL,
                                        AEGP_EffectRefH *effectPH);
    A_Err (*AEGP_GetInstalledKeyFromLayerEffect)(AEGP_EffectRefH effect_refH,
                                                 AEGP_InstalledEffectKey *installed_effect_keyP);
    A_Err (*AEGP_GetEffectParamUnionByIndex)(AEGP_PluginID aegp_plugin_id,
                                             AEGP_EffectRefH effect_refH, PF_ParamIndex param_index,
                                             PF_ParamType *param_typeP, PF_ParamDefUnion *uP0);
    A_Err (*AEGP_GetEffectFlags)(AEGP_EffectRefH effect_refH, AEGP_EffectFlags *effect_flagsP);
    A_Err (*AEGP_SetEffectFlags)(AEGP_EffectRefH effect_refH,
                                 AEGP_EffectFlags effect_flags_set_mask,
                                 AEGP_EffectFlags effect_flags);
    A_Err (*AEGP_ReorderEffect)(AEGP_EffectRefH effect_refH, A_long effect_indexL);
    A_Err (*AEGP_EffectCallGeneric)(AEGP_PluginID aegp_plugin_id, AEGP_EffectRefH effect_refH,
                                    const A_Time *timePT, PF_Cmd effect_cmd, void *effect_extraPV);
    A_Err (*AEGP_DisposeEffect)(AEGP_EffectRefH effect_refH);
    A_Err (*AEGP_ApplyEffect)(AEGP_PluginID aegp_plugin_id, AEGP_LayerH layerH,
                              AEGP_InstalledEffectKey installed_effect_key,
                              AEGP_EffectRefH *effect_refPH);
    A_Err (*AEGP_DeleteLayerEffect)(AEGP_EffectRefH effect_refH);
    A_Err (*AEGP_GetNumInstalledEffects)(A_long *num_installed_effectsPL);
    A_Err (*AEGP_GetNextInstalledEffect)(AEGP_InstalledEffectKey installed_effect_key,
                                         AEGP_InstalledEffectKey *next_effectPH);
    A_Err (*AEGP_GetEffectName)(AEGP_InstalledEffectKey installed_effect_key, A_char *nameZ);
    A_Err (*AEGP_GetEffectMatchName)(AEGP_InstalledEffectKey installed_effect_key,
                                     A_char *match_nameZ);
    A_Err (*AEGP_GetEffectCategory)(AEGP_InstalledEffectKey installed_effect_key,
                                    A_char *categoryZ);
    A_Err (*AEGP_DuplicateEffect)(AEGP_EffectRefH original_effect_refH,
                                  AEGP_EffectRefH *duplicate_effect_refPH);
};

// "AEGP Effect Suite", number 4.
struct AEGP_EffectSuite4 {
    A_Err (*AEGP_GetLayerNumEffects)(AEGP_LayerH layerH, A_long *num_effectsPL);
    A_Err (*AEGP_GetLayerEffectByIndex)(AEGP_PluginID aegp_plugin_id, AEGP_LayerH layerH,
                                        AEGP_EffectIndex layer_effect_indexL,
                                        AEGP_EffectRefH *effectPH);
    A_Err (*AEGP_GetInstalledKeyFromLayerEffect)(AEGP_EffectRefH effect_refH,
                                                 AEGP_InstalledEffectKey *installed_effect_keyP);
    A_Err (*AEGP_GetEffectParamUnionByIndex)(AEGP_PluginID aegp_plugin_id,
                                             AEGP_EffectRefH effect_refH, PF_ParamIndex param_index,
                                             PF_ParamType *param_typeP, PF_ParamDefUnion *uP0);
    A_Err (*AEGP_GetEffectFlags)(AEGP_EffectRefH effect_refH, AEGP_EffectFlags *effect_flagsP);
    A_Err (*AEGP_SetEffectFlags)(AEGP_EffectRefH effect_refH,
                                 AEGP_EffectFlags effect_flags_set_mask,
                                 AEGP_EffectFlags effect_flags);
    A_Err (*AEGP_ReorderEffect)(AEGP_EffectRefH effect_refH, A_long effect_indexL);
    A_Err (*AEGP_EffectCallGeneric)(AEGP_PluginID aegp_plugin_id, AEGP_EffectRefH effect_refH,
                                    const A_Time *timePT, PF_Cmd effect_cmd, void *effect_extraPV);
    A_Err (*AEGP_DisposeEffect)(AEGP_EffectRefH effect_refH);
    A_Err (*AEGP_ApplyEffect)(AEGP_PluginID aegp_plugin_id, AEGP_LayerH layerH,
                              AEGP_InstalledEffectKey installed_effect_key,
                              AEGP_EffectRefH *effect_refPH);
    A_Err (*AEGP_DeleteLayerEffect)(AEGP_EffectRefH effect_refH);
    A_Err (*AEGP_GetNumInstalledEffects)(A_long *num_installed_effectsPL);
    A_Err (*AEGP_GetNextInstalledEffect)(AEGP_InstalledEffectKey installed_effect_key,
                                         AEGP_InstalledEffectKey *next_effectPH);
    A_Err (*AEGP_GetEffectName)(AEGP_InstalledEffectKey installed_effect_key, A_char *nameZ);
    A_Err (*AEGP_GetEffectMatchName)(AEGP_InstalledEffectKey installed_effect_key,
                                     A_char *utf8_match_nameZ);
    A_Err (*AEGP_GetEffectCategory)(AEGP_InstalledEffectKey installed_effect_key,
                                    A_char *categoryZ);
    A_Err (*AEGP_DuplicateEffect)(AEGP_EffectRefH original_effect_refH,
                                  AEGP_EffectRefH *duplicate_effect_refPH);
    A_Err (*AEGP_NumEffectMask)(AEGP_EffectRefH effect_refH, A_u_long *num_masksPL);
    A_Err (*AEGP_GetEffectMaskID)(AEGP_EffectRefH effect_refH, A_u_long mask_indexL,
                                  AEGP_MaskIDVal *id_valP);
    A_Err (*AEGP_AddEffectMask)(AEGP_EffectRefH effect_refH, AEGP_MaskIDVal id_val,
                                AEGP_StreamRefH *streamPH0);
    A_Err (*AEGP_RemoveEffectMask)(AEGP_EffectRefH effect_refH, AEGP_MaskIDVal id_val);
    A_Err (*AEGP_SetEffectMask)(AEGP_EffectRefH effect_refH, A_u_long mask_indexL,
                                AEGP_MaskIDVal id_val, AEGP_StreamRefH *streamPH0);
};

// "AEGP Effect Suite", number 5.
struct AEGP_EffectSuite5 {
    A_Err (*AEGP_GetLayerNumEffects)(AEGP_LayerH layerH, A_long *num_effectsPL);
    A_Err (*AEGP_GetLayerEffectByIndex)(AEGP_PluginID aegp_plugin_id, AEGP_LayerH layerH,
                                        AEGP_EffectIndex layer_effect_indexL,
                                        AEGP_EffectRefH *effectPH);
    A_Err (*AEGP_GetInstalledKeyFromLayerEffect)(AEGP_EffectRefH effect_refH,
                                                 AEGP_InstalledEffectKey *installed_effect_keyP);
    A_Err (*AEGP_GetEffectParamUnionByIndex)(AEGP_PluginID aegp_plugin_id,
                                             AEGP_EffectRefH effect_refH, PF_ParamIndex param_index,
                                             PF_ParamType *param_typeP, PF_ParamDefUnion *uP0);
    A_Err (*AEGP_GetEffectFlags)(AEGP_EffectRefH effect_refH, AEGP_EffectFlags *effect_flagsP);
    A_Err (*AEGP_SetEffectFlags)(AEGP_EffectRefH effect_refH,
                                 AEGP_EffectFlags effect_flags_set_mask,
                                 AEGP_EffectFlags effect_flags);
    A_Err (*AEGP_ReorderEffect)(AEGP_EffectRefH effect_refH, A_long effect_indexL);
    A_Err (*AEGP_EffectCallGeneric)(AEGP_PluginID aegp_plugin_id, AEGP_EffectRefH effect_refH,
                                    const A_Time *timePT, PF_Cmd effect_cmd, void *effect_extraPV);
    A_Err (*AEGP_DisposeEffect)(AEGP_EffectRefH effect_refH);
    A_Err (*AEGP_ApplyEffect)(AEGP_PluginID aegp_plugin_id, AEGP_LayerH layerH,
                              AEGP_InstalledEffectKey installed_effect_key,
                              AEGP_EffectRefH *effect_refPH);
    A_Err (*AEGP_DeleteLayerEffect)(AEGP_EffectRefH effect_refH);
    A_Err (*AEGP_GetNumInstalledEffects)(A_long *num_installed_effectsPL);
    A_Err (*AEGP_GetNextInstalledEffect)(AEGP_InstalledEffectKey installed_effect_key,
                                         AEGP_InstalledEffectKey *next_effectPH);
    A_Err (*AEGP_GetEffectName)(AEGP_InstalledEffectKey installed_effect_key, A_char *nameZ);
    A_Err (*AEGP_GetEffectMatchName)(AEGP_InstalledEffectKey installed_effect_key,
                                     A_char *utf8_match_nameZ);
    A_Err (*AEGP_GetEffectCategory)(AEGP_InstalledEffectKey installed_effect_key,
                                    A_char *categoryZ);
    A_Err (*AEGP_DuplicateEffect)(AEGP_EffectRefH original_effect_refH,
                                  AEGP_EffectRefH *duplicate_effect_refPH);
    A_Err (*AEGP_NumEffectMask)(AEGP_EffectRefH effect_refH, A_u_long *num_masksPL);
    A_Err (*AEGP_GetEffectMaskID)(AEGP_EffectRefH effect_refH, A_u_long mask_indexL,
                                  AEGP_MaskIDVal *id_valP);
    A_Err (*AEGP_AddEffectMask)(AEGP_EffectRefH effect_refH, AEGP_MaskIDVal id_val,
                                AEGP_StreamRefH *streamPH0);
    A_Err (*AEGP_RemoveEffectMask)(AEGP_EffectRefH effect_refH, AEGP_MaskIDVal id_val);
    A_Err (*AEGP_SetEffectMask)(AEGP_EffectRefH effect_refH, A_u_long mask_indexL,
                                AEGP_MaskIDVal id_val, AEGP_StreamRefH *streamPH0);
    A_Err (*AEGP_GetIsInternalEffect)(AEGP_InstalledEffectKey installed_effect_key,
                                      A_Boolean *isInternal);
};
