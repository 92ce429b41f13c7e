#include "scopes/sampling/value_classes.h"

#include <tuple>

namespace ks {
namespace {

using Reading = std::tuple<std::int32_t, std::int32_t, std::int32_t>;  // two rows and a bin

void append(ValueClasses &classes, const Reading &reading) {
    classes.waveform_row.push_back(std::get<0>(reading));
    classes.parade_row.push_back(std::get<1>(reading));
    classes.bin.push_back(std::get<2>(reading));
    ++classes.count;
}

template <class P>
Reading read_code(int code, const RowMap &waveform, const RowMap &parade, bool histogram) {
    const float value = static_cast<float>(code) * PixelTraits<P>::kToUnit;
    return {waveform.rows() > 0 ? waveform.row(value) : 0,
            parade.rows() > 0 ? parade.row(value) : 0, histogram ? histogram_bin(value) : -1};
}

}  // namespace

template <>
ValueClasses make_value_classes<Pixel8>(const RowMap &waveform, const RowMap &parade,
                                        bool histogram) {
    ValueClasses classes;
    for (int code = 0; code < 256; ++code) {
        append(classes, read_code<Pixel8>(code, waveform, parade, histogram));
    }
    return classes;
}

template <>
ValueClasses make_value_classes<Pixel16>(const RowMap &waveform, const RowMap &parade,
                                         bool histogram) {
    ValueClasses classes;
    classes.of_code.resize(65536);
    Reading last;
    for (int code = 0; code < 65536; ++code) {
        const Reading reading = read_code<Pixel16>(code, waveform, parade, histogram);
        if (code == 0 || reading != last) append(classes, reading);
        last = reading;
        classes.of_code[static_cast<std::size_t>(code)] =
            static_cast<std::uint16_t>(classes.count - 1);
    }
    return classes;
}

template <>
ValueClasses make_value_classes<PixelF>(const RowMap &waveform, const RowMap &, bool) {
    ValueClasses classes;
    for (int row = 0; row < waveform.rows(); ++row) append(classes, {row, row, -1});
    return classes;
}

}  // namespace ks
