// The whole host interface in one include.
#pragma once

#include "aegp_comp_suites.h"
#include "aegp_layer_suites.h"
#include "aegp_service_suites.h"
#include "aegp_stream_suites.h"
#include "aegp_types.h"
#include "base.h"
#include "constants.h"
#include "drawbot.h"
#include "effect_types.h"
#include "entry_point.h"
#include "events.h"
#include "in_out_data.h"
#include "param_def.h"
#include "pf_suites.h"
#include "smart_render.h"
#include "suite_names.h"
