// leaks KIND   forgets one object on purpose, after drawing text as every frame does. For the test
// of the leak check itself: what it leaves out for fontconfig's sake must not hide what we forget.
#include <cstdio>
#include <functional>
#include <map>
#include <string>

#include "draw/gdiplus_flat.h"
#include "plugin/draw/draw_world.h"
#include "stage/binary/gdiplus_runtime.h"

namespace {

using namespace ks::draw;

void *volatile forgotten = nullptr;  // keeps the compiler from dropping an allocation

template <class Object>
void forget(Object *&object) {
    forgotten = object;
    forgotten = nullptr;
    object = nullptr;
}

void forget_memory() {
    char *memory = new char[100];
    forget(memory);
}

void forget_pen() {
    GpPen *pen = nullptr;
    GdipCreatePen1(0xFFFFFFFFu, 1.0f, kUnitWorld, &pen);
    forget(pen);
}

void forget_brush() {
    GpBrush *brush = nullptr;
    GdipCreateSolidFill(0xFFFFFFFFu, &brush);
    forget(brush);
}

void forget_format() {
    GpStringFormat *format = nullptr;
    GdipCreateStringFormat(0, kLanguageNeutral, &format);
    forget(format);
}

void forget_font() {
    GpFontFamily *family = nullptr;
    GpFont *font = nullptr;
    GdipCreateFontFamilyFromName(u"Arial", nullptr, &family);
    GdipCreateFont(family, 12.0f, kFontStyleRegular, kUnitPixel, &font);
    GdipDeleteFontFamily(family);
    forget(font);
}

void draw_a_frame(bool released) {
    draw_test::DrawHost host;
    draw_test::World<ks::Pixel8> world(64, 32);
    auto surface = describe_surface(host.in, ks::kFormat8, world.world, 1.0);
    create_surface(&host.in, &host.out, surface);
    draw_text(2, 20, "100", draw_test::kWhite, 12, TextAlign::kNear, surface);
    if (released) release_surface(&host.in, &host.out, surface);
}

const std::map<std::string, std::function<void()>> kKinds = {
    {"nothing", [] {}},
    {"memory", forget_memory},
    {"pen", forget_pen},
    {"brush", forget_brush},
    {"format", forget_format},
    {"font", forget_font},
    {"graphics", [] { draw_a_frame(false); }},
};

}  // namespace

int main(int count, char **arguments) {
    const auto kind = kKinds.find(count == 2 ? arguments[1] : "");
    if (kind == kKinds.end()) return 2;
    const stage::GdiplusRuntime gdiplus;
    draw_a_frame(true);
    kind->second();
    std::puts("done");
    return 0;
}
