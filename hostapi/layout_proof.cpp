// Proves the declarations of this folder against the measured tables, at compile time, with every
// compiler that builds the project.
#include "host.h"

#include <cstddef>

#define KS_TYPE(type, size, alignment) \
    static_assert(sizeof(type) == (size) && alignof(type) == (alignment), #type);
#define KS_MEMBER(type, member, offset, size)                             \
    static_assert(offsetof(type, member) == (offset), #type "." #member); \
    static_assert(sizeof(static_cast<type *>(nullptr)->member) == (size), #type "." #member);
#include "tables/layout.inc"

#define KS_SUITE(suite, slots) static_assert(sizeof(suite) == 8 * (slots), #suite);
#define KS_SLOT(suite, function, slot) \
    static_assert(offsetof(suite, function) == 8 * (slot), #suite "." #function);
#include "tables/slots.inc"

#define KS_VALUE(name, value) static_assert(static_cast<std::uint32_t>(name) == (value), #name);
#include "tables/values.inc"
