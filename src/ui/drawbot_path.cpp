#include "ui/drawbot_path.h"

#include "hostapi/constants.h"

namespace ks {

DrawbotPath::DrawbotPath(const DrawbotSuites &suites, DRAWBOT_SupplierRef supplier)
    : suites_(suites), error_(suites.supplier->NewPath(supplier, &path_)) {
    if (error_ != 0) path_ = nullptr;
    if (error_ == 0 && path_ == nullptr) error_ = PF_Err_BAD_CALLBACK_PARAM;
}

DrawbotPath::~DrawbotPath() {
    give_back();
}

void DrawbotPath::release() {
    const SPErr error = give_back();
    if (error != 0) throw DRAWBOT_Exception{error};
}

SPErr DrawbotPath::give_back() {
    if (path_ == nullptr) return 0;
    // The supplier's objects share one reference count behind differently named references.
    const auto object = reinterpret_cast<DRAWBOT_ObjectRef>(path_);
    path_ = nullptr;
    return suites_.supplier->ReleaseObject(object);
}

}  // namespace ks
