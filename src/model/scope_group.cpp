#include "model/scope_group.h"

namespace ks {
namespace {

ParamKind kind_at(int index) {
    return kParamTable[static_cast<std::size_t>(index)].kind;
}

}  // namespace

ParamRange group_around(Param inside) {
    // Groups that hold scope controls hold no groups.
    ParamRange range{inside, inside};
    while (kind_at(range.first) != ParamKind::group_start) --range.first;
    while (kind_at(range.end) != ParamKind::group_end) ++range.end;
    return range;
}

}  // namespace ks
