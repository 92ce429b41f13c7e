// Holds back the disposal of images that a graphics object still draws into, as Windows does.
//
// All other functions of the library are forwarded by the export table to gdiplus_wine.dll, a copy
// of Wine's own library; the functions here call that copy too.
#include <cstdint>
#include <map>
#include <mutex>
#include <set>
#include <vector>

using Status = int;  // 0 is Ok
struct Image;
struct Graphics;

extern "C" {
__declspec(dllimport) Status GdipGetImageGraphicsContext(Image *image, Graphics **graphics);
__declspec(dllimport) Status GdipDeleteGraphics(Graphics *graphics);
__declspec(dllimport) Status GdipDisposeImage(Image *image);
__declspec(dllimport) void GdiplusShutdown(std::uintptr_t token);
}

namespace {

// Which graphics objects draw into which image, and which of those images are disposed of already.
class Ledger {
  public:
    void add(Graphics *graphics, Image *image) {
        const std::lock_guard lock(mutex_);
        image_of_[graphics] = image;
    }

    // True when the image is in use; its disposal is then noted for later.
    bool hold_back(Image *image) {
        const std::lock_guard lock(mutex_);
        if (!in_use(image)) return false;
        waiting_.insert(image);
        return true;
    }

    // Forgets a graphics object. Gives the image to be disposed of now, or null.
    Image *remove(Graphics *graphics) {
        const std::lock_guard lock(mutex_);
        const auto found = image_of_.find(graphics);
        if (found == image_of_.end()) return nullptr;
        Image *const image = found->second;
        image_of_.erase(found);
        return !in_use(image) && waiting_.erase(image) != 0 ? image : nullptr;
    }

    // Forgets everything. Gives the images whose disposal was held back.
    std::vector<Image *> clear() {
        const std::lock_guard lock(mutex_);
        const std::vector<Image *> images(waiting_.begin(), waiting_.end());
        image_of_.clear();
        waiting_.clear();
        return images;
    }

  private:
    bool in_use(Image *image) const {
        for (const auto &[graphics, drawn] : image_of_) {
            if (drawn == image) return true;
        }
        return false;
    }

    std::mutex mutex_;
    std::map<Graphics *, Image *> image_of_;
    std::set<Image *> waiting_;
};

Ledger &ledger() {
    static Ledger instance;
    return instance;
}

}  // namespace

extern "C" {

Status deferred_get_image_graphics(Image *image, Graphics **graphics) {
    const Status status = GdipGetImageGraphicsContext(image, graphics);
    if (status == 0 && graphics && *graphics) ledger().add(*graphics, image);
    return status;
}

Status deferred_delete_graphics(Graphics *graphics) {
    // Forgotten first: the address may be given out again as soon as the object is deleted.
    Image *const image = ledger().remove(graphics);
    const Status status = GdipDeleteGraphics(graphics);
    if (image) GdipDisposeImage(image);
    return status;
}

Status deferred_dispose_image(Image *image) {
    return ledger().hold_back(image) ? 0 : GdipDisposeImage(image);
}

void deferred_shutdown(std::uintptr_t token) {
    for (Image *const image : ledger().clear()) GdipDisposeImage(image);
    GdiplusShutdown(token);
}

}  // extern "C"
