#include "PictalCore/Platform/Foundation/CNumbers.h"

#include <cstdlib>
#include <new>
#include <string>

#include <locale.h>

namespace pictal::CNumbers {

namespace {

/// Its full name keeps a process's own locale from reading "0.5" as 0.
locale_t cLocale() {
    static const locale_t made = ::newlocale(LC_ALL_MASK, "C", nullptr);
    if (!made) throw std::bad_alloc();  // what else may fail is its name
    return made;
}

template <class Number>
std::optional<Number> converted(std::string_view text,
                                Number (*convert)(const char*, char**, locale_t)) {
    const std::string terminated(text);
    char* end = nullptr;
    const Number number = convert(terminated.c_str(), &end, cLocale());
    if (text.empty() || end != terminated.c_str() + terminated.size()) return std::nullopt;
    return number;
}

}  // namespace

std::optional<float> toFloat(std::string_view text) {
    return converted<float>(text, ::strtof_l);
}

std::optional<double> toDouble(std::string_view text) {
    return converted<double>(text, ::strtod_l);
}

}  // namespace pictal::CNumbers
