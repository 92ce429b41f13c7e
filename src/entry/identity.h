/* Who the effect is, as the host reads it twice: from the property list before any code runs, and
 * from the global set-up. Preprocessor macros only, because the Windows resource compiler reads
 * this file too. static_asserts in entry/ tie the numbers to the host's constants. */
#ifndef KS_ENTRY_IDENTITY_H
#define KS_ENTRY_IDENTITY_H

/* Permanent: projects find the effect by it. */
#define KS_MATCH_NAME "KS_KestrelMonitor"

/* The entry of the Effect menu and its category (each at most 31 characters for the host). */
#define KS_DISPLAY_NAME "Kestrel Scopes 2"
#define KS_CATEGORY "Brindlemoor Studio"

/* The one exported function. */
#define KS_ENTRY_POINT "EntryPointFunc"

/* Effect version 2.0.3, release stage (3), build 1, and the same in the host's packing:
 * major << 19 | minor << 15 | bug << 11 | stage << 9 | build. */
#define KS_VERSION_MAJOR 2
#define KS_VERSION_MINOR 0
#define KS_VERSION_BUG 3
#define KS_VERSION_STAGE 3
#define KS_VERSION_BUILD 1
#define KS_VERSION_PACKED 0x00101E01
#define KS_VERSION_TEXT "2.0.3.1"

/* The host interface that the effect is written against, and the property list's own version. */
#define KS_SPEC_VERSION_MAJOR 13
#define KS_SPEC_VERSION_MINOR 14
#define KS_PIPL_VERSION_MAJOR 2
#define KS_PIPL_VERSION_MINOR 0

/* Capabilities. The property list and the global set-up must name the same, or the host complains
 * at every start. */
#define KS_OUT_FLAGS 0x06008010
#define KS_OUT_FLAGS_2 0x00001408

#endif
