// Scalar types, geometry and the basic suite: what every other header of the host interface needs.
//
// A_long is 32 bits on every platform (never `long`); A_Boolean-like types are one byte, SPBoolean
// four. UTF-16 units are char16_t, since wchar_t fits on Windows only. Function pointers use the
// platform's default calling convention.
#pragma once

#include <cstddef>
#include <cstdint>

struct Up_OpaqueMem;
struct A_Time;
struct A_Ratio;
struct A_FloatPoint;
struct A_FloatRect;
struct A_Matrix4;
struct A_LPoint;

using A_long = std::int32_t;
using A_u_long = std::uint32_t;
using A_short = short;
using A_char = char;
using A_u_char = unsigned char;
using A_FpLong = double;
using A_FpShort = float;
using A_u_short = unsigned short;
using A_u_longlong = unsigned long long;
using A_AppID = A_long;
using SPErr = std::int32_t;
using SPBoolean = std::int32_t;
using A_intptr_t = long long;
using A_Handle = void *;
using A_HandleSize = A_u_longlong;
using A_UTF16Char = char16_t;
using ADOBESDK_UTF16Char = char16_t;
using ADOBESDK_Boolean = std::uint8_t;
using A_Boolean = unsigned char;
using A_Err = A_long;

struct A_Time {
    A_long value;
    A_u_long scale;
};

struct A_Ratio {
    A_long num;
    A_u_long den;
};

struct A_FloatPoint {
    A_FpLong x;
    A_FpLong y;
};

struct A_FloatRect {
    A_FpLong left;
    A_FpLong top;
    A_FpLong right;
    A_FpLong bottom;
};

struct A_Matrix4 {
    A_FpLong mat[4][4];
};

struct A_LPoint {
    A_long x;
    A_long y;
};

// "SP Basic Suite", number 4.
struct SPBasicSuite {
    SPErr (*AcquireSuite)(const char *name, int32_t version, const void **suite);
    SPErr (*ReleaseSuite)(const char *name, int32_t version);
    SPBoolean (*IsEqual)(const char *token1, const char *token2);
    SPErr (*AllocateBlock)(size_t size, void **block);
    SPErr (*FreeBlock)(void *block);
    SPErr (*ReallocateBlock)(void *block, size_t newSize, void **newblock);
    SPErr (*Undefined)(void);
};
